// VELTOR_STAT: the Object Data census of model space, shown in a text box dialog.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Asks nothing, changes nothing and prints nothing: the report is shown in a modal read-only
// text box titled "Object Data statistics.".
void Stat(od::CommandContext& context);

}  // namespace veltor::commands
