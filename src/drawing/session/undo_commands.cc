// The host's own commands of the embedded session that every front end has: undo and redo,
// SELECT, ZOOM and the do-nothing answers to commands the module posts.
#include "drawing/session/host_commands.h"

#include "od/format.h"
#include "od/gathering.h"
#include "od/text.h"

namespace veltor::session {

namespace {

void PrintReplayed(Session& s, const std::vector<std::string>& names, const char* none) {
  for (const std::string& name : names) s.Print(name + "\n");
  if (names.empty()) s.Print(none);
}

void UndoCommand(Session& s) {
  size_t count = 1;
  bool answered = AskUntilAccepted(
      s, "Enter the number of operations to undo <1>: ", false, "Requires a positive integer.",
      [&](const std::string& answer) {
        if (answer.empty()) return true;
        int n = od::ParseLeadingInt(answer);
        count = static_cast<size_t>(n);
        return n > 0;
      });
  if (answered) PrintReplayed(s, s.Undo(count), "Everything has been undone\n");
}

void RedoCommand(Session& s, bool ask) {
  size_t count = 1;
  if (ask) {
    bool answered = AskUntilAccepted(
        s, "Enter number of Actions or [All/Last]: ", false, "Requires a positive integer or All/Last.",
        [&](const std::string& answer) {
          if (answer.empty()) return true;
          if (od::MatchesKeyword(answer, "all") || od::MatchesKeyword(answer, "last")) {
            count = static_cast<size_t>(-1);
            return true;
          }
          int n = od::ParseLeadingInt(answer);
          count = static_cast<size_t>(n);
          return n > 0;
        });
    if (!answered) return;
  }
  PrintReplayed(s, s.Redo(count), "Everything has been redone\n");
}

void SelectCommand(Session& s) {
  od::PromptResult<od::EntityList> picked = s.Ed().SelectObjects();
  if (picked.status != od::PromptStatus::kOk) return;
  s.Ed().SetPickfirst(picked.value);
}

// The console has no view to zoom; the command takes its answers so scripts and queued
// strings ("_.zoom _o") run as they would in the CAD host.
void ZoomCommand(Session& s) {
  od::PromptResult<std::string> option = s.Ed().GetString(
      "Specify corner of window, enter a scale factor (nX or nXP), or\n"
      "[All/Center/Extents/Previous/Window/Object] <real time>: ",
      false);
  if (option.status != od::PromptStatus::kOk) return;
  if (od::MatchesKeyword(option.value, "object")) {
    (void)s.Ed().SelectObjects();
  } else if (od::MatchesKeyword(option.value, "window")) {
    if (s.Ed().GetPoint("Specify first corner: ").ok()) (void)s.Ed().GetPoint("Specify opposite corner: ");
  }
}

}  // namespace

void AddHostCommand(Session& s, const std::string& name, int flags, const std::string& summary,
                    std::function<void()> handler) {
  od::CommandInfo info;
  info.summary = summary;
  info.group = kHostGroup;
  info.global_name = name;
  info.local_name = name;
  info.flags = flags;
  (void)s.AddCommand(info, std::move(handler));
}

bool AskUntilAccepted(Session& s, const std::string& prompt, bool allow_spaces,
                      const std::string& refusal,
                      const std::function<bool(const std::string&)>& accept) {
  for (;;) {
    od::PromptResult<std::string> answer = s.Ed().GetString(prompt, allow_spaces);
    if (answer.status != od::PromptStatus::kOk) return false;
    if (accept(answer.value)) return true;
    if (!s.editor().Refuse(refusal)) return false;
  }
}

void RegisterUndoCommands(Session& s) {
  for (const char* name : {"UNDO", "U", "MREDO", "REDO"}) s.MarkNotUndoStep(name);
  AddHostCommand(s, "UNDO", od::kCmdModal, "Undoes the last commands (asks how many)",
                 [&s] { UndoCommand(s); });
  AddHostCommand(s, "U", od::kCmdModal, "Undoes the last command",
                 [&s] { PrintReplayed(s, s.Undo(1), "Everything has been undone\n"); });
  AddHostCommand(s, "MREDO", od::kCmdModal, "Redoes undone commands (asks how many)",
                 [&s] { RedoCommand(s, true); });
  AddHostCommand(s, "REDO", od::kCmdModal, "Redoes the last undone command",
                 [&s] { RedoCommand(s, false); });
  AddHostCommand(s, "SELECT", od::kCmdModal,
                 "Selects objects; they become the current and the previous selection",
                 [&s] { SelectCommand(s); });
  AddHostCommand(s, "ZOOM", od::kCmdTransparent | od::kCmdUsePickSet,
                 "Zooms the view (takes its answers; the console has no view)",
                 [&s] { ZoomCommand(s); });
}

}  // namespace veltor::session
