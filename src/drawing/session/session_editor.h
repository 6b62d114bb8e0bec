// The editor of the embedded host: command-line output and prompts answered from the
// session's InputSource.
//
// Answers are read as the CAD host reads typed input and script files: Enter ends an answer,
// and so does a space, except at prompts for text that may contain spaces. What is left of a
// line answers the following prompts. An answer starting with "'" runs a transparent command
// and asks again; "*Cancel*" cancels.
#pragma once

#include <string>

#include "od/editor.h"

namespace veltor::session {

class Session;

class SessionEditor : public od::Editor {
 public:
  explicit SessionEditor(Session& session) : session_(session) {}

  void Print(std::string_view text) override;
  od::PromptResult<std::string> GetString(const std::string& prompt, bool allow_spaces) override;
  od::PromptResult<int> GetInt(const std::string& prompt) override;
  od::PromptResult<od::Point3> GetPoint(const std::string& prompt) override;
  od::PromptResult<od::EntityId> GetEntity(const std::string& prompt) override;
  od::PromptResult<od::EntityList> SelectObjects() override;
  od::EntityList ImpliedSelection() override;
  void SetPickfirst(const od::EntityList& entities) override;
  void PostCommand(const std::string& text) override;
  void SendStringToExecute(const std::string& text) override;
  void StartProgress(const std::string& label, int maximum) override;
  void SetProgress(int position) override;
  void EndProgress() override;
  void UpdateDisplay() override {}

  // Reads one answer: kOk with the text, kNone for Enter, kCancel. Transparent commands typed
  // at the prompt run here.
  od::PromptStatus ReadAnswer(const std::string& prompt, bool allow_spaces, std::string& answer);
  // Reports a refused answer: printed, and the input source decides whether to go on.
  // Returns false when it must not ask again (a script stops at its first refused line).
  bool Refuse(const std::string& message) override;
  // Typed-ahead input: the rest of a line, or a queued command string.
  void PushInput(const std::string& text) { pending_ = text + pending_; }
  bool has_pending_input() const { return !pending_.empty(); }
  void ClearPendingInput() { pending_.clear(); }
  // True once the input source said it has no more input.
  bool input_ended() const { return input_ended_; }
  void ClearInputEnded() { input_ended_ = false; }
  // Whether a prompt was cancelled since the last call (script end, "*Cancel*", Ctrl-C,
  // CANCELCMD); clears the mark.
  bool TakeCancelled() {
    bool was = cancelled_;
    cancelled_ = false;
    return was;
  }
  void MarkCancelled() { cancelled_ = true; }

 private:
  bool TakePending(bool allow_spaces, std::string& answer);
  od::PromptStatus ReadAnswerOnce(const std::string& prompt, bool allow_spaces, std::string& answer);

  Session& session_;
  std::string pending_;
  int progress_max_ = 0;
  bool input_ended_ = false;
  bool cancelled_ = false;
};

struct SessionDocument;
// True when `id` names a live entity of model space that a prompt may pick.
bool InCurrentSpace(SessionDocument& doc, od::EntityId id);

// Parses "x,y" or "x,y,z" (numbers as scanf's "%lf" reads them, nothing else on the line).
bool ParsePoint(const std::string& text, od::Point3& point);

}  // namespace veltor::session
