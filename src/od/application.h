// The application around the module: the command stack, LISP functions, documents and
// reactors.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "od/ids.h"
#include "od/status.h"

namespace veltor::od {

// Command flags, valued as the CAD host values them.
enum CommandFlags : int {
  kCmdModal = 0,
  kCmdTransparent = 1,    // may run inside another command's prompt
  kCmdUsePickSet = 2,     // receives the pickfirst selection; otherwise it is cleared first
  kCmdRedraw = 4,
  kCmdSession = 0x200000, // runs in the application context
};

using CommandHandler = std::function<void()>;

struct CommandInfo {
  std::string group;
  std::string global_name;
  std::string local_name;
  int flags = kCmdModal;
  std::string summary;  // what the command does, one line (shown by HELP)
};

// Result codes of the command-line interface.
inline constexpr int kRtNorm = 5100;
inline constexpr int kRtCan = -5002;
inline constexpr int kRtError = -5001;

// The messages a host sends to a module's entry point, numbered as the CAD host numbers them.
enum AppMessage : int {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
  kDependencyMsg = 10,
  kNoDependencyMsg = 11,
  kOleUnloadAppMsg = 12,
  kPreQuitMsg = 13,
  kInitDialogMsg = 14,
  kEndDialogMsg = 15,
  kSuspendMsg = 16,
};
inline constexpr int kRetOk = 0;
inline constexpr int kRetError = 3;

// A module's entry point: the message and the application packet (opaque to the module).
using ModuleEntry = std::function<int(int message, void* packet)>;

// Notified of changes to the active drawing and its selection. Every method has an empty
// default; a reactor overrides what it follows.
class Reactor {
 public:
  virtual ~Reactor() = default;
  virtual void ObjectAppended(ObjectId) {}
  virtual void ObjectModified(ObjectId) {}
  virtual void ObjectErased(ObjectId, bool /*erased: false when an erase was undone*/) {}
  virtual void DocumentActivated(const std::string& /*document name*/) {}
  virtual void PickfirstModified() {}
};

class Application {
 public:
  virtual ~Application() = default;

  // --- command stack ---
  // Registers a command; fails when the group already has a command of that name.
  virtual Status AddCommand(const CommandInfo& command, CommandHandler handler) = 0;
  virtual void RemoveGroup(const std::string& group) = 0;
  // Every registered command in registration order.
  virtual std::vector<CommandInfo> Commands() const = 0;

  // --- LISP functions (called from the command line as "(name)") ---
  virtual Status DefineLispFunction(const std::string& name, int index) = 0;
  virtual void UndefineLispFunction(const std::string& name, int index) = 0;
  // The index of the LISP function being called, or -1 outside a call.
  virtual int CurrentLispFunction() const = 0;

  // --- application registry ---
  // Declares the module unloadable and MDI-aware, and rebuilds the runtime class tree: the
  // embedded host records these facts; no module depends on them.
  virtual void UnlockApplication() = 0;
  virtual void RegisterMdiAware() = 0;
  virtual void BuildClassHierarchy() = 0;

  // --- documents ---
  virtual std::vector<std::string> DocumentNames() const = 0;
  virtual std::string ActiveDocumentName() const = 0;

  // --- undo of the active drawing ---
  // Opens an undo group named `label` on the active drawing. Groups do not nest: when a group
  // is already open (the host's own group for the running command) nothing is opened, false
  // is returned and the caller's changes belong to that group. False without a drawing.
  virtual bool BeginUndoGroup(const std::string& label) = 0;
  // Closes the group this caller's BeginUndoGroup opened (only call it after a true).
  virtual void EndUndoGroup() = 0;
  // Takes back every change since the open group began, whoever opened it, and closes it:
  // the drawing is as it was at that begin. Nothing happens when no group is open.
  virtual void TakeBackUndoGroup() = 0;

  // --- reactors (not owned; remove before destroying) ---
  virtual void AddReactor(Reactor* reactor) = 0;
  virtual void RemoveReactor(Reactor* reactor) = 0;
};

}  // namespace veltor::od
