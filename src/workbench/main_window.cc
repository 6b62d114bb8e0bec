#include "workbench/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <unordered_set>

#include "app/veltor_app.h"
#include "ui/od_table_view.h"
#include "drawing/dxf/record_store.h"
#include "drawing/gis/gis_commands.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/object_ids.h"
#include "workbench/command_driver.h"
#include "workbench/command_line_dock.h"
#include "workbench/command_palette_dock.h"
#include "workbench/drawing_view.h"
#include "workbench/line_input.h"
#include "workbench/od_table_dock.h"
#include "workbench/workbench_ui.h"

namespace veltor::workbench {

namespace {

constexpr int kRecentFiles = 8;
const char kRecentKey[] = "recent_files";
const char kGeometryKey[] = "window_geometry";
const char kDocksKey[] = "window_docks";

QString Q(const std::string& text) { return QString::fromStdString(text); }

std::string BaseName(const std::string& path) {
  size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// A point as the command line reads it ("x,y", "." as the decimal separator), with as many
// decimals as a tenth of a pixel at `scale` (pixels per drawing unit) needs.
std::string PointText(geom::Vec2 p, double scale) {
  const int decimals = std::clamp(static_cast<int>(std::ceil(std::log10(scale * 10.0))), 0, 12);
  char text[160];
  std::snprintf(text, sizeof text, "%.*f,%.*f", decimals, p.x, decimals, p.y);
  return text;
}

bool Contains(const std::string& text, const char* word) {
  QString lower = Q(text).toLower();
  return lower.contains(word);
}

}  // namespace

// Keeps the view in step with the session: changed entities make the display list stale,
// a changed pickfirst set is highlighted at once.
class MainWindow::Reactor : public od::Reactor {
 public:
  explicit Reactor(MainWindow& window) : window_(window) {}
  void ObjectAppended(od::ObjectId) override { Stale(); }
  void ObjectModified(od::ObjectId) override { Stale(); }
  void ObjectErased(od::ObjectId, bool) override { Stale(); }
  void PickfirstModified() override {
    window_.view_->SetHighlighted(window_.session_->editor().ImpliedSelection());
  }

