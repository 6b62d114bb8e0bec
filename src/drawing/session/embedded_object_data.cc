#include "drawing/session/embedded_object_data.h"

#include "drawing/model/entity.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

od::Value ToValue(const objectdata::FieldValue& field) {
  switch (field.type) {
    case objectdata::ColumnType::kInteger: return od::Value::Integer(field.integer);
    case objectdata::ColumnType::kReal: return od::Value::Real(field.real);
    case objectdata::ColumnType::kCharacter: return od::Value::Character(field.text);
    case objectdata::ColumnType::kPoint: return od::Value::Point({field.x, field.y, field.z});
  }
  return od::Value();
}

objectdata::FieldValue ToField(const od::Value& value) {
  switch (value.type()) {
    case od::ValueType::kInteger: return objectdata::FieldValue::Integer(value.integer());
    case od::ValueType::kReal: return objectdata::FieldValue::Real(value.real());
    case od::ValueType::kPoint: {
      od::Point3 p = value.point();
      return objectdata::FieldValue::Point(p.x, p.y, p.z);
    }
    case od::ValueType::kCharacter:
    case od::ValueType::kUnknown: break;
  }
  return objectdata::FieldValue::Text(value.text());
}

namespace {

od::ValueType ToValueType(objectdata::ColumnType type) {
  return static_cast<od::ValueType>(static_cast<int>(type));
}

std::vector<od::Value> ToValues(const std::vector<objectdata::FieldValue>& fields) {
  std::vector<od::Value> values;
  values.reserve(fields.size());
  for (const auto& f : fields) values.push_back(ToValue(f));
  return values;
}

objectdata::OdRecord ToOdRecord(const od::Record& record) {
  objectdata::OdRecord out;
  out.table = record.table;
  for (const od::Value& v : record.values) out.values.push_back(ToField(v));
  return out;
}

Result<objectdata::ColumnDef> ToColumnDef(const od::ColumnDefinition& column) {
  if (column.type == od::ValueType::kUnknown)
    return Status::Error("column '" + column.name + "': a column needs a type");
  objectdata::ColumnDef out;
  out.name = column.name;
  out.type = static_cast<objectdata::ColumnType>(static_cast<int>(column.type));
  out.description = column.description;
  out.default_value = column.default_value.type() == column.type
                          ? ToField(column.default_value)
                          : objectdata::FieldValue::Zero(out.type);
  return out;
}

}  // namespace

od::TableDefinition ToDefinition(const objectdata::TableDef& def) {
  od::TableDefinition out;
  out.name = def.name;
  out.description = def.description;
  for (const objectdata::ColumnDef& c : def.columns)
    out.columns.push_back({c.name, ToValueType(c.type), c.description, ToValue(c.default_value)});
  return out;
}

objectdata::TableDef ToTableDef(const od::TableDefinition& def) {
  objectdata::TableDef out;
  out.name = def.name;
  out.description = def.description;
  for (const od::ColumnDefinition& c : def.columns) {
    Result<objectdata::ColumnDef> column = ToColumnDef(c);
    if (column.ok()) out.columns.push_back(std::move(column).value());
  }
  return out;
}

model::RecordId EmbeddedObjectData::Entity(od::EntityId id) const { return RecordOf(doc_, id); }

std::vector<std::string> EmbeddedObjectData::TableNames() const { return store_.TableNames(); }

Result<od::TableDefinition> EmbeddedObjectData::GetTable(const std::string& name) const {
  Result<objectdata::TableDef> def = store_.GetTable(name);
  if (def.ok()) return ToDefinition(*def);
  if (attached_)
    if (auto other = attached_(name)) return *std::move(other);
  return def.status();
}

std::vector<od::Record> EmbeddedObjectData::Records(od::EntityId entity) const {
  std::vector<od::Record> out;
  model::RecordId record = Entity(entity);
  if (record == model::kNoRecord) return out;
  for (objectdata::OdRecord& r : store_.Records(record))
    out.push_back({std::move(r.table), ToValues(r.values)});
  return out;
}

std::vector<std::string> EmbeddedObjectData::RecordTableNames(od::EntityId entity) const {
  model::RecordId record = Entity(entity);
  if (record == model::kNoRecord) return {};
  return store_.RecordTableNames(record);
}

size_t EmbeddedObjectData::DamagedRecordCount(od::EntityId entity) const {
  model::RecordId record = Entity(entity);
  if (record == model::kNoRecord) return 0;
  return store_.DamagedRecordCount(record);
}

