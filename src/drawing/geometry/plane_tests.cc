#include "drawing/geometry/plane_tests.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/geometry/flatten.h"

namespace veltor::geom {

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

double SegmentDistance(Vec2 p, Vec2 a, Vec2 b) {
  const Vec2 e = b - a;
  const double len2 = e.LengthSquared();
  const double s = len2 > 0.0 ? std::clamp((p - a).Dot(e) / len2, 0.0, 1.0) : 0.0;
  return Distance(p, a + e * s);
}

double SegmentDistance(const Vec3& p, const Vec3& a, const Vec3& b) {
  const Vec3 e = b - a;
  const double len2 = e.LengthSquared();
  const double s = len2 > 0.0 ? std::clamp((p - a).Dot(e) / len2, 0.0, 1.0) : 0.0;
  return Distance(p, a + e * s);
}

double BulgeSegmentDistance(Vec2 p, Vec2 a, Vec2 b, double bulge) {
  if (!BulgeToArc(a, b, bulge)) return SegmentDistance(p, a, b);
  const ConicArc arc = BulgeToConic(a, b, bulge);
  const Vec2 d = p - arc.center.Xy();
  const double r = arc.u.x;
  // Parameter of p's direction in the conic's (possibly mirrored) frame.
  const double t = std::atan2(arc.v.y > 0.0 ? d.y : -d.y, d.x);
  if (d.LengthSquared() > 0.0 && arc.ContainsParam(t)) return std::fabs(d.Length() - r);
  if (d.LengthSquared() == 0.0) return r;
  return std::min(Distance(p, a), Distance(p, b));
}

// Even-odd parity of the chord polygon (true = odd = inside).
bool ChordParity(const std::vector<Vec2>& ring, Vec2 p) {
  bool inside = false;
  const size_t n = ring.size();
  for (size_t i = 0, j = n - 1; i < n; j = i++) {
    const Vec2 a = ring[j], b = ring[i];
    if ((a.y > p.y) != (b.y > p.y)) {
      const double x = a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y);
      if (x > p.x) inside = !inside;
    }
  }
  return inside;
}

double Scale(Vec2 a, Vec2 b) {
  return 1.0 + std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(b.x), std::fabs(b.y)});
}

void SortAndMerge(std::vector<RayHit>& hits, const Ray2& ray) {
  std::sort(hits.begin(), hits.end(), [](const RayHit& a, const RayHit& b) { return a.t < b.t; });
  std::vector<RayHit> merged;
  for (const RayHit& h : hits) {
    if (!merged.empty() &&
        Distance(merged.back().point, h.point) <= 1e-9 * Scale(h.point, ray.origin)) {
      continue;
    }
    merged.push_back(h);
  }
  hits.swap(merged);
}

void AddHit(std::vector<RayHit>& hits, const Ray2& ray, Vec2 point) {
  const double t = (point - ray.origin).Dot(ray.direction) / ray.direction.LengthSquared();
  if (t < -1e-12) return;
  hits.push_back({std::max(t, 0.0), point});
}

void SegmentHits(std::vector<RayHit>& hits, const Ray2& ray, Vec2 a, Vec2 b) {
  const Vec2 d = ray.direction, e = b - a, w = a - ray.origin;
  const double denom = d.Cross(e);
  const double eps = 1e-12;
  if (std::fabs(denom) <= eps * d.Length() * std::max(e.Length(), 1e-300)) {
    // Parallel: only a segment on the ray's line meets it, along its end points.
    if (std::fabs(w.Cross(d)) > 1e-12 * d.Length() * Scale(a, ray.origin)) return;
    AddHit(hits, ray, a);
    AddHit(hits, ray, b);
    const double sa = (a - ray.origin).Dot(d), sb = (b - ray.origin).Dot(d);
    if ((sa < 0.0) != (sb < 0.0)) hits.push_back({0.0, ray.origin});
    return;
  }
  const double s = w.Cross(d) / denom;
  if (s < -eps || s > 1.0 + eps) return;
  AddHit(hits, ray, a + e * std::clamp(s, 0.0, 1.0));
}

