// VELTOR_SETTEXT ("Set OD from text"): copies the string of the text lying inside a closed
// entity, or nearest an open one, into a field of the entity's record, and marks the texts
// where no single text could be chosen.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// The layer and the block that mark ambiguous texts.
inline constexpr char kErrorLayer[] = "veltor_error";
inline constexpr char kErrorBlock[] = "veltor_error";

// Runs the dialog and writes into the records of `entities` (when not empty; the OD table
// view hands in its rows), otherwise of the pickfirst selection or the selection prompt. The
// texts among the entities are the candidates.
void SetTextWorker(od::CommandContext& context, const od::EntityList& entities);
// The command: the worker with no entities.
void SetText(od::CommandContext& context);

}  // namespace veltor::commands
