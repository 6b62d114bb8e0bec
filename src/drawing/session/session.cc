#include "drawing/session/session.h"

#include <algorithm>
#include <unordered_set>

#include "drawing/model/entity.h"
#include "drawing/session/object_ids.h"
#include "od/text.h"

namespace veltor::session {

namespace {

// Dialogs need a front end; without one every dialog and file choice is cancelled.
class NoUi : public od::UiHost {
 public:
  od::DialogResult ShowModal(od::DialogModel&) override { return od::DialogResult::kCancel; }
  od::MessageAnswer MessageBox(const std::string&, const std::string&,
                               od::MessageButtons buttons) override {
    return buttons == od::MessageButtons::kOk ? od::MessageAnswer::kOk : od::MessageAnswer::kCancel;
  }
  std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                            const std::string&) override {
    return std::nullopt;
  }
};

std::string BaseName(const std::string& path) {
  size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

Session::Session(Output output)
    : output_(std::move(output)), no_ui_(std::make_unique<NoUi>()), editor_(*this) {}

Session::~Session() = default;

od::UiHost& Session::Ui() { return ui_ ? *ui_ : *no_ui_; }

// --- documents ---

Status Session::OpenDocument(const std::string& path) {
  auto doc = model::Document::Open(path);
  if (!doc.ok()) return doc.status();
  AddDocument(std::move(doc).value(), BaseName(path));
  SessionDocument& opened = *documents_.back();
  opened.open_warnings = opened.doc->warnings();
  for (std::string& line : opened.project.container().store().DamageReport())
    opened.open_warnings.push_back(std::move(line));
  return Status::Ok();
}

void Session::NewDocument() {
  AddDocument(model::Document::NewBlank(), "Drawing" + std::to_string(++new_drawings_) + ".dxf");
}

void Session::AddDocument(std::unique_ptr<model::Document> doc, const std::string& name) {
  ChangeListener& listener = *this;
  documents_.push_back(std::make_unique<SessionDocument>(std::move(doc), name, listener));
  active_ = documents_.size() - 1;
  for (od::Reactor* r : reactors_) r->DocumentActivated(name);
  SendToModules(od::kLoadDwgMsg);
}

void Session::ReplaceActiveDocument(std::unique_ptr<model::Document> doc) {
  std::string name = BaseName(doc->path());
  if (!active()) return AddDocument(std::move(doc), name);
  SendToModules(od::kUnloadDwgMsg);
  ChangeListener& listener = *this;
  documents_[active_] = std::make_unique<SessionDocument>(std::move(doc), name, listener);
  for (od::Reactor* r : reactors_) r->DocumentActivated(name);
  SendToModules(od::kLoadDwgMsg);
}

void Session::CloseActiveDocument() {
  if (!active()) return;
  SendToModules(od::kUnloadDwgMsg);
  documents_.erase(documents_.begin() + static_cast<long>(active_));
  active_ = documents_.empty() ? 0 : documents_.size() - 1;
  if (SessionDocument* doc = active())
    for (od::Reactor* r : reactors_) r->DocumentActivated(doc->name);
}

Status Session::ActivateDocument(size_t index) {
  if (index >= documents_.size()) return Status::Error("activate: no such drawing");
  if (index == active_) return Status::Ok();
  active_ = index;
  for (od::Reactor* r : reactors_) r->DocumentActivated(documents_[index]->name);
  return Status::Ok();
}

std::vector<std::string> Session::DocumentNames() const {
  std::vector<std::string> names;
  for (const auto& d : documents_) names.push_back(d->name);
  return names;
}

std::string Session::ActiveDocumentName() const {
  return active_ < documents_.size() ? documents_[active_]->name : std::string();
}

od::Database* Session::WorkingDatabase() {
  SessionDocument* doc = active();
  return doc ? &doc->database : nullptr;
}

Result<od::Project*> Session::ActiveProject() {
  SessionDocument* doc = active();
  if (!doc) return Status::Error("Object Data: no drawing is open");
  if (Status s = doc->project.container().store().CanWrite(); !s.ok()) return s;
  return static_cast<od::Project*>(&doc->project);
}

// --- modules ---

void Session::SendToModules(int message) {
  for (size_t i = 0; i < modules_.size(); ++i) {
    loading_module_ = i;
    modules_[i](message, Packet());
  }
}

void Session::LoadModule(od::ModuleEntry entry) {
  modules_.push_back(std::move(entry));
  loading_module_ = modules_.size() - 1;
  modules_.back()(od::kInitAppMsg, Packet());
  for (size_t i = 0; i < documents_.size(); ++i) {
    loading_module_ = modules_.size() - 1;
    modules_.back()(od::kLoadDwgMsg, Packet());
  }
}

void Session::UnloadModules() {
  while (!modules_.empty()) {
    loading_module_ = modules_.size() - 1;
    for (size_t i = 0; i < documents_.size(); ++i) modules_.back()(od::kUnloadDwgMsg, Packet());
    modules_.back()(od::kUnloadAppMsg, Packet());
    size_t gone = modules_.size() - 1;
    lisp_functions_.erase(std::remove_if(lisp_functions_.begin(), lisp_functions_.end(),
                                         [&](const LispFunction& f) { return f.module == gone; }),
                          lisp_functions_.end());
    modules_.pop_back();
  }
}

// --- command stack ---

Status Session::AddCommand(const od::CommandInfo& command, od::CommandHandler handler) {
  for (const Command& c : commands_)
    if (od::EqualsIgnoreCase(c.info.group, command.group) &&
        od::EqualsIgnoreCase(c.info.global_name, command.global_name))
      return Status::Error("command " + command.global_name + ": already defined in group " +
                           command.group);
  commands_.push_back({command, std::move(handler)});
  return Status::Ok();
}

void Session::RemoveGroup(const std::string& group) {
  commands_.erase(std::remove_if(commands_.begin(), commands_.end(),
                                 [&](const Command& c) { return c.info.group == group; }),
                  commands_.end());
}

std::vector<od::CommandInfo> Session::Commands() const {
  std::vector<od::CommandInfo> out;
  for (const Command& c : commands_) out.push_back(c.info);
  return out;
}

const Session::Command* Session::Find(const std::string& typed) const {
  std::string name = typed;
  bool global = false, builtin = false;
  while (!name.empty() && (name[0] == '_' || name[0] == '.')) {
    (name[0] == '_' ? global : builtin) = true;
    name.erase(0, 1);
  }
  if (name.empty()) return nullptr;
  // The newest registration of a name wins, as a module's command hides an older one; "."
  // asks for the host's own.
  for (auto it = commands_.rbegin(); it != commands_.rend(); ++it) {
    if (builtin && it->info.group != "ACAD") continue;
    if (od::EqualsIgnoreCase(it->info.global_name, name) ||
        (!global && od::EqualsIgnoreCase(it->info.local_name, name)))
      return &*it;
  }
  return nullptr;
}

const od::CommandInfo* Session::FindCommand(const std::string& typed) const {
  const Command* c = Find(typed);
  return c ? &c->info : nullptr;
}

// --- LISP functions ---

Status Session::DefineLispFunction(const std::string& name, int index) {
  for (LispFunction& f : lisp_functions_)
    if (od::EqualsIgnoreCase(f.name, name)) {
      f.index = index;
      f.module = loading_module_;
      return Status::Ok();
    }
  lisp_functions_.push_back({name, index, loading_module_});
  return Status::Ok();
}

void Session::UndefineLispFunction(const std::string& name, int index) {
  lisp_functions_.erase(std::remove_if(lisp_functions_.begin(), lisp_functions_.end(),
                                       [&](const LispFunction& f) {
                                         return f.index == index &&
                                                od::EqualsIgnoreCase(f.name, name);
                                       }),
                        lisp_functions_.end());
}

bool Session::CallLisp(const std::string& expression) {
  std::string name = expression;
  if (!name.empty() && name.front() == '(') name.erase(0, 1);
  if (!name.empty() && name.back() == ')') name.pop_back();
  for (const LispFunction& f : lisp_functions_) {
    if (!od::EqualsIgnoreCase(f.name, name) || f.module >= modules_.size()) continue;
    current_lisp_ = f.index;
    int result = modules_[f.module](od::kInvkSubrMsg, Packet());
    current_lisp_ = -1;
    Print(result == od::kRetOk ? "nil\n" : "; error: function failed\n");
    return true;
  }
  Print("; error: no function definition: " + od::ToLowerUnicode(name) + "\n");
  return false;
}

// --- reactors ---

void Session::AddReactor(od::Reactor* reactor) {
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end())
    reactors_.push_back(reactor);
}

void Session::RemoveReactor(od::Reactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

void Session::Appended(od::ObjectId id) {
  std::vector<od::Reactor*> reactors = reactors_;
  for (od::Reactor* r : reactors) r->ObjectAppended(id);
}

void Session::Modified(od::ObjectId id) {
  // A copy: a reactor may remove itself while being told.
  std::vector<od::Reactor*> reactors = reactors_;
  for (od::Reactor* r : reactors) r->ObjectModified(id);
}

void Session::Erased(od::ObjectId id, bool erased) {
  std::vector<od::Reactor*> reactors = reactors_;
  for (od::Reactor* r : reactors) r->ObjectErased(id, erased);
}

void Session::NotifyPickfirstModified() {
  std::vector<od::Reactor*> reactors = reactors_;
  for (od::Reactor* r : reactors) r->PickfirstModified();
}

}  // namespace veltor::session
