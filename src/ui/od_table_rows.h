// The rows of the OD table grid: one per record of the shown table on an entity of model
// space. A row names its record (entity and position among that entity's records of the
// table) and never copies its values: the grid reads them when it shows a cell.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "od/database.h"
#include "od/object_data.h"

namespace veltor::ui {

// 24 bytes: a table of a million records costs the palette 24 MB.
struct GridRow {
  od::EntityId entity = od::kNullId;
  int64_t number = 0;    // running number in load order, from 1; kept through sorts
  uint32_t ordinal = 0;  // the record's position among the entity's records of the table
  bool selected = false;
};

// The rows of `table`: model space in database order, one row per record in host order.
// Entities on a frozen, hidden, locked or off layer are left out; an entity that cannot be
// opened is kept (its layer cannot be checked).
std::vector<GridRow> LoadGridRows(const od::Database& db, const od::ObjectDataContainer& container,
                                  const std::string& table);

// A record of one entity with its host-order index among all the entity's records.
struct IndexedRecord {
  size_t index = 0;
  od::Record record;
};

// The entity's records of `table`, in host order, with their indexes.
std::vector<IndexedRecord> TableRecordsOf(const od::ObjectDataContainer& container,
                                          od::EntityId entity, const std::string& table);

// A record's values named by their columns: what a write-back or a delete matches against.
using NamedValues = std::vector<std::pair<std::string, od::Value>>;

// The values of `record` named by `columns`, in order (as many as both have).
NamedValues NameValues(const std::vector<std::string>& columns, const od::Record& record);

// Writes `value` into column `column` of the first record of `table` on `entity` whose every
// named value equals `before`; no other record is touched. False when the table cannot be
// read, no record matches or the write fails.
bool WriteBackValue(od::ObjectDataContainer& container, od::EntityId entity,
                    const std::string& table, size_t column, const od::Value& value,
                    const NamedValues& before);

enum class RemoveOutcome { kRemoved, kNoMatch, kFailed };

// Detaches the first record of `table` on `entity` whose every named value equals `before`.
// kFailed when the table cannot be read or the host refuses the removal.
RemoveOutcome RemoveMatchingRecord(od::ObjectDataContainer& container, od::EntityId entity,
                          const std::string& table, const NamedValues& before);

}  // namespace veltor::ui
