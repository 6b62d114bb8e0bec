// VELTOR_RM: detaches the records of chosen tables from entities.
#pragma once

#include <string>
#include <vector>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

// Removes every record of `tables` from `entities`: for each table in turn (a table the
// container cannot give is skipped) and each entity, walks the entity's records again until a
// walk comes to no record of the table, or removes none of those it came to (records that
// cannot be removed are left, and not counted). Returns the number of records removed.
size_t DetachTables(od::ObjectDataContainer& container, const std::vector<std::string>& tables,
                    const od::EntityList& entities);

// The command: the "Detach OD" dialog over the tables of the pickfirst entities (or those in
// use in model space), then, without pickfirst entities, the selection prompt; prints
// "Completed: %i\n" with the records removed.
void Rm(od::CommandContext& context);

}  // namespace veltor::commands
