// Running commands: the "Command: " loop, queued command strings, transparent commands and
// one undo group per command.
#include <exception>
#include <unordered_set>

#include "drawing/session/object_ids.h"
#include "drawing/session/session.h"
#include "od/text.h"

namespace veltor::session {

namespace {

std::string FirstWord(const std::string& line, std::string& rest) {
  size_t b = line.find_first_not_of(" \t");
  if (b == std::string::npos) {
    rest.clear();
    return "";
  }
  size_t e = line.find_first_of(" \t", b);
  if (e == std::string::npos) {
    rest.clear();
    return line.substr(b);
  }
  rest = line.substr(e + 1);
  return line.substr(b, e - b);
}

}  // namespace

bool Session::TakeCancelRequest() {
  bool requested = cancel_requested_;
  cancel_requested_ = false;
  return requested;
}

void Session::Run(const Command& command, bool transparent) {
  SessionDocument* doc = active();
  if (!(command.info.flags & od::kCmdUsePickSet) && doc && !doc->pickfirst.empty()) {
    doc->pickfirst.clear();
    NotifyPickfirstModified();
  }
  model::Document* drawing = doc ? doc->doc.get() : nullptr;
  bool grouped = !transparent && drawing && !drawing->store().recording();
  if (grouped) drawing->BeginUndoGroup(command.info.global_name);
  ++depth_;
  // Each command level tracks its own cancel: a transparent command cancelled inside a
  // prompt does not cancel the command it interrupted.
  bool outer_cancelled = editor_.TakeCancelled();
  bool failed = false;
  try {
    command.handler();
  } catch (const std::exception& e) {
    Print("Error: " + command.info.global_name + " failed: " + e.what() + "\n");
    failed = true;
  } catch (...) {
    Print("Error: " + command.info.global_name + " failed.\n");
    failed = true;
  }
  bool cancelled = editor_.TakeCancelled() || failed;
  if (outer_cancelled) editor_.MarkCancelled();
  --depth_;
  if (depth_ == 0) cancel_requested_ = false;
  // The drawing may have been closed by the command (CLOSE); only end a group that is open.
  if (!grouped || active() != doc || !doc || doc->doc.get() != drawing) return;
  if (cancelled) {
    // A cancelled or failed command leaves nothing of itself behind, not even an undo step.
    std::unique_ptr<dxf::UndoGroup> taken_back = drawing->CancelUndoGroup();
    if (taken_back && !taken_back->entries.empty()) {
      doc->project.container().Refresh();
      FireUndoReactors(*taken_back);
    }
    return;
  }
  // Every command the user ran is an undo step, also one that changed nothing (U names it).
  drawing->EndUndoGroup(!not_undo_steps_.count(command.info.global_name));
}

bool Session::RunTransparent(const std::string& name) {
  const Command* command = Find(name);
  if (!command) {
    Print("Unknown command \"" + name + "\".  Type HELP for a list of commands.\n");
    return false;
  }
  if (!(command->info.flags & od::kCmdTransparent)) {
    Print("** That command may not be invoked transparently **\n");
    return false;
  }
  Print(">>" + command->info.global_name + "\n");
  Run(*command, true);
  return true;
}

bool Session::Execute(const std::string& line) {
  std::string rest;
  std::string word = FirstWord(line, rest);
  if (word.empty()) return true;
  if (word[0] == '(') {
    bool ok = CallLisp(line);
    if (!ok && input_) input_->Rejected("unknown LISP function");
    return ok;
  }
  if (word[0] == '\'') word.erase(0, 1);
  const Command* command = Find(word);
  if (!command) {
    Print("Unknown command \"" + word + "\".  Type HELP for a list of commands.\n");
    editor_.ClearPendingInput();
    if (input_) input_->Rejected("unknown command " + word);
    return false;
  }
  if (!rest.empty()) editor_.PushInput(rest);
  last_command_ = command->info.global_name;
  Run(*command, false);
  return true;
}

void Session::RunQueue() {
  while (!queue_.empty() && !quit_) {
    std::string text = queue_.front();
    queue_.pop_front();
    // A queued string is typed input: its command name ends at a space or line end, and what
    // follows answers the command's prompts.
    editor_.PushInput(text);
    while (editor_.has_pending_input() && !quit_) {
      std::string name;
      od::PromptStatus status = editor_.ReadAnswer("Command: ", false, name);
      if (status == od::PromptStatus::kCancel) break;
      if (status == od::PromptStatus::kNone) continue;
      if (!Execute(name)) break;
    }
    editor_.ClearPendingInput();
  }
}

void Session::RunLoop() {
  while (!quit_) {
    RunQueue();
    if (quit_) break;
    if (panel_) {
      Panel panel = panel_;  // kept alive while it runs
      if (!panel()) panel_ = nullptr;
      if (input_ && input_->failed()) break;
      continue;
    }
    std::string answer;
    od::PromptStatus status = editor_.ReadAnswer("Command: ", false, answer);
    if (status == od::PromptStatus::kCancel) {
      if (editor_.input_ended() && interactive_ && input_ && !input_->failed()) {
        // End of input typed at a terminal (Ctrl-D) leaves as QUIT does: asking about
        // unsaved drawings first. Input that stays at its end cannot answer, so after a few
        // tries the loop stops rather than spin.
        editor_.ClearInputEnded();
        if (++ends_in_a_row_ > 3) break;
        Execute("QUIT");
        continue;
      }
      // At "Command: " a cancel is Ctrl-C (or "*Cancel*") unless the input has ended: as Esc
      // in the CAD host, it clears the pickfirst selection.
      if (!input_ || input_->failed() || editor_.input_ended()) break;
      editor_.SetPickfirst({});
      continue;
    }
    ends_in_a_row_ = 0;
    if (status == od::PromptStatus::kNone) {
      if (!last_command_.empty()) Execute(last_command_);
      continue;
    }
    Execute(answer);
    if (input_ && input_->failed()) break;
  }
}

std::vector<std::string> Session::Undo(size_t count) {
  std::vector<std::string> names;
  SessionDocument* doc = active();
  if (!doc) return names;
  // The undo command's own group closes first: it has changed nothing.
  doc->doc->EndUndoGroup();
  while (names.size() < count) {
    const dxf::UndoGroup* group = doc->doc->Undo();
    if (!group) break;
    names.push_back(group->label);
    doc->project.container().Refresh();
    FireUndoReactors(*group);
  }
  return names;
}

std::vector<std::string> Session::Redo(size_t count) {
  std::vector<std::string> names;
  SessionDocument* doc = active();
  if (!doc) return names;
  // The undo command's own group closes first: it has changed nothing.
  doc->doc->EndUndoGroup();
  while (names.size() < count) {
    const dxf::UndoGroup* group = doc->doc->Redo();
    if (!group) break;
    names.push_back(group->label);
    doc->project.container().Refresh();
    FireUndoReactors(*group);
  }
  return names;
}

bool Session::BeginUndoGroup(const std::string& label) {
  SessionDocument* doc = active();
  if (!doc || doc->doc->store().recording()) return false;
  doc->doc->BeginUndoGroup(label);
  return true;
}

void Session::EndUndoGroup() {
  if (SessionDocument* doc = active()) doc->doc->EndUndoGroup();
}

void Session::TakeBackUndoGroup() {
  SessionDocument* doc = active();
  if (!doc) return;
  std::unique_ptr<dxf::UndoGroup> taken_back = doc->doc->CancelUndoGroup();
  if (!taken_back || taken_back->entries.empty()) return;
  doc->project.container().Refresh();
  FireUndoReactors(*taken_back);
}

void Session::FireUndoReactors(const dxf::UndoGroup& group) {
  SessionDocument* doc = active();
  const dxf::RecordStore& store = doc->doc->store();
  auto is_entity = [&](dxf::RecordId r) {
    const dxf::Record& rec = store.at(r);
    return (rec.section == dxf::Section::kEntities || rec.section == dxf::Section::kBlocks) &&
           !rec.sub_entity && rec.handle != 0;
  };
  std::unordered_set<od::ObjectId> told;
  for (const dxf::UndoEntry& e : group.entries) {
    if (e.kind != dxf::UndoEntry::Kind::kChange && is_entity(e.id)) {
      od::ObjectId id = IdOf(*doc->doc, e.id);
      if (told.insert(id).second) Erased(id, store.at(e.id).erased);
      continue;
    }
    // An object's change is the change of the entity that owns it (an entity's records live
    // in objects its extension dictionary owns).
    dxf::RecordId r = e.id;
    for (int hops = 0; hops < 8 && r != dxf::kNoRecord && !is_entity(r); ++hops) {
      dxf::Handle owner = store.at(r).owner;
      r = owner == 0 ? dxf::kNoRecord : store.FindHandle(owner);
    }
    if (r == dxf::kNoRecord || store.at(r).erased) continue;
    od::ObjectId id = IdOf(*doc->doc, r);
    if (told.insert(id).second) Modified(id);
  }
}

}  // namespace veltor::session
