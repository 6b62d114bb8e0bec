// The warning a query command prints when records it would have read cannot be read.
#pragma once

#include <cstddef>

#include "od/host.h"

namespace veltor::commands {

// Prints how many records were skipped because they cannot be read; nothing for 0.
void ReportSkippedRecords(od::Host& host, size_t skipped);

// Counts the damaged records of `entities` and reports them as above. Nothing without an
// Object Data project.
void WarnSkippedRecords(od::Host& host, const od::EntityList& entities);

}  // namespace veltor::commands
