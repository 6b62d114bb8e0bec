#include "ui/od_translate.h"

#include "od/string_table.h"

namespace veltor::ui {

ODTranslate::ODTranslate(od::UiHost& ui)
    : DialogModel(od::Str(od::kStrTranslateTitle), od::DialogSize{271, 123}), ui_(ui) {
  AddStaticText(kTableGroup, od::Str(od::kStrOdNameGroup));
  AddButton(kTableFileButton, od::Str(od::kStrTableAliasFile));
  AddStaticText(kFieldGroup, od::Str(od::kStrFieldGroup));
  AddButton(kFieldFileButton, od::Str(od::kStrFieldAliasFile));
  AddStaticText(kValueGroup, od::Str(od::kStrValuesGroup));
  AddButton(kValueFileButton, od::Str(od::kStrValueAliasFile));
  AddButton(kNameToAlias, od::Str(od::kStrNameToAlias));
  AddButton(kAliasToName, od::Str(od::kStrAliasToName));
  // The dialog closes only through the two direction buttons or Cancel: it has no OK for a
  // front end to offer (a hidden OK tells the front ends so).
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk)).visible = false;
  AddButton(od::kIdCancel, od::Str(od::kStrDialogCancel));
}

void ODTranslate::ChooseFile(int button, std::string& path) {
  // The file dialog is titled by the file's kind, also once a path has replaced the caption.
  int title = button == kTableFileButton   ? od::kStrTableAliasFile
              : button == kFieldFileButton ? od::kStrFieldAliasFile
                                           : od::kStrValueAliasFile;
  std::optional<std::string> chosen = ui_.OpenFileDialog(od::Str(title), od::Str(od::kStrTextFilter));
  if (!chosen) return;
  path = *chosen;
  if (od::Control* control = Find(button)) control->label = path;
}

std::optional<od::DialogResult> ODTranslate::OnButton(int button_id) {
  switch (button_id) {
    case kTableFileButton: ChooseFile(button_id, table_file_); return std::nullopt;
    case kFieldFileButton: ChooseFile(button_id, field_file_); return std::nullopt;
    case kValueFileButton: ChooseFile(button_id, value_file_); return std::nullopt;
    case kNameToAlias: direction_ = Direction::kNameToAlias; return od::DialogResult::kOk;
    case kAliasToName: direction_ = Direction::kAliasToName; return od::DialogResult::kOk;
    case od::kIdCancel: return od::DialogResult::kCancel;
    default: return std::nullopt;
  }
}

}  // namespace veltor::ui
