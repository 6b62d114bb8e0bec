// VELTOR_RMUNUSED: deletes table definitions that no model space entity uses.
#pragma once

#include <string>
#include <vector>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

struct TableUsage {
  std::vector<std::string> unused;  // in container order
  std::vector<std::string> used;    // in the order the model space walk met them
};

// Sorts every table of the container into used and unused by the records of the entities of
// model space (all of them: no layer filter). Records on paper space entities or inside block
// definitions do not count, so a table used only there is unused.
TableUsage FindTableUsage(const od::ObjectDataContainer& container, const od::Database& db);

// The command: the "Remove Unused OD" dialog, then deletes the unused tables picked there and
// prints "Completed: %i\n" with the number deleted.
void RmUnused(od::CommandContext& context);

}  // namespace veltor::commands
