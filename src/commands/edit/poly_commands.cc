#include "commands/edit/poly_commands.h"

#include <optional>

#include "commands/edit/edit_lock.h"
#include "commands/edit/poly_convert.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

using Converter = std::optional<od::EntityId> (*)(od::Database&, od::Project*, od::EntityId,
                                                  int);

// The precision answer, or nothing when the command ends here (cancelled, or a value that
// fails the range test, which is reported).
std::optional<int> AskPrecision(od::Host& host, od::StringId prompt, int default_value) {
  od::PromptResult<int> answer = host.Ed().GetInt(od::Str(prompt));
  if (answer.status == od::PromptStatus::kCancel) return std::nullopt;
  int precision = answer.status == od::PromptStatus::kNone ? default_value : answer.value;
  // Taken as unsigned, a negative answer is above 99 too; 0 passes for both commands.
  if (static_cast<unsigned>(precision) > 99u) {
    host.Ed().Print(od::Str(od::kStrInvalidPrecision));
    return std::nullopt;
  }
  return precision;
}

void RunConversion(od::CommandContext& context, od::StringId prompt, int default_value,
                   Converter convert) {
  od::Host& host = context.host();
  std::optional<int> precision = AskPrecision(host, prompt, default_value);
  if (!precision) return;
  od::PromptOutcome gathered = od::GatherEntities(host);
  if (gathered.status == od::GatherStatus::kCancelled) return;
  od::Database* db = host.WorkingDatabase();
  if (!db) return;
  // The source is erased once converted: without the project its records and classification
  // could not be carried over, so nothing is converted and the reason is said.
  Result<od::Project*> found = host.ActiveProject();
  if (!found.ok()) {
    host.Ed().Print(od::Format(od::Str(od::kStrCommandFailed), context.name().c_str(),
                               found.message().c_str()));
    return;
  }
  od::Project* project = *found;
  if (!LockForEdits(context)) return;

  int converted = 0;
  for (od::EntityId entity : gathered.entities) {
    std::optional<od::EntityId> made = convert(*db, project, entity, *precision);
    if (!made) continue;
    // The source goes only once its replacement holds everything it carried.
    if (!db->Erase(entity).ok()) {
      (void)db->Erase(*made);
      continue;
    }
    ++converted;
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompletedOutOf), converted,
                             static_cast<int>(gathered.entities.size())));
}

}  // namespace

void To3dPolyline(od::CommandContext& context) {
  RunConversion(context, od::kStrConversionPrecisionPrompt, 0, ConvertTo3dPolyline);
}

void To2dPolyline(od::CommandContext& context) {
  RunConversion(context, od::kStrPrecisionPrompt, 10, ConvertToLwPolyline);
}

}  // namespace veltor::commands
