#include "ui/od_select.h"

#include <algorithm>

#include "od/format.h"
#include "od/string_table.h"
#include "od/text.h"
#include "od/value.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

OdSelect::OdSelect(std::vector<std::string> tables, Memory& memory,
                   const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrSetTextTitle), od::DialogSize{240, 160}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kSingle);
  AddListBox(kFieldList, od::Str(od::kStrFieldsLabel), od::ListMode::kSingle);
  od::Control& tolerance = AddEditBox(kTolerance, od::Str(od::kStrTolerance), od::EditType::kReal);
  tolerance.minimum = 0.0;
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OdSelect::OnInit() {
  SetItems(kTableList, tables_);
  auto remembered = std::find(tables_.begin(), tables_.end(), memory_.table);
  if (remembered != tables_.end())
    SetSelectedIndex(kTableList, static_cast<int>(remembered - tables_.begin()));
  ShowFields();
  SetText(kTolerance, od::ValueToText(od::Value::Real(kDefaultTolerance)));
}

void OdSelect::OnChanged(int control_id) {
  if (control_id == kTableList) ShowFields();
  SetEnabled(od::kIdOk, SelectedIndex(kFieldList) >= 0);
}

void OdSelect::ShowFields() {
  std::vector<std::string> fields = ChosenTableColumns(*this, kTableList, container_);
  SetItems(kFieldList, fields);
  SetEnabled(od::kIdOk, false);
}

Status OdSelect::OnOk() {
  int table_at = SelectedIndex(kTableList);
  int field_at = SelectedIndex(kFieldList);
  memory_.table = table_at >= 0 ? Items(kTableList)[table_at] : "";
  memory_.column = field_at >= 0 ? Items(kFieldList)[field_at] : "";
  tolerance_ = od::ParseLeadingDouble(Text(kTolerance));
  return Status::Ok();
}

}  // namespace veltor::ui
