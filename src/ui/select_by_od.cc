#include "ui/select_by_od.h"

#include "od/catalogue.h"

namespace veltor::ui {

namespace {

// Tabs and line feeds typed into a cell do not belong to the pattern; spaces do.
std::string TrimTabsAndLineFeeds(const std::string& text) {
  size_t begin = text.find_first_not_of("\t\n");
  if (begin == std::string::npos) return "";
  size_t end = text.find_last_not_of("\t\n");
  return text.substr(begin, end - begin + 1);
}

}  // namespace

SelectByOD::SelectByOD(std::vector<std::string> tables, bool show_extended, Memory& memory,
                       const od::ObjectDataContainer& container)
    : DialogModel("Find entities with specific OD values", memory.size),
      tables_(std::move(tables)),
      show_extended_(show_extended),
      memory_(memory),
      container_(container) {
  AddListBox(kTableList, "Tables", od::ListMode::kMultiple);
  AddGrid(kConditionGrid, "Conditions", {"Field", "Value"}, {false, true});
  AddCheckBox(kExtended, "Extended (>, <, <>, *)").visible = false;
  AddButton(od::kIdOk, "OK");
  AddButton(od::kIdCancel, "Cancel");
}

void SelectByOD::OnInit() {
  std::vector<std::string> items;
  for (const std::string& name : tables_)
    if (!od::IsSystemTableName(name)) items.push_back(name);
  SetItems(kTableList, std::move(items));
  SetRows(kConditionGrid, {});
  SetVisible(kExtended, show_extended_);
  SetChecked(kExtended, memory_.extended);
  SetSize(memory_.size);
}

void SelectByOD::OnChanged(int control_id) {
  if (control_id != kTableList) return;
  std::vector<std::vector<std::string>> rows;
  for (const std::string& column : od::GetSharedColumns(container_, SelectedItems(kTableList)))
    rows.push_back({column, "*"});
  SetRows(kConditionGrid, std::move(rows));
}

Status SelectByOD::OnOk() {
  selected_tables_ = SelectedItems(kTableList);
  conditions_.clear();
  for (const auto& row : Rows(kConditionGrid))
    conditions_.push_back({row[0], TrimTabsAndLineFeeds(row[1])});
  memory_.extended = Checked(kExtended);
  return Status::Ok();
}

void SelectByOD::Resized(od::DialogSize size) {
  memory_.size = size;
  SetSize(size);
}

}  // namespace veltor::ui
