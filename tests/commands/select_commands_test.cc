// The selection commands run in the embedded session with the module loaded: prompts answered
// by lines, dialogs by scripted steps on their controls. Expected results are worked out from
// the rules, not taken from a run.
#include <gtest/gtest.h>

#include "../session/session_fixture.h"
#include "app/veltor_app.h"
#include "commands/select/find_by_od.h"
#include "commands/select/find_with_tables.h"
#include "commands/select/point_select.h"
#include "commands/select/value_query.h"
#include "../support/scripted_ui.h"
#include "ui/object_data_list.h"
#include "ui/select_by_od.h"

namespace veltor::commands {
namespace {

class SelectCommandsTest : public testing::SessionFixture {
 protected:
  SelectCommandsTest() {
    session_.SetUi(&ui_);
    session_.LoadModule(app::AcrxEntryPoint);
  }
  ~SelectCommandsTest() override { session_.UnloadModules(); }
  void TearDown() override { EXPECT_EQ(ui_.pending(), 0u) << "dialog scripts left unused"; }

  void SetUp() override {
    for (const char* t : {"A", "B", "Roads", "ROADS", "TPMNODE_X"}) Table(t, {"ID", "NAME"});
    e1_ = WithTables({"A", "B"});
    e2_ = WithTables({"A", "A"});
    e3_ = WithTables({"TPMNODE_X", "TPMNODE_X"});
    e4_ = WithTables({"Roads", "ROADS"});
    e5_ = WithTables({});
    locked_ = WithTables({"A"}, "LOCKED");
    frozen_ = WithTables({"A", "A"}, "FROZEN");
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
    model::SetLayerFrozen(doc(), model::FindLayer(doc(), "FROZEN"), true);
  }

  od::EntityId WithTables(std::vector<std::string> tables, const std::string& layer = "0") {
    od::EntityId id = AddPoint(layer);
    for (const std::string& t : tables) Attach(id, t);
    return id;
  }

  // Runs a command with answers; returns the pickfirst selection it leaves.
  od::EntityList Run(const std::string& command, std::vector<std::string> answers) {
    Answer(std::move(answers));
    ClearOut();
    EXPECT_TRUE(session_.Execute(command));
    return sdoc().pickfirst;
  }

  // The table-list dialog's script: pick `tables` (by text), set "Simultaneous" when given,
  // press OK.
  void PickTables(std::vector<std::string> tables, std::optional<bool> simultaneous = {}) {
    testing::DialogScript& script = ui_.NextDialog().SelectItems(List::kTableList, tables);
    if (simultaneous) script.Check(List::kSimultaneous, *simultaneous);
    script.Press(od::kIdOk);
  }
  using List = ui::ObjectDataList;

