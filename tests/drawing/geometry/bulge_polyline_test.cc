#include <gtest/gtest.h>

#include <cmath>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/polyline.h"
#include "test_util.h"

namespace veltor::geom {
namespace {

const double kQuarterBulge = std::tan(kPi / 8);  // tan(22.5 degrees): a 90-degree arc

TEST(BulgeTest, QuarterArcCentreRadiusLength) {
  const auto arc = BulgeToArc({1, 0}, {0, 1}, kQuarterBulge);
  ASSERT_TRUE(arc.has_value());
  ExpectNear({0, 0}, arc->center, 1e-15);
  EXPECT_NEAR(1.0, arc->radius, 1e-15);
  EXPECT_NEAR(kPi / 2, arc->sweep, 1e-15);
  EXPECT_NEAR(kPi / 2, BulgeSegmentLength({1, 0}, {0, 1}, kQuarterBulge), 1e-15);
}

TEST(BulgeTest, StraightAndDegenerateSegments) {
  EXPECT_FALSE(BulgeToArc({0, 0}, {3, 4}, 0.0).has_value());
  EXPECT_FALSE(BulgeToArc({1, 1}, {1, 1}, 0.5).has_value());
  EXPECT_DOUBLE_EQ(5.0, BulgeSegmentLength({0, 0}, {3, 4}, 0.0));
}

TEST(BulgeTest, QuarterArcExtentsIncludeAxisExtremeInside) {
  // From -45 to +45 degrees on the unit circle: passes x = 1 at 0 degrees.
  const double h = std::sqrt(0.5);
  ExpectBox({h, -h, 0}, {1, h, 0}, BulgeSegmentExtents({h, -h}, {h, h}, kQuarterBulge), 1e-15);
  // Between two axis points the end points are the extremes.
  ExpectBox({0, 0, 0}, {1, 1, 0}, BulgeSegmentExtents({1, 0}, {0, 1}, kQuarterBulge), 1e-15);
}

TEST(BulgeTest, PositiveBulgeTurnsCounterClockwiseToTheRight) {
  // A half circle from (0,0) to (2,0): counter-clockwise about (1,0) passes (1,-1).
  ExpectBox({0, -1, 0}, {2, 0, 0}, BulgeSegmentExtents({0, 0}, {2, 0}, 1.0), 1e-15);
  ExpectBox({0, 0, 0}, {2, 1, 0}, BulgeSegmentExtents({0, 0}, {2, 0}, -1.0), 1e-15);
}

TEST(BulgeTest, MajorArcCentreIsRightOfChord) {
  // Bulge tan(270/4): three quarters of a circle from (1,0) to (0,-1) about the origin.
  const auto arc = BulgeToArc({1, 0}, {0, -1}, std::tan(3 * kPi / 8));
  ASSERT_TRUE(arc.has_value());
  ExpectNear({0, 0}, arc->center, 1e-14);
  EXPECT_NEAR(1.5 * kPi, BulgeSegmentLength({1, 0}, {0, -1}, std::tan(3 * kPi / 8)), 1e-14);
  ExpectBox({-1, -1, 0}, {1, 1, 0},
            BulgeSegmentExtents({1, 0}, {0, -1}, std::tan(3 * kPi / 8)), 1e-14);
}

TEST(BulgeTest, ClockwiseConicRunsFromStartToEnd) {
  const ConicArc c = BulgeToConic({0, 0}, {2, 0}, -1.0, 3.0);
  ExpectNear({0, 0, 3}, c.StartPoint(), 1e-15);
  ExpectNear({2, 0, 3}, c.EndPoint(), 1e-15);
  ExpectNear({1, 1, 3}, c.PointAt(c.start + c.sweep / 2), 1e-15);
}

LwPolyline Square(double first_edge_bulge) {
  LwPolyline p;
  p.vertices = {{{0, 0}, first_edge_bulge}, {{2, 0}, 0}, {{2, 2}, 0}, {{0, 2}, 0}};
  p.closed = true;
  return p;
}

TEST(PolylineTest, SquareWithOutwardHalfDisc) {
  const LwPolyline p = Square(1.0);
  EXPECT_NEAR(4.0 + kPi / 2, AreaOf(p), 1e-14);
  EXPECT_NEAR(6.0 + kPi, LengthOf(p), 1e-14);
  ExpectBox({0, -1, 0}, {2, 2, 0}, BoundsOf(p), 1e-15);
}

TEST(PolylineTest, SquareWithInwardHalfDisc) {
  EXPECT_NEAR(4.0 - kPi / 2, AreaOf(Square(-1.0)), 1e-14);
  ExpectBox({0, 0, 0}, {2, 2, 0}, BoundsOf(Square(-1.0)), 1e-15);
}

TEST(PolylineTest, ClockwiseRingUsesClosingSegmentBulge) {
  // The same shape drawn clockwise: the bulged edge is now the closing one, (2,0)->(0,0),
  // bulging outward (to its left), hence a negative bulge.
  LwPolyline p;
  p.vertices = {{{0, 0}, 0}, {{0, 2}, 0}, {{2, 2}, 0}, {{2, 0}, -1.0}};
  p.closed = true;
  EXPECT_NEAR(-(4.0 + kPi / 2), SignedArea(p.vertices, true), 1e-14);
  EXPECT_NEAR(4.0 + kPi / 2, AreaOf(p), 1e-14);
  EXPECT_NEAR(6.0 + kPi, LengthOf(p), 1e-14);
}

TEST(PolylineTest, OpenPolylineAreaIsOfTheClosedRingWithStraightClosure) {
  LwPolyline p;
  p.vertices = {{{0, 0}, 0}, {{2, 0}, 0}, {{2, 2}, 1.0}};  // last bulge unused when open
  EXPECT_NEAR(2.0, AreaOf(p), 1e-15);
  EXPECT_NEAR(4.0, LengthOf(p), 1e-15);
}

TEST(PolylineTest, AreaKeepsPrecisionFarFromOrigin) {
  LwPolyline p = Square(1.0);
  for (BulgeVertex& v : p.vertices) v.point += Vec2(1e7, 1e7);
  EXPECT_NEAR(4.0 + kPi / 2, AreaOf(p), 1e-8);
}

TEST(PolylineTest, TwoVertexBulgedRingIsACircle) {
  LwPolyline p;
  p.vertices = {{{-1, 0}, 1.0}, {{1, 0}, 1.0}};
  p.closed = true;
  EXPECT_NEAR(kPi, AreaOf(p), 1e-14);
  EXPECT_NEAR(kTwoPi, LengthOf(p), 1e-14);
  ExpectBox({-1, -1, 0}, {1, 1, 0}, BoundsOf(p), 1e-15);
}

TEST(PolylineTest, ExtentsAreInWorldCoordinates) {
  LwPolyline p;
  p.vertices = {{{1, 0}, 0}, {{2, 0}, 0}};
  p.elevation = 3.0;
  p.normal = Vec3(0, 0, -1);
  ExpectBox({-2, 0, -3}, {-1, 0, -3}, BoundsOf(p), 1e-15);
  // An arc in a vertical plane (normal +X: OCS x -> world y, OCS y -> world z).
  LwPolyline q;
  q.vertices = {{{0, 0}, -1.0}, {{2, 0}, 0}};  // half circle above the chord in the OCS
  q.normal = Vec3(1, 0, 0);
  ExpectBox({0, 0, 0}, {0, 2, 1}, BoundsOf(q), 1e-15);
}

TEST(PolylineTest, EmptyAndSingleVertex) {
  EXPECT_FALSE(BoundsOf(LwPolyline()).valid());
  EXPECT_EQ(0.0, AreaOf(LwPolyline()));
  LwPolyline one;
  one.vertices = {{{4, 5}, 1.0}};
  one.closed = true;
  EXPECT_EQ(0.0, LengthOf(one));
  ExpectBox({4, 5, 0}, {4, 5, 0}, BoundsOf(one), 0.0);
}

TEST(Polyline3dTest, LengthAndExtents) {
  Polyline3d p;
  p.points = {{0, 0, 0}, {3, 4, 0}, {3, 4, 12}};
  EXPECT_DOUBLE_EQ(17.0, LengthOf(p));
  p.closed = true;
  EXPECT_DOUBLE_EQ(30.0, LengthOf(p));  // closing edge: |(3,4,12)| = 13
  ExpectBox({0, 0, 0}, {3, 4, 12}, BoundsOf(p), 0.0);
}

}  // namespace
}  // namespace veltor::geom
