#include "commands/select/value_query.h"

#include <algorithm>

#include "commands/select/value_matcher.h"
#include "commands/select/query_memory.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/gathering.h"

namespace veltor::commands {

namespace {

// A selected table with the column index of each condition (-1: the table lacks it).
struct PreparedTable {
  std::string name;
  std::vector<int> columns;
};

bool ConditionHolds(const std::vector<PreparedTable>& tables, const std::vector<od::Record>& records,
                    size_t k, const ui::Condition& condition, bool extended) {
  for (const PreparedTable& table : tables) {
    for (const od::Record& record : records) {
      if (record.table != table.name) continue;
      if (condition.pattern == "*") return true;
      int column = table.columns[k];
      if (column < 0) break;
      if (static_cast<size_t>(column) < record.values.size() &&
          MatchValue(record.values[static_cast<size_t>(column)], condition.pattern, extended))
        return true;
    }
  }
  return false;
}

}  // namespace

size_t KeepMatching(const od::ObjectDataContainer& container, const std::vector<std::string>& tables,
                    const std::vector<ui::Condition>& conditions, bool extended,
                    od::EntityList& entities) {
  if (conditions.empty()) return 0;
  std::vector<PreparedTable> prepared;
  for (const std::string& name : tables) {
    PreparedTable table{name, {}};
    Result<od::TableDefinition> def = container.GetTable(name);
    for (const ui::Condition& c : conditions) table.columns.push_back(def.ok() ? def->ColumnIndex(c.column) : -1);
    prepared.push_back(std::move(table));
  }
  size_t skipped = 0;
  size_t i = 0;
  while (i < entities.size()) {
    // One read per entity: the records of the chosen tables and the count of damaged ones.
    size_t damaged = 0;
    std::vector<od::Record> records = container.RecordsOf(entities[i], tables, damaged);
    skipped += damaged;
    bool keep = !records.empty();
    for (size_t k = 0; k < conditions.size() && keep; ++k)
      keep = ConditionHolds(prepared, records, k, conditions[k], extended);
    if (keep) {
      ++i;
    } else {
      std::swap(entities[i], entities.back());
      entities.pop_back();
    }
  }
  return skipped;
}

void HasSpecificValues(od::CommandContext& context) {
  od::Host& host = context.host();
  od::EntityList entities = od::GetImpliedSelection(host);
  od::Database* db = host.WorkingDatabase();
  if (db) od::FilterUsable(*db, entities);
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) return;
  const od::ObjectDataContainer& container = (*project)->Container();

  od::TableNameSet offered;
  if (entities.empty()) {
    offered = od::GetTableNames(host, {}, true);
  } else {
    for (od::EntityId entity : entities)
      for (std::string& name : container.RecordTableNames(entity)) offered.insert(std::move(name));
  }
  QueryMemory& memory = ModuleQueryMemory();
  ui::SelectByOd dialog({offered.begin(), offered.end()}, true, memory.values, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (dialog.selected_tables().empty()) return;

  if (entities.empty()) {
    od::PromptOutcome prompted = od::PromptSelection(host);
    if (prompted.status == od::GatherStatus::kCancelled) return;
    entities = prompted.entities.empty() && db ? od::GetModelSpaceEntities(*db) : prompted.entities;
    if (db) od::FilterUsable(*db, entities);
    if (entities.empty()) return;
  }
  if (dialog.conditions().empty()) {
    WarnSkippedRecords(host, entities);
  } else {
    ReportSkippedRecords(host, KeepMatching(container, dialog.selected_tables(), dialog.conditions(),
                                            memory.values.extended, entities));
  }
  od::SetPickfirst(host, entities);
  od::ReportSelected(host, entities.size());
}

}  // namespace veltor::commands
