#include "arx/cell_editor.h"

#include <commctrl.h>

#include <vector>

namespace veltor::arx {

namespace {

constexpr UINT_PTR kSubclassId = 1;

}  // namespace

std::wstring WindowText(HWND window) {
  const int length = GetWindowTextLengthW(window);
  if (length <= 0) return std::wstring();
  std::vector<wchar_t> buffer(static_cast<size_t>(length) + 1);
  const int got = GetWindowTextW(window, buffer.data(), length + 1);
  return std::wstring(buffer.data(), static_cast<size_t>(got > 0 ? got : 0));
}

bool CellAt(HWND list, POINT point, int* row, int* column) {
  LVHITTESTINFO hit = {};
  hit.pt = point;
  if (ListView_SubItemHitTest(list, &hit) < 0 || hit.iItem < 0) return false;
  *row = hit.iItem;
  *column = hit.iSubItem;
  return true;
}

CellEditor::~CellEditor() { End(false); }

bool CellEditor::Begin(HWND list, int row, int column, const std::wstring& text, Commit commit) {
  End(true);
  ListView_EnsureVisible(list, row, FALSE);
  RECT cell = {};
  // The first column's sub-item rectangle spans the whole row; LVIR_LABEL gives its own part.
  if (!ListView_GetSubItemRect(list, row, column, column == 0 ? LVIR_LABEL : LVIR_BOUNDS, &cell))
    return false;
  edit_ = CreateWindowExW(0, L"EDIT", text.c_str(), WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL,
                          cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top, list,
                          nullptr, nullptr, nullptr);
  if (!edit_) return false;
  SendMessageW(edit_, WM_SETFONT, SendMessageW(list, WM_GETFONT, 0, 0), TRUE);
  SetWindowSubclass(edit_, EditProc, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
  row_ = row;
  column_ = column;
  commit_ = std::move(commit);
  SendMessageW(edit_, EM_SETSEL, 0, -1);
  SetFocus(edit_);
  return true;
}

void CellEditor::End(bool take) {
  if (!edit_ || ending_) return;
  ending_ = true;
  const std::wstring text = WindowText(edit_);
  HWND edit = edit_;
  edit_ = nullptr;
  RemoveWindowSubclass(edit, EditProc, kSubclassId);
  DestroyWindow(edit);
  Commit commit = std::move(commit_);
  commit_ = nullptr;
  ending_ = false;
  if (take && commit) commit(row_, column_, text);
}

LRESULT CALLBACK CellEditor::EditProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam,
                                      UINT_PTR, DWORD_PTR self) {
  auto* editor = reinterpret_cast<CellEditor*>(self);
  switch (message) {
    case WM_GETDLGCODE:
      // Enter and Esc belong to the cell, not to the dialog's default buttons.
      return DLGC_WANTALLKEYS | DefSubclassProc(edit, message, wparam, lparam);
    case WM_KEYDOWN:
      if (wparam == VK_RETURN || wparam == VK_ESCAPE) {
        editor->End(wparam == VK_RETURN);
        return 0;
      }
      break;
    case WM_CHAR:
      if (wparam == L'\r' || wparam == 0x1B) return 0;  // no beep for the keys handled above
      break;
    case WM_KILLFOCUS:
      editor->End(true);
      return 0;
    default:
      break;
  }
  return DefSubclassProc(edit, message, wparam, lparam);
}

}  // namespace veltor::arx
