#include "app/table_command.h"

#include <memory>
#include <utility>

#include "app/veltor_app.h"
#include "commands/edit/add_value_command.h"
#include "commands/edit/replace_values.h"
#include "commands/edit/set_id.h"
#include "commands/edit/set_prop.h"
#include "commands/edit/set_text.h"
#include "commands/edit/set_xyz.h"
#include "ui/od_table_view.h"

namespace veltor::app {
namespace {

// A worker runs as the command it belongs to: its own undo step, and nothing escapes it.
template <typename Work>
ui::OdTableView::Worker AsCommand(od::Host& host, const char* name, Work work) {
  return [&host, name, work](od::EntityList entities) {
    od::RunCommand(host, name, [&](od::CommandContext& context) { work(context, entities); });
  };
}

void InstallWorkers(od::Host& host, ui::OdTableView& view) {
  view.SetWorker(ui::TableWorker::kSetXyz, AsCommand(host, "VELTOR_SETXYZ", commands::SetXyzWorker));
  view.SetWorker(ui::TableWorker::kSetProp,
                 AsCommand(host, "VELTOR_SETPROP", commands::SetPropWorker));
  view.SetWorker(ui::TableWorker::kSetText,
                 AsCommand(host, "VELTOR_SETTEXT", commands::SetTextWorker));
  view.SetWorker(ui::TableWorker::kSetId,
                 AsCommand(host, "VELTOR_SETID", [](od::CommandContext& c, const od::EntityList& e) {
                   commands::SetIdWorker(c, e);
                 }));
  view.SetWorker(ui::TableWorker::kReplace,
                 AsCommand(host, "VELTOR_REPLACE", [](od::CommandContext& c, const od::EntityList& e) {
                   (void)commands::ReplaceValues(c, e);
                 }));
  view.SetWorker(ui::TableWorker::kAddValue,
                 AsCommand(host, "VELTOR_ADDVAL", commands::AddValWorker));
}

}  // namespace

void VeltorTable(od::CommandContext& context) {
  od::Host& host = context.host();
  std::unique_ptr<od::Palette>& palette = TheApp().table_palette();
  if (!palette) {
    auto view = std::make_unique<ui::OdTableView>(host);
    InstallWorkers(host, *view);
    palette = std::move(view);
  }
  static_cast<ui::OdTableView&>(*palette).Show();
  host.Ui().ShowPalette(*palette);
}

}  // namespace veltor::app
