#include "ui/add_value_dialog.h"

#include <algorithm>

#include "od/format.h"
#include "od/string_table.h"

namespace veltor::ui {

namespace {

// The index of `name` among `items`, or `fallback` when it is not there (or -1 without
// items).
int IndexOr(const std::vector<std::string>& items, const std::string& name, int fallback) {
  auto at = std::find(items.begin(), items.end(), name);
  if (at != items.end()) return static_cast<int>(at - items.begin());
  return items.empty() ? -1 : std::min(fallback, static_cast<int>(items.size()) - 1);
}

}  // namespace

AddValueDialog::AddValueDialog(std::vector<std::string> tables, Memory& memory,
                               const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrAddValueTitle), od::DialogSize{260, 150}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddComboBox(kTableCombo, od::Str(od::kStrTableLabel));
  AddComboBox(kSourceCombo, od::Str(od::kStrSourceField));
  AddComboBox(kTargetCombo, od::Str(od::kStrTargetField));
  AddComboBox(kModeCombo, od::Str(od::kStrHowToAdd));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void AddValueDialog::OnInit() {
  SetItems(kTableCombo, tables_);
  SetSelectedIndex(kTableCombo, IndexOr(tables_, memory_.last.table, 0));
  SetItems(kModeCombo, {od::Str(od::kStrAddReplace), od::Str(od::kStrAddAppend),
                        od::Str(od::kStrAddNumbers)});
  SetSelectedIndex(kModeCombo, static_cast<int>(memory_.last.mode));
  ShowFields();
}

void AddValueDialog::OnChanged(int control_id) {
  if (control_id == kTableCombo) ShowFields();
}

void AddValueDialog::ShowFields() {
  shown_ = od::TableDefinition();
  int chosen = SelectedIndex(kTableCombo);
  if (chosen >= 0) {
    Result<od::TableDefinition> def = container_.GetTable(Items(kTableCombo)[chosen]);
    if (def.ok()) shown_ = std::move(*def);
  }
  std::vector<std::string> fields;
  for (const od::ColumnDefinition& column : shown_.columns) fields.push_back(column.name);
  // The remembered fields when the table has them; otherwise the first into the second.
  bool same_table = shown_.name == memory_.last.table;
  SetItems(kSourceCombo, fields);
  SetSelectedIndex(kSourceCombo, IndexOr(fields, same_table ? memory_.last.source : "", 0));
  SetItems(kTargetCombo, fields);
  SetSelectedIndex(kTargetCombo, IndexOr(fields, same_table ? memory_.last.target : "", 1));
}

Status AddValueDialog::OnOk() {
  if (shown_.name.empty())
    return Status::Error(od::Format(od::Str(od::kStrChooseTable), od::Str(od::kStrTableLabel)));
  // Indices into the fields shown; one past them (a stale list) counts as no choice.
  const int fields = static_cast<int>(shown_.columns.size());
  int source = SelectedIndex(kSourceCombo) < fields ? SelectedIndex(kSourceCombo) : -1;
  int target = SelectedIndex(kTargetCombo) < fields ? SelectedIndex(kTargetCombo) : -1;
  if (source < 0)
    return Status::Error(od::Format(od::Str(od::kStrChooseField), od::Str(od::kStrSourceField)));
  if (target < 0)
    return Status::Error(od::Format(od::Str(od::kStrChooseField), od::Str(od::kStrTargetField)));
  int mode = std::max(0, SelectedIndex(kModeCombo));
  od::ValueType target_type = shown_.columns[static_cast<size_t>(target)].type;
  if (mode == static_cast<int>(AddMode::kAddNumbers) && target_type != od::ValueType::kInteger &&
      target_type != od::ValueType::kReal)
    return Status::Error(
        od::Format(od::Str(od::kStrNeedsNumberField), od::Str(od::kStrTargetField)));
  choice_ = {shown_.name, shown_.columns[static_cast<size_t>(source)].name,
             shown_.columns[static_cast<size_t>(target)].name, static_cast<AddMode>(mode)};
  memory_.last = choice_;
  return Status::Ok();
}

}  // namespace veltor::ui
