// Reading a DXF file (ASCII or binary, any version) into a record store.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "drawing/dxf/record_store.h"
#include "od/status.h"

namespace veltor::dxf {

struct ReadOutcome {
  std::unique_ptr<RecordStore> store;
  std::vector<std::string> warnings;  // what was tolerated or dropped, in plain words
};

// Parses `bytes` (which the store takes over). `name` is used in messages, which read
// "NAME: line N: reason" (ASCII) or "NAME: byte N: reason" (binary).
Result<ReadOutcome> ParseDxf(std::string bytes, const std::string& name);
Result<ReadOutcome> ReadDxfFile(const std::string& path);

}  // namespace veltor::dxf
