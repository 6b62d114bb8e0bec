// Load, record walk and save of generated drawings (10k, 100k and 1M entities).
// The drawings come from veltor-gen; bench/run.sh makes them in $VELTOR_BENCH_DIR.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench_data.h"
#include "drawing/dxf/writer.h"
#include "drawing/model/document.h"
#include "drawing/model/entity.h"
#include "drawing/objectdata/od_store.h"

namespace {

using veltor::bench::CityPath;
using veltor::bench::LoadCity;

void BM_Load(benchmark::State& state) {
  size_t bytes = 0;
  for (auto _ : state) {
    auto doc = LoadCity(state);
    if (!doc) return;
    bytes = doc->store().source().size();
    benchmark::DoNotOptimize(doc.get());
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes) * state.iterations());
}

// Every model space entity's record table names, as a command walking the drawing does.
void BM_WalkRecords(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  veltor::objectdata::ObjectDataStore od(*doc);
  auto entities = veltor::model::ModelSpaceEntities(*doc);
  for (auto _ : state) {
    size_t with_records = 0;
    for (auto id : entities)
      if (!od.RecordTableNames(id).empty()) ++with_records;
    benchmark::DoNotOptimize(with_records);
  }
  state.SetItemsProcessed(static_cast<int64_t>(entities.size()) * state.iterations());
}

// Reading every record's values, not only the table names.
void BM_ReadAllRecords(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  veltor::objectdata::ObjectDataStore od(*doc);
  auto entities = veltor::model::ModelSpaceEntities(*doc);
  for (auto _ : state) {
    size_t values = 0;
    for (auto id : entities)
      for (const auto& r : od.Records(id)) values += r.values.size();
    benchmark::DoNotOptimize(values);
  }
  state.SetItemsProcessed(static_cast<int64_t>(entities.size()) * state.iterations());
}

// Writing the whole file (unchanged records are copied from the source) to /dev/null,
// so the disk is not measured.
void BM_Save(benchmark::State& state) {
  auto doc = LoadCity(state);
  if (!doc) return;
  std::FILE* sink = std::fopen("/dev/null", "wb");
  for (auto _ : state) {
    veltor::Status s = veltor::dxf::WriteDxf(doc->store(), sink);
    if (!s.ok()) state.SkipWithError(s.message().c_str());
  }
  std::fclose(sink);
  state.SetBytesProcessed(static_cast<int64_t>(doc->store().source().size()) * state.iterations());
}

}  // namespace

BENCHMARK(BM_Load)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WalkRecords)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAllRecords)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Save)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
