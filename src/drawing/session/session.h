// The embedded host's session: the CAD application around the module.
//
// It keeps the open drawings (one active), the command stack modules register into, the
// command-string queue, the editor that asks for answers from an InputSource, the reactors,
// and one undo group per command. Front ends create one Session, load modules into it, open
// drawings and run the command loop.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "drawing/session/change_listener.h"
#include "drawing/session/input_source.h"
#include "drawing/session/session_document.h"
#include "drawing/session/session_editor.h"
#include "od/host.h"

namespace veltor::session {

class Session : public od::Host, public od::Application, private ChangeListener {
 public:
  using Output = std::function<void(std::string_view)>;

  // `output` receives everything printed on the command line.
  explicit Session(Output output);
  ~Session() override;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // --- front-end wiring ---
  void SetInput(InputSource* input) { input_ = input; }  // not owned
  InputSource* input() { return input_; }
  void SetUi(od::UiHost* ui) { ui_ = ui; }  // not owned; nullptr: dialogs cancel
  // True when a person answers at a terminal (QUIT and CLOSE then offer to save).
  void SetInteractive(bool interactive) { interactive_ = interactive; }
  bool interactive() const { return interactive_; }
  void Print(std::string_view text) { output_(text); }
  // A front end that shows the drawing: ZOOM asks it to show a box of world coordinates, or
  // the whole drawing when the box is empty (All, Extents). The console shows nothing.
  using ZoomHandler = std::function<void(const std::optional<od::Box3>&)>;
  void SetZoomHandler(ZoomHandler handler) { zoom_ = std::move(handler); }
  void Zoom(const std::optional<od::Box3>& box) {
    if (zoom_) zoom_(box);
  }

  // --- documents ---
  Status OpenDocument(const std::string& path);
  // A new empty drawing, named "DrawingN.dxf".
  void NewDocument();
  // Adds an already loaded drawing (tests build drawings in memory).
  void AddDocument(std::unique_ptr<model::Document> doc, const std::string& name);
  // Puts `doc` in the place of the active drawing (SAVEAS to another release), named after
  // its path; the old drawing with its selections and undo history is discarded.
  void ReplaceActiveDocument(std::unique_ptr<model::Document> doc);
  // Closes the active drawing, discarding unsaved changes.
  void CloseActiveDocument();
  Status ActivateDocument(size_t index);
  SessionDocument* active() { return active_ < documents_.size() ? documents_[active_].get() : nullptr; }
  size_t document_count() const { return documents_.size(); }
  // The open drawing at `index` (in opening order), or nullptr.
  SessionDocument* document(size_t index) {
    return index < documents_.size() ? documents_[index].get() : nullptr;
  }

  // --- modules ---
  // Sends the start-up messages to a module (initialise, then load for each open drawing).
  void LoadModule(od::ModuleEntry entry);
  // Sends unload messages to every module (drawings, then the application), newest first.
  void UnloadModules();

  // --- running commands ---
  // Runs a command line typed at "Command: " (a command name, optionally followed by answers
  // separated by spaces) and then everything it queued. Returns false when the name is
  // unknown or not allowed; the reason was printed.
  bool Execute(const std::string& line);
  // Reads commands from the input source until it ends or QUIT runs.
  void RunLoop();
  void RequestQuit() { quit_ = true; }
  bool quit_requested() const { return quit_; }
  // Runs queued command strings until the queue is empty.
  void RunQueue();
  // A modeless panel that takes the command line between commands (the console's palettes):
  // while one is open, the loop calls it instead of asking "Command: " whenever no queued
  // command waits. Each call reads at least one answer; it returns false when it closed.
  using Panel = std::function<bool()>;
  void OpenPanel(Panel panel) { panel_ = std::move(panel); }
  bool panel_open() const { return static_cast<bool>(panel_); }
  // The command (global name) changes the undo history itself and is not an undo step.
  void MarkNotUndoStep(const std::string& name) { not_undo_steps_.insert(name); }
  // Runs a transparent command from inside a prompt; false when it may not run so.
  bool RunTransparent(const std::string& name);
  bool command_running() const { return depth_ > 0; }
  // The cancel posted with "CANCELCMD" for the running command; the editor consumes it.
  bool TakeCancelRequest();
  // Cancels the running command at its next prompt (nothing when no command runs).
  void RequestCancel() {
    if (depth_ > 0) cancel_requested_ = true;
  }

