// Measures of light-weight (bulged, planar) and 3D polylines.
#pragma once

#include <vector>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

// Width of a polyline segment at its start and end vertex (drawing units, full width).
struct SegmentWidth {
  double start = 0.0;
  double end = 0.0;
};

// A planar polyline in the OCS of `normal` at height `elevation`. When closed, the last
// vertex's bulge shapes the closing segment; when open it is ignored.
struct LwPolyline {
  std::vector<BulgeVertex> vertices;
  double elevation = 0.0;
  Vec3 normal{0, 0, 1};
  bool closed = false;
  // Widths of the segment starting at each vertex, parallel to `vertices`; empty for a
  // polyline without width. Only the drawn extents (BoundsOf) use them.
  std::vector<SegmentWidth> widths;
};

struct Polyline3d {
  std::vector<Vec3> points;
  bool closed = false;
};

// Length of the vertex path, bulge arcs included, with the closing segment when closed.
double PathLength(const std::vector<BulgeVertex>& vertices, bool closed);

// Signed area of the ring through the vertices (positive when counter-clockwise), bulge
// segments included. The ring is always closed: for closed == false the closing segment is
// straight, as an open polyline shows no closing arc. Fewer than two vertices give 0.
double SignedArea(const std::vector<BulgeVertex>& vertices, bool closed);

double LengthOf(const LwPolyline& p);
// Area as the CAD host reports it: |SignedArea| of the ring, for open polylines too.
double AreaOf(const LwPolyline& p);
// Exact WCS extents, arcs included (each arc is transformed from the OCS as a conic), and
// the band of a polyline with width (see wide_polyline.h). Empty without vertices.
Extents BoundsOf(const LwPolyline& p);

double LengthOf(const Polyline3d& p);
Extents BoundsOf(const Polyline3d& p);

}  // namespace veltor::geom
