// Where a save writes: the file a path names once symbolic links are followed, its backup
// name, and the checks made before anything on disk is touched.
#pragma once

#include <string>

#include "od/status.h"

namespace veltor::dxf {

// The backup kept when `path` is replaced: the name with its extension replaced by ".bak"
// (city.dxf -> city.bak; a name without extension gets ".bak" appended). A file whose own
// name ends in ".bak" would be its own backup, so its backup is "NAME.bak.bak".
std::string BackupPathFor(const std::string& path);

// The file a save of `path` replaces: `path` with every symbolic link in its last component
// followed, so the link stays a link and the file it points to is written. Fails when the
// links loop, when the file is not a regular file, or when it is read-only: an existing file
// without its owner's write bit (checked even for root, whom the system lets write anything)
// or one the current user may not write is refused rather than replaced.
Result<std::string> ResolveSaveTarget(const std::string& path);

// The name pattern of a save's temporary file: `target` + ".tmp-" + six characters.
std::string TemporaryPattern(const std::string& target);

// Removes temporary files a save of `target` that was killed left beside it (exactly
// TemporaryPattern(target), regular files only). Returns how many were removed.
size_t RemoveStaleTemporaries(const std::string& target);

}  // namespace veltor::dxf
