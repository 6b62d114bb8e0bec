// Dialogs, message boxes and file dialogs, shown by the front end.
#pragma once

#include <optional>
#include <string>

namespace veltor::od {

class DialogModel;
class Palette;

enum class DialogResult { kOk, kCancel };
enum class MessageButtons { kOk, kOkCancel, kYesNo, kYesNoCancel };
enum class MessageAnswer { kOk, kCancel, kYes, kNo };

class UiHost {
 public:
  virtual ~UiHost() = default;
  // Shows a dialog model modally; returns how it was closed. The model holds the result.
  virtual DialogResult ShowModal(DialogModel& dialog) = 0;
  virtual MessageAnswer MessageBox(const std::string& title, const std::string& text,
                                   MessageButtons buttons) = 0;
  // A file to open, filtered by a "Description (*.a;*.b)|*.a;*.b||" filter; nothing on cancel.
  virtual std::optional<std::string> OpenFileDialog(const std::string& title,
                                                    const std::string& filter) = 0;
  virtual std::optional<std::string> SaveFileDialog(const std::string& title,
                                                    const std::string& filter,
                                                    const std::string& default_name) = 0;
  // Shows a palette (creating its window on first use); false when this front end has no
  // way to show it. Palettes stay owned by the module.
  virtual bool ShowPalette(Palette& palette) {
    (void)palette;
    return false;
  }
};

}  // namespace veltor::od
