// The drawings of a batch run and where each one's result goes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

struct BatchJob {
  std::string input;   // the drawing, as given
  std::string output;  // where the result is written; equal to `input` for --in-place
};

// What a file looked like: enough to tell that it changed since a report line was written.
struct FileStamp {
  int64_t size = -1;      // -1: the file could not be examined
  int64_t mtime_ns = 0;   // modification time, nanoseconds since the epoch
  bool operator==(const FileStamp& o) const { return size == o.size && mtime_ns == o.mtime_ns; }
};
FileStamp StampOf(const std::string& path);

// Reads a list file: one path per line, as given (relative paths are relative to the current
// folder, like the paths on the command line). A trailing "\r" is dropped and blank lines are
// skipped; nothing else is trimmed, since a file name may begin or end with a space.
Result<std::vector<std::string>> ReadPathList(const std::string& list_path);

// The drawings named by command-line arguments: each "@LIST" is replaced by its lines.
Result<std::vector<std::string>> ExpandInputs(const std::vector<std::string>& args);

// "dir/sub/name.dxf" -> "name.dxf" ("" when the path ends in "/").
std::string FileNameOf(const std::string& path);

// One job per drawing, in the order given. With an output folder, each result is
// OUT_DIR/<file name>. Refused, naming the paths: a drawing listed twice, two drawings with
// the same file name (their results would overwrite each other), a path without a file name,
// and a result that would be the input itself (the output folder is the drawing's folder).
Result<std::vector<BatchJob>> PlanJobs(const std::vector<std::string>& inputs, const std::string& out_dir,
                                       bool in_place);

}  // namespace veltor::console
