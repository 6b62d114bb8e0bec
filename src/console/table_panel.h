// The OD table palette on the command line: a page of the grid as text, and one prompt whose
// keywords are the palette's buttons, menus and gestures. It is modeless as the palette is:
// the session calls Step between commands while the panel is open, so the host commands the
// palette sends (undo, zoom, the value query) run before the next prompt.
#pragma once

#include <string>
#include <vector>

#include "od/editor.h"
#include "ui/od_table_view.h"

namespace veltor::console {

class TablePanel {
 public:
  static constexpr size_t kPageRows = 20;

  // `editor` and `view` must outlive the panel.
  TablePanel(od::Editor& editor, ui::OdTableView& view);

  // Shows the page when it changed, asks once and does what the answer says. False when the
  // panel closed (Enter, Cancel or the end of the input).
  bool Step();

  // The current page as printed: a heading, the column titles and the rows.
  std::string PageText() const;

 private:
  bool Act(const std::string& keyword);
  void ChooseTable();
  void Sort();
  void Select();
  void EditCell();
  void SetColumn();
  void RunMenu(const std::string& name, const std::vector<std::string>& entries);
  void PressKey();
  void AskSynchronize();
  void DoubleClick();
  // A grid column by number ("#" is 0) or field name; nothing when the answer names none.
  std::optional<size_t> AskColumn(const std::string& prompt);
  // A row by its position on the grid (from 1); nothing when cancelled or out of range.
  std::optional<size_t> AskRow();
  size_t PageCount() const;

  od::Editor& editor_;
  ui::OdTableView& view_;
  size_t page_ = 0;
  bool changed_ = true;  // the page is printed before the next prompt
};

// Parses a row list such as "1-3,7" (positions from 1) into 0-based rows below `count`;
// nothing when the text is not such a list or names a row out of range.
std::optional<std::vector<size_t>> ParseRowList(const std::string& text, size_t count);

}  // namespace veltor::console
