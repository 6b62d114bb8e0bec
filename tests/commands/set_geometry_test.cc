// VELTOR_SETXYZ and VELTOR_SETPROP run in the embedded session: the point each entity type
// gives by mode, the six-decimal cap of the coordinate text, the chord rule for bulged
// polylines, writing by column type, the counters, and LUPREC restored on every way out.
#include "data_command_fixture.h"

#include "drawing/model/create.h"
#include "drawing/model/entity.h"
#include "ui/od_select_xyz.h"
#include "ui/options_set_prop.h"

namespace veltor::commands {
namespace {

using od::Value;
using ui::OdSelectXyz;
using ui::OptionsSetProp;

class SetGeometryTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("P", {Column("X", Value::Real(0)), Column("Y", Value::Real(0)),
                 Column("Z", Value::Character(""))});
    Define("M", {Column("LEN", Value::Real(0)), Column("AREA", Value::Real(0)),
                 Column("ILEN", Value::Integer(0)), Column("TEXT", Value::Character("")),
                 Column("VOL", Value::Real(0))});
  }

  od::EntityId Lw(std::vector<model::Vertex2> vertices, bool closed) {
    return session::IdOf(doc(), model::AddLwPolyline(doc(), "0", vertices, closed));
  }
  od::EntityId Line(model::Point3 a, model::Point3 b) {
    return session::IdOf(doc(), model::AddLine(doc(), "0", a, b));
  }
  od::EntityId WithRecord(od::EntityId id, const std::string& table) {
    Attach(id, table);
    return id;
  }

  // Answers the coordinates dialog: table P, the given columns and modes.
  void AnswerXyz(const std::string& x, const std::string& y, const std::string& z,
                 const std::string& xy_mode, const std::string& z_mode,
                 const std::string& xy_precision = "") {
    testing::DialogScript& d = ui_.NextDialog();
    d.SelectItems(OdSelectXyz::kTableList, {"P"})
        .SelectItems(OdSelectXyz::kXCombo, {x})
        .SelectItems(OdSelectXyz::kYCombo, {y})
        .SelectItems(OdSelectXyz::kZCombo, {z})
        .SelectItems(OdSelectXyz::kXyModeCombo, {xy_mode})
        .SelectItems(OdSelectXyz::kZModeCombo, {z_mode});
    if (!xy_precision.empty()) d.SetText(OdSelectXyz::kXyPrecision, xy_precision);
    d.Press(od::kIdOk);
  }
  // Answers the properties dialog: table M and the three columns ("" leaves one unchosen).
  void AnswerProp(const std::string& length, const std::string& area, const std::string& volume,
                  const std::string& precision) {
    testing::DialogScript& d = ui_.NextDialog();
    d.SelectItems(OptionsSetProp::kTableList, {"M"});
    if (!length.empty()) d.SelectItems(OptionsSetProp::kLengthCombo, {length});
    if (!area.empty()) d.SelectItems(OptionsSetProp::kAreaCombo, {area});
    if (!volume.empty()) d.SelectItems(OptionsSetProp::kVolumeCombo, {volume});
    d.SetText(OptionsSetProp::kPrecision, precision).Press(od::kIdOk);
  }
  int Luprec() { return *db().GetIntVar("LUPREC"); }
};

TEST_F(SetGeometryTest, CenterOfAClosedSquareIsItsMiddleAndOfAnOpenPathTheHalfwayPoint) {
  od::EntityId square = WithRecord(Lw({{0, 0}, {2, 0}, {2, 2}, {0, 2}}, true), "P");
  // Path length 2 + 4: the half (3) lies 1 up the second segment.
  od::EntityId open = WithRecord(Lw({{0, 0}, {2, 0}, {2, 4}}, false), "P");
  od::EntityId line = WithRecord(Line({1, 1, 0}, {3, 5, 0}), "P");
  AnswerXyz("X", "Y", "", "Center", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {square, open, line}, {}), "Completed: 3 out of 3\n");
  EXPECT_EQ(Records(square), (std::vector<std::string>{"P[1.0|1.0|]"}));
  EXPECT_EQ(Records(open), (std::vector<std::string>{"P[2.0|1.0|]"}));
  EXPECT_EQ(Records(line), (std::vector<std::string>{"P[2.0|3.0|]"}));
}

