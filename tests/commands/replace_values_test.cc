// VELTOR_REPLACE: the pattern rules on every value type, and the command through its dialog.
// Expected values are worked out from the rules.
#include <gtest/gtest.h>

#include <cmath>

#include "commands/edit/replace_pattern.h"
#include "commands/edit/replace_values.h"
#include "edit_fixture.h"
#include "ui/options_replace.h"

namespace veltor::commands {
namespace {

using Strings = std::vector<std::string>;

// The value after the rule, and the count, as "TEXT #N".
std::string After(od::Value value, const std::string& pattern, const std::string& new_text) {
  int count = ReplaceByPattern(value, pattern, new_text);
  return od::ValueToText(value) + " #" + std::to_string(count);
}

TEST(ReplacePatternTest, IntegerValues) {
  od::Value five = od::Value::Integer(5);
  EXPECT_EQ(After(five, "*", "*0"), "50 #1");
  EXPECT_EQ(After(five, "<>5", "9"), "5 #0");
  EXPECT_EQ(After(five, "<> 6\t", "9"), "9 #1");
  // ">" matches values below the operand.
  EXPECT_EQ(After(five, ">10", "9"), "9 #1");
  EXPECT_EQ(After(od::Value::Integer(15), ">10", "9"), "15 #0");
  // "<10" passes over the "1" and tests as ">0" does: only values below 0 match.
  EXPECT_EQ(After(five, "<10", "9"), "5 #0");
  EXPECT_EQ(After(od::Value::Integer(-3), "<10", "9"), "9 #1");
  // A plain pattern replaces inside the text, each occurrence counted.
  EXPECT_EQ(After(od::Value::Integer(55), "5", "7"), "77 #2");
  EXPECT_EQ(After(od::Value::Integer(15), "5", "x"), "1 #1");
  EXPECT_EQ(After(five, "9", "1"), "5 #0");
  EXPECT_EQ(After(five, "", "1"), "5 #0");
}

TEST(ReplacePatternTest, RealValues) {
  od::Value v = od::Value::Real(2.5);
  EXPECT_EQ(After(v, "<>2.5", "1"), "2.5 #0");
  EXPECT_EQ(After(v, "<>2.50001", "1"), "1.0 #1");
  EXPECT_EQ(After(v, ">3", "1"), "1.0 #1");
  EXPECT_EQ(After(v, "<x3", "1"), "1.0 #1");
  EXPECT_EQ(After(v, "<3", "1"), "2.5 #0");  // the operand is "" (0.0)
  EXPECT_EQ(After(v, ".5", ".75"), "2.75 #1");
  EXPECT_EQ(After(v, "*", "*0"), "2.5 #1");  // "2.50" reads back as 2.5
  // Without an occurrence the value is still set from its text: twelve decimals.
  od::Value sum = od::Value::Real(0.1 + 0.2);
  EXPECT_EQ(ReplaceByPattern(sum, "zz", "1"), 0);
  EXPECT_EQ(sum.real(), 0.3);
}

TEST(ReplacePatternTest, CharacterValues) {
  od::Value road = od::Value::Character("Main Road");
  EXPECT_EQ(After(road, "*", "*_1"), "Main Road_1 #1");
  EXPECT_EQ(After(road, "<>main ROAD", "x"), "Main Road #0");
  EXPECT_EQ(After(road, "<>Main", "x"), "x #1");
  EXPECT_EQ(After(road, ">N", "x"), "x #1");  // "N" is greater than "Main Road"
  EXPECT_EQ(After(road, ">A", "x"), "Main Road #0");
  EXPECT_EQ(After(road, "<-N", "x"), "x #1");
  EXPECT_EQ(After(road, "<N", "x"), "Main Road #0");  // "" is not greater
  EXPECT_EQ(After(road, ">m", "x"), "x #1");           // code units: "m" > "M..."
  EXPECT_EQ(After(road, "ROAD", "Street"), "Main Street #1");
  EXPECT_EQ(After(od::Value::Character("xABy"), "ab", "c"), "xcy #1");
  EXPECT_EQ(After(od::Value::Character("banana"), "a", "o"), "bonono #3");
  // The search goes on after the inserted text, which is never searched itself.
  EXPECT_EQ(After(od::Value::Character("aa"), "a", "aa"), "aaaa #2");
  // A "*" in the resulting text stands for the old value, also without a replacement.
  EXPECT_EQ(After(od::Value::Character("a*b"), "zz", "1"), "aa*bb #0");
}

TEST(ReplacePatternTest, CharacterWildcardsAndCase) {
  int n = 0;
  EXPECT_EQ(ReplaceOccurrences("Main Road", "m*d", "X", &n), "X");
  // A leading "*" needs a character before the first piece and takes all of them.
  EXPECT_EQ(ReplaceOccurrences("Road", "*road", "X", &n), "Road");
  EXPECT_EQ(ReplaceOccurrences("Main Road", "*road", "X", &n), "X");
  // A trailing "*" takes the rest of the text.
  EXPECT_EQ(ReplaceOccurrences("xMain Road", "ma*", "X", &n), "xX");
  // Pieces are found as early as they can be.
  EXPECT_EQ(ReplaceOccurrences("banana", "a*a", "X", &n), "bXna");
  EXPECT_EQ(ReplaceOccurrences("banana", "a**a", "X", &n), "bXna");
  EXPECT_EQ(ReplaceOccurrences("ab", "**", "X", &n), "X");
  EXPECT_EQ(n, 6);
  // Case is ignored beyond ASCII, also where lower-casing changes a character's length
  // (the Kelvin sign K lowers to "k").
  EXPECT_EQ(ReplaceOccurrences("CAFÉ", "é", "e", &n), "CAFe");
  EXPECT_EQ(ReplaceOccurrences("1\u212A2\u212A", "k", "x", &n), "1x2x");
  EXPECT_EQ(ReplaceOccurrences("ΟΔΟΣ", "οδ", "x", &n), "xΟΣ");
  EXPECT_EQ(n, 10);
}

TEST(ReplacePatternTest, PointValues) {
  od::Value p = od::Value::Point({1, 2, 3});
  EXPECT_EQ(After(p, "*", "4,5, 6"), "4.000000,5.000000,6.000000 #1");
  // Text that does not scan as a point leaves it; the replacement still counts.
  EXPECT_EQ(After(p, "*", "4;5;6"), "1.000000,2.000000,3.000000 #1");
  for (const char* compare : {"<>1", ">9", "<x9"})
    EXPECT_EQ(After(p, compare, "4,5,6"), "1.000000,2.000000,3.000000 #0") << compare;
  EXPECT_EQ(After(p, "2.0", "7.0"), "1.000000,7.000000,3.000000 #1");
  EXPECT_EQ(After(p, ",", ";"), "1.000000,2.000000,3.000000 #2");
}

class ReplaceCommandTest : public testing::EditCommandsTest {
 protected:
  using Dialog = ui::OptionsReplace;

