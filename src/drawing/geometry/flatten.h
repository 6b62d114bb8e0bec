// Curves to vertex lists.
//
// Precision is 1..99 (values outside are clamped):
//  - circular and elliptic curves: 4 * precision segments per full turn of the parameter
//    (precision 1 draws a circle as a square, 99 as 396 chords, max chord error
//    r * (1 - cos(pi / (4 * precision))): 0.293 r at 1, 3.15e-5 r at 99); an arc gets its
//    share, ceil(4 * precision * sweep / 2pi), at least one segment;
//  - splines: `precision` segments per non-empty knot span, equal steps of the parameter;
//    degree-1 splines one segment per span (their control polygon, exactly);
//  - bulge segments of polylines: like arcs; straight segments are kept as they are.
// No result has more than kMaxFlattenVertices points (the count per turn or span is lowered
// to fit), except a polyline that already has more vertices, which keeps them all.
// A closed curve gives closed = true and does not repeat its first point at the end.
#pragma once

#include <vector>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/conic.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

constexpr int kMinPrecision = 1;
constexpr int kMaxPrecision = 99;
constexpr size_t kMaxFlattenVertices = 10000;

struct FlatPath {
  std::vector<Vec3> points;
  bool closed = false;
};

int ClampPrecision(int precision);

// Segments for an arc of the given sweep (radians) at a precision: see above.
int ArcSegmentCount(double sweep, int precision);

FlatPath Flatten(const ConicArc& c, int precision);
FlatPath Flatten(const Circle& c, int precision);
FlatPath Flatten(const Arc& a, int precision);
FlatPath Flatten(const Ellipse& e, int precision);
// Closed when the curve's end meets its start (NurbsCurve::IsClosed).
FlatPath Flatten(const NurbsCurve& c, int precision);
// In WCS.
FlatPath Flatten(const LwPolyline& p, int precision);

// A bulge path flattened in its own 2D plane (OCS), for plane tests.
std::vector<Vec2> FlattenBulgePath(const std::vector<BulgeVertex>& vertices, bool closed,
                                   int precision);

// Exact conversions of circular curves to bulged polylines in the curve's OCS (elevation =
// centre z): an arc becomes one bulged segment, or two when it sweeps more than half a turn
// (so no bulge exceeds 1); a circle becomes a closed two-vertex polyline with bulges 1.
LwPolyline ToBulgePolyline(const Arc& a);
LwPolyline ToBulgePolyline(const Circle& c);

}  // namespace veltor::geom
