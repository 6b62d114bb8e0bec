// The OD table palette as Win32 controls: a bar (File, Edit and View menus, the table
// drop-down, Synchronize, Refresh) over an owner-data list view whose cells the view model
// (ui::OdTableView) gives on demand. Gestures go to the view model as the workbench forwards
// them: a header click sorts, a right click on a field's header sets the whole column, a click
// on a row synchronises and a double click shows the selection, a click on a cell of the one
// selected row (or F2) edits it in place, Delete and Ctrl+A/C/F/Z/Y are the view's keys, Esc
// hides the palette, and a right click in the grid opens the File, Edit and View menus.
#include "arx/palette_window.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "arx/cell_editor.h"
#include "arx/palette_set.h"
#include "arx/wide_text.h"
#include "ui/od_table_view.h"

namespace veltor::arx {

namespace {

enum ControlId : int {
  kFileButton = 201,
  kEditButton,
  kViewButton,
  kTables,
  kSynchronize,
  kRefresh,
  kGrid,
};

// Menu command ids: the entry's index added to its menu's base.
constexpr UINT kFileBase = 1000;
constexpr UINT kEditBase = 2000;
constexpr UINT kViewBase = 3000;

constexpr int kBarHeight = 28;
constexpr int kGap = 4;
constexpr int kNumberColumnWidth = 60;
constexpr int kFieldColumnWidth = 120;

ui::TableKey KeyOf(WORD key) {
  if (key == VK_DELETE) return ui::TableKey::kDelete;
  if (GetKeyState(VK_CONTROL) >= 0) return ui::TableKey::kOther;
  switch (key) {
    case 'A': return ui::TableKey::kCtrlA;
    case 'C': return ui::TableKey::kCtrlC;
    case 'F': return ui::TableKey::kCtrlF;
    case 'Z': return ui::TableKey::kCtrlZ;
    case 'Y': return ui::TableKey::kCtrlY;
    default: return ui::TableKey::kOther;
  }
}

void CopyToClipboard(HWND owner, const std::string& text) {
  const std::wstring wide = Widen(text);
  const size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (!memory) return;
  if (void* target = GlobalLock(memory)) {
    memcpy(target, wide.c_str(), bytes);
    GlobalUnlock(memory);
  }
  if (!OpenClipboard(owner)) {
    GlobalFree(memory);
    return;
  }
  EmptyClipboard();
  // The clipboard owns the memory once SetClipboardData succeeds.
  if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);
  CloseClipboard();
}

HMENU MenuOf(const std::vector<std::string>& entries, UINT base) {
  HMENU menu = CreatePopupMenu();
  for (size_t i = 0; i < entries.size(); ++i)
    AppendMenuW(menu, MF_STRING, base + static_cast<UINT>(i), Widen(entries[i]).c_str());
  return menu;
}

class TableGrid : public PaletteContent {
 public:
  explicit TableGrid(ui::OdTableView& view) : view_(view) {}

  ~TableGrid() override {
    view_.SetListener(nullptr);
    view_.SetClipboard(nullptr);
  }

