// The selection commands' engines on a loaded drawing, nothing pre-selected and Enter at the
// prompt (all of model space): presence queries and the value query with one condition.
#include <benchmark/benchmark.h>

#include "loaded_session.h"
#include "commands/select/find_by_od.h"
#include "commands/select/value_query.h"
#include "od/gathering.h"

namespace {

using veltor::bench::LoadedSession;

void Presence(benchmark::State& state, int mode) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    found = veltor::commands::FindEntitiesByOd(s.session, mode).size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

void BM_HasOd(benchmark::State& state) { Presence(state, 2); }
void BM_HasDuplicateOd(benchmark::State& state) { Presence(state, 4); }

void BM_ValueQueryRoad(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  const auto& container = (*s.session.ActiveProject())->Container();
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::EntityList entities = veltor::od::GatherEntities(s.session).entities;
    veltor::commands::KeepMatching(container, {"Roads"}, {{"NAME", "*road*"}}, true, entities);
    found = entities.size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

}  // namespace

BENCHMARK(BM_HasOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasDuplicateOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ValueQueryRoad)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
