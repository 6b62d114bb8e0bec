// The command palette as a tree view: groups with their children and entries, all expanded.
// A double click or Enter on a label runs it as the other front ends do (ui::RunLabel: a
// group's label only cancels what runs, an entry queues its command).
#include "arx/palette_window.h"

#include <commctrl.h>

#include <string>

#include "arx/wide_text.h"
#include "ui/command_palette.h"

namespace veltor::arx {

namespace {

constexpr int kTreeId = 100;

class CommandTree : public PaletteContent {
 public:
  CommandTree(const ui::CommandPalette& palette, od::Host& host) : palette_(palette), host_(host) {}

  void Create(HWND window) override {
    tree_ = CreateWindowExW(0, WC_TREEVIEWW, L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES |
                                TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
                            0, 0, 0, 0, window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kTreeId)),
                            nullptr, nullptr);
    for (const ui::MenuGroup& group : palette_.tree()) AddGroup(group, TVI_ROOT);
  }

  void Resize(int width, int height) override { MoveWindow(tree_, 0, 0, width, height, TRUE); }

  LRESULT Notify(NMHDR* header) override {
    if (header->hwndFrom != tree_) return 0;
    if (header->code == NM_DBLCLK) {
      RunItem(HitItem());
      return 0;
    }
    if (header->code == TVN_KEYDOWN && reinterpret_cast<NMTVKEYDOWN*>(header)->wVKey == VK_RETURN) {
      RunItem(TreeView_GetSelection(tree_));
      return 1;
    }
    return 0;
  }

  // Inside the palette set, dialog navigation turns Enter into IDOK before the tree sees it.
  void Command(int id, int, HWND) override {
    if (id == IDOK) RunItem(TreeView_GetSelection(tree_));
  }

 private:
  void AddGroup(const ui::MenuGroup& group, HTREEITEM parent) {
    HTREEITEM node = Insert(group.label, parent);
    for (const ui::MenuGroup& child : group.children) AddGroup(child, node);
    for (const ui::MenuEntry& entry : group.entries) Insert(entry.label, node);
    TreeView_Expand(tree_, node, TVE_EXPAND);
  }

  HTREEITEM Insert(const std::string& label, HTREEITEM parent) {
    std::wstring text = Widen(label);
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = &text[0];
    return TreeView_InsertItem(tree_, &insert);
  }

  // The item under the mouse.
  HTREEITEM HitItem() const {
    TVHITTESTINFO hit = {};
    const DWORD at = GetMessagePos();
    hit.pt = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
    ScreenToClient(tree_, &hit.pt);
    HTREEITEM item = TreeView_HitTest(tree_, &hit);
    return (hit.flags & TVHT_ONITEM) ? item : nullptr;
  }

  void RunItem(HTREEITEM item) {
    if (!item) return;
    wchar_t text[512] = {};
    TVITEMW read = {};
    read.mask = TVIF_TEXT;
    read.hItem = item;
    read.pszText = text;
    read.cchTextMax = static_cast<int>(sizeof(text) / sizeof(text[0]));
    if (!TreeView_GetItem(tree_, &read)) return;
    ui::RunLabel(host_, palette_.tree(), Narrow(text));
  }

  const ui::CommandPalette& palette_;
  od::Host& host_;
  HWND tree_ = nullptr;
};

}  // namespace

std::unique_ptr<PaletteContent> MakeCommandTree(od::Palette& palette, od::Host& host) {
  auto* commands = dynamic_cast<ui::CommandPalette*>(&palette);
  if (!commands) return nullptr;
  return std::make_unique<CommandTree>(*commands, host);
}

}  // namespace veltor::arx
