// Attaching one record to many entities, and detaching every record of one table from them.
#pragma once

#include <string>

#include "commands/edit/write_tally.h"
#include "od/object_data.h"

namespace veltor::commands {

// Attaches `record` after the records of every entity; returns how many were attached and
// how many the drawing refused.
WriteTally AttachRecordToEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                          const od::Record& record);

// Detaches every record of `table` (exact name) from every entity; returns how many were
// detached and how many the drawing refused. Records the host cannot read stay where they are.
WriteTally DetachTableFromEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                           const std::string& table);

}  // namespace veltor::commands
