// Selecting entities whose Object Data values match patterns typed in the value-query dialog.
#pragma once

#include <string>
#include <vector>

#include "od/command_context.h"
#include "od/host.h"
#include "ui/select_by_od.h"

namespace veltor::commands {

// Keeps, in place, the entities for which every condition holds through at least one of
// `tables` that the entity has a record of. A failing entity is replaced by the list's last
// one, which is tested next. With no conditions every entity is kept and nothing is read.
// Returns the number of damaged records met on the entities read (of any table).
size_t KeepMatching(const od::ObjectDataContainer& container, const std::vector<std::string>& tables,
                    const std::vector<ui::Condition>& conditions, bool extended,
                    od::EntityList& entities);

void HasSpecificValues(od::CommandContext& context);

}  // namespace veltor::commands
