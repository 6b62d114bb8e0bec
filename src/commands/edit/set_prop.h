// VELTOR_SETPROP ("Set OD from object properties"): writes each entity's length, area and
// volume into up to three columns of one table.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Runs the dialog and writes into the entities' records: `entities` when not empty (the OD
// table view hands in its rows), otherwise the pickfirst selection or the selection prompt.
void SetPropWorker(od::CommandContext& context, const od::EntityList& entities);
// The command: the worker with no entities.
void SetProp(od::CommandContext& context);

}  // namespace veltor::commands
