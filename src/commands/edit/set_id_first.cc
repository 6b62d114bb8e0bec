#include "commands/edit/set_id_first.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "od/text.h"

namespace veltor::commands {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The number a value counts as; nothing for a point or an unknown value.
std::optional<long long> NumberOf(const od::Value& value) {
  switch (value.type()) {
    case od::ValueType::kInteger:
      return value.integer();
    case od::ValueType::kReal: {
      double r = value.real();
      if (!(std::fabs(r) < 9e18)) return std::nullopt;
      return static_cast<long long>(std::trunc(r));
    }
    case od::ValueType::kCharacter:
      return od::ParseLeadingInt(FirstDigitRun(value.text()));
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string FirstDigitRun(const std::string& text) {
  size_t first = 0;
  while (first < text.size() && !IsDigit(text[first])) ++first;
  if (first == text.size()) return "";
  if (first + 1 == text.size()) return "0";
  size_t end = first + 1;
  while (end < text.size() && IsDigit(text[end])) ++end;
  return text.substr(first, end - first);
}

int ProposeFirstNumber(od::Host& host, const std::string& table, const std::string& column) {
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return 0;
  const od::ObjectDataContainer& container = (*project)->Container();
  Result<od::TableDefinition> def = container.GetTable(table);
  if (!def.ok()) return 0;
  int index = def->ColumnIndex(column);
  if (index < 0) return 0;
  long long largest = 0;
  const std::vector<std::string> tables{table};
  for (od::EntityId entity : db->ModelSpaceEntities()) {
    size_t damaged = 0;
    std::vector<od::Record> records = container.RecordsOf(entity, tables, damaged);
    // The first record of the table only.
    if (records.empty() || static_cast<size_t>(index) >= records[0].values.size()) continue;
    if (std::optional<long long> n = NumberOf(records[0].values[static_cast<size_t>(index)]))
      largest = std::max(largest, *n);
  }
  if (largest < 1) return 0;
  return static_cast<int>(std::min<long long>(largest + 1, std::numeric_limits<int>::max()));
}

}  // namespace veltor::commands
