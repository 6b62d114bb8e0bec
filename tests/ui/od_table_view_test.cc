// The OD table palette's model over the embedded session: rows, cells, sorting, editing,
// deleting, the selection in step with the drawing, and the reactions to changes made
// elsewhere.
#include "ui/od_table_view.h"

#include <gtest/gtest.h>

#include "../commands/data_command_fixture.h"
#include "../support/faulty_host.h"
#include "drawing/model/tables.h"
#include "ui/column_value_dialog.h"
#include "ui/grid_cell_input.h"
#include "ui/natural_compare.h"
#include "ui/options_wild.h"

namespace veltor::testing {
namespace {

using od::Value;

TEST(NaturalCompareTest, DigitRunsByValueAndTheDeliberateQuirks) {
  EXPECT_LT(ui::NaturalCompareUtf8("a2", "a9"), 0);
  EXPECT_LT(ui::NaturalCompareUtf8("a9", "a10"), 0);
  EXPECT_GT(ui::NaturalCompareUtf8("a10", "a9"), 0);
  // A prefix compares equal to the longer text; a point is an ordinary character.
  EXPECT_EQ(ui::NaturalCompareUtf8("ab", "abc"), 0);
  EXPECT_EQ(ui::NaturalCompareUtf8("x", "x9"), 0);
  EXPECT_LT(ui::NaturalCompareUtf8("1.5", "1.25"), 0);
  // Empty texts: an empty a is "before" even an empty b.
  EXPECT_EQ(ui::NaturalCompareUtf8("", ""), -1);
  EXPECT_EQ(ui::NaturalCompareUtf8("", "a"), -1);
  EXPECT_EQ(ui::NaturalCompareUtf8("a", ""), 1);
  // A digit sorts after any other character; case counts by code unit.
  EXPECT_GT(ui::NaturalCompareUtf8("1", "a"), 0);
  EXPECT_LT(ui::NaturalCompareUtf8("B", "a"), 0);
  // Runs too long for 32 bits saturate instead of wrapping into negatives.
  EXPECT_GT(ui::NaturalCompareUtf8("99999999999", "5"), 0);
  EXPECT_EQ(ui::NaturalCompareUtf8("99999999999", "88888888888"), 0);
}

TEST(CellInputTest, ParsesByTheValuesOwnType) {
  Value integer = Value::Integer(5);
  ui::ParseCellInput(integer, "12.9");
  EXPECT_EQ(integer, Value::Integer(12));
  ui::ParseCellInput(integer, "abc");
  EXPECT_EQ(integer, Value::Integer(0));
  Value real = Value::Real(1);
  ui::ParseCellInput(real, " 2.5e1x");
  EXPECT_EQ(real, Value::Real(25));
  Value point = Value::Point({9, 9, 9});
  ui::ParseCellInput(point, "1,2");
  EXPECT_EQ(point, Value::Point({9, 9, 9})) << "fewer than two commas keep the point";
  ui::ParseCellInput(point, "1,2,3");
  EXPECT_EQ(point, Value::Point({1, 2, 3}));
  ui::ParseCellInput(point, "1,2,3,4");
  EXPECT_EQ(point, Value::Point({1, 2, 4})) << "y is read from \"2,3\", z after the last comma";
  Value text = Value::Character("a");
  ui::ParseCellInput(text, " 7 * ");
  EXPECT_EQ(text, Value::Character(" 7 * "));
  EXPECT_STREQ(ui::CellTypeName(Value::Real(0)), "real");
  EXPECT_STREQ(ui::CellTypeName(Value()), "unknown");
}

class OdTableViewTest : public DataCommandTest {
 protected:
  OdTableViewTest() {
    Define("Pipes", {Column("ID", Value::Character("")), Column("DEPTH", Value::Real(0))});
    view_.SetClipboard([this](const std::string& text) { clipboard_ = text; });
  }

  od::EntityId Pipe(const std::string& id, double depth, const std::string& layer = "0") {
    od::EntityId e = AddPoint(layer);
    AttachValues(e, "Pipes", {Value::Character(id), Value::Real(depth)});
    return e;
  }