  void SetUp() override {
    od::TableDefinition t;
    t.name = "T";
    t.columns = {{"NAME", od::ValueType::kCharacter, "", od::Value::Character("")},
                 {"ID", od::ValueType::kInteger, "", od::Value::Integer(0)},
                 {"W", od::ValueType::kReal, "", od::Value::Real(0)},
                 {"P", od::ValueType::kPoint, "", od::Value::Point({})}};
    ASSERT_TRUE(container().CreateTable(t).ok());
    Table("S", {"NAME"});
    Table("TPMID_1", {"NAME"});
    a_ = Row("Main Road", 5);
    b_ = Row("Oak road", 15);
    AttachTagged(b_, "S", "road");
    AttachTagged(b_, "T", "second road");
    c_ = AddPoint();
    AttachTagged(c_, "TPMID_1", "road");
    locked_ = Row("Locked road", 1, "LOCKED");
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  }

  od::EntityId Row(const std::string& name, int id, const std::string& layer = "0") {
    od::EntityId e = AddPoint(layer);
    EXPECT_TRUE(container()
                    .AddRecord(e, {"T", {od::Value::Character(name), od::Value::Integer(id),
                                         od::Value::Real(2.5), od::Value::Point({1, 2, 3})}})
                    .ok());
    return e;
  }

  // Answers the dialog: table T, the given columns, pattern and new text, OK.
  void ReplaceIn(Strings columns, const std::string& pattern, const std::string& new_text) {
    ui_.NextDialog()
        .SelectItems(Dialog::kTableList, {"T"})
        .SelectItems(Dialog::kColumnList, columns)
        .SetText(Dialog::kOldValue, pattern)
        .SetText(Dialog::kNewValue, new_text)
        .Press(od::kIdOk);
  }

