#include "commands/exchange/attr_map.h"

#include "commands/exchange/attr_text_file.h"
#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

// The line without its comment and trailing blanks.
std::string CutLine(const std::string& line) {
  std::string cut = line.substr(0, line.find('?'));
  size_t end = cut.find_last_not_of(" \t\r\n");
  return end == std::string::npos ? std::string() : cut.substr(0, end + 1);
}

// The fields between runs of tabs, as a tokenizer splitting at tabs gives them.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  size_t start = line.find_first_not_of('\t');
  while (start != std::string::npos) {
    size_t end = line.find('\t', start);
    fields.push_back(line.substr(start, end == std::string::npos ? end : end - start));
    start = end == std::string::npos ? end : line.find_first_not_of('\t', end);
  }
  return fields;
}

// The definition of the first table whose name matches without regard to case; its name is
// the drawing's own spelling.
std::optional<od::TableDefinition> FindTable(const od::ObjectDataContainer& container,
                                             const std::vector<std::string>& tables,
                                             const std::string& name) {
  for (const std::string& table : tables) {
    if (!od::EqualsIgnoreCase(table, name)) continue;
    Result<od::TableDefinition> definition = container.GetTable(table);
    if (!definition.ok()) return std::nullopt;
    definition->name = table;
    return std::move(*definition);
  }
  return std::nullopt;
}

std::optional<std::string> FindColumn(const od::TableDefinition& table, const std::string& name) {
  for (const od::ColumnDefinition& column : table.columns)
    if (od::EqualsIgnoreCase(column.name, name)) return column.name;
  return std::nullopt;
}

}  // namespace

MapReading ReadAttributeMap(od::Host& host, const od::ObjectDataContainer& container,
                            const std::vector<std::string>& lines) {
  MapReading reading;
  const std::vector<std::string> tables = container.TableNames();
  for (const std::string& line : lines) {
    std::string cut = CutLine(line);
    if (cut.empty()) continue;
    std::vector<std::string> fields = Fields(cut);
    if (fields.size() != 4) {
      host.Ed().Print(od::Format(od::Str(od::kStrInvalidMapping), cut.c_str()));
      reading.malformed = true;
      continue;
    }
    const std::string& table_name = fields[2];
    const std::string& column_name = fields[3];
    std::optional<od::TableDefinition> definition = FindTable(container, tables, table_name);
    if (!definition) {
      host.Ed().Print(od::Format(od::Str(od::kStrMapTableNotFound), table_name.c_str()));
      continue;
    }
    std::optional<std::string> column = FindColumn(*definition, column_name);
    if (!column) {
      host.Ed().Print(od::Format(od::Str(od::kStrMapColumnNotFound), column_name.c_str(),
                                 table_name.c_str()));
      continue;
    }
    reading.map[od::ToLowerUnicode(fields[0])].emplace(fields[1],
                                                       AttributeTarget{definition->name, *column});
    ++reading.accepted;
  }
  return reading;
}

std::optional<AttributeMap> AskAttributeMap(od::Host& host, bool& cancelled) {
  cancelled = false;
  std::optional<std::string> path =
      host.Ui().OpenFileDialog(od::Str(od::kStrAttributeMapTitle), od::Str(od::kStrMapFilter));
  if (!path) {
    cancelled = true;
    return std::nullopt;
  }
  // Without a drawing and its Object Data there is nothing to read the file against.
  od::Database* db = host.WorkingDatabase();
  Result<od::Project*> project = host.ActiveProject();
  std::optional<std::vector<std::string>> lines;
  if (db && project.ok()) {
    Result<std::vector<std::string>> read = ReadTextFileLines(*db, *path);
    if (read.ok()) lines = std::move(*read);
  }
  if (!lines) {
    host.Ed().Print(od::Format(od::Str(od::kStrUnableToRead), path->c_str()));
    return std::nullopt;
  }
  MapReading reading = ReadAttributeMap(host, (*project)->Container(), *lines);
  host.Ed().Print(od::Format(od::Str(od::kStrMappingsLoaded), reading.accepted));
  if (reading.malformed || reading.accepted == 0) return std::nullopt;
  return std::move(reading.map);
}

const TagTargets* FindBlock(const AttributeMap& map, const std::string& block_name) {
  auto it = map.find(od::ToLowerUnicode(block_name));
  return it == map.end() ? nullptr : &it->second;
}

}  // namespace veltor::commands
