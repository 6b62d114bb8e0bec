// The Qt dialog renderer over the module's real dialog models: what a person does to the
// widgets reaches the model through its setters and OnChanged, and OK and Cancel end the
// dialog as the console renderer does.
#include "workbench/dialog_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <memory>
#include <string>

#include "drawing/session/session.h"
#include "ui/od_select.h"
#include "ui/od_select_xyz.h"
#include "ui/select_by_od.h"

namespace veltor::workbench {
namespace {

class DialogWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(session_.OpenDocument(VELTOR_SOURCE_DIR "/examples/city.dxf").ok());
    tables_ = container().TableNames();
    ASSERT_GE(tables_.size(), 2u);
  }

  const od::ObjectDataContainer& container() { return session_.active()->project.container(); }

  template <typename T>
  T* Widget(DialogWindow& window, int id) {
    T* widget = qobject_cast<T*>(window.WidgetOf(id));
    EXPECT_NE(widget, nullptr) << "control " << id;
    return widget;
  }

  // Selects list row `row` as a click does.
  static void Choose(QListWidget* list, int row) { list->item(row)->setSelected(true); }

  static void Click(DialogWindow& window, int id) {
    auto* button = qobject_cast<QPushButton*>(window.WidgetOf(id));
    ASSERT_NE(button, nullptr);
    button->click();
  }

  // Types into an edit box and leaves it, as a person does.
  static void Type(QLineEdit* edit, const QString& text) {
    edit->setText(text);
    emit edit->editingFinished();
  }

  session::Session session_{[](std::string_view) {}};
  std::vector<std::string> tables_;
};

TEST_F(DialogWindowTest, ListChoicesRefillDependentControlsAndOkStoresThem) {
  ui::OdSelect::Memory memory;
  ui::OdSelect model(tables_, memory, container());
  DialogWindow window(model);
  auto* tables = Widget<QListWidget>(window, ui::OdSelect::kTableList);
  auto* fields = Widget<QListWidget>(window, ui::OdSelect::kFieldList);
  ASSERT_EQ(tables->count(), static_cast<int>(tables_.size()));
  EXPECT_EQ(fields->count(), 0);
  // OK waits for a field.
  EXPECT_FALSE(window.WidgetOf(od::kIdOk)->isEnabled());

  Choose(tables, 1);
  EXPECT_EQ(model.SelectedIndex(ui::OdSelect::kTableList), 1);
  const std::vector<std::string> columns = model.Items(ui::OdSelect::kFieldList);
  ASSERT_FALSE(columns.empty());
  ASSERT_EQ(fields->count(), static_cast<int>(columns.size()));
  EXPECT_EQ(fields->item(0)->text().toStdString(), columns[0]);
  EXPECT_FALSE(window.WidgetOf(od::kIdOk)->isEnabled());

  Choose(fields, static_cast<int>(columns.size()) - 1);
  EXPECT_TRUE(window.WidgetOf(od::kIdOk)->isEnabled());
  Type(Widget<QLineEdit>(window, ui::OdSelect::kTolerance), "0.25");
  Click(window, od::kIdOk);

  EXPECT_EQ(window.result_value(), od::DialogResult::kOk);
  EXPECT_EQ(window.result(), QDialog::Accepted);
  EXPECT_EQ(memory.table, tables_[1]);
  EXPECT_EQ(memory.column, columns.back());
  EXPECT_DOUBLE_EQ(model.tolerance(), 0.25);
}

TEST_F(DialogWindowTest, ANumberOutsideItsRangeIsRefusedAndTheDialogStaysOpen) {
  ui::OdSelect::Memory memory;
  ui::OdSelect model(tables_, memory, container());
  DialogWindow window(model);
  window.show();
  Choose(Widget<QListWidget>(window, ui::OdSelect::kTableList), 0);
  Choose(Widget<QListWidget>(window, ui::OdSelect::kFieldList), 0);
  const std::string before = model.Text(ui::OdSelect::kTolerance);

  Type(Widget<QLineEdit>(window, ui::OdSelect::kTolerance), "-1");
  EXPECT_FALSE(window.refusal().isEmpty());
  EXPECT_EQ(model.Text(ui::OdSelect::kTolerance), before);
  Click(window, od::kIdOk);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.result_value(), od::DialogResult::kCancel);
  EXPECT_TRUE(memory.table.empty()) << "OnOk must not run while the edit is refused";

  Type(Widget<QLineEdit>(window, ui::OdSelect::kTolerance), "3");
  Click(window, od::kIdOk);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(window.result_value(), od::DialogResult::kOk);
  EXPECT_DOUBLE_EQ(model.tolerance(), 3.0);
}