  void Create(HWND window) override {
    window_ = window;
    HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    auto child = [&](const wchar_t* type, const wchar_t* text, DWORD style, int id) {
      HWND control = CreateWindowExW(0, type, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0,
                                     window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr,
                                     nullptr);
      SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
      return control;
    };
    child(WC_BUTTONW, L"File", BS_PUSHBUTTON, kFileButton);
    child(WC_BUTTONW, L"Edit", BS_PUSHBUTTON, kEditButton);
    child(WC_BUTTONW, L"View", BS_PUSHBUTTON, kViewButton);
    tables_ = child(WC_COMBOBOXW, L"", CBS_DROPDOWNLIST | WS_VSCROLL, kTables);
    synchronize_ = child(WC_BUTTONW, L"Synchronize", BS_AUTOCHECKBOX, kSynchronize);
    child(WC_BUTTONW, L"Refresh", BS_PUSHBUTTON, kRefresh);
    grid_ = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA |
                                LVS_SHOWSELALWAYS,
                            0, 0, 0, 0, window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kGrid)),
                            nullptr, nullptr);
    ListView_SetExtendedListViewStyle(grid_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    Button_SetCheck(synchronize_, view_.synchronize() ? BST_CHECKED : BST_UNCHECKED);

    view_.SetListener([this](ui::TableViewChange change) { ViewChanged(change); });
    view_.SetClipboard([this](const std::string& text) { CopyToClipboard(window_, text); });
    FillTables();
    Rebuild();
  }

  void Resize(int width, int height) override {
    int x = kGap;
    auto place = [&](int id, int w, int h) {
      MoveWindow(GetDlgItem(window_, id), x, kGap, w, h, TRUE);
      x += w + kGap;
    };
    place(kFileButton, 44, kBarHeight - 2 * kGap);
    place(kEditButton, 44, kBarHeight - 2 * kGap);
    place(kViewButton, 44, kBarHeight - 2 * kGap);
    const int fixed = 90 + 64 + 3 * kGap;
    place(kTables, std::max(120, width - x - fixed), 240);  // with its dropped list
    place(kSynchronize, 90, kBarHeight - 2 * kGap);
    place(kRefresh, 64, kBarHeight - 2 * kGap);
    MoveWindow(grid_, 0, kBarHeight, width, std::max(0, height - kBarHeight), TRUE);
  }

  LRESULT Notify(NMHDR* header) override {
    if (header->hwndFrom == ListView_GetHeader(grid_) && header->code == NM_RCLICK) {
      HDHITTESTINFO hit = {};
      const DWORD at = GetMessagePos();
      hit.pt = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
      ScreenToClient(header->hwndFrom, &hit.pt);
      const int column = static_cast<int>(SendMessageW(header->hwndFrom, HDM_HITTEST, 0,
                                                       reinterpret_cast<LPARAM>(&hit)));
      if (column > 0) view_.SetWholeColumn(static_cast<size_t>(column));
      return 1;
    }
    if (header->hwndFrom != grid_) return 0;
    switch (header->code) {
      case LVN_GETDISPINFOW: {
        auto* info = reinterpret_cast<NMLVDISPINFOW*>(header);
        if ((info->item.mask & LVIF_TEXT) && info->item.pszText && info->item.cchTextMax > 0) {
          const std::wstring text = Widen(view_.CellText(static_cast<size_t>(info->item.iItem),
                                                        static_cast<size_t>(info->item.iSubItem)));
          lstrcpynW(info->item.pszText, text.c_str(), info->item.cchTextMax);
        }
        return 0;
      }
      case LVN_COLUMNCLICK:
        view_.SortByColumn(static_cast<size_t>(reinterpret_cast<NMLISTVIEW*>(header)->iSubItem));
        return 0;
      case LVN_ITEMCHANGED:
      case LVN_ODSTATECHANGED:
        TakeSelection();
        return 0;
      case NM_CLICK:
        Clicked(*reinterpret_cast<NMITEMACTIVATE*>(header));
        return 0;
      case NM_DBLCLK: {
        const int row = reinterpret_cast<NMITEMACTIVATE*>(header)->iItem;
        if (row >= 0) view_.DoubleClickRow(static_cast<size_t>(row));
        return 0;
      }
      case NM_SETFOCUS:
        view_.SetGridFocused(true);
        return 0;
      case NM_KILLFOCUS:
        view_.SetGridFocused(false);
        return 0;
      case LVN_KEYDOWN:
        Key(reinterpret_cast<NMLVKEYDOWN*>(header)->wVKey);
        return 0;
      default:
        return 0;
    }
  }

  void Command(int id, int code, HWND) override {
    switch (id) {
      case IDCANCEL:  // Esc, as the palette set's dialog navigation reports it
        Key(VK_ESCAPE);
        break;
      case kFileButton:
      case kEditButton:
      case kViewButton:
        if (code == BN_CLICKED) ButtonMenu(id);
        break;
      case kTables:
        if (code == CBN_DROPDOWN) {
          view_.FillTableChoices();  // reported back as kTables, which refills the list
        } else if (code == CBN_SELCHANGE && !updating_) {
          const int index = ComboBox_GetCurSel(tables_);
          if (index >= 0 && static_cast<size_t>(index) < view_.table_choices().size())
            view_.ChooseTable(view_.table_choices()[static_cast<size_t>(index)]);
        }
        break;
      case kSynchronize:
        if (code == BN_CLICKED) view_.SetSynchronize(Button_GetCheck(synchronize_) == BST_CHECKED);
        break;
      case kRefresh:
        if (code == BN_CLICKED) view_.Reload(true);
        break;
      default:
        break;
    }
  }

  // As every front end shows the palette: the table choices, the grid and its selection anew.
  void Shown() override {
    FillTables();
    Rebuild();
  }

  void ContextMenu(HWND control, int x, int y) override {
    if (control != grid_) return;
    if (x == -1 && y == -1) {  // from the keyboard: at the grid's corner
      POINT corner = {0, 0};
      ClientToScreen(grid_, &corner);
      x = corner.x;
      y = corner.y;
    }
    HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MenuOf(ui::TableFileMenu(), kFileBase)), L"File");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MenuOf(ui::TableEditMenu(), kEditBase)), L"Edit");
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(MenuOf(ui::TableViewMenu(), kViewBase)), L"View");
    RunMenu(menu, x, y);
  }

 private:
  void ButtonMenu(int id) {
    HMENU menu = id == kFileButton   ? MenuOf(ui::TableFileMenu(), kFileBase)
                 : id == kEditButton ? MenuOf(ui::TableEditMenu(), kEditBase)
                                     : MenuOf(ui::TableViewMenu(), kViewBase);
    RECT button = {};
    GetWindowRect(GetDlgItem(window_, id), &button);
    RunMenu(menu, button.left, button.bottom);
  }

  // Shows `menu` (and destroys it, submenus too), then runs the chosen entry.
  void RunMenu(HMENU menu, int x, int y) {
    const UINT chosen = static_cast<UINT>(
        TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_TOPALIGN, x, y, 0, window_, nullptr));
    DestroyMenu(menu);
    if (chosen >= kViewBase) {
      view_.RunViewEntry(static_cast<ui::TableViewEntry>(chosen - kViewBase));
    } else if (chosen >= kEditBase) {
      view_.RunEditEntry(static_cast<ui::TableEditEntry>(chosen - kEditBase));
    } else if (chosen >= kFileBase) {
      view_.RunFileEntry(chosen - kFileBase);
    }
  }

  void Key(WORD key) {
    if (key == VK_ESCAPE) {
      view_.Hide(true);
      HideInPaletteSet(view_);
      return;
    }
    if (key == VK_F2) {
      const int row = ListView_GetNextItem(grid_, -1, LVNI_FOCUSED);
      if (row >= 0) EditCell(row, std::max(1, last_column_));
      return;
    }
    const ui::TableKey pressed = KeyOf(key);
    if (pressed != ui::TableKey::kOther) view_.PressKey(pressed);
  }

  void Clicked(const NMITEMACTIVATE& click) {
    int row = -1;
    int column = -1;
    if (!CellAt(grid_, click.ptAction, &row, &column)) return;
    // A click on a cell of the row that was already the only one selected edits it.
    const bool edit = column > 0 && row == clicked_row_ && view_.SelectedCount() == 1 &&
                      view_.IsSelected(static_cast<size_t>(row));
    clicked_row_ = row;
    last_column_ = column;
    view_.ClickRow(static_cast<size_t>(row));
    if (edit) EditCell(row, column);
  }

  void EditCell(int row, int column) {
    if (column <= 0 || static_cast<size_t>(row) >= view_.RowCount()) return;
    const std::wstring text = Widen(view_.CellText(static_cast<size_t>(row), static_cast<size_t>(column)));
    cells_.Begin(grid_, row, column, text, [this](int r, int c, const std::wstring& typed) {
      view_.EditCell(static_cast<size_t>(r), static_cast<size_t>(c), Narrow(typed));
    });
  }

  // --- the view model to the controls ---

  void ViewChanged(ui::TableViewChange change) {
    cells_.End(false);
    switch (change) {
      case ui::TableViewChange::kTables:
        FillTables();
        return;
      case ui::TableViewChange::kLayout:
        Rebuild();
        return;
      case ui::TableViewChange::kRows:
      case ui::TableViewChange::kCells:
        ListView_SetItemCountEx(grid_, static_cast<int>(view_.RowCount()), LVSICF_NOSCROLL);
        InvalidateRect(grid_, nullptr, FALSE);
        ShowSelection();
        return;
      case ui::TableViewChange::kSelection:
        ShowSelection();
        return;
    }
  }

  void FillTables() {
    updating_ = true;
    ComboBox_ResetContent(tables_);
    for (const std::string& table : view_.table_choices()) ComboBox_AddString(tables_, Widen(table).c_str());
    ComboBox_SetCurSel(tables_, static_cast<int>(view_.chosen_index()));
    updating_ = false;
  }

  void Rebuild() {
    updating_ = true;
    SendMessageW(grid_, WM_SETREDRAW, FALSE, 0);
    while (ListView_DeleteColumn(grid_, 0)) {
    }
    for (size_t c = 0; c < view_.ColumnCount(); ++c) {
      std::wstring title = Widen(view_.ColumnTitle(c));
      LVCOLUMNW column = {};
      column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
      column.pszText = &title[0];
      column.cx = c == 0 ? kNumberColumnWidth : kFieldColumnWidth;
      column.iSubItem = static_cast<int>(c);
      ListView_InsertColumn(grid_, static_cast<int>(c), &column);
    }
    ListView_SetItemCountEx(grid_, static_cast<int>(view_.RowCount()), 0);
    ComboBox_SetCurSel(tables_, static_cast<int>(view_.chosen_index()));
    SendMessageW(grid_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(grid_, nullptr, TRUE);
    updating_ = false;
    ShowSelection();
  }

  void ShowSelection() {
    updating_ = true;
    ListView_SetItemState(grid_, -1, 0, LVIS_SELECTED);
    for (size_t row = 0; row < view_.RowCount(); ++row)
      if (view_.IsSelected(row)) ListView_SetItemState(grid_, static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
    updating_ = false;
  }

  void TakeSelection() {
    if (updating_) return;
    std::vector<size_t> rows;
    for (int row = ListView_GetNextItem(grid_, -1, LVNI_SELECTED); row >= 0;
         row = ListView_GetNextItem(grid_, row, LVNI_SELECTED))
      rows.push_back(static_cast<size_t>(row));
    updating_ = true;
    view_.SelectOnly(rows);
    updating_ = false;
  }

  ui::OdTableView& view_;
  HWND window_ = nullptr;
  HWND tables_ = nullptr;
  HWND synchronize_ = nullptr;
  HWND grid_ = nullptr;
  CellEditor cells_;
  bool updating_ = false;  // the controls are being set from the view model
  int clicked_row_ = -1;
  int last_column_ = 1;
};

}  // namespace

std::unique_ptr<PaletteContent> MakeTableGrid(od::Palette& palette, od::Host&) {
  auto* view = dynamic_cast<ui::OdTableView*>(&palette);
  if (!view) return nullptr;
  return std::make_unique<TableGrid>(*view);
}

}  // namespace veltor::arx
