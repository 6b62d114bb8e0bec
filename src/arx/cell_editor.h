// Edits one cell of a report-view list view in place: an edit control over the cell that
// takes the text on Enter or when it loses the focus, and drops it on Esc. Used by the
// dialogs' grids and by the table palette.
#pragma once

#include "arx/windows_include.h"

#include <functional>
#include <string>

namespace veltor::arx {

class CellEditor {
 public:
  // Receives the row, the column and the text typed when an edit is taken.
  using Commit = std::function<void(int row, int column, const std::wstring& text)>;

  CellEditor() = default;
  ~CellEditor();
  CellEditor(const CellEditor&) = delete;
  CellEditor& operator=(const CellEditor&) = delete;

  // Starts editing cell (row, column) of `list` showing `text`; an edit under way is taken
  // first. False when the cell is not on screen.
  bool Begin(HWND list, int row, int column, const std::wstring& text, Commit commit);
  // Ends the edit under way (if any), taking its text when `take`.
  void End(bool take);
  bool editing() const { return edit_ != nullptr; }

 private:
  static LRESULT CALLBACK EditProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam,
                                   UINT_PTR id, DWORD_PTR self);

  HWND edit_ = nullptr;
  int row_ = -1;
  int column_ = -1;
  Commit commit_;
  bool ending_ = false;
};

// The row and column of a report-view list view under a point in its client area; false
// when there is no cell there.
bool CellAt(HWND list, POINT point, int* row, int* column);

// A window's text as UTF-16.
std::wstring WindowText(HWND window);

}  // namespace veltor::arx
