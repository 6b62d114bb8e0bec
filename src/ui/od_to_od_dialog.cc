#include "ui/od_to_od_dialog.h"

#include <algorithm>

#include "od/format.h"
#include "od/string_table.h"
#include "od/text.h"
#include "od/value.h"

namespace veltor::ui {

namespace {

// The source column a typed name means: the exact name first, then one that differs only in
// case; "" when there is none.
std::string FindSourceColumn(const od::TableDefinition& source, const std::string& name) {
  for (const od::ColumnDefinition& column : source.columns)
    if (column.name == name) return column.name;
  for (const od::ColumnDefinition& column : source.columns)
    if (od::EqualsIgnoreCase(column.name, name)) return column.name;
  return "";
}

int IndexOf(const std::vector<std::string>& items, const std::string& name, int fallback) {
  auto at = std::find(items.begin(), items.end(), name);
  if (at != items.end()) return static_cast<int>(at - items.begin());
  return items.empty() ? -1 : std::min(fallback, static_cast<int>(items.size()) - 1);
}

}  // namespace

OdToOdDialog::OdToOdDialog(std::vector<std::string> tables, Memory& memory,
                           const od::ObjectDataContainer& container)
    : DialogModel(od::Str(od::kStrOdToOdTitle), od::DialogSize{320, 260}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container) {
  AddComboBox(kSourceCombo, od::Str(od::kStrSourceTable));
  AddComboBox(kTargetCombo, od::Str(od::kStrTargetTable));
  AddGrid(kFieldGrid, od::Str(od::kStrFieldsLabel),
          {od::Str(od::kStrTargetField), od::Str(od::kStrTypeLabel), od::Str(od::kStrSourceField)},
          {false, false, true});
  AddCheckBox(kAttachMissing, od::Str(od::kStrAttachMissing));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OdToOdDialog::OnInit() {
  SetItems(kSourceCombo, tables_);
  SetItems(kTargetCombo, tables_);
  // Without a remembered choice: the first table into the second.
  SetSelectedIndex(kSourceCombo, IndexOf(tables_, memory_.source_table, 0));
  SetSelectedIndex(kTargetCombo, IndexOf(tables_, memory_.target_table, 1));
  SetChecked(kAttachMissing, memory_.attach_missing);
  ProposePairs();
}

void OdToOdDialog::OnChanged(int control_id) {
  if (control_id == kSourceCombo || control_id == kTargetCombo) ProposePairs();
}

od::TableDefinition OdToOdDialog::Chosen(int combo) const {
  int chosen = SelectedIndex(combo);
  if (chosen < 0) return {};
  Result<od::TableDefinition> def = container_.GetTable(Items(combo)[chosen]);
  return def.ok() ? std::move(*def) : od::TableDefinition();
}

void OdToOdDialog::ProposePairs() {
  od::TableDefinition source = Chosen(kSourceCombo);
  od::GridRows rows;
  for (const od::ColumnDefinition& column : Chosen(kTargetCombo).columns)
    rows.push_back({column.name, od::TypeName(column.type), FindSourceColumn(source, column.name)});
  SetRows(kFieldGrid, std::move(rows));
}

Status OdToOdDialog::OnOk() {
  od::TableDefinition source = Chosen(kSourceCombo);
  od::TableDefinition target = Chosen(kTargetCombo);
  if (source.name.empty())
    return Status::Error(od::Format(od::Str(od::kStrChooseTable), od::Str(od::kStrSourceTable)));
  if (target.name.empty())
    return Status::Error(od::Format(od::Str(od::kStrChooseTable), od::Str(od::kStrTargetTable)));
  if (source.name == target.name)
    return Status::Error(od::Format(od::Str(od::kStrSameTables), od::Str(od::kStrTargetTable)));
  const char* fields_label = od::Str(od::kStrFieldsLabel);
  OdToOdChoice choice{source.name, target.name, {}, Checked(kAttachMissing)};
  const od::GridRows& rows = Rows(kFieldGrid);
  for (size_t i = 0; i < rows.size() && i < target.columns.size(); ++i) {
    std::string typed(od::TrimBlanks(rows[i][kSourceColumn]));
    if (typed.empty()) continue;
    std::string found = FindSourceColumn(source, typed);
    if (found.empty())
      return Status::Error(od::Format(od::Str(od::kStrNoSuchField), fields_label,
                                      source.name.c_str(), typed.c_str()));
    choice.pairs.push_back({found, target.columns[i].name});
  }
  if (choice.pairs.empty())
    return Status::Error(od::Format(od::Str(od::kStrNoFieldPaired), fields_label));
  choice_ = std::move(choice);
  memory_ = {choice_.source_table, choice_.target_table, choice_.attach_missing};
  return Status::Ok();
}

}  // namespace veltor::ui
