// The Object Data of one drawing: table definitions in a catalogue dictionary under the root
// dictionary, and each entity's records in an XRECORD of its extension dictionary.
//
// Table names are case-sensitive ("Roads" and "ROADS" are two tables); records refer to
// their table by handle, so renaming a table rewrites one object. All text is UTF-8.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/objectdata/od_types.h"
#include "od/status.h"

namespace veltor::objectdata {

class ObjectDataStore {
 public:
  explicit ObjectDataStore(model::Document& doc) : doc_(doc) {}

  // Table definitions are cached. Call this after the drawing was changed other than
  // through this store (undo, redo, another program's edits reloaded).
  void Refresh() { catalogue_loaded_ = false; }

  // Ok when the drawing can hold Object Data (R2000 or later with a root dictionary).
  Status CanWrite() const;

  // --- tables ---
  std::vector<std::string> TableNames() const;  // in creation order
  bool HasTable(const std::string& name) const;
  Result<TableDef> GetTable(const std::string& name) const;
  Status CreateTable(const TableDef& def);
  // Deletes the table and every record of it.
  Status DeleteTable(const std::string& name);
  Status RenameTable(const std::string& name, const std::string& new_name);

  // --- columns (records follow every change) ---
  // Adds a column at the end; existing records get its default value.
  Status AddColumn(const std::string& table, const ColumnDef& column);
  Status RemoveColumn(const std::string& table, const std::string& column);
  Status RenameColumn(const std::string& table, const std::string& column,
                      const std::string& new_name);
  // Changes a column's type; the default and every record's value are converted.
  Status RetypeColumn(const std::string& table, const std::string& column, ColumnType type);

  // --- records ---
  // The records of an entity in their stored order. Values follow the current definition
  // (missing trailing values read as the column default).
  std::vector<OdRecord> Records(model::RecordId entity) const;
  // Only the table names of an entity's records, in order; cheaper than Records().
  std::vector<std::string> RecordTableNames(model::RecordId entity) const;
  Status AddRecord(model::RecordId entity, const OdRecord& record);
  Status UpdateRecord(model::RecordId entity, size_t index, const OdRecord& record);
  Status RemoveRecord(model::RecordId entity, size_t index);
  // A record of `table` holding every column's default value.
  Result<OdRecord> NewRecord(const std::string& table) const;

  // Number of records of each table over every entity of the drawing.
  std::map<std::string, size_t> RecordCounts() const;

 private:
  struct TableEntry {
    std::string name;
    TableDef def;
    model::Handle handle = 0;  // of the definition XRECORD
    model::RecordId record = model::kNoRecord;
  };
  struct StoredRecord {
    model::Handle table = 0;
    std::vector<FieldValue> values;
  };

  const std::vector<TableEntry>& Catalogue() const;
  model::RecordId CatalogueDictionary() const;
  const TableEntry* FindEntry(const std::string& name) const;
  const TableEntry* FindEntry(model::Handle handle) const;
  Status WriteTable(const TableEntry& entry, const TableDef& def);
  model::RecordId RecordsXRecord(model::RecordId entity) const;
  std::vector<StoredRecord> ReadStored(model::RecordId entity) const;
  void WriteStored(model::RecordId entity, const std::vector<StoredRecord>& records);
  Status CheckRecord(const OdRecord& record, StoredRecord& out) const;
  // Applies `edit` to every record of table `handle` across the drawing.
  template <typename Edit>
  void EditRecordsOf(model::Handle handle, Edit edit);
  void Invalidate() { catalogue_loaded_ = false; }

  model::Document& doc_;
  mutable std::vector<TableEntry> catalogue_;
  mutable bool catalogue_loaded_ = false;
  mutable model::RecordId catalogue_dictionary_ = model::kNoRecord;
};

const char* ColumnTypeName(ColumnType type);

}  // namespace veltor::objectdata
