// Overwriting the values of records that targets already have with those of a reference.
#pragma once

#include "od/object_data.h"

namespace veltor::commands {

// For each target but the reference itself: every record of a table that the reference also
// carries (a user table) gets the values of the reference's first record of that table; a
// target with two records of a table gets both overwritten. Records of other tables are
// neither changed nor added. Returns the number of records overwritten (failed updates are
// not counted).
size_t CopyReferenceValues(od::ObjectDataContainer& container, od::EntityId reference,
                           const od::EntityList& targets);

}  // namespace veltor::commands
