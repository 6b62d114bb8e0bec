// VELTOR_LOAD_DEFINITION: copies Object Data table definitions (names, columns, types,
// defaults) from another drawing on disk into the active drawing; no entity or record of the
// other drawing comes along.
#pragma once

#include <string>

#include "od/command_context.h"

namespace veltor::commands {

// The worker: reaches the drawing at `path` through a temporary drive alias "OBJECT_DATA" and
// an attachment, copies the definition of each of its user tables by attaching a default
// record to a temporary point (erased again), then detaches the drawing and removes the
// alias. Prints "Error: unable to open '%s'.\n" when the drawing cannot be attached or
// activated, "Error. Operation unsuccessful.\n" after any failure, and "Operation
// completed.\n" in every case. Returns whether it succeeded. Tables the active drawing
// already defines keep their definitions.
bool LoadDefinitions(od::Host& host, const std::string& path);

// The command: a file dialog for the drawing (Cancel ends silently), then LoadDefinitions.
void LoadDefinition(od::CommandContext& context);

}  // namespace veltor::commands
