#include "commands/edit/gather_later.h"

namespace veltor::commands {

od::PromptOutcome GatherAfterImplied(od::Host& host, od::EntityList implied) {
  od::PromptOutcome outcome;
  outcome.entities = std::move(implied);
  if (outcome.entities.empty()) {
    outcome = od::PromptSelection(host);
    if (outcome.status == od::GatherStatus::kCancelled) return outcome;
  }
  od::Database* db = host.WorkingDatabase();
  if (!db) {
    outcome.entities.clear();
    return outcome;
  }
  if (outcome.entities.empty()) outcome.entities = od::GetModelSpaceEntities(*db);
  od::FilterUsable(*db, outcome.entities);
  return outcome;
}

}  // namespace veltor::commands
