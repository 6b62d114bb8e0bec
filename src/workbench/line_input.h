// The session's input source in the workbench: answers typed at the command line (or lines
// of a script, or selections made in the view) are queued here, and a prompt that finds the
// queue empty waits in a nested QEventLoop, so the window stays live while a command asks.
#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <string>

#include "drawing/session/input_source.h"

class QEventLoop;

namespace veltor::workbench {

class LineInput : public QObject, public session::InputSource {
  Q_OBJECT

 public:
  using Echo = std::function<void(const std::string&)>;
  // `echo` receives each prompt with its answer, as a transcript line.
  explicit LineInput(Echo echo) : echo_(std::move(echo)) {}

  // --- session::InputSource ---
  // Takes the next queued answer, waiting for one when there is none.
  session::InputLine ReadLine(const std::string& prompt) override;
  // A refused answer stops a running script (its remaining lines are dropped); a person is
  // asked again.
  void Rejected(const std::string& why) override;

  // --- what the front end feeds ---
  // One answer, as typed.
  void Submit(const std::string& line);
  // Several answers at once (a selection made in the view: "W", corner, corner).
  void SubmitAll(const std::vector<std::string>& lines);
  // Lines of a script: each answers the next prompt; a refused answer drops the rest.
  void QueueScript(std::vector<std::string> lines);
  // Cancels the prompt waiting now (Escape) and drops queued answers; nothing when no
  // prompt waits.
  void Cancel();
  // No more input: every prompt, now and later, is cancelled as at the end of a script.
  void End();

  bool waiting() const { return loop_ != nullptr; }
  const std::string& prompt() const { return prompt_; }
  bool has_queued() const { return !queue_.empty(); }
  bool script_running() const { return script_left_ > 0; }
  // Takes the next queued line for the "Command: " prompt; false when none is queued.
  bool TakeQueued(session::InputLine& line);

 signals:
  // A prompt now waits for an answer (empty when the command line is idle again).
  void PromptChanged(const QString& prompt);

 private:
  void Wake();

  Echo echo_;
  std::deque<session::InputLine> queue_;
  size_t script_left_ = 0;  // how many queued lines (from the front) belong to a script
  QEventLoop* loop_ = nullptr;
  std::string prompt_;
  bool ended_ = false;
  bool interrupted_ = false;
};

}  // namespace veltor::workbench
