// Selecting entities by which tables they carry, picked in the table-list dialog.
#pragma once

#include <string>
#include <vector>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

// Gathers entities by the standard rule and keeps those carrying records of `tables`: any one
// of them, or - `simultaneous` - at least as many records of them as tables were picked.
od::EntityList FindEntitiesWithTables(od::Host& host, const std::vector<std::string>& tables,
                                      bool simultaneous);
// Keeps those carrying none of `tables`, or - `not_simultaneous` - fewer records of them than
// tables were picked.
od::EntityList FindEntitiesWithoutTables(od::Host& host, const std::vector<std::string>& tables,
                                         bool not_simultaneous);

void HasSpecificOd(od::CommandContext& context);
void HasNoSpecificOd(od::CommandContext& context);

}  // namespace veltor::commands
