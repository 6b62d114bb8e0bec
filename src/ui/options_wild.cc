#include "ui/options_wild.h"

#include <cctype>

#include "od/format.h"
#include "od/string_table.h"
#include "od/text.h"
#include "od/value.h"
#include "ui/chosen_table.h"

namespace veltor::ui {

int ReadFirstNumber(const std::string& text) {
  std::string_view t = od::TrimBlanks(text);
  size_t digit = (!t.empty() && (t[0] == '-' || t[0] == '+')) ? 1 : 0;
  if (digit >= t.size() || !std::isdigit(static_cast<unsigned char>(t[digit]))) return -1;
  return od::ParseLeadingInt(t);
}

OptionsWild::OptionsWild(std::vector<std::string> tables, Memory& memory,
                         const od::ObjectDataContainer& container, Services services)
    : DialogModel(od::Str(od::kStrGenerateIdsTitle), od::DialogSize{240, 140}),
      tables_(std::move(tables)),
      memory_(memory),
      container_(container),
      services_(std::move(services)) {
  AddListBox(kTableList, od::Str(od::kStrTablesLabel), od::ListMode::kSingle);
  AddComboBox(kFieldCombo, od::Str(od::kStrField));
  AddEditBox(kPrefix, od::Str(od::kStrPrefix));
  AddEditBox(kSuffix, od::Str(od::kStrSuffix));
  AddEditBox(kFirst, od::Str(od::kStrFirstNumber));
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void OptionsWild::OnInit() {
  SetItems(kTableList, tables_);
  if (tables_.size() == 1) SetSelectedIndex(kTableList, 0);
  ShowFields();
  int first = memory_.first_number < 0 ? kDefaultFirst : memory_.first_number;
  SetText(kFirst, std::to_string(first));
}

void OptionsWild::OnChanged(int control_id) {
  if (control_id == kTableList) ShowFields();
  if (control_id == kFieldCombo) FieldChosen();
}

void OptionsWild::ShowFields() {
  std::vector<std::string> fields = ChosenTableColumns(*this, kTableList, container_);
  SetItems(kFieldCombo, fields);
}

void OptionsWild::FieldChosen() {
  int table_at = SelectedIndex(kTableList);
  int field_at = SelectedIndex(kFieldCombo);
  if (table_at < 0 || field_at < 0) return;
  const std::string& table = Items(kTableList)[table_at];
  const std::string& field = Items(kFieldCombo)[field_at];
  Result<od::TableDefinition> def = container_.GetTable(table);
  int column = def.ok() ? def->ColumnIndex(field) : -1;
  od::ValueType type = column < 0 ? od::ValueType::kUnknown
                                  : def->columns[static_cast<size_t>(column)].default_value.type();
  if (type == od::ValueType::kInteger || type == od::ValueType::kReal ||
      type == od::ValueType::kCharacter) {
    SetText(kPrefix, od::ValueToText(def->columns[static_cast<size_t>(column)].default_value));
  } else if (services_.print) {
    services_.print(od::Format(od::Str(od::kStrNoDefaultValue), field.c_str()));
  }
  if (services_.propose_first)
    SetText(kFirst, std::to_string(services_.propose_first(table, field)));
}

Status OptionsWild::OnOk() {
  int table_at = SelectedIndex(kTableList);
  int field_at = SelectedIndex(kFieldCombo);
  memory_.table = table_at >= 0 ? Items(kTableList)[table_at] : "";
  memory_.column = field_at >= 0 ? Items(kFieldCombo)[field_at] : "";
  prefix_ = Text(kPrefix);
  suffix_ = Text(kSuffix);
  memory_.first_number = ReadFirstNumber(Text(kFirst));
  return Status::Ok();
}

}  // namespace veltor::ui
