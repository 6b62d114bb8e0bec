// Undo and redo restore the drawing and its Object Data exactly: a drawing saved after a
// command and its undo is byte for byte the drawing saved before the command.
#include <fstream>
#include <sstream>

#include "../drawing/dxf/test_files.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

std::string Saved(model::Document& doc, const testing::ScratchDir& dir, const std::string& name) {
  std::string path = dir.File(name);
  Status s = doc.Save(path);
  EXPECT_TRUE(s.ok()) << s.message();
  std::ifstream in(path, std::ios::binary);
  std::stringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

class UndoTest : public testing::SessionFixture {
 protected:
  // A command that touches everything an editing command can: a new table, records added,
  // changed and removed, an entity erased and one created, a layer state and LUPREC.
  void RegisterEditCommand() {
    od::CommandInfo info{"TEST", "EDIT", "EDIT", od::kCmdModal, ""};
    ASSERT_TRUE(session_
                    .AddCommand(info,
                                [this] {
                                  Table("Fresh", {"A", "B"});
                                  Attach(kept_, "Fresh");
                                  od::Record r = container().Records(kept_)[0];
                                  r.values[0] = od::Value::Character("changed");
                                  EXPECT_TRUE(container().UpdateRecord(kept_, 0, r).ok());
                                  EXPECT_TRUE(container().RemoveRecord(kept_, 1).ok());
                                  EXPECT_TRUE(db().Erase(erased_).ok());
                                  EXPECT_TRUE(db().AddPolyline3d({{0, 0, 0}, {1, 1, 1}}, false).ok());
                                  EXPECT_TRUE(db().SetIntVar("LUPREC", 8).ok());
                                  model::SetLayerFrozen(doc(), model::FindLayer(doc(), "L1"), true);
                                })
                    .ok());
  }

  void SetUp() override {
    Table("Old", {"X"});
    kept_ = AddPoint("L1");
    erased_ = AddPoint("L1");
    Attach(kept_, "Old");
    Attach(kept_, "Old");
    Attach(erased_, "Old");
    RegisterEditCommand();
  }

  od::EntityId kept_ = 0, erased_ = 0;
  testing::ScratchDir dir_;
};

TEST_F(UndoTest, UndoAndRedoRoundTripSavedFiles) {
  std::string before = Saved(doc(), dir_, "before.dxf");
  Answer({});
  ASSERT_TRUE(session_.Execute("EDIT"));
  std::string after = Saved(doc(), dir_, "after.dxf");
  ASSERT_NE(before, after);

  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(Saved(doc(), dir_, "undone.dxf"), before);
  EXPECT_EQ(container().Records(kept_).size(), 2u);
  EXPECT_TRUE(db().CanOpen(erased_));
  EXPECT_FALSE(container().GetTable("Fresh").ok());

  Answer({"1"});
  ASSERT_TRUE(session_.Execute("MREDO"));
  EXPECT_EQ(Saved(doc(), dir_, "redone.dxf"), after);
  EXPECT_FALSE(db().CanOpen(erased_));
  EXPECT_TRUE(container().GetTable("Fresh").ok());
  EXPECT_NE(out().find("EDIT\n"), std::string::npos);
}

TEST_F(UndoTest, UndoCountsCommandsAndSaysWhenNothingIsLeft) {
  std::string before = Saved(doc(), dir_, "before.dxf");
  Answer({});
  ASSERT_TRUE(session_.Execute("EDIT"));
  ASSERT_TRUE(session_.Execute("_.SELECT"));  // cancelled at once: changes nothing
  ClearOut();
  Answer({"5"});
  ASSERT_TRUE(session_.Execute("UNDO"));
  EXPECT_EQ(out(), "Enter the number of operations to undo <1>: 5\nEDIT\n");
  EXPECT_EQ(Saved(doc(), dir_, "undone.dxf"), before);
  ClearOut();
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(out(), "Everything has been undone\n");
}

TEST_F(UndoTest, AChangeAfterUndoDropsTheRedo) {
  Answer({});
  ASSERT_TRUE(session_.Execute("EDIT"));
  ASSERT_TRUE(session_.Execute("U"));
  od::CommandInfo info{"TEST", "TOUCH", "TOUCH", od::kCmdModal, ""};
  ASSERT_TRUE(session_.AddCommand(info, [this] { AddPoint(); }).ok());
  ASSERT_TRUE(session_.Execute("TOUCH"));
  EXPECT_TRUE(session_.Redo(1).empty());
  EXPECT_EQ(session_.Undo(5), (std::vector<std::string>{"TOUCH"}));
}

// Counts what the reactors hear.
struct CountingReactor : od::Reactor {
  std::map<od::ObjectId, int> modified, erased, unerased, appended;
  int pickfirst = 0;
  std::vector<std::string> activated;
  void ObjectAppended(od::ObjectId id) override { ++appended[id]; }
  void ObjectModified(od::ObjectId id) override { ++modified[id]; }
  void ObjectErased(od::ObjectId id, bool e) override { ++(e ? erased : unerased)[id]; }
  void DocumentActivated(const std::string& name) override { activated.push_back(name); }
  void PickfirstModified() override { ++pickfirst; }
};

TEST_F(UndoTest, ReactorsHearEachChangeOnce) {
  CountingReactor reactor;
  session_.AddReactor(&reactor);
  Answer({});
  ASSERT_TRUE(session_.Execute("EDIT"));
  EXPECT_EQ(reactor.modified[kept_], 3);  // attach, update, remove
  EXPECT_EQ(reactor.erased[erased_], 1);
  EXPECT_EQ(reactor.appended.size(), 1u);

  reactor = CountingReactor();
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(reactor.modified[kept_], 1);
  EXPECT_EQ(reactor.unerased[erased_], 1);
  EXPECT_EQ(reactor.erased.size(), 1u);  // the polyline the command created goes again

  reactor = CountingReactor();
  session_.Ed().SetPickfirst({kept_});
  session_.Ed().SetPickfirst({kept_, erased_});
  EXPECT_EQ(reactor.pickfirst, 2);
  session_.NewDocument();
  EXPECT_EQ(reactor.activated, (std::vector<std::string>{"Drawing1.dxf"}));
  session_.RemoveReactor(&reactor);
}

}  // namespace
}  // namespace veltor::session
