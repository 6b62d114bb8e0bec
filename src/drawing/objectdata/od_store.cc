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
    if (c < 32 || c == 127)
      return Status::Error(std::string(what) + " name '" + name + "' holds a control character");
  return Status::Ok();
}

std::string Count(size_t n, const char* singular, const char* plural) {
  return std::to_string(n) + " " + (n == 1 ? singular : plural);
}

// Text is written to DXF lines and NUL-terminated binary strings: a NUL cannot be kept.
Status CheckText(const std::string& text, const std::string& where) {
  if (text.find('\0') == std::string::npos) return Status::Ok();
  return Status::Error(where + ": the text holds a NUL character, which a DXF file cannot hold");
}

Status CheckColumnTexts(const std::string& table, const od::ColumnDefinition& c) {
  std::string where = "table '" + table + "': column '" + c.name + "'";
  if (Status s = CheckText(c.description, where); !s.ok()) return s;
  return CheckText(ConvertValue(c.default_value, c.type).text(), where);
}

// The values of one readable record from the tags after its group 340.
std::vector<od::Value> ParseValues(const model::Document& doc, const Tags& tags) {
  std::vector<od::Value> values;
  size_t i = 0;
  while (i < tags.size()) {
    od::Value value;
    std::string why;
    size_t before = i;
    if (ReadValueTags(doc, tags, i, value, why) == ValueRead::kValue) values.push_back(std::move(value));
    if (i == before) ++i;
  }
  return values;
}

}  // namespace

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
  damaged_tables_.clear();
  RecordId dict = CatalogueDictionary();
  catalogue_dictionary_ = dict;
  if (dict != kNoRecord) {
    for (const auto& entry : model::DictionaryEntries(doc_, dict)) {
      RecordId xrec = doc_.Find(entry.handle);
      if (xrec == kNoRecord) {
        damaged_tables_.push_back({entry.handle, "", "the definition object does not exist"});
        continue;
      }
      if (doc_.TypeOf(xrec) != "XRECORD") {
        std::string what = "it is a " + doc_.TypeOf(xrec) + ", not an XRECORD";
        damaged_tables_.push_back({entry.handle, "", what});
        continue;
      }
      od::TableDefinition def;
      Status parsed = ParseTableDef(doc_, model::XRecordData(doc_, xrec), def);
      for (const TableEntry& earlier : catalogue_)
        if (parsed.ok() && earlier.name == def.name)
          parsed = Status::Error("the name is already used by the table defined in " +
                                 dxf::FormatHandle(earlier.handle));
      if (!parsed.ok()) {
        damaged_tables_.push_back({entry.handle, def.name, parsed.message()});
        continue;
      }
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

std::vector<ObjectDataStore::DamagedTable> ObjectDataStore::DamagedTables() const {
  Catalogue();
  return damaged_tables_;
}

Status ObjectDataStore::CheckNameFree(const std::string& name) const {
  if (Status s = CheckName(name, "table"); !s.ok()) return s;
  if (HasTable(name)) return Status::Error("table '" + name + "' already exists");
  for (const DamagedTable& d : DamagedTables())
    if (d.name == name)
      return Status::Error("table '" + name + "' already exists (its definition " +
                           dxf::FormatHandle(d.handle) + " cannot be read and is kept as it is)");
  return Status::Ok();
}

Result<od::TableDefinition> ObjectDataStore::GetTable(const std::string& name) const {
  const TableEntry* entry = FindEntry(name);
  if (!entry) return Status::Error("table '" + name + "' does not exist");
  return entry->def;
}

Status ObjectDataStore::CreateTable(const od::TableDefinition& def) {
  Status ok = CanWrite();
  if (!ok.ok()) return ok;
  if (Status s = CheckNameFree(def.name); !s.ok()) return s;
  std::set<std::string> seen;
  for (const od::ColumnDefinition& c : def.columns) {
    if (Status s = CheckName(c.name, "column"); !s.ok()) return s.Wrap("table '" + def.name + "'");
    if (!seen.insert(c.name).second)
      return Status::Error("table '" + def.name + "': column '" + c.name + "' appears twice");
    int type = static_cast<int>(c.type);
    if (type < 1 || type > 4)
      return Status::Error("table '" + def.name + "': column '" + c.name + "' has no valid type");
    if (Status s = CheckColumnTexts(def.name, c); !s.ok()) return s;
  }
  if (Status s = CheckText(def.description, "table '" + def.name + "'"); !s.ok()) return s;
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

Status ObjectDataStore::WriteTable(const TableEntry& entry, const od::TableDefinition& def) {
  model::SetXRecordData(doc_, entry.record, TableDefTags(doc_, def));
  Invalidate();
  return Status::Ok();
}

Status ObjectDataStore::DeleteTable(const std::string& name) {
  const TableEntry* found = FindEntry(name);
  if (!found) return Status::Error("table '" + name + "' does not exist");
  TableEntry entry = *found;
  if (Status s = CheckNoDamagedRecordsOf(entry, "deleted"); !s.ok()) return s;
  // Records of the table go first, so no record is left pointing at a missing table.
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0) continue;
    StoredRecords stored = ReadStored(id);
    if (!stored.damage.empty()) continue;
    std::vector<StoredRecord>& records = stored.records;
    size_t before = records.size();
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [&](const StoredRecord& r) {
                                   return r.damage.empty() && r.table == entry.handle;
                                 }),
                  records.end());
    if (records.size() != before) WriteStored(id, stored);
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
  if (name == new_name) return CheckName(new_name, "table");
  if (Status s = CheckNameFree(new_name); !s.ok()) return s;
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
    StoredRecords stored = ReadStored(id);
    if (!stored.damage.empty()) continue;  // never rewritten
    bool changed = false;
    for (StoredRecord& r : stored.records)
      if (r.damage.empty() && r.table == handle) {
        edit(r.values);
        changed = true;
      }
    if (changed) WriteStored(id, stored);
  }
}

