#include "ui/chosen_table.h"

namespace veltor::ui {

std::vector<std::string> ChosenTableColumns(const od::DialogModel& dialog, int table_control,
                                            const od::ObjectDataContainer& container) {
  std::vector<std::string> names;
  int chosen = dialog.SelectedIndex(table_control);
  if (chosen < 0) return names;
  Result<od::TableDefinition> def = container.GetTable(dialog.Items(table_control)[static_cast<size_t>(chosen)]);
  if (!def.ok()) return names;
  for (const od::ColumnDefinition& column : def->columns) names.push_back(column.name);
  return names;
}

}  // namespace veltor::ui
