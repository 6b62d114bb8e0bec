// Runs what the user types at "Command: ", as the console's command loop does, but driven by
// the window's events: a line typed while no command runs starts one; a line typed while a
// command waits at a prompt answers it (the prompt waits in LineInput's nested event loop).
// Command strings queued by the module or the command palette run once the running command
// has ended.
#pragma once

#include <QObject>
#include <string>
#include <vector>

#include "drawing/session/session.h"
#include "workbench/line_input.h"

namespace veltor::workbench {

class CommandDriver : public QObject {
  Q_OBJECT

 public:
  // Both must outlive the driver.
  CommandDriver(session::Session& session, LineInput& input) : session_(session), input_(input) {}

  // A line typed at the command line: an answer when a prompt waits, else a command line
  // (Enter alone repeats the last command).
  void Type(const std::string& line);
  // Runs the lines of a script: each answers the next prompt, the "Command: " prompt included.
  void RunScript(std::vector<std::string> lines);
  // Escape: cancels the prompt waiting now; with no command running, clears the pickfirst
  // set as the CAD host does.
  void Escape();
  // Runs queued command strings and queued lines until none is left (nothing when a run is
  // already under way further up the stack: it will get to them).
  void RunPending();
  bool busy() const { return busy_ || session_.command_running(); }

 signals:
  // A command line has run to its end (the drawing, its documents or its selection may have
  // changed).
  void CommandEnded();
  // QUIT ran.
  void QuitRequested();

 private:
  void RunLine(const std::string& line);

  session::Session& session_;
  LineInput& input_;
  std::string last_command_;
  bool busy_ = false;
};

}  // namespace veltor::workbench
