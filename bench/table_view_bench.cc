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

// A table with a record on every entity of model space, so the grid has as many rows as the
// drawing has entities.
bool AttachEverywhere(LoadedSession& s) {
  veltor::Result<veltor::od::Project*> project = s.session.ActiveProject();
  if (!project.ok()) return false;
  veltor::od::ObjectDataContainer& container = (*project)->Container();
  veltor::od::TableDefinition table;
  table.name = "Everything";
  table.columns = {{"NAME", veltor::od::ValueType::kCharacter, "", veltor::od::Value::Character("")},
                   {"N", veltor::od::ValueType::kInteger, "", veltor::od::Value::Integer(0)}};
  if (!container.CreateTable(table).ok()) return false;
  int32_t n = 0;
  for (veltor::od::EntityId id : s.session.WorkingDatabase()->ModelSpaceEntities()) {
    ++n;
    // Names that share prefixes and digit runs, as identifiers do.
    std::string name = "E" + std::to_string(n % 977) + "-" + std::to_string(n);
    if (!container.AddRecord(id, {"Everything", {veltor::od::Value::Character(name),
                                                 veltor::od::Value::Integer(n)}}).ok())
      return false;
  }
  return true;
}

void ChooseEverything(veltor::ui::OdTableView& view) {
  view.Show();
  view.FillTableChoices();
  view.ChooseTable("Everything");
}

// Opening a table with a record on each of the drawing's entities, and the memory its rows
// take.
void BM_TablePaletteOpenEveryEntity(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state) || !AttachEverywhere(s)) return;
  veltor::ui::OdTableView view(s.session);
  ChooseEverything(view);
  for (auto _ : state) view.Reload(false);
  state.counters["rows"] = static_cast<double>(view.RowCount());
  state.counters["row_bytes"] = static_cast<double>(sizeof(veltor::ui::GridRow));
}

void BM_TablePaletteSortEveryEntity(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state) || !AttachEverywhere(s)) return;
  veltor::ui::OdTableView view(s.session);
  ChooseEverything(view);
  for (auto _ : state) view.SortByColumn(1);
  state.counters["rows"] = static_cast<double>(view.RowCount());
}

}  // namespace

BENCHMARK(BM_TablePaletteOpenEveryEntity)->Arg(1000000)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TablePaletteSortEveryEntity)->Arg(1000000)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TablePaletteOpen)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TablePaletteSortText)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
