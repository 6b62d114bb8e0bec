#include "arx/win32_ui_host.h"

#include <commdlg.h>

#include <vector>

#include "arx/file_filter.h"
#include "arx/palette_set.h"
#include "arx/wide_text.h"
#include "arx/win32_dialog.h"

namespace veltor::arx {

namespace {

// Longest path the file dialogs return (the dialogs' own limit for a wide path).
constexpr DWORD kPathCapacity = 32768;

std::wstring FilterText(const std::string& filter) {
  const std::u16string utf16 = CommonDialogFilter(filter);
  return std::wstring(utf16.begin(), utf16.end());
}

// Runs an open or save dialog; the chosen path, or nothing on cancel or failure.
std::optional<std::string> RunFileDialog(HWND owner, const std::string& title,
                                         const std::string& filter, const std::string& initial,
                                         bool save) {
  std::vector<wchar_t> path(kPathCapacity, L'\0');
  const std::wstring wide_initial = Widen(initial);
  if (wide_initial.size() < path.size()) std::copy(wide_initial.begin(), wide_initial.end(), path.begin());
  const std::wstring wide_title = Widen(title);
  const std::wstring wide_filter = FilterText(filter);
  OPENFILENAMEW dialog = {};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = owner;
  dialog.lpstrFilter = wide_filter.size() > 2 ? wide_filter.c_str() : nullptr;
  dialog.nFilterIndex = 1;
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = kPathCapacity;
  dialog.lpstrTitle = wide_title.empty() ? nullptr : wide_title.c_str();
  dialog.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY |
                 (save ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST);
  const BOOL chosen = save ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
  if (!chosen) return std::nullopt;
  return Narrow(path.data());
}

}  // namespace

od::DialogResult Win32UiHost::ShowModal(od::DialogModel& dialog) {
  return ShowDialog(dialog, Owner());
}

od::MessageAnswer Win32UiHost::MessageBox(const std::string& title, const std::string& text,
                                          od::MessageButtons buttons) {
  UINT type = MB_ICONINFORMATION;
  switch (buttons) {
    case od::MessageButtons::kOk: type |= MB_OK; break;
    case od::MessageButtons::kOkCancel: type |= MB_OKCANCEL; break;
    case od::MessageButtons::kYesNo: type |= MB_YESNO; break;
    case od::MessageButtons::kYesNoCancel: type |= MB_YESNOCANCEL; break;
  }
  switch (::MessageBoxW(Owner(), Widen(text).c_str(), Widen(title).c_str(), type)) {
    case IDOK: return od::MessageAnswer::kOk;
    case IDYES: return od::MessageAnswer::kYes;
    case IDNO: return od::MessageAnswer::kNo;
    default: return od::MessageAnswer::kCancel;
  }
}

std::optional<std::string> Win32UiHost::OpenFileDialog(const std::string& title,
                                                       const std::string& filter) {
  return RunFileDialog(Owner(), title, filter, std::string(), false);
}

std::optional<std::string> Win32UiHost::SaveFileDialog(const std::string& title,
                                                       const std::string& filter,
                                                       const std::string& default_name) {
  return RunFileDialog(Owner(), title, filter, default_name, true);
}

bool Win32UiHost::ShowPalette(od::Palette& palette) {
  return host_ && ShowInPaletteSet(palette, *host_);
}

}  // namespace veltor::arx
