// Renaming one column of an Object Data table, with the outcomes users are told apart.
#pragma once

#include <string>

#include "od/object_data.h"

namespace veltor::od {

enum class ColumnRenameOutcome {
  kSuccess,
  kFailure,               // the container refused the rename
  kDuplicateColumnNames,  // another column of the table already has the new name
  kColumnNotFound,
  kTableNotFound,
};

// Renames `column` of `table` to `new_name` (names compared exactly); every record of the
// table keeps its values. Nothing changes unless the outcome is kSuccess.
ColumnRenameOutcome RenameTableColumn(ObjectDataContainer& container, const std::string& table,
                                      const std::string& column, const std::string& new_name);

}  // namespace veltor::od
