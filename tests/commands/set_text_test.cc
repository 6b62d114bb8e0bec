// VELTOR_SETTEXT run in the embedded session: the one text inside a parcel is written, none
// or two inside count as multiple and the two are marked with the error block on the error
// layer, open entities take the nearest text within the tolerance, and the result line says
// how many were out of range or multiple.
#include "data_command_fixture.h"

#include "drawing/model/create.h"
#include "drawing/model/tables.h"
#include "od/format.h"
#include "ui/od_select.h"

namespace veltor::commands {
namespace {

using od::Value;
using ui::OdSelect;

class SetTextTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("T", {Column("NAME", Value::Character("")), Column("N", Value::Integer(0))});
  }

  od::EntityId Parcel(double x, double y) {
    std::vector<model::Vertex2> ring{{x, y}, {x + 10, y}, {x + 10, y + 10}, {x, y + 10}};
    od::EntityId id = session::IdOf(doc(), model::AddLwPolyline(doc(), "0", ring, true));
    Attach(id, "T");
    return id;
  }
  od::EntityId Text(double x, double y, const std::string& text, double height = 2) {
    return session::IdOf(doc(), model::AddText(doc(), "0", {x, y, 0}, height, text));
  }
  void AnswerText(const std::string& field, const std::string& tolerance = "") {
    testing::DialogScript& d = ui_.NextDialog();
    d.SelectItems(OdSelect::kTableList, {"T"}).SelectItems(OdSelect::kFieldList, {field});
    if (!tolerance.empty()) d.SetText(OdSelect::kTolerance, tolerance);
    d.Press(od::kIdOk);
  }
  std::string Field(od::EntityId e, size_t column = 0) {
    return od::ValueToText(container().Records(e)[0].values[column]);
  }
  // The marks in model space, as "x,y scale layer".
  std::vector<std::string> Marks() {
    std::vector<std::string> marks;
    for (od::EntityId id : db().ModelSpaceEntities()) {
      if (db().EntityClass(id) != "AcDbBlockReference") continue;
      od::Point3 at = *db().InsertionPoint(id);
      marks.push_back(od::Format("%g,%g ", at.x, at.y) + db().Properties(id)->layer);
    }
    return marks;
  }
};

TEST_F(SetTextTest, OneTextInsideAParcelIsWrittenAndNoneOrTwoCountAsMultiple) {
  od::EntityId one = Parcel(0, 0), none = Parcel(20, 0), two = Parcel(40, 0);
  od::EntityId texts[] = {Text(5, 5, "Lot 7"), Text(42, 2, "A"), Text(48, 8, "B", 3),
                          Text(100, 100, "far")};
  AnswerText("NAME");
  EXPECT_EQ(Run("VELTOR_SETTEXT", {one, texts[0], none, two, texts[1], texts[2], texts[3]}, {}),
            "Completed: 1 out of 3 (2 multiple)\n");
  EXPECT_EQ(Field(one), "Lot 7");
  EXPECT_EQ(Field(none), "");
  EXPECT_EQ(Field(two), "");
  // Both texts of the ambiguous parcel are marked; the parcel without a text marks nothing.
  EXPECT_EQ(Marks(), (std::vector<std::string>{"42,2 veltor_error", "48,8 veltor_error"}));
  EXPECT_NE(db().FindLayer("veltor_error"), od::kNullId);
}

TEST_F(SetTextTest, OpenEntitiesTakeTheNearestTextWithinTheTolerance) {
  auto line = [this](double y) {
    od::EntityId id = session::IdOf(doc(), model::AddLine(doc(), "0", {0, y, 0}, {10, y, 0}));
    Attach(id, "T");
    return id;
  };
  od::EntityId near = line(0), far = line(50), crowded = line(100);
  od::EntityList picked{near, far, crowded, Text(5, 0.5, "12 Main St"), Text(5, 53, "lost"),
                        Text(2, 100.5, "x"), Text(8, 99.5, "y")};
  AnswerText("N", "1");
  EXPECT_EQ(Run("VELTOR_SETTEXT", picked, {}),
            "Completed: 1 out of 3 (1 out of range, 1 multiple)\n");
  // Through the text-to-value conversion: the Integer field takes the leading number.
  EXPECT_EQ(Field(near, 1), "12");
  EXPECT_EQ(Field(far, 1), "0");
  EXPECT_EQ(Marks().size(), 2u);
}

TEST_F(SetTextTest, AnExistingErrorLayerOfAnotherCaseIsUsedAndNothingIsLeftOnCancel) {
  model::AddLayer(doc(), "VELTOR_ERROR");
  od::EntityId parcel = Parcel(0, 0);
  od::EntityList picked{parcel, Text(1, 1, "A"), Text(2, 2, "B")};
  AnswerText("NAME");
  EXPECT_EQ(Run("VELTOR_SETTEXT", picked, {}), "Completed: 0 out of 1 (1 multiple)\n");
  EXPECT_EQ(Marks(), (std::vector<std::string>{"1,1 VELTOR_ERROR", "2,2 VELTOR_ERROR"}));
  std::string before = Saved("before.dxf");
  AnswerText("NAME");
  EXPECT_EQ(Run("VELTOR_SETTEXT", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(SetTextTest, AlignedTextsArePlacedByTheirAlignmentPointAndBaselineLeftOnesByPosition) {
  od::EntityId centred_in = Parcel(0, 0), left_in = Parcel(20, 0);
  // Centred (72 = 1): the alignment point (11) inside the first parcel counts, not the
  // position (10) inside the second.
  od::EntityId centred = Text(25, 5, "centred");
  model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), centred));
  for (auto [code, value] : std::vector<std::pair<int, std::string>>{
           {11, "5"}, {21, "5"}, {31, "0"}, {72, "1"}})
    tags.push_back({code, value});
  AnswerText("NAME");
  EXPECT_EQ(Run("VELTOR_SETTEXT", {centred_in, left_in, centred}, {}),
            "Completed: 1 out of 2 (1 multiple)\n");
  EXPECT_EQ(Field(centred_in), "centred");
  EXPECT_EQ(Field(left_in), "");
}

TEST_F(SetTextTest, OkWaitsForAField) {
  Parcel(0, 0);
  ui_.NextDialog()
      .SelectItems(OdSelect::kTableList, {"T"})
      .Inspect([](const od::DialogModel& d) { EXPECT_FALSE(d.Find(od::kIdOk)->enabled); })
      .SelectItems(OdSelect::kFieldList, {"NAME"})
      .Inspect([](const od::DialogModel& d) { EXPECT_TRUE(d.Find(od::kIdOk)->enabled); })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_SETTEXT", {}, {}), "");
}

}  // namespace
}  // namespace veltor::commands
