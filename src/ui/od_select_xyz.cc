#include "ui/od_select_xyz.h"

#include <algorithm>

#include "od/string_table.h"
#include "od/text.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

namespace {

constexpr int kColumnCombos[] = {OdSelectXyz::kXCombo, OdSelectXyz::kYCombo,
                                 OdSelectXyz::kZCombo};

// The precision typed into an edit: its leading integer, 0 when negative (not capped).
int PrecisionOf(const std::string& text) { return std::max(0, od::ParseLeadingInt(text)); }

}  // namespace

OdSelectXyz::OdSelectXyz(std::vector<std::string> tables, Memory& memory,
                         const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrSetXyzTitle), od::DialogSize{280, 170}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kSingle);
  AddComboBox(kXCombo, od::Str(od::kStrX));
  AddComboBox(kYCombo, od::Str(od::kStrY));
  AddComboBox(kZCombo, od::Str(od::kStrZ));
  AddComboBox(kXyModeCombo, od::Str(od::kStrXyFrom));
  AddComboBox(kZModeCombo, od::Str(od::kStrZFrom));
  AddEditBox(kXyPrecision, od::Str(od::kStrXyPrecision), od::EditType::kInteger);
  AddEditBox(kZPrecision, od::Str(od::kStrZPrecision), od::EditType::kInteger);
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OdSelectXyz::OnInit() {
  SetItems(kTableList, tables_);
  auto remembered = std::find(tables_.begin(), tables_.end(), memory_.table);
  if (remembered != tables_.end())
    SetSelectedIndex(kTableList, static_cast<int>(remembered - tables_.begin()));
  ShowColumns();
  SetItems(kXyModeCombo, {od::Str(od::kStrXyFirst), od::Str(od::kStrXyLast),
                          od::Str(od::kStrXyCenter)});
  SetSelectedIndex(kXyModeCombo, static_cast<int>(memory_.xy_mode));
  SetItems(kZModeCombo, {od::Str(od::kStrZMin), od::Str(od::kStrZMax), od::Str(od::kStrZAverage)});
  SetSelectedIndex(kZModeCombo, static_cast<int>(memory_.z_mode));
  SetText(kXyPrecision, std::to_string(memory_.xy_precision));
  SetText(kZPrecision, std::to_string(memory_.z_precision));
}

void OdSelectXyz::OnChanged(int control_id) {
  if (control_id == kTableList) ShowColumns();
}

void OdSelectXyz::ShowColumns() {
  std::vector<std::string> items{""};
  for (std::string& name : ChosenTableColumns(*this, kTableList, container_))
    items.push_back(std::move(name));
  for (int combo : kColumnCombos) {
    SetItems(combo, items);
    SetSelectedIndex(combo, 0);
  }
}

Status OdSelectXyz::OnOk() {
  int chosen = SelectedIndex(kTableList);
  memory_.table = chosen >= 0 ? Items(kTableList)[chosen] : "";
  // Positions in the column lists; 0 (the empty entry) or nothing selected is no column.
  int x = std::max(0, SelectedIndex(kXCombo));
  int y = std::max(0, SelectedIndex(kYCombo));
  int z = std::max(0, SelectedIndex(kZCombo));
  // A column chosen twice clears the choice, and nothing else is stored.
  if ((x > 0 && (x == y || x == z)) || (y > 0 && y == z)) {
    memory_.x_column = memory_.y_column = memory_.z_column = "";
    return Status::Ok();
  }
  const std::vector<std::string>& columns = Items(kXCombo);
  memory_.x_column = columns[x];
  memory_.y_column = columns[y];
  memory_.z_column = columns[z];
  memory_.xy_mode = static_cast<XyMode>(std::max(0, SelectedIndex(kXyModeCombo)));
  memory_.z_mode = static_cast<ZMode>(std::max(0, SelectedIndex(kZModeCombo)));
  memory_.xy_precision = PrecisionOf(Text(kXyPrecision));
  memory_.z_precision = PrecisionOf(Text(kZPrecision));
  return Status::Ok();
}

}  // namespace veltor::ui
