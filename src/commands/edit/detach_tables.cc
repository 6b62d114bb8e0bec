#include "commands/edit/detach_tables.h"

#include "commands/edit/gather_later.h"
#include "commands/edit/record_removal.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/string_table.h"
#include "ui/pgui_od_list.h"

namespace veltor::commands {

namespace {

// The tables the dialog offers, sorted ordinally without repeats and without system tables:
// those of the records of the pickfirst entities, or the tables in use in model space.
std::vector<std::string> OfferedTables(od::Host& host, const od::EntityList& implied) {
  od::TableNameSet names;
  if (implied.empty()) {
    names = od::GetTableNames(host, {}, true);
  } else if (Result<od::Project*> project = host.ActiveProject(); project.ok()) {
    for (od::EntityId entity : implied)
      for (std::string& name : od::GetEntityTableNames((*project)->Container(), entity))
        names.insert(std::move(name));
  }
  return {names.begin(), names.end()};
}

void PrintCompleted(od::Host& host, size_t count) {
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), static_cast<int>(count)));
}

}  // namespace

size_t DetachTables(od::ObjectDataContainer& container, const std::vector<std::string>& tables,
                    const od::EntityList& entities) {
  size_t removed = 0;
  for (const std::string& table : tables) {
    if (!container.GetTable(table).ok()) continue;
    for (od::EntityId entity : entities) {
      std::vector<std::string> names = container.RecordTableNames(entity);
      for (;;) {
        RemovalPass pass = RemoveInOneWalk(container, entity, names, table);
        removed += pass.removed;
        // A walk that removed nothing of what it came to would come to the same records again.
        if (pass.visited == 0 || pass.removed == 0) break;
      }
    }
  }
  return removed;
}

void Rm(od::CommandContext& context) {
  od::Host& host = context.host();
  od::EntityList implied = od::GetImpliedSelection(host);
  std::vector<std::string> tables = OfferedTables(host, implied);
  ui::PGUIODList dialog(tables);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  if (tables.empty()) return PrintCompleted(host, 0);

  // The dialog comes first; only now are objects asked for.
  od::PromptOutcome gathered = GatherAfterImplied(host, std::move(implied));
  if (gathered.status == od::GatherStatus::kCancelled) return context.Cancel();
  if (gathered.entities.empty()) return;
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) return PrintCompleted(host, 0);
  // No lock of its own: the command runs in the document's context, which the host locks.
  WarnSkippedRecords(host, gathered.entities);
  PrintCompleted(host, DetachTables((*project)->Container(), tables, gathered.entities));
}

}  // namespace veltor::commands
