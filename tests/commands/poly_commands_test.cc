// VELTOR_23DPOLY and VELTOR_2POLY in the embedded session: which curve types each converts
// at which precision, the vertices and closure of the new polylines, the plane of a 2D
// result, records, properties and classification carried over, the source erased, the
// precision range test and undo.
#include "data_command_fixture.h"

#include <algorithm>
#include <cmath>

#include "commands/edit/poly_plane.h"
#include "drawing/model/create.h"
#include "drawing/model/entity.h"

namespace veltor::commands {
namespace {

using od::Value;

class PolyCommandsTest : public testing::DataCommandTest {
 protected:
  od::EntityId Id(model::RecordId record) { return session::IdOf(doc(), record); }
  od::EntityId Line() { return Id(model::AddLine(doc(), "0", {0, 0, 1}, {4, 0, 2})); }
  // A closed square whose first side bulges outwards (a half circle).
  od::EntityId BulgedSquare() {
    return Id(model::AddLwPolyline(doc(), "0", {{0, 0, -1}, {2, 0}, {2, 2}, {0, 2}}, true));
  }
  od::EntityId Arc() { return Id(model::AddArc(doc(), "0", {10, 0, 0}, 2, 0, 90)); }
  od::EntityId Circle() { return Id(model::AddCircle(doc(), "0", {20, 0, 0}, 3)); }
  od::EntityId Ellipse() {
    return Id(model::AddEllipse(doc(), "0", {30, 0, 0}, {4, 0, 0}, 0.5, 0, 2 * M_PI));
  }
  od::EntityId Spline() {
    return Id(model::AddSpline(doc(), "0", {{40, 0, 0}, {41, 2, 0}, {43, 2, 0}, {44, 0, 0}}));
  }
  od::EntityId Polyline3d(std::vector<model::Point3> points, bool closed = false) {
    return Id(model::AddPolyline3d(doc(), "0", points, closed));
  }

  // The entities the last command added, in storage order.
  od::EntityList AddedSince(const od::EntityList& before) {
    od::EntityList added;
    for (od::EntityId id : db().ModelSpaceEntities())
      if (std::find(before.begin(), before.end(), id) == before.end()) added.push_back(id);
    return added;
  }
  static std::string Done(const std::string& prompt, const std::string& answer, int converted,
                          int examined) {
    return prompt + answer + "\nCompleted: " + std::to_string(converted) + " out of " +
           std::to_string(examined) + "\n";
  }
  static constexpr const char* k3d = "Precision [0-99]<0> (> 0 - enable conversion): ";
  static constexpr const char* k2d = "Precision [1-99]<10>: ";
};

TEST_F(PolyCommandsTest, ThreeDAtPrecisionZeroConvertsLinesAndLightweightPolylinesOnly) {
  od::EntityId line = Line(), square = BulgedSquare();
  od::EntityList curves = {Arc(), Circle(), Ellipse(), Spline()};
  od::EntityList before = db().ModelSpaceEntities();
  od::EntityList all = curves;
  all.push_back(line);
  all.push_back(square);
  EXPECT_EQ(Run("VELTOR_23DPOLY", all, {""}), Done(k3d, "", 2, 6));
  EXPECT_FALSE(db().CanOpen(line));
  EXPECT_FALSE(db().CanOpen(square));
  for (od::EntityId curve : curves) EXPECT_TRUE(db().CanOpen(curve));

  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 2u);
  for (od::EntityId id : added) EXPECT_EQ(db().EntityClass(id), "AcDb3dPolyline");
  // Converted in the order examined: the line, then the square.
  std::optional<od::VertexList> segment = db().Vertices(added[0]);
  ASSERT_TRUE(segment);
  EXPECT_EQ(segment->points, (std::vector<od::Point3>{{0, 0, 1}, {4, 0, 2}}));
  EXPECT_FALSE(segment->closed);
  // The bulge is dropped: the arc side becomes the chord from (0,0) to (2,0).
  std::optional<od::VertexList> ring = db().Vertices(added[1]);
  ASSERT_TRUE(ring);
  EXPECT_EQ(ring->points, (std::vector<od::Point3>{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}));
  EXPECT_TRUE(ring->closed);
}

TEST_F(PolyCommandsTest, ThreeDAtPrecisionTenFlattensCurvesAndLeavesOtherTypes) {
  od::EntityId circle = Circle();
  od::EntityList sources = {Line(), BulgedSquare(), Arc(), circle, Ellipse(), Spline()};
  od::EntityId already = Polyline3d({{0, 0, 0}, {1, 1, 1}});
  od::EntityId point = AddPoint();
  od::EntityList before = db().ModelSpaceEntities();
  od::EntityList all = sources;
  all.push_back(already);
  all.push_back(point);
  EXPECT_EQ(Run("VELTOR_23DPOLY", all, {"10"}), Done(k3d, "10", 6, 8));
  for (od::EntityId id : sources) EXPECT_FALSE(db().CanOpen(id));
  EXPECT_TRUE(db().CanOpen(already));
  EXPECT_TRUE(db().CanOpen(point));

  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 6u);
  std::optional<od::VertexList> round = db().Vertices(added[3]);
  ASSERT_TRUE(round);
  EXPECT_TRUE(round->closed);
  EXPECT_GE(round->points.size(), 40u);  // ten segments per quarter turn
  for (const od::Point3& p : round->points)
    EXPECT_NEAR(std::hypot(p.x - 20, p.y), 3.0, 1e-9);
  std::optional<od::VertexList> arc = db().Vertices(added[2]);
  ASSERT_TRUE(arc);
  EXPECT_FALSE(arc->closed);
  EXPECT_NEAR(arc->points.front().x, 12.0, 1e-9);
  EXPECT_NEAR(arc->points.back().y, 2.0, 1e-9);
}

