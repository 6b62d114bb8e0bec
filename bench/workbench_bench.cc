// The workbench's drawing view on a loaded drawing (offscreen Qt): building the display list,
// and one full redraw of the view at the drawing's extents (the picture is rendered afresh
// each time, as after a zoom).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPixmap>

#include "bench_data.h"
#include "workbench/display_list.h"
#include "workbench/drawing_view.h"

namespace {

void BM_DisplayListBuild(benchmark::State& state) {
  auto doc = veltor::bench::LoadCity(state);
  if (!doc) return;
  size_t items = 0;
  for (auto _ : state) items = veltor::workbench::DisplayList::Build(*doc).items().size();
  state.counters["items"] = static_cast<double>(items);
}

void BM_RedrawAtExtents(benchmark::State& state) {
  auto doc = veltor::bench::LoadCity(state);
  if (!doc) return;
  veltor::workbench::DisplayList list = veltor::workbench::DisplayList::Build(*doc);
  veltor::workbench::DrawingView view;
  view.resize(1280, 800);
  view.SetList(&list, true);
  view.ZoomExtents();
  const veltor::geom::Vec2 center = view.center();
  const double scale = view.scale();
  for (auto _ : state) {
    view.SetView(center, scale);  // a change of view: the next paint renders everything
    benchmark::DoNotOptimize(view.grab());
  }
}

}  // namespace

BENCHMARK(BM_DisplayListBuild)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RedrawAtExtents)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
