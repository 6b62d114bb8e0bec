// The table catalogue: which tables are the host's system tables, which tables a set of
// entities uses, the user-table records of one entity, and the columns tables share.
//
// Table names compare exactly (case-sensitive, ordinal by UTF-16 code unit).
#pragma once

#include <set>
#include <string>
#include <vector>

#include "od/host.h"
#include "od/text.h"

namespace veltor::od {

// Names ordered ascending by UTF-16 code unit ("B" before "a"), each once.
using TableNameSet = std::set<std::string, LessOrdinalUtf16>;

// Above this many usable model space entities, GetTableNames lists every defined table instead
// of scanning the drawing.
inline constexpr size_t kTableScanLimit = 32768;

// True when `name` begins with "TPMCNTR_", "TPMDESC_", "TPMID_", "TPMLINK_", "TPMNODE_" or
// "CNTR_" (case-sensitive, at position 0): the host's topology tables.
bool IsSystemTableName(const std::string& name);

// The user-table names of an entity's records in host order, one per record (a table attached
// twice is listed twice).
std::vector<std::string> GetEntityTableNames(const ObjectDataContainer& container,
                                             EntityId entity);

// The tables used by `entities`; with an empty list, by the usable entities of model space,
// or every defined table when those are more than kTableScanLimit. Empty when the active
// drawing has no Object Data project.
TableNameSet GetTableNames(Host& host, const EntityList& entities, bool exclude_system);

// Every table defined in the container, in container order.
std::vector<std::string> GetAllTableNames(const ObjectDataContainer& container);

// The column names that every one of `tables` has, in the first table's order. Tables that
// cannot be read have no columns.
std::vector<std::string> GetSharedColumns(const ObjectDataContainer& container,
                                          const std::vector<std::string>& tables);

// The column's index in the table's definition, or -1.
int FindColumn(const TableDefinition& table, const std::string& column);

}  // namespace veltor::od