TEST_F(PolyCommandsTest, ConversionCarriesEveryRecordPropertiesAndClassificationAndUndoes) {
  Define("A", {Column("NAME", Value::Character("")), Column("N", Value::Integer(0))});
  Define("B", {Column("X", Value::Real(0))});
  model::AddLayer(doc(), "ROADS");
  od::EntityId line = Line();
  for (model::Tag& t : doc().MutableTags(session::RecordOf(doc(), line)))
    if (t.code == 8) t.value = "ROADS";
  model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), line));
  auto at = std::find_if(tags.begin(), tags.end(), [](const model::Tag& t) { return t.code == 8; });
  tags.insert(at + 1, {{62, "1"}, {48, "2.5"}, {370, "35"}, {440, "33554534"}});
  AttachValues(line, "A", {Value::Character("first"), Value::Integer(1)});
  AttachValues(line, "B", {Value::Real(2.5)});
  AttachValues(line, "A", {Value::Character("second"), Value::Integer(2)});
  ASSERT_TRUE(sdoc().project.Classify(line, "Road").ok());
  const std::string saved = Saved("before.dxf");

  EXPECT_EQ(Run("VELTOR_23DPOLY", {line}, {"0"}), Done(k3d, "0", 1, 1));
  od::EntityId made = db().LastEntity();
  ASSERT_NE(made, line);
  EXPECT_FALSE(db().CanOpen(line));
  EXPECT_EQ(Records(made),
            (std::vector<std::string>{"A[first|1]", "B[2.5]", "A[second|2]"}));
  EXPECT_EQ(sdoc().project.ClassificationTags(made), (std::vector<std::string>{"Road"}));
  std::optional<od::EntityProperties> p = db().Properties(made);
  ASSERT_TRUE(p);
  EXPECT_EQ(p->layer, "ROADS");
  EXPECT_EQ(p->color, 1);
  EXPECT_EQ(p->linetype_scale, 2.5);
  EXPECT_EQ(p->lineweight, 35);
  EXPECT_EQ(p->transparency, 33554534);
  ExpectUndoRestores(saved, "VELTOR_23DPOLY");
  EXPECT_TRUE(db().CanOpen(line));
}

TEST_F(PolyCommandsTest, TwoDTakesZeroAndNinetyNineButRefusesNegativeAndAboveNinetyNine) {
  od::EntityId arc = Arc();
  EXPECT_EQ(Run("VELTOR_2POLY", {arc}, {"100"}), std::string(k2d) + "100\nError: invalid precision.\n");
  EXPECT_EQ(Run("VELTOR_2POLY", {arc}, {"-1"}), std::string(k2d) + "-1\nError: invalid precision.\n");
  EXPECT_TRUE(db().CanOpen(arc));
  EXPECT_EQ(Run("VELTOR_23DPOLY", {arc}, {"-1"}), std::string(k3d) + "-1\nError: invalid precision.\n");
  EXPECT_TRUE(db().CanOpen(arc));
  EXPECT_EQ(Run("VELTOR_2POLY", {arc}, {"0"}), Done(k2d, "0", 1, 1));
  EXPECT_FALSE(db().CanOpen(arc));
  od::EntityId circle = Circle();
  EXPECT_EQ(Run("VELTOR_2POLY", {circle}, {"99"}), Done(k2d, "99", 1, 1));
  EXPECT_EQ(db().EntityType(db().LastEntity()), "LWPOLYLINE");
}

