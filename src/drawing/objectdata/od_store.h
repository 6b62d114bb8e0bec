// The Object Data of one drawing: table definitions in a catalogue dictionary under the root
// dictionary, and each entity's records in an XRECORD of its extension dictionary.
//
// Table names are case-sensitive ("Roads" and "ROADS" are two tables); records refer to
// their table by handle, so renaming a table rewrites one object. All text is UTF-8.
//
// Damaged Object Data (a definition or a record that does not follow the format: a wrong
// marker, an unknown version or column type, a number that is not one, a record of a table
// that does not exist) is never dropped or rewritten:
// - a table definition that cannot be read is left as it is; it is not listed among the
//   tables, but its name, when readable, stays taken;
// - a record that cannot be read is skipped by Records() and RecordTableNames() (indexes
//   count readable records only) and its tags are written back unchanged when other records
//   of its entity change;
// - a records XRECORD without the records marker or of an unknown version is never
//   rewritten: records cannot be added to, changed on or removed from its entity one by one;
//   only RemoveAllRecords() takes it away.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "od/object_data.h"
#include "od/status.h"
#include "od/value.h"

namespace veltor::objectdata {

class ObjectDataStore {
 public:
  explicit ObjectDataStore(model::Document& doc) : doc_(doc) {}

  // Table definitions are cached. Call this after the drawing was changed other than
  // through this store (undo, redo, another program's edits reloaded).
  void Refresh() { catalogue_loaded_ = false; }

  struct DamagedTable {
    model::Handle handle = 0;  // of the definition
    std::string name;          // empty when unreadable
    std::string reason;
  };
  // Definitions that cannot be read, in catalogue order.
  std::vector<DamagedTable> DamagedTables() const;
  // Number of the entity's records that cannot be read.
  size_t DamagedRecordCount(model::RecordId entity) const;
  // One line per damaged definition and per entity holding damaged records (at most
  // `max_entities` entity lines, then one line counting the rest), each saying what is wrong
  // and that it is kept. Walks the drawing.
  std::vector<std::string> DamageReport(size_t max_entities = 20) const;

  // Ok when the drawing can hold Object Data (R2000 or later with a root dictionary).
  Status CanWrite() const;

  // --- tables ---
  std::vector<std::string> TableNames() const;  // in creation order
  bool HasTable(const std::string& name) const;
  // Ok when a new or renamed table can take `name`: no control character, and no table,
  // not even one whose definition cannot be read, has it.
  Status CheckNameFree(const std::string& name) const;
  Result<od::TableDefinition> GetTable(const std::string& name) const;
  Status CreateTable(const od::TableDefinition& def);
  // Deletes the table and every record of it.
  Status DeleteTable(const std::string& name);
  Status RenameTable(const std::string& name, const std::string& new_name);

  // --- columns (records follow every change) ---
  // Adds a column at the end; existing records get its default value.
  Status AddColumn(const std::string& table, const od::ColumnDefinition& column);
  Status RemoveColumn(const std::string& table, const std::string& column);
  Status RenameColumn(const std::string& table, const std::string& column,
                      const std::string& new_name);
  // Changes a column's type; the default and every record's value are converted.
  Status RetypeColumn(const std::string& table, const std::string& column, od::ValueType type);

