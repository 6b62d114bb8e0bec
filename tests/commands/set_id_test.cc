// VELTOR_SETID run in the embedded session: numbers handed out from the list's end, prefix
// and suffix in character fields, reals left alone, points stopping the numbering, repeats
// numbered once, and the first number the dialog proposes from the drawing's values.
#include "data_command_fixture.h"

#include "commands/edit/set_id_first.h"
#include "ui/options_wild.h"

namespace veltor::commands {
namespace {

using od::Value;
using ui::OptionsWild;

class SetIdTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("T", {Column("N", Value::Integer(0)), Column("CODE", Value::Character("K")),
                 Column("R", Value::Real(2.5)), Column("AT", Value::Point({}))});
    for (od::EntityId& e : e_) {
      e = AddPoint("0", 1, 1);
      Attach(e, "T");
    }
  }

  // Answers the dialog: table T, `field`, then the texts given (empty keeps the shown one).
  void AnswerIds(const std::string& field, const std::string& first,
                 const std::string& prefix = "", const std::string& suffix = "") {
    testing::DialogScript& d = ui_.NextDialog();
    d.SelectItems(OptionsWild::kFieldCombo, {field});
    if (!prefix.empty()) d.SetText(OptionsWild::kPrefix, prefix);
    if (!suffix.empty()) d.SetText(OptionsWild::kSuffix, suffix);
    if (!first.empty()) d.SetText(OptionsWild::kFirst, first);
    d.Press(od::kIdOk);
  }
  std::string Field(od::EntityId e, size_t record, size_t column) {
    return od::ValueToText(container().Records(e)[record].values[column]);
  }

  od::EntityId e_[3] = {};
};

TEST_F(SetIdTest, IdsAreHandedOutFromTheLastEntityToTheFirst) {
  AnswerIds("N", "1");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0], e_[1], e_[2]}, {}), "Completed: 3\n");
  EXPECT_EQ(Field(e_[2], 0, 0), "1");
  EXPECT_EQ(Field(e_[1], 0, 0), "2");
  EXPECT_EQ(Field(e_[0], 0, 0), "3");
}

TEST_F(SetIdTest, CharacterFieldsTakePrefixNumberAndSuffixAndTwoRecordsTwoNumbers) {
  Attach(e_[0], "T");
  AnswerIds("CODE", "5", "P-", "/a");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0], e_[1]}, {}), "Completed: 3\n");
  EXPECT_EQ(Field(e_[1], 0, 1), "P-5/a");
  EXPECT_EQ(Field(e_[0], 0, 1), "P-6/a");
  EXPECT_EQ(Field(e_[0], 1, 1), "P-7/a");
  EXPECT_EQ(Field(e_[2], 0, 1), "K");  // not selected
}

TEST_F(SetIdTest, ChoosingACharacterFieldPutsItsDefaultIntoPrefix) {
  ui_.NextDialog()
      .SelectItems(OptionsWild::kFieldCombo, {"CODE"})
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.Text(OptionsWild::kPrefix), "K"); })
      .SetText(OptionsWild::kFirst, "1")
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0]}, {}), "Completed: 1\n");
  EXPECT_EQ(Field(e_[0], 0, 1), "K1");
}

TEST_F(SetIdTest, TheSameEntityTwiceIsNumberedOnce) {
  AnswerIds("N", "7");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0], e_[1], e_[0]}, {}), "Completed: 2\n");
  EXPECT_EQ(Field(e_[1], 0, 0), "7");
  EXPECT_EQ(Field(e_[0], 0, 0), "8");
}

TEST_F(SetIdTest, RealFieldsAreLeftAloneAndPointFieldsStopTheNumbering) {
  AnswerIds("R", "1");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0], e_[1]}, {}), "Completed: 0\n");
  EXPECT_EQ(Field(e_[0], 0, 2), "2.5");
  // Choosing the Point field says its default cannot serve as a prefix.
  AnswerIds("AT", "1");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0], e_[1]}, {}),
            "Error: unable to retrieve default value of 'AT'.\nCompleted: 0\n");
}

TEST_F(SetIdTest, ANumberInFirstIsNeededAndACancelledSelectionChangesNothing) {
  AnswerIds("N", "x1");
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0]}, {}), "");
  EXPECT_EQ(Field(e_[0], 0, 0), "0");
  std::string before = Saved("before.dxf");
  AnswerIds("N", "1");
  EXPECT_EQ(Run("VELTOR_SETID", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
  EXPECT_EQ(Saved("after.dxf"), before);
  // An empty answer numbers all of model space.
  AnswerIds("N", "1");
  EXPECT_EQ(Run("VELTOR_SETID", {}, {""}), "Select objects: \nCompleted: 3\n");
}

TEST_F(SetIdTest, TheProposedFirstNumberFollowsTheLargestFirstDigitRun) {
  auto set_code = [this](od::EntityId e, const std::string& code) {
    od::Record record = container().Records(e)[0];
    record.values[1] = Value::Character(code);
    ASSERT_TRUE(container().UpdateRecord(e, 0, record).ok());
  };
  set_code(e_[0], "K12");
  set_code(e_[1], "K7");
  set_code(e_[2], "X");
  EXPECT_EQ(ProposeFirstNumber(session_, "T", "CODE"), 13);
  set_code(e_[0], "ID7");
  set_code(e_[1], "0");
  EXPECT_EQ(ProposeFirstNumber(session_, "T", "CODE"), 0);
  // Integers count as themselves and reals truncated.
  EXPECT_EQ(ProposeFirstNumber(session_, "T", "R"), 3);
  ui_.NextDialog()
      .SelectItems(OptionsWild::kFieldCombo, {"R"})
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.Text(OptionsWild::kFirst), "3"); })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_SETID", {e_[0]}, {}), "");
}

TEST(FirstDigitRun, TakesTheFirstDigitsUnlessTheFirstDigitEndsTheText) {
  EXPECT_EQ(FirstDigitRun("K12b3"), "12");
  EXPECT_EQ(FirstDigitRun("ID7"), "0");
  EXPECT_EQ(FirstDigitRun("7"), "0");
  EXPECT_EQ(FirstDigitRun("abc"), "");
  EXPECT_EQ(FirstDigitRun("A10-20"), "10");
}

}  // namespace
}  // namespace veltor::commands
