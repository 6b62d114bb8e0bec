#include "commands/exchange/attr_run.h"

#include "commands/edit/edit_lock.h"
#include "od/gathering.h"

namespace veltor::commands {

std::optional<AttributeRun> StartAttributeRun(od::CommandContext& context) {
  od::Host& host = context.host();
  // Read before the file dialog, which may change what is selected.
  od::EntityList implied = od::GetImpliedSelection(host);
  bool cancelled = false;
  std::optional<AttributeMap> map = AskAttributeMap(host, cancelled);
  if (cancelled) {
    context.Cancel();
    return std::nullopt;
  }
  if (!map) return std::nullopt;

  od::PromptOutcome gathered = od::GatherEntities(host, std::move(implied));
  if (gathered.status == od::GatherStatus::kCancelled) {
    context.Cancel();
    return std::nullopt;
  }
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (gathered.entities.empty() || !db || !project.ok()) return std::nullopt;
  if (!LockForEdits(context)) return std::nullopt;
  return AttributeRun{std::move(*map), db, &(*project)->Container(),
                      BlockReferencesOf(*db, gathered.entities)};
}

}  // namespace veltor::commands