TEST_F(SetGeometryTest, FirstAndLastTakeTheEndVerticesAndOtherEntitiesTheirExtents) {
  od::EntityId open = WithRecord(Lw({{0, 0}, {2, 0}, {2, 4}}, false), "P");
  od::EntityId circle =
      WithRecord(session::IdOf(doc(), model::AddCircle(doc(), "0", {10, 10, 3}, 1)), "P");
  AnswerXyz("X", "Y", "Z", "Last", "Max");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {open, circle}, {}), "Completed: 2 out of 2\n");
  EXPECT_EQ(Records(open), (std::vector<std::string>{"P[2.0|4.0|0.000000]"}));
  EXPECT_EQ(Records(circle), (std::vector<std::string>{"P[11.0|11.0|3.000000]"}));
  AnswerXyz("X", "Y", "Z", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {open, circle}, {}), "Completed: 2 out of 2\n");
  EXPECT_EQ(Records(open), (std::vector<std::string>{"P[0.0|0.0|0.000000]"}));
  EXPECT_EQ(Records(circle), (std::vector<std::string>{"P[9.0|9.0|3.000000]"}));
}

TEST_F(SetGeometryTest, BlockReferenceWritesItsInsertionPointWhateverTheModes) {
  model::AddBlockDefinition(doc(), "B", {0, 0, 0},
                            {{"CIRCLE", "0", {{100, "AcDbCircle"}, {10, "0"}, {20, "0"},
                                              {30, "0"}, {40, "4"}}}},
                            {});
  od::EntityId ref = WithRecord(
      session::IdOf(doc(), model::AddBlockReference(doc(), "B", {5, 6, 7}, 1, 0, "0", {})), "P");
  AnswerXyz("X", "Y", "Z", "Last", "Max");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {ref}, {}), "Completed: 1 out of 1\n");
  EXPECT_EQ(Records(ref), (std::vector<std::string>{"P[5.0|6.0|7.000000]"}));
}

TEST_F(SetGeometryTest, PrecisionAboveSixStillWritesSixDecimalsAndBelowRoundsByPrinting) {
  od::EntityId line = WithRecord(Line({0.123456789, 2.5, 0.25}, {4, 4, 0.25}), "P");
  AnswerXyz("X", "", "Z", "First", "Min", "10");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {line}, {}), "Completed: 1 out of 1\n");
  EXPECT_EQ(Records(line), (std::vector<std::string>{"P[0.123457|0.0|0.250000]"}));
  // No decimals: 2.5 rounds as printf rounds it (to even), not up as arithmetic would.
  AnswerXyz("", "Y", "", "First", "Min", "0");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {line}, {}), "Completed: 1 out of 1\n");
  EXPECT_EQ(Records(line), (std::vector<std::string>{"P[0.123457|2.0|0.250000]"}));
}

TEST_F(SetGeometryTest, TheSameColumnTwiceWritesNothingAndPrintsNothing) {
  od::EntityId line = WithRecord(Line({1, 2, 0}, {3, 4, 0}), "P");
  AnswerXyz("X", "X", "", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {line}, {}), "");
  EXPECT_EQ(Records(line), (std::vector<std::string>{"P[0.0|0.0|]"}));
}

TEST_F(SetGeometryTest, EntitiesWithoutTheTableCountInTheListButAreNotCompleted) {
  od::EntityId with = WithRecord(Line({1, 2, 0}, {3, 4, 0}), "P");
  od::EntityId without = Line({1, 2, 0}, {3, 4, 0});
  AnswerXyz("X", "", "", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {with, without}, {}), "Completed: 1 out of 2\n");
}

