// Script lines read as they are needed: from a file or standard input, then the -c lines.
//
// Nothing is read ahead, so endless input on standard input keeps memory flat. A UTF-8
// byte-order mark on the first line and CR line ends are dropped; every other character is
// kept (a trailing space ends an answer). A line that is not valid UTF-8 is refused: the input
// ends there and failed() names the line.
#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "drawing/session/input_source.h"
#include "od/status.h"

namespace veltor::console {

class ScriptInput : public session::InputSource {
 public:
  using Echo = std::function<void(const std::string&)>;
  // `path` is a script file, "-" for standard input, or empty for the -c lines alone.
  static Result<std::unique_ptr<ScriptInput>> Open(const std::string& path,
                                                   std::vector<std::string> extra_lines, Echo echo);
  ~ScriptInput() override;
  ScriptInput(const ScriptInput&) = delete;
  ScriptInput& operator=(const ScriptInput&) = delete;

  session::InputLine ReadLine(const std::string& prompt) override;
  void Rejected(const std::string& why) override;
  bool failed() const override { return failed_; }
  // 1-based number of the last line read (the refused one after a failure).
  size_t line_number() const { return line_number_; }
  const std::string& failure() const { return failure_; }
  // A read error of the script file itself (not a refused line).
  bool unreadable() const { return unreadable_; }

 private:
  ScriptInput(std::FILE* file, bool owned, std::vector<std::string> extra_lines, Echo echo);
  // The next raw line; false at the end of all input.
  bool NextLine(std::string& line);

  std::FILE* file_;
  bool owns_file_;
  std::vector<std::string> extra_lines_;
  size_t next_extra_ = 0;
  Echo echo_;
  size_t line_number_ = 0;
  bool failed_ = false;
  bool unreadable_ = false;
  std::string failure_;
};

}  // namespace veltor::console
