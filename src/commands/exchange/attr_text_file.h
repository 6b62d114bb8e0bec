// Reading a text input file line by line as the runtime's "rt,ccs=UNICODE" mode does.
#pragma once

#include <string>
#include <vector>

#include "od/database.h"
#include "od/status.h"

namespace veltor::commands {

// The longest piece one read returns, in UTF-16 code units, its line break included: the
// runtime reads into a buffer of 10240 units that also holds the terminator, so a longer line
// comes back in pieces of this length, each read as a line of its own.
inline constexpr size_t kMaxLineUnits = 10239;

// The file's lines as UTF-8, each exactly as one read gives it: with its line break ("\n"; the
// text mode reads "\r\n" as "\n"), except the file's last line when it has none and the
// pieces of a long line but the last. A byte-order mark selects UTF-8, UTF-16 LE or UTF-16
// BE; a file without one is in the drawing's ANSI code page. Fails when the file cannot be
// opened or read.
Result<std::vector<std::string>> ReadTextFileLinesAsRead(const od::Database& db,
                                                         const std::string& path);
// The file's lines as above without their line breaks.
Result<std::vector<std::string>> ReadTextFileLines(const od::Database& db, const std::string& path);

// The decoding steps alone, for bytes already read.
std::vector<std::string> SplitTextFileLinesAsRead(const od::Database& db, const std::string& bytes);
std::vector<std::string> SplitTextFileLines(const od::Database& db, const std::string& bytes);

}  // namespace veltor::commands
