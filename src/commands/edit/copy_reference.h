// What the commands that copy from a reference entity share: the targets are gathered first,
// the reference is picked after them, and one result line ends the command. They edit
// without taking the document lock themselves (a command run in the document's context has
// it already); the data commands that lock explicitly use LockForEdits (edit_lock.h).
#pragma once

#include <optional>

#include "od/command_context.h"

namespace veltor::commands {

struct CopyRun {
  od::EntityList targets;  // gathered and filtered; may hold the reference itself
  od::EntityId reference = od::kNullId;
};

// Gathers the targets by the standard rule, then asks "Select reference object: ". Nothing
// when the command ends here: the selection was cancelled (silently, and the command is
// marked cancelled), no target is left ("Completed: 0"), or no reference was picked
// ("Error: no objects selected.").
std::optional<CopyRun> GatherTargetsAndReference(od::CommandContext& context);

// Prints "Completed: %i\n".
void ReportCompleted(od::Host& host, size_t count);

}  // namespace veltor::commands