TEST_F(SetGeometryTest, LuprecIsRestoredOnEveryWayOutAndShownAsTheDialogsPrecision) {
  ASSERT_TRUE(db().SetIntVar("LUPREC", 3).ok());
  od::EntityId line = WithRecord(WithRecord(Line({1, 2, 0}, {3, 4, 0}), "P"), "M");
  // The dialog cancelled: it showed LUPREC, not the 8 the command runs with.
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Text(OdSelectXyz::kXyPrecision), "3");
        EXPECT_EQ(d.Text(OdSelectXyz::kZPrecision), "3");
      })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_SETXYZ", {line}, {}), "");
  EXPECT_EQ(Luprec(), 3);
  ui_.NextDialog().Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_SETPROP", {line}, {}), "");
  EXPECT_EQ(Luprec(), 3);
  // The selection prompt cancelled after the dialog.
  AnswerXyz("X", "", "", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
  EXPECT_EQ(Luprec(), 3);
  AnswerProp("LEN", "", "", "2");
  EXPECT_EQ(Run("VELTOR_SETPROP", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
  EXPECT_EQ(Luprec(), 3);
  // Nothing chosen, and a run to its end.
  ui_.NextDialog().Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_SETPROP", {line}, {}), "");
  EXPECT_EQ(Luprec(), 3);
  AnswerXyz("X", "", "", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {line}, {}), "Completed: 1 out of 1\n");
  EXPECT_EQ(Luprec(), 3);
  EXPECT_EQ(Records(line), (std::vector<std::string>{"P[1.0|0.0|]", "M[0.0|0.0|0||0.0]"}));
}

TEST_F(SetGeometryTest, CancelledSelectionLeavesTheDrawingAsItWas) {
  WithRecord(Line({1, 2, 0}, {3, 4, 0}), "P");
  std::string before = Saved("before.dxf");
  AnswerXyz("X", "", "", "First", "Min");
  EXPECT_EQ(Run("VELTOR_SETXYZ", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(SetGeometryTest, BulgedPolylineMeasuresItsChordAndTheHostsArea) {
  // One half-circle arc of radius 1: chord 2, area pi / 2.
  od::EntityId arc = WithRecord(Lw({{0, 0, 1}, {2, 0}}, false), "M");
  AnswerProp("LEN", "AREA", "", "4");
  EXPECT_EQ(Run("VELTOR_SETPROP", {arc}, {}),
            "Completed (Length/Area/Volume): 1/1/0 out of 1\n");
  EXPECT_EQ(Records(arc), (std::vector<std::string>{"M[2.0|1.5708|0||0.0]"}));
}

TEST_F(SetGeometryTest, ValuesGoInByColumnTypeAndOnlyPositiveValuesAreWrittenAndCounted) {
  od::EntityId line = WithRecord(Line({0, 0, 0}, {12.9, 0, 0}), "M");
  od::EntityId dot = WithRecord(Line({1, 1, 0}, {1, 1, 0}), "M");
  od::EntityId square = WithRecord(Lw({{0, 0}, {3, 0}, {3, 3}, {0, 3}}, true), "M");
  od::EntityId bare = Line({0, 0, 0}, {5, 0, 0});
  AnswerProp("ILEN", "TEXT", "", "2");
  EXPECT_EQ(Run("VELTOR_SETPROP", {line, dot, square, bare}, {}),
            "Completed (Length/Area/Volume): 2/1/0 out of 4\n");
  // 12.9 truncated toward zero in the Integer column; a line has no area.
  EXPECT_EQ(Records(line), (std::vector<std::string>{"M[0.0|0.0|12||0.0]"}));
  EXPECT_EQ(Records(dot), (std::vector<std::string>{"M[0.0|0.0|0||0.0]"}));
  EXPECT_EQ(Records(square), (std::vector<std::string>{"M[0.0|0.0|12|9.00|0.0]"}));
}

TEST_F(SetGeometryTest, ClosedThreeDPolylineAddsItsClosingSegmentAndProjectedArea) {
  od::EntityId poly = WithRecord(
      session::IdOf(doc(), model::AddPolyline3d(doc(), "0", {{0, 0, 0}, {4, 0, 3}, {4, 3, 3}},
                                                true)),
      "M");
  AnswerProp("LEN", "AREA", "", "3");
  EXPECT_EQ(Run("VELTOR_SETPROP", {poly}, {}), "Completed (Length/Area/Volume): 1/1/0 out of 1\n");
  // 5 + 3 + the closing 5.831 (from (4,3,3) back to the origin); the XY triangle 4 x 3 / 2.
  EXPECT_EQ(Records(poly), (std::vector<std::string>{"M[13.831|6.0|0||0.0]"}));
}

TEST_F(SetGeometryTest, SolidsAreSkippedWithOneWarningWhenAVolumeColumnIsChosen) {
  od::EntityId solids[2];
  for (od::EntityId& solid : solids)
    solid = WithRecord(session::IdOf(doc(), model::AddModelSpaceEntity(
                                                doc(), "3DSOLID", "0",
                                                {{100, "AcDbModelerGeometry"}, {70, "1"}})),
                       "M");
  AnswerProp("LEN", "", "VOL", "2");
  EXPECT_EQ(Run("VELTOR_SETPROP", {solids[0], solids[1]}, {}),
            "Warning: the volumes of 2 3D solids were not measured: this host has no solid "
            "modeller.\nCompleted (Length/Area/Volume): 0/0/0 out of 2\n");
  AnswerProp("LEN", "", "", "2");
  EXPECT_EQ(Run("VELTOR_SETPROP", {solids[0]}, {}),
            "Completed (Length/Area/Volume): 0/0/0 out of 1\n");
}

}  // namespace
}  // namespace veltor::commands