  // The grid's column `column` from top to bottom.
  std::vector<std::string> Column(size_t column) {
    std::vector<std::string> texts;
    for (size_t r = 0; r < view_.RowCount(); ++r) texts.push_back(view_.CellText(r, column));
    return texts;
  }
  using DataCommandTest::Column;

  void Open(const std::string& table) {
    view_.Show();
    view_.FillTableChoices();
    view_.ChooseTable(table);
  }

  ui::OdTableView view_{session_};
  std::string clipboard_;
};

TEST_F(OdTableViewTest, TheComboOffersNonSystemTablesAfterAnEmptyEntry) {
  Define("TPMNODE_x", {Column("A", Value::Integer(0))});
  Define("Alpha", {Column("A", Value::Integer(0))});
  view_.FillTableChoices();
  // Catalogue order, which is the order the tables were defined in.
  EXPECT_EQ(view_.table_choices(), (std::vector<std::string>{"", "Pipes", "Alpha"}));
  EXPECT_EQ(view_.chosen_index(), 0u);
  view_.ChooseTable("Pipes");
  EXPECT_EQ(view_.chosen_index(), 1u);
  EXPECT_EQ(view_.ColumnCount(), 3u);
  EXPECT_EQ(view_.ColumnTitle(0), "#");
  EXPECT_EQ(view_.ColumnTitle(2), "DEPTH");
  view_.ChooseTable("");
  EXPECT_EQ(view_.ColumnCount(), 0u) << "the empty entry leaves no columns";
  EXPECT_EQ(view_.RowCount(), 0u);
}

TEST_F(OdTableViewTest, RowsLeaveOutHiddenLayersAndCountRecordsInLoadOrder) {
  od::EntityId twice = Pipe("P1", 1.5);
  AttachValues(twice, "Pipes", {Value::Character("P1b"), Value::Real(2)});
  for (const char* layer : {"OFF", "FROZEN", "LOCKED", "HIDDEN"}) Pipe(layer, 0, layer);
  model::SetLayerOff(doc(), model::FindLayer(doc(), "OFF"), true);
  model::SetLayerFrozen(doc(), model::FindLayer(doc(), "FROZEN"), true);
  model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  model::SetLayerHidden(doc(), model::FindLayer(doc(), "HIDDEN"), true);
  Pipe("P2", 3);
  Open("Pipes");
  EXPECT_EQ(Column(0), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(Column(1), (std::vector<std::string>{"P1", "P1b", "P2"}));
  EXPECT_EQ(Column(2), (std::vector<std::string>{"1.5", "2.0", "3.0"}));
  EXPECT_EQ(view_.CellText(3, 1), "") << "beyond the rows";
}

TEST_F(OdTableViewTest, SortingIsNaturalReversesOnASecondClickAndHashRestoresLoadOrder) {
  for (const char* id : {"a10", "a9", "a2"}) Pipe(id, 0);
  Open("Pipes");
  view_.SetSelected(0, true);  // a10
  view_.SortByColumn(1);
  EXPECT_EQ(Column(1), (std::vector<std::string>{"a2", "a9", "a10"}));
  EXPECT_TRUE(view_.IsSelected(2)) << "the selection follows its row";
  view_.SortByColumn(1);
  EXPECT_EQ(Column(1), (std::vector<std::string>{"a10", "a9", "a2"}));
  view_.SortByColumn(2);  // another column starts ascending again (all equal: order kept)
  view_.SortByColumn(1);
  EXPECT_EQ(Column(1), (std::vector<std::string>{"a2", "a9", "a10"}));
  view_.SortByColumn(0);
  EXPECT_EQ(Column(0), (std::vector<std::string>{"1", "2", "3"}));
  view_.SortByColumn(0);
  EXPECT_EQ(Column(0), (std::vector<std::string>{"3", "2", "1"}));
  // A reload starts ascending again on the column last sorted.
  view_.Reload(false);
  view_.SortByColumn(0);
  EXPECT_EQ(Column(0), (std::vector<std::string>{"1", "2", "3"}));
}

TEST_F(OdTableViewTest, EditingACellWritesTheFirstMatchingRecordAndSelectsItsEntity) {
  od::EntityId e = Pipe("same", 1);
  AttachValues(e, "Pipes", {Value::Character("same"), Value::Real(1)});
  AttachValues(e, "Pipes", {Value::Character("other"), Value::Real(1)});
  Open("Pipes");
  std::string before = Saved("before.dxf");
  view_.EditCell(1, 2, std::string("1.0"));
  EXPECT_EQ(Saved("same.dxf"), before) << "the text the cell shows writes nothing";
  view_.EditCell(1, 2, std::nullopt);
  view_.EditCell(1, 0, std::string("9"));
  EXPECT_EQ(Saved("cancelled.dxf"), before);

  // The second row's record equals the first: the first matching record is the one written.
  view_.EditCell(1, 2, std::string("7.25 m"));
  EXPECT_EQ(Records(e), (std::vector<std::string>{"Pipes[same|7.25]", "Pipes[same|1.0]",
                                                  "Pipes[other|1.0]"}));
  EXPECT_EQ(view_.CellText(0, 2), "7.25");
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{e});
  view_.EditCell(2, 1, std::string("renamed"));
  EXPECT_EQ(Records(e)[2], "Pipes[renamed|1.0]");
  // Each edit is one undo step.
  Answer({});
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(Records(e)[2], "Pipes[other|1.0]");
}

TEST_F(OdTableViewTest, SettingAWholeColumnWritesSelectedRowsOrEveryRecord) {
  od::EntityId a = Pipe("A", 1);
  od::EntityId b = Pipe("B", 2);
  AttachValues(b, "Pipes", {Value::Character("B2"), Value::Real(3)});
  Open("Pipes");
  view_.SetSelected(1, true);
  ui_.NextDialog().SetText(ui::ColumnValueDialog::kValueId, "4.5").Press(od::kIdOk);
  view_.SetWholeColumn(2);
  EXPECT_EQ(ui_.opened().back().title, "DEPTH (real)");
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Pipes[A|1.0]"}));
  EXPECT_EQ(Records(b), (std::vector<std::string>{"Pipes[B|4.5]", "Pipes[B2|3.0]"}));

  view_.SelectOnly({});
  ui_.NextDialog().SetText(ui::ColumnValueDialog::kValueId, "x").Press(od::kIdOk);
  view_.SetWholeColumn(2);
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Pipes[A|0.0]"})) << "no number reads as 0";
  EXPECT_EQ(Records(b), (std::vector<std::string>{"Pipes[B|0.0]", "Pipes[B2|0.0]"}));

  ui_.NextDialog().SetText(ui::ColumnValueDialog::kValueId, "9").Press(od::kIdCancel);
  view_.SetWholeColumn(2);
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Pipes[A|0.0]"}));
}

TEST_F(OdTableViewTest, DeletingAsksAndDetachesTheSelectedRecords) {
  od::EntityId a = Pipe("A", 1);
  AttachValues(a, "Pipes", {Value::Character("A2"), Value::Real(2)});
  AttachValues(a, "Pipes", {Value::Character("A3"), Value::Real(3)});
  Open("Pipes");
  std::string before = Saved("before.dxf");
  ui_.NextMessageAnswer(od::MessageAnswer::kOk);
  view_.DeleteSelectedRows();
  view_.SetSelected(1, true);
  ui_.NextMessageAnswer(od::MessageAnswer::kCancel);
  view_.DeleteSelectedRows();
  EXPECT_EQ(Saved("kept.dxf"), before) << "nothing selected, or Cancel, changes nothing";
  EXPECT_EQ(ui_.messages().back(), "OD table: Detach selected Object Data?");

  ui_.NextMessageAnswer(od::MessageAnswer::kOk);
  view_.DeleteSelectedRows();
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Pipes[A|1.0]", "Pipes[A3|3.0]"}));
  // The rows left still show their own records.
  EXPECT_EQ(Column(1), (std::vector<std::string>{"A", "A3"}));
  EXPECT_EQ(Column(0), (std::vector<std::string>{"1", "3"}));
}

TEST_F(OdTableViewTest, SelectionFollowsTheDrawingAndIsPushedOnlyWithSynchronize) {
  od::EntityId a = Pipe("A", 1);
  AttachValues(a, "Pipes", {Value::Character("A2"), Value::Real(2)});
  od::EntityId b = Pipe("B", 3);
  Open("Pipes");
  // From the drawing: every row of a selected entity.
  session_.Ed().SetPickfirst({a});
  EXPECT_EQ(view_.SelectedCount(), 2u);
  EXPECT_TRUE(view_.IsSelected(0) && view_.IsSelected(1));
  session_.Ed().SetPickfirst({});
  EXPECT_EQ(view_.SelectedCount(), 0u) << "an empty selection deselects every row";

  // From the grid: the selected rows' entities become the pickfirst set.
  view_.SelectOnly({2});
  view_.ClickRow(2);
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{b});
  view_.SetSynchronize(false);
  view_.SelectOnly({0});
  view_.ClickRow(0);
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{b}) << "Synchronize off leaves the drawing alone";
  view_.SetGridFocused(false);
  session_.Ed().SetPickfirst({b});
  EXPECT_TRUE(view_.IsSelected(2)) << "the drawing's selection still reaches the grid";