 private:
  void Stale() {
    if (session::SessionDocument* doc = window_.session_->active()) window_.drawings_[doc].stale = true;
  }
  MainWindow& window_;
};

MainWindow::MainWindow() {
  setWindowTitle(tr("veltor workbench"));
  ui_ = std::make_unique<WorkbenchUi>(this, [this](od::Palette& p) { return ShowPalette(p); });
  input_ = std::make_unique<LineInput>([this](const std::string& text) { Print(text); });
  session_ = std::make_unique<session::Session>([this](std::string_view text) { Print(text); });
  session::RegisterHostCommands(*session_);
  gis::RegisterGisCommands(*session_);
  session_->SetUi(ui_.get());
  session_->SetInput(input_.get());
  // A person answers: closing a modified drawing from the command line offers to save it.
  session_->SetInteractive(true);
  session_->SetZoomHandler([this](const std::optional<od::Box3>& box) {
    if (box)
      view_->ZoomTo(geom::Extents({box->min.x, box->min.y, 0}, {box->max.x, box->max.y, 0}));
    else
      view_->ZoomExtents();
  });
  driver_ = std::make_unique<CommandDriver>(*session_, *input_);
  reactor_ = std::make_unique<Reactor>(*this);

  auto* central = new QWidget(this);
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  tabs_ = new QTabBar(central);
  tabs_->setObjectName("drawing_tabs");
  tabs_->setDocumentMode(true);
  tabs_->setExpanding(false);
  view_ = new DrawingView(central);
  view_->setObjectName("drawing_view");
  layout->addWidget(tabs_);
  layout->addWidget(view_, 1);
  setCentralWidget(central);

  command_line_ = new CommandLineDock(*driver_, this);
  addDockWidget(Qt::BottomDockWidgetArea, command_line_);
  ShowStartPalette();
  BuildMenus();
  statusBar();
  resizeDocks({palette_dock_}, {290}, Qt::Horizontal);

  connect(input_.get(), &LineInput::PromptChanged, command_line_, &CommandLineDock::ShowPrompt);
  connect(driver_.get(), &CommandDriver::CommandEnded, this, &MainWindow::SyncWithSession);
  connect(driver_.get(), &CommandDriver::QuitRequested, this, [this] {
    closing_ = true;
    close();
  });
  connect(tabs_, &QTabBar::currentChanged, this, &MainWindow::TabChosen);
  connect(view_, &DrawingView::Clicked, this, &MainWindow::ViewClicked);
  connect(view_, &DrawingView::WindowDragged, this, &MainWindow::ViewWindow);
  connect(view_, &DrawingView::EscapePressed, this, [this] { driver_->Escape(); });

  session_->AddReactor(reactor_.get());
  session_->LoadModule(app::AcrxEntryPoint);
  resize(1280, 860);
  // Where the window and its docks were when it last closed.
  QSettings settings;
  restoreGeometry(settings.value(kGeometryKey).toByteArray());
  restoreState(settings.value(kDocksKey).toByteArray());
}

MainWindow::~MainWindow() {
  // The table dock renders a view model the module owns: it goes before the module does.
  delete table_dock_;
  table_dock_ = nullptr;
  session_->RemoveReactor(reactor_.get());
  session_->UnloadModules();
}

void MainWindow::Print(std::string_view text) {
  if (command_line_) command_line_->Append(QString::fromUtf8(text.data(), static_cast<int>(text.size())));
}

void MainWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  file->addAction(tr("&New"), QKeySequence::New, this, [this] {
    if (!Idle()) return;
    session_->NewDocument();
    SyncWithSession();
  });
  file->addAction(tr("&Open..."), QKeySequence::Open, this, &MainWindow::OpenAction);
  recent_menu_ = file->addMenu(tr("Open &recent"));
  FillRecentMenu();
  file->addAction(tr("&Save"), QKeySequence::Save, this, [this] { SaveAction(); });
  file->addAction(tr("Save &as..."), QKeySequence::SaveAs, this, [this] { SaveAsAction(); });
  file->addAction(tr("&Close"), QKeySequence::Close, this, [this] { CloseAction(); });
  file->addSeparator();
  file->addAction(tr("Run &script..."), QKeySequence(tr("Ctrl+R")), this, &MainWindow::RunScriptAction);
  file->addSeparator();
  file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);

  QMenu* view = menuBar()->addMenu(tr("&View"));
  view->addAction(tr("Zoom &extents"), QKeySequence(tr("Ctrl+Shift+E")), this,
                  [this] { view_->ZoomExtents(); });
  view->addAction(tr("Zoom &window"), QKeySequence(tr("Ctrl+Shift+W")), this, [this] {
    view_->StartZoomWindow();
    statusBar()->showMessage(tr("Drag the window to zoom to"), 5000);
  });
  view->addSeparator();
  view->addAction(command_line_->toggleViewAction());
  view->addAction(palette_dock_->toggleViewAction());
  view_menu_ = view;
}

void MainWindow::ShowStartPalette() {
  palette_dock_ = new CommandPaletteDock(commands_, [this](const std::string& label) { RunLabel(label); }, this);
  addDockWidget(Qt::LeftDockWidgetArea, palette_dock_);
}

bool MainWindow::ShowPalette(od::Palette& palette) {
  QDockWidget* dock = DockFor(palette);
  if (!dock) return false;
  dock->show();
  dock->raise();
  return true;
}

QDockWidget* MainWindow::DockFor(od::Palette& palette) {
  // The command palette's dock shows the module's one menu tree, so the dock made at start
  // serves the module's palette object too.
  if (dynamic_cast<ui::CommandPalette*>(&palette)) return palette_dock_;
  // The OD table palette gets a dock of its own on first use, kept while the module is.
  auto* table = dynamic_cast<ui::OdTableView*>(&palette);
  if (!table) return nullptr;
  if (!table_dock_) {
    table_dock_ = new OdTableDock(*table, [this] { driver_->RunPending(); }, this);
    table->SetFocusDrawing([this] { view_->setFocus(); });
    addDockWidget(Qt::LeftDockWidgetArea, table_dock_);
    splitDockWidget(palette_dock_, table_dock_, Qt::Vertical);
    // The grid gets most of the height: the command tree scrolls.
    resizeDocks({palette_dock_, table_dock_}, {220, 480}, Qt::Vertical);
    // A position saved by an earlier run wins over the default place.
    restoreDockWidget(table_dock_);
    view_menu_->addAction(table_dock_->toggleViewAction());
  }
  table_dock_->ShowPalette();
  return table_dock_;
}

