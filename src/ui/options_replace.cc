#include "ui/options_replace.h"

#include "od/catalogue.h"
#include "od/string_table.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

OptionsReplace::OptionsReplace(std::vector<std::string> tables,
                               const od::ObjectDataContainer* container)
    : DialogModel(od::Str(od::kStrReplaceTitle), od::DialogSize{320, 200}),
      tables_(std::move(tables)),
      container_(container) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kSingle);
  AddListBox(kColumnList, od::Str(od::kStrColumnsLabel), od::ListMode::kMultiple);
  AddEditBox(kOldValue, od::Str(od::kStrOldValueLabel));
  AddStaticText(kArrow, od::Str(od::kStrReplaceArrow));
  AddEditBox(kNewValue, od::Str(od::kStrNewValueLabel));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OptionsReplace::OnInit() {
  std::vector<std::string> items;
  for (const std::string& name : tables_)
    if (!od::IsSystemTableName(name)) items.push_back(name);
  bool any = !items.empty();
  SetItems(kTableList, std::move(items));
  if (any) SetSelectedIndex(kTableList, 0);
  ListColumns();
}

void OptionsReplace::OnChanged(int control_id) {
  if (control_id == kTableList) ListColumns();
}

void OptionsReplace::ListColumns() {
  std::vector<std::string> columns;
  if (container_) columns = ChosenTableColumns(*this, kTableList, *container_);
  SetItems(kColumnList, std::move(columns));
}

Status OptionsReplace::OnOk() {
  std::vector<std::string> table = SelectedItems(kTableList);
  std::vector<std::string> columns = SelectedItems(kColumnList);
  if (table.empty() || columns.empty()) return Status::Error(od::Str(od::kStrChooseColumns));
  choice_ = {table.front(), std::move(columns), Text(kOldValue), Text(kNewValue)};
  return Status::Ok();
}

}  // namespace veltor::ui
