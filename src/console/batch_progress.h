// The progress of a batch run on the terminal: one line, redrawn as drawings finish, with
// what is done, failed and left and an estimate of the time left. Nothing is drawn when
// standard error is not a terminal.
#pragma once

#include <cstddef>
#include <string>

namespace veltor::console {

struct BatchCounts {
  size_t done = 0;
  size_t failed = 0;
  size_t left = 0;  // running or not started yet
};

// "12 done, 1 failed, 27 left, about 1 min 5 s to go". The estimate is the time per
// finished drawing so far (wall clock, so it reflects how many run at once) times the
// drawings left; it is missing until a drawing has finished.
std::string BatchProgressText(const BatchCounts& counts, double elapsed_seconds);

class BatchProgress {
 public:
  explicit BatchProgress(bool enabled) : enabled_(enabled) {}
  ~BatchProgress() { Clear(); }
  BatchProgress(const BatchProgress&) = delete;
  BatchProgress& operator=(const BatchProgress&) = delete;

  void Show(const BatchCounts& counts, double elapsed_seconds);
  // Removes the line so that a message can be printed; the next Show draws it again.
  void Clear();

 private:
  bool enabled_;
  bool shown_ = false;
};

}  // namespace veltor::console
