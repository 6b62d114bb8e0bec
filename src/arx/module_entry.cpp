// The exported entry points of veltor.arx. The host sends every application message to
// acrxEntryPoint; the module's application object (app/veltor_app.h) handles them against the
// host interface, which ArxHost implements over the SDK. Messages 0 to 15 are dispatched; any
// other number returns kRetOK without touching the application object.
#include <memory>

#include "app/veltor_app.h"
#include "arx/arx_host.h"
#include "arx/command_thunks.h"
#include "arx/host_main_window.h"
#include "arx/palette_set.h"
#include "arx/win32_ui_host.h"

#include <rxregsvc.h>

namespace veltor::arx {

namespace {

// The plug-in's application object: it owns the host adapter and the user interface for the
// module's lifetime and hands the module's entry point an od::Host* as its packet.
class CVeltorApp {
 public:
  AcRx::AppRetCode On_kInitAppMsg(void* app_id) {
    ui_ = std::make_unique<Win32UiHost>(&adsw_acadMainWnd, nullptr);
    host_ = std::make_unique<ArxHost>(*ui_, app_id);
    ui_->SetHost(host_.get());
    return Forward(AcRx::kInitAppMsg);
  }
  AcRx::AppRetCode On_kUnloadAppMsg(void*) {
    AcRx::AppRetCode result = Forward(AcRx::kUnloadAppMsg);
    // The command groups are removed: no thunk can be called any more, and no palette may
    // outlive the host its gestures run against.
    UnbindAllThunks();
    ClosePaletteSet();
    host_.reset();
    ui_.reset();
    return result;
  }
  AcRx::AppRetCode OnMessage(AcRx::AppMsgCode message) { return Forward(message); }

 private:
  AcRx::AppRetCode Forward(int message) {
    if (!host_) return AcRx::kRetOK;
    od::Host* host = host_.get();
    return static_cast<AcRx::AppRetCode>(app::AcrxEntryPoint(message, host));
  }

  std::unique_ptr<Win32UiHost> ui_;
  std::unique_ptr<ArxHost> host_;
};

CVeltorApp& TheArxApp() {
  static CVeltorApp app;
  return app;
}

}  // namespace

}  // namespace veltor::arx

extern "C" __declspec(dllexport) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg,
                                                                 void* pkt) {
  if (msg < AcRx::kNullMsg || msg > AcRx::kEndDialogMsg) return AcRx::kRetOK;
  veltor::arx::CVeltorApp& app = veltor::arx::TheArxApp();
  switch (msg) {
    case AcRx::kInitAppMsg: return app.On_kInitAppMsg(pkt);
    case AcRx::kUnloadAppMsg: return app.On_kUnloadAppMsg(pkt);
    case AcRx::kLoadDwgMsg:
    case AcRx::kUnloadDwgMsg:
    case AcRx::kInvkSubrMsg: return app.OnMessage(msg);
    default: return AcRx::kRetOK;
  }
}

// The interface version the host checks before loading the module.
extern "C" __declspec(dllexport) int acrxGetApiVersion() {
  return veltor::app::AcrxGetApiVersion();
}
