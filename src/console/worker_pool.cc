#include "console/worker_pool.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

extern char** environ;

namespace veltor::console {

namespace {

std::string ReadAndRemove(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  std::remove(path.c_str());
  return text.str();
}

}  // namespace

WorkerPool::WorkerPool(std::string program) : program_(std::move(program)) {}

WorkerPool::~WorkerPool() {
  // Jobs still running belong to an interrupted run: wait for them so none is left behind.
  while (!running_.empty()) Wait();
  if (!scratch_.empty()) rmdir(scratch_.c_str());
}

Status WorkerPool::Open() {
  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/veltor-batch-XXXXXX";
  std::vector<char> buffer(pattern.begin(), pattern.end());
  buffer.push_back('\0');
  if (!mkdtemp(buffer.data())) return Status::Error(pattern + ": " + std::strerror(errno));
  scratch_ = buffer.data();
  return Status::Ok();
}

std::string WorkerPool::CapturePath(size_t job, const char* stream) const {
  return scratch_ + "/" + std::to_string(job) + "." + stream;
}

void WorkerPool::Start(size_t job, const std::vector<std::string>& args) {
  std::vector<std::string> all{program_};
  all.insert(all.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (std::string& a : all) argv.push_back(a.data());
  argv.push_back(nullptr);

  auto fail = [&](const std::string& why) {
    WorkerOutcome outcome;
    outcome.job = job;
    outcome.start_error = program_ + ": " + why;
    not_started_.push_back(std::move(outcome));
  };
  posix_spawn_file_actions_t actions;
  if (int e = posix_spawn_file_actions_init(&actions)) return fail(std::strerror(e));
  int e = posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  std::string out_path = CapturePath(job, "out"), err_path = CapturePath(job, "err");
  if (!e) e = posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (!e) e = posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t pid = 0;
  if (!e) {
    bool search_path = program_.find('/') == std::string::npos;
    e = search_path ? posix_spawnp(&pid, program_.c_str(), &actions, nullptr, argv.data(), environ)
                    : posix_spawn(&pid, program_.c_str(), &actions, nullptr, argv.data(), environ);
  }
  posix_spawn_file_actions_destroy(&actions);
  if (e) {
    std::remove(out_path.c_str());
    std::remove(err_path.c_str());
    return fail(std::strerror(e));
  }
  running_[pid] = {job, std::chrono::steady_clock::now()};
}

WorkerOutcome WorkerPool::Collect(size_t job, double seconds) {
  WorkerOutcome outcome;
  outcome.job = job;
  outcome.seconds = seconds;
  outcome.out = ReadAndRemove(CapturePath(job, "out"));
  outcome.err = ReadAndRemove(CapturePath(job, "err"));
  return outcome;
}

WorkerOutcome WorkerPool::Wait() {
  if (!not_started_.empty()) {
    WorkerOutcome outcome = std::move(not_started_.back());
    not_started_.pop_back();
    return outcome;
  }
  for (;;) {
    int status = 0;
    pid_t pid = waitpid(-1, &status, 0);
    if (pid < 0) {
      if (errno == EINTR) continue;
      // No child left (cannot happen while running_ is not empty): report every job as lost.
      auto it = running_.begin();
      WorkerOutcome outcome = Collect(it->second.job, 0);
      outcome.start_error = std::string("waitpid: ") + std::strerror(errno);
      running_.erase(it);
      return outcome;
    }
    auto it = running_.find(pid);
    if (it == running_.end()) continue;  // not one of ours
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - it->second.since).count();
    WorkerOutcome outcome = Collect(it->second.job, seconds);
    running_.erase(it);
    if (WIFEXITED(status)) outcome.exit_code = WEXITSTATUS(status);
    else if (WIFSIGNALED(status)) outcome.signal = WTERMSIG(status);
    return outcome;
  }
}

}  // namespace veltor::console
