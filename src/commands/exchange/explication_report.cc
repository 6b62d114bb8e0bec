#include "commands/exchange/explication_report.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>

#include "commands/exchange/csv_text.h"
#include "od/string_table.h"
#include "od/text.h"
#include "od/value.h"

namespace veltor::commands {

namespace {

std::string NumberText(double number) { return od::ValueToText(od::Value::Real(number)); }

std::string OptionalNumber(const std::optional<double>& number) {
  return number ? NumberText(*number) : std::string();
}

// Orders group values: numbers by value, everything else by its text.
bool GroupBefore(const od::Value& a, const od::Value& b) {
  auto number = [](const od::Value& v) -> std::optional<double> {
    if (v.type() == od::ValueType::kInteger) return v.integer();
    if (v.type() == od::ValueType::kReal) return v.real();
    return std::nullopt;
  };
  std::optional<double> x = number(a), y = number(b);
  if (x && y) return *x < *y;
  return od::LessOrdinalUtf16()(od::ValueToText(a), od::ValueToText(b));
}

// The layer names by layer id, read once for the whole report.
std::unordered_map<od::ObjectId, std::string> LayerNames(const od::Database& db) {
  std::unordered_map<od::ObjectId, std::string> names;
  for (const od::LayerInfo& layer : db.Layers()) names.emplace(layer.id, layer.name);
  return names;
}

}  // namespace

ExplicationReport BuildExplication(od::Host& host, const od::EntityList& entities,
                                   const od::TableDefinition& table, const std::string& group_by) {
  ExplicationReport report;
  report.header = {od::Str(od::kStrCsvHandle), od::Str(od::kStrCsvType), od::Str(od::kStrCsvLayer),
                   od::Str(od::kStrCsvLength), od::Str(od::kStrCsvArea)};
  for (const od::ColumnDefinition& column : table.columns) report.header.push_back(column.name);
  report.group_by = group_by;
  const int group_column = group_by.empty() ? -1 : table.ColumnIndex(group_by);

  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  if (!db || !project.ok()) return report;
  const od::ObjectDataContainer& container = (*project)->Container();
  const auto layers = LayerNames(*db);
  std::vector<std::pair<od::Value, ExplicationGroup>> groups;
  std::unordered_map<std::string, size_t> group_of_text;

  for (od::EntityId entity : entities) {
    size_t damaged = 0;
    std::vector<od::Record> records = container.RecordsOf(entity, {table.name}, damaged);
    if (records.empty()) continue;
    auto layer = layers.find(db->LayerOf(entity));
    std::vector<std::string> facts = {db->EntityHandle(entity), db->EntityType(entity),
                                      layer == layers.end() ? std::string() : layer->second};
    std::optional<double> length = db->Length(entity);
    std::optional<double> area = db->Area(entity);
    for (const od::Record& record : records) {
      std::vector<std::string> row = facts;
      row.push_back(OptionalNumber(length));
      row.push_back(OptionalNumber(area));
      for (const od::Value& value : record.values) row.push_back(od::ValueToText(value));
      report.rows.push_back(std::move(row));
      if (group_column < 0 || static_cast<size_t>(group_column) >= record.values.size()) continue;
      const od::Value& key = record.values[group_column];
      std::string key_text = od::ValueToText(key);
      auto [at, added] = group_of_text.emplace(key_text, groups.size());
      if (added) groups.push_back({key, ExplicationGroup{key_text}});
      ExplicationGroup& group = groups[at->second].second;
      ++group.records;
      group.total_length += length.value_or(0);
      group.total_area += area.value_or(0);
    }
  }
  std::stable_sort(groups.begin(), groups.end(),
                   [](const auto& a, const auto& b) { return GroupBefore(a.first, b.first); });
  for (auto& group : groups) report.groups.push_back(std::move(group.second));
  return report;
}

std::string ExplicationCsv(const ExplicationReport& report) {
  std::string csv = kUtf8Bom;
  csv += CsvLine(report.header);
  for (const std::vector<std::string>& row : report.rows) csv += CsvLine(row);
  if (!report.group_by.empty()) {
    csv += "\r\n";
    csv += CsvLine({report.group_by, od::Str(od::kStrCsvRecords), od::Str(od::kStrCsvTotalLength),
                    od::Str(od::kStrCsvTotalArea)});
    for (const ExplicationGroup& group : report.groups)
      csv += CsvLine({group.value, std::to_string(group.records), NumberText(group.total_length),
                      NumberText(group.total_area)});
  }
  return csv;
}

}  // namespace veltor::commands
