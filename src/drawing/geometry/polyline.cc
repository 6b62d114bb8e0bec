#include "drawing/geometry/polyline.h"

#include <cmath>

#include "drawing/geometry/ocs.h"
#include "drawing/geometry/wide_polyline.h"

namespace veltor::geom {

namespace {

// Number of segments a vertex path has.
size_t SegmentCount(size_t vertex_count, bool closed) {
  if (vertex_count < 2) return 0;
  return closed ? vertex_count : vertex_count - 1;
}

}  // namespace

double PathLength(const std::vector<BulgeVertex>& vertices, bool closed) {
  double total = 0.0;
  const size_t n = vertices.size();
  for (size_t i = 0; i < SegmentCount(n, closed); ++i) {
    const BulgeVertex& a = vertices[i];
    total += BulgeSegmentLength(a.point, vertices[(i + 1) % n].point, a.bulge);
  }
  return total;
}

double SignedArea(const std::vector<BulgeVertex>& vertices, bool closed) {
  const size_t n = vertices.size();
  if (n < 2) return 0.0;
  // Work relative to the first vertex: the area does not change and far-away coordinates
  // keep their precision.
  const Vec2 origin = vertices[0].point;
  double area = 0.0;
  for (size_t i = 0; i < n; ++i) {
    const bool closing = (i + 1 == n);
    const double bulge = (closing && !closed) ? 0.0 : vertices[i].bulge;
    area += BulgeSegmentSignedArea(vertices[i].point - origin,
                                   vertices[(i + 1) % n].point - origin, bulge);
  }
  return area;
}

double LengthOf(const LwPolyline& p) { return PathLength(p.vertices, p.closed); }

double AreaOf(const LwPolyline& p) { return std::fabs(SignedArea(p.vertices, p.closed)); }

Extents BoundsOf(const LwPolyline& p) {
  Extents box;
  const size_t n = p.vertices.size();
  const Matrix3d to_wcs = OcsToWcs(p.normal);
  for (const BulgeVertex& v : p.vertices) box.Add(to_wcs.Apply(Vec3(v.point, p.elevation)));
  for (size_t i = 0; i < SegmentCount(n, p.closed); ++i) {
    const BulgeVertex& a = p.vertices[i];
    const Vec2 b = p.vertices[(i + 1) % n].point;
    if (!BulgeToArc(a.point, b, a.bulge)) continue;
    box.Add(BoundsOf(BulgeToConic(a.point, b, a.bulge, p.elevation).Transformed(to_wcs)));
  }
  if (HasWidth(p)) box.Add(WideBandBounds(p));
  return box;
}

double LengthOf(const Polyline3d& p) {
  double total = 0.0;
  const size_t n = p.points.size();
  for (size_t i = 0; i < SegmentCount(n, p.closed); ++i) {
    total += Distance(p.points[i], p.points[(i + 1) % n]);
  }
  return total;
}

Extents BoundsOf(const Polyline3d& p) {
  Extents box;
  for (const Vec3& v : p.points) box.Add(v);
  return box;
}

}  // namespace veltor::geom
