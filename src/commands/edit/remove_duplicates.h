// VELTOR_REMOVE_DUPLICATE_OD: removes repeated records of one table from entities.
#pragma once

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

// Which records of a repeated table go. The prompt's words pair with the kept record on
// purpose: "First" removes the earlier records and keeps the last one, "Last" removes the
// later records and keeps the first one.
enum class DuplicateMode { kFirst, kLast };

// Treats one entity: table names (system tables too) that occur more than once among its
// records, compared without regard to letter case, are duplicated; for each, in the order
// found, the records of that name but one are removed as `mode` says. A removal that fails
// ends the treatment of that name. Returns the number of duplicated names.
size_t RemoveDuplicateRecords(od::ObjectDataContainer& container, od::EntityId entity,
                              DuplicateMode mode);

// The command: "Mode (First, Last)<First>: ", then, without pickfirst entities, the selection
// prompt (no model space for an empty answer, no layer filter); prints "Completed: %i\n" with
// the number of (entity, table) pairs treated.
void RemoveDuplicateOd(od::CommandContext& context);

}  // namespace veltor::commands
