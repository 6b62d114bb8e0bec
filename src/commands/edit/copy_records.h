// Attaching records taken from a reference entity to target entities: empty records shaped
// like the reference's (default values), or copies of the reference's records with their
// values. Only user tables are copied; records of system tables are ignored.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "od/object_data.h"
#include "od/text.h"

namespace veltor::commands {

// A table name and how many records of it the reference carries, ordered by exact name.
using TableCounts = std::map<std::string, size_t, od::LessOrdinalUtf16>;
// The reference's records grouped by table, each group in host order, ordered by exact name.
using GroupedRecords = std::map<std::string, std::vector<od::Record>, od::LessOrdinalUtf16>;

// The user tables of the reference's records with their record counts.
TableCounts CountReferenceTables(const od::ObjectDataContainer& container, od::EntityId reference);

// For each target in list order (the reference too, when it is one) and each table in map
// order: attaches as many records of the table's default values as the count says. A table
// that cannot be had is skipped; a failed attach is not reported.
void AttachDefaultRecords(od::ObjectDataContainer& container, const TableCounts& tables,
                          const od::EntityList& targets);

// Copies of the reference's user-table records, grouped by table.
GroupedRecords GroupReferenceRecords(const od::ObjectDataContainer& container,
                                     od::EntityId reference);

// For each target in list order (the reference too, when it is one) and each table in map
// order: attaches every record of the group, values included.
void AttachGroupedRecords(od::ObjectDataContainer& container, const GroupedRecords& records,
                          const od::EntityList& targets);

// For each target but the reference itself: attaches copies of the reference's user-table
// records, values included, in host order after the target's own records.
void AttachReferenceRecords(od::ObjectDataContainer& container, od::EntityId reference,
                            const od::EntityList& targets);

}  // namespace veltor::commands
