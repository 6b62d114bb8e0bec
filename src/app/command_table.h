// The module's commands: the 38 commands of the group "VELTOR" in registration order, and the
// three inert commands of the group "MyGroup".
#pragma once

#include <vector>

#include "od/host.h"

namespace veltor::app {

using CommandFn = void (*)(od::Host&);

struct CommandEntry {
  const char* name;     // global and local name
  int flags;            // od::CommandFlags
  const char* label;    // on the command palette; nullptr when not offered there
  const char* summary;  // what the command does, for HELP
  CommandFn handler;   // nullptr: not built yet (NotAvailable runs instead)
};

inline constexpr char kCommandGroup[] = "VELTOR";
inline constexpr char kAutoCommandGroup[] = "MyGroup";
inline constexpr int kDefaultFlags = od::kCmdTransparent | od::kCmdUsePickSet | od::kCmdRedraw;

const std::vector<CommandEntry>& CommandTable();

struct AutoCommand {
  const char* global_name;
  const char* local_name;
  int flags;
  CommandFn handler;
};
const std::vector<AutoCommand>& AutoCommands();

// Prints that a command has no implementation in this build yet.
void NotAvailable(od::Host& host, const char* command);

}  // namespace veltor::app
