#include "drawing/objectdata/od_store.h"

#include <algorithm>
#include <set>

#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/model/upgrade_r12.h"
#include "drawing/objectdata/od_format.h"

namespace veltor::objectdata {

using dxf::Tag;
using dxf::Tags;
using model::Handle;
using model::kNoRecord;
using model::RecordId;

namespace {

Status CheckName(const std::string& name, const char* what) {
  if (name.empty()) return Status::Error(std::string(what) + " name is empty");
  for (unsigned char c : name)
    if (c < 32) return Status::Error(std::string(what) + " name '" + name + "' holds a control character");
  return Status::Ok();
}

}  // namespace

const char* ColumnTypeName(ColumnType type) {
  switch (type) {
    case ColumnType::kInteger: return "Integer";
    case ColumnType::kReal: return "Real";
    case ColumnType::kCharacter: return "Character";
    case ColumnType::kPoint: return "Point";
  }
  return "Unknown";
}

Status ObjectDataStore::CanWrite() const {
  // Object Data lives in dictionaries and XRECORDs, which R12 files cannot hold; R12
  // drawings can be converted up with SAVEAS, R13 and R14 ones cannot.
  if (model::IsR12OrEarlier(doc_))
    return Status::Error("Object Data: R12 drawings cannot hold Object Data (this drawing is " +
                         doc_.version() + "); save the drawing as R2000 or later with SAVEAS first");
  if (!doc_.AtLeast("AC1015"))
    return Status::Error("Object Data: it needs a drawing of release R2000 (AC1015) or later; "
                         "this drawing is " + doc_.version());
  if (model::NamedObjectDictionary(doc_) == kNoRecord)
    return Status::Error("the drawing has no root dictionary to hold Object Data");
  return Status::Ok();
}

RecordId ObjectDataStore::CatalogueDictionary() const {
  RecordId root = model::NamedObjectDictionary(doc_);
  if (root == kNoRecord) return kNoRecord;
  return model::DictionaryLookup(doc_, root, kCatalogueKey);
}

const std::vector<ObjectDataStore::TableEntry>& ObjectDataStore::Catalogue() const {
  if (catalogue_loaded_ && (catalogue_dictionary_ == kNoRecord ||
                            !doc_.store().at(catalogue_dictionary_).erased))
    return catalogue_;
  catalogue_.clear();
  RecordId dict = CatalogueDictionary();
  catalogue_dictionary_ = dict;
  if (dict != kNoRecord) {
    for (const auto& entry : model::DictionaryEntries(doc_, dict)) {
      RecordId xrec = doc_.Find(entry.handle);
      if (xrec == kNoRecord || doc_.TypeOf(xrec) != "XRECORD") continue;
      TableDef def;
      if (!ParseTableDef(doc_, model::XRecordData(doc_, xrec), def)) continue;
      catalogue_.push_back(TableEntry{def.name, def, entry.handle, xrec});
    }
  }
  catalogue_loaded_ = true;
  return catalogue_;
}

const ObjectDataStore::TableEntry* ObjectDataStore::FindEntry(const std::string& name) const {
  for (const TableEntry& e : Catalogue())
    if (e.name == name) return &e;
  return nullptr;
}

const ObjectDataStore::TableEntry* ObjectDataStore::FindEntry(Handle handle) const {
  for (const TableEntry& e : Catalogue())
    if (e.handle == handle) return &e;
  return nullptr;
}

std::vector<std::string> ObjectDataStore::TableNames() const {
  std::vector<std::string> names;
  for (const TableEntry& e : Catalogue()) names.push_back(e.name);
  return names;
}

bool ObjectDataStore::HasTable(const std::string& name) const { return FindEntry(name) != nullptr; }

Result<TableDef> ObjectDataStore::GetTable(const std::string& name) const {
  const TableEntry* entry = FindEntry(name);
  if (!entry) return Status::Error("table '" + name + "' does not exist");
  return entry->def;
}

Status ObjectDataStore::CreateTable(const TableDef& def) {
  Status ok = CanWrite();
  if (!ok.ok()) return ok;
  if (Status s = CheckName(def.name, "table"); !s.ok()) return s;
  if (HasTable(def.name)) return Status::Error("table '" + def.name + "' already exists");
  std::set<std::string> seen;
  for (const ColumnDef& c : def.columns) {
    if (Status s = CheckName(c.name, "column"); !s.ok()) return s.Wrap("table '" + def.name + "'");
    if (!seen.insert(c.name).second)
      return Status::Error("table '" + def.name + "': column '" + c.name + "' appears twice");
    int type = static_cast<int>(c.type);
    if (type < 1 || type > 4)
      return Status::Error("table '" + def.name + "': column '" + c.name + "' has no valid type");
  }
  RecordId dict = CatalogueDictionary();
  if (dict == kNoRecord) {
    RecordId root = model::NamedObjectDictionary(doc_);
    dict = model::AddDictionary(doc_, doc_.store().at(root).handle);
    model::SetDictionaryEntry(doc_, root, kCatalogueKey, doc_.store().at(dict).handle);
  }
  RecordId xrec = model::AddXRecord(doc_, doc_.store().at(dict).handle, TableDefTags(doc_, def));
  Handle handle = doc_.store().at(xrec).handle;
  // Keys are generated from the handle: dictionary keys ignore case, table names do not.
  model::SetDictionaryEntry(doc_, dict, "T" + dxf::FormatHandle(handle), handle);
  Invalidate();
  return Status::Ok();
}

Status ObjectDataStore::WriteTable(const TableEntry& entry, const TableDef& def) {
  model::SetXRecordData(doc_, entry.record, TableDefTags(doc_, def));
  Invalidate();
  return Status::Ok();
}

Status ObjectDataStore::DeleteTable(const std::string& name) {
  const TableEntry* found = FindEntry(name);
  if (!found) return Status::Error("table '" + name + "' does not exist");
  TableEntry entry = *found;
  // Records of the table go first, so no record is left pointing at a missing table.
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0) continue;
    std::vector<StoredRecord> records = ReadStored(id);
    size_t before = records.size();
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [&](const StoredRecord& r) { return r.table == entry.handle; }),
                  records.end());
    if (records.size() != before) WriteStored(id, records);
  }
  RecordId dict = CatalogueDictionary();
  model::RemoveDictionaryEntry(doc_, dict, "T" + dxf::FormatHandle(entry.handle));
  model::EraseOwnedTree(doc_, entry.record);
  Invalidate();
  return Status::Ok();
}