  od::EntityId a_ = 0, b_ = 0, c_ = 0, locked_ = 0;
};

TEST_F(ReplaceCommandTest, SelectionComesFirstThenTheDialog) {
  ui_.NextDialog()
      .Inspect([this](const od::DialogModel& d) {
        EXPECT_EQ(out(), "Select objects: \n");
        // The first table is chosen and its columns listed, none selected.
        EXPECT_EQ(d.SelectedItems(Dialog::kTableList), Strings{"S"});
        EXPECT_EQ(d.Items(Dialog::kColumnList), Strings{"NAME"});
        EXPECT_TRUE(d.SelectedIndices(Dialog::kColumnList).empty());
      })
      .SelectItems(Dialog::kTableList, {"T"})
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Items(Dialog::kColumnList), (Strings{"NAME", "ID", "W", "P"}));
      })
      .SelectItems(Dialog::kColumnList, {"NAME", "ID"})
      .SetText(Dialog::kOldValue, "road")
      .SetText(Dialog::kNewValue, "Street")
      .Press(od::kIdOk);
  Run("VELTOR_REPLACE", {""});
  // Three records of T on usable entities hold "road"; no ID does. S is not touched.
  EXPECT_EQ(out(), "Select objects: \nCompleted: 3\n");
  EXPECT_EQ(ui_.opened()[0].title, "Replace OD values");
  EXPECT_EQ(ui_.opened()[0].Find(Dialog::kTableList).items, (Strings{"S", "T"}));
  EXPECT_EQ(Tags(a_), Strings{"T:Main Street"});
  EXPECT_EQ(Tags(b_), (Strings{"T:Oak Street", "S:road", "T:second Street"}));
  EXPECT_EQ(Tags(locked_), Strings{"T:Locked road"});
}

TEST_F(ReplaceCommandTest, EveryRecordOfTheTableIsWrittenBack) {
  testing::LockWatch watch(sdoc());
  session_.App().AddReactor(&watch);
  ReplaceIn({"NAME"}, "no such text", "x");
  Run("VELTOR_REPLACE", {""});
  session_.App().RemoveReactor(&watch);
  EXPECT_EQ(out(), "Select objects: \nCompleted: 0\n");
  // One modification per record of T on a usable entity (b has two), each under the lock.
  EXPECT_EQ(watch.modified, 3);
  EXPECT_EQ(watch.modified_unlocked, 0);
}

TEST_F(ReplaceCommandTest, ComparisonsPerColumnType) {
  ReplaceIn({"ID"}, ">10", "100");
  Run("VELTOR_REPLACE", {""});
  EXPECT_EQ(out(), "Select objects: \nCompleted: 2\n");  // a (5) and b's second record (0)
  std::vector<od::Record> b = container().Records(b_);
  EXPECT_EQ(b[0].values[1].integer(), 15);
  EXPECT_EQ(b[2].values[1].integer(), 100);
  // Two columns at once: each column's matches count.
  ReplaceIn({"W", "P"}, "*", "4,5,6");
  Run("VELTOR_REPLACE", {""});
  EXPECT_EQ(out(), "Select objects: \nCompleted: 6\n");
  od::Record a = container().Records(a_)[0];
  EXPECT_EQ(a.values[2].real(), 4.0);
  EXPECT_EQ(a.values[3].point(), (od::Point3{4, 5, 6}));
}

TEST_F(ReplaceCommandTest, OkNeedsAColumnAndCancelChangesNothing) {
  ui_.NextDialog().Press(od::kIdOk).Press(od::kIdCancel);
  Run("VELTOR_REPLACE", {""});
  EXPECT_EQ(ui_.refusals(), Strings{"Choose a table and at least one of its columns."});
  EXPECT_EQ(out(), "Select objects: \n");
  EXPECT_EQ(Tags(a_), Strings{"T:Main Road"});
}

TEST_F(ReplaceCommandTest, WorkerTakesTheCallersEntities) {
  // As the OD table view calls it: no selection prompt; unusable entities are dropped.
  ReplaceIn({"NAME"}, "*", "new");
  Answer({});
  ClearOut();
  std::optional<int> total;
  EXPECT_TRUE(od::RunCommand(session_, "VELTOR_REPLACE", [&](od::CommandContext& context) {
    total = ReplaceValues(context, {b_, locked_});
  }));
  EXPECT_EQ(total, 2);
  EXPECT_EQ(out(), "Completed: 2\n");
  // Offered: the tables of the given entities only.
  EXPECT_EQ(ui_.opened()[0].Find(Dialog::kTableList).items, (Strings{"S", "T"}));
  EXPECT_EQ(Tags(b_), (Strings{"T:new", "S:road", "T:new"}));
  EXPECT_EQ(Tags(a_), Strings{"T:Main Road"});
  EXPECT_EQ(Tags(locked_), Strings{"T:Locked road"});
}

TEST_F(ReplaceCommandTest, UndoRestoresTheSavedFile) {
  const std::string before = SavedBytes("before.dxf");
  ReplaceIn({"NAME", "ID", "W", "P"}, "1", "2");
  Run("VELTOR_REPLACE", {""});
  ASSERT_NE(SavedBytes("after.dxf"), before);
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_EQ(SavedBytes("undone.dxf"), before);
}

}  // namespace
}  // namespace veltor::commands
