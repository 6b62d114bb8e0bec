// The object selection prompt and the other prompts of the embedded editor.
#include "session_fixture.h"

namespace veltor::session {
namespace {

class SelectionPromptTest : public testing::SessionFixture {
 protected:
  void SetUp() override {
    a_ = AddPoint("0", 1, 1);
    b_ = AddPoint("0", 5, 5);
    c_ = AddPoint("0", 20, 20);
    frozen_ = AddPoint("ICE", 2, 2);
    model::SetLayerFrozen(doc(), model::FindLayer(doc(), "ICE"), true);
  }
  od::PromptResult<od::EntityList> Select(std::vector<std::string> lines) {
    Answer(std::move(lines));
    return session_.Ed().SelectObjects();
  }
  std::string Hex(od::EntityId id) {
    return dxf::FormatHandle(id);
  }
  od::EntityId a_ = 0, b_ = 0, c_ = 0, frozen_ = 0;
};

TEST_F(SelectionPromptTest, AllSkipsFrozenLayers) {
  auto got = Select({"ALL", ""});
  EXPECT_EQ(got.status, od::PromptStatus::kOk);
  EXPECT_EQ(got.value, (od::EntityList{a_, b_, c_}));
}

TEST_F(SelectionPromptTest, WindowTakesWhatLiesInsideAndCrossingWhatMeets) {
  EXPECT_EQ(Select({"W", "0,0", "10,10", ""}).value, (od::EntityList{a_, b_}));
  // The window corners may come in any order; a space ends an answer as Enter does.
  EXPECT_EQ(Select({"C 30,30 4,4", ""}).value, (od::EntityList{b_, c_}));
}

TEST_F(SelectionPromptTest, HandlesPreviousLastAndRemove) {
  auto first = Select({Hex(c_), Hex(a_), Hex(c_), ""});
  EXPECT_EQ(first.value, (od::EntityList{c_, a_}));
  EXPECT_NE(out().find("1 found (1 duplicate), 2 total"), std::string::npos);
  EXPECT_EQ(Select({"P", "R", Hex(c_), ""}).value, (od::EntityList{a_}));
  EXPECT_EQ(Select({"L", ""}).value, (od::EntityList{frozen_}));
}

TEST_F(SelectionPromptTest, EnterAloneAnswersWithNothingAndCancelCancels) {
  auto empty = Select({""});
  EXPECT_EQ(empty.status, od::PromptStatus::kOk);
  EXPECT_TRUE(empty.value.empty());
  EXPECT_EQ(Select({"ALL", "*Cancel*"}).status, od::PromptStatus::kCancel);
  EXPECT_EQ(Select({"ALL"}).status, od::PromptStatus::kCancel);  // the script ended
}

TEST_F(SelectionPromptTest, AnInvalidAnswerStopsAScript) {
  auto got = Select({"nonsense", ""});
  EXPECT_EQ(got.status, od::PromptStatus::kCancel);
  EXPECT_TRUE(input_->failed());
  EXPECT_NE(out().find("*Invalid selection*"), std::string::npos);
}

TEST_F(SelectionPromptTest, PointsIntegersAndEntities) {
  Answer({"1.5,-2", "3,4,5", "1 ,2", "7", Hex(b_), "L"});
  auto p = session_.Ed().GetPoint("Point: ");
  EXPECT_EQ(p.value, (od::Point3{1.5, -2, 0}));
  EXPECT_EQ(session_.Ed().GetPoint("Point: ").value, (od::Point3{3, 4, 5}));
  // "1 ,2" is refused: a script stops there.
  EXPECT_EQ(session_.Ed().GetPoint("Point: ").status, od::PromptStatus::kCancel);
  Answer({"7", Hex(b_), "L", ""});
  EXPECT_EQ(session_.Ed().GetInt("N: ").value, 7);
  EXPECT_EQ(session_.Ed().GetEntity("Entity: ").value, b_);
  EXPECT_EQ(session_.Ed().GetEntity("Entity: ").value, frozen_);
  EXPECT_EQ(session_.Ed().GetEntity("Entity: ").status, od::PromptStatus::kNone);
}

TEST_F(SelectionPromptTest, ParsePointNeedsTwoOrThreeNumbers) {
  od::Point3 p;
  EXPECT_TRUE(ParsePoint("1,2", p));
  EXPECT_TRUE(ParsePoint(" 1, 2, 3", p));
  EXPECT_EQ(p, (od::Point3{1, 2, 3}));
  EXPECT_FALSE(ParsePoint("1", p));
  EXPECT_FALSE(ParsePoint("1,2,3,4", p));
  EXPECT_FALSE(ParsePoint("1,x", p));
  EXPECT_FALSE(ParsePoint("", p));
}

// Selections are made in model space: handles of paper-space entities and of entities inside
// a block definition are refused as the CAD host refuses them, also at one-entity prompts.
TEST_F(SelectionPromptTest, OnlyEntitiesOfModelSpaceArePicked) {
  model::RecordId block = model::AddBlockDefinition(
      doc(), "TREE", {0, 0, 0}, {{"POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}}}}, {});
  ASSERT_NE(block, model::kNoRecord);
  od::EntityId inside = IdOf(doc(), model::BlockEntities(doc(), "TREE").at(0));
  // An entity of the active layout: a model space entity moved to paper space (group 67).
  od::EntityId paper = AddPoint("0", 3, 3);
  model::RecordId r = RecordOf(doc(), paper);
  model::Tags& tags = doc().MutableTags(r);
  tags.insert(tags.begin() + 4, dxf::Tag{67, "1"});
  doc().store().at(r).paper_space = true;

  for (od::EntityId id : {inside, paper}) {
    auto got = Select({Hex(id), ""});
    EXPECT_EQ(got.status, od::PromptStatus::kCancel) << Hex(id);
    EXPECT_NE(out().find("*Invalid selection*"), std::string::npos);
    ClearOut();
    Answer({Hex(id)});
    EXPECT_NE(session_.Ed().GetEntity("Select object: ").status, od::PromptStatus::kOk) << Hex(id);
  }
  auto ok = Select({Hex(a_), ""});
  EXPECT_EQ(ok.value, (od::EntityList{a_}));
}

}  // namespace
}  // namespace veltor::session
