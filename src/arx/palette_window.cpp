#include "arx/palette_window.h"

#include <commctrl.h>

namespace veltor::arx {

namespace {

constexpr wchar_t kClassName[] = L"VeltorPaletteContent";
constexpr UINT kShownMessage = WM_APP + 1;

// Passed through CreateWindowExW: the window adopts the content on WM_NCCREATE.
struct Creation {
  PaletteContent* content = nullptr;
  bool adopted = false;
};

HINSTANCE ThisModule() {
  // The module (the .arx, or the program) this code is linked into.
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ThisModule), &module);
  return module;
}

LRESULT CALLBACK ContentProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_NCCREATE) {
    auto* creation = static_cast<Creation*>(reinterpret_cast<CREATESTRUCTW*>(lparam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->content));
    creation->adopted = true;
    return DefWindowProcW(window, message, wparam, lparam);
  }
  auto* content = reinterpret_cast<PaletteContent*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!content) return DefWindowProcW(window, message, wparam, lparam);
  switch (message) {
    case WM_CREATE:
      content->Create(window);
      return 0;
    case WM_SIZE:
      content->Resize(LOWORD(lparam), HIWORD(lparam));
      return 0;
    case WM_NOTIFY:
      return content->Notify(reinterpret_cast<NMHDR*>(lparam));
    case WM_COMMAND:
      content->Command(LOWORD(wparam), HIWORD(wparam), reinterpret_cast<HWND>(lparam));
      return 0;
    case kShownMessage:
      content->Shown();
      return 0;
    case WM_CONTEXTMENU:
      content->ContextMenu(reinterpret_cast<HWND>(wparam), static_cast<short>(LOWORD(lparam)),
                           static_cast<short>(HIWORD(lparam)));
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      delete content;
      return DefWindowProcW(window, message, wparam, lparam);
    default:
      return DefWindowProcW(window, message, wparam, lparam);
  }
}

bool RegisterContentClass() {
  static const bool registered = [] {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof(type);
    type.lpfnWndProc = ContentProc;
    type.hInstance = ThisModule();
    type.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    type.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    type.lpszClassName = kClassName;
    return RegisterClassExW(&type) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
  }();
  return registered;
}

}  // namespace

HWND CreateContentWindow(HWND parent, std::unique_ptr<PaletteContent> content) {
  INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES |
                                                       ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&classes);
  if (!content || !RegisterContentClass()) return nullptr;
  RECT area = {};
  GetClientRect(parent, &area);
  // The window owns the content from WM_NCCREATE on (and deletes it on WM_NCDESTROY, also
  // when creation fails later); before that it is still ours.
  Creation creation{content.release()};
  HWND window = CreateWindowExW(WS_EX_CONTROLPARENT, kClassName, L"",
                                WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, area.right, area.bottom,
                                parent, nullptr, ThisModule(), &creation);
  if (!creation.adopted) delete creation.content;
  return window;
}

void NotifyShown(HWND content_window) {
  if (content_window) SendMessageW(content_window, kShownMessage, 0, 0);
}

HWND CreatePaletteWindow(od::Palette& palette, od::Host& host, HWND parent) {
  if (auto tree = MakeCommandTree(palette, host)) return CreateContentWindow(parent, std::move(tree));
  if (auto grid = MakeTableGrid(palette, host)) return CreateContentWindow(parent, std::move(grid));
  return nullptr;
}

}  // namespace veltor::arx
