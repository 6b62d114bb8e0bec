// The document lock of a command that edits many entities.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Locks the active drawing for the rest of the command. When the lock cannot be had, prints
// "Error: NAME failed: REASON", marks the command cancelled and returns false: the caller
// then ends without changing anything.
bool LockForEdits(od::CommandContext& context);

}  // namespace veltor::commands
