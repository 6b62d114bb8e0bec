#include "commands/edit/add_value_steps.h"

#include "commands/edit/copy_reference.h"
#include "commands/edit/edit_lock.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

std::vector<std::string> OfferedTables(od::Host& host) {
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) return {};
  od::TableNameSet names;
  for (std::string& name : od::GetAllTableNames((*project)->Container()))
    if (!od::IsSystemTableName(name)) names.insert(std::move(name));
  return {names.begin(), names.end()};
}

void ReportNoTables(od::Host& host) { host.Ed().Print(od::Str(od::kStrTableNotFound)); }

std::optional<od::EntityList> GatherForEdits(od::CommandContext& context, od::EntityList implied) {
  od::PromptOutcome gathered = od::GatherEntities(context.host(), std::move(implied));
  if (gathered.status == od::GatherStatus::kCancelled) {
    context.Cancel();
    return std::nullopt;
  }
  if (gathered.entities.empty()) {
    ReportCompleted(context.host(), 0);
    return std::nullopt;
  }
  if (!LockForEdits(context)) return std::nullopt;
  return std::move(gathered.entities);
}

void ReportNotConverted(od::Host& host, size_t failed) {
  if (failed == 1) host.Ed().Print(od::Str(od::kStrValueNotConverted));
  if (failed > 1)
    host.Ed().Print(od::Format(od::Str(od::kStrValuesNotConverted), static_cast<int>(failed)));
}

}  // namespace veltor::commands
