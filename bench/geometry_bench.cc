// Extents of every model space entity and the R-tree over them, on generated drawings.
#include <benchmark/benchmark.h>

#include "bench_data.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry.h"

namespace {

using veltor::bench::LoadCity;

void BM_AllExtents(benchmark::State& state) {
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
BENCHMARK(BM_SpatialIndexBuild)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
