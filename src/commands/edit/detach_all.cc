#include "commands/edit/detach_all.h"

#include <algorithm>

#include "commands/edit/edit_lock.h"
#include "commands/edit/record_removal.h"
#include "commands/select/skipped_records.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

DetachAllResult DetachAllRecords(od::ObjectDataContainer& container, const od::EntityList& entities) {
  DetachAllResult result;
  for (od::EntityId entity : entities) {
    od::RecordNames read = container.ReadRecordNames(entity);
    result.skipped += read.damaged;
    std::vector<std::string>& names = read.tables;
    std::vector<std::string> user_tables = names;
    user_tables.erase(std::remove_if(user_tables.begin(), user_tables.end(), od::IsSystemTableName),
                      user_tables.end());
    if (user_tables.empty()) continue;
    ++result.with_records;
    // A name is listed once per record, so each record of a table gets a walk of its own. A
    // record the host cannot remove stays; the entity still counts as one that had records.
    (void)container.RemoveRecords(entity, WalkRemovals(names, user_tables));
  }
  return result;
}

void RmAll(od::CommandContext& context) {
  od::Host& host = context.host();
  od::MessageAnswer answer = host.Ui().MessageBox(
      od::Str(od::kStrWarning), od::Str(od::kStrDetachAllWarning), od::MessageButtons::kYesNo);
  if (answer != od::MessageAnswer::kYes) return context.Cancel();

  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled) return context.Cancel();
  if (gathered.entities.empty()) return;
  if (!LockForEdits(context)) return;
  DetachAllResult result;
  if (Result<od::Project*> project = host.ActiveProject(); project.ok())
    result = DetachAllRecords((*project)->Container(), gathered.entities);
  ReportSkippedRecords(host, result.skipped);
  host.Ed().Print(od::Format(od::Str(od::kStrCompletedOutOf), static_cast<int>(result.with_records),
                             static_cast<int>(gathered.entities.size())));
}

}  // namespace veltor::commands
