// Drawing files: OPEN, NEW, SAVE, SAVEAS, CLOSE and QUIT.
#include "drawing/model/upgrade_r12.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/save_format.h"
#include "od/gathering.h"
#include "od/text.h"

namespace veltor::session {

namespace {

// A path as typed at a path prompt: surrounding blanks dropped, and one pair of double
// quotes around it removed ("my file.dxf"), so that names with spaces can be given.
std::string PathAnswer(const std::string& typed) {
  size_t begin = typed.find_first_not_of(" \t");
  if (begin == std::string::npos) return std::string();
  size_t end = typed.find_last_not_of(" \t");
  std::string path = typed.substr(begin, end - begin + 1);
  if (path.size() >= 2 && path.front() == '"' && path.back() == '"')
    path = path.substr(1, path.size() - 2);
  return path;
}

// Asks for a path; empty when the prompt was cancelled or answered with nothing.
std::string AskPath(Session& s, const std::string& prompt) {
  od::PromptResult<std::string> answer = s.Ed().GetString(prompt, true);
  if (answer.status != od::PromptStatus::kOk) return std::string();
  return PathAnswer(answer.value);
}

// Where SAVE writes: the drawing's file, or for a drawing that has none (NEW, or a console
// started without a drawing) its name ("Drawing1.dxf") in the current folder.
std::string SavePath(const SessionDocument& doc) {
  return doc.doc->path().empty() ? doc.name : doc.doc->path();
}

// Asks whether to save a modified drawing first. Returns false when the user cancelled (or
// the save failed), so the caller must not go on.
bool OfferToSave(Session& s, SessionDocument& doc) {
  if (!doc.doc->modified()) return true;
  std::string choice;
  bool answered = AskUntilAccepted(
      s, "Save changes to " + doc.name + "? [Yes/No/Cancel] <Yes>: ", false,
      "Requires Yes, No or Cancel.", [&](const std::string& answer) {
        choice = answer.empty() ? "yes" : answer;
        return od::MatchesKeyword(choice, "yes") || od::MatchesKeyword(choice, "no") ||
               od::MatchesKeyword(choice, "cancel");
      });
  if (!answered || od::MatchesKeyword(choice, "cancel")) return false;
  if (od::MatchesKeyword(choice, "no")) return true;
  Status saved = doc.doc->Save(SavePath(doc));
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
  std::string path = AskPath(s, "File to open: ");
  if (path.empty()) return;
  Status opened = s.OpenDocument(path);
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
  SaveTo(s, SavePath(*doc));
}

// Asks for the file format; Enter keeps the drawing's own release. Nothing when cancelled
// or refused.
const SaveFormat* AskFormat(Session& s, const std::string& own) {
  static const SaveFormat kOwn{"", ""};
  std::string choices;
  for (const SaveFormat& f : SaveFormats()) choices += (choices.empty() ? "" : "/") + std::string(f.keyword);
  for (;;) {
    od::PromptResult<std::string> answer =
        s.Ed().GetString("File format [" + choices + "] <" + ReleaseName(own) + ">: ", false);
    if (answer.status != od::PromptStatus::kOk) return nullptr;
    if (answer.value.empty()) return &kOwn;
    if (const SaveFormat* format = MatchSaveFormat(answer.value)) return format;
    if (!s.editor().Refuse("Requires R12, R2000, R2004, R2007, R2010, R2013 or R2018.")) return nullptr;
  }
}

// Converts the active R12 drawing to `format`, saves it to `path` and makes the converted
// drawing the active one. On failure the open drawing and the files stay as they were.
void SaveConverted(Session& s, const std::string& path, const SaveFormat& format) {
  Result<model::UpgradedDrawing> converted = model::UpgradeR12(*s.active()->doc, format.acadver);
  if (!converted.ok()) return (void)s.editor().Refuse("Error: " + converted.message());
  for (const std::string& warning : converted->warnings) s.Print("Warning: " + warning + "\n");
  Status saved = converted->doc->Save(path);
  if (!saved.ok()) return (void)s.editor().Refuse("Error: " + saved.message());
  s.ReplaceActiveDocument(std::move(converted->doc));
  s.Print("Converted to " + std::string(format.keyword) + " and saved " + path + "\n");
}

void SaveAs(Session& s) {
  SessionDocument* doc = s.active();
  if (!doc) return s.Print("No drawing is open.\n");
  std::string path = AskPath(s, "Save drawing as: ");
  if (path.empty()) return;
  const std::string own = doc->doc->version();
  const SaveFormat* format = AskFormat(s, own);
  if (!format) return;
  std::string target = *format->acadver ? format->acadver : own;
  SaveDecision decision = PlanSave(own, target);
  switch (decision.plan) {
    case SavePlan::kAsIs: return SaveTo(s, path);
    case SavePlan::kUpgrade: return SaveConverted(s, path, *format);
    case SavePlan::kRefuse: return (void)s.editor().Refuse("Error: " + decision.reason);
  }
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
  // Files and drawings are not part of a drawing's undo history.
  for (const char* name : {"OPEN", "NEW", "SAVE", "SAVEAS", "CLOSE", "QUIT"}) s.MarkNotUndoStep(name);
  AddHostCommand(s, "OPEN", od::kCmdModal, "Opens a drawing (asks for its path)", [&s] { Open(s); });
  AddHostCommand(s, "NEW", od::kCmdModal, "Starts a new empty drawing", [&s] { s.NewDocument(); });
  AddHostCommand(s, "SAVE", od::kCmdModal, "Saves the drawing under its name (the old file is kept as NAME.bak: city.dxf -> city.bak)",
                 [&s] { Save(s); });
  AddHostCommand(s, "SAVEAS", od::kCmdModal, "Saves the drawing under a new name, in its own or a later release", [&s] { SaveAs(s); });
  AddHostCommand(s, "CLOSE", od::kCmdModal, "Closes the drawing", [&s] { Close(s); });
  AddHostCommand(s, "QUIT", od::kCmdModal, "Leaves veltor", [&s] { Quit(s); });
}

void RegisterHostCommands(Session& s) {
  RegisterUndoCommands(s);
  RegisterFileCommands(s);
  RegisterObjectDataCommands(s);
  RegisterInfoCommands(s);
  RegisterEditCommands(s);
}

}  // namespace veltor::session
