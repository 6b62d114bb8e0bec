#include "commands/edit/copy_values.h"

#include <algorithm>

#include "od/catalogue.h"

namespace veltor::commands {

size_t CopyReferenceValues(od::ObjectDataContainer& container, od::EntityId reference,
                           const od::EntityList& targets) {
  // Read once: the reference is skipped as a target, so its records do not change.
  std::vector<od::Record> source;
  for (od::Record& record : container.Records(reference))
    if (!od::IsSystemTableName(record.table)) source.push_back(std::move(record));
  size_t overwritten = 0;
  for (od::EntityId target : targets) {
    if (target == reference) continue;
    std::vector<std::string> tables = container.RecordTableNames(target);
    for (size_t index = 0; index < tables.size(); ++index) {
      auto match = std::find_if(source.begin(), source.end(),
                                [&](const od::Record& r) { return r.table == tables[index]; });
      if (match == source.end()) continue;
      if (container.UpdateRecord(target, index, *match).ok()) ++overwritten;
    }
  }
  return overwritten;
}

}  // namespace veltor::commands