Status ObjectDataStore::AddColumn(const std::string& table, const od::ColumnDefinition& column) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  if (Status s = CheckName(column.name, "column"); !s.ok()) return s;
  for (const od::ColumnDefinition& c : def->columns)
    if (c.name == column.name)
      return Status::Error("table '" + table + "': column '" + column.name + "' already exists");
  if (Status s = CheckColumnTexts(table, column); !s.ok()) return s;
  od::ColumnDefinition added = column;
  added.default_value = ConvertValue(column.default_value, column.type);
  Handle handle = FindEntry(table)->handle;
  size_t count = def->columns.size();
  def->columns.push_back(added);
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<od::Value>& values) {
    values.resize(count, od::Value());
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
  if (Status s = CheckNoDamagedRecordsOf(*FindEntry(table), "changed"); !s.ok()) return s;
  Handle handle = FindEntry(table)->handle;
  def->columns.erase(def->columns.begin() + static_cast<long>(index));
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<od::Value>& values) {
    if (index < values.size()) values.erase(values.begin() + static_cast<long>(index));
  });
  return written;
}

Status ObjectDataStore::RenameColumn(const std::string& table, const std::string& column,
                                     const std::string& new_name) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  if (Status s = CheckName(new_name, "column"); !s.ok()) return s;
  od::ColumnDefinition* target = nullptr;
  for (od::ColumnDefinition& c : def->columns) {
    if (c.name == column) target = &c;
    else if (c.name == new_name)
      return Status::Error("table '" + table + "': column '" + new_name + "' already exists");
  }
  if (!target) return Status::Error("table '" + table + "': column '" + column + "' does not exist");
  target->name = new_name;
  return WriteTable(*FindEntry(table), *def);
}

