// Breaking splines: the points are projected to the curve's parameter and the pieces cut by
// knot insertion (spline_split.h), so each piece lies exactly on the original curve.
#pragma once

#include <vector>

#include "drawing/geometry/nurbs.h"
#include "od/status.h"

namespace veltor::geom {

// The parameter of the curve's point nearest to `p`: each knot span is sampled, then the best
// sample's neighbourhood is narrowed by golden-section search and polished by secant steps
// on the slope of the distance.
double NearestSplineParam(const NurbsCurve& curve, const Vec3& p);

// Removes the part between the points nearest to `a` and `b` (see RemainingStretches; a
// closed curve loses the part from `a` forward to `b`) and returns the clamped, open pieces
// that remain. The piece of a closed curve that runs through its start is joined into one.
Result<std::vector<SplineData>> BreakSpline(const NurbsCurve& curve, const Vec3& a, const Vec3& b);

}  // namespace veltor::geom
