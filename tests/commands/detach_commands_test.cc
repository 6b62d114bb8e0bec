// VELTOR_RM, VELTOR_RM_ALL, VELTOR_REMOVE_DUPLICATE_OD and VELTOR_RMUNUSED on drawings built in
// memory. Expected counts and surviving records are worked out from the commands' rules.
#include <gtest/gtest.h>

#include "commands/edit/detach_tables.h"
#include "commands/edit/remove_duplicates.h"
#include "edit_fixture.h"
#include "ui/options_rm_unused.h"
#include "ui/pgui_od_list.h"

namespace veltor::commands {
namespace {

using Strings = std::vector<std::string>;
using Detach = ui::PGUIODList;
using Unused = ui::OptionsRmUnused;

// A container that refuses to remove the records of one entity (all of them, or only the one
// at `index`), and removes several records one by one as a host without batch removal does:
// the failure paths of every removal loop.
class RefusingRemoval : public od::ObjectDataContainer {
 public:
  RefusingRemoval(od::ObjectDataContainer& real, od::EntityId refused, int index = -1)
      : real_(real), refused_(refused), index_(index) {}
  std::vector<std::string> TableNames() const override { return real_.TableNames(); }
  Result<od::TableDefinition> GetTable(const std::string& n) const override { return real_.GetTable(n); }
  std::vector<od::Record> Records(od::EntityId e) const override { return real_.Records(e); }
  std::vector<std::string> RecordTableNames(od::EntityId e) const override { return real_.RecordTableNames(e); }
  size_t DamagedRecordCount(od::EntityId e) const override { return real_.DamagedRecordCount(e); }
  Status AddRecord(od::EntityId e, const od::Record& r) override { return real_.AddRecord(e, r); }
  Status UpdateRecord(od::EntityId e, size_t i, const od::Record& r) override { return real_.UpdateRecord(e, i, r); }
  Status RemoveRecord(od::EntityId e, size_t i) override {
    if (e == refused_ && (index_ < 0 || static_cast<size_t>(index_) == i))
      return Status::Error("detach record: refused");
    return real_.RemoveRecord(e, i);
  }
  Result<od::Record> NewRecord(const std::string& t) const override { return real_.NewRecord(t); }
  Status CreateTable(const od::TableDefinition& d) override { return real_.CreateTable(d); }
  Status DeleteTable(const std::string& n) override { return real_.DeleteTable(n); }
  Status RenameTable(const std::string& n, const std::string& m) override { return real_.RenameTable(n, m); }
  Status AddColumn(const std::string& t, const od::ColumnDefinition& c) override { return real_.AddColumn(t, c); }
  Status RemoveColumn(const std::string& t, const std::string& c) override { return real_.RemoveColumn(t, c); }
  Status RenameColumn(const std::string& t, const std::string& c, const std::string& n) override {
    return real_.RenameColumn(t, c, n);
  }

 private:
  od::ObjectDataContainer& real_;
  od::EntityId refused_;
  int index_;
};

class DetachTest : public testing::EditCommandsTest {
 protected:
  void SetUp() override {
    for (const char* t : {"A", "B", "Roads", "ROADS", "TPMNODE_X"}) Table(t, {"TAG"});
    // Three records of A around one of B, one record of B, a system table record, nothing.
    many_ = AddPoint();
    AttachTagged(many_, "A", "a1");
    AttachTagged(many_, "B", "b");
    AttachTagged(many_, "A", "a2");
    AttachTagged(many_, "A", "a3");
    one_b_ = AddPoint();
    AttachTagged(one_b_, "B", "b");
    system_ = AddPoint();
    AttachTagged(system_, "TPMNODE_X", "n");
    bare_ = AddPoint();
    locked_ = AddPoint("LOCKED");
    AttachTagged(locked_, "A", "l");
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  }

