// The content of a palette as a plain Win32 child window, for the palette set (palette_set.h)
// to place in a host palette. Each content window fills its parent's client area, owns the
// controls inside it and takes their notifications itself.
#pragma once

#include "arx/windows_include.h"

#include <memory>

namespace veltor::od {
class Host;
class Palette;
}  // namespace veltor::od

namespace veltor::arx {

// What a content window does; one object per window, destroyed with it.
class PaletteContent {
 public:
  virtual ~PaletteContent() = default;
  // Creates the controls inside `window` (called once, from WM_CREATE).
  virtual void Create(HWND window) = 0;
  // The window was resized to width x height (client pixels).
  virtual void Resize(int width, int height) = 0;
  // WM_NOTIFY and WM_COMMAND from the controls; 0 when not handled.
  virtual LRESULT Notify(NMHDR* header) = 0;
  virtual void Command(int id, int code, HWND control) = 0;
  // WM_CONTEXTMENU at screen point (x, y) over `control`.
  virtual void ContextMenu(HWND control, int x, int y) { (void)control, (void)x, (void)y; }
  // The palette was asked to show (again): the content brings itself up to its model.
  virtual void Shown() {}
};

// Creates a content window running `content` as a visible child of `parent` filling it;
// nullptr when the window could not be created (the content is then destroyed).
HWND CreateContentWindow(HWND parent, std::unique_ptr<PaletteContent> content);

// Tells a content window that its palette was asked to show (PaletteContent::Shown).
void NotifyShown(HWND content_window);

// The content window that shows `palette` (the command tree, the table grid) as a child of
// `parent`; nullptr for a palette no window shows. `host` must outlive the window.
HWND CreatePaletteWindow(od::Palette& palette, od::Host& host, HWND parent);

// The content made for the palettes the plug-in shows (command_tree_window.cpp,
// od_table_window.cpp).
std::unique_ptr<PaletteContent> MakeCommandTree(od::Palette& palette, od::Host& host);
std::unique_ptr<PaletteContent> MakeTableGrid(od::Palette& palette, od::Host& host);

}  // namespace veltor::arx
