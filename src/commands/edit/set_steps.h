// What the commands that fill columns from geometry, text and generated numbers share: the
// tables they offer, the entities they gather after their dialog, the record they write into
// and rounding by printing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "od/command_context.h"

namespace veltor::commands {

// The user tables in use by `entities` (when empty: by the pickfirst selection, or else by
// the usable entities of model space), in ordinal order.
std::vector<std::string> TablesInUse(od::Host& host, const od::EntityList& entities);

// After the dialog: `handed` when it is not empty, else the pickfirst selection, else the
// host's selection prompt, whose empty answer means every entity of model space. No layer
// filter. Nothing when the prompt was cancelled (the command is then marked cancelled).
std::optional<od::EntityList> GatherAfterDialog(od::CommandContext& context,
                                                const od::EntityList& handed);

// The position of the entity's first record of `table` among its records, or -1.
int FirstRecordOf(const od::ObjectDataContainer& container, od::EntityId entity,
                  const std::string& table);

// `value` printed with `precision` decimals ("%.<precision>lf") and read back: the rounding
// of printf, not arithmetic rounding. A negative precision counts as 0.
double RoundByPrinting(double value, int precision);

}  // namespace veltor::commands
