#include "console/batch_report.h"

#include <cerrno>
#include <cstring>

#include "console/json_line.h"

namespace veltor::console {

namespace {

const char* StatusName(JobStatus s) {
  switch (s) {
    case JobStatus::kDone: return "done";
    case JobStatus::kFailed: return "failed";
    case JobStatus::kSkipped: return "skipped";
  }
  return "failed";
}

std::string OptionalString(const std::string& s) { return s.empty() ? "null" : JsonString(s); }
std::string OptionalInt(const std::optional<int>& v) { return v ? std::to_string(*v) : "null"; }

}  // namespace

std::string FormatReportLine(const ReportEntry& e) {
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.3f", e.seconds);
  std::string results = "[";
  for (size_t i = 0; i < e.results.size(); ++i) results += (i ? "," : "") + JsonString(e.results[i]);
  results += "]";
  return "{\"path\":" + JsonString(e.path) + ",\"status\":\"" + StatusName(e.status) +
         "\",\"exit\":" + OptionalInt(e.exit_code) + ",\"signal\":" + OptionalInt(e.signal) +
         ",\"seconds\":" + seconds + ",\"results\":" + results + ",\"output\":" + OptionalString(e.output) +
         ",\"error\":" + OptionalString(e.error) + ",\"size\":" + std::to_string(e.input.size) +
         ",\"mtime_ns\":" + std::to_string(e.input.mtime_ns) + "}";
}

Result<ReportEntry> ParseReportLine(const std::string& line) {
  auto object = ParseJsonObject(line);
  if (!object.ok()) return object.status();
  auto field = [&](const char* name, JsonValue::Kind kind) -> const JsonValue* {
    auto it = object->find(name);
    return it != object->end() && it->second.kind == kind ? &it->second : nullptr;
  };
  const JsonValue* path = field("path", JsonValue::Kind::kString);
  const JsonValue* status = field("status", JsonValue::Kind::kString);
  const JsonValue* size = field("size", JsonValue::Kind::kNumber);
  const JsonValue* mtime = field("mtime_ns", JsonValue::Kind::kNumber);
  if (!path || !status || !size || !mtime) return Status::Error("report line: path, status, size or mtime_ns missing");
  ReportEntry e;
  e.path = path->text;
  if (status->text == "done") e.status = JobStatus::kDone;
  else if (status->text == "failed") e.status = JobStatus::kFailed;
  else if (status->text == "skipped") e.status = JobStatus::kSkipped;
  else return Status::Error("report line: unknown status " + status->text);
  if (const JsonValue* v = field("exit", JsonValue::Kind::kNumber)) e.exit_code = static_cast<int>(v->integer);
  if (const JsonValue* v = field("signal", JsonValue::Kind::kNumber)) e.signal = static_cast<int>(v->integer);
  if (const JsonValue* v = field("seconds", JsonValue::Kind::kNumber)) e.seconds = v->number;
  if (const JsonValue* v = field("results", JsonValue::Kind::kStringArray)) e.results = v->items;
  if (const JsonValue* v = field("output", JsonValue::Kind::kString)) e.output = v->text;
  if (const JsonValue* v = field("error", JsonValue::Kind::kString)) e.error = v->text;
  e.input.size = size->integer;
  e.input.mtime_ns = mtime->integer;
  return e;
}

Result<std::map<std::string, FileStamp>> ReadDoneDrawings(const std::string& report_path) {
  std::map<std::string, FileStamp> done;
  std::FILE* f = std::fopen(report_path.c_str(), "rb");
  if (!f) {
    if (errno == ENOENT) return done;
    return Status::Error(report_path + ": " + std::strerror(errno));
  }
  std::string line;
  for (int c = std::fgetc(f);; c = std::fgetc(f)) {
    if (c == EOF || c == '\n') {
      auto entry = ParseReportLine(line);
      if (entry.ok() && entry->status == JobStatus::kDone) done[entry->path] = entry->input;
      line.clear();
      if (c == EOF) break;
    } else {
      line.push_back(static_cast<char>(c));
    }
  }
  bool failed = std::ferror(f) != 0;
  std::fclose(f);
  if (failed) return Status::Error(report_path + ": read error");
  return done;
}

ReportWriter::~ReportWriter() {
  if (file_) std::fclose(file_);
}

Status ReportWriter::Open(const std::string& path, bool append) {
  path_ = path;
  bool needs_break = false;
  if (append) {
    if (std::FILE* existing = std::fopen(path.c_str(), "rb")) {
      if (std::fseek(existing, -1, SEEK_END) == 0) needs_break = std::fgetc(existing) != '\n';
      std::fclose(existing);
    }
  }
  file_ = std::fopen(path.c_str(), append ? "ab" : "wb");
  if (!file_) return Status::Error(path + ": " + std::strerror(errno));
  if (needs_break && (std::fputc('\n', file_) == EOF || std::fflush(file_) != 0))
    return Status::Error(path + ": " + std::strerror(errno));
  return Status::Ok();
}

Status ReportWriter::Write(const ReportEntry& entry) {
  if (!file_) return Status::Error(path_ + ": the report is not open");
  std::string line = FormatReportLine(entry) + "\n";
  if (std::fwrite(line.data(), 1, line.size(), file_) != line.size() || std::fflush(file_) != 0)
    return Status::Error(path_ + ": " + std::strerror(errno));
  return Status::Ok();
}

}  // namespace veltor::console