od::RecordNames EmbeddedObjectData::ReadRecordNames(od::EntityId entity) const {
  od::RecordNames names;
  model::RecordId record = Entity(entity);
  if (record != model::kNoRecord) names.tables = store_.RecordTableNames(record, &names.damaged);
  return names;
}

Result<size_t> EmbeddedObjectData::RemoveAllRecords(od::EntityId entity) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("detach records: the entity cannot be opened");
  size_t removed = store_.RemoveAllRecords(target);
  if (removed > 0) listener_.Modified(entity);
  return removed;
}

Status EmbeddedObjectData::AddRecord(od::EntityId entity, const od::Record& record) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("attach record: the entity cannot be opened");
  if (!store_.HasTable(record.table) && attached_) {
    // A table only an attached drawing defines comes into this drawing with its first record.
    if (auto def = attached_(record.table)) {
      if (Status s = store_.CreateTable(ToTableDef(*def)); !s.ok()) return s;
    }
  }
  if (Status s = store_.AddRecord(target, ToOdRecord(record)); !s.ok()) return s;
  listener_.Modified(entity);
  return Status::Ok();
}

Status EmbeddedObjectData::UpdateRecord(od::EntityId entity, size_t index, const od::Record& record) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("update record: the entity cannot be opened");
  if (Status s = store_.UpdateRecord(target, index, ToOdRecord(record)); !s.ok()) return s;
  listener_.Modified(entity);
  return Status::Ok();
}

Status EmbeddedObjectData::RemoveRecord(od::EntityId entity, size_t index) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("detach record: the entity cannot be opened");
  if (Status s = store_.RemoveRecord(target, index); !s.ok()) return s;
  listener_.Modified(entity);
  return Status::Ok();
}

Status EmbeddedObjectData::RemoveRecords(od::EntityId entity, std::vector<size_t> indexes) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("detach records: the entity cannot be opened");
  if (indexes.empty()) return Status::Ok();
  if (Status s = store_.RemoveRecords(target, std::move(indexes)); !s.ok()) return s;
  listener_.Modified(entity);
  return Status::Ok();
}

Result<od::Record> EmbeddedObjectData::NewRecord(const std::string& table) const {
  Result<od::TableDefinition> def = GetTable(table);
  if (!def.ok()) return def.status();
  od::Record record;
  record.table = table;
  for (const od::ColumnDefinition& c : def->columns) record.values.push_back(c.default_value);
  return record;
}

Status EmbeddedObjectData::CreateTable(const od::TableDefinition& definition) {
  for (const od::ColumnDefinition& c : definition.columns)
    if (Result<objectdata::ColumnDef> column = ToColumnDef(c); !column.ok())
      return column.status().Wrap("table '" + definition.name + "'");
  return store_.CreateTable(ToTableDef(definition));
}

std::vector<od::EntityId> EmbeddedObjectData::EntitiesWith(const std::string& table) const {
  std::vector<od::EntityId> ids;
  for (model::RecordId r : model::ModelSpaceEntities(doc_)) {
    if (doc_.store().at(r).xdict == 0) continue;
    for (const std::string& name : store_.RecordTableNames(r))
      if (name == table) {
        ids.push_back(IdOf(doc_, r));
        break;
      }
  }
  return ids;
}

Status EmbeddedObjectData::DeleteTable(const std::string& name) {
  std::vector<od::EntityId> touched = EntitiesWith(name);
  if (Status s = store_.DeleteTable(name); !s.ok()) return s;
  for (od::EntityId id : touched) listener_.Modified(id);
  return Status::Ok();
}

Status EmbeddedObjectData::RenameTable(const std::string& name, const std::string& new_name) {
  return store_.RenameTable(name, new_name);
}

Status EmbeddedObjectData::AddColumn(const std::string& table, const od::ColumnDefinition& column) {
  Result<objectdata::ColumnDef> def = ToColumnDef(column);
  if (!def.ok()) return def.status();
  std::vector<od::EntityId> touched = EntitiesWith(table);
  if (Status s = store_.AddColumn(table, *def); !s.ok()) return s;
  for (od::EntityId id : touched) listener_.Modified(id);
  return Status::Ok();
}

Status EmbeddedObjectData::RemoveColumn(const std::string& table, const std::string& column) {
  std::vector<od::EntityId> touched = EntitiesWith(table);
  if (Status s = store_.RemoveColumn(table, column); !s.ok()) return s;
  for (od::EntityId id : touched) listener_.Modified(id);
  return Status::Ok();
}

Status EmbeddedObjectData::RenameColumn(const std::string& table, const std::string& column,
                                        const std::string& new_name) {
  return store_.RenameColumn(table, column, new_name);
}

}  // namespace veltor::session
