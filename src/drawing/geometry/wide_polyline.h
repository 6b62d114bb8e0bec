// The drawn outline of polylines with width, and extrusion by thickness.
//
// A wide polyline is drawn as a band around its path. A straight segment is a trapezoid:
// half its start width on each side at its start vertex, half its end width at its end, the
// sides joined by straight edges. Where two straight segments meet, their outer and inner
// edges are extended to meet (a mitre), unless the edges are within pi/100 of parallel, when
// each segment keeps its square end. A bulged segment is a sector of an annulus whose width
// changes linearly with the angle, with radial ends; it is not mitred with its neighbours.
// The free ends of an open polyline are square, even when the last vertex lies on the first.
#pragma once

#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

// True when some segment of `p` has a start or end width other than 0.
bool HasWidth(const LwPolyline& p);

// WCS extents of the band of a polyline with widths (its vertices are always included, so a
// polyline without width gives the extents of its vertices only: use BoundsOf for its
// arcs). Straight edges and mitres are exact; an arc of constant width is exact, a tapered
// arc's extremes are found numerically to about 1e-12 of its radius.
Extents WideBandBounds(const LwPolyline& p);

// The box of a shape swept along `offset` (an extrusion by thickness along the extrusion
// direction): the box and the box moved by `offset`. Empty stays empty.
Extents Swept(const Extents& box, const Vec3& offset);

// The WCS vector thickness * the unit extrusion direction `normal` (world Z when the normal
// is zero or not finite).
Vec3 ThicknessOffset(double thickness, const Vec3& normal);

}  // namespace veltor::geom
