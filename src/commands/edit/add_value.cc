#include "commands/edit/add_value.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace veltor::commands {

bool ConvertInto(const od::Value& source, od::Value& target) {
  if (source.type() == target.type()) {
    target = source;
    return true;
  }
  return od::SetValueFromLiteralText(target, od::ValueToText(source));
}

bool AddValue(const od::Value& source, od::Value& target, ui::AddMode mode) {
  switch (mode) {
    case ui::AddMode::kReplace:
      return ConvertInto(source, target);
    case ui::AddMode::kAppend:
      return od::SetValueFromLiteralText(target,
                                         od::ValueToText(target) + od::ValueToText(source));
    case ui::AddMode::kAddNumbers: {
      od::Value addend(target.type());
      if (!ConvertInto(source, addend)) return false;
      if (target.type() == od::ValueType::kInteger) {
        int64_t sum = int64_t{target.integer()} + addend.integer();
        if (sum < std::numeric_limits<int32_t>::min() || sum > std::numeric_limits<int32_t>::max())
          return false;
        target.SetInteger(static_cast<int32_t>(sum));
        return true;
      }
      if (target.type() == od::ValueType::kReal) {
        double sum = target.real() + addend.real();
        if (!std::isfinite(sum)) return false;
        target.SetReal(sum);
        return true;
      }
      return false;
    }
  }
  return false;
}

WrittenCounts AddFieldToField(od::ObjectDataContainer& container, const od::EntityList& entities,
                              const ui::AddValueChoice& choice) {
  WrittenCounts counts;
  Result<od::TableDefinition> table = container.GetTable(choice.table);
  if (!table.ok()) return counts;
  int source = table->ColumnIndex(choice.source);
  int target = table->ColumnIndex(choice.target);
  if (source < 0 || target < 0) return counts;
  for (od::EntityId entity : entities) {
    std::vector<od::Record> records = container.Records(entity);
    for (size_t index = 0; index < records.size(); ++index) {
      od::Record& record = records[index];
      if (record.table != choice.table || record.values.size() != table->columns.size()) continue;
      if (!AddValue(record.values[static_cast<size_t>(source)],
                    record.values[static_cast<size_t>(target)], choice.mode)) {
        ++counts.failed;
        continue;
      }
      counts.writes.Count(container.UpdateRecord(entity, index, record));
    }
  }
  return counts;
}

}  // namespace veltor::commands
