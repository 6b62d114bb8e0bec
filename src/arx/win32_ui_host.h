// The plug-in's od::UiHost: dialog models as Win32 dialogs (win32_dialog.h), message boxes by
// MessageBoxW, file dialogs by GetOpenFileNameW/GetSaveFileNameW, palettes in the host's
// dockable palette set (palette_set.h). Every window is owned by the window `owner` returns
// when it is shown (in the plug-in, the host's main window: adsw_acadMainWnd).
#pragma once

#include "arx/windows_include.h"

#include <optional>
#include <string>

#include "od/ui_host.h"

namespace veltor::od {
class Host;
}  // namespace veltor::od

namespace veltor::arx {

class Win32UiHost : public od::UiHost {
 public:
  using OwnerWindow = HWND (*)();
  // `host` runs what the palettes' gestures ask for (null: no palettes); it must outlive
  // this object.
  Win32UiHost(OwnerWindow owner, od::Host* host) : owner_(owner), host_(host) {}
  // The host is made after its user interface (it takes the interface by reference), so the
  // plug-in hands it over here once both exist.
  void SetHost(od::Host* host) { host_ = host; }

  od::DialogResult ShowModal(od::DialogModel& dialog) override;
  od::MessageAnswer MessageBox(const std::string& title, const std::string& text,
                               od::MessageButtons buttons) override;
  std::optional<std::string> OpenFileDialog(const std::string& title,
                                            const std::string& filter) override;
  std::optional<std::string> SaveFileDialog(const std::string& title, const std::string& filter,
                                            const std::string& default_name) override;
  bool ShowPalette(od::Palette& palette) override;

 private:
  HWND Owner() const { return owner_ ? owner_() : nullptr; }

  OwnerWindow owner_;
  od::Host* host_;
};

}  // namespace veltor::arx
