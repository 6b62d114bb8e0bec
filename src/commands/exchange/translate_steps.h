// The three steps of VELTOR_TRANSLATE over the active drawing's Object Data: values, column
// names and table names replaced by what the alias maps say.
#pragma once

#include <cstddef>

#include "commands/edit/write_tally.h"
#include "commands/exchange/alias_maps.h"
#include "od/host.h"

namespace veltor::commands {

// Sets `value`, keeping its type, from `text` as the translation reads it (no "*" stands for
// the old value here): Integer and Real by their leading number (0 when there is none),
// Character as it stands, Point from up to three numbers between commas (a run of commas is
// one separator; coordinates not given are 0; with more than three the point is kept).
void SetTranslatedValue(od::Value& value, const std::string& text);

struct ValuesStepResult {
  WriteTally records;     // records written back, and the writes the drawing refused
  size_t skipped = 0;     // damaged records, which are not read
};

// Values: every record of every entity of `entities` has each value looked up as text in the
// per-table, then the per-field, then the global value map; the first alias that differs from
// the text replaces the value. A record with a replaced value is written back.
ValuesStepResult TranslateValues(od::ObjectDataContainer& container, const od::EntityList& entities,
                                 const AliasMaps& maps);

// Fields: every column of every table (system tables included) whose per-table or, failing
// that, global field alias differs from its name is renamed, in table and column order. Each
// rename that fails is reported by its reason; returns how many succeeded.
int TranslateFields(od::Host& host, od::ObjectDataContainer& container, const AliasMaps& maps);

// Tables: each table of the map, in key order, is renamed to its alias; refusals (no such
// table, the alias taken) are not reported.
void TranslateTables(od::ObjectDataContainer& container, const AliasMap& tables);

}  // namespace veltor::commands
