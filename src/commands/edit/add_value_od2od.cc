#include "commands/edit/add_value_od2od.h"

#include <algorithm>
#include <utility>

namespace veltor::commands {

WrittenCounts CopyOdToOd(od::ObjectDataContainer& container, const od::EntityList& entities,
                         const ui::OdToOdChoice& choice) {
  WrittenCounts counts;
  Result<od::TableDefinition> source = container.GetTable(choice.source_table);
  Result<od::TableDefinition> target = container.GetTable(choice.target_table);
  if (!source.ok() || !target.ok()) return counts;
  std::vector<std::pair<size_t, size_t>> columns;  // source index, target index
  for (const ui::FieldPair& pair : choice.pairs) {
    int from = source->ColumnIndex(pair.source);
    int to = target->ColumnIndex(pair.target);
    if (from >= 0 && to >= 0) columns.emplace_back(from, to);
  }
  auto of_table = [](const std::string& table) {
    return [&table](const od::Record& record) { return record.table == table; };
  };
  for (od::EntityId entity : entities) {
    std::vector<od::Record> records = container.Records(entity);
    auto from = std::find_if(records.begin(), records.end(), of_table(choice.source_table));
    if (from == records.end()) continue;
    auto to = std::find_if(records.begin(), records.end(), of_table(choice.target_table));
    od::Record written;
    if (to != records.end()) {
      written = *to;
    } else if (choice.attach_missing) {
      Result<od::Record> fresh = container.NewRecord(choice.target_table);
      if (!fresh.ok()) continue;
      written = std::move(*fresh);
    } else {
      continue;
    }
    for (auto [s, t] : columns) {
      if (s >= from->values.size() || t >= written.values.size()) continue;
      if (!ConvertInto(from->values[s], written.values[t])) ++counts.failed;
    }
    counts.writes.Count(
        to != records.end()
            ? container.UpdateRecord(entity, static_cast<size_t>(to - records.begin()), written)
            : container.AddRecord(entity, written));
  }
  return counts;
}

}  // namespace veltor::commands
