#include "workbench/od_table_dock.h"

#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "workbench/od_table_model.h"

namespace veltor::workbench {
namespace {

// The drop-down refills its tables every time it opens, as the palette's combo does.
class TableCombo : public QComboBox {
 public:
  TableCombo(std::function<void()> before_popup, QWidget* parent)
      : QComboBox(parent), before_popup_(std::move(before_popup)) {}
  void showPopup() override {
    before_popup_();
    QComboBox::showPopup();
  }

 private:
  std::function<void()> before_popup_;
};

// The grid's keys by the palette's names; kOther for the rest (which do nothing, Ctrl+V too).
ui::TableKey KeyOf(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Delete) return ui::TableKey::kDelete;
  if (!(event.modifiers() & Qt::ControlModifier)) return ui::TableKey::kOther;
  switch (event.key()) {
    case Qt::Key_A: return ui::TableKey::kCtrlA;
    case Qt::Key_C: return ui::TableKey::kCtrlC;
    case Qt::Key_F: return ui::TableKey::kCtrlF;
    case Qt::Key_Z: return ui::TableKey::kCtrlZ;
    case Qt::Key_Y: return ui::TableKey::kCtrlY;
    default: return ui::TableKey::kOther;
  }
}

}  // namespace

OdTableDock::OdTableDock(ui::OdTableView& view, std::function<void()> run_pending, QWidget* parent)
    : QDockWidget(QString::fromStdString(view.Name()), parent),
      view_(view),
      run_pending_(std::move(run_pending)) {
  setObjectName("od_table_dock");
  auto* body = new QWidget(this);
  auto* layout = new QVBoxLayout(body);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(BuildBar());

  model_ = new OdTableModel(view_, this);
  grid_ = new QTableView(body);
  grid_->setObjectName("od_table_grid");
  grid_->setModel(model_);
  grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  grid_->setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
  grid_->setShowGrid(true);
  grid_->setWordWrap(false);  // long texts end in "…" on one line
  grid_->verticalHeader()->hide();
  grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 6);
  grid_->horizontalHeader()->setSectionsMovable(false);
  grid_->horizontalHeader()->setDefaultSectionSize(120);
  grid_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  grid_->horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
  grid_->installEventFilter(this);
  layout->addWidget(grid_, 1);
  setWidget(body);

  connect(grid_->horizontalHeader(), &QHeaderView::sectionClicked, this,
          [this](int column) { Act([&] { view_.SortByColumn(static_cast<size_t>(column)); }); });
  connect(grid_->horizontalHeader(), &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) {
            int column = grid_->horizontalHeader()->logicalIndexAt(at);
            if (column > 0) Act([&] { view_.SetWholeColumn(static_cast<size_t>(column)); });
          });
  connect(grid_, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
    TakeSelection();
    Act([&] { view_.ClickRow(static_cast<size_t>(index.row())); });
  });
  connect(grid_, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) {
    Act([&] { view_.DoubleClickRow(static_cast<size_t>(index.row())); });
  });
  connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { TakeSelection(); });

  view_.SetListener([this](ui::TableViewChange change) { ViewChanged(change); });
  view_.SetClipboard([](const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
  });
}

