// Where the session's answers come from: a person at a terminal, a script, or a test.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veltor::session {

struct InputLine {
  enum class Kind { kLine, kCancel, kEnd };
  Kind kind = Kind::kEnd;
  std::string text;  // kLine: the line without its line end
};

class InputSource {
 public:
  virtual ~InputSource() = default;
  // Shows `prompt` (or echoes it with the answer) and reads the next line. kCancel: the user
  // cancelled (Ctrl-C); kEnd: there is no more input.
  virtual InputLine ReadLine(const std::string& prompt) = 0;
  // The last answer was refused with `why` (already printed). A script stops here; a person
  // is asked again.
  virtual void Rejected(const std::string& why) { (void)why; }
  // True once a script was stopped by a refused answer.
  virtual bool failed() const { return false; }
};

// Answers from a list of lines (script files, -c options, tests). Each prompt and its answer
// are echoed to `echo` as a transcript. A refused answer ends the input, as a script must stop
// there; with `stop_at_refusal` false the lines answer like a person typing, who is asked again.
class LinesInput : public InputSource {
 public:
  using Echo = std::function<void(const std::string&)>;
  LinesInput(std::vector<std::string> lines, Echo echo, bool stop_at_refusal = true)
      : lines_(std::move(lines)), echo_(std::move(echo)), stop_at_refusal_(stop_at_refusal) {}

  InputLine ReadLine(const std::string& prompt) override {
    if (failed_ || next_ >= lines_.size()) return {InputLine::Kind::kEnd, {}};
    const std::string& line = lines_[next_++];
    if (echo_) echo_(prompt + line + "\n");
    return {InputLine::Kind::kLine, line};
  }
  void Rejected(const std::string& why) override {
    if (!stop_at_refusal_) return;
    failed_ = true;
    failure_ = why;
  }
  bool failed() const override { return failed_; }
  // 1-based number of the last line read (the failing one after a refusal).
  size_t line_number() const { return next_; }
  const std::string& failure() const { return failure_; }
  bool exhausted() const { return next_ >= lines_.size(); }

 private:
  std::vector<std::string> lines_;
  Echo echo_;
  bool stop_at_refusal_ = true;
  size_t next_ = 0;
  bool failed_ = false;
  std::string failure_;
};

}  // namespace veltor::session