  testing::ScriptedUi ui_;
  od::EntityId e1_ = 0, e2_ = 0, e3_ = 0, e4_ = 0, e5_ = 0, locked_ = 0, frozen_ = 0;
};

TEST_F(SelectCommandsTest, PresenceModesOverAllOfModelSpace) {
  // Enter at the prompt takes model space; the locked and frozen entities drop out.
  EXPECT_EQ(Run("VELTOR_HAS_OD", {""}), (od::EntityList{e1_, e2_, e4_}));
  EXPECT_EQ(out(), "Select objects: \nSelected: 3\n");
  sdoc().pickfirst.clear();
  EXPECT_EQ(Run("VELTOR_HAS_NO_OD", {""}), (od::EntityList{e3_, e5_}));
  sdoc().pickfirst.clear();
  EXPECT_EQ(Run("VELTOR_HAS_MULTIPLE_OD", {""}), (od::EntityList{e1_, e2_, e4_}));
  sdoc().pickfirst.clear();
  // System tables count for duplicates; "Roads" and "ROADS" are two tables.
  EXPECT_EQ(Run("VELTOR_HAS_DUPLICATE_OD", {""}), (od::EntityList{e2_, e3_}));
}

TEST_F(SelectCommandsTest, PickedEntitiesOnUnusableLayersAreNeverFound) {
  sdoc().pickfirst = {locked_, frozen_, e1_};
  EXPECT_EQ(Run("VELTOR_HAS_OD", {}), (od::EntityList{e1_}));
  EXPECT_EQ(out(), "Selected: 1\n");
}

TEST_F(SelectCommandsTest, CancelledPromptSelectsNothing) {
  sdoc().pickfirst.clear();
  EXPECT_TRUE(Run("VELTOR_HAS_OD", {}).empty());
  EXPECT_EQ(out(), "Select objects: *Cancel*\nSelected: 0\n");
  EXPECT_TRUE(FindEntitiesByOd(session_, 1).empty());  // mode 1 keeps nothing
}

TEST_F(SelectCommandsTest, SpecificTablesAnyOrAll) {
  PickTables({"B"});
  EXPECT_EQ(Run("VELTOR_HAS_SPECIFIC_OD", {""}), (od::EntityList{e1_}));
  EXPECT_NE(out().find("Selected: 1\n"), std::string::npos);
  // Offered in ordinal order with the system table left out; the first is pre-selected.
  ASSERT_EQ(ui_.opened().size(), 1u);
  od::Control list = ui_.opened()[0].Find(List::kTableList);
  EXPECT_EQ(list.items, (std::vector<std::string>{"A", "B", "ROADS", "Roads"}));
  EXPECT_EQ(list.selection, std::vector<int>{0});
  EXPECT_EQ(ui_.opened()[0].title, "Select objects with specific OD.");
  sdoc().pickfirst.clear();
  // Simultaneous {A, B}: two records of A count as two.
  PickTables({"A", "B"}, true);
  EXPECT_EQ(Run("VELTOR_HAS_SPECIFIC_OD", {""}), (od::EntityList{e1_, e2_}));
  sdoc().pickfirst.clear();
  // The flag is remembered: still on, {A, B}: fewer than two records of them.
  PickTables({"A", "B"});
  EXPECT_EQ(Run("VELTOR_HAS_NO_SPECIFIC_OD", {""}), (od::EntityList{e3_, e4_, e5_}));
  EXPECT_TRUE(ui_.opened().back().Find(List::kSimultaneous).checked);
  EXPECT_EQ(ui_.opened().back().title, "Select objects without specific OD.");
}

TEST_F(SelectCommandsTest, NothingPickedIsAsymmetric) {
  sdoc().pickfirst = {e1_};
  // Without specific tables: "Selected: 0" at once, selection left as it was.
  PickTables({});
  EXPECT_EQ(Run("VELTOR_HAS_NO_SPECIFIC_OD", {}), (od::EntityList{e1_}));
  EXPECT_NE(out().find("Selected: 0\n"), std::string::npos);
  // With specific tables and Simultaneous off, nothing is kept.
  sdoc().pickfirst.clear();
  PickTables({}, false);
  EXPECT_TRUE(Run("VELTOR_HAS_SPECIFIC_OD", {""}).empty());
  // ... and with it on, every gathered entity is.
  PickTables({}, true);
  EXPECT_EQ(Run("VELTOR_HAS_SPECIFIC_OD", {""}).size(), 5u);
}

TEST_F(SelectCommandsTest, ImpliedEntitiesWithoutRecordsEndBeforeTheDialog) {
  sdoc().pickfirst = {e5_};
  EXPECT_EQ(Run("VELTOR_HAS_SPECIFIC_OD", {}), (od::EntityList{e5_}));
  EXPECT_EQ(out(), "Selected: 0\n");
  EXPECT_TRUE(ui_.opened().empty());
}

TEST_F(SelectCommandsTest, DialogCancelChangesNothing) {
  sdoc().pickfirst.clear();
  ui_.NextDialog().SelectItems(List::kTableList, {"B"}).Check(List::kSimultaneous, true).Press(od::kIdCancel);
  EXPECT_TRUE(Run("VELTOR_HAS_SPECIFIC_OD", {}).empty());
  EXPECT_EQ(out().find("Selected"), std::string::npos);
  // Cancel stores nothing: the next dialog opens with the flag as it was.
  PickTables({"A"});
  (void)Run("VELTOR_HAS_SPECIFIC_OD", {""});
  EXPECT_FALSE(ui_.opened().back().Find(List::kSimultaneous).checked);
}

TEST_F(SelectCommandsTest, SelectAllNothingTogglesTheList) {
  sdoc().pickfirst.clear();
  // A is pre-selected, so the first press clears the list and the second selects all four.
  ui_.NextDialog()
      .Press(List::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_TRUE(d.SelectedIndices(List::kTableList).empty()); })
      .Press(List::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.SelectedIndices(List::kTableList).size(), 4u); })
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_HAS_SPECIFIC_OD", {""}), (od::EntityList{e1_, e2_, e4_}));
}

