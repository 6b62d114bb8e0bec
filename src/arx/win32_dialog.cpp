#include "arx/win32_dialog.h"

#include <commctrl.h>
#include <windowsx.h>

#include <cstring>
#include <map>
#include <memory>
#include <vector>

#include "arx/cell_editor.h"
#include "arx/dialog_driver.h"
#include "arx/dialog_layout.h"
#include "arx/dialog_template.h"
#include "arx/wide_text.h"

namespace veltor::arx {

namespace {

using od::Control;
using od::ControlKind;

// One running dialog: the model, the windows laid out for it and their state.
class DialogRun {
 public:
  explicit DialogRun(od::DialogModel& model) : model_(model), driver_(model) {}

  od::DialogResult Run(HWND owner) {
    // The grids' list view class.
    INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    model_.OnInit();
    layout_ = LayoutDialog(model_);
    std::vector<uint8_t> bytes = EncodeDialogTemplate(layout_.dialog);
    // The template must be DWORD-aligned; a vector of DWORDs guarantees it.
    std::vector<DWORD> aligned((bytes.size() + 3) / 4);
    memcpy(aligned.data(), bytes.data(), bytes.size());
    const INT_PTR result = DialogBoxIndirectParamW(
        GetModuleHandleW(nullptr), reinterpret_cast<LPCDLGTEMPLATEW>(aligned.data()), owner,
        &DialogRun::Proc, reinterpret_cast<LPARAM>(this));
    return result == kClosedWithOk ? od::DialogResult::kOk : od::DialogResult::kCancel;
  }

 private:
  static constexpr INT_PTR kClosedWithOk = 1;
  static constexpr INT_PTR kClosedWithCancel = 2;

