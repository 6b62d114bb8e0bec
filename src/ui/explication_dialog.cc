#include "ui/explication_dialog.h"

#include <algorithm>

#include "od/format.h"
#include "od/string_table.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

namespace {

int IndexOf(const std::vector<std::string>& items, const std::string& item) {
  auto at = std::find(items.begin(), items.end(), item);
  return at == items.end() ? -1 : static_cast<int>(at - items.begin());
}

}  // namespace

ExplicationDialog::ExplicationDialog(std::vector<std::string> tables, Memory& memory,
                                     const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrExplicationTitle), od::DialogSize{240, 90}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddComboBox(kTableCombo, od::Str(od::kStrTableLabel));
  AddComboBox(kGroupByCombo, od::Str(od::kStrGroupByLabel));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void ExplicationDialog::OnInit() {
  SetItems(kTableCombo, tables_);
  if (!tables_.empty()) SetSelectedIndex(kTableCombo, std::max(0, IndexOf(tables_, memory_.table)));
  ShowFields(memory_.group_by);
}

void ExplicationDialog::OnChanged(int control_id) {
  if (control_id == kTableCombo) ShowFields("");
}

void ExplicationDialog::ShowFields(const std::string& keep) {
  std::vector<std::string> fields = {od::Str(od::kStrNoGrouping)};
  for (std::string& name : ChosenTableColumns(*this, kTableCombo, container_))
    fields.push_back(std::move(name));
  // Item 0 is "(none)": a field named so is still found after it.
  int kept = keep.empty() ? -1 : IndexOf({fields.begin() + 1, fields.end()}, keep);
  SetItems(kGroupByCombo, std::move(fields));
  SetSelectedIndex(kGroupByCombo, kept < 0 ? 0 : kept + 1);
}

Status ExplicationDialog::OnOk() {
  int table = SelectedIndex(kTableCombo);
  if (table < 0)
    return Status::Error(od::Format(od::Str(od::kStrChooseTable), od::Str(od::kStrTableLabel)));
  table_ = Items(kTableCombo)[table];
  int field = SelectedIndex(kGroupByCombo);
  group_by_ = field > 0 ? Items(kGroupByCombo)[field] : std::string();
  memory_.table = table_;
  memory_.group_by = group_by_;
  return Status::Ok();
}

}  // namespace veltor::ui
