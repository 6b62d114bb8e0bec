#include "od/gathering.h"

#include <unordered_set>

#include "od/format.h"
#include "od/string_table.h"
#include "od/text.h"

namespace veltor::od {

EntityList GetImpliedSelection(Host& host) { return host.Ed().ImpliedSelection(); }

PromptOutcome PromptSelection(Host& host) {
  PromptResult<EntityList> answer = host.Ed().SelectObjects();
  PromptOutcome outcome;
  if (answer.status == PromptStatus::kCancel) {
    outcome.status = GatherStatus::kCancelled;
    return outcome;
  }
  outcome.entities = std::move(answer.value);
  return outcome;
}

EntityList GetModelSpaceEntities(const Database& db) {
  // The host's walk already skips erased entities and those it cannot open.
  return db.ModelSpaceEntities();
}

void FilterUsable(const Database& db, EntityList& entities) {
  std::unordered_set<ObjectId> usable_layers;
  for (const LayerInfo& layer : db.Layers())
    if (!layer.frozen && !layer.hidden && !layer.locked && !layer.off)
      usable_layers.insert(layer.id);

  size_t i = 0;
  while (i < entities.size()) {
    EntityId id = entities[i];
    // An entity that cannot be opened has no layer (kNullId), which is never usable.
    bool keep = usable_layers.count(db.LayerOf(id)) != 0;
    if (keep) {
      ++i;
      continue;
    }
    if (entities.size() < 2) {
      entities.clear();
      break;
    }
    std::swap(entities[i], entities.back());
    entities.pop_back();
  }
}

PromptOutcome GatherEntities(Host& host) { return GatherEntities(host, GetImpliedSelection(host)); }

PromptOutcome GatherEntities(Host& host, EntityList implied) {
  PromptOutcome outcome;
  outcome.entities = std::move(implied);
  if (outcome.entities.empty()) {
    outcome = PromptSelection(host);
    if (outcome.status == GatherStatus::kCancelled) return outcome;
  }
  Database* db = host.WorkingDatabase();
  if (!db) {
    outcome.entities.clear();
    return outcome;
  }
  if (outcome.entities.empty()) outcome.entities = GetModelSpaceEntities(*db);
  FilterUsable(*db, outcome.entities);
  return outcome;
}

void SetPickfirst(Host& host, const EntityList& entities) { host.Ed().SetPickfirst(entities); }

void ReportSelected(Host& host, size_t count) {
  host.Ed().Print(Format(Str(kStrSelected), static_cast<int>(count)));
}

int GetLinearPrecision(Host& host) {
  Database* db = host.WorkingDatabase();
  if (!db) return 4;
  return db->GetIntVar("LUPREC").value_or(4);
}

}  // namespace veltor::od
