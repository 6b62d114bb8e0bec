// VELTOR_ADDVAL ("Add from field in field") and VELTOR_ADDVAL_OD2OD ("Add values from OD to
// OD"): each asks in its dialog first, then gathers the entities and writes.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

void AddVal(od::CommandContext& context);
// VELTOR_ADDVAL on the entities handed in (the OD table view's rows); with none it gathers
// them as the command does.
void AddValWorker(od::CommandContext& context, const od::EntityList& entities);
void AddValOd2Od(od::CommandContext& context);

}  // namespace veltor::commands