Status ObjectDataStore::RenameTable(const std::string& name, const std::string& new_name) {
  const TableEntry* entry = FindEntry(name);
  if (!entry) return Status::Error("table '" + name + "' does not exist");
  if (Status s = CheckName(new_name, "table"); !s.ok()) return s;
  if (name == new_name) return Status::Ok();
  if (HasTable(new_name)) return Status::Error("table '" + new_name + "' already exists");
  auto def = GetTable(name);
  if (!def.ok()) return def.status();
  def->name = new_name;
  return WriteTable(*entry, *def);
}

template <typename Edit>
void ObjectDataStore::EditRecordsOf(Handle handle, Edit edit) {
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0 || s.at(id).erased) continue;
    std::vector<StoredRecord> records = ReadStored(id);
    bool changed = false;
    for (StoredRecord& r : records)
      if (r.table == handle) {
        edit(r.values);
        changed = true;
      }
    if (changed) WriteStored(id, records);
  }
}

Status ObjectDataStore::AddColumn(const std::string& table, const ColumnDef& column) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  if (Status s = CheckName(column.name, "column"); !s.ok()) return s;
  for (const ColumnDef& c : def->columns)
    if (c.name == column.name)
      return Status::Error("table '" + table + "': column '" + column.name + "' already exists");
  ColumnDef added = column;
  added.default_value = ConvertValue(column.default_value, column.type);
  Handle handle = FindEntry(table)->handle;
  size_t count = def->columns.size();
  def->columns.push_back(added);
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<FieldValue>& values) {
    values.resize(count, FieldValue());
    values.push_back(added.default_value);
  });
  return written;
}

