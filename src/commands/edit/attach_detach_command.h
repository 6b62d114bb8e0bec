// VELTOR_ADEATTACHDATA: attach a record of a table to entities, or detach every record of
// that table from them, through the attach/detach dialog.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

void AttachDetachData(od::CommandContext& context);

}  // namespace veltor::commands