bool MainWindow::ShowTable(const std::string& table) {
  if (driver_->busy()) return false;
  driver_->RunScript({"VELTOR_TABLE"});
  auto* view = dynamic_cast<ui::OdTableView*>(app::TheApp().table_palette().get());
  if (!view) return false;
  view->FillTableChoices();
  const std::vector<std::string>& tables = view->table_choices();
  if (std::find(tables.begin(), tables.end(), table) == tables.end()) return false;
  view->ChooseTable(table);
  return true;
}

void MainWindow::RunLabel(const std::string& label) {
  ui::RunLabel(*session_, commands_.tree(), label);
  // The cancel reaches a prompt that waits now; the queued command runs once the running one
  // has ended (the run further up the stack takes it), or at once when none runs.
  if (input_->waiting()) input_->Cancel();
  else driver_->RunPending();
}

// --- documents ---

Status MainWindow::OpenDrawing(const std::string& path) {
  if (driver_->busy()) return Status::Error("open " + path + ": a command is running");
  // A new drawing nobody has touched makes way for the first drawing opened.
  session::SessionDocument* untouched = nullptr;
  if (session_->document_count() == 1) {
    session::SessionDocument* only = session_->document(0);
    if (only->doc->path().empty() && !only->doc->modified()) untouched = only;
  }
  Status opened = session_->OpenDocument(path);
  if (!opened.ok()) {
    Print("Error: " + opened.message() + "\n");
    return opened;
  }
  session::SessionDocument* doc = session_->active();
  for (const std::string& warning : doc->open_warnings) Print("Warning: " + warning + "\n");
  Print("Opened " + doc->name + "\n");
  if (untouched && session_->ActivateDocument(0).ok()) {
    session_->CloseActiveDocument();
    for (size_t i = 0; i < session_->document_count(); ++i)
      if (session_->document(i) == doc) (void)session_->ActivateDocument(i);
  }
  AddRecent(QFileInfo(Q(path)).absoluteFilePath());
  SyncWithSession();
  return Status::Ok();
}

void MainWindow::OpenDrawingAndReport(const std::string& path) {
  Status opened = OpenDrawing(path);
  if (!opened.ok()) QMessageBox::critical(this, tr("Open drawing"), Q(opened.message()));
}

Status MainWindow::SaveActive(const std::string& path) {
  session::SessionDocument* doc = session_->active();
  if (!doc) return Status::Error("save: no drawing is open");
  Status saved = doc->doc->Save(path);
  if (!saved.ok()) {
    Print("Error: " + saved.message() + "\n");
    return saved;
  }
  doc->name = BaseName(path);
  Print("Saved " + path + "\n");
  AddRecent(QFileInfo(Q(path)).absoluteFilePath());
  SyncWithSession();
  return Status::Ok();
}

bool MainWindow::Idle() {
  if (!driver_->busy()) return true;
  statusBar()->showMessage(tr("A command is running: answer its prompt or press Esc first"), 5000);
  return false;
}

void MainWindow::OpenAction() {
  if (!Idle()) return;
  const QString path = QFileDialog::getOpenFileName(this, tr("Open drawing"), QString(),
                                                    tr("Drawings (*.dxf *.DXF);;All files (*)"));
  if (!path.isEmpty()) OpenDrawingAndReport(path.toStdString());
}

bool MainWindow::SaveAction() {
  if (!Idle()) return false;
  session::SessionDocument* doc = session_->active();
  if (!doc) return false;
  if (doc->doc->path().empty()) return SaveAsAction();
  Status saved = SaveActive(doc->doc->path());
  if (!saved.ok()) QMessageBox::critical(this, tr("Save drawing"), Q(saved.message()));
  return saved.ok();
}

