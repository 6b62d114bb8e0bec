#include "drawing/geometry/nurbs.h"

#include <gtest/gtest.h>

#include <cmath>

#include "test_util.h"

namespace veltor::geom {
namespace {

NurbsCurve MakeOrDie(const SplineData& data) {
  Result<NurbsCurve> r = NurbsCurve::Make(data);
  EXPECT_TRUE(r.ok()) << r.message();
  return std::move(r.value());
}

SplineData QuarterCircle() {
  SplineData d;
  d.degree = 2;
  d.control_points = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  d.weights = {1.0, std::sqrt(0.5), 1.0};
  d.knots = {0, 0, 0, 1, 1, 1};
  return d;
}

// Uniform cubic over the corners of a square, first three points repeated at the end.
SplineData PeriodicSquare() {
  SplineData d;
  d.degree = 3;
  d.control_points = {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0},
                      {1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}};
  for (int i = 0; i <= 10; ++i) d.knots.push_back(i);
  d.closed = d.periodic = true;
  return d;
}

TEST(NurbsTest, RationalQuarterCircleLiesOnTheCircle) {
  const NurbsCurve c = MakeOrDie(QuarterCircle());
  for (int i = 0; i <= 20; ++i) {
    EXPECT_NEAR(1.0, c.PointAt(i / 20.0).Length(), 1e-15) << "t=" << i / 20.0;
  }
  const double h = std::sqrt(0.5);
  ExpectNear({h, h, 0}, c.PointAt(0.5), 1e-15);
  EXPECT_NEAR(kPi / 2, LengthOf(c), 1e-10);
  // The control point (1,1) is outside the curve; the extents are the curve's.
  ExpectBox({0, 0, 0}, {1, 1, 0}, BoundsOf(c), 1e-12);
}

TEST(NurbsTest, DerivativeOfRationalCurveIsTangent) {
  const NurbsCurve c = MakeOrDie(QuarterCircle());
  for (double t : {0.0, 0.3, 0.5, 0.9, 1.0}) {
    EXPECT_NEAR(0.0, c.DerivativeAt(t).Dot(c.PointAt(t)), 1e-14);
  }
  // At t = 0 the speed is 2 * w1/w0 * |P1 - P0| / (knot span) = sqrt(2).
  EXPECT_NEAR(std::sqrt(2.0), c.DerivativeAt(0.0).Length(), 1e-14);
}

TEST(NurbsTest, DegreeOneIsItsControlPolygon) {
  SplineData d;
  d.degree = 1;
  d.control_points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {3, 1, 0}};
  d.knots = {0, 0, 1, 2, 3, 3};
  const NurbsCurve c = MakeOrDie(d);
  ExpectNear({0.5, 0, 0}, c.PointAt(0.5), 1e-15);
  ExpectNear({1, 0.5, 0}, c.PointAt(1.5), 1e-15);
  ExpectNear({3, 1, 0}, c.PointAt(3.0), 0.0);
  EXPECT_NEAR(4.0, LengthOf(c), 1e-12);
  ExpectBox({0, 0, 0}, {3, 1, 0}, BoundsOf(c), 1e-15);
}

TEST(NurbsTest, BezierExtentsAreTighterThanControlPolygon) {
  SplineData d;
  d.degree = 3;
  d.control_points = {{0, 0, 0}, {1, 2, 0}, {2, 2, 0}, {3, 0, 0}};
  d.knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const NurbsCurve c = MakeOrDie(d);
  // Peak at t = 1/2: 3/8 * 2 + 3/8 * 2 = 1.5 (the control points reach 2).
  ExpectBox({0, 0, 0}, {3, 1.5, 0}, BoundsOf(c), 1e-14);
}

TEST(NurbsTest, InteriorExtremaInMultiSpanCurve) {
  // A clamped cubic with 2 spans whose highest point is inside a span.
  SplineData d;
  d.degree = 3;
  d.control_points = {{0, 0, 0}, {0, 3, 0}, {2, 3, 0}, {4, -3, 0}, {4, 0, 0}};
  d.knots = {0, 0, 0, 0, 0.5, 1, 1, 1, 1};
  const NurbsCurve c = MakeOrDie(d);
  const Extents box = BoundsOf(c);
  double max_y = -1e9, min_y = 1e9;
  for (int i = 0; i <= 200000; ++i) {
    const Vec3 p = c.PointAt(i / 200000.0);
    max_y = std::max(max_y, p.y);
    min_y = std::min(min_y, p.y);
  }
  // Dense sampling can only fall short of the true extreme, by at most ~1e-10 here.
  EXPECT_GE(box.max().y, max_y - 1e-15);
  EXPECT_LE(box.max().y - max_y, 1e-9);
  EXPECT_LE(box.min().y, min_y + 1e-15);
  EXPECT_LE(min_y - box.min().y, 1e-9);
  EXPECT_LT(box.max().y, 3.0);  // below the control polygon
}

