#include "console/progress_line.h"

#include <cstdio>

namespace veltor::console {

namespace {
constexpr auto kQuietPeriod = std::chrono::seconds(1);
constexpr auto kTick = std::chrono::milliseconds(250);
}  // namespace

ProgressLine::ProgressLine(bool enabled) : enabled_(enabled) {
  if (enabled_) ticker_ = std::thread([this] { Run(); });
}

ProgressLine::~ProgressLine() {
  if (!enabled_) return;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    stopping_ = true;
    ClearLocked();
  }
  wake_.notify_all();
  ticker_.join();
}

void ProgressLine::Busy(const std::string& label) {
  if (!enabled_) return;
  std::lock_guard<std::mutex> lock(mutex_);
  ClearLocked();
  label_ = label;
  busy_ = true;
  since_ = std::chrono::steady_clock::now();
  wake_.notify_all();
}

void ProgressLine::Idle() {
  if (!enabled_) return;
  std::lock_guard<std::mutex> lock(mutex_);
  busy_ = false;
  ClearLocked();
}

void ProgressLine::Clear() {
  if (!enabled_) return;
  std::lock_guard<std::mutex> lock(mutex_);
  ClearLocked();
}

void ProgressLine::ClearLocked() {
  if (!shown_) return;
  std::fputs("\r\033[K", stderr);
  std::fflush(stderr);
  shown_ = false;
}

void ProgressLine::Run() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!stopping_) {
    wake_.wait_for(lock, kTick);
    if (stopping_ || !busy_) continue;
    auto elapsed = std::chrono::steady_clock::now() - since_;
    if (elapsed < kQuietPeriod) continue;
    // Output printed meanwhile went to standard output; stdout is flushed first so the line
    // lands below it.
    std::fflush(stdout);
    long seconds = static_cast<long>(std::chrono::duration_cast<std::chrono::seconds>(elapsed).count());
    std::fprintf(stderr, "\r\033[K%s... %ld s", label_.c_str(), seconds);
    std::fflush(stderr);
    shown_ = true;
  }
}

}  // namespace veltor::console

namespace veltor::console {

session::InputLine ProgressInput::ReadLine(const std::string& prompt) {
  progress_.Idle();
  session::InputLine line = inner_.ReadLine(prompt);
  if (line.kind == session::InputLine::Kind::kLine && prompt == "Command: ") {
    size_t b = line.text.find_first_not_of(" \t");
    size_t e = line.text.find_first_of(" \t", b);
    if (b != std::string::npos) command_ = line.text.substr(b, e == std::string::npos ? e : e - b);
  }
  progress_.Busy(command_);
  return line;
}

}  // namespace veltor::console
