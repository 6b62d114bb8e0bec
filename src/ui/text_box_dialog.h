// A read-only text shown in a modal dialog: reports and the About box.
#pragma once

#include <string>

#include "od/dialog_model.h"

namespace veltor::ui {

class TextBoxDialog : public od::DialogModel {
 public:
  static constexpr int kTextId = 100;

  // `width` and `height` are the requested size in dialog units.
  TextBoxDialog(std::string title, int width, int height);

  // Sets the text shown. Each "\n" becomes "\r\n", the line end a multi-line edit control
  // needs, so text() holds "\r\n" line ends (text that already had them gets "\r\r\n").
  void SetText(const std::string& text);
  using od::DialogModel::SetText;
  const std::string& text() const { return Text(kTextId); }
};

}  // namespace veltor::ui
