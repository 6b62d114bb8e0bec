#include "commands/edit/attach_detach_command.h"

#include "commands/edit/add_value_memory.h"
#include "commands/edit/add_value_steps.h"
#include "commands/edit/attach_detach_records.h"
#include "commands/edit/copy_reference.h"
#include "commands/select/skipped_records.h"
#include "od/gathering.h"
#include "ui/attach_detach_dialog.h"

namespace veltor::commands {

void AttachDetachData(od::CommandContext& context) {
  od::Host& host = context.host();
  od::EntityList implied = od::GetImpliedSelection(host);
  std::vector<std::string> tables = OfferedTables(host);
  Result<od::Project*> project = host.ActiveProject();
  if (tables.empty() || !project.ok()) return ReportNoTables(host);
  od::ObjectDataContainer& container = (*project)->Container();

  ui::AttachDetachDialog dialog(std::move(tables), ModuleDataDialogMemory().attach_detach,
                                container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  std::optional<od::EntityList> entities = GatherForEdits(context, std::move(implied));
  if (!entities) return;

  WriteTally tally;
  if (dialog.action() == ui::AttachDetachDialog::Action::kAttach) {
    tally = AttachRecordToEach(container, *entities, dialog.record());
  } else {
    tally = DetachTableFromEach(container, *entities, dialog.table());
    WarnSkippedRecords(host, *entities);
  }
  ReportRefused(host, tally);
  ReportCompleted(host, tally.written);
}

}  // namespace veltor::commands
