// VELTOR_SETPROP on a loaded drawing: the length and area of every polyline written into the
// parcels' records (the perimeter into a column added for it, the area into AREA), nothing
// pre-selected and Enter at the prompt (all of model space).
#include <benchmark/benchmark.h>

#include "answering_ui.h"
#include "commands/edit/set_prop.h"
#include "loaded_session.h"
#include "od/command_context.h"
#include "od/dialog_model.h"
#include "ui/options_set_prop.h"

namespace {

using veltor::bench::LoadedSession;
using veltor::ui::OptionsSetProp;

// Answers the properties dialog: table Parcels, PERIMETER for the length, AREA for the area.
veltor::od::DialogResult AnswerParcels(veltor::od::DialogModel& dialog) {
  using veltor::bench::AnsweringUi;
  AnsweringUi::Choose(dialog, OptionsSetProp::kTableList, "Parcels");
  AnsweringUi::Choose(dialog, OptionsSetProp::kLengthCombo, "PERIMETER");
  AnsweringUi::Choose(dialog, OptionsSetProp::kAreaCombo, "AREA");
  return dialog.Press(veltor::od::kIdOk).result;
}

void BM_SetPropParcels(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  veltor::bench::AnsweringUi answers(AnswerParcels, veltor::od::MessageAnswer::kCancel);
  s.session.SetUi(&answers);
  auto& container = (*s.session.ActiveProject())->Container();
  veltor::od::ColumnDefinition perimeter{"PERIMETER", veltor::od::ValueType::kReal, "",
                                         veltor::od::Value::Real(0)};
  if (!container.AddColumn("Parcels", perimeter).ok()) {
    state.SkipWithError("the drawing has no Parcels table");
    return;
  }
  for (auto _ : state) {
    s.AnswerEnter();
    veltor::od::CommandContext context(s.session, "VELTOR_SETPROP");
    veltor::commands::SetPropWorker(context, {});
  }
  // What the command wrote: parcels with a perimeter.
  size_t written = 0;
  const std::vector<std::string> parcels{"Parcels"};
  for (veltor::od::EntityId e : s.session.WorkingDatabase()->ModelSpaceEntities()) {
    size_t damaged = 0;
    for (const veltor::od::Record& r : container.RecordsOf(e, parcels, damaged))
      if (r.values.size() > 4 && r.values[4].real() > 0) ++written;
  }
  state.counters["written"] = static_cast<double>(written);
}

}  // namespace

BENCHMARK(BM_SetPropParcels)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
