#include "commands/select/find_with_tables.h"

#include <algorithm>

#include "commands/select/query_memory.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/object_data_list.h"

namespace veltor::commands {

namespace {

// Walks the gathered entities (already only those on usable layers) and keeps those
// `keep(c, total)` accepts, where c counts the records of picked tables and total all records.
template <typename Keep>
od::EntityList FilterByTables(od::Host& host, const std::vector<std::string>& tables, Keep keep) {
  od::EntityList kept;
  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled) return kept;
  Result<od::Project*> project = host.ActiveProject();
  for (od::EntityId entity : gathered.entities) {
    std::vector<std::string> names;
    if (project.ok()) names = (*project)->Container().RecordTableNames(entity);
    size_t c = 0;
    for (const std::string& name : names)
      if (std::find(tables.begin(), tables.end(), name) != tables.end()) ++c;
    if (keep(c, names.size())) kept.push_back(entity);
  }
  WarnSkippedRecords(host, gathered.entities);
  return kept;
}

// The tables the dialog offers: those of the implied entities (system tables too, the dialog
// drops them), or those used in model space. Sorted ordinally.
std::vector<std::string> OfferedTables(od::Host& host, const od::EntityList& implied) {
  od::TableNameSet names;
  if (implied.empty()) {
    names = od::GetTableNames(host, {}, true);
  } else if (Result<od::Project*> project = host.ActiveProject(); project.ok()) {
    for (od::EntityId entity : implied)
      for (std::string& name : (*project)->Container().RecordTableNames(entity))
        names.insert(std::move(name));
  }
  return {names.begin(), names.end()};
}

void RunTableQuery(od::CommandContext& context, bool with) {
  od::Host& host = context.host();
  od::EntityList implied = od::GetImpliedSelection(host);
  std::vector<std::string> offered = OfferedTables(host, implied);
  if (!implied.empty() && offered.empty()) {
    od::ReportSelected(host, 0);
    return;
  }
  Result<od::Project*> project = host.ActiveProject();
  QueryMemory& memory = ModuleQueryMemory();
  memory.tables.picked.clear();
  ui::ObjectDataList dialog(od::Str(with ? od::kStrWithSpecificOdTitle : od::kStrWithoutSpecificOdTitle),
                            offered, memory.tables,
                            project.ok() ? &(*project)->Container() : nullptr);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  const std::vector<std::string>& picked = memory.tables.picked;
  od::EntityList found;
  if (with) {
    found = FindEntitiesWithTables(host, picked, memory.tables.simultaneous);
  } else {
    if (picked.empty()) {
      od::ReportSelected(host, 0);
      return;
    }
    found = FindEntitiesWithoutTables(host, picked, !memory.tables.simultaneous);
  }
  od::ReportSelected(host, found.size());
  od::SetPickfirst(host, found);
}

}  // namespace

od::EntityList FindEntitiesWithTables(od::Host& host, const std::vector<std::string>& tables,
                                      bool simultaneous) {
  size_t n = tables.size();
  return FilterByTables(host, tables, [&](size_t c, size_t total) {
    return simultaneous ? total >= n && c >= n : c >= 1;
  });
}

od::EntityList FindEntitiesWithoutTables(od::Host& host, const std::vector<std::string>& tables,
                                         bool not_simultaneous) {
  size_t n = tables.size();
  // The flag arrives negated: "not simultaneous" true means the dialog's box was off.
  return FilterByTables(host, tables, [&](size_t c, size_t) { return not_simultaneous ? c == 0 : c < n; });
}

void HasSpecificOd(od::CommandContext& context) { RunTableQuery(context, true); }
void HasNoSpecificOd(od::CommandContext& context) { RunTableQuery(context, false); }

}  // namespace veltor::commands