  // --- undo ---
  // Undoes (or redoes) up to `count` command groups of the active drawing; returns the names
  // of the commands replayed, newest first.
  std::vector<std::string> Undo(size_t count);
  std::vector<std::string> Redo(size_t count);

  // --- od::Host ---
  od::Application& App() override { return *this; }
  od::Editor& Ed() override { return editor_; }
  od::UiHost& Ui() override;
  od::Database* WorkingDatabase() override;
  Result<od::Project*> ActiveProject() override;
  SessionEditor& editor() { return editor_; }

  // --- od::Application ---
  Status AddCommand(const od::CommandInfo& command, od::CommandHandler handler) override;
  void RemoveGroup(const std::string& group) override;
  std::vector<od::CommandInfo> Commands() const override;
  Status DefineLispFunction(const std::string& name, int index) override;
  void UndefineLispFunction(const std::string& name, int index) override;
  int CurrentLispFunction() const override { return current_lisp_; }
  void UnlockApplication() override { unlocked_ = true; }
  void RegisterMdiAware() override { mdi_aware_ = true; }
  void BuildClassHierarchy() override { ++class_tree_builds_; }
  std::vector<std::string> DocumentNames() const override;
  std::string ActiveDocumentName() const override;
  void AddReactor(od::Reactor* reactor) override;
  void RemoveReactor(od::Reactor* reactor) override;
  // A module's undo group joins the group the session opens for the running command.
  bool BeginUndoGroup(const std::string& label) override;
  void EndUndoGroup() override;
  void TakeBackUndoGroup() override;

  // What the application registry holds (tests and HELP show it).
  bool application_unlocked() const { return unlocked_; }
  bool mdi_aware() const { return mdi_aware_; }
  // Finds a registered command by name as typed: any case, "_" (global name) and "."
  // (the host's own command) prefixes accepted.
  const od::CommandInfo* FindCommand(const std::string& typed) const;
  // Sends "(name)" to the module that defined the LISP function; prints its result.
  bool CallLisp(const std::string& expression);
  // Queued command strings of the active drawing, oldest first.
  std::deque<std::string>& queue() { return queue_; }
  void NotifyPickfirstModified();

 private:
  ZoomHandler zoom_;
  struct Command {
    od::CommandInfo info;
    od::CommandHandler handler;
  };
  struct LispFunction {
    std::string name;
    int index = 0;
    size_t module = 0;
  };
  const Command* Find(const std::string& typed) const;
  void Run(const Command& command, bool transparent);
  void SendToModules(int message);
  // The application packet modules receive: this session as their od::Host.
  void* Packet() { return static_cast<od::Host*>(this); }
  void FireUndoReactors(const dxf::UndoGroup& group);
  // ChangeListener: forwarded to the reactors.
  void Appended(od::ObjectId id) override;
  void Modified(od::ObjectId id) override;
  void Erased(od::ObjectId id, bool erased) override;

  Output output_;
  InputSource* input_ = nullptr;
  od::UiHost* ui_ = nullptr;
  std::unique_ptr<od::UiHost> no_ui_;
  SessionEditor editor_;
  std::vector<std::unique_ptr<SessionDocument>> documents_;
  size_t active_ = 0;
  int new_drawings_ = 0;
  std::vector<Command> commands_;
  std::vector<od::ModuleEntry> modules_;
  std::vector<LispFunction> lisp_functions_;
  size_t loading_module_ = 0;
  int current_lisp_ = -1;
  std::vector<od::Reactor*> reactors_;
  std::deque<std::string> queue_;
  Panel panel_;
  std::string last_command_;
  // Commands that are not undo steps of their own (the undo commands themselves).
  std::unordered_set<std::string> not_undo_steps_;
  int depth_ = 0;
  int ends_in_a_row_ = 0;
  bool cancel_requested_ = false;
  bool quit_ = false;
  bool interactive_ = false;
  bool unlocked_ = false;
  bool mdi_aware_ = false;
  int class_tree_builds_ = 0;
};

}  // namespace veltor::session
