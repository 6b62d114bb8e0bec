#include "commands/edit/add_value_command.h"

#include "commands/edit/add_value.h"
#include "commands/edit/add_value_memory.h"
#include "commands/edit/add_value_od2od.h"
#include "commands/edit/add_value_steps.h"
#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "commands/select/skipped_records.h"
#include "od/gathering.h"

namespace veltor::commands {

namespace {

// Shows `Dialog` over the offered tables, then gathers the entities (unless `handed` names
// them) and hands them to `write`, which returns what it wrote; prints what did not convert
// and the count written.
template <typename Dialog, typename Memory, typename Write>
void AskGatherWrite(od::CommandContext& context, Memory& memory, Write write,
                    const od::EntityList& handed = {}) {
  od::Host& host = context.host();
  od::EntityList implied = od::GetImpliedSelection(host);
  std::vector<std::string> tables = OfferedTables(host);
  Result<od::Project*> project = host.ActiveProject();
  if (tables.empty() || !project.ok()) return ReportNoTables(host);
  od::ObjectDataContainer& container = (*project)->Container();

  Dialog dialog(std::move(tables), memory, container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  std::optional<od::EntityList> entities = handed;
  if (handed.empty()) {
    entities = GatherForEdits(context, std::move(implied));
  } else if (!LockForEdits(context)) {
    return;
  }
  if (!entities) return;

  WrittenCounts counts = write(container, *entities, dialog.choice());
  WarnSkippedRecords(host, *entities);
  ReportNotConverted(host, counts.failed);
  ReportRefused(host, counts.writes);
  ReportCompleted(host, counts.writes.written);
}

}  // namespace

void AddVal(od::CommandContext& context) {
  AskGatherWrite<ui::AddValueDialog>(context, ModuleDataDialogMemory().add_value, AddFieldToField);
}

void AddValWorker(od::CommandContext& context, const od::EntityList& entities) {
  AskGatherWrite<ui::AddValueDialog>(context, ModuleDataDialogMemory().add_value, AddFieldToField,
                                     entities);
}

void AddValOd2Od(od::CommandContext& context) {
  AskGatherWrite<ui::OdToOdDialog>(context, ModuleDataDialogMemory().od_to_od, CopyOdToOd);
}

}  // namespace veltor::commands
