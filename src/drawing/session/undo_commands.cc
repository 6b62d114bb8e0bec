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
  od::PromptResult<std::string> answer =
      s.Ed().GetString("Enter the number of operations to undo <1>: ", false);
  if (answer.status == od::PromptStatus::kCancel) return;
  size_t count = 1;
  if (!answer.value.empty()) {
    int n = od::ParseLeadingInt(answer.value);
    if (n <= 0) {
      s.editor().Refuse("Requires a positive integer.");
      return;
    }
    count = static_cast<size_t>(n);
  }
  PrintReplayed(s, s.Undo(count), "Everything has been undone\n");
}

void RedoCommand(Session& s, bool ask) {
  size_t count = 1;
  if (ask) {
    od::PromptResult<std::string> answer =
        s.Ed().GetString("Enter number of Actions or [All/Last]: ", false);
    if (answer.status == od::PromptStatus::kCancel) return;
    if (od::MatchesKeyword(answer.value, "all") || od::MatchesKeyword(answer.value, "last")) {
      count = static_cast<size_t>(-1);
    } else if (!answer.value.empty()) {
      int n = od::ParseLeadingInt(answer.value);
      if (n <= 0) {
        s.editor().Refuse("Requires a positive integer or All/Last.");
        return;
      }
      count = static_cast<size_t>(n);
    }
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

void RegisterUndoCommands(Session& s) {
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
