// Exit statuses of the veltor console, one per kind of failure (listed in kUsage and
// docs/console.md, docs/batch.md).
#pragma once

namespace veltor::console {

constexpr int kExitUsage = 2;
constexpr int kExitBadDrawing = 3;
constexpr int kExitWriteFailed = 4;
constexpr int kExitScriptRefused = 5;
constexpr int kExitScriptUnreadable = 6;
// Batch: every drawing ran, but at least one of them failed.
constexpr int kExitBatchSomeFailed = 7;
// Batch: refused before any drawing ran (a list that cannot be read, two outputs with the
// same name, an output folder or report that cannot be written), or the report could not be
// written while running.
constexpr int kExitBatchNotRun = 8;
// --export or --import failed (nothing was written, the drawing was not changed).
constexpr int kExitExchangeFailed = 9;

}  // namespace veltor::console
