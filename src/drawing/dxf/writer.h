// Writing a record store back to DXF.
//
// Unchanged records are copied byte for byte from the source; changed and new records are
// written from their tags in the file's own style (line ends, code alignment, binary or ASCII).
#pragma once

#include <cstdio>
#include <string>

#include "drawing/dxf/record_store.h"
#include "drawing/dxf/save_target.h"
#include "od/status.h"

namespace veltor::dxf {

// Writes the whole file to an open stream. A store read from a file without the EOF marker
// (RecordStore::append_eof) gets one, so what is written is always well-formed.
Status WriteDxf(const RecordStore& store, std::FILE* out);

// Saves atomically. `path` is resolved first (ResolveSaveTarget: links followed, read-only
// files refused); the file is written to "TARGET.tmp-XXXXXX" beside the target and flushed to
// disk; the previous target is kept as its backup (BackupPathFor: drawing.dxf -> drawing.bak)
// and the temporary file is renamed over the target; then temporary files that earlier,
// killed saves of the target left are removed. On any failure (a write error, a full disk,
// the file-size limit) every file is as it was: the target, its backup, and no temporary file.
Status SaveDxfAtomic(const RecordStore& store, const std::string& path);

}  // namespace veltor::dxf