  static INT_PTR CALLBACK Proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
      SetWindowLongPtrW(window, DWLP_USER, lparam);
      auto* run = reinterpret_cast<DialogRun*>(lparam);
      run->window_ = window;
      run->Init();
      return TRUE;
    }
    auto* run = reinterpret_cast<DialogRun*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!run) return FALSE;
    switch (message) {
      case WM_COMMAND:
        return run->Command(LOWORD(wparam), HIWORD(wparam));
      case WM_NOTIFY:
        return run->Notify(reinterpret_cast<NMHDR*>(lparam));
      default:
        return FALSE;
    }
  }

  HWND Item(int control_id, ItemRole role) const {
    const uint32_t id = WindowIdOf(model_, control_id, role);
    return id ? GetDlgItem(window_, static_cast<int>(id)) : nullptr;
  }

  // The control a window id shows, and as what; nullptr for the refusal line and the OK and
  // Cancel buttons the layout added.
  const LaidOutItem* SourceOf(UINT id) const {
    for (size_t i = 0; i < layout_.items.size(); ++i)
      if (layout_.dialog.items[i].id == id) return &layout_.items[i];
    return nullptr;
  }

  void Init() {
    for (const Control& control : model_.controls()) {
      if (control.kind != ControlKind::kGrid) continue;
      HWND grid = Item(control.id, ItemRole::kWidget);
      ListView_SetExtendedListViewStyle(grid, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
      RECT area = {};
      GetClientRect(grid, &area);
      const int columns = static_cast<int>(control.columns.size());
      for (int c = 0; c < columns; ++c) {
        std::wstring title = Widen(control.columns[static_cast<size_t>(c)]);
        LVCOLUMNW column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = &title[0];
        column.cx = columns > 0 ? (area.right - area.left) / columns : 80;
        column.iSubItem = c;
        ListView_InsertColumn(grid, c, &column);
      }
    }
    Sync();
  }

  // --- model to windows ---

  void Sync() {
    syncing_ = true;
    for (const Control& control : model_.controls()) SyncControl(control);
    syncing_ = false;
  }

  static void SetText(HWND window, const std::string& text) {
    const std::wstring wide = Widen(text);
    if (WindowText(window) != wide) SetWindowTextW(window, wide.c_str());
  }

  void SyncControl(const Control& control) {
    if (HWND caption = Item(control.id, ItemRole::kCaption)) {
      SetText(caption, control.label);
      ShowWindow(caption, control.visible ? SW_SHOWNA : SW_HIDE);
      EnableWindow(caption, control.enabled);
    }
    HWND widget = Item(control.id, ItemRole::kWidget);
    if (!widget) return;
    ShowWindow(widget, control.visible ? SW_SHOWNA : SW_HIDE);
    EnableWindow(widget, control.enabled);
    switch (control.kind) {
      case ControlKind::kStaticText:
      case ControlKind::kButton:
        SetText(widget, control.label);
        break;
      case ControlKind::kTextBox: {
        // An edit control breaks lines at "\r\n".
        std::string text;
        for (char c : control.text) {
          if (c == '\r') continue;
          if (c == '\n') text += '\r';
          text += c;
        }
        SetText(widget, text);
        break;
      }
      case ControlKind::kCheckBox:
        SetText(widget, control.label);
        Button_SetCheck(widget, control.checked ? BST_CHECKED : BST_UNCHECKED);
        break;
      case ControlKind::kEditBox:
        SetText(widget, control.text);
        break;
      case ControlKind::kComboBox:
        if (shown_items_[control.id] != control.items) {
          ComboBox_ResetContent(widget);
          for (const std::string& item : control.items) ComboBox_AddString(widget, Widen(item).c_str());
          shown_items_[control.id] = control.items;
        }
        ComboBox_SetCurSel(widget, control.SelectedIndex());
        break;
      case ControlKind::kListBox:
        if (shown_items_[control.id] != control.items) {
          ListBox_ResetContent(widget);
          for (const std::string& item : control.items) ListBox_AddString(widget, Widen(item).c_str());
          shown_items_[control.id] = control.items;
        }
        if (control.list_mode == od::ListMode::kMultiple) {
          for (size_t i = 0; i < control.items.size(); ++i)
            ListBox_SetSel(widget, control.IsSelected(static_cast<int>(i)), static_cast<int>(i));
        } else if (control.list_mode == od::ListMode::kSingle) {
          ListBox_SetCurSel(widget, control.SelectedIndex());
        }
        break;
      case ControlKind::kGrid:
        ListView_SetItemCountEx(widget, static_cast<int>(control.rows.size()),
                                LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
        InvalidateRect(widget, nullptr, FALSE);
        break;
    }
  }

  // --- windows to model ---

  INT_PTR Command(UINT id, UINT code) {
    if (syncing_) return FALSE;
    if (id == static_cast<UINT>(od::kIdCancel) && !IsModelControl(od::kIdCancel, ControlKind::kButton)) {
      // Esc, the close box, or an added Cancel button.
      EndDialog(window_, kClosedWithCancel);
      return TRUE;
    }
    const LaidOutItem* source = SourceOf(id);
    if (!source || source->role != ItemRole::kWidget) return FALSE;
    const Control* control = model_.Find(source->control_id);
    if (!control) {
      // An OK button the layout added.
      if (code == BN_CLICKED) PressButton(source->control_id);
      return TRUE;
    }
    HWND widget = GetDlgItem(window_, static_cast<int>(id));
    const int control_id = control->id;
    switch (control->kind) {
      case ControlKind::kButton:
        if (code == BN_CLICKED) PressButton(control_id);
        return TRUE;
      case ControlKind::kCheckBox:
        if (code != BN_CLICKED) return FALSE;
        driver_.Check(control_id, Button_GetCheck(widget) == BST_CHECKED);
        Sync();
        return TRUE;
      case ControlKind::kEditBox:
        if (code != EN_KILLFOCUS) return FALSE;
        ShowRefusal(driver_.CommitEdit(control_id, Narrow(WindowText(widget))));
        Sync();
        return TRUE;
      case ControlKind::kComboBox: {
        if (code != CBN_SELCHANGE) return FALSE;
        const int index = ComboBox_GetCurSel(widget);
        driver_.Select(control_id, index >= 0 ? std::vector<int>{index} : std::vector<int>{});
        Sync();
        return TRUE;
      }
      case ControlKind::kListBox: {
        if (code != LBN_SELCHANGE) return FALSE;
        std::vector<int> selected;
        if (control->list_mode == od::ListMode::kMultiple) {
          const int count = ListBox_GetSelCount(widget);
          if (count > 0) {
            selected.resize(static_cast<size_t>(count));
            ListBox_GetSelItems(widget, count, selected.data());
          }
        } else if (ListBox_GetCurSel(widget) >= 0) {
          selected.push_back(ListBox_GetCurSel(widget));
        }
        driver_.Select(control_id, std::move(selected));
        Sync();
        return TRUE;
      }
      default:
        return FALSE;
    }
  }

  bool IsModelControl(int id, ControlKind kind) const {
    const Control* control = model_.Find(id);
    return control && control->kind == kind;
  }

  INT_PTR Notify(NMHDR* header) {
    const LaidOutItem* source = SourceOf(static_cast<UINT>(header->idFrom));
    if (!source || source->role != ItemRole::kWidget) return FALSE;
    const Control* grid = model_.Find(source->control_id);
    if (!grid || grid->kind != ControlKind::kGrid) return FALSE;
    if (header->code == LVN_GETDISPINFOW) {
      auto* info = reinterpret_cast<NMLVDISPINFOW*>(header);
      if (!(info->item.mask & LVIF_TEXT) || !info->item.pszText || info->item.cchTextMax <= 0)
        return TRUE;
      const size_t row = static_cast<size_t>(info->item.iItem);
      const size_t column = static_cast<size_t>(info->item.iSubItem);
      std::wstring text;
      if (row < grid->rows.size() && column < grid->rows[row].size())
        text = Widen(grid->rows[row][column]);
      lstrcpynW(info->item.pszText, text.c_str(), info->item.cchTextMax);
      return TRUE;
    }
    if (header->code == NM_DBLCLK) {
      POINT point = {};
      GetCursorPos(&point);
      ScreenToClient(header->hwndFrom, &point);
      int row = -1;
      int column = -1;
      if (!CellAt(header->hwndFrom, point, &row, &column)) return TRUE;
      const size_t c = static_cast<size_t>(column);
      if (!grid->enabled || c >= grid->editable.size() || !grid->editable[c]) return TRUE;
      const size_t r = static_cast<size_t>(row);
      const std::string current = r < grid->rows.size() && c < grid->rows[r].size() ? grid->rows[r][c] : "";
      const int id = grid->id;
      cells_.Begin(header->hwndFrom, row, column, Widen(current),
                   [this, id](int edited_row, int edited_column, const std::wstring& text) {
                     driver_.EditCell(id, static_cast<size_t>(edited_row),
                                      static_cast<size_t>(edited_column), Narrow(text));
                     Sync();
                   });
      return TRUE;
    }
    return FALSE;
  }

  void PressButton(int id) {
    cells_.End(true);
    const PressResult outcome = driver_.Press(id, [this](int edit) {
      HWND window = Item(edit, ItemRole::kWidget);
      return window ? Narrow(WindowText(window)) : std::string();
    });
    if (outcome.closes) {
      EndDialog(window_, outcome.result == od::DialogResult::kOk ? kClosedWithOk : kClosedWithCancel);
      return;
    }
    Sync();
    ShowRefusal(outcome.refusal);
    if (outcome.refused_edit != 0) SetFocus(Item(outcome.refused_edit, ItemRole::kWidget));
  }

  void ShowRefusal(const std::string& message) {
    HWND line = GetDlgItem(window_, static_cast<int>(kRefusalId));
    SetWindowTextW(line, Widen(message).c_str());
    ShowWindow(line, message.empty() ? SW_HIDE : SW_SHOWNA);
    if (!message.empty()) MessageBeep(MB_ICONWARNING);
  }

  od::DialogModel& model_;
  DialogDriver driver_;
  DialogLayout layout_;
  HWND window_ = nullptr;
  bool syncing_ = false;  // windows are being set from the model
  std::map<int, std::vector<std::string>> shown_items_;  // list and combo items as shown
  CellEditor cells_;
};

}  // namespace

od::DialogResult ShowDialog(od::DialogModel& model, HWND owner) {
  DialogRun run(model);
  return run.Run(owner);
}

}  // namespace veltor::arx
