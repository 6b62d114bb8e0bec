// Removing an entity's records while walking them, as the host's record iterator does it.
//
// The host's iterator steps to the next record after each record it visits, also after
// removing that record; the record that moved into the removed one's place is then passed
// over. One walk can therefore leave records of the table it removes behind, and callers
// that must clear a table walk again.
#pragma once

#include <string>
#include <vector>

#include "od/object_data.h"

namespace veltor::commands {

struct RemovalPass {
  size_t visited = 0;  // records of the table the walk came to
  size_t removed = 0;  // of those, the ones removed
};

// The records that walks remove, one walk per entry of `tables` in turn (each removing the
// visited records of that table, exact name), when every removal succeeds: their positions
// in `names` (the entity's record table names in host order), ascending.
std::vector<size_t> WalkRemovals(const std::vector<std::string>& names,
                                 const std::vector<std::string>& tables);

// One walk over the entity's records that removes every visited record of `table` (exact
// name). `names` holds the table names of the entity's records in host order on entry
// (ObjectDataContainer::RecordTableNames) and is kept in step with the removals. The records
// the walk removes go in one change; when the host refuses it, `names` is read again and the
// records gone are counted.
RemovalPass RemoveInOneWalk(od::ObjectDataContainer& container, od::EntityId entity,
                            std::vector<std::string>& names, const std::string& table);

}  // namespace veltor::commands