Status ObjectDataStore::RetypeColumn(const std::string& table, const std::string& column,
                                     od::ValueType type) {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  size_t index = 0;
  while (index < def->columns.size() && def->columns[index].name != column) ++index;
  if (index == def->columns.size())
    return Status::Error("table '" + table + "': column '" + column + "' does not exist");
  od::ColumnDefinition& c = def->columns[index];
  if (c.type == type) return Status::Ok();
  c.type = type;
  c.default_value = ConvertValue(c.default_value, type);
  Handle handle = FindEntry(table)->handle;
  Status written = WriteTable(*FindEntry(table), *def);
  EditRecordsOf(handle, [&](std::vector<od::Value>& values) {
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

size_t ObjectDataStore::StoredRecords::DamagedCount() const {
  size_t n = 0;
  for (const StoredRecord& r : records)
    if (!r.damage.empty()) ++n;
  return n;
}

size_t ObjectDataStore::StoredRecords::Position(size_t index) const {
  for (size_t i = 0; i < records.size(); ++i)
    if (records[i].damage.empty() && index-- == 0) return i;
  return records.size();
}

ObjectDataStore::StoredRecords ObjectDataStore::ReadStored(RecordId entity) const {
  StoredRecords out;
  RecordId xrec = RecordsXRecord(entity);
  if (xrec == kNoRecord) return out;
  Tags data = model::XRecordData(doc_, xrec);
  size_t i = 0;
  if (data.empty() || data[0].code != 1 || data[0].value != kRecordsMarker) {
    out.damage = "it does not start with the marker " + std::string(kRecordsMarker);
  } else {
    i = 1;
    int32_t version = 0;
    if (i < data.size() && data[i].code == 70) {
      if (!ParseWholeInt32(data[i].value, version) || version != kFormatVersion)
        out.damage = "format version '" + data[i].value + "' is not known";
      ++i;
    }
  }
  while (i < data.size()) {
    if (data[i].code != 340) {
      ++i;  // unknown tag from a newer writer: skip it
      continue;
    }
    size_t start = i;
    StoredRecord record;
    if (!dxf::ParseHandle(data[i].value, record.table) || record.table == 0)
      record.damage = "group 340 holds '" + data[i].value + "', which is not a handle";
    ++i;
    while (i < data.size() && data[i].code != 340) {
      size_t before = i;
      od::Value value;
      std::string why;
      switch (ReadValueTags(doc_, data, i, value, why)) {
        case ValueRead::kValue: record.values.push_back(std::move(value)); break;
        case ValueRead::kNoValue: break;
        case ValueRead::kDamaged:
          if (record.damage.empty())
            record.damage = "value " + std::to_string(record.values.size() + 1) + ": " + why;
          break;
      }
      if (i == before) ++i;
    }
    if (record.damage.empty() && !out.damage.empty()) record.damage = out.damage;
    if (record.damage.empty() && !FindEntry(record.table)) {
      record.damage = "its table (definition " + dxf::FormatHandle(record.table) + ") does not exist";
      for (const DamagedTable& d : damaged_tables_)
        if (d.handle == record.table)
          record.damage = "the definition of its table" + (d.name.empty() ? "" : " '" + d.name + "'") +
                          " cannot be read";
    }
    if (!record.damage.empty()) record.raw.assign(data.begin() + static_cast<long>(start),
                                                  data.begin() + static_cast<long>(i));
    out.records.push_back(std::move(record));
  }
  // A damaged XRECORD counts at least one damaged record, even when it holds no group 340.
  if (!out.damage.empty() && out.records.empty()) out.records.push_back({0, {}, out.damage, {}});
  return out;
}

void ObjectDataStore::WriteStored(RecordId entity, const StoredRecords& stored) {
  RecordId xrec = RecordsXRecord(entity);
  if (stored.records.empty()) {
    if (xrec != kNoRecord) {
      model::RemoveDictionaryEntry(doc_, model::ExtensionDictionary(doc_, entity), kRecordsKey);
      model::EraseOwnedTree(doc_, xrec);
    }
    return;
  }
  Tags data{{1, kRecordsMarker}, {70, std::to_string(kFormatVersion)}};
  for (const StoredRecord& r : stored.records) {
    if (!r.damage.empty()) {
      data.insert(data.end(), r.raw.begin(), r.raw.end());
      continue;
    }
    data.push_back({340, dxf::FormatHandle(r.table)});
    for (const od::Value& v : r.values) AppendValueTags(doc_, v, data);
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

Status ObjectDataStore::CheckChangeable(RecordId entity, const StoredRecords& stored) const {
  if (stored.damage.empty()) return Status::Ok();
  return Status::Error("entity " + dxf::FormatHandle(doc_.store().at(entity).handle) +
                       ": its Object Data cannot be read (" + stored.damage +
                       ") and is kept as it is; only removing all its records changes it");
}

Status ObjectDataStore::CheckNoDamagedRecordsOf(const TableEntry& table, const char* change) const {
  const dxf::RecordStore& s = doc_.store();
  std::vector<std::string> holders;
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0 || s.at(id).erased || ScanRecords(id, nullptr, nullptr, nullptr) == 0) continue;
    StoredRecords stored = ReadStored(id);
    for (const StoredRecord& r : stored.records)
      if (!r.damage.empty() && r.table == table.handle) {
        holders.push_back(dxf::FormatHandle(s.at(id).handle));
        break;
      }
  }
  if (holders.empty()) return Status::Ok();
  std::string list;
  for (size_t i = 0; i < holders.size() && i < 5; ++i) list += (i ? ", " : "") + holders[i];
  if (holders.size() > 5) list += ", ...";
  std::string on = std::to_string(holders.size()) + (holders.size() == 1 ? " entity (" : " entities (");
  return Status::Error("table '" + table.name + "' cannot be " + change +
                       ": damaged records of it, kept as they are, are on " + on + list +
                       "); remove those entities' records first");
}

Status ObjectDataStore::CheckRecord(const od::Record& record, StoredRecord& out) const {
  // The cached definition, not a copy: writes of many records check each one here.
  const TableEntry* entry = FindEntry(record.table);
  if (!entry) return Status::Error("table '" + record.table + "' does not exist");
  const std::vector<od::ColumnDefinition>& columns = entry->def.columns;
  if (record.values.size() != columns.size())
    return Status::Error("table '" + record.table + "' has " +
                         Count(columns.size(), "column", "columns") + ", the record " +
                         Count(record.values.size(), "value", "values"));
  out.table = entry->handle;
  out.values.clear();
  out.values.reserve(columns.size());
  for (size_t i = 0; i < record.values.size(); ++i) {
    out.values.push_back(ConvertValue(record.values[i], columns[i].type));
    // The message is built only when it is needed: this runs for every value written.
    if (out.values.back().text().find('\0') != std::string::npos)
      return CheckText(out.values.back().text(),
                       "table '" + record.table + "': column '" + columns[i].name + "'");
  }
  return Status::Ok();
}

od::Record ObjectDataStore::Complete(const TableEntry& table, std::vector<od::Value> stored) const {
  // The cached definition: copying it per record would dominate a walk of the drawing.
  const std::vector<od::ColumnDefinition>& columns = table.def.columns;
  od::Record record;
  record.table = table.name;
  record.values.reserve(columns.size());
  for (size_t i = 0; i < columns.size(); ++i) {
    const od::ColumnDefinition& c = columns[i];
    if (i >= stored.size())
      record.values.push_back(c.default_value);
    else if (stored[i].type() == c.type)
      record.values.push_back(std::move(stored[i]));
    else
      record.values.push_back(ConvertValue(stored[i], c.type));
  }
  return record;
}

std::vector<od::Record> ObjectDataStore::Records(RecordId entity) const {
  std::vector<od::Record> out;
  for (StoredRecord& stored : ReadStored(entity).records)
    if (stored.damage.empty()) out.push_back(Complete(*FindEntry(stored.table), std::move(stored.values)));
  return out;
}

std::vector<od::Record> ObjectDataStore::RecordsOf(RecordId entity,
                                                   const std::vector<std::string>& tables,
                                                   size_t& damaged) const {
  std::vector<const TableEntry*> wanted;
  for (const std::string& name : tables)
    if (const TableEntry* entry = FindEntry(name)) wanted.push_back(entry);
  std::vector<od::Record> out;
  damaged = 0;
  if (doc_.store().at(entity).xdict == 0) return out;
  damaged = ScanRecords(entity, nullptr, &wanted, &out);
  return out;
}

std::vector<std::string> ObjectDataStore::RecordTableNames(RecordId entity) const {
  std::vector<std::string> names;
  ScanRecords(entity, &names, nullptr, nullptr);
  return names;
}

std::vector<std::string> ObjectDataStore::RecordTableNames(RecordId entity, size_t* damaged) const {
  std::vector<std::string> names;
  *damaged = ScanRecords(entity, &names, nullptr, nullptr);
  return names;
}

size_t ObjectDataStore::ScanRecords(RecordId entity, std::vector<std::string>* names,
                                    const std::vector<const TableEntry*>* wanted,
                                    std::vector<od::Record>* records_out) const {
  RecordId xrec = RecordsXRecord(entity);
  if (xrec == kNoRecord) return 0;
  const std::vector<TableEntry>& catalogue = Catalogue();
  // Scanned in place, with the same checks as ReadStored: this runs for every entity when a
  // command walks the drawing.
  enum class Phase { kHead, kSubclass, kData } phase = Phase::kHead;
  size_t data_index = 0;
  bool xrecord_ok = false;
  const TableEntry* table = nullptr;  // of the record being read, while it is readable
  bool in_record = false;
  int next_axis = 0;  // 20 or 30 when a point's next axis may follow
  size_t records = 0, readable = 0;
  // The tags of the record being read when its table is wanted: only those are parsed.
  Tags wanted_tags;
  bool collecting = false;
  auto finish_record = [&] {
    if (in_record && table && xrecord_ok) {
      ++readable;
      if (names) names->push_back(table->name);
      if (collecting) records_out->push_back(Complete(*table, ParseValues(doc_, wanted_tags)));
    }
    in_record = false;
    collecting = false;
    wanted_tags.clear();
  };
  doc_.store().ForEachTag(xrec, [&](int code, std::string_view value) {
    if (phase == Phase::kHead) {
      if (code == 100 && value == "AcDbXrecord") phase = Phase::kSubclass;
      return true;
    }
    if (phase == Phase::kSubclass) {
      phase = Phase::kData;
      if (code == 280) return true;
    }
    size_t at = data_index++;
    if (at == 0) {
      xrecord_ok = code == 1 && value == kRecordsMarker;
      if (xrecord_ok) return true;
    }
    if (at == 1 && code == 70 && xrecord_ok) {
      int32_t version = 0;
      xrecord_ok = ParseWholeInt32(value, version) && version == kFormatVersion;
      return true;
    }
    // A point is 10, then 20 right after it, then 30 right after that (as ReadValueTags).
    int expected_axis = next_axis;
    next_axis = 0;
    if (code == 340) {
      finish_record();
      ++records;
      in_record = true;
      table = nullptr;
      Handle h = 0;
      if (dxf::ParseHandle(value, h))
        for (const TableEntry& e : catalogue)
          if (e.handle == h) {
            table = &e;
            break;
          }
      collecting = table && wanted && std::find(wanted->begin(), wanted->end(), table) != wanted->end();
      return true;
    }
    if (!in_record || !table) return true;
    if (collecting) wanted_tags.push_back({code, std::string(value)});
    int32_t i = 0;
    double d = 0;
    bool number_ok = true;
    if (code == 90) {
      number_ok = ParseWholeInt32(value, i);
    } else if (code == 40) {
      number_ok = ParseWholeDouble(value, d);
    } else if (code == 10 || (code == expected_axis && code != 0)) {
      number_ok = ParseWholeDouble(value, d);
      next_axis = code == 30 ? 0 : code + 10;
    }
    if (!number_ok) table = nullptr;
    return true;
  });
  finish_record();
  if (!xrecord_ok) {
    if (names) names->clear();
    if (records_out) records_out->clear();
    return std::max<size_t>(records, 1);
  }
  return records - readable;
}

Status ObjectDataStore::AddRecord(RecordId entity, const od::Record& record) {
  if (Status s = CanWrite(); !s.ok()) return s;
  StoredRecord stored;
  if (Status s = CheckRecord(record, stored); !s.ok()) return s;
  StoredRecords records = ReadStored(entity);
  if (Status s = CheckChangeable(entity, records); !s.ok()) return s;
  records.records.push_back(std::move(stored));
  WriteStored(entity, records);
  return Status::Ok();
}

Status ObjectDataStore::UpdateRecord(RecordId entity, size_t index, const od::Record& record) {
  StoredRecords records = ReadStored(entity);
  if (Status s = CheckChangeable(entity, records); !s.ok()) return s;
  size_t at = records.Position(index);
  if (at >= records.records.size())
    return Status::Error("the entity has no record " + std::to_string(index + 1));
  StoredRecord stored;
  if (Status s = CheckRecord(record, stored); !s.ok()) return s;
  records.records[at] = std::move(stored);
  WriteStored(entity, records);
  return Status::Ok();
}

Status ObjectDataStore::RemoveRecord(RecordId entity, size_t index) {
  StoredRecords records = ReadStored(entity);
  if (Status s = CheckChangeable(entity, records); !s.ok()) return s;
  size_t at = records.Position(index);
  if (at >= records.records.size())
    return Status::Error("the entity has no record " + std::to_string(index + 1));
  records.records.erase(records.records.begin() + static_cast<long>(at));
  WriteStored(entity, records);
  return Status::Ok();
}

Status ObjectDataStore::RemoveRecords(RecordId entity, std::vector<size_t> indexes) {
  std::sort(indexes.begin(), indexes.end());
  indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
  if (indexes.empty()) return Status::Ok();
  // Every record going and none damaged: nothing needs reading or rewriting, only erasing.
  // (Detaching everything from a large drawing spends most of its time reading records.)
  std::vector<std::string> names;
  if (ScanRecords(entity, &names, nullptr, nullptr) == 0 && !names.empty() && indexes.size() == names.size() &&
      indexes.back() == names.size() - 1) {
    WriteStored(entity, StoredRecords());
    return Status::Ok();
  }
  StoredRecords records = ReadStored(entity);
  if (Status s = CheckChangeable(entity, records); !s.ok()) return s;
  std::vector<size_t> positions;
  for (size_t index : indexes) {
    size_t at = records.Position(index);
    if (at >= records.records.size())
      return Status::Error("the entity has no record " + std::to_string(index + 1));
    positions.push_back(at);
  }
  for (auto at = positions.rbegin(); at != positions.rend(); ++at)
    records.records.erase(records.records.begin() + static_cast<long>(*at));
  WriteStored(entity, records);
  return Status::Ok();
}

size_t ObjectDataStore::RemoveAllRecords(RecordId entity) {
  size_t count = ReadStored(entity).records.size();
  if (count > 0) WriteStored(entity, StoredRecords());
  return count;
}

size_t ObjectDataStore::DamagedRecordCount(RecordId entity) const {
  if (doc_.store().at(entity).xdict == 0) return 0;
  return ScanRecords(entity, nullptr, nullptr, nullptr);
}

std::vector<std::string> ObjectDataStore::DamageReport(size_t max_entities) const {
  std::vector<std::string> lines;
  for (const DamagedTable& d : DamagedTables()) {
    std::string definition = "definition " + dxf::FormatHandle(d.handle);
    std::string table = d.name.empty() ? definition : "'" + d.name + "' (" + definition + ")";
    lines.push_back("Object Data table " + table + " cannot be read: " + d.reason +
                    "; it is kept as it is" + (d.name.empty() ? "" : " and its name stays taken"));
  }
  size_t entities = 0;
  const dxf::RecordStore& s = doc_.store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    if (s.at(id).xdict == 0 || s.at(id).erased || ScanRecords(id, nullptr, nullptr, nullptr) == 0) continue;
    StoredRecords stored = ReadStored(id);
    size_t damaged = stored.DamagedCount();
    if (damaged == 0) continue;
    if (++entities > max_entities) continue;
    std::string entity = "Object Data of entity " + dxf::FormatHandle(s.at(id).handle);
    if (!stored.damage.empty()) {
      lines.push_back(entity + " cannot be read: " + stored.damage + "; it is kept as it is");
      continue;
    }
    size_t first = 0;
    while (stored.records[first].damage.empty()) ++first;
    lines.push_back(entity + ": " + Count(damaged, "record", "records") + " cannot be read (record " +
                    std::to_string(first + 1) + ": " + stored.records[first].damage +
                    "); kept as " + (damaged == 1 ? "it is" : "they are"));
  }
  if (entities > max_entities)
    lines.push_back("... and " + Count(entities - max_entities, "more entity", "more entities") +
                    " with Object Data that cannot be read");
  return lines;
}

Result<od::Record> ObjectDataStore::NewRecord(const std::string& table) const {
  auto def = GetTable(table);
  if (!def.ok()) return def.status();
  od::Record record;
  record.table = table;
  for (const od::ColumnDefinition& c : def->columns) record.values.push_back(c.default_value);
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
