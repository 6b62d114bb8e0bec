// The module's entry point and its application object.
//
// The host calls AcrxEntryPoint with an application message and the application packet (for
// the embedded host and the plug-in adapter alike: an od::Host*). Messages 0 to 15 go to the
// application object's handlers; any other number returns kRetOk and does nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "od/host.h"
#include "od/palette.h"

namespace veltor::app {

int AcrxEntryPoint(int message, void* packet);
// The host interface version this module was built against.
int AcrxGetApiVersion();

// A LISP function the module defines in every drawing.
struct LispFunctionEntry {
  std::string name;  // empty: loaded from string resource `resource_id`
  int resource_id = 0;
  int (*handler)() = nullptr;
};

class CVeltorApp {
 public:
  int On_kInitAppMsg(void* packet);
  int On_kUnloadAppMsg(void* packet);
  int On_kLoadDwgMsg(void* packet);
  int On_kUnloadDwgMsg(void* packet);
  int On_kInvkSubrMsg(void* packet);
  int OnOtherMessage(void* packet);

  // The host of the running session (null before initialisation).
  od::Host* host() const { return host_; }
  // The palettes, created on first use by their commands; null until then.
  std::unique_ptr<od::Palette>& table_palette() { return table_palette_; }
  std::unique_ptr<od::Palette>& command_palette() { return command_palette_; }
  static const std::vector<LispFunctionEntry>& LispFunctions();

 private:
  void RegisterCommands();

  od::Host* host_ = nullptr;
  bool unlock_application_ = true;  // may be unloaded
  bool mdi_aware_ = true;           // works with several drawings open
  std::unique_ptr<od::Palette> table_palette_;
  std::unique_ptr<od::Palette> command_palette_;
};

// The module's single application object.
CVeltorApp& TheApp();

}  // namespace veltor::app
