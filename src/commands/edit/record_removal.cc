#include "commands/edit/record_removal.h"

namespace veltor::commands {

RemovalPass RemoveInOneWalk(od::ObjectDataContainer& container, od::EntityId entity,
                            std::vector<std::string>& names, const std::string& table) {
  // The walk in positions before any removal: a removed record's successor is passed over.
  std::vector<size_t> visited;
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] != table) continue;
    visited.push_back(i);
    ++i;
  }
  RemovalPass pass;
  pass.visited = visited.size();
  if (visited.empty() || !container.RemoveRecords(entity, visited).ok()) return pass;
  pass.removed = visited.size();
  for (auto at = visited.rbegin(); at != visited.rend(); ++at)
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(*at));
  return pass;
}

}  // namespace veltor::commands
