// Identifiers of drawing objects as the module sees them.
#pragma once

#include <cstdint>
#include <vector>

namespace veltor::od {

// An opaque id of a drawing object (entity, layer, block). The embedded host uses the
// object's drawing handle. 0 is the null id.
using ObjectId = uint64_t;
using EntityId = ObjectId;
inline constexpr ObjectId kNullId = 0;

// An ordered list of entities. Duplicates are allowed and kept.
using EntityList = std::vector<EntityId>;

}  // namespace veltor::od
