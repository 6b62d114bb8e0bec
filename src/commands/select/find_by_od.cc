#include "commands/select/find_by_od.h"

#include <set>

#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/gathering.h"

namespace veltor::commands {

namespace {

// Two records of one table, system tables included: names compare exactly.
bool HasRepeatedTable(const std::vector<std::string>& names) {
  if (names.size() < 2) return false;
  std::set<std::string> seen;
  for (const std::string& name : names)
    if (!seen.insert(name).second) return true;
  return false;
}

void SelectByPresence(od::Host& host, PresenceMode mode) {
  od::EntityList found = FindEntitiesByOd(host, static_cast<int>(mode));
  od::SetPickfirst(host, found);
  od::ReportSelected(host, found.size());
}

}  // namespace

od::EntityList FindEntitiesByOd(od::Host& host, int mode) {
  od::EntityList kept;
  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled || gathered.entities.empty()) return kept;
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) {
    // Without Object Data every entity has no records.
    if (mode == static_cast<int>(PresenceMode::kNoOd)) return gathered.entities;
    return kept;
  }
  const od::ObjectDataContainer& container = (*project)->Container();
  WarnSkippedRecords(host, gathered.entities);
  for (od::EntityId entity : gathered.entities) {
    bool keep = false;
    switch (mode) {
      case 0: keep = od::GetEntityTableNames(container, entity).empty(); break;
      case 2: keep = !od::GetEntityTableNames(container, entity).empty(); break;
      case 3: keep = od::GetEntityTableNames(container, entity).size() > 1; break;
      case 4: keep = HasRepeatedTable(container.RecordTableNames(entity)); break;
      default: break;
    }
    if (keep) kept.push_back(entity);
  }
  return kept;
}

void HasNoOd(od::CommandContext& context) { SelectByPresence(context.host(), PresenceMode::kNoOd); }
void HasOd(od::CommandContext& context) { SelectByPresence(context.host(), PresenceMode::kHasOd); }
void HasMultipleOd(od::CommandContext& context) { SelectByPresence(context.host(), PresenceMode::kMultipleOd); }
void HasDuplicateOd(od::CommandContext& context) { SelectByPresence(context.host(), PresenceMode::kDuplicateOd); }

}  // namespace veltor::commands
