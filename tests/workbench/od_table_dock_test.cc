// The OD table palette's dock: the Qt model over the view model stays a consistent item model
// through loads, sorts and deletes, the dock's widgets follow the view model, and the grid's
// selection reaches the drawing.
#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QTableView>

#include "app/veltor_app.h"
#include "workbench/od_table_dock.h"
#include "workbench/od_table_model.h"
#include "workbench_fixture.h"

namespace veltor::workbench {
namespace {

const std::string kCity = VELTOR_SOURCE_DIR "/examples/city.dxf";

class OdTableDockTest : public WorkbenchTest {
 protected:
  void SetUp() override {
    WorkbenchTest::SetUp();
    ASSERT_TRUE(window().OpenDrawing(kCity).ok());
    window().driver().RunScript({"VELTOR_TABLE"});
    dock_ = window().table_dock();
    ASSERT_NE(dock_, nullptr) << History();
    view_ = dynamic_cast<ui::OdTableView*>(app::TheApp().table_palette().get());
    ASSERT_NE(view_, nullptr);
  }

  // Chooses a table as the drop-down does.
  void Choose(const QString& table) {
    dock_->tables()->showPopup();
    dock_->tables()->hidePopup();
    int index = dock_->tables()->findText(table);
    ASSERT_GE(index, 0) << table.toStdString();
    dock_->tables()->setCurrentIndex(index);
    emit dock_->tables()->activated(index);
  }

  OdTableDock* dock_ = nullptr;
  ui::OdTableView* view_ = nullptr;
};

TEST_F(OdTableDockTest, TheQtModelStaysConsistentThroughLoadsSortsAndEdits) {
  QAbstractItemModelTester tester(dock_->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_FALSE(dock_->isHidden());
  Choose("Zoning");
  QAbstractItemModel* model = dock_->grid()->model();
  ASSERT_EQ(model->rowCount(), 17);
  ASSERT_EQ(model->columnCount(), 3);
  EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "#");
  EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "ZONE");
  EXPECT_FALSE(model->flags(model->index(0, 0)) & Qt::ItemIsEditable);
  EXPECT_TRUE(model->flags(model->index(0, 2)) & Qt::ItemIsEditable);

  emit dock_->grid()->horizontalHeader()->sectionClicked(1);
  EXPECT_EQ(model->data(model->index(0, 1), Qt::DisplayRole).toString(), "C1");
  // An in-place edit goes through the view model into the record.
  ASSERT_TRUE(model->setData(model->index(0, 2), "4.5", Qt::EditRole));
  EXPECT_EQ(model->data(model->index(0, 2), Qt::DisplayRole).toString(), "4.5");
  EXPECT_EQ(view_->CellText(0, 2), "4.5");
  Choose("");
  EXPECT_EQ(model->columnCount(), 0);
}

TEST_F(OdTableDockTest, SelectingRowsSelectsTheirEntitiesAndTheDrawingSelectsRows) {
  Choose("Zoning");
  QTableView* grid = dock_->grid();
  grid->setFocus();
  grid->selectRow(2);
  emit grid->clicked(grid->model()->index(2, 1));
  ASSERT_EQ(window().session().active()->pickfirst.size(), 1u);
  EXPECT_EQ(window().session().active()->pickfirst[0], view_->Row(2).entity);

  // A selection made in the drawing comes back as the grid's selection.
  grid->clearFocus();
  view_->SetGridFocused(false);
  window().session().editor().SetPickfirst({view_->Row(5).entity});
  QModelIndexList rows = grid->selectionModel()->selectedRows();
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].row(), 5);

  dock_->synchronize()->setChecked(false);
  EXPECT_FALSE(view_->synchronize());
}

}  // namespace
}  // namespace veltor::workbench
