#include "commands/edit/replace_values.h"

#include <algorithm>
#include <unordered_map>

#include "commands/edit/edit_lock.h"
#include "commands/edit/replace_pattern.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/options_replace.h"

namespace veltor::commands {

namespace {

// The per-entity step once the entity is known to carry records of `table`.
int ReplaceInRecords(od::ObjectDataContainer& container, od::EntityId entity,
                     const std::string& table, int column, const std::string& pattern,
                     const std::string& new_text) {
  std::vector<od::Record> records = container.Records(entity);
  int count = 0;
  for (size_t i = 0; i < records.size(); ++i) {
    od::Record& record = records[i];
    if (record.table != table) continue;
    int replaced = 0;
    if (static_cast<size_t>(column) < record.values.size())
      replaced = ReplaceByPattern(record.values[column], pattern, new_text);
    // Every record of the table is written back, changed or not.
    if (container.UpdateRecord(entity, i, record).ok()) count += replaced;
  }
  return count;
}

// The table names of each entity's records, read once for the dialog and for the work after
// it: `tables` lists each name once, and entity i carries those numbered
// ids[first[i]] .. ids[first[i + 1] - 1].
struct TablesOfEntities {
  std::vector<std::string> tables;
  std::vector<size_t> first;
  std::vector<uint32_t> ids;
  size_t skipped = 0;  // damaged records

  bool Carries(size_t entity, uint32_t id) const {
    return std::find(ids.begin() + static_cast<std::ptrdiff_t>(first[entity]),
                     ids.begin() + static_cast<std::ptrdiff_t>(first[entity + 1]),
                     id) != ids.begin() + static_cast<std::ptrdiff_t>(first[entity + 1]);
  }
};

TablesOfEntities ReadTables(const od::ObjectDataContainer& container, const od::EntityList& entities) {
  TablesOfEntities read;
  std::unordered_map<std::string, uint32_t> numbers;
  read.first.reserve(entities.size() + 1);
  for (od::EntityId entity : entities) {
    read.first.push_back(read.ids.size());
    od::RecordNames names = container.ReadRecordNames(entity);
    read.skipped += names.damaged;
    for (std::string& name : names.tables) {
      auto [at, added] = numbers.emplace(name, static_cast<uint32_t>(read.tables.size()));
      if (added) read.tables.push_back(std::move(name));
      read.ids.push_back(at->second);
    }
  }
  read.first.push_back(read.ids.size());
  return read;
}

}  // namespace

int ReplaceInEntity(od::ObjectDataContainer& container, od::EntityId entity,
                    const std::string& table, int column, const std::string& pattern,
                    const std::string& new_text) {
  if (column < 0) return 0;
  std::vector<std::string> names = container.RecordTableNames(entity);
  if (std::find(names.begin(), names.end(), table) == names.end()) return 0;
  return ReplaceInRecords(container, entity, table, column, pattern, new_text);
}

std::optional<int> ReplaceValues(od::CommandContext& context, od::EntityList entities) {
  od::Host& host = context.host();
  if (od::Database* db = host.WorkingDatabase()) od::FilterUsable(*db, entities);
  Result<od::Project*> project = host.ActiveProject();
  // Without Object Data the dialog offers nothing and OK cannot be pressed.
  od::ObjectDataContainer* container = project.ok() ? &(*project)->Container() : nullptr;
  TablesOfEntities read;
  od::TableNameSet offered;
  if (entities.empty()) {
    offered = od::GetTableNames(host, entities, true);
  } else if (container) {
    read = ReadTables(*container, entities);
    for (const std::string& name : read.tables)
      if (!od::IsSystemTableName(name)) offered.insert(name);
  }
  ui::OptionsReplace dialog({offered.begin(), offered.end()}, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) {
    context.Cancel();
    return std::nullopt;
  }
  const ui::OptionsReplace::Choice& choice = dialog.choice();
  int total = 0;
  auto table = std::find(read.tables.begin(), read.tables.end(), choice.table);
  if (container && table != read.tables.end()) {
    if (!LockForEdits(context)) return std::nullopt;
    ReportSkippedRecords(host, read.skipped);
    const uint32_t id = static_cast<uint32_t>(table - read.tables.begin());
    Result<od::TableDefinition> definition = container->GetTable(choice.table);
    for (const std::string& column : choice.columns) {
      int index = definition.ok() ? od::FindColumn(*definition, column) : -1;
      if (index < 0) continue;  // a column missing from the table adds nothing
      for (size_t i = 0; i < entities.size(); ++i)
        if (read.Carries(i, id))
          total += ReplaceInRecords(*container, entities[i], choice.table, index, choice.pattern,
                                    choice.new_text);
    }
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), total));
  return total;
}

void Replace(od::CommandContext& context) {
  // The standard gathering; its layer filter is left to the worker, which applies it to every
  // list it is given (filtering twice would only cost time: the result is the same).
  od::Host& host = context.host();
  od::EntityList entities = od::GetImpliedSelection(host);
  if (entities.empty()) {
    od::PromptOutcome picked = od::PromptSelection(host);
    if (picked.status == od::GatherStatus::kCancelled) return context.Cancel();
    entities = std::move(picked.entities);
    if (entities.empty())
      if (od::Database* db = host.WorkingDatabase()) entities = od::GetModelSpaceEntities(*db);
  }
  (void)ReplaceValues(context, std::move(entities));
}

}  // namespace veltor::commands
