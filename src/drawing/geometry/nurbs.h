// NURBS curves (SPLINE entities): evaluation by de Boor's algorithm, exact derivative,
// extents from the curve itself, and length.
#pragma once

#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/matrix.h"
#include "drawing/geometry/vec.h"
#include "od/status.h"

namespace veltor::geom {

// A spline as DXF stores it. Points are in WCS.
struct SplineData {
  int degree = 3;
  std::vector<double> knots;
  std::vector<Vec3> control_points;
  std::vector<double> weights;  // empty: all 1 (non-rational)
  std::vector<Vec3> fit_points;  // used only when there are no control points
  bool closed = false;
  bool periodic = false;
};

class NurbsCurve {
 public:
  // Builds the curve. Accepted inputs:
  //  - n control points with n + degree + 1 non-decreasing knots (the usual form);
  //  - n control points with no knots: a clamped uniform knot vector is made;
  //  - a closed or periodic spline with n + 1 knots (one period, unwrapped control points):
  //    the first `degree` control points are appended and the knots extended by the period;
  //  - no control points but >= 2 fit points: a curve of degree min(degree, fits - 1) is
  //    interpolated through them (chord-length parameters, averaged knots; no end tangents).
  // Anything else fails with "spline: reason". Weights must be positive, one per point.
  static Result<NurbsCurve> Make(const SplineData& data);

  int degree() const { return degree_; }
  double StartParam() const { return knots_[degree_]; }
  double EndParam() const { return knots_[hom_.size()]; }
  // Distinct knot values from StartParam to EndParam: boundaries of the non-empty spans.
  std::vector<double> SpanBreaks() const;

  // Point and first derivative at t (clamped into the parameter range).
  Vec3 PointAt(double t) const;
  Vec3 DerivativeAt(double t) const;

  // Box of the control points (weights divided out) that shape the span holding t. With
  // positive weights that span's piece of the curve lies inside it.
  Extents SpanControlBox(double t) const;

  // True when the end point meets the start point (within 1e-10 of the control points' size).
  bool IsClosed() const;
  // Control points as Cartesian points (weights divided out).
  std::vector<Vec3> ControlPoints() const;
  // The weight of each control point (all 1 for a non-rational curve).
  std::vector<double> Weights() const;
  // The full knot vector (control points + degree + 1 values), closed curves unwrapped.
  const std::vector<double>& Knots() const { return knots_; }

  // The curve under an affine transform (exact: control points move, weights stay).
  NurbsCurve Transformed(const Matrix3d& m) const;

 private:
  struct Homogeneous {
    Vec3 wp;  // weight * point
    double w = 1.0;
  };

  NurbsCurve() = default;
  void BuildDerivative();
  size_t SpanIndex(double t) const;
  Homogeneous Eval(const std::vector<Homogeneous>& ctrl, const double* knots, int p, size_t span,
                   double t) const;

  int degree_ = 1;
  std::vector<double> knots_;
  std::vector<Homogeneous> hom_;
  std::vector<Homogeneous> dhom_;  // hodograph of hom_: degree - 1 on knots_[1 .. end - 1]
};

// Length by adaptive Gauss-Legendre integration of |C'(t)| over each knot span, absolute
// tolerance 1e-11 * (control polygon length) in total: relative error below 1e-10.
double LengthOf(const NurbsCurve& c);

// Extents of the curve (not of the control polygon). All span end points are added first.
// Then, for each coordinate of each non-empty span whose control points reach outside the
// box so far (elsewhere the span's piece cannot widen it), the span is sampled at
// max(16, 4 * (degree + 1)) intervals; where the coordinate's derivative changes sign
// between samples the root is found by regula falsi (Illinois) to 1e-10 of the span (the
// extreme value is then off by ~1e-20 of the span's size), and the point there added. The result is exact to
// rounding except when two extrema of one coordinate fall in the same sample interval (then
// the bump missed is smaller than the curve's variation over 1/16 of a span).
Extents BoundsOf(const NurbsCurve& c);

}  // namespace veltor::geom
