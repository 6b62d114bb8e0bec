// The core's walks over a loaded drawing: gathering all of model space through the layer
// filter, and every entity's table names, as the commands do them through the host interface.
#include <benchmark/benchmark.h>

#include "loaded_session.h"
#include "od/catalogue.h"
#include "od/gathering.h"

namespace {

using veltor::bench::LoadedSession;

void BM_GatherEntities(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t gathered = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    gathered = veltor::od::GatherEntities(s.session).entities.size();
    benchmark::DoNotOptimize(gathered);
  }
  state.counters["entities"] = static_cast<double>(gathered);
}

void BM_EntityTableNamesWalk(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  veltor::od::EntityList all = s.session.WorkingDatabase()->ModelSpaceEntities();
  const veltor::od::ObjectDataContainer& container = (*s.session.ActiveProject())->Container();
  size_t records = 0;
  for (auto _ : state) {
    records = 0;
    for (veltor::od::EntityId id : all) records += veltor::od::GetEntityTableNames(container, id).size();
    benchmark::DoNotOptimize(records);
  }
  state.counters["records"] = static_cast<double>(records);
}

}  // namespace

BENCHMARK(BM_GatherEntities)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EntityTableNamesWalk)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
