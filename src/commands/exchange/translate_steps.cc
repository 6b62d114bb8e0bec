#include "commands/exchange/translate_steps.h"

#include <unordered_map>
#include <vector>

#include "od/column_rename.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// A value map for lookups only: the values step looks up every value of the drawing, and
// exact equality is all it needs of the ordered keys.
using LookupMap = std::unordered_map<std::string, std::string>;

// The value maps that apply to one column of one table, most specific first; null where a
// map has nothing for the column.
struct ColumnMaps {
  const LookupMap* per_table = nullptr;
  const LookupMap* per_field = nullptr;
  const LookupMap* global = nullptr;

  bool Any() const { return per_table || per_field || global; }
};

template <typename Map>
const typename Map::mapped_type* Under(const Map& map, const std::string& key) {
  auto at = map.find(key);
  return at == map.end() ? nullptr : &at->second;
}

// The maps of each column of a table, found once per table.
class ValueMapsByTable {
 public:
  ValueMapsByTable(const od::ObjectDataContainer& container, const AliasMaps& maps)
      : container_(container), maps_(maps) {}

  // The maps of the columns of `table` in definition order; empty when none applies.
  const std::vector<ColumnMaps>& Of(const std::string& table) {
    auto [at, added] = by_table_.try_emplace(table);
    if (added) at->second = Build(table);
    return at->second;
  }

 private:
  std::vector<ColumnMaps> Build(const std::string& table) {
    Result<od::TableDefinition> definition = container_.GetTable(table);
    if (!definition.ok()) return {};
    const AliasesBy<AliasMap>* fields_of_table = Under(maps_.table_field_values, table);
    std::vector<ColumnMaps> columns;
    bool any = false;
    for (const od::ColumnDefinition& column : definition->columns) {
      ColumnMaps maps;
      if (fields_of_table) maps.per_table = Lookup(Under(*fields_of_table, column.name));
      maps.per_field = Lookup(Under(maps_.field_values, column.name));
      maps.global = Lookup(&maps_.values);
      any = any || maps.Any();
      columns.push_back(maps);
    }
    if (!any) columns.clear();
    return columns;
  }

  // The lookup copy of `map`, made once; null for a missing or empty map.
  const LookupMap* Lookup(const AliasMap* map) {
    if (!map || map->empty()) return nullptr;
    auto [at, added] = lookups_.try_emplace(map);
    if (added) at->second.insert(map->begin(), map->end());
    return &at->second;
  }

  const od::ObjectDataContainer& container_;
  const AliasMaps& maps_;
  std::unordered_map<std::string, std::vector<ColumnMaps>> by_table_;
  std::unordered_map<const AliasMap*, LookupMap> lookups_;
};

// The alias of `text` in the first map whose alias differs from it; null when none does.
const std::string* NewText(const ColumnMaps& maps, const std::string& text) {
  for (const LookupMap* map : {maps.per_table, maps.per_field, maps.global}) {
    if (!map) continue;
    auto at = map->find(text);
    if (at != map->end() && at->second != text) return &at->second;
  }
  return nullptr;
}

// Replaces the values of one record; true when one of them was given a new text.
bool TranslateRecord(od::Record& record, const std::vector<ColumnMaps>& columns) {
  bool changed = false;
  for (size_t c = 0; c < record.values.size() && c < columns.size(); ++c) {
    if (!columns[c].Any()) continue;
    const std::string* text = NewText(columns[c], od::ValueToText(record.values[c]));
    if (!text) continue;
    SetTranslatedValue(record.values[c], *text);
    changed = true;
  }
  return changed;
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
  std::vector<std::string> parts;
  size_t start = text.find_first_not_of(',');
  while (start != std::string::npos) {
    size_t stop = text.find(',', start);
    parts.push_back(text.substr(start, stop == std::string::npos ? stop : stop - start));
    start = stop == std::string::npos ? stop : text.find_first_not_of(',', stop);
  }
  return parts;
}

