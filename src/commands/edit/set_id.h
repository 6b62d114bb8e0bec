// VELTOR_SETID ("Generate IDs"): numbers the records of one table in one field - plain
// integers in an Integer field, prefix + number + suffix in a Character field.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Runs the dialog and numbers the records of `entities`; with no entities it asks for them
// after the dialog. The OD table view hands in its rows.
void SetIdWorker(od::CommandContext& context, od::EntityList entities);
// The command: the worker with the pickfirst selection.
void SetId(od::CommandContext& context);

// Numbers the records of `table` on `entities` in `column`, walking the list from its last
// entity to its first, from `first` on; returns how many numbers were handed out. A Real
// value is left as it is; a Point or unknown value stops the numbering there.
size_t NumberRecords(od::ObjectDataContainer& container, const od::EntityList& entities,
                     const std::string& table, const std::string& column, int first,
                     const std::string& prefix, const std::string& suffix);

}  // namespace veltor::commands
