#include "commands/exchange/explication_command.h"

#include "commands/edit/add_value_steps.h"
#include "commands/edit/copy_reference.h"
#include "commands/exchange/atomic_file.h"
#include "commands/exchange/explication_report.h"
#include "commands/select/skipped_records.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

ui::ExplicationDialog::Memory& ExplicationMemory() {
  static ui::ExplicationDialog::Memory memory;
  return memory;
}

void ResetExplicationMemory() { ExplicationMemory() = ui::ExplicationDialog::Memory(); }

void Explication(od::CommandContext& context) {
  od::Host& host = context.host();
  od::EntityList implied = od::GetImpliedSelection(host);
  std::vector<std::string> tables = OfferedTables(host);
  Result<od::Project*> project = host.ActiveProject();
  if (tables.empty() || !project.ok()) return ReportNoTables(host);
  const od::ObjectDataContainer& container = (*project)->Container();

  ui::ExplicationDialog dialog(std::move(tables), ExplicationMemory(), container);
  if (host.Ui().ShowModal(dialog) != od::DialogResult::kOk) return context.Cancel();
  Result<od::TableDefinition> table = container.GetTable(dialog.table());
  if (!table.ok()) return ReportNoTables(host);
  std::optional<std::string> path =
      host.Ui().SaveFileDialog(od::Str(od::kStrExplicationFileTitle), od::Str(od::kStrCsvFilter),
                               dialog.table() + ".csv");
  if (!path) return context.Cancel();

  od::PromptOutcome gathered = od::GatherEntities(host, std::move(implied));
  if (gathered.status == od::GatherStatus::kCancelled) return context.Cancel();
  WarnSkippedRecords(host, gathered.entities);
  ExplicationReport report = BuildExplication(host, gathered.entities, *table, dialog.group_by());
  if (Status written = WriteFileAtomically(*path, ExplicationCsv(report)); !written.ok()) {
    host.Ed().Print(od::Format(od::Str(od::kStrUnableToWrite), written.message().c_str()));
    return;
  }
  ReportCompleted(host, report.rows.size());
}

}  // namespace veltor::commands
