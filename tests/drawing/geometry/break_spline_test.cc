// Splines cut by knot insertion: every piece must lie on the original curve.
#include <gtest/gtest.h>

#include "drawing/geometry/break_spline.h"
#include "drawing/geometry/spline_split.h"
#include "test_util.h"

namespace veltor::geom {
namespace {

NurbsCurve Make(const SplineData& data) {
  Result<NurbsCurve> curve = NurbsCurve::Make(data);
  EXPECT_TRUE(curve.ok()) << curve.message();
  return std::move(curve.value());
}

// A rational cubic with an interior double knot.
SplineData RationalCubic() {
  SplineData d;
  d.degree = 3;
  d.knots = {0, 0, 0, 0, 1, 2, 2, 4, 4, 4, 4};
  d.control_points = {{0, 0, 0}, {1, 3, 1}, {4, 4, 0}, {6, 1, 2}, {8, -2, 0}, {10, 0, 1}, {12, 3, 0}};
  d.weights = {1, 0.5, 2, 1, 1.5, 0.8, 1};
  return d;
}

// Piece points at its own parameters equal the original's at `offset` less.
void ExpectOnCurve(const NurbsCurve& original, const SplineData& piece_data, double offset = 0.0,
                   double period = 0.0, double wrap_at = 1e300) {
  NurbsCurve piece = Make(piece_data);
  for (int i = 0; i <= 100; ++i) {
    const double t = piece.StartParam() + (piece.EndParam() - piece.StartParam()) * i / 100.0;
    const double u = t - offset > wrap_at ? t - offset - period : t - offset;
    ExpectNear(original.PointAt(u), piece.PointAt(t), 1e-11);
  }
}

TEST(SplineSplitTest, PieceBetweenTwoParametersIsExactAndClamped) {
  const NurbsCurve curve = Make(RationalCubic());
  const SplineData piece = SplinePiece(ExplicitSpline(curve), 0.7, 3.1);
  EXPECT_EQ(4, std::count(piece.knots.begin(), piece.knots.end(), 0.7));
  EXPECT_EQ(4, std::count(piece.knots.begin(), piece.knots.end(), 3.1));
  EXPECT_EQ(piece.knots.size(), piece.control_points.size() + 4);
  ExpectNear(curve.PointAt(0.7), piece.control_points.front(), 1e-12);
  ExpectNear(curve.PointAt(3.1), piece.control_points.back(), 1e-12);
  ExpectOnCurve(curve, piece);
  // Cut at an existing knot and at the domain's ends.
  ExpectOnCurve(curve, SplinePiece(ExplicitSpline(curve), 0.0, 2.0));
  ExpectOnCurve(curve, SplinePiece(ExplicitSpline(curve), 2.0, 4.0));
}

TEST(BreakSplineTest, OpenSplineLosesThePartBetweenTheProjectedPoints) {
  const NurbsCurve curve = Make(RationalCubic());
  const Vec3 a = curve.PointAt(0.9) + Vec3(0, 0, 0), b = curve.PointAt(2.6);
  EXPECT_NEAR(0.9, NearestSplineParam(curve, a), 1e-9);
  auto pieces = BreakSpline(curve, b, a);
  ASSERT_TRUE(pieces.ok()) << pieces.message();
  ASSERT_EQ(2u, pieces->size());
  EXPECT_NEAR(0.0, (*pieces)[0].knots.front(), 1e-15);
  EXPECT_NEAR(0.9, (*pieces)[0].knots.back(), 1e-9);
  EXPECT_NEAR(2.6, (*pieces)[1].knots.front(), 1e-9);
  EXPECT_NEAR(4.0, (*pieces)[1].knots.back(), 1e-15);
  for (const SplineData& piece : *pieces) ExpectOnCurve(curve, piece);
  ExpectNear(a, (*pieces)[0].control_points.back(), 1e-9);
  ExpectNear(b, (*pieces)[1].control_points.front(), 1e-9);
}

TEST(BreakSplineTest, EqualPointsSplitWithoutGap) {
  const NurbsCurve curve = Make(RationalCubic());
  auto pieces = BreakSpline(curve, curve.PointAt(1.5), curve.PointAt(1.5));
  ASSERT_TRUE(pieces.ok());
  ASSERT_EQ(2u, pieces->size());
  ExpectNear((*pieces)[0].control_points.back(), (*pieces)[1].control_points.front(), 1e-12);
}

TEST(BreakSplineTest, ClosedSplineKeepsOnePieceRunningThroughItsStart) {
  SplineData d;
  d.degree = 3;
  d.knots = {0, 0, 0, 0, 1, 2, 3, 3, 3, 3};
  d.control_points = {{0, 0, 0}, {4, -2, 0}, {8, 2, 0}, {6, 8, 1}, {-2, 6, 0}, {0, 0, 0}};
  const NurbsCurve curve = Make(d);
  ASSERT_TRUE(curve.IsClosed());
  // The gap runs forward from t = 2.5 to t = 0.5; what stays runs from 0.5 to 2.5.
  auto inner = BreakSpline(curve, curve.PointAt(2.5), curve.PointAt(0.5));
  ASSERT_TRUE(inner.ok());
  ASSERT_EQ(1u, inner->size());
  ExpectOnCurve(curve, (*inner)[0]);
  // The gap from 0.5 to 2.5: what stays runs from 2.5 through the start to 0.5, the head's
  // parameters following on from 3.
  auto wrapped = BreakSpline(curve, curve.PointAt(0.5), curve.PointAt(2.5));
  ASSERT_TRUE(wrapped.ok());
  ASSERT_EQ(1u, wrapped->size());
  const SplineData& piece = (*wrapped)[0];
  EXPECT_NEAR(2.5, piece.knots.front(), 1e-9);
  EXPECT_NEAR(3.5, piece.knots.back(), 1e-9);
  ExpectOnCurve(curve, piece, 0.0, 3.0, 3.0);
  ExpectNear(curve.PointAt(0.5), piece.control_points.back(), 1e-9);
}

TEST(BreakSplineTest, PeriodicSplineIsCutAsItsUnwrappedCurve) {
  SplineData d;
  d.degree = 3;
  d.periodic = true;
  d.closed = true;
  d.knots = {0, 1, 2, 3, 4, 5};
  d.control_points = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {-2, 2, 0}};
  const NurbsCurve curve = Make(d);
  const double start = curve.StartParam(), end = curve.EndParam();
  const double t1 = start + 0.3 * (end - start), t2 = start + 0.6 * (end - start);
  auto pieces = BreakSpline(curve, curve.PointAt(t2), curve.PointAt(t1));
  ASSERT_TRUE(pieces.ok()) << pieces.message();
  ASSERT_EQ(1u, pieces->size());
  ExpectOnCurve(curve, (*pieces)[0]);
  EXPECT_NEAR(t1, (*pieces)[0].knots.front(), 1e-9);
  EXPECT_NEAR(t2, (*pieces)[0].knots.back(), 1e-9);
}

}  // namespace
}  // namespace veltor::geom
