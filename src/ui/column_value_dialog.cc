#include "ui/column_value_dialog.h"

#include "od/string_table.h"

namespace veltor::ui {

ColumnValueDialog::ColumnValueDialog(const std::string& field, const std::string& type_name)
    : od::DialogModel(field + " (" + type_name + ")", od::DialogSize{160, 40}) {
  AddEditBox(kValueId, "Value");
  // Enter in the edit box closes with OK, Esc with Cancel.
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

}  // namespace veltor::ui
