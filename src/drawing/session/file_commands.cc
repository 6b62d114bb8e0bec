// Drawing files: OPEN, NEW, SAVE, SAVEAS, CLOSE and QUIT.
#include "drawing/session/host_commands.h"
#include "od/gathering.h"

namespace veltor::session {

namespace {

// Asks whether to save a modified drawing first. Returns false when the user cancelled (or
// the save failed), so the caller must not go on.
bool OfferToSave(Session& s, SessionDocument& doc) {
  if (!doc.doc->modified()) return true;
  od::PromptResult<std::string> answer =
      s.Ed().GetString("Save changes to " + doc.name + "? [Yes/No/Cancel] <Yes>: ", false);
  if (answer.status == od::PromptStatus::kCancel || od::MatchesKeyword(answer.value, "cancel"))
    return false;
  if (od::MatchesKeyword(answer.value, "no")) return true;
  if (!answer.value.empty() && !od::MatchesKeyword(answer.value, "yes")) {
    s.editor().Refuse("Requires Yes, No or Cancel.");
    return false;
  }
  std::string path = doc.doc->path();
  if (path.empty()) {
    od::PromptResult<std::string> to = s.Ed().GetString("Save drawing as: ", true);
    if (to.status != od::PromptStatus::kOk || to.value.empty()) return false;
    path = to.value;
  }
  Status saved = doc.doc->Save(path);
  if (!saved.ok()) {
    s.Print("Error: " + saved.message() + "\n");
    return false;
  }
  return true;
}

void SaveTo(Session& s, const std::string& path) {
  SessionDocument* doc = s.active();
  Status saved = doc->doc->Save(path);
  if (!saved.ok()) {
    s.editor().Refuse("Error: " + saved.message());
    return;
  }
  s.Print("Saved " + path + "\n");
}

void Open(Session& s) {
  od::PromptResult<std::string> path = s.Ed().GetString("File to open: ", true);
  if (path.status != od::PromptStatus::kOk || path.value.empty()) return;
  Status opened = s.OpenDocument(path.value);
  if (!opened.ok()) {
    s.editor().Refuse("Error: " + opened.message());
    return;
  }
  SessionDocument* doc = s.active();
  for (const std::string& warning : doc->open_warnings) s.Print("Warning: " + warning + "\n");
  s.Print("Opened " + doc->name + "\n");
}

void Save(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  if (doc->doc->path().empty()) {
    od::PromptResult<std::string> path = s.Ed().GetString("Save drawing as: ", true);
    if (path.status != od::PromptStatus::kOk || path.value.empty()) return;
    return SaveTo(s, path.value);
  }
  SaveTo(s, doc->doc->path());
}

void SaveAs(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  od::PromptResult<std::string> path = s.Ed().GetString("Save drawing as: ", true);
  if (path.status != od::PromptStatus::kOk || path.value.empty()) return;
  SaveTo(s, path.value);
}

void Close(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  if (s.interactive() && !OfferToSave(s, *doc)) return;
  s.CloseActiveDocument();
}

void Quit(Session& s) {
  // In a script the front end decides about saving (its -o and --in-place options).
  if (s.interactive()) {
    for (size_t i = s.document_count(); i-- > 0;) {
      if (!s.ActivateDocument(i).ok()) continue;
      if (!OfferToSave(s, *s.active())) return;
    }
  }
  s.RequestQuit();
}

}  // namespace

void RegisterFileCommands(Session& s) {
  AddHostCommand(s, "OPEN", od::kCmdModal, "Opens a drawing (asks for its path)", [&s] { Open(s); });
  AddHostCommand(s, "NEW", od::kCmdModal, "Starts a new empty drawing", [&s] { s.NewDocument(); });
  AddHostCommand(s, "SAVE", od::kCmdModal, "Saves the drawing under its name (the old file is kept as .bak)",
                 [&s] { Save(s); });
  AddHostCommand(s, "SAVEAS", od::kCmdModal, "Saves the drawing under a new name", [&s] { SaveAs(s); });
  AddHostCommand(s, "CLOSE", od::kCmdModal, "Closes the drawing", [&s] { Close(s); });
  AddHostCommand(s, "QUIT", od::kCmdModal, "Leaves veltor", [&s] { Quit(s); });
}

void RegisterHostCommands(Session& s) {
  RegisterUndoCommands(s);
  RegisterFileCommands(s);
  RegisterObjectDataCommands(s);
  RegisterInfoCommands(s);
}

}  // namespace veltor::session
