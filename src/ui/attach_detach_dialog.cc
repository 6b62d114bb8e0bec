#include "ui/attach_detach_dialog.h"

#include <algorithm>

#include "od/format.h"
#include "od/string_table.h"
#include "od/value.h"

namespace veltor::ui {

AttachDetachDialog::AttachDetachDialog(std::vector<std::string> tables, Memory& memory,
                                       const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrAttachDetachTitle), od::DialogSize{320, 240}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddComboBox(kTableCombo, od::Str(od::kStrTableLabel));
  AddGrid(kValueGrid, od::Str(od::kStrValuesLabel),
          {od::Str(od::kStrField), od::Str(od::kStrTypeLabel), od::Str(od::kStrValue)},
          {false, false, true});
  AddButton(od::kIdOk, od::Str(od::kStrAttach));
  AddButton(kDetach, od::Str(od::kStrDetach));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void AttachDetachDialog::OnInit() {
  SetItems(kTableCombo, tables_);
  auto remembered = std::find(tables_.begin(), tables_.end(), memory_.table);
  if (!tables_.empty())
    SetSelectedIndex(kTableCombo, remembered == tables_.end()
                                      ? 0
                                      : static_cast<int>(remembered - tables_.begin()));
  ShowColumns();
}

void AttachDetachDialog::OnChanged(int control_id) {
  if (control_id == kTableCombo) ShowColumns();
}

void AttachDetachDialog::ShowColumns() {
  shown_ = od::TableDefinition();
  int chosen = SelectedIndex(kTableCombo);
  if (chosen >= 0) {
    Result<od::TableDefinition> def = container_.GetTable(Items(kTableCombo)[chosen]);
    if (def.ok()) shown_ = std::move(*def);
  }
  od::GridRows rows;
  for (const od::ColumnDefinition& column : shown_.columns)
    rows.push_back({column.name, od::TypeName(column.type), od::ValueToText(column.default_value)});
  SetRows(kValueGrid, std::move(rows));
}

std::optional<od::DialogResult> AttachDetachDialog::OnButton(int button_id) {
  if (button_id == od::kIdOk || button_id == kDetach) {
    action_ = button_id == kDetach ? Action::kDetach : Action::kAttach;
    return od::DialogResult::kOk;
  }
  return DialogModel::OnButton(button_id);
}

Status AttachDetachDialog::OnOk() {
  const char* table_label = od::Str(od::kStrTableLabel);
  if (shown_.name.empty())
    return Status::Error(od::Format(od::Str(od::kStrChooseTable), table_label));
  od::Record record{shown_.name, {}};
  if (action_ == Action::kAttach) {
    const od::GridRows& rows = Rows(kValueGrid);
    for (size_t i = 0; i < shown_.columns.size(); ++i) {
      const od::ColumnDefinition& column = shown_.columns[i];
      od::Value value = column.default_value;
      const std::string& text = i < rows.size() ? rows[i][kValueColumn] : std::string();
      // A cell left as shown keeps the default exactly (its text may hold a "*" or round).
      if (text != od::ValueToText(value) && !od::SetValueFromText(value, text))
        return Status::Error(od::Format(od::Str(od::kStrDoesNotConvert), column.name.c_str(),
                                        text.c_str(), od::TypeName(column.type)));
      record.values.push_back(std::move(value));
    }
  }
  record_ = std::move(record);
  memory_.table = shown_.name;
  return Status::Ok();
}

}  // namespace veltor::ui
