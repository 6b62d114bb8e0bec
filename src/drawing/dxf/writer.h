// Writing a record store back to DXF.
//
// Unchanged records are copied byte for byte from the source; changed and new records are
// written from their tags in the file's own style (line ends, code alignment, binary or ASCII).
#pragma once

#include <cstdio>
#include <string>

#include "drawing/dxf/record_store.h"
#include "od/status.h"

namespace veltor::dxf {

// Writes the whole file to an open stream.
Status WriteDxf(const RecordStore& store, std::FILE* out);

// Saves atomically: writes "PATH.tmp-XXXXXX" beside the target, flushes it to disk, keeps the
// previous target as its ".bak" sibling (drawing.dxf -> drawing.bak) and renames the temporary
// file over the target. On failure the target and its .bak are untouched and the temporary
// file is removed.
Status SaveDxfAtomic(const RecordStore& store, const std::string& path);

// The backup name used by SaveDxfAtomic.
std::string BackupPathFor(const std::string& path);

}  // namespace veltor::dxf
