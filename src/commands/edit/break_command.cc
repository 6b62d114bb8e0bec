#include "commands/edit/break_command.h"

#include "commands/edit/break_keeping_data.h"
#include "commands/edit/edit_lock.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

void SayFailed(od::CommandContext& context, const std::string& reason) {
  context.host().Ed().Print(
      od::Format(od::Str(od::kStrCommandFailed), context.name().c_str(), reason.c_str()));
}

}  // namespace

void Break(od::CommandContext& context) {
  od::Host& host = context.host();
  od::Database* db = host.WorkingDatabase();
  if (!db) return;
  od::PromptResult<od::EntityId> picked = host.Ed().GetEntity(od::Str(od::kStrBreakObjectPrompt));
  if (picked.status != od::PromptStatus::kOk) return;
  od::PromptResult<od::Point3> first = host.Ed().GetPoint(od::Str(od::kStrBreakFirstPointPrompt));
  if (first.status != od::PromptStatus::kOk) return;
  od::PromptResult<od::Point3> second = host.Ed().GetPoint(od::Str(od::kStrBreakSecondPointPrompt));
  if (second.status == od::PromptStatus::kCancel) return;
  const od::Point3 second_point = second.status == od::PromptStatus::kOk ? second.value : first.value;

  // An object the other editing commands would leave out (frozen, hidden, locked or off
  // layer) is not broken either.
  od::EntityList usable{picked.value};
  od::FilterUsable(*db, usable);
  if (usable.empty()) return SayFailed(context, od::Str(od::kStrBreakUnusableLayer));
  // Without the project the new pieces could not be given the records.
  Result<od::Project*> project = host.ActiveProject();
  if (!project.ok()) return SayFailed(context, project.message());
  if (!LockForEdits(context)) return;
  Result<od::EntityList> pieces = BreakKeepingData(*db, **project, picked.value, first.value, second_point);
  if (!pieces.ok()) {
    context.Cancel();  // pieces already made must not stay without their records
    return SayFailed(context, pieces.message());
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), static_cast<int>(pieces->size())));
}

}  // namespace veltor::commands