void ConicHits(std::vector<RayHit>& hits, const Ray2& ray, const ConicArc& c) {
  // n . (P(t) - o) = 0 with n normal to the ray: A cos t + B sin t = -D.
  const Vec2 n = ray.direction.Perp();
  const double a = n.Dot(c.u.Xy()), b = n.Dot(c.v.Xy());
  const double d = n.Dot(c.center.Xy() - ray.origin);
  const double r = std::hypot(a, b);
  if (r == 0.0) return;  // seen edge-on from above: no crossing
  const double ratio = -d / r;
  if (std::fabs(ratio) > 1.0 + 1e-12) return;
  const double phi = std::atan2(b, a), delta = std::acos(std::clamp(ratio, -1.0, 1.0));
  for (double t : {phi - delta, phi + delta}) {
    if (c.ContainsParam(t)) AddHit(hits, ray, c.PointAt(t).Xy());
  }
}

}  // namespace

RingLocation LocatePoint(const std::vector<Vec2>& ring, Vec2 p, double tol) {
  if (ring.empty()) return RingLocation::kOutside;
  if (DistanceToPath(ring, true, p) <= tol) return RingLocation::kBoundary;
  if (ring.size() < 3) return RingLocation::kOutside;
  return ChordParity(ring, p) ? RingLocation::kInside : RingLocation::kOutside;
}

RingLocation LocatePoint(const std::vector<BulgeVertex>& ring, Vec2 p, double tol) {
  if (ring.empty()) return RingLocation::kOutside;
  if (DistanceToPath(ring, true, p) <= tol) return RingLocation::kBoundary;
  const size_t n = ring.size();
  // A point on the line of a bulged chord (and so not on the curve, which was ruled out above)
  // would be counted ambiguously by both tests below; move it off the line by a distance far
  // below any tolerance a caller would use.
  for (int attempt = 0; attempt < 3; ++attempt) {
    bool moved = false;
    for (size_t i = 0; i < n && !moved; ++i) {
      const Vec2 a = ring[i].point, b = ring[(i + 1) % n].point;
      const std::optional<BulgeArc> arc = BulgeToArc(a, b, ring[i].bulge);
      const Vec2 e = b - a;
      if (!arc || std::fabs(e.Cross(p - a)) > 1e-12 * e.Length() * Scale(p, a)) continue;
      if (Distance(p, arc->center) >= arc->radius) continue;
      p += e.Perp().Normalized() * (1e-9 * Scale(p, a));
      moved = true;
    }
    if (!moved) break;
  }
  std::vector<Vec2> chords;
  for (const BulgeVertex& v : ring) chords.push_back(v.point);
  bool inside = chords.size() >= 3 && ChordParity(chords, p);
  for (size_t i = 0; i < n; ++i) {
    const Vec2 a = ring[i].point, b = ring[(i + 1) % n].point;
    const std::optional<BulgeArc> arc = BulgeToArc(a, b, ring[i].bulge);
    if (!arc) continue;
    // p lies in the circular segment when inside the disc and on the arc's side of the chord
    // (the arc lies right of a->b for a positive bulge).
    const double side = (b - a).Cross(p - a);
    const bool arc_side = ring[i].bulge > 0.0 ? side < 0.0 : side > 0.0;
    if (arc_side && Distance(p, arc->center) < arc->radius) inside = !inside;
  }
  return inside ? RingLocation::kInside : RingLocation::kOutside;
}

bool PointInRing(const std::vector<Vec2>& ring, Vec2 p, double tol) {
  return LocatePoint(ring, p, tol) != RingLocation::kOutside;
}

namespace {

// Shortest distance from p to a straight-segment path of 2D or 3D points.
template <typename Point>
double DistanceToPointPath(const std::vector<Point>& path, bool closed, const Point& p) {
  if (path.empty()) return kInf;
  double best = Distance(p, path[0]);
  const size_t n = path.size();
  const size_t segments = n < 2 ? 0 : (closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    best = std::min(best, SegmentDistance(p, path[i], path[(i + 1) % n]));
  }
  return best;
}

}  // namespace