void ReportRenameFailure(od::Host& host, od::ColumnRenameOutcome outcome) {
  switch (outcome) {
    case od::ColumnRenameOutcome::kSuccess: return;
    case od::ColumnRenameOutcome::kFailure:
      return host.Ed().Print(od::Str(od::kStrOperationUnsuccessful));
    case od::ColumnRenameOutcome::kDuplicateColumnNames:
      return host.Ed().Print(od::Str(od::kStrDuplicateColumns));
    case od::ColumnRenameOutcome::kColumnNotFound:
      return host.Ed().Print(od::Str(od::kStrColumnNotFound));
    case od::ColumnRenameOutcome::kTableNotFound:
      return host.Ed().Print(od::Str(od::kStrTableNotFound));
  }
}

struct ColumnRename {
  std::string table;
  std::string column;
  std::string new_name;
};

// The alias of `name` in `map`, or `name` itself.
const std::string& AliasOr(const AliasMap* map, const std::string& name) {
  if (!map) return name;
  auto at = map->find(name);
  return at == map->end() ? name : at->second;
}

}  // namespace

void SetTranslatedValue(od::Value& value, const std::string& text) {
  switch (value.type()) {
    case od::ValueType::kInteger: return value.SetInteger(od::ParseLeadingInt(text));
    case od::ValueType::kReal: return value.SetReal(od::ParseLeadingDouble(text));
    case od::ValueType::kCharacter: return value.SetCharacter(text);
    case od::ValueType::kPoint: {
      std::vector<std::string> parts = SplitAtCommas(text);
      if (parts.size() > 3) return;
      double xyz[3] = {0, 0, 0};
      for (size_t i = 0; i < parts.size(); ++i) xyz[i] = od::ParseLeadingDouble(parts[i]);
      return value.SetPoint({xyz[0], xyz[1], xyz[2]});
    }
    case od::ValueType::kUnknown: return;
  }
}

ValuesStepResult TranslateValues(od::ObjectDataContainer& container, const od::EntityList& entities,
                                 const AliasMaps& maps) {
  ValuesStepResult result;
  ValueMapsByTable columns_of(container, maps);
  const std::vector<std::string> tables = container.TableNames();
  bool every_table = true;
  for (const std::string& table : tables) every_table = every_table && !columns_of.Of(table).empty();
  for (od::EntityId entity : entities) {
    std::vector<od::Record> records;
    if (every_table) {
      // Every record is looked at: read them all with the damaged count in one pass.
      size_t damaged = 0;
      records = container.RecordsOf(entity, tables, damaged);
      result.skipped += damaged;
    } else {
      // Most records are of tables no map applies to: their names are read first.
      od::RecordNames names = container.ReadRecordNames(entity);
      result.skipped += names.damaged;
      bool applies = false;
      for (const std::string& table : names.tables) applies = applies || !columns_of.Of(table).empty();
      if (applies) records = container.Records(entity);
    }
    // A record's index is its position among the entity's readable records.
    for (size_t i = 0; i < records.size(); ++i)
      if (TranslateRecord(records[i], columns_of.Of(records[i].table)))
        result.records.Count(container.UpdateRecord(entity, i, records[i]));
  }
  return result;
}

int TranslateFields(od::Host& host, od::ObjectDataContainer& container, const AliasMaps& maps) {
  std::vector<ColumnRename> renames;
  for (const std::string& table : container.TableNames()) {
    Result<od::TableDefinition> definition = container.GetTable(table);
    if (!definition.ok()) continue;
    const AliasMap* per_table = Under(maps.table_fields, table);
    for (const od::ColumnDefinition& column : definition->columns) {
      const std::string& specific = AliasOr(per_table, column.name);
      const std::string& global = AliasOr(&maps.fields, column.name);
      if (specific != column.name) renames.push_back({table, column.name, specific});
      else if (global != column.name) renames.push_back({table, column.name, global});
    }
  }
  int renamed = 0;
  for (const ColumnRename& rename : renames) {
    od::ColumnRenameOutcome outcome =
        od::RenameTableColumn(container, rename.table, rename.column, rename.new_name);
    if (outcome == od::ColumnRenameOutcome::kSuccess) ++renamed;
    else ReportRenameFailure(host, outcome);
  }
  return renamed;
}

void TranslateTables(od::ObjectDataContainer& container, const AliasMap& tables) {
  for (const auto& [name, alias] : tables) (void)container.RenameTable(name, alias);
}

}  // namespace veltor::commands
