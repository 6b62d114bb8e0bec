#include "ui/options_set_prop.h"

#include <algorithm>

#include "od/string_table.h"
#include "od/text.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

namespace {

constexpr int kColumnCombos[] = {OptionsSetProp::kLengthCombo, OptionsSetProp::kAreaCombo,
                                 OptionsSetProp::kVolumeCombo};

}  // namespace

OptionsSetProp::OptionsSetProp(std::vector<std::string> tables, Memory& memory,
                               const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrSetPropTitle), od::DialogSize{260, 150}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kSingle);
  AddComboBox(kLengthCombo, od::Str(od::kStrLength));
  AddComboBox(kAreaCombo, od::Str(od::kStrArea));
  AddComboBox(kVolumeCombo, od::Str(od::kStrVolume));
  AddEditBox(kPrecision, od::Str(od::kStrPrecision), od::EditType::kInteger);
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OptionsSetProp::OnInit() {
  SetItems(kTableList, tables_);
  // A single table needs no choosing.
  if (tables_.size() == 1) SetSelectedIndex(kTableList, 0);
  ShowColumns();
  SetText(kPrecision, std::to_string(memory_.precision));
}

void OptionsSetProp::OnChanged(int control_id) {
  if (control_id == kTableList) ShowColumns();
}

void OptionsSetProp::ShowColumns() {
  std::vector<std::string> columns = ChosenTableColumns(*this, kTableList, container_);
  for (int combo : kColumnCombos) SetItems(combo, columns);
}

Status OptionsSetProp::OnOk() {
  int chosen = SelectedIndex(kTableList);
  memory_.table = chosen >= 0 ? Items(kTableList)[chosen] : "";
  auto column = [this](int combo) {
    int at = SelectedIndex(combo);
    return at >= 0 ? Items(combo)[at] : std::string();
  };
  memory_.length_column = column(kLengthCombo);
  memory_.area_column = column(kAreaCombo);
  memory_.volume_column = column(kVolumeCombo);
  memory_.precision = std::max(0, od::ParseLeadingInt(Text(kPrecision)));
  return Status::Ok();
}

}  // namespace veltor::ui
