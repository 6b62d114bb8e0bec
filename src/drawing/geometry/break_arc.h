// Breaking circles and arcs in their own plane (2D OCS points, angles in radians measured
// counter-clockwise from the OCS X axis).
#pragma once

#include <vector>

#include "drawing/geometry/vec.h"
#include "od/status.h"

namespace veltor::geom {

// A circular arc from `start` counter-clockwise to `end` (end > start, end - start <= 2 pi).
struct ArcSpan {
  double start = 0.0;
  double end = 0.0;
};

// The angle offset from `arc.start` (counter-clockwise, within [0, end - start]) of the arc's
// point nearest to `p`; a point beyond the arc's ends goes to the nearer end, and the centre
// itself to the start.
double NearestArcOffset(Vec2 center, double radius, const ArcSpan& arc, Vec2 p);

// Removes the part of an arc between the points nearest to `a` and `b` (see
// RemainingStretches); returns the arcs that remain, start angles normalised to [0, 2 pi).
Result<std::vector<ArcSpan>> BreakArc(Vec2 center, double radius, const ArcSpan& arc, Vec2 a, Vec2 b);

// Removes the part of a circle counter-clockwise from the point nearest to `a` to the point
// nearest to `b`; what remains is one arc from there back to the first point. Fails when the
// two points meet: a circle cannot become a full arc.
Result<ArcSpan> BreakCircle(Vec2 center, double radius, Vec2 a, Vec2 b);

}  // namespace veltor::geom
