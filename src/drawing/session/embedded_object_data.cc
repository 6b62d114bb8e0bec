#include "drawing/session/embedded_object_data.h"

#include "drawing/model/entity.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

namespace {

// A column the store can keep: one of the four types, its default of that type.
Result<od::ColumnDefinition> StorableColumn(const od::ColumnDefinition& column) {
  if (column.type == od::ValueType::kUnknown)
    return Status::Error("column '" + column.name + "': a column needs a type");
  od::ColumnDefinition out = column;
  if (out.default_value.type() != out.type) out.default_value = od::Value(out.type);
  return out;
}

}  // namespace

model::RecordId EmbeddedObjectData::Entity(od::EntityId id) const { return RecordOf(doc_, id); }

std::vector<std::string> EmbeddedObjectData::TableNames() const { return store_.TableNames(); }

Result<od::TableDefinition> EmbeddedObjectData::GetTable(const std::string& name) const {
  Result<od::TableDefinition> def = store_.GetTable(name);
  if (def.ok()) return def;
  if (attached_)
    if (auto other = attached_(name)) return *std::move(other);
  return def.status();
}

std::vector<od::Record> EmbeddedObjectData::Records(od::EntityId entity) const {
  model::RecordId record = Entity(entity);
  if (record == model::kNoRecord) return {};
  return store_.Records(record);
}

std::vector<od::Record> EmbeddedObjectData::RecordsOf(od::EntityId entity,
                                                      const std::vector<std::string>& tables,
                                                      size_t& damaged) const {
  damaged = 0;
  model::RecordId record = Entity(entity);
  if (record == model::kNoRecord) return {};
  return store_.RecordsOf(record, tables, damaged);
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
      if (Status s = store_.CreateTable(*def); !s.ok()) return s;
    }
  }
  if (Status s = store_.AddRecord(target, record); !s.ok()) return s;
  listener_.Modified(entity);
  return Status::Ok();
}

Status EmbeddedObjectData::UpdateRecord(od::EntityId entity, size_t index, const od::Record& record) {
  model::RecordId target = Entity(entity);
  if (target == model::kNoRecord) return Status::Error("update record: the entity cannot be opened");
  if (Status s = store_.UpdateRecord(target, index, record); !s.ok()) return s;
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
  od::TableDefinition storable = definition;
  for (od::ColumnDefinition& c : storable.columns) {
    Result<od::ColumnDefinition> column = StorableColumn(c);
    if (!column.ok()) return column.status().Wrap("table '" + definition.name + "'");
    c = std::move(column).value();
  }
  return store_.CreateTable(storable);
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
  Result<od::ColumnDefinition> def = StorableColumn(column);
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
