#include "commands/exchange/alias_maps.h"

#include <set>

#include "commands/exchange/alias_file.h"
#include "od/format.h"
#include "od/string_table.h"

namespace veltor::commands {

namespace {

AliasMap Inverted(const AliasMap& map) {
  AliasMap inverted;
  for (const auto& [name, alias] : map) inverted.emplace(alias, name);
  return inverted;
}

}  // namespace

void LoadTableAliases(od::Host& host, const std::string& path, AliasMaps& maps) {
  ReadAliasFile(host, path,
                {od::kStrLoadingTableAliases, od::kStrIncorrectTableAlias, od::kStrTableAliasesLoaded},
                [&maps](const std::vector<std::string>& f) {
                  if (f.size() != 2) return false;
                  maps.tables.emplace(f[0], f[1]);
                  return true;
                });
}

void LoadFieldAliases(od::Host& host, const std::string& path, AliasMaps& maps) {
  ReadAliasFile(host, path,
                {od::kStrLoadingFieldAliases, od::kStrIncorrectFieldAlias, od::kStrFieldAliasesLoaded},
                [&maps](const std::vector<std::string>& f) {
                  if (f.size() == 2) maps.fields.emplace(f[0], f[1]);
                  else if (f.size() == 3) maps.table_fields[f[0]].emplace(f[1], f[2]);
                  else return false;
                  return true;
                });
}

void LoadValueAliases(od::Host& host, const std::string& path, AliasMaps& maps) {
  ReadAliasFile(host, path,
                {od::kStrLoadingValueAliases, od::kStrIncorrectValueAlias, od::kStrValueAliasesLoaded},
                [&maps](const std::vector<std::string>& f) {
                  if (f.size() == 2) maps.values.emplace(f[0], f[1]);
                  else if (f.size() == 3) maps.field_values[f[0]].emplace(f[1], f[2]);
                  else if (f.size() == 4) maps.table_field_values[f[0]][f[1]].emplace(f[2], f[3]);
                  else return false;
                  return true;
                });
}

bool CheckTableDestinations(od::Host& host, const AliasMap& tables) {
  std::set<std::string> seen;
  for (const auto& entry : tables)
    if (!seen.insert(entry.second).second)
      host.Ed().Print(od::Format(od::Str(od::kStrDuplicateDestination), entry.second.c_str()));
  if (seen.size() == tables.size()) return true;
  host.Ed().Print(od::Str(od::kStrDuplicateDestinations));
  return false;
}

void InvertAliasMaps(AliasMaps& maps) {
  maps.tables = Inverted(maps.tables);
  maps.fields = Inverted(maps.fields);
  for (auto& entry : maps.table_fields) entry.second = Inverted(entry.second);
  maps.values = Inverted(maps.values);
  for (auto& entry : maps.field_values) entry.second = Inverted(entry.second);
  for (auto& table : maps.table_field_values)
    for (auto& field : table.second) field.second = Inverted(field.second);
}

}  // namespace veltor::commands
