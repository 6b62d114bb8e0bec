// od::ObjectDataContainer over the Map Object Data container of one project. Tables, records
// and iterators are fetched per call and released before it returns.
#pragma once

#include "od/object_data.h"

class AcMapODContainer;

namespace veltor::arx {

class ArxObjectData : public od::ObjectDataContainer {
 public:
  explicit ArxObjectData(AcMapODContainer* container) : container_(container) {}

  std::vector<std::string> TableNames() const override;
  Result<od::TableDefinition> GetTable(const std::string& name) const override;
  std::vector<od::Record> Records(od::EntityId entity) const override;
  std::vector<std::string> RecordTableNames(od::EntityId entity) const override;
  size_t DamagedRecordCount(od::EntityId entity) const override;
  od::RecordNames ReadRecordNames(od::EntityId entity) const override;
  Status AddRecord(od::EntityId entity, const od::Record& record) override;
  Status UpdateRecord(od::EntityId entity, size_t index, const od::Record& record) override;
  Status RemoveRecord(od::EntityId entity, size_t index) override;
  Result<od::Record> NewRecord(const std::string& table) const override;
  Status CreateTable(const od::TableDefinition& definition) override;
  Status DeleteTable(const std::string& name) override;
  Status RenameTable(const std::string& name, const std::string& new_name) override;
  Status AddColumn(const std::string& table, const od::ColumnDefinition& column) override;
  Status RemoveColumn(const std::string& table, const std::string& column) override;
  Status RenameColumn(const std::string& table, const std::string& column,
                      const std::string& new_name) override;

 private:
  // Reads every record of the entity; `damaged` counts those that cannot be read.
  std::vector<od::Record> ReadAll(od::EntityId entity, size_t& damaged) const;
  // Changes the definition of `table` through `change` (false: refused, with `why`).
  template <typename Change>
  Status ChangeDefinition(const std::string& table, Change change);

  AcMapODContainer* container_;
};

}  // namespace veltor::arx