  view_.SetSynchronize(true);
  view_.SelectOnly({0, 2});
  view_.RunViewEntry(ui::TableViewEntry::kInvertSelection);
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{a});
  view_.RunViewEntry(ui::TableViewEntry::kInvertSelection);
  EXPECT_TRUE(view_.IsSelected(0) && !view_.IsSelected(1) && view_.IsSelected(2));
  view_.RunViewEntry(ui::TableViewEntry::kSortSelection);
  EXPECT_EQ(Column(1), (std::vector<std::string>{"A", "B", "A2"}));
  EXPECT_TRUE(view_.IsSelected(0) && view_.IsSelected(1) && !view_.IsSelected(2));
  view_.Hide(true);
  EXPECT_EQ(view_.SelectedCount(), 0u);
  EXPECT_TRUE(sdoc().pickfirst.empty());
}

TEST_F(OdTableViewTest, FollowsChangesMadeElsewhere) {
  od::EntityId a = Pipe("A", 1);
  od::EntityId b = Pipe("B", 2);
  Open("Pipes");
  EXPECT_EQ(view_.CellText(1, 1), "B");
  ASSERT_TRUE(container().UpdateRecord(b, 0, {"Pipes", {Value::Character("B*"), Value::Real(2)}}).ok());
  EXPECT_EQ(view_.CellText(1, 1), "B*") << "a record changed by a command shows at once";
  ASSERT_TRUE(db().Erase(a).ok());
  EXPECT_EQ(view_.RowCount(), 1u);
  EXPECT_EQ(view_.CellText(0, 1), "B*");
  // A field added elsewhere shows at the next selection change.
  ASSERT_TRUE(container().AddColumn("Pipes", Column("NOTE", Value::Character("n/a"))).ok());
  session_.Ed().SetPickfirst({b});
  EXPECT_EQ(view_.ColumnCount(), 4u);
  EXPECT_EQ(view_.CellText(0, 3), "n/a");
}

