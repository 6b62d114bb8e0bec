#include "workbench/line_input.h"

#include <QEventLoop>

namespace veltor::workbench {

session::InputLine LineInput::ReadLine(const std::string& prompt) {
  if (queue_.empty() && !ended_) {
    prompt_ = prompt;
    emit PromptChanged(QString::fromStdString(prompt));
    QEventLoop loop;
    loop_ = &loop;
    while (queue_.empty() && !ended_ && !interrupted_) loop.exec();
    loop_ = nullptr;
    prompt_.clear();
    emit PromptChanged(QString());
  }
  if (interrupted_) {
    interrupted_ = false;
    if (echo_) echo_(prompt + "*Cancel*\n");
    return {session::InputLine::Kind::kCancel, {}};
  }
  if (queue_.empty()) return {session::InputLine::Kind::kEnd, {}};
  session::InputLine line = std::move(queue_.front());
  queue_.pop_front();
  if (script_left_ > 0) --script_left_;
  if (line.kind == session::InputLine::Kind::kLine && echo_) echo_(prompt + line.text + "\n");
  return line;
}

void LineInput::Rejected(const std::string&) {
  if (script_left_ == 0) return;
  if (echo_) echo_("Script stopped: the line above was refused.\n");
  queue_.erase(queue_.begin(), queue_.begin() + static_cast<long>(script_left_));
  script_left_ = 0;
}

void LineInput::Submit(const std::string& line) {
  queue_.push_back({session::InputLine::Kind::kLine, line});
  Wake();
}

void LineInput::SubmitAll(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) queue_.push_back({session::InputLine::Kind::kLine, line});
  Wake();
}

void LineInput::QueueScript(std::vector<std::string> lines) {
  // A script goes before what the user typed meanwhile: it was started first.
  for (auto it = lines.rbegin(); it != lines.rend(); ++it)
    queue_.push_front({session::InputLine::Kind::kLine, std::move(*it)});
  script_left_ += lines.size();
  Wake();
}

void LineInput::Cancel() {
  // A cancel answers the prompt waiting now; what was queued behind it is dropped.
  queue_.clear();
  script_left_ = 0;
  if (!loop_) return;
  interrupted_ = true;
  Wake();
}

void LineInput::End() {
  ended_ = true;
  queue_.clear();
  script_left_ = 0;
  Wake();
}

bool LineInput::TakeQueued(session::InputLine& line) {
  if (queue_.empty()) return false;
  line = std::move(queue_.front());
  queue_.pop_front();
  if (script_left_ > 0) --script_left_;
  return true;
}

void LineInput::Wake() {
  if (loop_) loop_->quit();
}

}  // namespace veltor::workbench
