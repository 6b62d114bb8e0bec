#include "commands/edit/set_id.h"

#include <unordered_set>

#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "commands/edit/set_id_first.h"
#include "commands/edit/set_memory.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/options_wild.h"

namespace veltor::commands {

namespace {

// Drops repeated ids: the first occurrence stays, the rest keep their order.
void DropRepeats(od::EntityList& entities) {
  std::unordered_set<od::EntityId> seen;
  od::EntityList kept;
  for (od::EntityId id : entities)
    if (seen.insert(id).second) kept.push_back(id);
  entities = std::move(kept);
}

}  // namespace

size_t NumberRecords(od::ObjectDataContainer& container, const od::EntityList& entities,
                     const std::string& table, const std::string& column, int first,
                     const std::string& prefix, const std::string& suffix) {
  Result<od::TableDefinition> def = container.GetTable(table);
  if (!def.ok()) return 0;
  int index = def->ColumnIndex(column);
  if (index < 0) return 0;
  const auto at = static_cast<size_t>(index);
  long long counter = first;
  // Handed out from the list's end, deliberately: the last entity gets the first number.
  for (auto entity = entities.rbegin(); entity != entities.rend(); ++entity) {
    std::vector<od::Record> records = container.Records(*entity);
    for (size_t r = 0; r < records.size(); ++r) {
      od::Record& record = records[r];
      if (record.table != table || at >= record.values.size()) continue;
      od::Value& value = record.values[at];
      const int number = static_cast<int>(counter);
      switch (value.type()) {
        case od::ValueType::kInteger:
          value.SetInteger(number);
          ++counter;
          break;
        case od::ValueType::kCharacter:
          value.SetCharacter(od::Format("%s%i%s", prefix.c_str(), number, suffix.c_str()));
          ++counter;
          break;
        case od::ValueType::kReal:
          break;
        default:
          return static_cast<size_t>(counter - first);
      }
      (void)container.UpdateRecord(*entity, r, record);
    }
  }
  return static_cast<size_t>(counter - first);
}

void SetIdWorker(od::CommandContext& context, od::EntityList entities) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return;
  od::ObjectDataContainer& container = (*project)->Container();

  od::FilterUsable(*db, entities);
  const bool handed = !entities.empty();
  od::TableNameSet tables = od::GetTableNames(host, entities, true);
  ui::OptionsWild::Memory& memory = ModuleSetDialogMemory().id;
  ui::OptionsWild::Services services{
      [&host](const std::string& line) { host.Ed().Print(line); },
      [&host](const std::string& table, const std::string& column) {
        return ProposeFirstNumber(host, table, column);
      }};
  ui::OptionsWild dialog({tables.begin(), tables.end()}, memory, container, services);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (memory.first_number < 0) return;

  if (!handed) {
    od::PromptOutcome answer = od::PromptSelection(host);
    if (answer.status == od::GatherStatus::kCancelled) return context.Cancel();
    entities = answer.entities.empty() ? od::GetModelSpaceEntities(*db) : answer.entities;
  }
  od::FilterUsable(*db, entities);
  DropRepeats(entities);
  if (!LockForEdits(context)) return;
  size_t count = NumberRecords(container, entities, memory.table, memory.column,
                               memory.first_number, dialog.prefix(), dialog.suffix());
  ReportCompleted(host, count);
}

void SetId(od::CommandContext& context) {
  SetIdWorker(context, od::GetImpliedSelection(context.host()));
}

}  // namespace veltor::commands
