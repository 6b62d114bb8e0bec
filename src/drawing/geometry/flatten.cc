#include "drawing/geometry/flatten.h"

#include <algorithm>
#include <cmath>

#include "drawing/geometry/ocs.h"

namespace veltor::geom {

int ClampPrecision(int precision) { return std::clamp(precision, kMinPrecision, kMaxPrecision); }

int ArcSegmentCount(double sweep, int precision) {
  const double turns = std::fabs(sweep) / kTwoPi;
  const double exact = 4.0 * ClampPrecision(precision) * turns;
  // The small allowance keeps a quarter turn at precision 1 at one segment despite rounding.
  return std::max(1, static_cast<int>(std::ceil(exact - 1e-9)));
}

FlatPath Flatten(const ConicArc& c, int precision) {
  FlatPath out;
  out.closed = c.IsClosed();
  int n = ArcSegmentCount(c.sweep, precision);
  const int cap = static_cast<int>(kMaxFlattenVertices) - (out.closed ? 0 : 1);
  n = std::min(n, cap);
  const int count = out.closed ? n : n + 1;
  out.points.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) {
    out.points.push_back(c.PointAt(c.start + c.sweep * static_cast<double>(i) / n));
  }
  if (!out.closed) out.points.back() = c.EndPoint();
  return out;
}

FlatPath Flatten(const Circle& c, int precision) { return Flatten(ToConic(c), precision); }
FlatPath Flatten(const Arc& a, int precision) { return Flatten(ToConic(a), precision); }
FlatPath Flatten(const Ellipse& e, int precision) { return Flatten(ToConic(e), precision); }

FlatPath Flatten(const NurbsCurve& c, int precision) {
  FlatPath out;
  out.closed = c.IsClosed();
  const std::vector<double> breaks = c.SpanBreaks();
  const size_t spans = breaks.size() - 1;
  const size_t limit = kMaxFlattenVertices - 1;  // segments, leaving room for the end point
  size_t per_span = c.degree() == 1 ? 1 : static_cast<size_t>(ClampPrecision(precision));
  if (spans * per_span > limit) per_span = std::max<size_t>(1, limit / spans);
  if (spans * per_span > limit) {
    // More spans than the limit allows: equal parameter steps over the whole range.
    const double a = c.StartParam(), b = c.EndParam();
    for (size_t i = 0; i <= limit; ++i) {
      out.points.push_back(c.PointAt(a + (b - a) * static_cast<double>(i) / limit));
    }
  } else {
    out.points.push_back(c.PointAt(breaks[0]));
    for (size_t s = 1; s <= spans; ++s) {
      const double a = breaks[s - 1], b = breaks[s];
      for (size_t i = 1; i <= per_span; ++i) {
        out.points.push_back(c.PointAt(a + (b - a) * static_cast<double>(i) / per_span));
      }
    }
  }
  if (out.closed && out.points.size() > 1) out.points.pop_back();
  return out;
}

namespace {

// Flattens a bulge path at a precision into 2D points; the closing point is not repeated.
std::vector<Vec2> FlattenBulge2d(const std::vector<BulgeVertex>& v, bool closed, int precision) {
  std::vector<Vec2> out;
  const size_t n = v.size();
  if (n == 0) return out;
  const size_t segments = (n < 2) ? 0 : (closed ? n : n - 1);
  for (size_t i = 0; i < segments; ++i) {
    const Vec2 p0 = v[i].point, p1 = v[(i + 1) % n].point;
    out.push_back(p0);
    if (!BulgeToArc(p0, p1, v[i].bulge)) continue;
    const ConicArc arc = BulgeToConic(p0, p1, v[i].bulge);
    const int k = ArcSegmentCount(arc.sweep, precision);
    for (int j = 1; j < k; ++j) out.push_back(arc.PointAt(arc.start + arc.sweep * j / k).Xy());
  }
  if (!closed || n == 1) out.push_back(v[n - 1].point);
  return out;
}

}  // namespace

std::vector<Vec2> FlattenBulgePath(const std::vector<BulgeVertex>& vertices, bool closed,
                                   int precision) {
  int p = ClampPrecision(precision);
  std::vector<Vec2> out = FlattenBulge2d(vertices, closed, p);
  while (out.size() > std::max(kMaxFlattenVertices, vertices.size()) && p > kMinPrecision) {
    p = std::max(kMinPrecision, p / 2);
    out = FlattenBulge2d(vertices, closed, p);
  }
  if (out.size() > std::max(kMaxFlattenVertices, vertices.size())) {
    // Even one chord per quarter turn is too many: keep the vertices themselves.
    out.clear();
    for (const BulgeVertex& v : vertices) out.push_back(v.point);
  }
  return out;
}

FlatPath Flatten(const LwPolyline& p, int precision) {
  FlatPath out;
  out.closed = p.closed && p.vertices.size() > 1;
  const Matrix3d to_wcs = OcsToWcs(p.normal);
  for (Vec2 q : FlattenBulgePath(p.vertices, p.closed, precision)) {
    out.points.push_back(to_wcs.Apply(Vec3(q, p.elevation)));
  }
  return out;
}

LwPolyline ToBulgePolyline(const Arc& a) {
  LwPolyline out;
  out.normal = a.normal;
  out.elevation = a.center.z;
  const double start = a.start_deg * kPi / 180.0;
  const double sweep = SweepBetween(start, a.end_deg * kPi / 180.0);
  const int pieces = sweep > kPi ? 2 : 1;
  const double step = sweep / pieces;
  const Vec2 c = a.center.Xy();
  for (int i = 0; i <= pieces; ++i) {
    const double t = start + step * i;
    const Vec2 p = c + Vec2(std::cos(t), std::sin(t)) * a.radius;
    out.vertices.push_back({p, i < pieces ? BulgeFromSweep(step) : 0.0});
  }
  return out;
}

LwPolyline ToBulgePolyline(const Circle& c) {
  LwPolyline out;
  out.normal = c.normal;
  out.elevation = c.center.z;
  out.closed = true;
  const Vec2 center = c.center.Xy();
  out.vertices.push_back({center + Vec2(c.radius, 0.0), 1.0});
  out.vertices.push_back({center - Vec2(c.radius, 0.0), 1.0});
  return out;
}

}  // namespace veltor::geom
