#include "drawing/geometry/conic.h"

#include <gtest/gtest.h>

#include <cmath>

#include "test_util.h"

namespace veltor::geom {
namespace {

// Perimeter of the ellipse with semi-axes 2 and 1 (computed independently to 15 digits).
constexpr double kEllipse21Perimeter = 9.688448220547675;

TEST(CircleTest, FullCircleLengthAndExtents) {
  const Circle c{{1, 2, 3}, 2.0, {0, 0, 1}};
  EXPECT_NEAR(4 * kPi, LengthOf(c), 1e-15);
  ExpectBox({-1, 0, 3}, {3, 4, 3}, BoundsOf(c), 1e-15);
}

TEST(CircleTest, NegativeNormalMirrorsX) {
  // The centre is in the OCS, whose X axis is world -X for normal (0,0,-1).
  const Circle c{{5, 0, 0}, 1.0, {0, 0, -1}};
  ExpectBox({-6, -1, 0}, {-4, 1, 0}, BoundsOf(c), 1e-15);
}

TEST(CircleTest, InclinedCircleExtents) {
  // Tilted 45 degrees about Y: each half-extent is r * sqrt(1 - n_i^2).
  const Vec3 n = Vec3(1, 0, 1).Normalized();
  const Circle c{{0, 0, 0}, 1.0, n};
  const double h = std::sqrt(0.5);
  ExpectBox({-h, -1, -h}, {h, 1, h}, BoundsOf(c), 1e-15);
  EXPECT_NEAR(kTwoPi, LengthOf(ToConic(c)), 1e-14);
}

TEST(ArcTest, LengthOfQuarterAndWrappingArcs) {
  EXPECT_NEAR(kPi / 2, LengthOf(Arc{{0, 0, 0}, 1.0, 0.0, 90.0, {0, 0, 1}}), 1e-15);
  // 350 -> 10 runs counter-clockwise through 0: 20 degrees.
  EXPECT_NEAR(2 * kPi / 9, LengthOf(Arc{{0, 0, 0}, 2.0, 350.0, 10.0, {0, 0, 1}}), 1e-14);
  // Equal angles are a full turn.
  EXPECT_NEAR(kTwoPi, LengthOf(Arc{{0, 0, 0}, 1.0, 30.0, 30.0, {0, 0, 1}}), 1e-14);
}

TEST(ArcTest, ExtentsIncludeAxisPointsOnlyWhenSwept) {
  const double c10 = std::cos(kPi / 18), s10 = std::sin(kPi / 18);
  // Through 0 degrees: x reaches the radius.
  ExpectBox({c10, -s10, 0}, {1, s10, 0}, BoundsOf(Arc{{0, 0, 0}, 1.0, 350.0, 10.0, {0, 0, 1}}),
            1e-15);
  // The complement misses 0 degrees but passes 90, 180 and 270.
  ExpectBox({-1, -1, 0}, {c10, 1, 0}, BoundsOf(Arc{{0, 0, 0}, 1.0, 10.0, 350.0, {0, 0, 1}}),
            1e-15);
}

TEST(ArcTest, MirroredArcRunsClockwiseInWorld) {
  // Normal -Z: OCS angles 0..90 are world points (-1,0) .. (0,1).
  const ConicArc c = ToConic(Arc{{0, 0, 0}, 1.0, 0.0, 90.0, {0, 0, -1}});
  ExpectNear({-1, 0, 0}, c.StartPoint(), 1e-15);
  ExpectNear({0, 1, 0}, c.EndPoint(), 1e-15);
  ExpectBox({-1, 0, 0}, {0, 1, 0}, BoundsOf(c), 1e-15);
}

TEST(EllipseTest, FullEllipseLengthAndExtents) {
  const Ellipse e{{0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kTwoPi, {0, 0, 1}};
  EXPECT_NEAR(kEllipse21Perimeter, LengthOf(e), 1e-10);
  ExpectBox({-2, -1, 0}, {2, 1, 0}, BoundsOf(e), 1e-15);
}

TEST(EllipseTest, PartialEllipses) {
  const Ellipse half{{0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kPi, {0, 0, 1}};
  EXPECT_NEAR(kEllipse21Perimeter / 2, LengthOf(half), 1e-10);
  ExpectBox({-2, 0, 0}, {2, 1, 0}, BoundsOf(half), 1e-15);
  const Ellipse round_quarter{{0, 0, 0}, {1, 0, 0}, 1.0, 0.0, kPi / 2, {0, 0, 1}};
  EXPECT_NEAR(kPi / 2, LengthOf(round_quarter), 1e-14);
}

TEST(EllipseTest, RotatedEllipseExtents) {
  // Major axis (a = 2) at 45 degrees, b = 1: half-extent sqrt(a^2 cos^2 + b^2 sin^2).
  const Ellipse e{{1, 1, 0}, {std::sqrt(2.0), std::sqrt(2.0), 0}, 0.5, 0.0, kTwoPi, {0, 0, 1}};
  const double h = std::sqrt(2.5);
  ExpectBox({1 - h, 1 - h, 0}, {1 + h, 1 + h, 0}, BoundsOf(e), 1e-14);
}

TEST(EllipseTest, NegativeNormalPutsMinorAxisOnOtherSide) {
  // Minor axis = normal x major: (0,0,-1) x (2,0,0) = (0,-2,0), scaled by 0.5.
  const Ellipse e{{0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kPi / 2, {0, 0, -1}};
  ExpectNear({0, -1, 0}, ToConic(e).EndPoint(), 1e-15);
}

TEST(ConicTest, ScaledCircleBecomesEllipse) {
  const ConicArc c =
      ToConic(Circle{{0, 0, 0}, 1.0, {0, 0, 1}}).Transformed(Matrix3d::Scale(2, 1, 1));
  EXPECT_FALSE(c.IsCircular());
  EXPECT_NEAR(kEllipse21Perimeter, LengthOf(c), 1e-10);
  ExpectBox({-2, -1, 0}, {2, 1, 0}, BoundsOf(c), 1e-15);
}

TEST(ConicTest, ZeroRadiusIsAPoint) {
  ExpectBox({1, 2, 0}, {1, 2, 0}, BoundsOf(Circle{{1, 2, 0}, 0.0, {0, 0, 1}}), 0.0);
  EXPECT_EQ(0.0, LengthOf(Circle{{1, 2, 0}, 0.0, {0, 0, 1}}));
}

}  // namespace
}  // namespace veltor::geom
