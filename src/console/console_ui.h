// The user interface of the console: dialogs as blocks of prompts, message boxes as keyword
// prompts and file dialogs as a prompt for a path, all through the command line's editor.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "od/editor.h"
#include "od/ui_host.h"

namespace veltor::console {

class TablePanel;

class ConsoleUi : public od::UiHost {
 public:
  // `editor` must outlive this object.
  explicit ConsoleUi(od::Editor& editor) : editor_(editor) {}

  // Shows the dialog with DialogRenderer.
  od::DialogResult ShowModal(od::DialogModel& dialog) override;
  // Prints the title and the text. A box with only OK returns kOk without asking; otherwise
  // asks for one of its buttons as keywords ("y" answers Yes); Enter takes the first button.
  // The answer "Cancel" or the editor's cancel gives kCancel, whatever the buttons.
  od::MessageAnswer MessageBox(const std::string& title, const std::string& text,
                               od::MessageButtons buttons) override;
  // Asks for the path of an existing file and returns it in full (a relative answer is taken
  // from the current folder); an empty answer or "Cancel" gives nothing. A path may be written
  // in double quotes.
  std::optional<std::string> OpenFileDialog(const std::string& title,
                                            const std::string& filter) override;
  // Asks for a path to write; "*" takes `default_name` (when there is one), an empty answer or
  // "Cancel" gives nothing.
  std::optional<std::string> SaveFileDialog(const std::string& title, const std::string& filter,
                                            const std::string& default_name) override;

  // The command palette as a numbered list; the chosen entry runs as a double click would
  // (its command is queued). The OD table palette opens as a panel (TablePanel) that takes
  // the command line after the command, when a panel opener is set.
  bool ShowPalette(od::Palette& palette) override;

  // How a modeless panel gets the command line (the session's OpenPanel).
  using PanelOpener = std::function<void(std::function<bool()>)>;
  void SetPanelOpener(PanelOpener opener) { open_panel_ = std::move(opener); }

 private:
  std::optional<std::string> AskPath(const std::string& prompt);

  od::Editor& editor_;
  PanelOpener open_panel_;
  std::shared_ptr<TablePanel> table_panel_;
};

// The file patterns of a "Description (*.a;*.b)|*.a;*.b||" filter, as "*.a;*.b" (several
// pairs joined with ";"); empty when the filter names none.
std::string FilterPatterns(const std::string& filter);

}  // namespace veltor::console
