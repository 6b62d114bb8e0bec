#include "od/catalogue.h"

#include <algorithm>

#include "od/gathering.h"

namespace veltor::od {

bool IsSystemTableName(const std::string& name) {
  static const char* const kPrefixes[] = {"TPMCNTR_", "TPMDESC_", "TPMID_",
                                          "TPMLINK_", "TPMNODE_", "CNTR_"};
  for (const char* prefix : kPrefixes)
    if (name.compare(0, std::char_traits<char>::length(prefix), prefix) == 0) return true;
  return false;
}

std::vector<std::string> GetEntityTableNames(const ObjectDataContainer& container,
                                             EntityId entity) {
  std::vector<std::string> names = container.RecordTableNames(entity);
  names.erase(std::remove_if(names.begin(), names.end(), IsSystemTableName), names.end());
  return names;
}

TableNameSet GetTableNames(Host& host, const EntityList& entities, bool exclude_system) {
  TableNameSet names;
  Result<Project*> project = host.ActiveProject();
  if (!project.ok()) return names;
  const ObjectDataContainer& container = (*project)->Container();

  auto add_records_of = [&](const EntityList& list) {
    for (EntityId entity : list)
      for (std::string& name : container.RecordTableNames(entity)) names.insert(std::move(name));
  };
  if (!entities.empty()) {
    add_records_of(entities);
  } else if (Database* db = host.WorkingDatabase()) {
    EntityList all = db->ModelSpaceEntities();
    FilterUsable(*db, all);
    if (all.size() <= kTableScanLimit) {
      add_records_of(all);
    } else {
      for (std::string& name : GetAllTableNames(container)) names.insert(std::move(name));
    }
  }
  if (exclude_system) {
    for (auto it = names.begin(); it != names.end();)
      it = IsSystemTableName(*it) ? names.erase(it) : std::next(it);
  }
  return names;
}

std::vector<std::string> GetAllTableNames(const ObjectDataContainer& container) {
  return container.TableNames();
}

std::vector<std::string> GetSharedColumns(const ObjectDataContainer& container,
                                          const std::vector<std::string>& tables) {
  std::vector<std::string> shared;
  if (tables.empty()) return shared;
  auto columns_of = [&](const std::string& table) {
    std::vector<std::string> names;
    Result<TableDefinition> def = container.GetTable(table);
    if (def.ok())
      for (const ColumnDefinition& column : def->columns) names.push_back(column.name);
    return names;
  };
  shared = columns_of(tables[0]);
  for (size_t i = 1; i < tables.size() && !shared.empty(); ++i) {
    std::vector<std::string> other = columns_of(tables[i]);
    shared.erase(std::remove_if(shared.begin(), shared.end(),
                                [&](const std::string& name) {
                                  return std::find(other.begin(), other.end(), name) ==
                                         other.end();
                                }),
                 shared.end());
  }
  return shared;
}

int FindColumn(const TableDefinition& table, const std::string& column) {
  return table.ColumnIndex(column);
}

int TableDefinition::ColumnIndex(const std::string& column) const {
  for (size_t i = 0; i < columns.size(); ++i)
    if (columns[i].name == column) return static_cast<int>(i);
  return -1;
}

RecordNames ObjectDataContainer::ReadRecordNames(EntityId entity) const {
  return {RecordTableNames(entity), DamagedRecordCount(entity)};
}

Status ObjectDataContainer::RemoveRecords(EntityId entity, std::vector<size_t> indexes) {
  std::sort(indexes.begin(), indexes.end());
  indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
  // From the last, so that each index still names the record it named before.
  for (auto at = indexes.rbegin(); at != indexes.rend(); ++at)
    if (Status s = RemoveRecord(entity, *at); !s.ok()) return s;
  return Status::Ok();
}

}  // namespace veltor::od
