// VELTOR_SETPROP on a loaded drawing: the length and area of every polyline written into the
// parcels' records (the perimeter into a column added for it, the area into AREA), nothing
// pre-selected and Enter at the prompt (all of model space).
#include <benchmark/benchmark.h>

#include "commands/edit/set_prop.h"
#include "loaded_session.h"
#include "od/command_context.h"
#include "od/dialog_model.h"
#include "ui/options_set_prop.h"

namespace {

using veltor::bench::LoadedSession;
using veltor::ui::OptionsSetProp;

// Answers the properties dialog: table Parcels, PERIMETER for the length, AREA for the area.
class ParcelAnswers : public veltor::od::UiHost {
 public:
  veltor::od::DialogResult ShowModal(veltor::od::DialogModel& dialog) override {
    dialog.OnInit();
    Choose(dialog, OptionsSetProp::kTableList, "Parcels");
    Choose(dialog, OptionsSetProp::kLengthCombo, "PERIMETER");
    Choose(dialog, OptionsSetProp::kAreaCombo, "AREA");
    return dialog.Press(veltor::od::kIdOk).result;
  }
  veltor::od::MessageAnswer MessageBox(const std::string&, const std::string&,
                                       veltor::od::MessageButtons) override {
    return veltor::od::MessageAnswer::kCancel;
  }
  std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                            const std::string&) override {
    return std::nullopt;
  }

 private:
  static void Choose(veltor::od::DialogModel& dialog, int id, const std::string& item) {
    const std::vector<std::string>& items = dialog.Items(id);
    for (size_t i = 0; i < items.size(); ++i)
      if (items[i] == item) dialog.SetSelectedIndex(id, static_cast<int>(i));
    dialog.OnChanged(id);
  }
};

void BM_SetPropParcels(benchmark::State& state) {
  LoadedSession s;
  if (!s.Load(state)) return;
  ParcelAnswers answers;
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
