#include "commands/edit/copy_reference.h"

#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

std::optional<CopyRun> GatherTargetsAndReference(od::CommandContext& context) {
  od::Host& host = context.host();
  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled) {
    context.Cancel();
    return std::nullopt;
  }
  if (gathered.entities.empty()) {
    ReportCompleted(host, 0);
    return std::nullopt;
  }
  od::PromptResult<od::EntityId> picked = host.Ed().GetEntity(od::Str(od::kStrSelectReference));
  if (!picked.ok() || picked.value == od::kNullId) {
    host.Ed().Print(od::Str(od::kStrNoObjectsSelected));
    return std::nullopt;
  }
  return CopyRun{std::move(gathered.entities), picked.value};
}

void ReportCompleted(od::Host& host, size_t count) {
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), static_cast<int>(count)));
}

}  // namespace veltor::commands