  od::EntityId many_ = 0, one_b_ = 0, system_ = 0, bare_ = 0, locked_ = 0;
};

// --- VELTOR_RM ---

TEST_F(DetachTest, RmAsksForTablesBeforeObjectsAndClearsEveryRecordOfThem) {
  ui_.NextDialog()
      .Inspect([this](const od::DialogModel&) { EXPECT_EQ(out(), "") << "prompted before the dialog"; })
      .SelectItems(Detach::kTableList, {"A"})
      .Press(od::kIdOk);
  Run("VELTOR_RM", {""});
  // Enter at the prompt takes model space; the entity on the locked layer is dropped. A walk
  // that removes passes over the next record, so the three records of A take two walks.
  EXPECT_EQ(out(), "Select objects: \nCompleted: 3\n");
  EXPECT_EQ(Tags(many_), Strings{"B:b"});
  EXPECT_EQ(Tags(locked_), Strings{"A:l"});
  EXPECT_EQ(Tags(system_), Strings{"TPMNODE_X:n"});
  // Offered: the tables in use on usable entities, sorted by the list, no system table.
  ASSERT_EQ(ui_.opened().size(), 1u);
  EXPECT_EQ(ui_.opened()[0].title, "Detach OD");
  EXPECT_EQ(ui_.opened()[0].Find(Detach::kTableList).items, (Strings{"A", "B"}));
  EXPECT_TRUE(ui_.opened()[0].Find(Detach::kTableList).selection.empty());
}

TEST_F(DetachTest, RmWithPickedEntitiesOffersTheirTablesAndAsksNoObjects) {
  sdoc().pickfirst = {one_b_, system_};
  ui_.NextDialog().SelectItems(Detach::kTableList, {"B"}).Press(od::kIdOk);
  Run("VELTOR_RM");
  EXPECT_EQ(out(), "Completed: 1\n");
  EXPECT_EQ(ui_.opened()[0].Find(Detach::kTableList).items, Strings{"B"});
  EXPECT_TRUE(Tags(one_b_).empty());
  EXPECT_EQ(Tags(many_), (Strings{"A:a1", "B:b", "A:a2", "A:a3"}));
}

TEST_F(DetachTest, RmOnlyPickedUnusableEntitiesEndsSilently) {
  sdoc().pickfirst = {locked_};
  ui_.NextDialog().SelectItems(Detach::kTableList, {"A"}).Press(od::kIdOk);
  Run("VELTOR_RM");
  EXPECT_EQ(out(), "");
  EXPECT_EQ(Tags(locked_), Strings{"A:l"});
}

TEST_F(DetachTest, RmWithNothingChosenSaysZeroAndAsksNoObjects) {
  ui_.NextDialog().Press(od::kIdOk);
  Run("VELTOR_RM", {""});
  EXPECT_EQ(out(), "Completed: 0\n");
  ui_.NextDialog().SelectItems(Detach::kTableList, {"A"}).Press(od::kIdCancel);
  Run("VELTOR_RM", {""});
  EXPECT_EQ(out(), "");
  EXPECT_EQ(Tags(many_).size(), 4u);
}

TEST_F(DetachTest, RmSelectAllSelectsEveryLineUnlessAllAreSelected) {
  ui_.NextDialog()
      .SelectItems(Detach::kTableList, {"B"})
      .Press(Detach::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.SelectedIndices(Detach::kTableList).size(), 2u); })
      .Press(Detach::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_TRUE(d.SelectedIndices(Detach::kTableList).empty()); })
      .Press(od::kIdCancel);
  Run("VELTOR_RM");
}

TEST_F(DetachTest, PGUIODListKeepsTheCallersOrderOfTheChosenNames) {
  Strings tables{"b", "C", "a", "TPMID_1"};
  Detach dialog(tables);
  dialog.OnInit();
  // The list sorts without regard to case and never shows a system table.
  EXPECT_EQ(dialog.Items(Detach::kTableList), (Strings{"a", "b", "C"}));
  dialog.SetSelectedIndices(Detach::kTableList, {0, 2});
  EXPECT_TRUE(dialog.Press(od::kIdOk).closes);
  EXPECT_EQ(tables, (Strings{"C", "a"}));
}

TEST_F(DetachTest, RmLeavesRecordsThatCannotBeRemovedAndEnds) {
  RefusingRemoval refusing(container(), many_);
  EXPECT_EQ(DetachTables(refusing, {"A", "B", "Missing"}, {many_, one_b_}), 1u);
  EXPECT_EQ(Tags(many_).size(), 4u);
  EXPECT_TRUE(Tags(one_b_).empty());
  // Only the first record refuses: each walk removes what it can before the refusal, and the
  // walks end when one removes nothing.
  RefusingRemoval first_refused(container(), many_, 0);
  EXPECT_EQ(DetachTables(first_refused, {"A"}, {many_}), 2u);
  EXPECT_EQ(Tags(many_), (Strings{"A:a1", "B:b"}));
}

// --- VELTOR_RM_ALL ---

