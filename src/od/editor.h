// The command line: output, prompts, the pickfirst selection and queued command strings.
#pragma once

#include <string>
#include <string_view>

#include "od/ids.h"
#include "od/value.h"

namespace veltor::od {

enum class PromptStatus {
  kOk,      // an answer was given
  kNone,    // Enter with nothing typed (the prompt's default applies)
  kCancel,  // the user cancelled (Esc, Ctrl-C, end of script input, "Cancel")
};

template <typename T>
struct PromptResult {
  PromptStatus status = PromptStatus::kCancel;
  T value{};
  bool ok() const { return status == PromptStatus::kOk; }
};

class Editor {
 public:
  virtual ~Editor() = default;

  // Prints text on the command line as it stands (the text carries its own line ends).
  virtual void Print(std::string_view text) = 0;
  // Tells the user an answer was refused (printed as a line). Returns whether to ask again:
  // a script stops at its first refused answer, and the prompts after it are cancelled.
  virtual bool Refuse(const std::string& message) {
    Print(message + "\n");
    return true;
  }

  // A text answer. Without `allow_spaces` a space ends the answer, as Enter does.
  virtual PromptResult<std::string> GetString(const std::string& prompt, bool allow_spaces) = 0;
  // An integer answer; text that is not an integer is refused and the prompt repeated.
  virtual PromptResult<int> GetInt(const std::string& prompt) = 0;
  // A point ("x,y" or "x,y,z").
  virtual PromptResult<Point3> GetPoint(const std::string& prompt) = 0;
  // One entity, picked or named by handle; the picked point is not kept.
  virtual PromptResult<EntityId> GetEntity(const std::string& prompt) = 0;

  // The host's own object selection ("Select objects: "). kCancel when cancelled; otherwise
  // kOk with the selected entities in selection order (empty when nothing was selected).
  virtual PromptResult<EntityList> SelectObjects() = 0;
  // The pickfirst selection handed to the running command (empty when there is none).
  virtual EntityList ImpliedSelection() = 0;
  // Makes `entities` the pickfirst selection (an empty list clears it).
  virtual void SetPickfirst(const EntityList& entities) = 0;

  // Sends a command string to the host at once: "CANCELCMD" cancels the running command.
  virtual void PostCommand(const std::string& text) = 0;
  // Queues a command string for the active document; it runs when the current command ends.
  virtual void SendStringToExecute(const std::string& text) = 0;

  // A progress meter on the status line.
  virtual void StartProgress(const std::string& label, int maximum) = 0;
  virtual void SetProgress(int position) = 0;
  virtual void EndProgress() = 0;
  // Redraws what changed.
  virtual void UpdateDisplay() = 0;
};

}  // namespace veltor::od
