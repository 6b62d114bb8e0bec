#include "od/column_rename.h"

namespace veltor::od {

ColumnRenameOutcome RenameTableColumn(ObjectDataContainer& container, const std::string& table,
                                      const std::string& column, const std::string& new_name) {
  Result<TableDefinition> definition = container.GetTable(table);
  if (!definition.ok()) return ColumnRenameOutcome::kTableNotFound;
  if (definition->ColumnIndex(column) < 0) return ColumnRenameOutcome::kColumnNotFound;
  if (new_name != column && definition->ColumnIndex(new_name) >= 0)
    return ColumnRenameOutcome::kDuplicateColumnNames;
  if (!container.RenameColumn(table, column, new_name).ok()) return ColumnRenameOutcome::kFailure;
  return ColumnRenameOutcome::kSuccess;
}

}  // namespace veltor::od
