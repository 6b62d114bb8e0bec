// od::Application over the host: the command stack (each command registered through a slot of
// the fixed thunk table), LISP functions, the dynamic linker, the document manager, undo, and
// the host reactors that feed the module's change notifications:
//   object appended/modified/erased  <- an AcDbDatabaseReactor on the active document's database
//   document activated               <- an AcApDocManagerReactor (which also forgets the ids of
//                                       a document about to be destroyed)
//   pickfirst modified               <- AcEditorReactor::pickfirstModified
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "arx/command_thunks.h"
#include "od/application.h"

namespace veltor::arx {

class ArxApplication : public od::Application {
 public:
  // `app_id` is the application packet of kInitAppMsg (the dynamic linker's handle on us).
  explicit ArxApplication(void* app_id);
  ~ArxApplication() override;
  ArxApplication(const ArxApplication&) = delete;
  ArxApplication& operator=(const ArxApplication&) = delete;

  Status AddCommand(const od::CommandInfo& command, od::CommandHandler handler) override;
  void RemoveGroup(const std::string& group) override;
  std::vector<od::CommandInfo> Commands() const override;

  Status DefineLispFunction(const std::string& name, int index) override;
  void UndefineLispFunction(const std::string& name, int index) override;
  int CurrentLispFunction() const override;

  void UnlockApplication() override;
  void RegisterMdiAware() override;
  void BuildClassHierarchy() override;

  std::vector<std::string> DocumentNames() const override;
  std::string ActiveDocumentName() const override;

  bool BeginUndoGroup(const std::string& label) override;
  void EndUndoGroup() override;
  void TakeBackUndoGroup() override;

  void AddReactor(od::Reactor* reactor) override;
  void RemoveReactor(od::Reactor* reactor) override;

  // For the host reactors: every module reactor, in the order they were added.
  const std::vector<od::Reactor*>& reactors() const { return reactors_; }

 private:
  struct Registered {
    od::CommandInfo info;
    CommandThunk thunk;
  };
  class HostReactors;

  void* app_id_;
  std::vector<Registered> commands_;
  std::vector<od::Reactor*> reactors_;
  std::unique_ptr<HostReactors> host_reactors_;
};

}  // namespace veltor::arx
