// What the attach/detach and value-addition commands share: the tables their dialogs offer,
// the entities gathered after the dialog, and what they print besides "Completed: %i".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "od/command_context.h"

namespace veltor::commands {

// The user tables the drawing defines, in ordinal order; empty without Object Data.
std::vector<std::string> OfferedTables(od::Host& host);

// Prints "Error: table not found." - the drawing defines no user table to offer.
void ReportNoTables(od::Host& host);

// After the dialog: the pickfirst selection `implied` (read before the dialog) or else the
// selection prompt, else all of model space; then the usable-entity filter; then the drawing
// is locked for the edits. Nothing when the command ends here: a cancelled prompt (marked
// cancelled), nothing left ("Completed: 0"), or a lock refused (said why).
std::optional<od::EntityList> GatherForEdits(od::CommandContext& context, od::EntityList implied);

// Says how many values did not convert and were left as they were; nothing for 0.
void ReportNotConverted(od::Host& host, size_t failed);

}  // namespace veltor::commands
