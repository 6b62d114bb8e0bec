// SAVEAS with a file format: the keyword prompt, saving in the drawing's own release, R12
// drawings converted up (and then holding Object Data), and conversions refused.
#include <gtest/gtest.h>

#include "../drawing/model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/session/save_format.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

using testing::ScratchDir;

std::string Fixture() { return std::string(VELTOR_SOURCE_DIR) + "/tests/data/small_r12.dxf"; }

TEST(SaveFormat, AnswersMatchOneKeywordByItsBeginning) {
  ASSERT_NE(MatchSaveFormat("r2000"), nullptr);
  EXPECT_STREQ(MatchSaveFormat("r2000")->acadver, "AC1015");
  EXPECT_STREQ(MatchSaveFormat("R2018")->acadver, "AC1032");
  EXPECT_STREQ(MatchSaveFormat("r1")->acadver, "AC1009");
  EXPECT_EQ(MatchSaveFormat("r200"), nullptr);  // R2000 or R2004: ambiguous answers name none
  EXPECT_EQ(MatchSaveFormat("r20"), nullptr);
  EXPECT_EQ(MatchSaveFormat("r201"), nullptr);
  EXPECT_EQ(MatchSaveFormat("r14"), nullptr);
  EXPECT_EQ(MatchSaveFormat("r20000"), nullptr);
  EXPECT_EQ(MatchSaveFormat("dxf"), nullptr);
}

TEST(SaveFormat, PlansOnlyLosslessSavesAndR12Upgrades) {
  EXPECT_EQ(PlanSave("AC1027", "AC1027").plan, SavePlan::kAsIs);
  EXPECT_EQ(PlanSave("AC1009", "AC1015").plan, SavePlan::kUpgrade);
  EXPECT_EQ(PlanSave("AC1009", "AC1032").plan, SavePlan::kUpgrade);
  SaveDecision down = PlanSave("AC1032", "AC1015");
  EXPECT_EQ(down.plan, SavePlan::kRefuse);
  EXPECT_EQ(down.reason, "cannot save an AC1032 drawing as R2000: veltor does not convert drawings down");
  EXPECT_EQ(PlanSave("AC1015", "AC1009").plan, SavePlan::kRefuse);
  SaveDecision across = PlanSave("AC1018", "AC1032");
  EXPECT_EQ(across.plan, SavePlan::kRefuse);
  EXPECT_NE(across.reason.find("only R12 drawings"), std::string::npos) << across.reason;
  EXPECT_EQ(PlanSave("AC1014", "AC1015").plan, SavePlan::kRefuse);
}

class SaveAsTest : public testing::SessionFixture {
 protected:
  SaveAsTest() {
    RegisterFileCommands(session_);
    RegisterObjectDataCommands(session_);
  }
  void OpenR12() {
    Status opened = session_.OpenDocument(Fixture());
    ASSERT_TRUE(opened.ok()) << opened.message();
  }
  ScratchDir dir_;
};

TEST_F(SaveAsTest, ObjectDataOnR12AdvisesSaveAs) {
  OpenR12();
  for (const char* command : {"ODTABLE", "ODATTACH", "ODEDIT", "ODDETACH"}) {
    SCOPED_TRACE(command);
    ClearOut();
    Answer({"New", "Wells", ""});
    session_.Execute(command);
    EXPECT_NE(out().find("R12 drawings cannot hold Object Data"), std::string::npos) << out();
    EXPECT_NE(out().find("as R2000 or later with SAVEAS first"), std::string::npos) << out();
    EXPECT_EQ(out().find(": New"), std::string::npos) << "asked on: " << out();
  }
}

TEST_F(SaveAsTest, PromptOffersTheReleasesWithTheDrawingsOwnAsDefault) {
  OpenR12();
  std::string path = dir_.File("same.dxf");
  Answer({path, ""});
  session_.Execute("SAVEAS");
  EXPECT_NE(out().find("File format [R12/R2000/R2004/R2007/R2010/R2013/R2018] <R12>: "),
            std::string::npos) << out();
  // The drawing's own release: written back as it was read.
  EXPECT_EQ(testing::ReadBytes(path), testing::ReadBytes(Fixture()));
  EXPECT_EQ(doc().version(), "AC1009");
}

TEST_F(SaveAsTest, WrongFormatIsRefusedAndNothingIsWritten) {
  OpenR12();
  std::string path = dir_.File("never.dxf");
  Answer({path, "r20"});
  session_.Execute("SAVEAS");
  EXPECT_NE(out().find("Requires R12, R2000, R2004, R2007, R2010, R2013 or R2018."), std::string::npos)
      << out();
  EXPECT_FALSE(testing::Exists(path));
}

TEST_F(SaveAsTest, DowngradeIsRefusedAndNothingIsWritten) {
  std::string path = dir_.File("down.dxf");
  Answer({path, "R2000"});
  session_.Execute("SAVEAS");  // the fixture's drawing is R2013
  EXPECT_NE(out().find("cannot save an AC1027 drawing as R2000: veltor does not convert drawings down"),
            std::string::npos) << out();
  EXPECT_FALSE(testing::Exists(path));
}

TEST_F(SaveAsTest, R12ConvertedUpThenTakesObjectData) {
  OpenR12();
  size_t entities = model::ModelSpaceEntities(doc()).size();
  std::string path = dir_.File("up.dxf");
  Answer({path, "r2000"});
  session_.Execute("SAVEAS");
  EXPECT_NE(out().find("Converted to R2000 and saved " + path), std::string::npos) << out();
  // The converted drawing is now the one open, under its new name.
  EXPECT_EQ(doc().version(), "AC1015");
  EXPECT_EQ(doc().path(), path);
  EXPECT_EQ(sdoc().name, "up.dxf");
  EXPECT_EQ(model::ModelSpaceEntities(doc()).size(), entities);

  ClearOut();
  Answer({"New", "Wells", "", "DEPTH", "Real", "", "", ""});
  session_.Execute("ODTABLE");
  EXPECT_NE(out().find("Table Wells defined with 1 column."), std::string::npos) << out();
  ClearOut();
  Answer({"Wells", "ALL", "", "7.5"});
  session_.Execute("ODATTACH");
  EXPECT_NE(out().find("Attached a record of Wells"), std::string::npos) << out();
  ASSERT_TRUE(doc().Save(path).ok());
  auto reread = testing::OpenOrDie(path);
  ASSERT_TRUE(reread);
  EXPECT_EQ(reread->version(), "AC1015");
}

TEST_F(SaveAsTest, FailedConversionSaveKeepsTheR12DrawingOpen) {
  OpenR12();
  Answer({dir_.File("missing-folder/up.dxf"), "R2018"});
  session_.Execute("SAVEAS");
  EXPECT_NE(out().find("Error: "), std::string::npos) << out();
  EXPECT_EQ(doc().version(), "AC1009");
  EXPECT_EQ(doc().path(), Fixture());
}

}  // namespace
}  // namespace veltor::session
