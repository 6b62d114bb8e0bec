// The report of a batch run: JSON Lines, one object per drawing, written as each drawing
// finishes. See docs/batch.md for the fields.
#pragma once

#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "console/job_list.h"
#include "od/status.h"

namespace veltor::console {

enum class JobStatus { kDone, kFailed, kSkipped };

struct ReportEntry {
  std::string path;
  JobStatus status = JobStatus::kDone;
  std::optional<int> exit_code;  // none when the worker was killed or never started
  std::optional<int> signal;     // the signal that killed the worker
  double seconds = 0;
  std::vector<std::string> results;  // the script's result lines ("Selected: 26", ...)
  std::string output;                // where the result was written; empty: nothing written
  std::string error;                 // the first error; empty: none
  FileStamp input;                   // the drawing when the entry was made
};

// One report line, without its line break.
std::string FormatReportLine(const ReportEntry& entry);

// Reads back a line written by FormatReportLine.
Result<ReportEntry> ParseReportLine(const std::string& line);

// The drawings that a report lists as done, each with the stamp its input had then (the last
// such line wins). A report that does not exist lists nothing; lines that do not parse (the
// last line of an interrupted run may be cut short) are passed over.
Result<std::map<std::string, FileStamp>> ReadDoneDrawings(const std::string& report_path);

// Appends report lines, each flushed as soon as it is written, so an interrupted run leaves
// whole lines behind.
class ReportWriter {
 public:
  ReportWriter() = default;
  ~ReportWriter();
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;

  // Opens `path`: emptied first unless `append`. When appending to a file whose last line was
  // cut short, a line break is written first so the next line stands on its own.
  Status Open(const std::string& path, bool append);
  Status Write(const ReportEntry& entry);

 private:
  std::string path_;
  std::FILE* file_ = nullptr;
};

}  // namespace veltor::console
