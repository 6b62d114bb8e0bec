// Bulge segments: the arcs of light-weight polylines.
//
// A segment runs from p0 to p1 with bulge b = tan(included angle / 4); b > 0 turns
// counter-clockwise (the arc lies to the right of p0->p1), b < 0 clockwise, 0 is straight.
// Points are 2D in the polyline's OCS.
#pragma once

#include <optional>

#include "drawing/geometry/conic.h"
#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

struct BulgeVertex {
  Vec2 point;
  double bulge = 0.0;  // of the segment that starts at this vertex
};

// |bulge| below this is a straight segment.
constexpr double kStraightBulge = 1e-12;

struct BulgeArc {
  Vec2 center;
  double radius = 0.0;
  double start_angle = 0.0;  // radians, direction from center to p0
  double sweep = 0.0;        // signed included angle, 4 * atan(bulge)
};

// The arc of a bulged segment, or nothing for a straight or zero-length segment.
std::optional<BulgeArc> BulgeToArc(Vec2 p0, Vec2 p1, double bulge);

// The same arc as a ConicArc in the OCS plane z = elevation, running from p0 to p1 (a
// clockwise arc gets v = -radius * Y so that t still increases from p0 to p1). Only for
// bulged segments (BulgeToArc succeeds); a straight segment gives a zero-radius conic at p0.
ConicArc BulgeToConic(Vec2 p0, Vec2 p1, double bulge, double elevation = 0.0);

// Bulge of an arc with the given signed included angle (radians), tan(sweep / 4).
double BulgeFromSweep(double sweep);

double BulgeSegmentLength(Vec2 p0, Vec2 p1, double bulge);

// Exact 2D extents (z = 0): end points plus the axis-extreme points that lie on the arc.
Extents BulgeSegmentExtents(Vec2 p0, Vec2 p1, double bulge);

// Contribution of the segment to a ring's signed area: the shoelace term of the chord,
// (x0*y1 - x1*y0) / 2, plus the circular segment between chord and arc, r^2/2 (a - sin a)
// with a the included angle, signed like the bulge. Summed over a ring this is positive for a
// counter-clockwise ring.
double BulgeSegmentSignedArea(Vec2 p0, Vec2 p1, double bulge);

}  // namespace veltor::geom
