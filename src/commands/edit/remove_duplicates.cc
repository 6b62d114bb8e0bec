#include "commands/edit/remove_duplicates.h"

#include <algorithm>

#include "commands/edit/edit_lock.h"
#include "commands/select/skipped_records.h"
#include "od/format.h"
#include "od/gathering.h"
#include "od/string_table.h"
#include "od/text.h"

namespace veltor::commands {

namespace {

// The names listed more than once, compared without regard to case, each given as its
// first spelling, in the order their repeats are found.
std::vector<std::string> DuplicatedNames(std::vector<std::string> names) {
  std::vector<std::string> duplicated;
  auto known = [&](const std::string& name) {
    return std::any_of(duplicated.begin(), duplicated.end(),
                       [&](const std::string& d) { return od::EqualsIgnoreCase(d, name); });
  };
  for (size_t i = 0; i < names.size(); ++i) {
    for (size_t j = i + 1; j < names.size();) {
      if (!od::EqualsIgnoreCase(names[i], names[j])) {
        ++j;
        continue;
      }
      if (!known(names[i])) duplicated.push_back(names[i]);
      names.erase(names.begin() + static_cast<std::ptrdiff_t>(j));
    }
  }
  return duplicated;
}

// Positions (0-based, host order) of the entity's records of `name`, without regard to case.
std::vector<size_t> PositionsOf(const od::ObjectDataContainer& container, od::EntityId entity,
                                const std::string& name) {
  std::vector<size_t> positions;
  std::vector<std::string> names = container.RecordTableNames(entity);
  for (size_t i = 0; i < names.size(); ++i)
    if (od::EqualsIgnoreCase(names[i], name)) positions.push_back(i);
  return positions;
}

}  // namespace

size_t RemoveDuplicateRecords(od::ObjectDataContainer& container, od::EntityId entity,
                              DuplicateMode mode) {
  std::vector<std::string> duplicated = DuplicatedNames(container.RecordTableNames(entity));
  for (const std::string& name : duplicated) {
    if (!container.GetTable(name).ok()) continue;
    std::vector<size_t> positions = PositionsOf(container, entity, name);
    while (positions.size() > 1) {
      size_t target = mode == DuplicateMode::kFirst ? positions.front() : positions.back();
      // A record that cannot be removed would be the target again and again.
      if (!container.RemoveRecord(entity, target).ok()) break;
      if (mode == DuplicateMode::kFirst) {
        positions.erase(positions.begin());
        for (size_t& p : positions) --p;
      } else {
        positions.pop_back();
      }
    }
  }
  return duplicated.size();
}

void RemoveDuplicateOd(od::CommandContext& context) {
  od::Host& host = context.host();
  od::EntityList entities = od::GetImpliedSelection(host);
  od::PromptResult<std::string> answer = host.Ed().GetString(od::Str(od::kStrModePrompt), true);
  if (answer.status == od::PromptStatus::kCancel) return context.Cancel();
  std::string word = od::ToLowerUnicode(answer.value);
  if (word.empty()) word = od::Str(od::kStrFirst);
  DuplicateMode mode;
  if (od::MatchesKeyword(word, od::Str(od::kStrFirst))) {
    mode = DuplicateMode::kFirst;
  } else if (od::MatchesKeyword(word, od::Str(od::kStrLast))) {
    mode = DuplicateMode::kLast;
  } else {
    host.Ed().Print(od::Str(od::kStrInvalidParameters));
    return;
  }

  if (entities.empty()) {
    od::PromptOutcome picked = od::PromptSelection(host);
    if (picked.status == od::GatherStatus::kCancelled) return context.Cancel();
    entities = std::move(picked.entities);
  }
  size_t total = 0;
  if (Result<od::Project*> project = host.ActiveProject(); project.ok() && !entities.empty()) {
    if (!LockForEdits(context)) return;
    WarnSkippedRecords(host, entities);
    for (od::EntityId entity : entities)
      total += RemoveDuplicateRecords((*project)->Container(), entity, mode);
  }
  host.Ed().Print(od::Format(od::Str(od::kStrCompleted), static_cast<int>(total)));
}

}  // namespace veltor::commands
