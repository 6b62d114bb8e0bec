#include "commands/edit/copy_records.h"

#include "od/catalogue.h"

namespace veltor::commands {

namespace {

// The reference's records of tables that the container can give and that are user tables.
std::vector<od::Record> UserRecords(const od::ObjectDataContainer& container,
                                    od::EntityId reference) {
  std::vector<od::Record> kept;
  for (od::Record& record : container.Records(reference))
    if (!od::IsSystemTableName(record.table)) kept.push_back(std::move(record));
  return kept;
}

}  // namespace

TableCounts CountReferenceTables(const od::ObjectDataContainer& container, od::EntityId reference) {
  TableCounts counts;
  for (const std::string& table : container.RecordTableNames(reference))
    if (!od::IsSystemTableName(table)) ++counts[table];
  return counts;
}

void AttachDefaultRecords(od::ObjectDataContainer& container, const TableCounts& tables,
                          const od::EntityList& targets) {
  for (od::EntityId target : targets) {
    for (const auto& [table, count] : tables) {
      Result<od::Record> fresh = container.NewRecord(table);
      if (!fresh.ok()) continue;
      for (size_t k = 0; k < count; ++k) (void)container.AddRecord(target, *fresh);
    }
  }
}

GroupedRecords GroupReferenceRecords(const od::ObjectDataContainer& container,
                                     od::EntityId reference) {
  GroupedRecords groups;
  for (od::Record& record : UserRecords(container, reference)) {
    std::string table = record.table;
    groups[table].push_back(std::move(record));
  }
  return groups;
}

void AttachGroupedRecords(od::ObjectDataContainer& container, const GroupedRecords& records,
                          const od::EntityList& targets) {
  for (od::EntityId target : targets) {
    for (const auto& [table, group] : records) {
      if (!container.GetTable(table).ok()) continue;
      for (const od::Record& record : group) (void)container.AddRecord(target, record);
    }
  }
}

void AttachReferenceRecords(od::ObjectDataContainer& container, od::EntityId reference,
                            const od::EntityList& targets) {
  // Read once: the reference itself is never a target here, so its records do not change.
  const std::vector<od::Record> records = UserRecords(container, reference);
  for (od::EntityId target : targets) {
    if (target == reference) continue;
    for (const od::Record& record : records) {
      if (!container.GetTable(record.table).ok()) continue;
      (void)container.AddRecord(target, record);
    }
  }
}

}  // namespace veltor::commands
