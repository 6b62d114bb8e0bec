// Copying values from a record of one table into a record of another on the same entity.
#pragma once

#include "commands/edit/add_value.h"
#include "ui/od_to_od_dialog.h"

namespace veltor::commands {

// On each entity that carries a record of the source table: the first such record's values go
// into the first record of the target table, pair by pair (ConvertInto). An entity without a
// target record gets one of default values first when `attach_missing` is set, and is passed
// over otherwise. Counts the records written (updated or attached) and the values that did
// not convert (left as they were, or at their default in an attached record). Nothing when
// either table is missing; pairs naming a field the tables lack are ignored.
WrittenCounts CopyOdToOd(od::ObjectDataContainer& container, const od::EntityList& entities,
                         const ui::OdToOdChoice& choice);

}  // namespace veltor::commands
