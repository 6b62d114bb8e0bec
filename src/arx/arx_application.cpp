#include "arx/arx_application.h"

#include <algorithm>

#include "arx/object_ids.h"
#include "arx/wide_text.h"

#include <accmd.h>
#include <acdocman.h>
#include <aced.h>
#include <adslib.h>
#include <rxregsvc.h>

namespace veltor::arx {

namespace {

std::string DocumentName(const AcApDocument* document) {
  return document ? Narrow(document->fileName()) : std::string();
}

}  // namespace

// The host's reactors, turned into the module's notifications. The database reactor follows
// the active document: it is moved to a document's database when that document is activated.
class ArxApplication::HostReactors : public AcDbDatabaseReactor,
                                     public AcApDocManagerReactor,
                                     public AcEditorReactor {
 public:
  explicit HostReactors(ArxApplication& app) : app_(app) {
    acDocManager->addReactor(this);
    acedEditor->addReactor(this);
    AcApDocument* document = acDocManager->curDocument();
    Watch(document ? document->database() : nullptr);
  }
  ~HostReactors() override {
    Watch(nullptr);
    acedEditor->removeReactor(this);
    acDocManager->removeReactor(this);
  }

  void objectAppended(const AcDbDatabase*, const AcDbObject* object) override {
    od::ObjectId id = ToOdId(object->objectId());
    for (od::Reactor* r : Reactors()) r->ObjectAppended(id);
  }
  void objectModified(const AcDbDatabase*, const AcDbObject* object) override {
    od::ObjectId id = ToOdId(object->objectId());
    for (od::Reactor* r : Reactors()) r->ObjectModified(id);
  }
  void objectErased(const AcDbDatabase*, const AcDbObject* object,
                    Adesk::Boolean erased) override {
    od::ObjectId id = ToOdId(object->objectId());
    for (od::Reactor* r : Reactors()) r->ObjectErased(id, erased);
  }
  void documentActivated(AcApDocument* document) override {
    Watch(document ? document->database() : nullptr);
    std::string name = DocumentName(document);
    for (od::Reactor* r : Reactors()) r->DocumentActivated(name);
  }
  void documentToBeDestroyed(AcApDocument* document) override {
    AcDbDatabase* db = document ? document->database() : nullptr;
    if (db == watched_) Watch(nullptr);
    // From now on ids of this drawing are refused instead of followed.
    OpenDrawings().Unregister(db);
  }
  void pickfirstModified() override {
    for (od::Reactor* r : Reactors()) r->PickfirstModified();
  }

 private:
  // A copy: a reactor may remove itself while notified.
  std::vector<od::Reactor*> Reactors() const { return app_.reactors(); }

  void Watch(AcDbDatabase* db) {
    if (db == watched_) return;
    if (watched_) watched_->removeReactor(this);
    watched_ = db;
    if (watched_) watched_->addReactor(this);
  }

  ArxApplication& app_;
  AcDbDatabase* watched_ = nullptr;
};

ArxApplication::ArxApplication(void* app_id)
    : app_id_(app_id), host_reactors_(std::make_unique<HostReactors>(*this)) {}

ArxApplication::~ArxApplication() = default;

// --- command stack ---

Status ArxApplication::AddCommand(const od::CommandInfo& command, od::CommandHandler handler) {
  for (const Registered& r : commands_)
    if (r.info.group == command.group && r.info.global_name == command.global_name)
      return Status::Error("command " + command.global_name + ": the group already has it");
  CommandThunk thunk = BindFreeThunk(std::move(handler));
  if (!thunk) return Status::Error("command " + command.global_name + ": no free command slot");
  AcEdCommandStack* stack = acedRegCmds;
  if (!stack) {
    UnbindThunk(thunk);
    return Status::Error("command " + command.global_name + ": the host has no command stack");
  }
  // No UI context, function code -1, the empty resource instance, no command pointer back.
  Acad::ErrorStatus es = stack->addCommand(
      Widen(command.group).c_str(), Widen(command.global_name).c_str(),
      Widen(command.local_name).c_str(), command.flags, thunk, nullptr, -1, nullptr, nullptr);
  if (es != Acad::eOk) {
    UnbindThunk(thunk);
    return Status::Error("command " + command.global_name + ": the host refused it");
  }
  commands_.push_back({command, thunk});
  return Status::Ok();
}

void ArxApplication::RemoveGroup(const std::string& group) {
  if (AcEdCommandStack* stack = acedRegCmds) stack->removeGroup(Widen(group).c_str());
  auto in_group = [&](const Registered& r) { return r.info.group == group; };
  for (const Registered& r : commands_)
    if (in_group(r)) UnbindThunk(r.thunk);
  commands_.erase(std::remove_if(commands_.begin(), commands_.end(), in_group), commands_.end());
}

std::vector<od::CommandInfo> ArxApplication::Commands() const {
  std::vector<od::CommandInfo> infos;
  for (const Registered& r : commands_) infos.push_back(r.info);
  return infos;
}

// --- LISP functions ---

Status ArxApplication::DefineLispFunction(const std::string& name, int index) {
  if (acedDefun(Widen(name).c_str(), index) != RTNORM)
    return Status::Error("LISP function " + name + ": the host refused it");
  return Status::Ok();
}

void ArxApplication::UndefineLispFunction(const std::string& name, int index) {
  acedUndef(Widen(name).c_str(), index);
}

int ArxApplication::CurrentLispFunction() const {
  int code = acedGetFunCode();
  return code >= 0 ? code : -1;
}

// --- application registry ---

void ArxApplication::UnlockApplication() { acrxDynamicLinker->unlockApplication(app_id_); }

void ArxApplication::RegisterMdiAware() { acrxDynamicLinker->registerAppMDIAware(app_id_); }

void ArxApplication::BuildClassHierarchy() { acrxBuildClassHierarchy(); }

// --- documents ---

std::vector<std::string> ArxApplication::DocumentNames() const {
  std::vector<std::string> names;
  AcApDocumentIterator* it = acDocManager->newAcApDocumentIterator();
  for (; it && !it->done(); it->step()) names.push_back(DocumentName(it->document()));
  delete it;
  return names;
}

std::string ArxApplication::ActiveDocumentName() const {
  return DocumentName(acDocManager->curDocument());
}

// --- undo ---
// Every module command runs inside a command the host registered, and the host makes each
// command one undo group of its own: a group is always open, so none is opened here and the
// command's changes belong to the host's group. Taking the group back queues the host's own
// undo of one step, which runs as soon as the command has ended.

bool ArxApplication::BeginUndoGroup(const std::string&) { return false; }

void ArxApplication::EndUndoGroup() {}

void ArxApplication::TakeBackUndoGroup() {
  AcApDocument* document = acDocManager->curDocument();
  if (document) acDocManager->sendStringToExecute(document, L"_.U ", false, false, false);
}

// --- reactors ---

void ArxApplication::AddReactor(od::Reactor* reactor) {
  if (reactor && std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end())
    reactors_.push_back(reactor);
}

void ArxApplication::RemoveReactor(od::Reactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

}  // namespace veltor::arx
