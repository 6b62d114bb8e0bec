// VELTOR_ADDVAL ("Add from field in field") and VELTOR_ADDVAL_OD2OD ("Add values from OD to
// OD"): each asks in its dialog first, then gathers the entities and writes.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

void AddVal(od::CommandContext& context);
void AddValOd2Od(od::CommandContext& context);

}  // namespace veltor::commands
