#include "commands/edit/write_tally.h"

#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

void ReportRefused(od::Host& host, const WriteTally& tally) {
  if (tally.refused == 1)
    host.Ed().Print(od::Format(od::Str(od::kStrRecordNotWritten), tally.reason.c_str()));
  if (tally.refused > 1)
    host.Ed().Print(od::Format(od::Str(od::kStrRecordsNotWritten), static_cast<int>(tally.refused),
                               tally.reason.c_str()));
}

}  // namespace veltor::commands
