#include "commands/exchange/translate_command.h"

#include "commands/edit/edit_lock.h"
#include "commands/exchange/alias_maps.h"
#include "commands/exchange/translate_steps.h"
#include "commands/select/skipped_records.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "ui/od_translate.h"

namespace veltor::commands {

namespace {

void RunValuesStep(od::Host& host, od::ObjectDataContainer* container,
                   const od::EntityList& entities, const AliasMaps& maps) {
  ValuesStepResult result;
  if (container) result = TranslateValues(*container, entities, maps);
  ReportSkippedRecords(host, result.skipped);
  host.Ed().Print(od::Format(od::Str(od::kStrUpdatedRecords), static_cast<int>(result.records.written)));
  ReportRefused(host, result.records);
}

void RunFieldsStep(od::Host& host, od::ObjectDataContainer* container, const AliasMaps& maps) {
  int renamed = container ? TranslateFields(host, *container, maps) : 0;
  host.Ed().Print(od::Format(od::Str(od::kStrUpdatedColumns), renamed));
}

}  // namespace

void Translate(od::CommandContext& context) {
  od::Host& host = context.host();
  ui::ODTranslate dialog(host.Ui());
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();

  AliasMaps maps;
  if (!dialog.table_file().empty()) LoadTableAliases(host, dialog.table_file(), maps);
  // Two tables renamed to one name would merge or fail half-way: nothing is done then.
  if (!CheckTableDestinations(host, maps.tables)) return;
  if (!dialog.field_file().empty()) LoadFieldAliases(host, dialog.field_file(), maps);
  if (!dialog.value_file().empty()) LoadValueAliases(host, dialog.value_file(), maps);
  const bool back = dialog.direction() == ui::ODTranslate::Direction::kAliasToName;
  if (back) InvertAliasMaps(maps);

  if (!LockForEdits(context)) return;
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  od::ObjectDataContainer* container = project.ok() ? &(*project)->Container() : nullptr;
  const od::EntityList entities = db ? od::GetModelSpaceEntities(*db) : od::EntityList();
  // The value and field maps are keyed by names: they meet the names they were written for
  // when values and fields go first towards aliases and last back to names.
  if (!back) {
    RunValuesStep(host, container, entities, maps);
    RunFieldsStep(host, container, maps);
    if (container) TranslateTables(*container, maps.tables);
  } else {
    if (container) TranslateTables(*container, maps.tables);
    RunFieldsStep(host, container, maps);
    RunValuesStep(host, container, entities, maps);
  }
}

}  // namespace veltor::commands
