#include "commands/exchange/usage_statistics.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "od/catalogue.h"
#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// Two records of one table (exact comparison). Entities carry few records, so comparing
// each pair is cheaper than building a set.
bool HasRepeatedName(const std::vector<std::string>& names) {
  for (size_t i = 1; i < names.size(); ++i)
    if (std::find(names.begin(), names.begin() + i, names[i]) != names.begin() + i) return true;
  return false;
}

}  // namespace

UsageStatistics CountUsage(od::Host& host) {
  UsageStatistics stats;
  od::Database* db = host.WorkingDatabase();
  if (!db) return stats;
  Result<od::Project*> project = host.ActiveProject();
  const od::ObjectDataContainer* container = project.ok() ? &(*project)->Container() : nullptr;
  if (container)
    for (const std::string& name : od::GetAllTableNames(*container))
      if (!od::IsSystemTableName(name)) stats.records_per_table.emplace(name, 0);
  // The counters by exact name: hashing a name is cheaper than the ordinal comparisons of
  // the map, and a drawing has about as many records as entities.
  std::unordered_map<std::string, uint32_t*> counter_of;
  for (auto& [name, count] : stats.records_per_table) counter_of.emplace(name, &count);

  for (od::EntityId entity : db->ModelSpaceEntities()) {
    if (entity == od::kNullId) continue;
    ++stats.entities;
    // Every record counts here, system tables included.
    std::vector<std::string> names;
    if (container) names = container->RecordTableNames(entity);
    if (names.empty()) {
      ++stats.without_od;
      continue;
    }
    ++stats.with_od;
    for (const std::string& name : names) {
      auto counter = counter_of.find(name);
      if (counter != counter_of.end()) ++*counter->second;
    }
    if (names.size() >= 2) ++stats.with_multiple_od;
    if (HasRepeatedName(names)) ++stats.with_duplicated_od;
  }
  return stats;
}

std::string StatisticsReport(const UsageStatistics& stats) {
  int tables = static_cast<int>(stats.records_per_table.size());
  int unused = tables;
  std::string block;
  if (stats.with_od > 0) {
    block = od::Str(od::kStrStatHeader);
    for (const auto& [name, count] : stats.records_per_table) {
      if (count == 0) continue;
      block += od::Format("\t%s: %lu\n", name.c_str(), static_cast<unsigned long>(count));
      --unused;
    }
  }
  // The per-table block stands between the objects without and the objects with Object Data.
  std::string format = std::string(od::Str(od::kStrStatObjects)) + od::Str(od::kStrStatNoOd) +
                       "%s" + od::Str(od::kStrStatWithOd) + od::Str(od::kStrStatDuplicated) +
                       od::Str(od::kStrStatMultiple) + od::Str(od::kStrStatTable) +
                       od::Str(od::kStrStatUnused);
  return od::Format(format.c_str(), stats.entities, stats.without_od, block.c_str(),
                    stats.with_od, stats.with_duplicated_od, stats.with_multiple_od, tables,
                    unused);
}

}  // namespace veltor::commands
