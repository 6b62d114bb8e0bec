#include "ui/od_table_rows.h"

#include <algorithm>
#include <unordered_set>

namespace veltor::ui {
namespace {

// The layers whose entities the grid leaves out.
std::unordered_set<od::ObjectId> HiddenLayers(const od::Database& db) {
  std::unordered_set<od::ObjectId> hidden;
  for (const od::LayerInfo& layer : db.Layers())
    if (layer.frozen || layer.hidden || layer.locked || layer.off) hidden.insert(layer.id);
  return hidden;
}

bool Matches(const od::TableDefinition& definition, const od::Record& record,
             const NamedValues& before) {
  for (const auto& [name, value] : before) {
    int column = definition.ColumnIndex(name);
    if (column < 0 || static_cast<size_t>(column) >= record.values.size()) return false;
    if (record.values[static_cast<size_t>(column)] != value) return false;
  }
  return true;
}

// The first record of `table` on `entity` matching `before`, or nothing.
const IndexedRecord* FindMatching(const od::TableDefinition& definition,
                                  const std::vector<IndexedRecord>& records,
                                  const NamedValues& before) {
  for (const IndexedRecord& r : records)
    if (Matches(definition, r.record, before)) return &r;
  return nullptr;
}

}  // namespace

std::vector<GridRow> LoadGridRows(const od::Database& db, const od::ObjectDataContainer& container,
                                  const std::string& table) {
  std::unordered_set<od::ObjectId> hidden = HiddenLayers(db);
  std::vector<GridRow> rows;
  int64_t number = 0;
  for (od::EntityId entity : db.ModelSpaceEntities()) {
    if (db.CanOpen(entity) && hidden.count(db.LayerOf(entity))) continue;
    uint32_t ordinal = 0;
    for (const std::string& name : container.RecordTableNames(entity))
      if (name == table) rows.push_back(GridRow{entity, ++number, ordinal++, false});
  }
  return rows;
}

std::vector<IndexedRecord> TableRecordsOf(const od::ObjectDataContainer& container,
                                          od::EntityId entity, const std::string& table) {
  std::vector<IndexedRecord> out;
  std::vector<od::Record> records = container.Records(entity);
  for (size_t i = 0; i < records.size(); ++i)
    if (records[i].table == table) out.push_back(IndexedRecord{i, std::move(records[i])});
  return out;
}

NamedValues NameValues(const std::vector<std::string>& columns, const od::Record& record) {
  NamedValues named;
  size_t n = std::min(columns.size(), record.values.size());
  for (size_t i = 0; i < n; ++i) named.emplace_back(columns[i], record.values[i]);
  return named;
}

bool WriteBackValue(od::ObjectDataContainer& container, od::EntityId entity,
                    const std::string& table, size_t column, const od::Value& value,
                    const NamedValues& before) {
  Result<od::TableDefinition> definition = container.GetTable(table);
  if (!definition.ok()) return false;
  std::vector<IndexedRecord> records = TableRecordsOf(container, entity, table);
  const IndexedRecord* match = FindMatching(*definition, records, before);
  if (!match || column >= match->record.values.size()) return false;
  od::Record changed = match->record;
  changed.values[column] = value;
  return container.UpdateRecord(entity, match->index, changed).ok();
}

RemoveOutcome RemoveMatchingRecord(od::ObjectDataContainer& container, od::EntityId entity,
                                   const std::string& table, const NamedValues& before) {
  Result<od::TableDefinition> definition = container.GetTable(table);
  if (!definition.ok()) return RemoveOutcome::kFailed;
  std::vector<IndexedRecord> records = TableRecordsOf(container, entity, table);
  const IndexedRecord* match = FindMatching(*definition, records, before);
  if (!match) return RemoveOutcome::kNoMatch;
  return container.RemoveRecord(entity, match->index).ok() ? RemoveOutcome::kRemoved
                                                           : RemoveOutcome::kFailed;
}

}  // namespace veltor::ui
