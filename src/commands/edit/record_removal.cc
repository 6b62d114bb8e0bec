#include "commands/edit/record_removal.h"

#include <algorithm>

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
  if (visited.empty()) return pass;
  if (container.RemoveRecords(entity, visited).ok()) {
    pass.removed = visited.size();
    for (auto at = visited.rbegin(); at != visited.rend(); ++at)
      names.erase(names.begin() + static_cast<std::ptrdiff_t>(*at));
    return pass;
  }
  // A host that removes one by one may have removed some before failing: count what is gone.
  auto of_table = [&](const std::vector<std::string>& list) {
    return static_cast<size_t>(std::count(list.begin(), list.end(), table));
  };
  size_t before = of_table(names);
  names = container.RecordTableNames(entity);
  size_t after = of_table(names);
  pass.removed = before > after ? before - after : 0;
  return pass;
}

}  // namespace veltor::commands
