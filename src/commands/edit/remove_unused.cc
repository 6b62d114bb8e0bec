#include "commands/edit/remove_unused.h"

#include <algorithm>

#include "commands/edit/edit_lock.h"
#include "od/format.h"
#include "od/string_table.h"
#include "ui/options_rm_unused.h"

namespace veltor::commands {

TableUsage FindTableUsage(const od::ObjectDataContainer& container, const od::Database& db) {
  TableUsage usage;
  usage.unused = container.TableNames();
  for (od::EntityId entity : db.ModelSpaceEntities()) {
    if (usage.unused.empty()) break;  // nothing left to find
    if (entity == od::kNullId) continue;
    for (const std::string& name : container.RecordTableNames(entity)) {
      auto at = std::find(usage.unused.begin(), usage.unused.end(), name);
      if (at == usage.unused.end()) continue;
      usage.used.push_back(name);
      usage.unused.erase(at);
    }
  }
  return usage;
}

void RmUnused(od::CommandContext& context) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  TableUsage usage;
  if (db && project.ok()) usage = FindTableUsage((*project)->Container(), *db);

  ui::OptionsRmUnused dialog(std::move(usage.unused), std::move(usage.used));
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  size_t deleted = 0;
  if (!dialog.result().empty() && project.ok()) {
    if (!LockForEdits(context)) return;
    for (const std::string& table : dialog.result())
      if ((*project)->Container().DeleteTable(table).ok()) ++deleted;
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), static_cast<int>(deleted)));
}

}  // namespace veltor::commands
