#include "ui/text_box_dialog.h"

#include "od/string_table.h"

namespace veltor::ui {

TextBoxDialog::TextBoxDialog(std::string title, int width, int height)
    : DialogModel(std::move(title), {width, height}) {
  AddTextBox(kTextId, "");
  AddButton(od::kIdOk, od::Str(od::kStrDialogOk));
}

void TextBoxDialog::SetText(const std::string& text) {
  std::string shown;
  shown.reserve(text.size() + text.size() / 16);
  for (char c : text) {
    if (c == '\n') shown += '\r';
    shown += c;
  }
  od::DialogModel::SetText(kTextId, std::move(shown));
}

}  // namespace veltor::ui