TEST_F(OdTableViewTest, EditMenuHandsTheRowsToItsWorkers) {
  od::EntityId a = Pipe("A", 1);
  od::EntityId b = Pipe("B", 2);
  Open("Pipes");
  std::vector<od::EntityList> handed;
  auto record = [&handed](od::EntityList entities) { handed.push_back(std::move(entities)); };
  view_.SetWorker(ui::TableWorker::kSetId, record);
  view_.SetWorker(ui::TableWorker::kSetProp, record);
  view_.RunEditEntry(ui::TableEditEntry::kCreateIds);
  view_.RunEditEntry(ui::TableEditEntry::kInputGraphicalProperties);
  view_.SelectOnly({1});
  view_.RunEditEntry(ui::TableEditEntry::kCreateIds);
  ASSERT_EQ(handed.size(), 3u);
  EXPECT_EQ(handed[0], (od::EntityList{b, a})) << "Create IDs on all rows walks them backwards";
  EXPECT_EQ(handed[1], (od::EntityList{a, b}));
  EXPECT_EQ(handed[2], (od::EntityList{b}));
  view_.PressKey(ui::TableKey::kCtrlC);
  EXPECT_EQ(clipboard_, " ");
}

TEST_F(OdTableViewTest, CreateIdsNumbersTheRowsTopDownAsItsOwnUndoStep) {
  Define("Ids", {Column("N", Value::Integer(0))});
  od::EntityId a = AddPoint();
  od::EntityId b = AddPoint();
  AttachValues(a, "Ids", {Value::Integer(0)});
  AttachValues(b, "Ids", {Value::Integer(0)});
  ASSERT_TRUE(session_.Execute("VELTOR_TABLE"));  // creates the palette with its workers
  auto* palette = dynamic_cast<ui::OdTableView*>(app::TheApp().table_palette().get());
  ASSERT_NE(palette, nullptr);
  ASSERT_TRUE(palette->visible());
  palette->ChooseTable("Ids");
  palette->EditCell(0, 1, std::string("7"));
  EXPECT_EQ(palette->SelectedCount(), 1u) << "the edited entity, selected, comes back to its row";
  palette->SelectOnly({});
  ui_.NextDialog().SelectItems(ui::OptionsWild::kFieldCombo, {"N"}).SetText(ui::OptionsWild::kFirst, "1").Press(od::kIdOk);
  ClearOut();
  palette->RunEditEntry(ui::TableEditEntry::kCreateIds);
  EXPECT_EQ(out(), "Completed: 2\n");
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Ids[1]"}));
  EXPECT_EQ(Records(b), (std::vector<std::string>{"Ids[2]"}));
  // Undo takes back the numbering alone; the cell edit before it is a step of its own.
  Answer({});
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(Records(a), (std::vector<std::string>{"Ids[7]"}));
  EXPECT_EQ(palette->CellText(0, 1), "7");
}

