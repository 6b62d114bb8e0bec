#include "ui/pgui_od_list.h"

#include <algorithm>

#include "od/catalogue.h"
#include "od/string_table.h"
#include "ui/sorted_list.h"

namespace veltor::ui {

PGUIODList::PGUIODList(std::vector<std::string>& tables)
    : DialogModel(od::Str(od::kStrDetachOdTitle), od::DialogSize{176, 229}), tables_(tables) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kMultiple);
  AddButton(kSelectAllNothing, od::Str(od::kStrSelectAllNothing));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void PGUIODList::OnInit() {
  std::vector<std::string> shown;
  for (const std::string& name : tables_)
    if (!od::IsSystemTableName(name)) shown.push_back(name);
  SetItems(kTableList, SortedForList(std::move(shown)));
}

std::optional<od::DialogResult> PGUIODList::OnButton(int button_id) {
  if (button_id != kSelectAllNothing) return DialogModel::OnButton(button_id);
  size_t count = Items(kTableList).size();
  if (SelectedIndices(kTableList).size() == count) {
    SetSelectedIndices(kTableList, {});
  } else {
    std::vector<int> all(count);
    for (size_t i = 0; i < count; ++i) all[i] = static_cast<int>(i);
    SetSelectedIndices(kTableList, std::move(all));
  }
  return std::nullopt;
}

Status PGUIODList::OnOk() {
  const std::vector<std::string> chosen = SelectedItems(kTableList);
  tables_.erase(std::remove_if(tables_.begin(), tables_.end(),
                               [&](const std::string& name) {
                                 return std::find(chosen.begin(), chosen.end(), name) == chosen.end();
                               }),
                tables_.end());
  return Status::Ok();
}

}  // namespace veltor::ui