Status ObjectDataStore::RemoveColumn(const std::string& table, const std::string& column) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  size_t index = 0;
  while (index < def->columns.size() && def->columns[index].name != column) ++index;
  if (index == def->columns.size())
    return Status::Error("table '" + table + "': column '" + column + "' does not exist");
  Handle handle = FindEntry(table)->handle;
  def->columns.erase(def->columns.begin() + static_cast<long>(index));
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<FieldValue>& values) {
    if (index < values.size()) values.erase(values.begin() + static_cast<long>(index));
  });
  return written;
}

Status ObjectDataStore::RenameColumn(const std::string& table, const std::string& column,
                                     const std::string& new_name) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  if (Status s = CheckName(new_name, "column"); !s.ok()) return s;
  ColumnDef* target = nullptr;
  for (ColumnDef& c : def->columns) {
    if (c.name == column) target = &c;
    else if (c.name == new_name)
      return Status::Error("table '" + table + "': column '" + new_name + "' already exists");
  }
  if (!target) return Status::Error("table '" + table + "': column '" + column + "' does not exist");
  target->name = new_name;
  return WriteTable(*FindEntry(table), *def);
}

Status ObjectDataStore::RetypeColumn(const std::string& table, const std::string& column,
                                     ColumnType type) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  size_t index = 0;
  while (index < def->columns.size() && def->columns[index].name != column) ++index;
  if (index == def->columns.size())
    return Status::Error("table '" + table + "': column '" + column + "' does not exist");
  ColumnDef& c = def->columns[index];
  if (c.type == type) return Status::Ok();
  c.type = type;
  c.default_value = ConvertValue(c.default_value, type);
  Handle handle = FindEntry(table)->handle;
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<FieldValue>& values) {
    if (index < values.size()) values[index] = ConvertValue(values[index], type);
  });
  return written;
}

RecordId ObjectDataStore::RecordsXRecord(RecordId entity) const {
  Handle xdict = doc_.store().at(entity).xdict;
  if (xdict == 0) return kNoRecord;
  RecordId dict = doc_.Find(xdict);
  if (dict == kNoRecord) return kNoRecord;
  // Scanned in place: this runs for every entity when a command walks the drawing.
  Handle found = 0;
  bool key_matched = false;
  doc_.store().ForEachTag(dict, [&](int code, std::string_view value) {
    if (code == 3) {
      key_matched = value == kRecordsKey;
    } else if ((code == 350 || code == 360) && key_matched) {
      dxf::ParseHandle(value, found);
      return false;
    }
    return true;
  });
  return found == 0 ? kNoRecord : doc_.Find(found);
}

std::vector<ObjectDataStore::StoredRecord> ObjectDataStore::ReadStored(RecordId entity) const {
  std::vector<StoredRecord> out;
  RecordId xrec = RecordsXRecord(entity);
  if (xrec == kNoRecord) return out;
  Tags data = model::XRecordData(doc_, xrec);
  if (data.empty() || data[0].code != 1 || data[0].value != kRecordsMarker) return out;
  size_t i = 1;
  if (i < data.size() && data[i].code == 70) ++i;
  while (i < data.size()) {
    if (data[i].code != 340) {
      ++i;  // unknown tag from a newer writer: skip it
      continue;
    }
    StoredRecord record;
    dxf::ParseHandle(data[i++].value, record.table);
    FieldValue value;
    while (i < data.size() && data[i].code != 340) {
      if (ReadValueTags(doc_, data, i, value))
        record.values.push_back(value);
      else
        ++i;
    }
    out.push_back(std::move(record));
  }
  return out;
}

void ObjectDataStore::WriteStored(RecordId entity, const std::vector<StoredRecord>& records) {
  RecordId xrec = RecordsXRecord(entity);
  if (records.empty()) {
    if (xrec != kNoRecord) {
      model::RemoveDictionaryEntry(doc_, model::ExtensionDictionary(doc_, entity), kRecordsKey);
      model::EraseOwnedTree(doc_, xrec);
    }
    return;
  }
  Tags data{{1, kRecordsMarker}, {70, std::to_string(kFormatVersion)}};
  for (const StoredRecord& r : records) {
    data.push_back({340, dxf::FormatHandle(r.table)});
    for (const FieldValue& v : r.values) AppendValueTags(doc_, v, data);
  }
  if (xrec != kNoRecord) {
    model::SetXRecordData(doc_, xrec, std::move(data));
    return;
  }
  RecordId dict = model::EnsureExtensionDictionary(doc_, entity);
  Handle dict_handle = doc_.store().at(dict).handle;
  xrec = model::AddXRecord(doc_, dict_handle, std::move(data));
  model::SetDictionaryEntry(doc_, dict, kRecordsKey, doc_.store().at(xrec).handle);
}