TEST_F(OdTableViewTest, AHostThatSaysNoLosesNothingAndTheGridShowsWhatTheDrawingHolds) {
  od::EntityId a = Pipe("A", 1);
  Pipe("B", 2);
  FaultyHost faulty(session_);
  ui::OdTableView view(faulty);
  view.Show();
  view.FillTableChoices();
  view.ChooseTable("Pipes");
  std::string before = Saved("before.dxf");

  faulty.faults.lock_refused = true;
  view.EditCell(0, 1, std::string("changed"));
  EXPECT_EQ(view.CellText(0, 1), "A");
  view.SelectOnly({0, 1});
  ui_.NextMessageAnswer(od::MessageAnswer::kOk);
  view.DeleteSelectedRows();
  EXPECT_EQ(view.RowCount(), 2u) << "rows whose records stay stay too";

  faulty.faults.lock_refused = false;
  faulty.faults.writes_before_failure = 1;
  view.SelectOnly({0, 1});
  ui_.NextMessageAnswer(od::MessageAnswer::kOk);
  view.DeleteSelectedRows();
  ASSERT_EQ(view.RowCount(), 1u) << "the one record detached goes";
  EXPECT_EQ(view.CellText(0, 1), "B");
  EXPECT_TRUE(Records(a).empty());

  // Without a project the grid keeps what it shows and nothing is read or written.
  faulty.faults.project_missing = true;
  view.Reload(true);
  view.FillTableChoices();
  EXPECT_EQ(view.RowCount(), 1u);
  EXPECT_EQ(view.current_table(), "Pipes");
  faulty.faults.project_missing = false;
  faulty.faults.writes_before_failure = -1;
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(Saved("undone.dxf"), before);
}

}  // namespace
}  // namespace veltor::testing
