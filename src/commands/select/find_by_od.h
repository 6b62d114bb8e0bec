// Selecting entities by whether they carry Object Data: none, any, several, or one table twice.
#pragma once

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

enum class PresenceMode : int {
  kNoOd = 0,         // no record of a user table
  kHasOd = 2,        // at least one record of a user table
  kMultipleOd = 3,   // more than one record of user tables
  kDuplicateOd = 4,  // two records (of any table, system tables too) share a table name
};

// Gathers entities by the standard rule and keeps those the mode describes, in gathered order.
// Empty when the gathering was cancelled. Any other mode number keeps nothing.
od::EntityList FindEntitiesByOd(od::Host& host, int mode);

void HasNoOd(od::CommandContext& context);
void HasOd(od::CommandContext& context);
void HasMultipleOd(od::CommandContext& context);
void HasDuplicateOd(od::CommandContext& context);

}  // namespace veltor::commands
