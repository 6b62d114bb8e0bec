#include "commands/edit/set_steps.h"

#include <algorithm>

#include "od/catalogue.h"
#include "od/gathering.h"
#include "od/text.h"

namespace veltor::commands {

std::vector<std::string> TablesInUse(od::Host& host, const od::EntityList& entities) {
  const od::EntityList& offered = entities.empty() ? od::GetImpliedSelection(host) : entities;
  od::TableNameSet names = od::GetTableNames(host, offered, true);
  return {names.begin(), names.end()};
}

std::optional<od::EntityList> GatherAfterDialog(od::CommandContext& context,
                                                const od::EntityList& handed) {
  if (!handed.empty()) return handed;
  od::Host& host = context.host();
  od::EntityList entities = od::GetImpliedSelection(host);
  if (!entities.empty()) return entities;
  od::PromptOutcome answer = od::PromptSelection(host);
  if (answer.status == od::GatherStatus::kCancelled) {
    context.Cancel();
    return std::nullopt;
  }
  if (!answer.entities.empty()) return std::move(answer.entities);
  od::Database* db = host.WorkingDatabase();
  if (!db) return od::EntityList();
  return od::GetModelSpaceEntities(*db);
}

int FirstRecordOf(const od::ObjectDataContainer& container, od::EntityId entity,
                  const std::string& table) {
  std::vector<std::string> names = container.RecordTableNames(entity);
  auto at = std::find(names.begin(), names.end(), table);
  return at == names.end() ? -1 : static_cast<int>(at - names.begin());
}

double RoundByPrinting(double value, int precision) {
  return od::ParseLeadingDouble(od::FormatNumberWithPrecision(value, std::max(0, precision)));
}

}  // namespace veltor::commands