QWidget* OdTableDock::BuildBar() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  auto add_menu = [&](const QString& label, const std::vector<std::string>& entries,
                      std::function<void(size_t)> run) {
    auto* button = new QPushButton(label, bar);
    button->setObjectName("od_table_" + label.toLower());
    auto* menu = new QMenu(button);
    for (size_t i = 0; i < entries.size(); ++i)
      menu->addAction(QString::fromStdString(entries[i]), this, [this, run, i] { Act([&] { run(i); }); });
    button->setMenu(menu);
    row->addWidget(button);
  };
  add_menu("File", ui::TableFileMenu(), [this](size_t i) { view_.RunFileEntry(i); });
  add_menu("Edit", ui::TableEditMenu(),
           [this](size_t i) { view_.RunEditEntry(static_cast<ui::TableEditEntry>(i)); });
  add_menu("View", ui::TableViewMenu(),
           [this](size_t i) { view_.RunViewEntry(static_cast<ui::TableViewEntry>(i)); });

  tables_ = new TableCombo([this] { view_.FillTableChoices(); }, bar);
  tables_->setObjectName("od_table_tables");
  tables_->setMinimumContentsLength(18);
  row->addWidget(tables_, 1);
  connect(tables_, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
    if (index < 0) return;
    std::string table = tables_->itemText(index).toStdString();
    Act([&] { view_.ChooseTable(table); });
  });

  synchronize_ = new QCheckBox("Synchronize", bar);
  synchronize_->setChecked(view_.synchronize());
  row->addWidget(synchronize_);
  connect(synchronize_, &QCheckBox::toggled, this, [this](bool on) { view_.SetSynchronize(on); });
  row->addWidget(new QLabel(bar));  // the status text, always empty
  auto* refresh = new QPushButton("Refresh", bar);
  row->addWidget(refresh);
  connect(refresh, &QPushButton::clicked, this, [this] { Act([&] { view_.Reload(true); }); });
  return bar;
}

void OdTableDock::ShowPalette() {
  FillTables();
  model_->Changed(ui::TableViewChange::kLayout);
  ShowSelection();
  show();
  raise();
}

void OdTableDock::FillTables() {
  updating_ = true;
  tables_->clear();
  for (const std::string& table : view_.table_choices()) tables_->addItem(QString::fromStdString(table));
  tables_->setCurrentIndex(static_cast<int>(view_.chosen_index()));
  updating_ = false;
}

void OdTableDock::ViewChanged(ui::TableViewChange change) {
  if (change == ui::TableViewChange::kTables) return FillTables();
  model_->Changed(change);
  if (change == ui::TableViewChange::kLayout) {
    tables_->setCurrentIndex(static_cast<int>(view_.chosen_index()));
    grid_->setColumnWidth(0, 60);
  }
  ShowSelection();
}

void OdTableDock::ShowSelection() {
  updating_ = true;
  QItemSelection selection;
  const int columns = model_->columnCount();
  const size_t rows = view_.RowCount();
  // Runs of selected rows become one range each, so a large selection stays cheap.
  for (size_t first = 0; first < rows && columns > 0;) {
    if (!view_.IsSelected(first)) {
      ++first;
      continue;
    }
    size_t last = first;
    while (last + 1 < rows && view_.IsSelected(last + 1)) ++last;
    selection.select(model_->index(static_cast<int>(first), 0),
                     model_->index(static_cast<int>(last), columns - 1));
    first = last + 1;
  }
  grid_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  updating_ = false;
}

void OdTableDock::TakeSelection() {
  if (updating_) return;
  std::vector<size_t> rows;
  for (const QModelIndex& index : grid_->selectionModel()->selectedRows())
    rows.push_back(static_cast<size_t>(index.row()));
  updating_ = true;
  view_.SelectOnly(rows);
  updating_ = false;
}

void OdTableDock::Act(const std::function<void()>& action) {
  if (updating_) return;
  action();
  if (run_pending_) run_pending_();
}

bool OdTableDock::eventFilter(QObject* watched, QEvent* event) {
  if (watched == grid_) {
    if (event->type() == QEvent::FocusIn) view_.SetGridFocused(true);
    if (event->type() == QEvent::FocusOut) view_.SetGridFocused(false);
    // Keys typed into an open cell editor go to the editor, not to the grid.
    if (event->type() == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Escape) {
        view_.Hide(true);
        hide();
        return true;
      }
      ui::TableKey pressed = KeyOf(*key);
      if (pressed != ui::TableKey::kOther || (key->modifiers() & Qt::ControlModifier)) {
        Act([&] { view_.PressKey(pressed); });
        return true;
      }
    }
  }
  return QDockWidget::eventFilter(watched, event);
}

void OdTableDock::closeEvent(QCloseEvent* event) {
  // Closing only hides the palette; its table and settings stay for the next time.
  view_.Hide(false);
  QDockWidget::closeEvent(event);
}

}  // namespace veltor::workbench
