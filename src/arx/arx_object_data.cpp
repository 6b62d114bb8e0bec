#include "arx/arx_object_data.h"

#include <memory>

#include "arx/object_ids.h"
#include "arx/wide_text.h"
#include "od/value_convert.h"

#include <MapODContainer.h>

namespace veltor::arx {

namespace {

od::Value FromMap(const AcMapValue& value) {
  switch (value.Type()) {
    case AcMap::kInteger: return od::Value::Integer(static_cast<int>(value));
    case AcMap::kReal: return od::Value::Real(static_cast<double>(value));
    case AcMap::kCharacter: return od::Value::Character(Narrow(static_cast<const ACHAR*>(value)));
    case AcMap::kPoint: {
      const AcGePoint3d& p = static_cast<const AcGePoint3d&>(value);
      return od::Value::Point({p.x, p.y, p.z});
    }
    default: return od::Value();
  }
}

// Writes `given` into a Map value, converted to the Map value's own type first (a value in a
// column of another type takes the column's type, as the embedded host does).
void ToMap(const od::Value& given, AcMapValue& out) {
  od::Value value = out.Type() == AcMap::kUnknownType
                        ? given
                        : od::ConvertValue(given, static_cast<od::ValueType>(out.Type()));
  switch (value.type()) {
    case od::ValueType::kInteger: out = static_cast<int>(value.integer()); break;
    case od::ValueType::kReal: out = value.real(); break;
    case od::ValueType::kCharacter: out = Widen(value.text()).c_str(); break;
    case od::ValueType::kPoint: {
      od::Point3 p = value.point();
      out = AcGePoint3d(p.x, p.y, p.z);
      break;
    }
    default: break;
  }
}

od::TableDefinition FromMap(const AcMapODTable& table) {
  od::TableDefinition definition;
  definition.name = Narrow(table.Name());
  definition.description = Narrow(table.Description());
  const AcMapODTableDefinition& columns = table.Definition();
  for (int i = 0; i < columns.Count(); ++i) {
    const AcMapODColumnDefinition& c = columns.Column(i);
    definition.columns.push_back({Narrow(c.Name()), static_cast<od::ValueType>(c.Type()),
                                  Narrow(c.Description()), FromMap(c.DefaultValue())});
  }
  return definition;
}

bool ToMap(const od::ColumnDefinition& column, AcMapODColumnDefinition& out) {
  AcMapValue default_value(static_cast<AcMap::EValueType>(column.type));
  ToMap(column.default_value, default_value);
  return out.SetName(Widen(column.name).c_str()) &&
         out.SetDescription(Widen(column.description).c_str()) &&
         out.SetType(static_cast<AcMap::EValueType>(column.type)) &&
         out.SetDefaultValue(default_value);
}

std::unique_ptr<AcMapODTable> OpenTable(AcMapODContainer* container, const std::string& name) {
  AcMapODTable* table = nullptr;
  if (!container || !container->GetODTable(table, Widen(name).c_str()) || !table) return nullptr;
  return std::unique_ptr<AcMapODTable>(table);
}

std::unique_ptr<AcMapODRecordIterator> RecordsOfEntity(AcMapODContainer* container,
                                                       od::EntityId entity,
                                                       AcMap::EOpenMode mode) {
  Result<AcDbObjectId> id = ToAcDbId(entity);
  if (!id.ok() || !container) return nullptr;
  AcMapODRecordIterator* it = nullptr;
  if (!container->InitRecordIterator(it) || !it) return nullptr;
  std::unique_ptr<AcMapODRecordIterator> owned(it);
  if (!owned->Init(*id, mode)) return nullptr;
  return owned;
}

std::string TableError(const std::string& name, const std::string& reason) {
  return "table " + name + ": " + reason;
}

}  // namespace

std::vector<std::string> ArxObjectData::TableNames() const {
  std::vector<std::string> names;
  AcMapStringArray list;
  if (!container_ || !container_->GetODTableNames(list)) return names;
  for (int i = 0; i < list.Length(); ++i) names.push_back(Narrow(list[i]));
  return names;
}

Result<od::TableDefinition> ArxObjectData::GetTable(const std::string& name) const {
  std::unique_ptr<AcMapODTable> table = OpenTable(container_, name);
  if (!table) return Status::Error(TableError(name, "no such table"));
  return FromMap(*table);
}

std::vector<od::Record> ArxObjectData::ReadAll(od::EntityId entity, size_t& damaged) const {
  damaged = 0;
  std::vector<od::Record> records;
  std::unique_ptr<AcMapODRecordIterator> it = RecordsOfEntity(container_, entity, AcMap::kOpenForRead);
  if (!it) return records;
  for (; !it->IsDone(); it->Next()) {
    AcMapODTableRecord record;
    if (!it->GetRecord(record)) {
      ++damaged;
      continue;
    }
    od::Record r;
    r.table = Narrow(record.ODTableName());
    for (int i = 0; i < record.Count(); ++i) r.values.push_back(FromMap(record.Value(i)));
    records.push_back(std::move(r));
  }
  return records;
}

std::vector<od::Record> ArxObjectData::Records(od::EntityId entity) const {
  size_t damaged = 0;
  return ReadAll(entity, damaged);
}

std::vector<std::string> ArxObjectData::RecordTableNames(od::EntityId entity) const {
  return ReadRecordNames(entity).tables;
}

size_t ArxObjectData::DamagedRecordCount(od::EntityId entity) const {
  size_t damaged = 0;
  (void)ReadAll(entity, damaged);
  return damaged;
}

od::RecordNames ArxObjectData::ReadRecordNames(od::EntityId entity) const {
  od::RecordNames names;
  for (od::Record& r : ReadAll(entity, names.damaged)) names.tables.push_back(std::move(r.table));
  return names;
}

Status ArxObjectData::AddRecord(od::EntityId entity, const od::Record& record) {
  Result<AcDbObjectId> id = ToAcDbId(entity);
  if (!id.ok()) return id.status().Wrap("attach record");
  std::unique_ptr<AcMapODTable> table = OpenTable(container_, record.table);
  if (!table) return Status::Error(TableError(record.table, "no such table"));
  AcMapODTableRecord map_record;
  if (!table->InitRecord(map_record))
    return Status::Error(TableError(record.table, "the host cannot make a record"));
  if (static_cast<size_t>(map_record.Count()) != record.values.size())
    return Status::Error(TableError(record.table, "the record has the wrong number of values"));
  for (int i = 0; i < map_record.Count(); ++i) ToMap(record.values[i], map_record.Value(i));
  if (!table->AddRecord(map_record, *id))
    return Status::Error(TableError(record.table, "the host refused the record"));
  return Status::Ok();
}

Status ArxObjectData::UpdateRecord(od::EntityId entity, size_t index, const od::Record& record) {
  std::unique_ptr<AcMapODRecordIterator> it = RecordsOfEntity(container_, entity, AcMap::kOpenForWrite);
  if (!it) return Status::Error("update record: the entity's records cannot be opened");
  size_t position = 0;
  for (; !it->IsDone(); it->Next()) {
    AcMapODTableRecord current;
    if (!it->GetRecord(current)) continue;  // damaged records have no index
    if (position++ != index) continue;
    if (Narrow(current.ODTableName()) != record.table)
      return Status::Error("update record: the record at that index is of another table");
    if (static_cast<size_t>(current.Count()) != record.values.size())
      return Status::Error("update record: the record has the wrong number of values");
    for (int i = 0; i < current.Count(); ++i) ToMap(record.values[i], current.Value(i));
    if (!it->UpdateRecord(current)) return Status::Error("update record: the host refused");
    return Status::Ok();
  }
  return Status::Error("update record: no record at that index");
}

Status ArxObjectData::RemoveRecord(od::EntityId entity, size_t index) {
  std::unique_ptr<AcMapODRecordIterator> it = RecordsOfEntity(container_, entity, AcMap::kOpenForWrite);
  if (!it) return Status::Error("remove record: the entity's records cannot be opened");
  size_t position = 0;
  for (; !it->IsDone(); it->Next()) {
    AcMapODTableRecord current;
    if (!it->GetRecord(current)) continue;
    if (position++ != index) continue;
    if (!it->RemoveRecord()) return Status::Error("remove record: the host refused");
    return Status::Ok();
  }
  return Status::Error("remove record: no record at that index");
}

Result<od::Record> ArxObjectData::NewRecord(const std::string& table) const {
  Result<od::TableDefinition> definition = GetTable(table);
  if (!definition.ok()) return definition.status();
  od::Record record;
  record.table = table;
  for (const od::ColumnDefinition& c : definition->columns) record.values.push_back(c.default_value);
  return record;
}

Status ArxObjectData::CreateTable(const od::TableDefinition& definition) {
  if (!container_) return Status::Error(TableError(definition.name, "no Object Data here"));
  AcMapODTableDefinition columns;
  for (const od::ColumnDefinition& c : definition.columns) {
    AcMapODColumnDefinition column;
    if (!ToMap(c, column) || !columns.AddColumn(column))
      return Status::Error(TableError(definition.name, "the host refused column " + c.name));
  }
  if (!container_->CreateODTable(Widen(definition.name).c_str(), columns,
                                 Widen(definition.description).c_str()))
    return Status::Error(TableError(definition.name, "the host refused the table"));
  return Status::Ok();
}

Status ArxObjectData::DeleteTable(const std::string& name) {
  if (!container_ || !container_->RemoveODTable(Widen(name).c_str()))
    return Status::Error(TableError(name, "the table could not be deleted"));
  return Status::Ok();
}

Status ArxObjectData::RenameTable(const std::string& name, const std::string& new_name) {
  if (!container_ || !container_->RenameODTable(Widen(name).c_str(), Widen(new_name).c_str()))
    return Status::Error(TableError(name, "the table could not be renamed"));
  return Status::Ok();
}

template <typename Change>
Status ArxObjectData::ChangeDefinition(const std::string& name, Change change) {
  std::unique_ptr<AcMapODTable> table = OpenTable(container_, name);
  if (!table) return Status::Error(TableError(name, "no such table"));
  AcMapODTableDefinition definition = table->Definition();
  std::string why;
  if (!change(definition, why)) return Status::Error(TableError(name, why));
  if (!table->UpdateDefinition(definition))
    return Status::Error(TableError(name, "the host refused the new definition"));
  return Status::Ok();
}

namespace {

int FindColumn(const AcMapODTableDefinition& definition, const std::string& column) {
  for (int i = 0; i < definition.Count(); ++i)
    if (Narrow(definition.Column(i).Name()) == column) return i;
  return -1;
}

}  // namespace

Status ArxObjectData::AddColumn(const std::string& table, const od::ColumnDefinition& column) {
  return ChangeDefinition(table, [&](AcMapODTableDefinition& definition, std::string& why) {
    if (FindColumn(definition, column.name) >= 0) {
      why = "column " + column.name + " exists";
      return false;
    }
    AcMapODColumnDefinition added;
    if (!ToMap(column, added) || !definition.AddColumn(added)) {
      why = "the host refused column " + column.name;
      return false;
    }
    return true;
  });
}

Status ArxObjectData::RemoveColumn(const std::string& table, const std::string& column) {
  return ChangeDefinition(table, [&](AcMapODTableDefinition& definition, std::string& why) {
    int index = FindColumn(definition, column);
    if (index < 0 || !definition.DelColumn(index)) {
      why = "no column " + column;
      return false;
    }
    return true;
  });
}

Status ArxObjectData::RenameColumn(const std::string& table, const std::string& column,
                                   const std::string& new_name) {
  return ChangeDefinition(table, [&](AcMapODTableDefinition& definition, std::string& why) {
    int index = FindColumn(definition, column);
    if (index < 0) {
      why = "no column " + column;
      return false;
    }
    if (FindColumn(definition, new_name) >= 0) {
      why = "column " + new_name + " exists";
      return false;
    }
    AcMapODColumnDefinition renamed = definition.Column(index);
    if (!renamed.SetName(Widen(new_name).c_str()) || !definition.SetColumn(renamed, index)) {
      why = "the host refused the name " + new_name;
      return false;
    }
    return true;
  });
}

}  // namespace veltor::arx
