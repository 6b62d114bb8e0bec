// The module's commands with their handlers: the 38 commands of the group "VELTOR" (the rows
// of ui::CommandRows, in registration order) and the three inert commands of "MyGroup".
#pragma once

#include <vector>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::app {

// A handler runs inside the module's command context (see od::RunCommand).
using CommandFn = void (*)(od::CommandContext&);

struct CommandEntry {
  const char* name;     // global and local name
  int flags;            // od::CommandFlags
  const char* label;    // on the command palette; nullptr when not offered there
  const char* summary;  // what the command does, for HELP
  CommandFn handler;   // nullptr: not built yet (NotAvailable runs instead)
};

inline constexpr char kCommandGroup[] = "VELTOR";
inline constexpr char kAutoCommandGroup[] = "MyGroup";

// Built from ui::CommandRows once; a row without a handler is not built yet.
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

// The handler of a table row as the host runs it: through od::RunCommand, so no exception
// leaves the module and a failed or cancelled command is taken back.
od::CommandHandler WrapHandler(od::Host& host, const char* name, CommandFn fn);

}  // namespace veltor::app
