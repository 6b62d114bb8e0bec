// Breaking an entity so that every piece carries what the entity carried.
#pragma once

#include "od/database.h"
#include "od/object_data.h"

namespace veltor::commands {

// Breaks `entity` between `first` and `second` (od::Database::BreakCurve) and gives every new
// piece the entity's feature classification, a copy of each of its Object Data records
// (every table, in host order, duplicates kept) and the other data records of its extension
// dictionary (od::Database::CopyExtensionData); the entity itself is the first piece and
// keeps its own. Returns the pieces. Fails before changing anything when the entity holds
// records that cannot be read (they could not be copied); a failure after the break leaves
// the pieces made so far, so the caller cancels the command to take everything back.
Result<od::EntityList> BreakKeepingData(od::Database& db, od::Project& project, od::EntityId entity,
                                        const od::Point3& first, const od::Point3& second);

}  // namespace veltor::commands