double DistanceToPath(const std::vector<Vec3>& path, bool closed, const Vec3& p) {
  return DistanceToPointPath(path, closed, p);
}

double DistanceToPath(const std::vector<Vec2>& path, bool closed, Vec2 p) {
  return DistanceToPointPath(path, closed, p);
}

double DistanceToPath(const std::vector<BulgeVertex>& path, bool closed, Vec2 p) {
  if (path.empty()) return kInf;
  double best = Distance(p, path[0].point);
  const size_t n = path.size();
  const size_t segments = n < 2 ? 0 : (closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    best = std::min(best, BulgeSegmentDistance(p, path[i].point, path[(i + 1) % n].point,
                                               path[i].bulge));
  }
  return best;
}

std::vector<RayHit> IntersectRay(const Ray2& ray, const std::vector<Vec2>& path, bool closed) {
  std::vector<RayHit> hits;
  const size_t n = path.size();
  if (n == 1) SegmentHits(hits, ray, path[0], path[0]);
  const size_t segments = n < 2 ? 0 : (closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) SegmentHits(hits, ray, path[i], path[(i + 1) % n]);
  SortAndMerge(hits, ray);
  return hits;
}

std::vector<RayHit> IntersectRay(const Ray2& ray, const std::vector<BulgeVertex>& path,
                                 bool closed) {
  std::vector<RayHit> hits;
  const size_t n = path.size();
  const size_t segments = n < 2 ? 0 : (closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    const Vec2 a = path[i].point, b = path[(i + 1) % n].point;
    if (BulgeToArc(a, b, path[i].bulge)) {
      ConicHits(hits, ray, BulgeToConic(a, b, path[i].bulge));
    } else {
      SegmentHits(hits, ray, a, b);
    }
  }
  SortAndMerge(hits, ray);
  return hits;
}

std::vector<RayHit> IntersectRay(const Ray2& ray, const ConicArc& c) {
  std::vector<RayHit> hits;
  ConicHits(hits, ray, c);
  SortAndMerge(hits, ray);
  return hits;
}

std::vector<RayHit> IntersectRay(const Ray2& ray, const Circle& c) {
  return IntersectRay(ray, ToConic(c));
}
std::vector<RayHit> IntersectRay(const Ray2& ray, const Arc& a) {
  return IntersectRay(ray, ToConic(a));
}
std::vector<RayHit> IntersectRay(const Ray2& ray, const Ellipse& e) {
  return IntersectRay(ray, ToConic(e));
}

std::vector<RayHit> IntersectRay(const Ray2& ray, const NurbsCurve& c) {
  const FlatPath flat = Flatten(c, kMaxPrecision);
  std::vector<Vec2> path;
  path.reserve(flat.points.size());
  for (const Vec3& q : flat.points) path.push_back(q.Xy());
  return IntersectRay(ray, path, flat.closed);
}

std::vector<RayHit3> IntersectRay(const Ray3& ray, const ConicArc& c, double tol) {
  std::vector<RayHit3> hits;
  const Vec3 m = c.u.Cross(c.v);
  const double denom = m.Dot(ray.direction);
  if (m.LengthSquared() == 0.0 ||
      std::fabs(denom) <= 1e-12 * m.Length() * ray.direction.Length()) {
    return hits;
  }
  const double t = m.Dot(c.center - ray.origin) / denom;
  if (t < 0.0) return hits;
  const Vec3 q = ray.origin + ray.direction * t;
  // q - c = alpha u + beta v, solved with the Gram matrix of u and v.
  const Vec3 w = q - c.center;
  const double uu = c.u.Dot(c.u), uv = c.u.Dot(c.v), vv = c.v.Dot(c.v);
  const double det = uu * vv - uv * uv;
  const double alpha = (vv * w.Dot(c.u) - uv * w.Dot(c.v)) / det;
  const double beta = (uu * w.Dot(c.v) - uv * w.Dot(c.u)) / det;
  const double param = std::atan2(beta, alpha);
  if (!c.ContainsParam(param)) return hits;
  if (Distance(c.PointAt(param), q) > tol) return hits;
  hits.push_back({t, q});
  return hits;
}

}  // namespace veltor::geom
