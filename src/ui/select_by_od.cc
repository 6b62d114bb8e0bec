#include "ui/select_by_od.h"

#include "od/catalogue.h"
#include "od/string_table.h"
#include "od/text.h"

namespace veltor::ui {

SelectByOd::SelectByOd(std::vector<std::string> tables, bool show_extended, Memory& memory,
                       const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrValueQueryTitle), memory.size),
      tables_(std::move(tables)),
      show_extended_(show_extended),
      memory_(memory),
      container_(container) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kMultiple);
  AddGrid(kConditionGrid, od::Str(od::kStrConditionsLabel),
          {od::Str(od::kStrField), od::Str(od::kStrValue)}, {false, true});
  AddCheckBox(kExtended, od::Str(od::kStrExtendedPatterns)).visible = false;
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void SelectByOd::OnInit() {
  std::vector<std::string> items;
  for (const std::string& name : tables_)
    if (!od::IsSystemTableName(name)) items.push_back(name);
  SetItems(kTableList, std::move(items));
  SetRows(kConditionGrid, {});
  SetVisible(kExtended, show_extended_);
  SetChecked(kExtended, memory_.extended);
  SetSize(memory_.size);
}

void SelectByOd::OnChanged(int control_id) {
  if (control_id != kTableList) return;
  std::vector<std::vector<std::string>> rows;
  for (const std::string& column : od::GetSharedColumns(container_, SelectedItems(kTableList)))
    rows.push_back({column, "*"});
  SetRows(kConditionGrid, std::move(rows));
}

Status SelectByOd::OnOk() {
  selected_tables_ = SelectedItems(kTableList);
  conditions_.clear();
  for (const auto& row : Rows(kConditionGrid))
    // Tabs and line feeds typed into a cell do not belong to the pattern; spaces do.
    conditions_.push_back({row[0], std::string(od::TrimBlanks(row[1], "\t\n"))});
  memory_.extended = Checked(kExtended);
  return Status::Ok();
}

void SelectByOd::Resized(od::DialogSize size) {
  memory_.size = size;
  SetSize(size);
}

}  // namespace veltor::ui