TEST_F(DialogWindowTest, CancelLeavesWithoutStoring) {
  ui::OdSelect::Memory memory;
  ui::OdSelect model(tables_, memory, container());
  DialogWindow window(model);
  Choose(Widget<QListWidget>(window, ui::OdSelect::kTableList), 0);
  Choose(Widget<QListWidget>(window, ui::OdSelect::kFieldList), 0);
  Click(window, od::kIdCancel);
  EXPECT_EQ(window.result_value(), od::DialogResult::kCancel);
  EXPECT_EQ(window.result(), QDialog::Rejected);
  EXPECT_TRUE(memory.table.empty());
  EXPECT_TRUE(memory.column.empty());
}

TEST_F(DialogWindowTest, CombosSelectOneColumnEach) {
  ui::OdSelectXyz::Memory memory;
  ui::OdSelectXyz model(tables_, memory, container());
  DialogWindow window(model);
  Choose(Widget<QListWidget>(window, ui::OdSelectXyz::kTableList), 0);
  auto* x = Widget<QComboBox>(window, ui::OdSelectXyz::kXCombo);
  auto* mode = Widget<QComboBox>(window, ui::OdSelectXyz::kXyModeCombo);
  const std::vector<std::string> columns = model.Items(ui::OdSelectXyz::kXCombo);
  ASSERT_GE(columns.size(), 2u);  // the empty entry and the table's columns
  ASSERT_EQ(x->count(), static_cast<int>(columns.size()));
  ASSERT_EQ(mode->count(), 3);

  x->setCurrentIndex(1);
  emit x->activated(1);
  mode->setCurrentIndex(2);
  emit mode->activated(2);
  EXPECT_EQ(model.SelectedIndex(ui::OdSelectXyz::kXCombo), 1);
  Type(Widget<QLineEdit>(window, ui::OdSelectXyz::kXyPrecision), "3");
  Click(window, od::kIdOk);

  EXPECT_EQ(window.result_value(), od::DialogResult::kOk);
  EXPECT_EQ(memory.table, tables_[0]);
  EXPECT_EQ(memory.x_column, columns[1]);
  EXPECT_EQ(memory.xy_mode, ui::XyMode::kCenter);
  EXPECT_EQ(memory.xy_precision, 3);
}

TEST_F(DialogWindowTest, MultipleListGridAndCheckBoxReachTheModel) {
  ui::SelectByOd::Memory memory;
  memory.extended = false;
  ui::SelectByOd model(tables_, true, memory, container());
  DialogWindow window(model);
  auto* tables = Widget<QListWidget>(window, ui::SelectByOd::kTableList);
  auto* grid = Widget<QTableWidget>(window, ui::SelectByOd::kConditionGrid);
  auto* extended = Widget<QCheckBox>(window, ui::SelectByOd::kExtended);
  EXPECT_EQ(grid->rowCount(), 0);
  EXPECT_FALSE(extended->isChecked());

  Choose(tables, 0);
  const int rows = static_cast<int>(model.Rows(ui::SelectByOd::kConditionGrid).size());
  ASSERT_GT(rows, 0);
  ASSERT_EQ(grid->rowCount(), rows);
  const std::string column = model.Rows(ui::SelectByOd::kConditionGrid)[0][0];
  EXPECT_EQ(grid->item(0, 0)->text().toStdString(), column);
  // The column names are not editable, the patterns are.
  EXPECT_FALSE(grid->item(0, 0)->flags() & Qt::ItemIsEditable);
  EXPECT_TRUE(grid->item(0, 1)->flags() & Qt::ItemIsEditable);

  grid->item(0, 1)->setText("A*");
  EXPECT_EQ(model.Rows(ui::SelectByOd::kConditionGrid)[0][1], "A*");
  extended->setChecked(true);
  EXPECT_TRUE(model.Checked(ui::SelectByOd::kExtended));
  Click(window, od::kIdOk);

  EXPECT_EQ(window.result_value(), od::DialogResult::kOk);
  ASSERT_EQ(model.selected_tables().size(), 1u);
  EXPECT_EQ(model.selected_tables()[0], tables_[0]);
  ASSERT_FALSE(model.conditions().empty());
  EXPECT_EQ(model.conditions()[0].column, column);
  EXPECT_EQ(model.conditions()[0].pattern, "A*");
  EXPECT_TRUE(memory.extended);
}

}  // namespace
}  // namespace veltor::workbench
