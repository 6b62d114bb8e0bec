// Attaching one record to many entities, and detaching every record of one table from them.
#pragma once

#include <string>

#include "od/object_data.h"

namespace veltor::commands {

// Attaches `record` after the records of every entity; returns how many were attached (an
// attach that fails is not counted).
size_t AttachRecordToEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                          const od::Record& record);

// Detaches every record of `table` (exact name) from every entity; returns how many were
// detached. Records the host cannot read are left where they are.
size_t DetachTableFromEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                           const std::string& table);

}  // namespace veltor::commands
