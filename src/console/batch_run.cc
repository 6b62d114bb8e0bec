#include "console/batch_run.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>

#include "console/batch_progress.h"
#include "console/batch_report.h"
#include "console/exit_codes.h"
#include "console/job_list.h"
#include "console/worker_output.h"
#include "console/worker_pool.h"

namespace veltor::console {

namespace {

// A path handed to a worker as an argument: one that begins with "-" would read as an option.
std::string AsArgument(const std::string& path) { return path[0] == '-' ? "./" + path : path; }

Status CheckScript(const std::string& path) {
  struct stat st;
  if (stat(path.c_str(), &st) != 0) return Status::Error(path + ": " + std::strerror(errno));
  if (S_ISDIR(st.st_mode)) return Status::Error(path + ": is a folder");
  if (access(path.c_str(), R_OK) != 0) return Status::Error(path + ": " + std::strerror(errno));
  return Status::Ok();
}

Status MakeOutDir(const std::string& dir) {
  struct stat st;
  if (stat(dir.c_str(), &st) == 0)
    return S_ISDIR(st.st_mode) ? Status::Ok() : Status::Error(dir + ": not a folder");
  if (mkdir(dir.c_str(), 0777) != 0) return Status::Error(dir + ": " + std::strerror(errno));
  return Status::Ok();
}

size_t WorkerCount(int asked) {
  if (asked > 0) return static_cast<size_t>(asked);
  long cores = sysconf(_SC_NPROCESSORS_ONLN);
  return cores > 0 ? static_cast<size_t>(cores) : 1;
}

ReportEntry EntryFor(const BatchJob& job, const WorkerOutcome& w, bool in_place, const FileStamp& before) {
  ReportEntry e;
  e.path = job.input;
  e.exit_code = w.exit_code;
  e.signal = w.signal;
  e.seconds = w.seconds;
  e.results = ResultLines(w.out);
  bool done = w.start_error.empty() && w.exit_code && *w.exit_code == 0;
  e.status = done ? JobStatus::kDone : JobStatus::kFailed;
  if (done) e.output = job.output;
  e.error = w.start_error.empty() ? FirstError(w.out, w.err) : w.start_error;
  if (e.error.empty() && w.signal) {
    const char* name = strsignal(*w.signal);
    e.error = "killed by signal " + std::to_string(*w.signal) + (name ? std::string(" (") + name + ")" : "");
  } else if (e.error.empty() && !done) {
    e.error = "exit status " + std::to_string(w.exit_code.value_or(-1));
  }
  // An in-place result is the drawing from now on: resuming must see it as unchanged.
  e.input = in_place && done ? StampOf(job.input) : before;
  return e;
}

}  // namespace

int RunBatch(const BatchOptions& options, const std::string& program) {
  auto say = [](const std::string& text) { std::fprintf(stderr, "veltor: %s\n", text.c_str()); };
  Status script_ok = CheckScript(options.script);
  if (!script_ok.ok()) {
    say("script: " + script_ok.message());
    return kExitScriptUnreadable;
  }
  auto inputs = ExpandInputs(options.inputs);
  if (!inputs.ok()) return say(inputs.message()), kExitBatchNotRun;
  if (inputs->empty()) return say("no drawings to run (the list is empty)"), kExitBatchNotRun;
  auto jobs = PlanJobs(*inputs, options.out_dir, options.in_place);
  if (!jobs.ok()) return say(jobs.message()), kExitBatchNotRun;
  if (!options.in_place) {
    Status made = MakeOutDir(options.out_dir);
    if (!made.ok()) return say("--out-dir " + made.message()), kExitBatchNotRun;
  }
  std::map<std::string, FileStamp> done_before;
  if (options.resume) {
    auto read = ReadDoneDrawings(options.report);
    if (!read.ok()) return say(read.message()), kExitBatchNotRun;
    done_before = std::move(read).value();
  }
  ReportWriter report;
  bool reporting = !options.report.empty();
  if (reporting) {
    Status opened = report.Open(options.report, options.resume);
    if (!opened.ok()) return say("report: " + opened.message()), kExitBatchNotRun;
  }
  WorkerPool pool(program);
  Status pool_ok = pool.Open();
  if (!pool_ok.ok()) return say("scratch folder: " + pool_ok.message()), kExitBatchNotRun;

  bool report_failed = false;
  auto record = [&](const ReportEntry& e) {
    if (!reporting || report_failed) return;
    Status written = report.Write(e);
    if (!written.ok()) {
      say("report: " + written.message() + "; no further drawing is started");
      report_failed = true;
    }
  };

  // Drawings done before and unchanged since are skipped; the rest run.
  std::vector<size_t> to_run;
  size_t skipped = 0;
  for (size_t i = 0; i < jobs->size(); ++i) {
    const BatchJob& job = (*jobs)[i];
    auto before = done_before.find(job.input);
    FileStamp now = StampOf(job.input);
    if (before != done_before.end() && now.size >= 0 && before->second == now) {
      ReportEntry e;
      e.path = job.input;
      e.status = JobStatus::kSkipped;
      e.output = job.output;
      e.input = now;
      record(e);
      ++skipped;
    } else {
      to_run.push_back(i);
    }
  }

  BatchProgress progress(isatty(STDERR_FILENO));
  BatchCounts counts;
  counts.left = to_run.size();
  auto start = std::chrono::steady_clock::now();
  auto elapsed = [&] { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(); };
  size_t capacity = WorkerCount(options.jobs);
  std::vector<FileStamp> stamps(jobs->size());
  size_t next = 0;
  progress.Show(counts, 0);
  while ((next < to_run.size() && !report_failed) || pool.running() > 0) {
    while (next < to_run.size() && !report_failed && pool.running() < capacity) {
      size_t i = to_run[next++];
      const BatchJob& job = (*jobs)[i];
      stamps[i] = StampOf(job.input);
      std::vector<std::string> args{AsArgument(job.input), "-s", AsArgument(options.script)};
      if (options.in_place) args.push_back("--in-place");
      else args.insert(args.end(), {"-o", AsArgument(job.output)});
      pool.Start(i, args);
    }
    WorkerOutcome outcome = pool.Wait();
    const BatchJob& job = (*jobs)[outcome.job];
    ReportEntry entry = EntryFor(job, outcome, options.in_place, stamps[outcome.job]);
    record(entry);
    --counts.left;
    if (entry.status == JobStatus::kDone) {
      ++counts.done;
    } else {
      ++counts.failed;
      progress.Clear();
      // The worker's own messages begin with the program's name; once is enough.
      std::string why = entry.error.rfind("veltor: ", 0) == 0 ? entry.error.substr(8) : entry.error;
      say(job.input + ": failed: " + why);
    }
    progress.Show(counts, elapsed());
  }
  progress.Clear();
  size_t not_started = to_run.size() - counts.done - counts.failed;
  std::string summary = "batch: " + std::to_string(counts.done) + " done, " + std::to_string(counts.failed) +
                        " failed";
  if (skipped) summary += ", " + std::to_string(skipped) + " skipped (done before, unchanged)";
  if (not_started) summary += ", " + std::to_string(not_started) + " not started";
  say(summary);
  if (report_failed) return kExitBatchNotRun;
  return counts.failed ? kExitBatchSomeFailed : 0;
}

}  // namespace veltor::console
