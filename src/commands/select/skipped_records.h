// The warning a query command prints when records it would have read cannot be read.
#pragma once

#include "od/host.h"

namespace veltor::commands {

// Counts the damaged records of `entities` and, when there are any, prints how many were
// skipped. Nothing without an Object Data project.
void WarnSkippedRecords(od::Host& host, const od::EntityList& entities);
// Prints how many damaged records were skipped, when there are any (counted by the caller).
void ReportSkippedRecords(od::Host& host, size_t skipped);

}  // namespace veltor::commands
