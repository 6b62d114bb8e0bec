// VELTOR_TRANSLATE: renames tables and columns and replaces values in bulk from alias files,
// names to aliases or back.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

void Translate(od::CommandContext& context);

}  // namespace veltor::commands