TEST_F(DetachTest, RmAllCountsEntitiesThatHadUserRecords) {
  // Five entities, two of them with user-table records (one with two tables differing only
  // in case), one with a system table record only.
  od::EntityId roads = AddPoint();
  AttachTagged(roads, "Roads", "r");
  AttachTagged(roads, "ROADS", "R");
  AttachTagged(roads, "TPMNODE_X", "n");
  sdoc().pickfirst = {many_, roads, system_, bare_, one_b_};
  (void)container().RemoveRecord(one_b_, 0);
  ui_.NextMessageAnswer(od::MessageAnswer::kYes);
  Run("VELTOR_RM_ALL");
  EXPECT_EQ(out(), "Completed: 2 out of 5\n");
  EXPECT_EQ(ui_.messages(),
            Strings{"Warning: This will detach ALL tables from selected objects. Continue?\n"});
  EXPECT_TRUE(Tags(many_).empty());
  // System tables are not the user's: their records stay.
  EXPECT_EQ(Tags(roads), Strings{"TPMNODE_X:n"});
  EXPECT_EQ(Tags(system_), Strings{"TPMNODE_X:n"});
}

TEST_F(DetachTest, RmAllAnsweredNoAsksNothingMore) {
  ui_.NextMessageAnswer(od::MessageAnswer::kNo);
  Run("VELTOR_RM_ALL", {""});
  EXPECT_EQ(out(), "");
  EXPECT_EQ(Tags(many_).size(), 4u);
  // Over all of model space, the locked layer's entity is left out of both counts.
  ui_.NextMessageAnswer(od::MessageAnswer::kYes);
  Run("VELTOR_RM_ALL", {""});
  EXPECT_EQ(out(), "Select objects: \nCompleted: 2 out of 4\n");
  EXPECT_EQ(Tags(locked_), Strings{"A:l"});
}

// --- VELTOR_REMOVE_DUPLICATE_OD ---

TEST_F(DetachTest, DuplicateModesPairWithTheRecordKept) {
  struct Case {
    std::string answer;
    Strings left;
  };
  for (const Case& c : {Case{"la", {"A:a1", "B:b"}}, Case{"", {"B:b", "A:a3"}},
                        Case{"F", {"B:b", "A:a3"}}, Case{"last", {"A:a1", "B:b"}}}) {
    sdoc().pickfirst = {many_};
    Run("VELTOR_REMOVE_DUPLICATE_OD", {c.answer});
    EXPECT_EQ(out(), "Mode (First, Last)<First>: " + c.answer + "\nCompleted: 1\n");
    EXPECT_EQ(Tags(many_), c.left) << "answer '" << c.answer << "'";
    ASSERT_TRUE(session_.Execute("U"));
  }
}

TEST_F(DetachTest, DuplicatesIgnoreCaseAndCountTablesNotRecords) {
  od::EntityId roads = AddPoint();
  AttachTagged(roads, "Roads", "r1");
  AttachTagged(roads, "ROADS", "R2");
  AttachTagged(roads, "B", "b1");
  AttachTagged(roads, "B", "b2");
  AttachTagged(roads, "B", "b3");
  AttachTagged(roads, "Roads", "r3");
  sdoc().pickfirst = {roads};
  Run("VELTOR_REMOVE_DUPLICATE_OD", {"l"});
  // Two duplicated names, "Roads" (with "ROADS") and "B"; four records removed.
  EXPECT_EQ(out(), "Mode (First, Last)<First>: l\nCompleted: 2\n");
  EXPECT_EQ(Tags(roads), (Strings{"Roads:r1", "B:b1"}));
  ASSERT_TRUE(session_.Execute("U"));
  sdoc().pickfirst = {roads};
  Run("VELTOR_REMOVE_DUPLICATE_OD", {"first"});
  EXPECT_EQ(Tags(roads), (Strings{"B:b3", "Roads:r3"}));
}

TEST_F(DetachTest, DuplicatesTakeOnlyWhatWasPickedOrSelected) {
  // A bad answer ends before any selection.
  Run("VELTOR_REMOVE_DUPLICATE_OD", {"x"});
  EXPECT_EQ(out(), "Mode (First, Last)<First>: x\nError: invalid parameters.\n");
  // Enter at the object prompt selects nothing: no model space here.
  Run("VELTOR_REMOVE_DUPLICATE_OD", {"", ""});
  EXPECT_EQ(out(), "Mode (First, Last)<First>: \nSelect objects: \nCompleted: 0\n");
  EXPECT_EQ(Tags(many_).size(), 4u);
  // No layer filter either: a picked entity on a locked layer is treated.
  AttachTagged(locked_, "A", "l2");
  sdoc().pickfirst = {locked_};
  Run("VELTOR_REMOVE_DUPLICATE_OD", {""});
  EXPECT_EQ(Tags(locked_), Strings{"A:l2"});
}

