// The command line of a batch run: `veltor --batch SCRIPT ...` over many drawings.
#pragma once

#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

struct BatchOptions {
  std::string script;               // run on every drawing
  int jobs = 0;                     // workers at a time; 0: one per core
  std::string out_dir;              // --out-dir DIR: results as DIR/<file name>
  bool in_place = false;            // --in-place: each drawing replaced (with its .bak)
  std::string report;               // --report FILE: JSON Lines, one line per drawing
  bool resume = false;              // skip drawings the report lists as done and unchanged
  std::vector<std::string> inputs;  // drawings and @LIST arguments, as given
  bool help = false;
};

// True when the command line asks for a batch run (it holds --batch before any "--").
bool IsBatchCommandLine(int argc, const char* const* argv);

// Parses a batch command line. The checks are the ones that need no file: exactly one of
// --out-dir and --in-place, --resume only with --report, a script that is a file (not "-":
// the workers cannot share standard input), at least one drawing.
Result<BatchOptions> ParseBatchOptions(int argc, const char* const* argv);

}  // namespace veltor::console
