#include "console/terminal_input.h"

#include <editline/readline.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace veltor::console {

namespace {

volatile std::sig_atomic_t interrupted = 0;
std::vector<std::string>* completion_words = nullptr;
// Whether the line being read answers "Command: " (Tab completes command names) or another
// prompt (Tab completes file paths, which file dialogs and script paths ask for).
bool at_command_prompt = true;

void OnInterrupt(int) { interrupted = 1; }

char* CompleteCommand(const char* text, int state) {
  static size_t next = 0;
  if (state == 0) next = 0;
  if (!completion_words) return nullptr;
  size_t length = std::strlen(text);
  while (next < completion_words->size()) {
    const std::string& word = (*completion_words)[next++];
    if (strncasecmp(word.c_str(), text, length) == 0) return strdup(word.c_str());
  }
  return nullptr;
}

char** Complete(const char* text, int start, int) {
  if (!at_command_prompt) {
    rl_attempted_completion_over = 0;  // the line editor's own file name completion
    return nullptr;
  }
  rl_attempted_completion_over = 1;
  if (start != 0) return nullptr;  // only the first word names a command
  return rl_completion_matches(text, CompleteCommand);
}

}  // namespace

TerminalInput::TerminalInput(std::vector<std::string> commands) {
  completion_words = new std::vector<std::string>(std::move(commands));
  rl_attempted_completion_function = Complete;
  // Ctrl-C interrupts the read (no SA_RESTART) so the prompt can be cancelled.
  struct sigaction action;
  std::memset(&action, 0, sizeof action);
  action.sa_handler = OnInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
}

TerminalInput::~TerminalInput() {
  delete completion_words;
  completion_words = nullptr;
  std::signal(SIGINT, SIG_DFL);
}

void TerminalInput::SetCommands(std::vector<std::string> commands) {
  if (completion_words) *completion_words = std::move(commands);
}

session::InputLine TerminalInput::ReadLine(const std::string& prompt) {
  interrupted = 0;
  at_command_prompt = prompt == "Command: ";
  char* line = readline(prompt.c_str());
  if (!line) {
    if (interrupted) {
      interrupted = 0;
      std::fputs("*Cancel*\n", stdout);
      return {session::InputLine::Kind::kCancel, {}};
    }
    std::fputs("\n", stdout);
    return {session::InputLine::Kind::kEnd, {}};
  }
  std::string text(line);
  std::free(line);
  if (interrupted) {
    interrupted = 0;
    std::fputs("*Cancel*\n", stdout);
    return {session::InputLine::Kind::kCancel, {}};
  }
  if (!text.empty()) add_history(text.c_str());
  return {session::InputLine::Kind::kLine, text};
}

}  // namespace veltor::console
