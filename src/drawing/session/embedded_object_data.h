// The Object Data container of the embedded host: od::ObjectDataContainer over the drawing's
// Object Data store.
#pragma once

#include <functional>
#include <optional>

#include "drawing/model/document.h"
#include "drawing/objectdata/od_store.h"
#include "drawing/session/change_listener.h"
#include "od/object_data.h"

namespace veltor::session {

// Finds a table definition among the project's activated attached drawings.
using AttachedTableLookup = std::function<std::optional<od::TableDefinition>(const std::string&)>;

class EmbeddedObjectData : public od::ObjectDataContainer {
 public:
  EmbeddedObjectData(model::Document& doc, ChangeListener& listener)
      : doc_(doc), store_(doc), listener_(listener) {}

  void SetAttachedTableLookup(AttachedTableLookup lookup) { attached_ = std::move(lookup); }
  // Forgets cached definitions (after undo and redo).
  void Refresh() { store_.Refresh(); }
  objectdata::ObjectDataStore& store() { return store_; }

  std::vector<std::string> TableNames() const override;
  Result<od::TableDefinition> GetTable(const std::string& name) const override;
  std::vector<od::Record> Records(od::EntityId entity) const override;
  std::vector<od::Record> RecordsOf(od::EntityId entity, const std::vector<std::string>& tables,
                                    size_t& damaged) const override;
  std::vector<std::string> RecordTableNames(od::EntityId entity) const override;
  size_t DamagedRecordCount(od::EntityId entity) const override;
  od::RecordNames ReadRecordNames(od::EntityId entity) const override;
  // Removes every record of the entity, those that cannot be read too; returns how many.
  Result<size_t> RemoveAllRecords(od::EntityId entity);
  Status AddRecord(od::EntityId entity, const od::Record& record) override;
  Status UpdateRecord(od::EntityId entity, size_t index, const od::Record& record) override;
  Status RemoveRecord(od::EntityId entity, size_t index) override;
  // At once: fails without removing any.
  Status RemoveRecords(od::EntityId entity, std::vector<size_t> indexes) override;
  Result<od::Record> NewRecord(const std::string& table) const override;
  Status CreateTable(const od::TableDefinition& definition) override;
  Status DeleteTable(const std::string& name) override;
  Status RenameTable(const std::string& name, const std::string& new_name) override;
  Status AddColumn(const std::string& table, const od::ColumnDefinition& column) override;
  Status RemoveColumn(const std::string& table, const std::string& column) override;
  Status RenameColumn(const std::string& table, const std::string& column,
                      const std::string& new_name) override;

 private:
  model::RecordId Entity(od::EntityId id) const;
  // Every entity carrying records of `table` (to tell reactors after a table-wide change).
  std::vector<od::EntityId> EntitiesWith(const std::string& table) const;

  model::Document& doc_;
  objectdata::ObjectDataStore store_;
  ChangeListener& listener_;
  AttachedTableLookup attached_;
};

}  // namespace veltor::session