class ValueQueryTest : public SelectCommandsTest {
 protected:
  void SetUp() override {
    od::TableDefinition t;
    t.name = "T";
    t.columns = {{"ID", od::ValueType::kInteger, "", od::Value::Integer(0)},
                 {"NAME", od::ValueType::kCharacter, "", od::Value::Character("")},
                 {"W", od::ValueType::kReal, "", od::Value::Real(0)},
                 {"P", od::ValueType::kPoint, "", od::Value::Point({})}};
    ASSERT_TRUE(container().CreateTable(t).ok());
    od::TableDefinition u = t;
    u.name = "U";
    u.columns = {t.columns[1]};
    ASSERT_TRUE(container().CreateTable(u).ok());
    v1_ = Row(5, "Main Road 5", 10.5);
    v2_ = Row(15, "Road", 10.0);
    v3_ = Row(50, "abd", 3.0);
    v4_ = Row(7, "n", 1.0);
    v5_ = AddPoint();
    v6_ = AddPoint();
    ASSERT_TRUE(container().AddRecord(v6_, {"U", {od::Value::Character("ABC")}}).ok());
  }
  od::EntityId Row(int id, const std::string& name, double w) {
    od::EntityId e = AddPoint();
    EXPECT_TRUE(container()
                    .AddRecord(e, {"T", {od::Value::Integer(id), od::Value::Character(name),
                                         od::Value::Real(w), od::Value::Point({1, 2, 3})}})
                    .ok());
    return e;
  }
  od::EntityList Keep(std::vector<std::string> tables, std::vector<ui::Condition> conditions,
                      bool extended) {
    od::EntityList all{v1_, v2_, v3_, v4_, v5_, v6_};
    KeepMatching(container(), tables, conditions, extended, all);
    std::sort(all.begin(), all.end());
    return all;
  }
  od::EntityId v1_ = 0, v2_ = 0, v3_ = 0, v4_ = 0, v5_ = 0, v6_ = 0;
};

TEST_F(ValueQueryTest, ConditionsAcrossTypes) {
  EXPECT_EQ(Keep({"T"}, {{"NAME", "*road*"}}, true), (od::EntityList{v1_}));
  EXPECT_EQ(Keep({"T"}, {{"ID", "5"}}, false), (od::EntityList{v1_, v2_, v3_}));
  EXPECT_EQ(Keep({"T"}, {{"ID", "5"}}, true), (od::EntityList{v1_}));
  EXPECT_EQ(Keep({"T"}, {{"W", ">  10"}}, true), (od::EntityList{v1_}));
  EXPECT_EQ(Keep({"T"}, {{"NAME", ">m"}}, true), (od::EntityList{v4_}));
  EXPECT_TRUE(Keep({"T"}, {{"P", "1"}}, true).empty());
  // "*" holds for every entity with a record of a selected table.
  EXPECT_EQ(Keep({"T"}, {{"ID", "*"}, {"NAME", "*"}}, true), (od::EntityList{v1_, v2_, v3_, v4_}));
  // Without conditions everything stays, even entities without records.
  EXPECT_EQ(Keep({"T"}, {}, true).size(), 6u);
}

