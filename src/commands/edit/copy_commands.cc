#include "commands/edit/copy_commands.h"

#include <algorithm>

#include "commands/edit/copy_records.h"
#include "commands/edit/copy_reference.h"
#include "commands/edit/copy_values.h"
#include "commands/select/skipped_records.h"

namespace veltor::commands {

namespace {

// The Object Data of the active drawing, or nullptr when it has none (then the reference has
// no records and every target is left as it is).
od::ObjectDataContainer* ContainerOf(od::Host& host) {
  Result<od::Project*> project = host.ActiveProject();
  return project.ok() ? &(*project)->Container() : nullptr;
}

// Gives every target the reference's graphic properties. A target that cannot be changed
// keeps its own (its records were attached already).
void GiveGraphicProperties(od::Host& host, const CopyRun& run) {
  od::Database* db = host.WorkingDatabase();
  if (!db) return;
  for (od::EntityId target : run.targets) (void)db->CopyGraphicProperties(run.reference, target);
}

// The reference counts for every target, whatever happened to each; `with_properties` adds
// the graphic properties. Nothing is attached, and no property copied, when the reference
// carries no user-table record.
void CopyEmptyRecords(od::CommandContext& context, bool with_properties) {
  std::optional<CopyRun> run = GatherTargetsAndReference(context);
  if (!run) return;
  od::Host& host = context.host();
  od::ObjectDataContainer* container = ContainerOf(host);
  TableCounts tables;
  if (container) tables = CountReferenceTables(*container, run->reference);
  WarnSkippedRecords(host, {run->reference});
  if (tables.empty()) return ReportCompleted(host, 0);
  AttachDefaultRecords(*container, tables, run->targets);
  if (with_properties) GiveGraphicProperties(host, *run);
  ReportCompleted(host, run->targets.size());
}

}  // namespace

void CopyOd(od::CommandContext& context) { CopyEmptyRecords(context, false); }

void CopyAll(od::CommandContext& context) { CopyEmptyRecords(context, true); }

void CopyValue(od::CommandContext& context) {
  std::optional<CopyRun> run = GatherTargetsAndReference(context);
  if (!run) return;
  od::Host& host = context.host();
  od::ObjectDataContainer* container = ContainerOf(host);
  size_t overwritten = 0;
  if (container) {
      overwritten = CopyReferenceValues(*container, run->reference, run->targets);
  }
  // Each entity whose records were read once, for the count of damaged records skipped.
  od::EntityList read = run->targets;
  read.push_back(run->reference);
  std::sort(read.begin(), read.end());
  read.erase(std::unique(read.begin(), read.end()), read.end());
  WarnSkippedRecords(host, read);
  ReportCompleted(host, overwritten);
}

void CopyOdValue(od::CommandContext& context) {
  std::optional<CopyRun> run = GatherTargetsAndReference(context);
  if (!run) return;
  od::Host& host = context.host();
  if (od::ObjectDataContainer* container = ContainerOf(host)) {
      AttachReferenceRecords(*container, run->reference, run->targets);
  }
  WarnSkippedRecords(host, {run->reference});
  // The number of targets, even when the reference had nothing to copy.
  ReportCompleted(host, run->targets.size());
}

void CopyAllValue(od::CommandContext& context) {
  std::optional<CopyRun> run = GatherTargetsAndReference(context);
  if (!run) return;
  od::Host& host = context.host();
  od::ObjectDataContainer* container = ContainerOf(host);
  GroupedRecords records;
  if (container) records = GroupReferenceRecords(*container, run->reference);
  WarnSkippedRecords(host, {run->reference});
  if (records.empty()) return ReportCompleted(host, 0);
  AttachGroupedRecords(*container, records, run->targets);
  GiveGraphicProperties(host, *run);
  ReportCompleted(host, run->targets.size());
}

}  // namespace veltor::commands