  // --- records ---
  // The records of an entity in their stored order. Values follow the current definition
  // (missing trailing values read as the column default).
  std::vector<od::Record> Records(model::RecordId entity) const;
  // The readable records of `tables` on an entity, in stored order, and in `damaged` the
  // number of the entity's records (of any table) that cannot be read: one pass over the
  // entity's data that parses only the wanted records' values.
  std::vector<od::Record> RecordsOf(model::RecordId entity, const std::vector<std::string>& tables,
                                    size_t& damaged) const;
  // Only the table names of an entity's records, in order; cheaper than Records().
  std::vector<std::string> RecordTableNames(model::RecordId entity) const;
  // The same, and the number of the entity's records that cannot be read, in one scan.
  std::vector<std::string> RecordTableNames(model::RecordId entity, size_t* damaged) const;
  Status AddRecord(model::RecordId entity, const od::Record& record);
  Status UpdateRecord(model::RecordId entity, size_t index, const od::Record& record);
  Status RemoveRecord(model::RecordId entity, size_t index);
  // Removes the records at `indexes` (readable-record indexes counted before any removal; order
  // and repeats do not matter) in one rewrite; fails, changing nothing, when an index has no
  // record or the entity's records cannot be changed one by one.
  Status RemoveRecords(model::RecordId entity, std::vector<size_t> indexes);
  // Removes every record of the entity, damaged ones too; returns how many there were.
  size_t RemoveAllRecords(model::RecordId entity);
  // A record of `table` holding every column's default value.
  Result<od::Record> NewRecord(const std::string& table) const;

  // Number of records of each table over every entity of the drawing.
  std::map<std::string, size_t> RecordCounts() const;

 private:
  struct TableEntry {
    std::string name;
    od::TableDefinition def;
    model::Handle handle = 0;  // of the definition XRECORD
    model::RecordId record = model::kNoRecord;
  };
  struct StoredRecord {
    model::Handle table = 0;
    std::vector<od::Value> values;
    std::string damage;  // why the record cannot be read; empty when it can
    dxf::Tags raw;       // a damaged record's tags, written back as they stand
  };
  // The records XRECORD of one entity as read.
  struct StoredRecords {
    std::vector<StoredRecord> records;
    std::string damage;  // why the XRECORD as a whole cannot be read (it is then read-only)
    size_t DamagedCount() const;
    // The position in `records` of the readable record number `index`, or records.size().
    size_t Position(size_t index) const;
  };

  const std::vector<TableEntry>& Catalogue() const;
  model::RecordId CatalogueDictionary() const;
  const TableEntry* FindEntry(const std::string& name) const;
  const TableEntry* FindEntry(model::Handle handle) const;
  Status WriteTable(const TableEntry& entry, const od::TableDefinition& def);
  model::RecordId RecordsXRecord(model::RecordId entity) const;
  StoredRecords ReadStored(model::RecordId entity) const;
  // Reads the entity's records XRECORD in place, as ReadStored would judge it: appends the
  // table names of readable records to `names` (when given), the readable records of the
  // `wanted` tables to `records` (when given) and returns how many records cannot be read.
  // Cheap enough to run on every entity of a drawing walk.
  size_t ScanRecords(model::RecordId entity, std::vector<std::string>* names,
                     const std::vector<const TableEntry*>* wanted,
                     std::vector<od::Record>* records) const;
  // A readable record of `table` from its stored values: converted to the column types,
  // missing trailing values filled with the column defaults.
  od::Record Complete(const TableEntry& table, std::vector<od::Value> stored) const;
  // Requires records.damage to be empty.
  void WriteStored(model::RecordId entity, const StoredRecords& records);
  // Fails when the entity's records cannot be changed one by one.
  Status CheckChangeable(model::RecordId entity, const StoredRecords& records) const;
  // Fails when damaged records refer to table `handle` (a change to the table's columns or
  // its deletion would leave them meaning something else).
  Status CheckNoDamagedRecordsOf(const TableEntry& table, const char* change) const;

  Status CheckRecord(const od::Record& record, StoredRecord& out) const;
  // Applies `edit` to every record of table `handle` across the drawing.
  template <typename Edit>
  void EditRecordsOf(model::Handle handle, Edit edit);
  void Invalidate() { catalogue_loaded_ = false; }

  model::Document& doc_;
  mutable std::vector<TableEntry> catalogue_;
  mutable std::vector<DamagedTable> damaged_tables_;
  mutable bool catalogue_loaded_ = false;
  mutable model::RecordId catalogue_dictionary_ = model::kNoRecord;
};

}  // namespace veltor::objectdata
