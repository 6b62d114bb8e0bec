// The selection commands' engines on a loaded drawing, nothing pre-selected and Enter at the
// prompt (all of model space): presence queries and the value query with one condition; and
// the statistics census of model space with its report text.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "loaded_session.h"
#include "commands/exchange/usage_statistics.h"
#include "commands/select/find_by_od.h"
#include "commands/select/value_matcher.h"
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

// Gathering all of model space (the usable-entity filter included): the part of every query
// that reads no Object Data.
void BM_GatherAll(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    found = veltor::od::GatherEntities(s.session).entities.size();
  }
  state.counters["gathered"] = static_cast<double>(found);
}

// The value query with one condition: roads whose name ends in "Road" (about 4 in 8).
void BM_ValueQueryRoad(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  const auto& container = (*s.session.ActiveProject())->Container();
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::EntityList entities = veltor::od::GatherEntities(s.session).entities;
    veltor::commands::KeepMatching(container, {"Roads"}, {{"NAME", "*Road"}}, true, entities);
    found = entities.size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

// The same selection read as three passes per entity (the table names, then every record,
// then the damaged count), for comparison with the single filtered read above.
void BM_ValueQueryRoadThreeReads(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  const auto& container = (*s.session.ActiveProject())->Container();
  size_t found = 0;
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::EntityList entities = veltor::od::GatherEntities(s.session).entities;
    size_t damaged = 0;
    veltor::od::EntityList kept;
    for (veltor::od::EntityId e : entities) {
      damaged += container.DamagedRecordCount(e);
      std::vector<std::string> names = container.RecordTableNames(e);
      if (std::find(names.begin(), names.end(), "Roads") == names.end()) continue;
      for (const veltor::od::Record& r : container.Records(e))
        if (r.table == "Roads" && veltor::commands::MatchValue(r.values[0], "*Road", true)) {
          kept.push_back(e);
          break;
        }
    }
    benchmark::DoNotOptimize(damaged);
    found = kept.size();
  }
  state.counters["selected"] = static_cast<double>(found);
}

// VELTOR_STAT without its dialog: the census of every model space entity and the report.
void BM_Statistics(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  size_t with_od = 0;
  for (auto _ : state) {
    veltor::commands::UsageStatistics stats = veltor::commands::CountUsage(s.session);
    benchmark::DoNotOptimize(veltor::commands::StatisticsReport(stats));
    with_od = static_cast<size_t>(stats.with_od);
  }
  state.counters["with_od"] = static_cast<double>(with_od);
}

}  // namespace

BENCHMARK(BM_Statistics)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasDuplicateOd)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GatherAll)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ValueQueryRoad)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ValueQueryRoadThreeReads)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
