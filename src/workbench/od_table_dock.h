// The OD table palette as a dock: the File, Edit and View buttons with their menus, the table
// drop-down, "Synchronize", "Refresh" and the grid. Every gesture goes to the palette's view
// model; what it changes comes back through the model's listener.
#pragma once

#include <QDockWidget>
#include <functional>

#include "ui/od_table_view.h"

class QCheckBox;
class QComboBox;
class QTableView;

namespace veltor::workbench {

class OdTableModel;

class OdTableDock : public QDockWidget {
  Q_OBJECT

 public:
  // `view` must outlive the dock. `run_pending` runs the command strings the palette queued
  // (undo, zoom, the value query) once the gesture is done.
  OdTableDock(ui::OdTableView& view, std::function<void()> run_pending, QWidget* parent = nullptr);

  QTableView* grid() const { return grid_; }
  QComboBox* tables() const { return tables_; }
  QCheckBox* synchronize() const { return synchronize_; }
  OdTableModel* model() const { return model_; }

  // Shows the dock with the view model's current state.
  void ShowPalette();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* BuildBar();
  void FillTables();
  void ViewChanged(ui::TableViewChange change);
  // Copies the view model's row selection into the grid's.
  void ShowSelection();
  // The grid's selection, changed by the user, into the view model.
  void TakeSelection();
  // Runs `action` on the view model and then what it queued.
  void Act(const std::function<void()>& action);

  ui::OdTableView& view_;
  std::function<void()> run_pending_;
  OdTableModel* model_ = nullptr;
  QTableView* grid_ = nullptr;
  QComboBox* tables_ = nullptr;
  QCheckBox* synchronize_ = nullptr;
  bool updating_ = false;  // the dock is writing the view model's state into its widgets
};

}  // namespace veltor::workbench
