// The table a dialog's table list or combo box has chosen, and its columns: what every
// dialog that offers a table and then its fields refills when the table changes.
#pragma once

#include <string>
#include <vector>

#include "od/dialog_model.h"
#include "od/object_data.h"

namespace veltor::ui {

// The column names, in definition order, of the table chosen in control `table_control`;
// empty when none is chosen or the table cannot be had.
std::vector<std::string> ChosenTableColumns(const od::DialogModel& dialog, int table_control,
                                            const od::ObjectDataContainer& container);

}  // namespace veltor::ui
