// The generated drawings the benchmarks read: $VELTOR_BENCH_DIR/city-N.dxf (default
// build/bench-data), made by bench/compare.sh or veltor-gen --seed 7.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "drawing/model/document.h"

namespace veltor::bench {

inline std::string CityPath(int64_t entities) {
  const char* dir = std::getenv("VELTOR_BENCH_DIR");
  return std::string(dir ? dir : "build/bench-data") + "/city-" + std::to_string(entities) + ".dxf";
}

// Loads city-<state.range(0)>.dxf; on failure marks the benchmark skipped and returns null.
inline std::unique_ptr<model::Document> LoadCity(benchmark::State& state) {
  auto doc = model::Document::Open(CityPath(state.range(0)));
  if (!doc.ok()) {
    state.SkipWithError(doc.message().c_str());
    return nullptr;
  }
  return std::move(doc.value());
}

}  // namespace veltor::bench
