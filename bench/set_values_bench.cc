// VELTOR_SETPROP on a loaded drawing: the length and area of every polyline written into the
// parcels' records (the perimeter into a column added for it, the area into AREA), nothing
// pre-selected and Enter at the prompt (all of model space).
#include <benchmark/benchmark.h>

#include <string>

#include "answering_ui.h"
#include "commands/edit/set_prop.h"
#include "commands/edit/set_text.h"
#include "drawing/model/create.h"
#include "drawing/session/object_ids.h"
#include "loaded_session.h"
#include "od/command_context.h"
#include "od/dialog_model.h"
#include "ui/od_select.h"
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

// Answers the text dialog: table Parcels, field NAME, the default tolerance.
veltor::od::DialogResult AnswerLabels(veltor::od::DialogModel& dialog) {
  using veltor::bench::AnsweringUi;
  AnsweringUi::Choose(dialog, veltor::ui::OdSelect::kTableList, "Parcels");
  AnsweringUi::Choose(dialog, veltor::ui::OdSelect::kFieldList, "NAME");
  return dialog.Press(veltor::od::kIdOk).result;
}

// VELTOR_SETTEXT over state.range(0) parcels built in memory: closed 8 x 8 squares on a
// 10-unit grid, each with a record of Parcels and one text ("P<n>") at its centre. Enter at
// the prompt takes all of model space, parcels and labels together.
void BM_SetTextLabels(benchmark::State& state) {
  namespace od = veltor::od;
  namespace model = veltor::model;
  LoadedSession s;
  s.session.AddDocument(model::Document::NewBlank("AC1027"), "labels.dxf");
  model::Document& doc = *s.session.active()->doc;
  od::ObjectDataContainer& container = (*s.session.ActiveProject())->Container();
  od::TableDefinition parcels{"Parcels", "", {{"NAME", od::ValueType::kCharacter, "", od::Value::Character("")}}};
  if (!container.CreateTable(parcels).ok()) return state.SkipWithError("cannot define Parcels");
  const int64_t count = state.range(0);
  const int64_t columns = 1000;
  for (int64_t i = 0; i < count; ++i) {
    const double x = 10.0 * static_cast<double>(i % columns), y = 10.0 * static_cast<double>(i / columns);
    model::RecordId parcel = model::AddLwPolyline(
        doc, "0", {{x, y}, {x + 8, y}, {x + 8, y + 8}, {x, y + 8}}, true);
    model::AddText(doc, "0", {x + 3, y + 4, 0}, 1.0, "P" + std::to_string(i));
    if (!container.AddRecord(veltor::session::IdOf(doc, parcel), {"Parcels", {od::Value::Character("")}}).ok())
      return state.SkipWithError("cannot attach a record");
  }
  veltor::bench::AnsweringUi answers(AnswerLabels, od::MessageAnswer::kCancel);
  s.session.SetUi(&answers);
  for (auto _ : state) {
    s.AnswerEnter();
    od::CommandContext context(s.session, "VELTOR_SETTEXT");
    veltor::commands::SetTextWorker(context, {});
  }
  // What the command wrote: parcels named after their label.
  size_t written = 0;
  for (od::EntityId e : s.session.WorkingDatabase()->ModelSpaceEntities())
    for (const od::Record& r : container.Records(e))
      if (!r.values.empty() && !r.values[0].text().empty()) ++written;
  state.counters["written"] = static_cast<double>(written);
}

}  // namespace

BENCHMARK(BM_SetTextLabels)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SetPropParcels)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
