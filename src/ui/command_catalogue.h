// The module's commands as data: one row per command with its name, flags, place and label on
// the command palette and its summary for HELP. This is the one list of the module's
// commands: the application shell registers them from it (pairing each row with a handler)
// and the command palette builds its tree from it.
#pragma once

#include <vector>

namespace veltor::ui {

struct CommandRow {
  const char* name;     // global and local name
  int flags;            // od::CommandFlags
  // On the palette: the group the label sits in ("" for a top-level leaf, which runs its own
  // command), or nullptr when the command is not offered there.
  const char* group;
  const char* label;    // the palette label; nullptr when not offered there
  int position;         // order within its group (or among the top-level leaves)
  const char* summary;  // what the command does, for HELP
};

// Every command of the group "VELTOR", in registration order.
const std::vector<CommandRow>& CommandRows();

// The palette's groups in display order; the top-level leaves follow them.
const std::vector<const char*>& PaletteGroups();

}  // namespace veltor::ui
