#include "commands/edit/record_removal.h"

namespace veltor::commands {

RemovalPass RemoveInOneWalk(od::ObjectDataContainer& container, od::EntityId entity,
                            std::vector<std::string>& names, const std::string& table) {
  RemovalPass pass;
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] != table) continue;
    ++pass.visited;
    if (container.RemoveRecord(entity, i).ok()) {
      ++pass.removed;
      names.erase(names.begin() + static_cast<std::ptrdiff_t>(i));
    }
    // The loop's step follows: after a removal it passes over the record now at i.
  }
  return pass;
}

}  // namespace veltor::commands
