#include "od/object_data.h"

#include <algorithm>

namespace veltor::od {

int TableDefinition::ColumnIndex(const std::string& column) const {
  for (size_t i = 0; i < columns.size(); ++i)
    if (columns[i].name == column) return static_cast<int>(i);
  return -1;
}

std::vector<Record> ObjectDataContainer::RecordsOf(EntityId entity,
                                                   const std::vector<std::string>& tables,
                                                   size_t& damaged) const {
  std::vector<Record> records = Records(entity);
  records.erase(std::remove_if(records.begin(), records.end(),
                               [&](const Record& r) {
                                 return std::find(tables.begin(), tables.end(), r.table) == tables.end();
                               }),
                records.end());
  damaged = DamagedRecordCount(entity);
  return records;
}

RecordNames ObjectDataContainer::ReadRecordNames(EntityId entity) const {
  return {RecordTableNames(entity), DamagedRecordCount(entity)};
}

Status ObjectDataContainer::RemoveRecords(EntityId entity, std::vector<size_t> indexes) {
  std::sort(indexes.begin(), indexes.end());
  indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
  // From the last, so that each index still names the record it named before.
  for (auto at = indexes.rbegin(); at != indexes.rend(); ++at)
    if (Status s = RemoveRecord(entity, *at); !s.ok()) return s;
  return Status::Ok();
}

}  // namespace veltor::od
