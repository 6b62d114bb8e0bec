#include "ui/object_data_list.h"

#include <algorithm>

#include "od/catalogue.h"
#include "od/string_table.h"

namespace veltor::ui {

ObjectDataList::ObjectDataList(std::string caption, std::vector<std::string> tables,
                               Memory& memory, const od::ObjectDataContainer* container)
    : DialogModel(od::Str(od::kStrObjectDataTitle), od::DialogSize{176, 229}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  if (!caption.empty()) SetTitle(std::move(caption));
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kMultiple);
  AddButton(kSelectAllNothing, od::Str(od::kStrSelectAllNothing));
  AddCheckBox(kSimultaneous, od::Str(od::kStrSimultaneous));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void ObjectDataList::OnInit() {
  if (tables_.empty() && container_) tables_ = container_->TableNames();
  std::vector<std::string> items;
  std::vector<int> selected;
  for (size_t k = 0; k < tables_.size(); ++k) {
    const std::string& name = tables_[k];
    if (od::IsSystemTableName(name)) continue;
    items.push_back(name);
    if (k == 0) selected.push_back(0);
    // A remembered table selects the item at its index in the offered array, which is not
    // the list's index once a system table was skipped (an item not yet added stays unpicked).
    if (std::find(memory_.picked.begin(), memory_.picked.end(), name) != memory_.picked.end() &&
        k < items.size())
      selected.push_back(static_cast<int>(k));
  }
  SetItems(kTableList, std::move(items));
  SetSelectedIndices(kTableList, std::move(selected));
  SetChecked(kSimultaneous, memory_.simultaneous);
}

std::optional<od::DialogResult> ObjectDataList::OnButton(int button_id) {
  if (button_id != kSelectAllNothing) return DialogModel::OnButton(button_id);
  if (SelectedIndices(kTableList).empty()) {
    std::vector<int> all(Items(kTableList).size());
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i);
    SetSelectedIndices(kTableList, std::move(all));
  } else {
    SetSelectedIndices(kTableList, {});
  }
  return std::nullopt;
}

Status ObjectDataList::OnOk() {
  memory_.picked = SelectedItems(kTableList);
  memory_.simultaneous = Checked(kSimultaneous);
  return Status::Ok();
}

}  // namespace veltor::ui
