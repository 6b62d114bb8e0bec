// Breaking lightweight polylines: straight and bulged (arc) segments, widths kept.
//
// Points are 2D in the polyline's OCS. A position is the segment index plus the fraction of
// the segment: of its length for a straight segment, of its included angle for an arc.
#pragma once

#include <vector>

#include "drawing/geometry/polyline.h"
#include "drawing/geometry/vec.h"
#include "od/status.h"

namespace veltor::geom {

// The position nearest to `p` (the polyline needs two or more vertices).
double NearestBulgePosition(const LwPolyline& polyline, Vec2 p);

// The point at a position (a position past the end of a closed polyline wraps round).
Vec2 BulgePointAt(const LwPolyline& polyline, double position);

// The open polyline between two positions (`to` may pass the end of a closed polyline): it
// starts and ends exactly at those points, a partial arc segment gets the bulge of its own
// included angle, and widths are interpolated along each cut segment. Elevation and normal are
// kept.
LwPolyline BulgePathBetween(const LwPolyline& polyline, double from, double to);

// Removes the part between the points nearest to `a` and `b` (see RemainingStretches) and
// returns the open polylines that remain.
Result<std::vector<LwPolyline>> BreakLwPolyline(const LwPolyline& polyline, Vec2 a, Vec2 b);

}  // namespace veltor::geom