bool MainWindow::SaveAsAction() {
  if (!Idle()) return false;
  session::SessionDocument* doc = session_->active();
  if (!doc) return false;
  const QString start = Q(doc->doc->path().empty() ? doc->name : doc->doc->path());
  QString path = QFileDialog::getSaveFileName(this, tr("Save drawing as"), start, tr("Drawings (*.dxf)"));
  if (path.isEmpty()) return false;
  if (QFileInfo(path).suffix().isEmpty()) path += ".dxf";
  Status saved = SaveActive(path.toStdString());
  if (!saved.ok()) QMessageBox::critical(this, tr("Save drawing"), Q(saved.message()));
  return saved.ok();
}

bool MainWindow::OfferToSave(session::SessionDocument& doc) {
  if (!doc.doc->modified()) return true;
  const auto answer = QMessageBox::question(
      this, tr("Unsaved changes"), tr("Save changes to %1?").arg(Q(doc.name)),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Cancel) return false;
  if (answer == QMessageBox::Discard) return true;
  return SaveAction();
}

bool MainWindow::CloseAction() {
  if (!Idle()) return false;
  session::SessionDocument* doc = session_->active();
  if (!doc || !OfferToSave(*doc)) return false;
  session_->CloseActiveDocument();
  SyncWithSession();
  return true;
}

void MainWindow::RunScriptAction() {
  if (!Idle()) return;
  const QString path = QFileDialog::getOpenFileName(this, tr("Run script"), QString(),
                                                    tr("Scripts (*.scr);;All files (*)"));
  if (path.isEmpty()) return;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    QMessageBox::critical(this, tr("Run script"), tr("%1: cannot be read").arg(path));
    return;
  }
  std::vector<std::string> lines;
  for (QByteArray line : file.readAll().split('\n')) {
    if (line.endsWith('\r')) line.chop(1);
    lines.push_back(line.toStdString());
  }
  // The line end after the last line does not start an empty one.
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  driver_->RunScript(std::move(lines));
}

void MainWindow::AddRecent(const QString& path) {
  QSettings settings;
  QStringList recent = settings.value(kRecentKey).toStringList();
  recent.removeAll(path);
  recent.prepend(path);
  while (recent.size() > kRecentFiles) recent.removeLast();
  settings.setValue(kRecentKey, recent);
  FillRecentMenu();
}

void MainWindow::FillRecentMenu() {
  recent_menu_->clear();
  const QStringList recent = QSettings().value(kRecentKey).toStringList();
  for (const QString& path : recent)
    recent_menu_->addAction(path, this, [this, path] {
      if (Idle()) OpenDrawingAndReport(path.toStdString());
    });
  recent_menu_->setEnabled(!recent.isEmpty());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (!closing_) {
    if (driver_->busy()) {
      // The running command is cancelled first; closing goes on once it has ended.
      input_->Cancel();
      event->ignore();
      QTimer::singleShot(0, this, &QWidget::close);
      return;
    }
    for (size_t i = session_->document_count(); i-- > 0;) {
      if (!session_->ActivateDocument(i).ok()) continue;
      if (!OfferToSave(*session_->active())) {
        SyncWithSession();
        event->ignore();
        return;
      }
    }
  }
  closing_ = true;
  input_->End();
  QSettings settings;
  settings.setValue(kGeometryKey, saveGeometry());
  settings.setValue(kDocksKey, saveState());
  event->accept();
}

// --- the window in step with the session ---

void MainWindow::SyncWithSession() {
  std::vector<const session::SessionDocument*> docs;
  for (size_t i = 0; i < session_->document_count(); ++i) docs.push_back(session_->document(i));
  for (auto it = drawings_.begin(); it != drawings_.end();)
    it = std::find(docs.begin(), docs.end(), it->first) == docs.end() ? drawings_.erase(it) : std::next(it);
  {
    QSignalBlocker quiet(tabs_);
    if (docs != tab_docs_) {
      while (tabs_->count() > 0) tabs_->removeTab(0);
      for (const session::SessionDocument* doc : docs) tabs_->addTab(Q(doc->name));
      tab_docs_ = docs;
    }
    for (size_t i = 0; i < docs.size(); ++i) {
      tabs_->setTabText(static_cast<int>(i), Q(docs[i]->name + (docs[i]->doc->modified() ? "*" : "")));
      tabs_->setTabToolTip(static_cast<int>(i), Q(docs[i]->doc->path()));
      if (docs[i] == session_->active()) tabs_->setCurrentIndex(static_cast<int>(i));
    }
  }
  RefreshView();
  UpdateTitle();
}

