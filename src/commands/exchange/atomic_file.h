// Writing a whole file so that readers see the old file or the new one, never half of one.
#pragma once

#include <string>

#include "od/status.h"

namespace veltor::commands {

// Writes `bytes` to a temporary file beside `path` and renames it over `path` once every byte
// is written and flushed. On failure the temporary file is removed, `path` is left as it was
// and the status reads "PATH: reason".
[[nodiscard]] Status WriteFileAtomically(const std::string& path, const std::string& bytes);

}  // namespace veltor::commands
