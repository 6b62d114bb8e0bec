// The block references the attribute commands work on.
#pragma once

#include <string>
#include <vector>

#include "od/host.h"

namespace veltor::commands {

struct BlockReference {
  od::EntityId id = od::kNullId;
  std::string block;  // the effective block name
};

// The block references among `entities`, in their order, with their effective block names;
// every other entity is dropped.
std::vector<BlockReference> BlockReferencesOf(const od::Database& db,
                                              const od::EntityList& entities);

}  // namespace veltor::commands
