// VELTOR_REPLACE: rewrites the values of chosen columns that an old-value pattern matches.
#pragma once

#include <optional>
#include <string>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

// One entity: every record of `table` (exact name) on it, in host order, has the value in
// column `column` (an index of the table's definition) tested and changed by
// ReplaceByPattern, and is written back whether it changed or not. Returns the replacements
// counted on the records that were written.
int ReplaceInEntity(od::ObjectDataContainer& container, od::EntityId entity,
                    const std::string& table, int column, const std::string& pattern,
                    const std::string& new_text);

// The worker, for the command and for callers that have their own entity list (the OD table
// view's selected rows): drops entities on unusable layers, shows "Replace OD values" over
// the tables of the entities' records (of model space when the list is empty), replaces in
// every chosen column over every entity and prints "Completed: %i\n". Returns the total, or
// nothing when the dialog was cancelled (the command is then marked cancelled).
std::optional<int> ReplaceValues(od::CommandContext& context, od::EntityList entities);

// The command: the standard gathering (the worker applies its layer filter), then the worker.
void Replace(od::CommandContext& context);

}  // namespace veltor::commands
