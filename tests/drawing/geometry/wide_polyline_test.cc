// The drawn band of polylines with width: square ends, mitred joints, wide arcs; thickness.
#include <gtest/gtest.h>

#include <cmath>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/wide_polyline.h"
#include "test_util.h"

namespace veltor::geom {
namespace {

LwPolyline Wide(std::vector<Vec2> points, double width, bool closed = false) {
  LwPolyline p;
  for (Vec2 v : points) p.vertices.push_back(BulgeVertex{v, 0.0});
  p.widths.assign(points.size(), SegmentWidth{width, width});
  p.closed = closed;
  return p;
}

TEST(WidePolylineTest, StraightSegmentIsABandWithSquareEnds) {
  ExpectBox({0, -1, 0}, {10, 1, 0}, BoundsOf(Wide({{0, 0}, {10, 0}}, 2.0)), 1e-15);
}

TEST(WidePolylineTest, TaperedSegmentNarrowsToItsEndWidth) {
  LwPolyline p = Wide({{0, 0}, {10, 0}}, 0.0);
  p.widths[0] = {4.0, 0.0};
  ExpectBox({0, -2, 0}, {10, 2, 0}, BoundsOf(p), 1e-15);
}

TEST(WidePolylineTest, JointsAreMitred) {
  // A right-angle V: the outer edges meet sqrt(2) below the vertex.
  const double h = std::sqrt(0.5);
  ExpectBox({-10 - h, -std::sqrt(2.0), 0}, {10 + h, 10 + h, 0},
            BoundsOf(Wide({{-10, 10}, {0, 0}, {10, 10}}, 2.0)), 1e-13);
  // A 60-degree V: the mitre reaches half width / sin(30 degrees) = 2 below the vertex.
  const double x = 10 * std::tan(kPi / 6);
  EXPECT_NEAR(-2.0, BoundsOf(Wide({{-x, 10}, {0, 0}, {x, 10}}, 2.0)).min().y, 1e-13);
}

TEST(WidePolylineTest, ReversalKeepsSquareEnds) {
  // Going straight back: the edges are parallel and meet nowhere.
  ExpectBox({0, -1, 0}, {10, 1, 0}, BoundsOf(Wide({{0, 0}, {10, 0}, {0, 0}}, 2.0)), 1e-15);
}

TEST(WidePolylineTest, NearlyStraightJointIsNotMitred) {
  // A bend of 0.01 radians (below pi/100): each segment keeps its square end, so the inner
  // side is the first segment's end corner, not a mitre point a little further on.
  const double bend = 0.01;
  const LwPolyline p = Wide({{0, 0}, {10, 0}, {10 + 10 * std::cos(bend), 10 * std::sin(bend)}}, 2.0);
  const Extents box = BoundsOf(p);
  EXPECT_NEAR(-1.0, box.min().y, 1e-15);
  EXPECT_NEAR(10 * std::sin(bend) + std::cos(bend), box.max().y, 1e-13);
}

TEST(WidePolylineTest, ClosingJointIsMitredOnlyWhenClosed) {
  // A triangle with a 45-degree corner at the origin. Closed, the corner is mitred and
  // reaches 1 / tan(22.5 degrees) = 1 + sqrt(2) to the left; drawn open back to its start
  // point, both ends stay square, as the CAD host draws them.
  const std::vector<Vec2> triangle{{0, 0}, {10, 0}, {10, 10}};
  EXPECT_NEAR(-(1 + std::sqrt(2.0)), BoundsOf(Wide(triangle, 2.0, true)).min().x, 1e-13);
  const LwPolyline open = Wide({{0, 0}, {10, 0}, {10, 10}, {0, 0}}, 2.0);
  EXPECT_NEAR(-std::sqrt(0.5), BoundsOf(open).min().x, 1e-13);
}

TEST(WidePolylineTest, ClosedPolylineWithArcJoinsItsStraightRunAcrossTheFirstVertex) {
  // The triangle again, its right side bowed outwards: the straight run from (10,10)
  // through the first vertex to (10,0) is still mitred at the 45-degree corner.
  LwPolyline p = Wide({{0, 0}, {10, 0}, {10, 10}}, 2.0, true);
  p.vertices[1].bulge = 0.1;
  EXPECT_NEAR(-(1 + std::sqrt(2.0)), BoundsOf(p).min().x, 1e-13);
}

TEST(WidePolylineTest, ArcOfConstantWidthIsAnAnnulusSector) {
  // Half circle of radius 1 below the chord (-1,0)-(1,0), 0.5 wide: outer radius 1.25.
  LwPolyline p = Wide({{-1, 0}, {1, 0}}, 0.5);
  p.vertices[0].bulge = 1.0;
  ExpectBox({-1.25, -1.25, 0}, {1.25, 0, 0}, BoundsOf(p), 1e-15);
  // Wider than the diameter: the inner side passes the centre to the other side.
  p.widths[0] = {3.0, 3.0};
  ExpectBox({-2.5, -2.5, 0}, {2.5, 0.5, 0}, BoundsOf(p), 1e-15);
}

TEST(WidePolylineTest, TaperedArcMatchesDenseSampling) {
  // A quarter circle of radius 10 widening from 0 to 4: the outer side r = 10 + 2t still
  // moves right at the start, so its rightmost point is inside the arc.
  LwPolyline p = Wide({{10, 0}, {0, 10}}, 0.0);
  p.vertices[0].bulge = BulgeFromSweep(kPi / 2);
  p.widths[0] = {0.0, 4.0};
  Extents dense;
  for (int i = 0; i <= 200000; ++i) {
    const double t = i / 200000.0, angle = t * kPi / 2;
    for (double side : {1.0, -1.0}) {
      const double r = 10 + side * 2 * t;
      dense.Add(Vec3(r * std::cos(angle), r * std::sin(angle), 0));
    }
  }
  const Extents box = BoundsOf(p);
  EXPECT_GT(box.max().x, 10.05);
  ExpectNear(dense.min(), box.min(), 1e-9);
  ExpectNear(dense.max(), box.max(), 1e-9);
  EXPECT_GE(box.max().x, dense.max().x);  // sampling can only fall short
}

TEST(WidePolylineTest, BandIsInTheOcsAtItsElevation) {
  LwPolyline p = Wide({{0, 0}, {10, 0}}, 2.0);
  p.normal = {0, 0, -1};  // OCS x runs along world -x
  p.elevation = 5;
  ExpectBox({-10, -1, -5}, {0, 1, -5}, BoundsOf(p), 1e-15);
}

TEST(WidePolylineTest, ZeroWidthsAreAPlainPolyline) {
  LwPolyline p = Wide({{0, 0}, {10, 0}}, 0.0);
  EXPECT_FALSE(HasWidth(p));
  ExpectBox({0, 0, 0}, {10, 0, 0}, BoundsOf(p), 0.0);
}

TEST(ThicknessTest, SweepAddsTheMovedBox) {
  const Extents box({0, 0, 0}, {1, 1, 0});
  ExpectBox({0, 0, -3}, {1, 1, 0}, Swept(box, ThicknessOffset(3.0, {0, 0, -2})), 1e-15);
  ExpectBox({0, 0, 0}, {3, 1, 0}, Swept(box, ThicknessOffset(2.0, {5, 0, 0})), 1e-15);
  EXPECT_FALSE(Swept(Extents(), {1, 2, 3}).valid());
}

}  // namespace
}  // namespace veltor::geom
