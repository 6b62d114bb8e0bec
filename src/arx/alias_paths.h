// Drive-alias paths as the project handles them. Portable: no host header.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "od/object_data.h"

namespace veltor::arx {

// The part of `path` up to and including the first ":" ("D:"), "/" for an absolute POSIX path,
// "" when there is none (a "\\server" path).
std::string AliasPathOf(const std::string& path);

// `path` as the host attaches it: "NAME:" followed by the rest of the path after the alias's
// own path, through the alias whose path is the longest prefix of `path` (compared without
// regard to case, "\" and "/" alike). Nothing when no alias reaches the path.
std::optional<std::string> ThroughAlias(const std::string& path,
                                        const std::vector<od::DriveAlias>& aliases);

}  // namespace veltor::arx