TEST_F(PolyCommandsTest, TwoDConvertsThreeDPolylinesAndCurvesIntoTheirPlane) {
  od::EntityId level = Polyline3d({{0, 0, 5}, {4, 0, 5}, {4, 3, 5}}, true);
  od::EntityId hilly = Polyline3d({{0, 0, 1}, {4, 0, 2}, {4, 3, 7}, {0, 3, 0}});
  od::EntityId circle = Circle(), line = Line(), square = BulgedSquare();
  od::EntityList before = db().ModelSpaceEntities();
  EXPECT_EQ(Run("VELTOR_2POLY", {level, hilly, circle, line, square}, {""}),
            Done(k2d, "", 3, 5));
  EXPECT_TRUE(db().CanOpen(line));
  EXPECT_TRUE(db().CanOpen(square));
  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 3u);
  for (od::EntityId id : added) EXPECT_EQ(db().EntityType(id), "LWPOLYLINE");

  std::optional<od::VertexList> flat = db().Vertices(added[0]);
  ASSERT_TRUE(flat);
  EXPECT_TRUE(flat->closed);
  EXPECT_EQ(flat->points, (std::vector<od::Point3>{{0, 0, 5}, {4, 0, 5}, {4, 3, 5}}));
  // Vertices in no single plane are projected onto the elevation of the first.
  std::optional<od::VertexList> plan = db().Vertices(added[1]);
  ASSERT_TRUE(plan);
  EXPECT_EQ(plan->points,
            (std::vector<od::Point3>{{0, 0, 1}, {4, 0, 1}, {4, 3, 1}, {0, 3, 1}}));
  std::optional<od::VertexList> round = db().Vertices(added[2]);
  ASSERT_TRUE(round);
  EXPECT_TRUE(round->closed);
  EXPECT_GE(round->points.size(), 40u);
}

TEST_F(PolyCommandsTest, TwoDCarriesRecordsPropertiesAndClassificationOfASpline) {
  Define("A", {Column("NAME", Value::Character(""))});
  od::EntityId spline = Spline();
  model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), spline));
  auto at = std::find_if(tags.begin(), tags.end(), [](const model::Tag& t) { return t.code == 8; });
  tags.insert(at + 1, {62, "5"});
  AttachValues(spline, "A", {Value::Character("x")});
  AttachValues(spline, "A", {Value::Character("y")});
  ASSERT_TRUE(sdoc().project.Classify(spline, "Kerb").ok());
  const std::string saved = Saved("before.dxf");

  EXPECT_EQ(Run("VELTOR_2POLY", {spline}, {"4"}), Done(k2d, "4", 1, 1));
  od::EntityId made = db().LastEntity();
  EXPECT_FALSE(db().CanOpen(spline));
  EXPECT_EQ(db().EntityType(made), "LWPOLYLINE");
  EXPECT_EQ(Records(made), (std::vector<std::string>{"A[x]", "A[y]"}));
  EXPECT_EQ(sdoc().project.ClassificationTags(made), (std::vector<std::string>{"Kerb"}));
  EXPECT_EQ(db().Properties(made)->color, 5);
  std::optional<od::VertexList> path = db().Vertices(made);
  ASSERT_TRUE(path);
  EXPECT_EQ(path->points.front(), (od::Point3{40, 0, 0}));
  EXPECT_EQ(path->points.back(), (od::Point3{44, 0, 0}));
  ExpectUndoRestores(saved, "VELTOR_2POLY");
}

TEST(PolylinePlaneTest, TiltedPlanarPointsKeepTheirPlaneFacingUp) {
  // A square in the plane x = z, listed clockwise seen from above.
  PolylinePlane plane = ChoosePlane({{0, 0, 0}, {0, 2, 0}, {2, 2, 2}, {2, 0, 2}});
  EXPECT_NEAR(plane.normal.x, -std::sqrt(0.5), 1e-12);
  EXPECT_NEAR(plane.normal.y, 0.0, 1e-12);
  EXPECT_NEAR(plane.normal.z, std::sqrt(0.5), 1e-12);
  EXPECT_EQ(plane.points[2], (od::Point3{2, 2, 2}));
  // A sloping straight line fixes no plane: it is laid flat.
  PolylinePlane slope = ChoosePlane({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
  EXPECT_EQ(slope.normal, (od::Point3{0, 0, 1}));
  EXPECT_EQ(slope.points[2], (od::Point3{2, 2, 0}));
}

}  // namespace
}  // namespace veltor::commands
