// A batch run: one script over many drawings, each in its own worker process (`program`,
// the veltor executable itself, run as for one drawing), a few at a time.
#pragma once

#include <string>

#include "console/batch_options.h"

namespace veltor::console {

// Runs the batch and returns the exit status: 0 when every drawing was done (or skipped as
// done before), kExitBatchSomeFailed when any failed, kExitBatchNotRun or
// kExitScriptUnreadable when nothing could be started. Messages go to standard error.
int RunBatch(const BatchOptions& options, const std::string& program);

}  // namespace veltor::console
