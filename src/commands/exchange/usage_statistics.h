// The census behind VELTOR_STAT: how model space uses Object Data, and the report text.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "od/host.h"
#include "od/text.h"

namespace veltor::commands {

struct UsageStatistics {
  // Every user table defined in the drawing (system tables left out), ordered by UTF-16 code
  // unit ("B" before "a"), with the number of its records attached to model space entities.
  std::map<std::string, uint32_t, od::LessOrdinalUtf16> records_per_table;
  int entities = 0;
  int without_od = 0;
  int with_od = 0;
  // Entities with two records of one table; system tables count here.
  int with_duplicated_od = 0;
  // Entities with two or more records; system tables count here.
  int with_multiple_od = 0;
};

// Walks every entity of model space (not a selection, no layer filter). Without an Object Data
// project every entity counts as without records and no table is defined.
UsageStatistics CountUsage(od::Host& host);

// The report: objects, objects without OD, the per-table block (only when some entity has
// records), objects with OD, duplicated, multiple, the number of user tables and of those no
// record uses. Lines end in "\n".
std::string StatisticsReport(const UsageStatistics& statistics);

}  // namespace veltor::commands
