// VELTOR_TABLE: shows the OD table palette, creating it (with its editing workers) on first use.
#pragma once

#include "od/command_context.h"

namespace veltor::app {

void VeltorTable(od::CommandContext& context);

}  // namespace veltor::app
