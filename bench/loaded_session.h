// A session holding a generated drawing, with every prompt answered by Enter, for the
// benchmarks of the core and the commands.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench_data.h"
#include "drawing/session/session.h"

namespace veltor::bench {

struct LoadedSession {
  session::Session session{[](std::string_view) {}};
  std::unique_ptr<session::LinesInput> input;

  // Loads city-<state.range(0)>.dxf; false (and the benchmark skipped) when it is missing.
  bool Load(benchmark::State& state) {
    auto doc = LoadCity(state);
    if (!doc) return false;
    session.AddDocument(std::move(doc), "city.dxf");
    return true;
  }
  // The next object selection prompt is answered with Enter: all of model space.
  void AnswerEnter() {
    input = std::make_unique<session::LinesInput>(std::vector<std::string>{""}, nullptr);
    session.SetInput(input.get());
  }
};

}  // namespace veltor::bench
