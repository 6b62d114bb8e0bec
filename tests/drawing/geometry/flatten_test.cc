#include "drawing/geometry/flatten.h"

#include <gtest/gtest.h>

#include <cmath>

#include "test_util.h"

namespace veltor::geom {
namespace {

// Largest distance from a chord's midpoint to the circle: the chord (sagitta) error.
double MaxChordError(const FlatPath& path, const Vec3& center, double radius) {
  double worst = 0.0;
  const size_t n = path.points.size();
  const size_t segments = path.closed ? n : n - 1;
  for (size_t i = 0; i < segments; ++i) {
    const Vec3 mid = (path.points[i] + path.points[(i + 1) % n]) * 0.5;
    worst = std::max(worst, radius - Distance(mid, center));
  }
  return worst;
}

TEST(FlattenTest, CircleAtPrecisionOneIsASquare) {
  const FlatPath p = Flatten(Circle{{0, 0, 0}, 2.0, {0, 0, 1}}, 1);
  EXPECT_TRUE(p.closed);
  ASSERT_EQ(4u, p.points.size());
  ExpectNear({2, 0, 0}, p.points[0], 1e-15);
  ExpectNear({0, 2, 0}, p.points[1], 1e-15);
  ExpectNear({-2, 0, 0}, p.points[2], 1e-15);
  ExpectNear({0, -2, 0}, p.points[3], 1e-15);
  EXPECT_NEAR(2.0 * (1 - std::sqrt(0.5)), MaxChordError(p, {0, 0, 0}, 2.0), 1e-15);
}

TEST(FlattenTest, CircleAtPrecision99) {
  const FlatPath p = Flatten(Circle{{0, 0, 0}, 1.0, {0, 0, 1}}, 99);
  EXPECT_TRUE(p.closed);
  EXPECT_EQ(396u, p.points.size());
  EXPECT_NEAR(3.146857666691538e-05, MaxChordError(p, {0, 0, 0}, 1.0), 1e-12);
  for (const Vec3& q : p.points) EXPECT_NEAR(1.0, q.Length(), 1e-15);
}

TEST(FlattenTest, PrecisionIsClamped) {
  const Circle c{{0, 0, 0}, 1.0, {0, 0, 1}};
  EXPECT_EQ(4u, Flatten(c, 0).points.size());
  EXPECT_EQ(4u, Flatten(c, -7).points.size());
  EXPECT_EQ(396u, Flatten(c, 1000).points.size());
}

TEST(FlattenTest, ArcsGetTheirShareAndExactEnds) {
  const Arc quarter{{0, 0, 0}, 1.0, 0.0, 90.0, {0, 0, 1}};
  FlatPath p = Flatten(quarter, 1);
  EXPECT_FALSE(p.closed);
  ASSERT_EQ(2u, p.points.size());
  p = Flatten(quarter, 10);
  ASSERT_EQ(11u, p.points.size());  // 40 per turn, a quarter: 10 segments
  ExpectNear({1, 0, 0}, p.points.front(), 1e-15);
  ExpectNear({0, 1, 0}, p.points.back(), 1e-15);
  // A sliver still gets one segment.
  EXPECT_EQ(2u, Flatten(Arc{{0, 0, 0}, 1.0, 0.0, 0.001, {0, 0, 1}}, 1).points.size());
}

TEST(FlattenTest, EllipsePointsLieOnTheEllipse) {
  const FlatPath p = Flatten(Ellipse{{0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kTwoPi, {0, 0, 1}}, 7);
  EXPECT_TRUE(p.closed);
  EXPECT_EQ(28u, p.points.size());
  for (const Vec3& q : p.points) {
    EXPECT_NEAR(1.0, q.x * q.x / 4 + q.y * q.y, 1e-14);
  }
}

TEST(FlattenTest, DegreeOneSplineGivesItsControlPoints) {
  SplineData d;
  d.degree = 1;
  d.control_points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {3, 1, 0}};
  d.knots = {0, 0, 1, 2, 3, 3};
  const FlatPath p = Flatten(NurbsCurve::Make(d).value(), 50);
  EXPECT_FALSE(p.closed);
  ASSERT_EQ(4u, p.points.size());
  for (size_t i = 0; i < 4; ++i) ExpectNear(d.control_points[i], p.points[i], 1e-15);
}

TEST(FlattenTest, PeriodicCubicSplineGivesClosedSmoothRing) {
  SplineData d;
  d.degree = 3;
  d.control_points = {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0}};
  d.knots = {0, 1, 2, 3, 4};
  d.periodic = d.closed = true;
  const FlatPath p = Flatten(NurbsCurve::Make(d).value(), 10);
  EXPECT_TRUE(p.closed);
  ASSERT_EQ(40u, p.points.size());  // 4 spans x 10, first point not repeated
  EXPECT_GT(Distance(p.points.front(), p.points.back()), 1e-3);
  // Smooth: the turn between successive chords, the wrap-around included, stays small and
  // always to the left (a convex counter-clockwise loop).
  const size_t n = p.points.size();
  for (size_t i = 0; i < n; ++i) {
    const Vec2 a = (p.points[(i + 1) % n] - p.points[i]).Xy();
    const Vec2 b = (p.points[(i + 2) % n] - p.points[(i + 1) % n]).Xy();
    const double turn = std::atan2(a.Cross(b), a.Dot(b));
    EXPECT_GT(turn, 0.0) << i;
    EXPECT_LT(turn, 0.25) << i;
  }
}

TEST(FlattenTest, VertexLimitHolds) {
  SplineData d;
  d.degree = 2;
  for (int i = 0; i < 6000; ++i) d.control_points.push_back({double(i), double(i % 2), 0});
  const NurbsCurve c = NurbsCurve::Make(d).value();
  const FlatPath p = Flatten(c, 99);
  EXPECT_LE(p.points.size(), kMaxFlattenVertices);
  EXPECT_GE(p.points.size(), 5999u);
  ExpectNear(c.PointAt(c.EndParam()), p.points.back(), 1e-12);
}

TEST(FlattenTest, BulgedPolylineKeepsVerticesAndAddsArcPoints) {
  LwPolyline sq;
  sq.vertices = {{{0, 0}, 1.0}, {{2, 0}, 0}, {{2, 2}, 0}, {{0, 2}, 0}};
  sq.closed = true;
  const FlatPath p = Flatten(sq, 1);  // half turn at 4 per turn: 2 segments, 1 new point
  EXPECT_TRUE(p.closed);
  ASSERT_EQ(5u, p.points.size());
  ExpectNear({0, 0, 0}, p.points[0], 0.0);
  ExpectNear({1, -1, 0}, p.points[1], 1e-15);
  ExpectNear({2, 0, 0}, p.points[2], 0.0);
  LwPolyline open = sq;
  open.closed = false;
  EXPECT_EQ(5u, Flatten(open, 1).points.size());  // 4 vertices + 1 arc point, no closure
}

TEST(FlattenTest, CircularCurvesToExactBulges) {
  const LwPolyline circle = ToBulgePolyline(Circle{{1, 1, 2}, 3.0, {0, 0, 1}});
  EXPECT_TRUE(circle.closed);
  EXPECT_DOUBLE_EQ(2.0, circle.elevation);
  EXPECT_NEAR(6 * kPi, LengthOf(circle), 1e-14);
  EXPECT_NEAR(9 * kPi, AreaOf(circle), 1e-13);
  const LwPolyline arc = ToBulgePolyline(Arc{{0, 0, 0}, 2.0, 0.0, 270.0, {0, 0, 1}});
  ASSERT_EQ(3u, arc.vertices.size());
  EXPECT_LT(arc.vertices[0].bulge, 1.0);
  EXPECT_NEAR(3 * kPi, LengthOf(arc), 1e-14);
  ExpectNear({0, -2}, arc.vertices[2].point, 1e-15);
}

}  // namespace
}  // namespace veltor::geom
