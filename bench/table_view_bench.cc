// The OD table palette on a loaded drawing: opening the largest table (every row of model
// space), a screenful of cell texts, and a sort by a text column. The rows hold no values, so
// memory stays a few bytes a row whatever the table's size.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "loaded_session.h"
#include "ui/od_table_view.h"

namespace {

using veltor::bench::LoadedSession;

// The table with the most rows, chosen in a fresh view.
void OpenLargest(veltor::ui::OdTableView& view) {
  view.Show();
  view.FillTableChoices();
  std::string largest;
  size_t most = 0;
  for (const std::string& table : view.table_choices()) {
    view.ChooseTable(table);
    if (view.RowCount() > most) most = view.RowCount(), largest = table;
  }
  view.ChooseTable(largest);
}

void BM_TablePaletteOpen(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  veltor::ui::OdTableView view(s.session);
  OpenLargest(view);
  for (auto _ : state) {
    view.Reload(false);
    // The first screen a grid shows.
    for (size_t row = 0; row < std::min<size_t>(50, view.RowCount()); ++row)
      for (size_t column = 0; column < view.ColumnCount(); ++column)
        benchmark::DoNotOptimize(view.CellText(row, column));
  }
  state.counters["rows"] = static_cast<double>(view.RowCount());
}

void BM_TablePaletteSortText(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  veltor::ui::OdTableView view(s.session);
  OpenLargest(view);
  for (auto _ : state) view.SortByColumn(1);
  state.counters["rows"] = static_cast<double>(view.RowCount());
}

}  // namespace

BENCHMARK(BM_TablePaletteOpen)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TablePaletteSortText)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
