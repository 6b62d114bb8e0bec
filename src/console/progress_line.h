// A progress line on the terminal for work that takes a while: loading, saving, a command.
//
// Busy(label) starts a quiet timer; when the work is still going after a second, a line
// "label... 3 s" appears on standard error and counts up until Idle() clears it. Nothing is
// ever shown when standard error is not a terminal, so transcripts and logs stay clean.
// Output that the console prints meanwhile must call Clear() first so lines do not mix.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace veltor::console {

class ProgressLine {
 public:
  // `enabled` false makes every call a no-op (standard error is not a terminal).
  explicit ProgressLine(bool enabled);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void Busy(const std::string& label);
  void Idle();
  // Removes the line from the screen if it is shown; it comes back on the next tick.
  void Clear();

 private:
  void Run();
  void ClearLocked();

  bool enabled_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::thread ticker_;
  std::string label_;
  bool busy_ = false;
  bool shown_ = false;
  bool stopping_ = false;
  std::chrono::steady_clock::time_point since_;
};

}  // namespace veltor::console

#include "drawing/session/input_source.h"

namespace veltor::console {

// Wraps an input source: the console is idle while it waits for an answer and busy (named
// after the command typed at "Command: ") from the answer until the next prompt.
class ProgressInput : public session::InputSource {
 public:
  ProgressInput(session::InputSource& inner, ProgressLine& progress)
      : inner_(inner), progress_(progress) {}
  session::InputLine ReadLine(const std::string& prompt) override;
  void Rejected(const std::string& why) override { inner_.Rejected(why); }
  bool failed() const override { return inner_.failed(); }

 private:
  session::InputSource& inner_;
  ProgressLine& progress_;
  std::string command_ = "Working";
};

}  // namespace veltor::console