TEST(NurbsTest, UniformCubicAtKnotsAveragesNeighbours) {
  const NurbsCurve c = MakeOrDie(PeriodicSquare());
  EXPECT_DOUBLE_EQ(3.0, c.StartParam());
  EXPECT_DOUBLE_EQ(7.0, c.EndParam());
  // (P0 + 4 P1 + P2) / 6 with P0 = (1,1), P1 = (-1,1), P2 = (-1,-1).
  ExpectNear({-2.0 / 3, 2.0 / 3, 0}, c.PointAt(3.0), 1e-15);
}

TEST(NurbsTest, PeriodicSplineIsClosedAndSmooth) {
  const NurbsCurve c = MakeOrDie(PeriodicSquare());
  EXPECT_TRUE(c.IsClosed());
  ExpectNear(c.PointAt(3.0), c.PointAt(7.0), 1e-15);
  ExpectNear(c.DerivativeAt(3.0), c.DerivativeAt(7.0), 1e-14);
  // Symmetric closed curve inside the square, touching none of its sides.
  const Extents box = BoundsOf(c);
  EXPECT_NEAR(-box.min().x, box.max().x, 1e-14);
  EXPECT_LT(box.max().x, 1.0);
  EXPECT_GT(box.max().x, 2.0 / 3);
}

TEST(NurbsTest, OnePeriodOfKnotsIsWrapped) {
  SplineData d;
  d.degree = 3;
  d.control_points = {{1, 1, 0}, {-1, 1, 0}, {-1, -1, 0}, {1, -1, 0}};
  d.knots = {0, 1, 2, 3, 4};
  d.periodic = true;
  const NurbsCurve wrapped = MakeOrDie(d);
  const NurbsCurve explicit_form = MakeOrDie(PeriodicSquare());
  EXPECT_TRUE(wrapped.IsClosed());
  for (double t : {0.0, 0.25, 1.5, 3.9}) {
    ExpectNear(explicit_form.PointAt(t + 3.0), wrapped.PointAt(t), 1e-14);
  }
}

TEST(NurbsTest, MissingKnotsGiveClampedUniform) {
  SplineData d;
  d.degree = 2;
  d.control_points = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}};
  const NurbsCurve c = MakeOrDie(d);
  ExpectNear({0, 0, 0}, c.PointAt(c.StartParam()), 0.0);
  ExpectNear({3, 1, 0}, c.PointAt(c.EndParam()), 1e-15);
}

TEST(NurbsTest, FitPointsAreInterpolated) {
  SplineData d;
  d.degree = 3;
  d.fit_points = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}};  // degree drops to 2 for three points
  const NurbsCurve c = MakeOrDie(d);
  EXPECT_EQ(2, c.degree());
  ExpectNear({0, 0, 0}, c.PointAt(0.0), 1e-15);
  ExpectNear({1, 1, 0}, c.PointAt(0.5), 1e-14);  // equal chords: parameter 1/2
  ExpectNear({2, 0, 0}, c.PointAt(1.0), 1e-15);

  SplineData line;
  line.degree = 3;
  line.fit_points = {{0, 0, 0}, {1, 0, 0}, {3, 0, 0}, {4, 0, 0}, {7, 0, 0}};
  const NurbsCurve l = MakeOrDie(line);
  for (int i = 0; i <= 10; ++i) EXPECT_NEAR(0.0, l.PointAt(i / 10.0).y, 1e-14);
  ExpectNear({3, 0, 0}, l.PointAt(3.0 / 7.0), 1e-13);
}

TEST(NurbsTest, TransformMovesTheCurve) {
  const NurbsCurve c = MakeOrDie(QuarterCircle());
  const NurbsCurve moved = c.Transformed(Matrix3d::Translation(Vec3(5, 0, 1)) * Matrix3d::Scale(2));
  ExpectNear({5 + std::sqrt(2.0), std::sqrt(2.0), 1}, moved.PointAt(0.5), 1e-14);
  EXPECT_NEAR(kPi, LengthOf(moved), 1e-10);
}

TEST(NurbsTest, InvalidInputIsAnError) {
  SplineData d = QuarterCircle();
  d.degree = 0;
  EXPECT_FALSE(NurbsCurve::Make(d).ok());
  d = QuarterCircle();
  d.knots.pop_back();
  const Result<NurbsCurve> r = NurbsCurve::Make(d);
  ASSERT_FALSE(r.ok());
  EXPECT_EQ("spline: 5 knots for 3 control points of degree 2 (need 6)", r.message());
  d = QuarterCircle();
  d.weights[1] = -1.0;
  EXPECT_FALSE(NurbsCurve::Make(d).ok());
  d = QuarterCircle();
  d.knots = {0, 0, 1, 0.5, 1, 1};
  EXPECT_FALSE(NurbsCurve::Make(d).ok());
  d = QuarterCircle();
  d.control_points.resize(2);
  d.weights.resize(2);
  d.knots = {0, 0, 0, 1, 1};
  EXPECT_FALSE(NurbsCurve::Make(d).ok());
  EXPECT_FALSE(NurbsCurve::Make(SplineData()).ok());
}

}  // namespace
}  // namespace veltor::geom
