// The alias maps of VELTOR_TRANSLATE: what the three alias files say, and the same maps
// turned round for translating aliases back into names.
#pragma once

#include <map>
#include <string>

#include "od/host.h"
#include "od/text.h"

namespace veltor::commands {

// Name to alias, keys in the host's ordinal order (case-sensitive, UTF-16 code units).
using AliasMap = std::map<std::string, std::string, od::LessOrdinalUtf16>;
// An outer name (a table or a field) to the aliases that hold under it.
template <typename Inner>
using AliasesBy = std::map<std::string, Inner, od::LessOrdinalUtf16>;

struct AliasMaps {
  AliasMap tables;                                 // table name -> table alias
  AliasMap fields;                                 // field name -> alias, any table
  AliasesBy<AliasMap> table_fields;                // table -> (field name -> alias)
  AliasMap values;                                 // value -> new value, any table and field
  AliasesBy<AliasMap> field_values;                // field -> (value -> new value), any table
  AliasesBy<AliasesBy<AliasMap>> table_field_values;  // table -> field -> (value -> new value)
};

// Each loader reads its file into `maps` (see ReadAliasFile for what it prints). The first
// line for a key wins; later ones are still counted as loaded.
//   tables: 2 fields (table, alias)
//   fields: 2 fields (field, alias) or 3 (table, field, alias)
//   values: 2 fields (value, new value), 3 (field, value, new value) or 4 (table, field,
//           value, new value)
void LoadTableAliases(od::Host& host, const std::string& path, AliasMaps& maps);
void LoadFieldAliases(od::Host& host, const std::string& path, AliasMaps& maps);
void LoadValueAliases(od::Host& host, const std::string& path, AliasMaps& maps);

// Reports every table alias that a second table name already maps to, in key order, and then
// that the table aliases have duplicate destinations. True when there were none.
bool CheckTableDestinations(od::Host& host, const AliasMap& tables);

// Turns every inner map round (alias -> name), leaving the outer table and field keys as they
// are. Where names share an alias, the name first in key order keeps it.
void InvertAliasMaps(AliasMaps& maps);

}  // namespace veltor::commands
