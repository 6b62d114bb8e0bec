#include "commands/select/skipped_records.h"

#include "od/string_table.h"
#include "od/format.h"

namespace veltor::commands {

void WarnSkippedRecords(od::Host& host, const od::EntityList& entities) {
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) return;
  const od::ObjectDataContainer& container = (*project)->Container();
  size_t skipped = 0;
  for (od::EntityId entity : entities) skipped += container.DamagedRecordCount(entity);
  ReportSkippedRecords(host, skipped);
}

void ReportSkippedRecords(od::Host& host, size_t skipped) {
  if (skipped == 1) host.Ed().Print(od::Str(od::kStrSkippedDamagedRecord));
  if (skipped > 1)
    host.Ed().Print(od::Format(od::Str(od::kStrSkippedDamagedRecords), static_cast<int>(skipped)));
}

}  // namespace veltor::commands
