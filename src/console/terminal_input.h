// Answers typed by a person at a terminal: line editing and history (libedit), Tab
// completion (command names at "Command: ", file paths at every other prompt), and Ctrl-C
// cancelling the running command.
#pragma once

#include <string>
#include <vector>

#include "drawing/session/input_source.h"

namespace veltor::console {

class TerminalInput : public session::InputSource {
 public:
  // `commands` completes with Tab at the "Command: " prompt.
  explicit TerminalInput(std::vector<std::string> commands);
  ~TerminalInput() override;
  session::InputLine ReadLine(const std::string& prompt) override;
  void SetCommands(std::vector<std::string> commands);
};

}  // namespace veltor::console
