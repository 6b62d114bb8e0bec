// The workbench window: drawings as tabs over the drawing view, the command line and the
// command palette as docks, and the File and View menus. It owns the session that plays the
// CAD application and wires it to the window: what the session prints goes to the command
// line, its prompts wait in LineInput, its dialogs go through WorkbenchUi.
#pragma once

#include <QMainWindow>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "drawing/session/session.h"
#include "od/status.h"
#include "ui/command_palette.h"
#include "workbench/display_list.h"

class QDockWidget;
class QMenu;
class QTabBar;

namespace veltor::workbench {

class CommandDriver;
class CommandLineDock;
class CommandPaletteDock;
class DrawingView;
class LineInput;
class OdTableDock;
class WorkbenchUi;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // Loads the module into a new session. Without drawings opened later, the session starts
  // with a new empty one.
  MainWindow();
  ~MainWindow() override;

  // Opens a drawing in a new tab and makes it the active one. A drawing that cannot be read
  // leaves everything as it was; the reason is printed on the command line and returned.
  Status OpenDrawing(const std::string& path);
  // Opens a drawing as OpenDrawing does and shows a failure in a message box.
  void OpenDrawingAndReport(const std::string& path);
  // Saves the active drawing to `path` through the session's atomic save.
  Status SaveActive(const std::string& path);

  session::Session& session() { return *session_; }
  CommandDriver& driver() { return *driver_; }
  LineInput& input() { return *input_; }
  CommandLineDock& command_line() { return *command_line_; }
  DrawingView& view() { return *view_; }
  CommandPaletteDock* palette_dock() { return palette_dock_; }
  OdTableDock* table_dock() { return table_dock_; }
  QTabBar& tabs() { return *tabs_; }

  // Opens the OD table palette (VELTOR_TABLE) on `table` of the active drawing; false when the
  // drawing has no such table.
  bool ShowTable(const std::string& table);

  // Brings tabs, view and highlight up to the session's state (after a command).
  void SyncWithSession();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  class Reactor;
  struct DrawingState {
    const model::Document* doc = nullptr;  // what the list was built from
    uint64_t generation = ~uint64_t{0};
    bool stale = true;
    bool fitted = false;
    geom::Vec2 center;  // where the view was when another drawing was shown
    double scale = 0.0;
    DisplayList list;
  };

  void BuildMenus();
  void ShowStartPalette();
  bool ShowPalette(od::Palette& palette);
  // The dock that renders `palette`, or nullptr for a palette the workbench cannot show.
  QDockWidget* DockFor(od::Palette& palette);
  void RunLabel(const std::string& label);
  void Print(std::string_view text);
  void TabChosen(int index);
  void RefreshView();
  void UpdateTitle();
  // A click or window in the view: an answer for the waiting prompt, or a change of the
  // pickfirst set when no command runs.
  void ViewClicked(geom::Vec2 world, od::EntityId picked, bool shift);
  void ViewWindow(geom::Vec2 first, geom::Vec2 second, bool crossing, bool shift);
  void ChangePickfirst(const od::EntityList& ids, bool remove);
  // Refuses (with a note in the status bar) while a command runs.
  bool Idle();

  // File menu.
  void OpenAction();
  bool SaveAction();
  bool SaveAsAction();
  bool CloseAction();
  void RunScriptAction();
  // Asks whether to save a modified drawing; false when the user cancelled.
  bool OfferToSave(session::SessionDocument& doc);
  void AddRecent(const QString& path);
  void FillRecentMenu();

  std::unique_ptr<WorkbenchUi> ui_;
  std::unique_ptr<LineInput> input_;
  std::unique_ptr<session::Session> session_;
  std::unique_ptr<CommandDriver> driver_;
  std::unique_ptr<Reactor> reactor_;
  ui::CommandPalette commands_;
  CommandLineDock* command_line_ = nullptr;
  CommandPaletteDock* palette_dock_ = nullptr;
  OdTableDock* table_dock_ = nullptr;
  QMenu* view_menu_ = nullptr;
  DrawingView* view_ = nullptr;
  QTabBar* tabs_ = nullptr;
  QMenu* recent_menu_ = nullptr;
  std::map<const session::SessionDocument*, DrawingState> drawings_;
  std::vector<const session::SessionDocument*> tab_docs_;
  const session::SessionDocument* shown_ = nullptr;  // the drawing the view shows
  bool closing_ = false;
};

}  // namespace veltor::workbench
