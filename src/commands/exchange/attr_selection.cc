#include "commands/exchange/attr_selection.h"

namespace veltor::commands {

std::vector<BlockReference> BlockReferencesOf(const od::Database& db,
                                              const od::EntityList& entities) {
  std::vector<BlockReference> references;
  for (od::EntityId id : entities)
    if (std::optional<std::string> block = db.EffectiveBlockName(id))
      references.push_back({id, std::move(*block)});
  return references;
}

}  // namespace veltor::commands
