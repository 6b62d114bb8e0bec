#include "commands/exchange/stat_command.h"

#include "commands/exchange/usage_statistics.h"
#include "od/string_table.h"
#include "ui/text_box_dialog.h"

namespace veltor::commands {

void Stat(od::CommandContext& context) {
  od::Host& host = context.host();
  std::string report = StatisticsReport(CountUsage(host));
  ui::TextBoxDialog box(od::Str(od::kStrStatTitle), 350, 400);
  box.SetText(report);
  (void)host.Ui().ShowModal(box);
}

}  // namespace veltor::commands
