#include "app/shell_commands.h"

#include "app/veltor_app.h"
#include "od/string_table.h"
#include "ui/command_palette.h"
#include "ui/text_box_dialog.h"

#ifndef VELTOR_VERSION
#define VELTOR_VERSION "dev"
#endif

namespace veltor::app {

void VeltorCtl(od::CommandContext& context) {
  od::Host& host = context.host();
  std::unique_ptr<od::Palette>& palette = TheApp().command_palette();
  if (!palette) palette = std::make_unique<ui::CommandPalette>();
  host.Ui().ShowPalette(*palette);
}

std::string AboutText() {
  return std::string("veltor ") + VELTOR_VERSION + "\n" +
         "Object Data tools for CAD drawings: find, select, detach, copy, compute, translate,\n"
         "summarise and exchange the attribute tables attached to drawing entities.\n"
         "\n"
         "Built " __DATE__ ".\n"
         "Licence: MIT (see LICENSE).\n"
         "Documentation: docs/console.md and docs/object-data-format.md in the source tree;\n"
         "type HELP at the command prompt for the list of commands.\n";
}

void VeltorAbout(od::CommandContext& context) {
  od::Host& host = context.host();
  ui::TextBoxDialog about(od::Str(od::kStrAboutTitle), 250, 150);
  about.SetText(AboutText());
  host.Ui().ShowModal(about);
}

}  // namespace veltor::app
