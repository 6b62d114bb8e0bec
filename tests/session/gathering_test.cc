// How commands gather their entities: pickfirst, prompt, empty answer, cancel, and the layer
// filter's swap-with-last order.
#include "od/gathering.h"
#include "od/text.h"

#include "session_fixture.h"

namespace veltor::od {
namespace {

class GatheringTest : public testing::SessionFixture {
 protected:
  ObjectId Layer(const std::string& name) { return db().FindLayer(name); }
};

TEST_F(GatheringTest, PickfirstIsTakenWithoutPrompting) {
  EntityId a = AddPoint(), b = AddPoint();
  AddPoint();
  sdoc().pickfirst = {b, a};
  Answer({"ALL", ""});
  PromptOutcome got = GatherEntities(session_);
  EXPECT_EQ(got.status, GatherStatus::kAnswered);
  EXPECT_EQ(got.entities, (EntityList{b, a}));
  EXPECT_EQ(out().find("Select objects"), std::string::npos);
  EXPECT_EQ(input_->line_number(), 0u);
}

TEST_F(GatheringTest, EmptyAnswerMeansAllUsableModelSpace) {
  EntityId a = AddPoint(), b = AddPoint("FROZEN"), c = AddPoint();
  model::SetLayerFrozen(doc(), model::FindLayer(doc(), "FROZEN"), true);
  Answer({""});
  PromptOutcome got = GatherEntities(session_);
  EXPECT_EQ(got.status, GatherStatus::kAnswered);
  // b is dropped and c, the last entry, takes its place.
  EXPECT_EQ(got.entities, (EntityList{a, c}));
  (void)b;
}

TEST_F(GatheringTest, CancelEndsTheGatheringEmpty) {
  AddPoint();
  Answer({});  // the input ends at the prompt
  PromptOutcome got = GatherEntities(session_);
  EXPECT_EQ(got.status, GatherStatus::kCancelled);
  EXPECT_TRUE(got.entities.empty());
}

TEST_F(GatheringTest, PromptAnswerIsFilteredToo) {
  EntityId a = AddPoint(), b = AddPoint("LOCKED"), c = AddPoint();
  model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  Answer({"ALL", ""});
  PromptOutcome got = GatherEntities(session_);
  EXPECT_EQ(got.entities, (EntityList{a, c}));
  EXPECT_NE(out().find("3 found"), std::string::npos);
  (void)b;
}

TEST_F(GatheringTest, FilterSwapsTheLastEntryIntoEachGap) {
  EntityId f = AddPoint("FROZEN"), a = AddPoint(), h = AddPoint("HIDDEN"), b = AddPoint(),
           o = AddPoint("OFF"), c = AddPoint();
  model::SetLayerFrozen(doc(), model::FindLayer(doc(), "FROZEN"), true);
  model::SetLayerHidden(doc(), model::FindLayer(doc(), "HIDDEN"), true);
  model::SetLayerOff(doc(), model::FindLayer(doc(), "OFF"), true);
  EntityList list{f, a, h, b, o, c};
  FilterUsable(db(), list);
  // f <- c; h <- o (unusable, examined again) <- b... step by step:
  // [f a h b o c] -> [c a h b o] -> [c a o b] -> [c a b]
  EXPECT_EQ(list, (EntityList{c, a, b}));

  EntityList single{f};
  FilterUsable(db(), single);
  EXPECT_TRUE(single.empty());

  EntityList with_gone{a, 0xDEADBEEF, b};
  FilterUsable(db(), with_gone);
  EXPECT_EQ(with_gone, (EntityList{a, b}));

  EntityList duplicates{a, a, f};
  FilterUsable(db(), duplicates);
  EXPECT_EQ(duplicates, (EntityList{a, a}));
}

TEST_F(GatheringTest, PickfirstAndReport) {
  EntityId a = AddPoint(), b = AddPoint();
  SetPickfirst(session_, {a, b});
  EXPECT_EQ(GetImpliedSelection(session_), (EntityList{a, b}));
  ReportSelected(session_, 2);
  EXPECT_EQ(out(), "Selected: 2\n");
  SetPickfirst(session_, {});
  EXPECT_TRUE(GetImpliedSelection(session_).empty());
}

TEST(Keywords, AnswerMustBeABeginningOfTheKeyword) {
  EXPECT_TRUE(MatchesKeyword("f", "first"));
  EXPECT_TRUE(MatchesKeyword("FI", "first"));
  EXPECT_TRUE(MatchesKeyword("First", "first"));
  EXPECT_FALSE(MatchesKeyword("firsts", "first"));
  EXPECT_FALSE(MatchesKeyword("x", "first"));
  EXPECT_FALSE(MatchesKeyword("", "first"));
}

TEST_F(GatheringTest, LinearPrecisionFollowsTheHeader) {
  EXPECT_EQ(GetLinearPrecision(session_), 4);
  ASSERT_TRUE(db().SetIntVar("LUPREC", 8).ok());
  EXPECT_EQ(GetLinearPrecision(session_), 8);
  EXPECT_EQ(doc().Luprec(), 8);
  EXPECT_FALSE(db().SetIntVar("LUPREC", 9).ok());
}

}  // namespace
}  // namespace veltor::od