TEST_F(DetachTest, DuplicateLoopEndsAtARecordThatCannotBeRemoved) {
  RefusingRemoval refusing(container(), many_);
  EXPECT_EQ(RemoveDuplicateRecords(refusing, many_, DuplicateMode::kFirst), 1u);
  EXPECT_EQ(Tags(many_).size(), 4u);
}

// --- VELTOR_RMUNUSED ---

TEST_F(DetachTest, RmUnusedOffersTablesUsedOnlyOutsideModelSpace) {
  // "Roads" is used only in paper space, "ROADS" nowhere; A only on a locked layer still counts.
  od::EntityId paper = AddPoint();
  AttachTagged(paper, "Roads", "p");
  MoveToPaperSpace(paper);
  ASSERT_TRUE(container().RemoveRecord(many_, 0).ok());
  ASSERT_TRUE(container().RemoveRecord(many_, 1).ok());
  ASSERT_TRUE(container().RemoveRecord(many_, 1).ok());
  ui_.NextDialog()
      .Press(Unused::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.SelectedIndices(Unused::kUnusedList).size(), 2u); })
      .Press(od::kIdOk);
  Run("VELTOR_RMUNUSED");
  EXPECT_EQ(out(), "Completed: 2\n");
  ASSERT_EQ(ui_.opened().size(), 1u);
  EXPECT_EQ(ui_.opened()[0].title, "Remove Unused OD");
  EXPECT_EQ(ui_.opened()[0].Find(Unused::kUsedList).items, (Strings{"A", "B"}));
  EXPECT_EQ(ui_.opened()[0].Find(Unused::kUnusedList).items, (Strings{"ROADS", "Roads"}));
  EXPECT_EQ(container().TableNames(), (Strings{"A", "B", "TPMNODE_X"}));
  EXPECT_TRUE(Tags(paper).empty());
}

TEST_F(DetachTest, RmUnusedSelectAllTogglesAndNothingChosenDeletesNothing) {
  Table("C", {"TAG"});
  Table("D", {"TAG"});
  ui_.NextDialog()
      .SelectItems(Unused::kUnusedList, {"C"})
      .Press(Unused::kSelectAllNothing)
      .Inspect([](const od::DialogModel& d) { EXPECT_TRUE(d.SelectedIndices(Unused::kUnusedList).empty()); })
      .Press(od::kIdOk);
  Run("VELTOR_RMUNUSED");
  EXPECT_EQ(out(), "Completed: 0\n");
  ui_.NextDialog().SelectItems(Unused::kUnusedList, {"D"}).Press(od::kIdCancel);
  Run("VELTOR_RMUNUSED");
  EXPECT_EQ(out(), "");
  EXPECT_EQ(container().TableNames().size(), 7u);
}

// --- every editing command: the lock, and undo back to the saved bytes ---

TEST_F(DetachTest, EachCommandEditsLockedAndUndoesToTheSameFile) {
  using Setup = std::function<void()>;
  struct Case {
    std::string command;
    Setup answer;
    bool modifies_model_space;
    bool locks = true;  // VELTOR_RM takes no lock of its own
  };
  Table("Unused", {"TAG"});
  std::vector<Case> cases = {
      {"VELTOR_RM", [this] { ui_.NextDialog().SelectItems(Detach::kTableList, {"A", "B"}).Press(od::kIdOk); Answer({""}); }, true, false},
      {"VELTOR_RM_ALL", [this] { ui_.NextMessageAnswer(od::MessageAnswer::kYes); Answer({""}); }, true},
      {"VELTOR_REMOVE_DUPLICATE_OD", [this] { sdoc().pickfirst = {many_}; Answer({"l"}); }, true},
      {"VELTOR_RMUNUSED", [this] { ui_.NextDialog().SelectItems(Unused::kUnusedList, {"Unused"}).Press(od::kIdOk); Answer({}); }, false},
  };
  for (const Case& c : cases) {
    const std::string before = SavedBytes("before.dxf");
    testing::LockWatch watch(sdoc());
    session_.App().AddReactor(&watch);
    c.answer();
    ASSERT_TRUE(session_.Execute(c.command));
    session_.App().RemoveReactor(&watch);
    EXPECT_NE(SavedBytes("after.dxf"), before) << c.command << " changed nothing";
    if (c.locks) {
      EXPECT_EQ(watch.modified_unlocked, 0) << c.command;
    }
    if (c.modifies_model_space) {
      EXPECT_GT(watch.modified, 0) << c.command;
    }
    ASSERT_TRUE(session_.Execute("U"));
    EXPECT_EQ(SavedBytes("undone.dxf"), before) << c.command;
  }
}

}  // namespace
}  // namespace veltor::commands
