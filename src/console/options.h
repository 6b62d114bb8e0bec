// The command line of the veltor console.
#pragma once

#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

struct Options {
  std::string drawing;               // opened at start; a new drawing when empty
  std::string script;                // -s FILE ("-": standard input)
  std::vector<std::string> lines;    // -c LINE, in order (after the script's lines)
  std::string output;                // -o OUT
  bool in_place = false;             // --in-place
  bool info = false;                 // --info
  bool help = false;
  bool version = false;
  bool scripted() const { return !script.empty() || !lines.empty(); }
};

Result<Options> ParseOptions(int argc, const char* const* argv);
extern const char kUsage[];

}  // namespace veltor::console
