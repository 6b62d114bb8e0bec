// Reading a text input file line by line as the runtime's "rt,ccs=UNICODE" mode does.
#pragma once

#include <string>
#include <vector>

#include "od/database.h"
#include "od/status.h"

namespace veltor::commands {

// The longest line a read returns, in UTF-16 code units: a longer line comes back in pieces
// of this length, each read as a line of its own (a 10240-unit buffer holding its terminator).
inline constexpr size_t kMaxLineUnits = 10239;

// The file's lines as UTF-8, without their line breaks. A byte-order mark selects UTF-8,
// UTF-16 LE or UTF-16 BE; a file without one is in the drawing's ANSI code page. Fails when
// the file cannot be opened or read.
Result<std::vector<std::string>> ReadTextFileLines(const od::Database& db, const std::string& path);

// The decoding step alone, for bytes already read.
std::vector<std::string> SplitTextFileLines(const od::Database& db, const std::string& bytes);

}  // namespace veltor::commands
