// Writing a record store to memory, for the fuzz targets' round-trip checks.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "drawing/dxf/writer.h"

namespace veltor::fuzz {

// The whole file as WriteDxf produces it in `out`; false when writing failed (which is
// allowed: the writer reports errors as a Status).
inline bool WriteToString(const dxf::RecordStore& store, std::string& out) {
  char* buffer = nullptr;
  size_t size = 0;
  std::FILE* stream = open_memstream(&buffer, &size);
  if (!stream) return false;
  Status written = dxf::WriteDxf(store, stream);
  std::fclose(stream);
  out.assign(buffer ? buffer : "", size);
  std::free(buffer);
  return written.ok();
}

}  // namespace veltor::fuzz
