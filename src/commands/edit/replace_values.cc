#include "commands/edit/replace_values.h"

#include "commands/edit/edit_lock.h"
#include "commands/edit/replace_pattern.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/options_replace.h"

namespace veltor::commands {

int ReplaceInEntity(od::ObjectDataContainer& container, od::EntityId entity,
                    const std::string& table, int column, const std::string& pattern,
                    const std::string& new_text) {
  if (column < 0) return 0;
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

std::optional<int> ReplaceValues(od::CommandContext& context, od::EntityList entities) {
  od::Host& host = context.host();
  if (od::Database* db = host.WorkingDatabase()) od::FilterUsable(*db, entities);
  od::TableNameSet tables = od::GetTableNames(host, entities, true);
  Result<od::Project*> project = host.ActiveProject();
  // Without Object Data the dialog offers nothing and OK cannot be pressed.
  od::ObjectDataContainer* container = project.ok() ? &(*project)->Container() : nullptr;
  ui::OptionsReplace dialog({tables.begin(), tables.end()}, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) {
    context.Cancel();
    return std::nullopt;
  }
  const ui::OptionsReplace::Choice& choice = dialog.choice();
  int total = 0;
  if (container && !entities.empty()) {
    if (!LockForEdits(context)) return std::nullopt;
    WarnSkippedRecords(host, entities);
    Result<od::TableDefinition> definition = container->GetTable(choice.table);
    for (const std::string& column : choice.columns) {
      int index = definition.ok() ? od::FindColumn(*definition, column) : -1;
      if (index < 0) continue;  // a column missing from the table adds nothing
      for (od::EntityId entity : entities)
        total += ReplaceInEntity(*container, entity, choice.table, index, choice.pattern,
                                 choice.new_text);
    }
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), total));
  return total;
}

void Replace(od::CommandContext& context) {
  od::PromptOutcome gathered = od::GatherEntities(context.host());
  if (gathered.status == od::GatherStatus::kCancelled) return context.Cancel();
  (void)ReplaceValues(context, std::move(gathered.entities));
}

}  // namespace veltor::commands
