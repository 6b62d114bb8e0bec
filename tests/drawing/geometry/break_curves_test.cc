// Breaking lines, 3D polylines, bulged polylines, arcs and circles, against hand-worked cases.
#include <gtest/gtest.h>

#include <cmath>

#include "drawing/geometry/break_arc.h"
#include "drawing/geometry/break_bulge_polyline.h"
#include "drawing/geometry/break_path.h"
#include "drawing/geometry/break_stretches.h"
#include "test_util.h"

namespace veltor::geom {
namespace {

constexpr double kTol = 1e-12;

void ExpectPoints(const std::vector<Vec3>& expected, const std::vector<Vec3>& actual) {
  ASSERT_EQ(expected.size(), actual.size());
  for (size_t i = 0; i < expected.size(); ++i) ExpectNear(expected[i], actual[i], kTol);
}

// Vertices (x, y, bulge) of a broken lightweight polyline.
void ExpectVertices(const std::vector<BulgeVertex>& expected, const LwPolyline& actual) {
  ASSERT_EQ(expected.size(), actual.vertices.size());
  EXPECT_FALSE(actual.closed);
  for (size_t i = 0; i < expected.size(); ++i) {
    ExpectNear(expected[i].point, actual.vertices[i].point, kTol);
    EXPECT_NEAR(expected[i].bulge, actual.vertices[i].bulge, kTol) << "vertex " << i;
  }
}

TEST(BreakLineTest, RemovesThePartBetweenTheProjectedPointsInEitherOrder) {
  const Polyline3d line{{{0, 0, 0}, {10, 0, 0}}, false};
  for (bool swapped : {false, true}) {
    Vec3 a{3, 1, 0}, b{7, -1, 4};
    if (swapped) std::swap(a, b);
    auto pieces = BreakPath(line, a, b);
    ASSERT_TRUE(pieces.ok()) << pieces.message();
    ASSERT_EQ(2u, pieces->size());
    ExpectPoints({{0, 0, 0}, {3, 0, 0}}, (*pieces)[0].points);
    ExpectPoints({{7, 0, 0}, {10, 0, 0}}, (*pieces)[1].points);
  }
}

TEST(BreakLineTest, APointAtAnEndLeavesOnePieceAndEqualPointsSplitWithoutGap) {
  const Polyline3d line{{{0, 0, 0}, {10, 0, 0}}, false};
  auto end = BreakPath(line, {-5, 0, 0}, {4, 0, 0});  // projected onto the start
  ASSERT_TRUE(end.ok());
  ASSERT_EQ(1u, end->size());
  ExpectPoints({{4, 0, 0}, {10, 0, 0}}, (*end)[0].points);

  auto split = BreakPath(line, {5, 2, 0}, {5, 2, 0});
  ASSERT_TRUE(split.ok());
  ASSERT_EQ(2u, split->size());
  ExpectPoints({{0, 0, 0}, {5, 0, 0}}, (*split)[0].points);
  ExpectPoints({{5, 0, 0}, {10, 0, 0}}, (*split)[1].points);
}

TEST(BreakLineTest, RefusesBreaksThatLeaveNothingOrChangeNothing) {
  const Polyline3d line{{{0, 0, 0}, {10, 0, 0}}, false};
  auto all = BreakPath(line, {0, 0, 0}, {10, 0, 0});
  ASSERT_FALSE(all.ok());
  EXPECT_EQ("break: nothing would be left", all.message());
  auto at_end = BreakPath(line, {10, 0, 0}, {11, 0, 0});
  ASSERT_FALSE(at_end.ok());
  EXPECT_EQ("break: a point at the end of the object does not break it", at_end.message());
}

TEST(BreakPolyline3dTest, OpenPathKeepsTheVerticesOutsideTheGap) {
  const Polyline3d path{{{0, 0, 0}, {10, 0, 0}, {10, 10, 5}, {20, 10, 5}}, false};
  auto pieces = BreakPath(path, {5, 1, 0}, {10, 4, 2});
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(2u, pieces->size());
  ExpectPoints({{0, 0, 0}, {5, 0, 0}}, (*pieces)[0].points);
  ExpectPoints({{10, 4, 2}, {10, 10, 5}, {20, 10, 5}}, (*pieces)[1].points);
}

TEST(BreakPolyline3dTest, ClosedPathBecomesOneOpenPathFromTheSecondPointRoundToTheFirst) {
  const Polyline3d square{{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}, true};
  // Gap from (10,5) forward to (5,10): what stays runs on through vertex 0.
  auto pieces = BreakPath(square, {12, 5, 0}, {5, 12, 0});
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(1u, pieces->size());
  EXPECT_FALSE((*pieces)[0].closed);
  ExpectPoints({{5, 10, 0}, {0, 10, 0}, {0, 0, 0}, {10, 0, 0}, {10, 5, 0}}, (*pieces)[0].points);
  // The gap itself may run through vertex 0: from (0,5) forward to (5,0).
  auto through_start = BreakPath(square, {-1, 5, 0}, {5, -1, 0});
  ASSERT_TRUE(through_start.ok());
  ExpectPoints({{5, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 5, 0}}, (*through_start)[0].points);
  // Equal points open the ring there.
  auto opened = BreakPath(square, {10, 5, 0}, {10, 5, 0});
  ASSERT_TRUE(opened.ok());
  ExpectPoints({{10, 5, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}, {10, 0, 0}, {10, 5, 0}},
               (*opened)[0].points);
}

TEST(BreakLwPolylineTest, BulgedSegmentCutAtItsMiddleGetsTheBulgeOfHalfTheAngle) {
  // A half circle from (0,0) to (2,0) about (1,0) through (1,-1), then a line to (4,0).
  LwPolyline p;
  p.vertices = {{{0, 0}, 1.0}, {{2, 0}, 0.0}, {{4, 0}, 0.0}};
  auto pieces = BreakLwPolyline(p, {1, -3}, {3, 1});
  ASSERT_TRUE(pieces.ok()) << pieces.message();
  ASSERT_EQ(2u, pieces->size());
  ExpectVertices({{{0, 0}, std::tan(kPi / 8)}, {{1, -1}, 0.0}}, (*pieces)[0]);
  ExpectVertices({{{3, 0}, 0.0}, {{4, 0}, 0.0}}, (*pieces)[1]);
}

TEST(BreakLwPolylineTest, ClockwiseArcKeepsItsDirection) {
  // Clockwise half circle from (0,0) to (2,0) through (1,1); cut at (1,1) and at its end.
  LwPolyline p;
  p.vertices = {{{0, 0}, -1.0}, {{2, 0}, 0.0}};
  auto pieces = BreakLwPolyline(p, {1, 5}, {2, 0});
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(1u, pieces->size());
  ExpectVertices({{{0, 0}, -std::tan(kPi / 8)}, {{1, 1}, 0.0}}, (*pieces)[0]);
}

TEST(BreakLwPolylineTest, ClosedPolylineBecomesOneOpenPolylineStartingAfterTheGap) {
  // A square whose closing segment is a half circle from (0,10) to (0,0) about (0,5) through
  // (-5,5).
  LwPolyline p;
  p.closed = true;
  p.vertices = {{{0, 0}, 0.0}, {{10, 0}, 0.0}, {{10, 10}, 0.0}, {{0, 10}, 1.0}};
  auto pieces = BreakLwPolyline(p, {5, 0}, {5, 10});
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(1u, pieces->size());
  ExpectVertices({{{5, 10}, 0.0}, {{0, 10}, 1.0}, {{0, 0}, 0.0}, {{5, 0}, 0.0}}, (*pieces)[0]);

  // A gap from the middle of the closing arc to (5,0): the arc keeps its first quarter turn.
  auto through_arc = BreakLwPolyline(p, {-9, 5}, {5, 0});
  ASSERT_TRUE(through_arc.ok());
  ExpectVertices({{{5, 0}, 0.0}, {{10, 0}, 0.0}, {{10, 10}, 0.0}, {{0, 10}, std::tan(kPi / 8)},
                  {{-5, 5}, 0.0}},
                 (*through_arc)[0]);
}

TEST(BreakLwPolylineTest, WidthsAreInterpolatedAtTheCut) {
  LwPolyline p;
  p.vertices = {{{0, 0}, 0.0}, {{10, 0}, 0.0}, {{20, 0}, 0.0}};
  p.widths = {{0.0, 2.0}, {4.0, 4.0}, {0.0, 0.0}};
  auto pieces = BreakLwPolyline(p, {5, 0}, {15, 0});
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(2u, pieces->size());
  ASSERT_EQ(2u, (*pieces)[0].widths.size());
  EXPECT_DOUBLE_EQ(0.0, (*pieces)[0].widths[0].start);
  EXPECT_DOUBLE_EQ(1.0, (*pieces)[0].widths[0].end);
  EXPECT_DOUBLE_EQ(4.0, (*pieces)[1].widths[0].start);
  EXPECT_DOUBLE_EQ(4.0, (*pieces)[1].widths[0].end);
}

TEST(BreakArcTest, ArcCrossingAngleZeroLosesThePartBetween) {
  // From 350 to 380 degrees (20 past zero), radius 2 about (1,1); cut at 0 and 10 degrees.
  const double deg = kPi / 180;
  const ArcSpan arc{350 * deg, 380 * deg};
  auto pieces = BreakArc({1, 1}, 2, arc, {5, 1}, {1 + std::cos(10 * deg), 1 + std::sin(10 * deg)});
  ASSERT_TRUE(pieces.ok()) << pieces.message();
  ASSERT_EQ(2u, pieces->size());
  EXPECT_NEAR(350 * deg, (*pieces)[0].start, kTol);
  EXPECT_NEAR(360 * deg, (*pieces)[0].end, kTol);
  EXPECT_NEAR(370 * deg, (*pieces)[1].start, kTol);
  EXPECT_NEAR(380 * deg, (*pieces)[1].end, kTol);
}

TEST(BreakArcTest, PointsBeyondTheEndsGoToTheNearerEnd) {
  const ArcSpan quarter{0, kPi / 2};
  EXPECT_NEAR(kPi / 2, NearestArcOffset({0, 0}, 1, quarter, {-1, 0.1}), kTol);
  EXPECT_NEAR(0.0, NearestArcOffset({0, 0}, 1, quarter, {0.1, -1}), kTol);
  EXPECT_NEAR(kPi / 4, NearestArcOffset({0, 0}, 1, quarter, {3, 3}), kTol);
}

TEST(BreakCircleTest, CounterClockwiseGapFromFirstToSecondPoint) {
  // Gap from 90 degrees round to 0: what stays is the quarter from 0 to 90.
  auto kept = BreakCircle({0, 0}, 2, {0, 5}, {5, 0});
  ASSERT_TRUE(kept.ok());
  EXPECT_NEAR(0.0, kept->start, kTol);
  EXPECT_NEAR(kPi / 2, kept->end, kTol);
  // Swapping the points keeps the other three quarters.
  auto other = BreakCircle({0, 0}, 2, {5, 0}, {0, 5});
  ASSERT_TRUE(other.ok());
  EXPECT_NEAR(kPi / 2, other->start, kTol);
  EXPECT_NEAR(2 * kPi, other->end, kTol);
}

TEST(BreakCircleTest, GapThroughAngleZero) {
  // Gap from 300 degrees through 0 to 30: what stays runs from 30 to 300.
  const double deg = kPi / 180;
  auto kept = BreakCircle({0, 0}, 2, {std::cos(300 * deg), std::sin(300 * deg)},
                          {std::cos(30 * deg), std::sin(30 * deg)});
  ASSERT_TRUE(kept.ok());
  EXPECT_NEAR(30 * deg, kept->start, kTol);
  EXPECT_NEAR(300 * deg, kept->end, kTol);
  auto same = BreakCircle({0, 0}, 2, {1, 1}, {3, 3});
  ASSERT_FALSE(same.ok());
  EXPECT_EQ("break: a circle needs two different break points", same.message());
}

}  // namespace
}  // namespace veltor::geom