Status ObjectDataStore::CheckRecord(const OdRecord& record, StoredRecord& out) const {
  auto def = GetTable(record.table);
  if (!def.ok()) return def.status();
  if (record.values.size() != def->columns.size())
    return Status::Error("table '" + record.table + "' has " +
                         std::to_string(def->columns.size()) + " columns, the record " +
                         std::to_string(record.values.size()) + " values");
  out.table = FindEntry(record.table)->handle;
  out.values.clear();
  for (size_t i = 0; i < record.values.size(); ++i)
    out.values.push_back(ConvertValue(record.values[i], def->columns[i].type));
  return Status::Ok();
}

std::vector<OdRecord> ObjectDataStore::Records(RecordId entity) const {
  std::vector<OdRecord> out;
  for (StoredRecord& stored : ReadStored(entity)) {
    const TableEntry* entry = FindEntry(stored.table);
    if (!entry) continue;  // a record of a deleted or foreign table
    // The cached definition: copying it per record would dominate a walk of the drawing.
    const std::vector<ColumnDef>& columns = entry->def.columns;
    OdRecord record;
    record.table = entry->name;
    for (size_t i = 0; i < columns.size(); ++i) {
      const ColumnDef& c = columns[i];
      record.values.push_back(i < stored.values.size() ? ConvertValue(stored.values[i], c.type)
                                                       : c.default_value);
    }
    out.push_back(std::move(record));
  }
  return out;
}

std::vector<std::string> ObjectDataStore::RecordTableNames(RecordId entity) const {
  std::vector<std::string> names;
  RecordId xrec = RecordsXRecord(entity);
  if (xrec == kNoRecord) return names;
  const std::vector<TableEntry>& catalogue = Catalogue();
  doc_.store().ForEachTag(xrec, [&](int code, std::string_view value) {
    if (code != 340) return true;
    Handle h = 0;
    dxf::ParseHandle(value, h);
    for (const TableEntry& e : catalogue)
      if (e.handle == h) {
        names.push_back(e.name);
        break;
      }
    return true;
  });
  return names;
}

Status ObjectDataStore::AddRecord(RecordId entity, const OdRecord& record) {
  if (Status s = CanWrite(); !s.ok()) return s;
  StoredRecord stored;
  if (Status s = CheckRecord(record, stored); !s.ok()) return s;
  std::vector<StoredRecord> records = ReadStored(entity);
  records.push_back(std::move(stored));
  WriteStored(entity, records);
  return Status::Ok();
}

Status ObjectDataStore::UpdateRecord(RecordId entity, size_t index, const OdRecord& record) {
  std::vector<StoredRecord> records = ReadStored(entity);
  if (index >= records.size())
    return Status::Error("the entity has no record " + std::to_string(index + 1));
  StoredRecord stored;
  if (Status s = CheckRecord(record, stored); !s.ok()) return s;
  records[index] = std::move(stored);
  WriteStored(entity, records);
  return Status::Ok();
}

Status ObjectDataStore::RemoveRecord(RecordId entity, size_t index) {
  std::vector<StoredRecord> records = ReadStored(entity);
  if (index >= records.size())
    return Status::Error("the entity has no record " + std::to_string(index + 1));
  records.erase(records.begin() + static_cast<long>(index));
  WriteStored(entity, records);
  return Status::Ok();
}

Result<OdRecord> ObjectDataStore::NewRecord(const std::string& table) const {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  OdRecord record;
  record.table = table;
  for (const ColumnDef& c : def->columns) record.values.push_back(c.default_value);
  return record;
}

std::map<std::string, size_t> ObjectDataStore::RecordCounts() const {
  std::map<std::string, size_t> counts;
  for (const TableEntry& e : Catalogue()) counts[e.name] = 0;
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0 || s.at(id).erased) continue;
    for (const std::string& name : RecordTableNames(id)) ++counts[name];
  }
  return counts;
}

}  // namespace veltor::objectdata
