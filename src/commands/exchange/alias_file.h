// One alias file of VELTOR_TRANSLATE read line by line: comments cut, fields split at tabs,
// lines of a field count the file does not allow reported as they were read.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "od/host.h"

namespace veltor::commands {

// The fields of one line: everything from the first "#" on is cut, then trailing blanks,
// tabs and line breaks; the rest is split at tabs (a run of tabs is one separator, tabs at
// the start are skipped, so no field comes from between two tabs) and each field is trimmed
// of white space at both ends. An empty or comment-only line has no fields.
std::vector<std::string> AliasFields(std::string_view line);

// The messages of one kind of alias file (string ids): "Loading ... from '%s'", the
// incorrect-line error and "%i ... loaded".
struct AliasFileMessages {
  int loading;
  int incorrect;
  int loaded;
};

// Takes the fields of one line; false when the line does not have a field count the file
// allows (the line is then reported and skipped).
using AliasLineTaker = std::function<bool(const std::vector<std::string>& fields)>;

// Reads the alias file at `path` (see ReadTextFileLinesAsRead): prints the loading line,
// hands each line's fields to `take`, reports the lines it refuses exactly as they were read
// (their line break included) and prints how many it took. A file that cannot be read (or no
// drawing to read it for) prints "Error: unable to read '%s'" instead and takes nothing.
void ReadAliasFile(od::Host& host, const std::string& path, const AliasFileMessages& messages,
                   const AliasLineTaker& take);

}  // namespace veltor::commands
