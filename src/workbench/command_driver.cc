#include "workbench/command_driver.h"

#include "od/text.h"

namespace veltor::workbench {

void CommandDriver::Type(const std::string& line) {
  input_.Submit(line);
  if (!input_.waiting()) RunPending();
}

void CommandDriver::RunScript(std::vector<std::string> lines) {
  input_.QueueScript(std::move(lines));
  if (!input_.waiting()) RunPending();
}

void CommandDriver::Escape() {
  if (input_.waiting()) {
    input_.Cancel();
    return;
  }
  if (!busy()) {
    session_.Print("Command: *Cancel*\n");
    session_.editor().SetPickfirst({});
    emit CommandEnded();
  }
}

void CommandDriver::RunPending() {
  if (busy()) return;
  busy_ = true;
  for (;;) {
    if (!session_.queue().empty()) {
      session_.RunQueue();
      emit CommandEnded();
      continue;
    }
    session::InputLine line;
    if (session_.quit_requested() || !input_.TakeQueued(line)) break;
    if (line.kind == session::InputLine::Kind::kLine) RunLine(line.text);
    emit CommandEnded();
  }
  busy_ = false;
  if (session_.quit_requested()) emit QuitRequested();
}

void CommandDriver::RunLine(const std::string& text) {
  session::SessionEditor& editor = session_.editor();
  if (od::TrimBlanks(text, " \t\r").empty()) {
    // Enter at "Command: " repeats the last command.
    session_.Print("Command: \n");
    if (!last_command_.empty()) session_.Execute(last_command_);
    return;
  }
  // The line is typed input: its first word names the command and the rest answers its
  // prompts, as a line typed at the console.
  editor.PushInput(text);
  while (editor.has_pending_input() && !session_.quit_requested()) {
    std::string name;
    od::PromptStatus status = editor.ReadAnswer("Command: ", false, name);
    if (status == od::PromptStatus::kCancel) {
      editor.SetPickfirst({});
      break;
    }
    if (status == od::PromptStatus::kNone) continue;
    if (const od::CommandInfo* command = session_.FindCommand(name)) last_command_ = command->global_name;
    if (!session_.Execute(name)) break;
  }
  editor.ClearPendingInput();
}

}  // namespace veltor::workbench
