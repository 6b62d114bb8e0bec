// Extents of every model space entity and the R-tree over them, on generated drawings.
#include <benchmark/benchmark.h>

#include "bench_data.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry.h"
#include "drawing/model/extents_cache.h"

namespace {

using veltor::bench::LoadCity;

// All model space extents through one ExtentsCache, as a command measuring a drawing does.
void BM_AllExtents(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  auto entities = veltor::model::ModelSpaceEntities(*doc);
  for (auto _ : state) {
    veltor::model::ExtentsCache cache(*doc);
    size_t measured = 0;
    for (auto id : entities)
      if (cache.Measure(id)) ++measured;
    benchmark::DoNotOptimize(measured);
  }
  state.SetItemsProcessed(static_cast<int64_t>(entities.size()) * state.iterations());
}

// The same with EntityExtents, one entity per call (each block reference measures its block).
void BM_EntityExtentsEach(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  auto entities = veltor::model::ModelSpaceEntities(*doc);
  for (auto _ : state) {
    size_t measured = 0;
    for (auto id : entities)
      if (veltor::model::EntityExtents(*doc, id)) ++measured;
    benchmark::DoNotOptimize(measured);
  }
  state.SetItemsProcessed(static_cast<int64_t>(entities.size()) * state.iterations());
}

void BM_SpatialIndexBuild(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  for (auto _ : state) {
    auto index = veltor::model::BuildModelSpaceIndex(*doc);
    benchmark::DoNotOptimize(index.size());
  }
}

}  // namespace

BENCHMARK(BM_AllExtents)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EntityExtentsEach)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SpatialIndexBuild)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
