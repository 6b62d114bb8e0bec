#include "commands/edit/record_removal.h"

#include <algorithm>

namespace veltor::commands {

std::vector<size_t> WalkRemovals(const std::vector<std::string>& names,
                                 const std::vector<std::string>& tables) {
  std::vector<size_t> left(names.size());  // positions of the records not yet removed
  for (size_t i = 0; i < left.size(); ++i) left[i] = i;
  std::vector<size_t> removed;
  for (const std::string& table : tables) {
    for (size_t i = 0; i < left.size(); ++i) {
      if (names[left[i]] != table) continue;
      removed.push_back(left[i]);
      left.erase(left.begin() + static_cast<std::ptrdiff_t>(i));
      // The step that follows passes over the record now at i.
    }
  }
  std::sort(removed.begin(), removed.end());
  return removed;
}

RemovalPass RemoveInOneWalk(od::ObjectDataContainer& container, od::EntityId entity,
                            std::vector<std::string>& names, const std::string& table) {
  std::vector<size_t> visited = WalkRemovals(names, {table});
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