void MainWindow::TabChosen(int index) {
  if (index < 0) return;
  if (!Idle()) {
    SyncWithSession();  // back to the drawing the command runs in
    return;
  }
  if (session_->ActivateDocument(static_cast<size_t>(index)).ok()) SyncWithSession();
}

void MainWindow::RefreshView() {
  session::SessionDocument* doc = session_->active();
  // Each drawing keeps its own view: leaving one remembers where it was.
  if (shown_ != doc) {
    if (auto it = drawings_.find(shown_); it != drawings_.end()) {
      it->second.center = view_->center();
      it->second.scale = view_->scale();
    }
    shown_ = doc;
  }
  if (!doc) {
    view_->SetList(nullptr, false);
    view_->SetHighlighted({});
    return;
  }
  DrawingState& state = drawings_[doc];
  if (state.stale || state.doc != doc->doc.get() || state.generation != doc->doc->generation()) {
    state.list = DisplayList::Build(*doc->doc);
    state.doc = doc->doc.get();
    state.generation = doc->doc->generation();
    state.stale = false;
  }
  const bool fit = !state.fitted;
  state.fitted = true;
  if (!fit && state.scale > 0) {
    view_->SetView(state.center, state.scale);
    state.scale = 0.0;
  }
  view_->SetList(&state.list, fit);
  view_->SetHighlighted(session_->editor().ImpliedSelection());
}

void MainWindow::UpdateTitle() {
  session::SessionDocument* doc = session_->active();
  if (!doc) {
    setWindowTitle(tr("veltor workbench"));
    return;
  }
  setWindowTitle(Q(doc->name + (doc->doc->modified() ? "*" : "")) + tr(" - veltor workbench"));
}

// --- the view's mouse ---

void MainWindow::ViewClicked(geom::Vec2 world, od::EntityId picked, bool shift) {
  if (input_->waiting()) {
    const std::string& prompt = input_->prompt();
    if (Contains(prompt, "point") || Contains(prompt, "corner")) {
      driver_->Type(PointText(world, view_->scale()));
    } else if (picked != od::kNullId && !(picked & session::kRecordIdFlag)) {
      driver_->Type(dxf::FormatHandle(picked));
    }
    return;
  }
  if (driver_->busy() || picked == od::kNullId) return;
  ChangePickfirst({picked}, shift);
}

void MainWindow::ViewWindow(geom::Vec2 first, geom::Vec2 second, bool crossing, bool shift) {
  if (input_->waiting()) {
    // A selection prompt takes the window in the syntax typed at it: W or C, two corners.
    if (Contains(input_->prompt(), "objects"))
      input_->SubmitAll({crossing ? "C" : "W", PointText(first, view_->scale()), PointText(second, view_->scale())});
    return;
  }
  const DisplayList* list = view_->list();
  if (driver_->busy() || !list) return;
  const geom::Extents window({first.x, first.y, 0}, {second.x, second.y, 0});
  ChangePickfirst(list->InWindow(window, crossing), shift);
}

void MainWindow::ChangePickfirst(const od::EntityList& ids, bool remove) {
  od::EntityList now = session_->editor().ImpliedSelection();
  if (remove) {
    const std::unordered_set<od::EntityId> gone(ids.begin(), ids.end());
    now.erase(std::remove_if(now.begin(), now.end(), [&](od::EntityId id) { return gone.count(id) > 0; }),
              now.end());
  } else {
    std::unordered_set<od::EntityId> in(now.begin(), now.end());
    for (od::EntityId id : ids)
      if (in.insert(id).second) now.push_back(id);
  }
  session_->editor().SetPickfirst(now);
  view_->SetHighlighted(session_->editor().ImpliedSelection());
  statusBar()->showMessage(tr("%n selected", nullptr, static_cast<int>(now.size())), 3000);
}

}  // namespace veltor::workbench
