#include "app/veltor_app.h"

#include "app/command_table.h"
#include "commands/edit/add_value_memory.h"
#include "commands/edit/set_memory.h"
#include "commands/exchange/explication_command.h"
#include "commands/select/query_memory.h"

namespace veltor::app {

namespace {

// The one LISP function of the module: does nothing and answers "normal".
int MyLispFunction() { return od::kRtNorm; }

od::Host* HostOf(void* packet) { return static_cast<od::Host*>(packet); }

}  // namespace

CVeltorApp& TheApp() {
  static CVeltorApp app;
  return app;
}

const std::vector<LispFunctionEntry>& CVeltorApp::LispFunctions() {
  static const std::vector<LispFunctionEntry> functions = {{"MyLispFunction", 0, MyLispFunction}};
  return functions;
}

int AcrxGetApiVersion() { return 23; }  // the host's 2019 release line

int AcrxEntryPoint(int message, void* packet) {
  if (message < 0 || message > 15) return od::kRetOk;
  CVeltorApp& app = TheApp();
  switch (message) {
    case od::kInitAppMsg: return app.On_kInitAppMsg(packet);
    case od::kUnloadAppMsg: return app.On_kUnloadAppMsg(packet);
    case od::kLoadDwgMsg: return app.On_kLoadDwgMsg(packet);
    case od::kUnloadDwgMsg: return app.On_kUnloadDwgMsg(packet);
    case od::kInvkSubrMsg: return app.On_kInvkSubrMsg(packet);
    default: return app.OnOtherMessage(packet);
  }
}

int CVeltorApp::On_kInitAppMsg(void* packet) {
  host_ = HostOf(packet);
  od::Application& application = host_->App();
  // Base initialisation: registry facts, the class tree, the base's automatic commands.
  if (unlock_application_) application.UnlockApplication();
  if (mdi_aware_) application.RegisterMdiAware();
  application.BuildClassHierarchy();
  for (const AutoCommand& c : AutoCommands())
    (void)application.AddCommand({kAutoCommandGroup, c.global_name, c.local_name, c.flags, ""},
                                 WrapHandler(*host_, c.global_name, c.handler));
  RegisterCommands();
  return od::kRetOk;
}

void CVeltorApp::RegisterCommands() {
  for (const CommandEntry& c : CommandTable()) {
    // A failed registration is not reported: the remaining commands still register.
    (void)host_->App().AddCommand({kCommandGroup, c.name, c.name, c.flags, c.summary},
                                  WrapHandler(*host_, c.name, c.handler));
  }
}

int CVeltorApp::On_kUnloadAppMsg(void* packet) {
  od::Host* host = host_ ? host_ : HostOf(packet);
  table_palette_.reset();
  command_palette_.reset();
  commands::ResetQueryMemory();
  commands::ResetDataDialogMemory();
  commands::ResetSetDialogMemory();
  commands::ResetExplicationMemory();
  if (host) {
    host->App().RemoveGroup(kCommandGroup);
    host->App().RemoveGroup(kAutoCommandGroup);
  }
  host_ = nullptr;
  return od::kRetOk;
}

int CVeltorApp::On_kLoadDwgMsg(void* packet) {
  od::Host* host = host_ ? host_ : HostOf(packet);
  const auto& functions = LispFunctions();
  for (size_t i = 0; i < functions.size(); ++i)
    (void)host->App().DefineLispFunction(functions[i].name, static_cast<int>(i));
  return od::kRetOk;
}

int CVeltorApp::On_kUnloadDwgMsg(void* packet) {
  od::Host* host = host_ ? host_ : HostOf(packet);
  const auto& functions = LispFunctions();
  for (size_t i = 0; i < functions.size(); ++i)
    host->App().UndefineLispFunction(functions[i].name, static_cast<int>(i));
  return od::kRetOk;
}

int CVeltorApp::On_kInvkSubrMsg(void* packet) {
  od::Host* host = host_ ? host_ : HostOf(packet);
  int code = host->App().CurrentLispFunction();
  const auto& functions = LispFunctions();
  if (code >= 0 && static_cast<size_t>(code) < functions.size()) functions[code].handler();
  return od::kRetOk;
}

int CVeltorApp::OnOtherMessage(void*) { return od::kRetOk; }

}  // namespace veltor::app
