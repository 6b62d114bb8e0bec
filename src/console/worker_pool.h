// Worker processes for a batch run: each one a program started with posix_spawn, its
// standard input /dev/null and its standard output and error captured in files of a scratch
// folder (files rather than pipes, so a worker that prints a lot never waits on us).
#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

struct WorkerOutcome {
  size_t job = 0;                // the number given to Start
  std::optional<int> exit_code;  // when it exited
  std::optional<int> signal;     // when a signal killed it
  std::string start_error;       // it could not be started (then neither of the above)
  std::string out;               // its standard output
  std::string err;               // its standard error
  double seconds = 0;            // from start to exit, wall clock
};

class WorkerPool {
 public:
  // `program` is run as given when it contains a "/", else looked up in PATH.
  explicit WorkerPool(std::string program);
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  // Makes the scratch folder for the captured output (under TMPDIR, else /tmp).
  Status Open();

  // Starts `program args...` as job number `job`. When it cannot be started, the failure
  // is returned by the next Wait, like any other outcome.
  void Start(size_t job, const std::vector<std::string>& args);

  size_t running() const { return running_.size() + not_started_.size(); }

  // Waits until one started job ends and returns what it did. Requires running() > 0.
  WorkerOutcome Wait();

 private:
  struct Running {
    size_t job;
    std::chrono::steady_clock::time_point since;
  };
  std::string CapturePath(size_t job, const char* stream) const;
  WorkerOutcome Collect(size_t job, double seconds);

  std::string program_;
  std::string scratch_;
  std::map<pid_t, Running> running_;
  std::vector<WorkerOutcome> not_started_;
};

}  // namespace veltor::console
