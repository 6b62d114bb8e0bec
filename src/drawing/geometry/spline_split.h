// Cutting NURBS curves by knot insertion: the pieces are exact, each lies on the curve it was
// cut from and keeps its parameterisation.
#pragma once

#include "drawing/geometry/nurbs.h"

namespace veltor::geom {

// The curve as explicit data: degree, full knot vector, control points and weights (one per
// point, never empty). Closed and periodic curves come unwrapped, as NurbsCurve holds them.
SplineData ExplicitSpline(const NurbsCurve& curve);

// The piece of `spline` (as ExplicitSpline gives it) between parameters `from` < `to`
// within its domain, as a clamped curve with knots running from `from` to `to`: both ends are
// inserted as knots until the curve passes through a control point there. A parameter within
// 1e-12 of the domain's size from an existing knot is taken as that knot.
SplineData SplinePiece(const SplineData& spline, double from, double to);

// Joins two clamped curves of one degree where the first ends at the second's start point:
// the second's knots follow on from the first's end. The weights of the second are scaled so
// that the shared control point has one weight (which leaves a rational curve unchanged).
SplineData JoinSplines(const SplineData& first, const SplineData& second);

}  // namespace veltor::geom
