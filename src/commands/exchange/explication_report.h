// The explication report: one CSV row per record of one table on the given entities (handle,
// entity type, layer, length, area and every field), and optionally a summary per value of
// one field.
#pragma once

#include <string>
#include <vector>

#include "od/host.h"

namespace veltor::commands {

struct ExplicationGroup {
  std::string value;  // the field's value in its text form
  size_t records = 0;
  double total_length = 0;
  double total_area = 0;
};

struct ExplicationReport {
  std::vector<std::string> header;
  std::vector<std::vector<std::string>> rows;
  std::string group_by;  // "" without grouping
  // In ascending order of value: numbers by value, other fields by UTF-16 code unit.
  std::vector<ExplicationGroup> groups;
};

// Reads the records of `table` on each of `entities`, in list order and each entity's record
// order. Length and area are left empty where the entity has none. `group_by` names a field
// of the table or is "". Totals add up the rows of their group: an entity with two records in
// a group counts twice, as its two rows do.
ExplicationReport BuildExplication(od::Host& host, const od::EntityList& entities,
                                   const od::TableDefinition& table, const std::string& group_by);

// The report as CSV bytes: a UTF-8 byte-order mark, the header and the rows; with groups an
// empty line, then the group header (the field's name, "Records", "Total length",
// "Total area") and one line per group.
std::string ExplicationCsv(const ExplicationReport& report);

}  // namespace veltor::commands
