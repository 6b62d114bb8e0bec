// What loading attributes into Object Data and storing them back both start with.
#pragma once

#include <optional>
#include <vector>

#include "commands/exchange/attr_map.h"
#include "commands/exchange/attr_selection.h"
#include "od/command_context.h"

namespace veltor::commands {

struct AttributeRun {
  AttributeMap map;
  od::Database* db = nullptr;
  od::ObjectDataContainer* container = nullptr;
  std::vector<BlockReference> references;  // among the gathered entities
};

// Reads the pickfirst set, asks for the attribute map and reads it, gathers the entities
// (the pickfirst set, else the selection prompt, else model space), locks the drawing and
// finds the block references. Nothing when the command ends here: a cancelled dialog or
// prompt (the command is marked cancelled), a map without a usable line, nothing gathered,
// no Object Data, or a refused lock (said why).
std::optional<AttributeRun> StartAttributeRun(od::CommandContext& context);

}  // namespace veltor::commands
