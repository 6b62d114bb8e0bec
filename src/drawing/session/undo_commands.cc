// The host's own commands of the embedded session that every front end has: undo and redo,
// SELECT, ZOOM and the do-nothing answers to commands the module posts.
#include "drawing/session/host_commands.h"

#include <algorithm>
#include <optional>

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
// The box around every entity of `entities` that has extents; empty when none has.
std::optional<od::Box3> ExtentsOf(Session& s, const od::EntityList& entities) {
  od::Database* db = s.WorkingDatabase();
  if (!db) return std::nullopt;
  std::optional<od::Box3> all;
  for (od::EntityId id : entities) {
    std::optional<od::Box3> box = db->GeomExtents(id);
    if (!box) continue;
    if (!all) {
      all = box;
      continue;
    }
    all->min = {std::min(all->min.x, box->min.x), std::min(all->min.y, box->min.y), std::min(all->min.z, box->min.z)};
    all->max = {std::max(all->max.x, box->max.x), std::max(all->max.y, box->max.y), std::max(all->max.z, box->max.z)};
  }
  return all;
}

// Takes the host's answers; a front end with a view is asked to show the result. Previous,
// Center and scale factors are taken and change nothing.
void ZoomCommand(Session& s) {
  od::PromptResult<std::string> option = s.Ed().GetString(
      "Specify corner of window, enter a scale factor (nX or nXP), or\n"
      "[All/Center/Extents/Previous/Window/Object] <real time>: ",
      false);
  if (option.status != od::PromptStatus::kOk) return;
  if (od::MatchesKeyword(option.value, "all") || od::MatchesKeyword(option.value, "extents")) {
    s.Zoom(std::nullopt);
  } else if (od::MatchesKeyword(option.value, "object")) {
    od::PromptResult<od::EntityList> chosen = s.Ed().SelectObjects();
    if (!chosen.ok()) return;
    if (std::optional<od::Box3> box = ExtentsOf(s, chosen.value)) s.Zoom(box);
  } else if (od::MatchesKeyword(option.value, "window")) {
    od::PromptResult<od::Point3> first = s.Ed().GetPoint("Specify first corner: ");
    if (!first.ok()) return;
    od::PromptResult<od::Point3> second = s.Ed().GetPoint("Specify opposite corner: ");
    if (!second.ok()) return;
    const od::Point3& a = first.value;
    const od::Point3& b = second.value;
    s.Zoom(od::Box3{{std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)},
                    {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)}});
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
