#include "ui/options_rm_unused.h"

#include "od/catalogue.h"
#include "od/string_table.h"
#include "ui/sorted_list.h"

namespace veltor::ui {

namespace {

std::vector<std::string> UserTablesSorted(const std::vector<std::string>& names) {
  std::vector<std::string> kept;
  for (const std::string& name : names)
    if (!od::IsSystemTableName(name)) kept.push_back(name);
  return SortedForList(std::move(kept));
}

}  // namespace

OptionsRmUnused::OptionsRmUnused(std::vector<std::string> unused, std::vector<std::string> used)
    : DialogModel(od::Str(od::kStrRemoveUnusedTitle), od::DialogSize{240, 229}),
      unused_(std::move(unused)),
      used_(std::move(used)) {
  AddListBox(kUsedList, od::Str(od::kStrUsedLabel), od::ListMode::kDisplayOnly);
  AddListBox(kUnusedList, od::Str(od::kStrUnusedLabel), od::ListMode::kMultiple);
  AddButton(kSelectAllNothing, od::Str(od::kStrSelectAllNothing));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OptionsRmUnused::OnInit() {
  SetItems(kUsedList, UserTablesSorted(used_));
  SetItems(kUnusedList, UserTablesSorted(unused_));
}

std::optional<od::DialogResult> OptionsRmUnused::OnButton(int button_id) {
  if (button_id != kSelectAllNothing) return DialogModel::OnButton(button_id);
  if (SelectedIndices(kUnusedList).empty()) {
    std::vector<int> all(Items(kUnusedList).size());
    for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i);
    SetSelectedIndices(kUnusedList, std::move(all));
  } else {
    SetSelectedIndices(kUnusedList, {});
  }
  return std::nullopt;
}

Status OptionsRmUnused::OnOk() {
  result_ = SelectedItems(kUnusedList);
  return Status::Ok();
}

}  // namespace veltor::ui
