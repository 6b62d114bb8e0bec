#include "app/shell_commands.h"

#include "app/veltor_app.h"
#include "od/format.h"
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
  return od::Format(od::Str(od::kStrAboutText), VELTOR_VERSION, __DATE__);
}

void VeltorAbout(od::CommandContext& context) {
  od::Host& host = context.host();
  ui::TextBoxDialog about(od::Str(od::kStrAboutTitle), 250, 150);
  about.SetText(AboutText());
  host.Ui().ShowModal(about);
}

}  // namespace veltor::app
