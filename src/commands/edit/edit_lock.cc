#include "commands/edit/edit_lock.h"

#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

bool LockForEdits(od::CommandContext& context) {
  Status locked = context.LockForWrite();
  if (locked.ok()) return true;
  // The context names the command at the front of its message; the line names it once.
  std::string reason = locked.message();
  const std::string prefix = context.name() + ": ";
  if (reason.compare(0, prefix.size(), prefix) == 0) reason.erase(0, prefix.size());
  context.host().Ed().Print(
      od::Format(od::Str(od::kStrCommandFailed), context.name().c_str(), reason.c_str()));
  context.Cancel();
  return false;
}

}  // namespace veltor::commands
