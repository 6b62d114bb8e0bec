// VELTOR_RM_ALL: detaches every user-table record from entities.
#pragma once

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

struct DetachAllResult {
  size_t with_records = 0;  // entities that had any user-table record
  size_t skipped = 0;       // damaged records, left where they are
};

// For each entity, takes the user-table names of its records (one per record) and, for each
// name, walks the entity's records once removing those of that table (exact name); the
// records the walks remove go in one change per entity. Records of system tables stay.
DetachAllResult DetachAllRecords(od::ObjectDataContainer& container, const od::EntityList& entities);

// The command: the "Warning" message box (Yes to go on), the standard gathering, then
// "Completed: %i out of %i\n" with the entities that had records and the entities processed.
void RmAll(od::CommandContext& context);

}  // namespace veltor::commands
