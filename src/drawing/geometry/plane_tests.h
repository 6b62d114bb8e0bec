// Point-in-ring, point-to-path distance and ray intersections.
#pragma once

#include <vector>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/conic.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

enum class RingLocation { kOutside, kInside, kBoundary };

// Where p lies relative to the closed ring through `ring` (the first vertex need not be
// repeated; a repeat is harmless). kBoundary when p is within `tol` (>= 0) of an edge or a
// vertex; this is checked first, so a boundary point is never reported inside or outside.
// Otherwise the even-odd rule with a half-open edge test (an edge counts when exactly one end
// lies strictly above p), so a ray through a vertex counts once where the ring crosses it and
// zero or two times where it only touches. Fewer than 3 vertices: kBoundary or kOutside.
RingLocation LocatePoint(const std::vector<Vec2>& ring, Vec2 p, double tol);
// The same for a ring with bulge arcs, exactly: the chord polygon's parity flipped once for
// every circular segment (between a chord and its arc) that contains p.
RingLocation LocatePoint(const std::vector<BulgeVertex>& ring, Vec2 p, double tol);

// Inside or on the boundary (callers that must exclude the boundary use LocatePoint).
bool PointInRing(const std::vector<Vec2>& ring, Vec2 p, double tol);

// Smallest distance from p to the path (closed adds the closing segment). A single vertex
// gives the distance to it; an empty path gives +infinity.
double DistanceToPath(const std::vector<Vec3>& path, bool closed, const Vec3& p);
double DistanceToPath(const std::vector<Vec2>& path, bool closed, Vec2 p);
// Bulge arcs included, exactly.
double DistanceToPath(const std::vector<BulgeVertex>& path, bool closed, Vec2 p);

// A ray origin + t * direction, t >= 0, in the XY plane. direction must be non-zero.
struct Ray2 {
  Vec2 origin;
  Vec2 direction{1, 0};
};

// Hits sorted by t (in units of the direction vector); hits closer than 1e-9 (relative to the
// coordinates' size) are merged, so a ray through a shared vertex yields one hit. A segment
// lying along the ray gives its end points (and the origin when it starts inside it).
struct RayHit {
  double t = 0.0;
  Vec2 point;
};

std::vector<RayHit> IntersectRay(const Ray2& ray, const std::vector<Vec2>& path, bool closed);
std::vector<RayHit> IntersectRay(const Ray2& ray, const std::vector<BulgeVertex>& path,
                                 bool closed);
// Exact, against the curve's projection on the XY plane (so 3D-oriented circles and
// transformed ellipses work as seen from above). A tangent ray gives one hit.
std::vector<RayHit> IntersectRay(const Ray2& ray, const ConicArc& c);
std::vector<RayHit> IntersectRay(const Ray2& ray, const Circle& c);
std::vector<RayHit> IntersectRay(const Ray2& ray, const Arc& a);
std::vector<RayHit> IntersectRay(const Ray2& ray, const Ellipse& e);
// Through the spline's XY projection flattened at precision 99 (99 chords per knot span):
// hits lie on those chords, off the true curve by at most the chord error.
std::vector<RayHit> IntersectRay(const Ray2& ray, const NurbsCurve& c);

// A 3D ray, t >= 0. Against a conic: the hit with the conic's plane, kept when it lies within
// `tol` of the curve. A ray parallel to the plane yields no hits.
struct Ray3 {
  Vec3 origin;
  Vec3 direction{1, 0, 0};
};

struct RayHit3 {
  double t = 0.0;
  Vec3 point;
};

std::vector<RayHit3> IntersectRay(const Ray3& ray, const ConicArc& c, double tol);

}  // namespace veltor::geom