TEST_F(ValueQueryTest, EachConditionMayHoldThroughADifferentTable) {
  // NAME "<>abc" holds for T's names and fails for U's "ABC"; the two conditions must both hold.
  EXPECT_EQ(Keep({"T", "U"}, {{"NAME", "<>abc"}}, true), (od::EntityList{v1_, v2_, v3_, v4_}));
  ASSERT_TRUE(container().AddRecord(v6_, {"T", {od::Value::Integer(9), od::Value::Character("x"),
                                                 od::Value::Real(0), od::Value::Point({})}}).ok());
  // v6 has U "ABC" (fails) and T "x" (holds): the condition holds through T.
  EXPECT_EQ(Keep({"T", "U"}, {{"NAME", "<>abc"}}, true), (od::EntityList{v1_, v2_, v3_, v4_, v6_}));
}

TEST_F(ValueQueryTest, FailingEntitiesAreSwappedWithTheLast) {
  od::EntityList list{v2_, v1_, v3_, v4_};
  KeepMatching(container(), {"T"}, {{"ID", ">6"}}, true, list);
  // v2 (15) stays, v1 (5) fails: v4 takes its place and stays (7), then v3 (50) stays.
  EXPECT_EQ(list, (od::EntityList{v2_, v4_, v3_}));
}

TEST_F(ValueQueryTest, CommandThroughTheDialog) {
  using Query = ui::SelectByOd;
  sdoc().pickfirst.clear();
  // Tables T, U offered; pick T, set NAME to "*road*", keep Extended on, OK, Enter at the prompt.
  ui_.NextDialog()
      .SelectItems(Query::kTableList, {"T"})
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Rows(Query::kConditionGrid),
                  (od::GridRows{{"ID", "*"}, {"NAME", "*"}, {"W", "*"}, {"P", "*"}}));
      })
      .SetCell(Query::kConditionGrid, "NAME", 1, "*road*")
      .Press(od::kIdOk);
  od::EntityList got = Run("VELTOR_HAS_SPECIFIC_VALUES", {""});
  EXPECT_EQ(got, (od::EntityList{v1_}));
  EXPECT_NE(out().find("Selected: 1\n"), std::string::npos);
  EXPECT_EQ(ui_.opened().back().Find(Query::kTableList).items, (std::vector<std::string>{"T", "U"}));
  EXPECT_TRUE(ui_.opened().back().Find(Query::kExtended).checked);
  // OK without a table ends silently, without asking for objects.
  sdoc().pickfirst.clear();
  ui_.NextDialog().Press(od::kIdOk);
  EXPECT_TRUE(Run("VELTOR_HAS_SPECIFIC_VALUES", {}).empty());
  EXPECT_EQ(out().find("Selected"), std::string::npos);
  EXPECT_EQ(out().find("Select objects"), std::string::npos);
}

TEST_F(ValueQueryTest, ExtendedOffMatchesByContainment) {
  using Query = ui::SelectByOd;
  sdoc().pickfirst.clear();
  ui_.NextDialog()
      .SelectItems(Query::kTableList, {"T"})
      .SetCell(Query::kConditionGrid, "ID", 1, "5")
      .Check(Query::kExtended, false)
      .Press(od::kIdOk);
  od::EntityList got = Run("VELTOR_HAS_SPECIFIC_VALUES", {""});
  std::sort(got.begin(), got.end());
  EXPECT_EQ(got, (od::EntityList{v1_, v2_, v3_}));  // 5, 15, 50 contain "5"
  // The switch is remembered for the next run.
  ui_.NextDialog().Press(od::kIdCancel);
  (void)Run("VELTOR_HAS_SPECIFIC_VALUES", {});
  EXPECT_FALSE(ui_.opened().back().Find(Query::kExtended).checked);
}

}  // namespace
}  // namespace veltor::commands
