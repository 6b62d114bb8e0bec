#include "drawing/geometry/break_bulge_polyline.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/geometry/break_stretches.h"

namespace veltor::geom {

namespace {

size_t SegmentCount(const LwPolyline& p) {
  const size_t n = p.vertices.size();
  return p.closed ? n : n - 1;
}

const BulgeVertex& VertexAt(const LwPolyline& p, size_t i) { return p.vertices[i % p.vertices.size()]; }

SegmentWidth WidthAt(const LwPolyline& p, size_t i) {
  return p.widths.empty() ? SegmentWidth{} : p.widths[i % p.widths.size()];
}

void Locate(const LwPolyline& p, double position, size_t& segment, double& fraction) {
  const double segments = static_cast<double>(SegmentCount(p));
  if (p.closed) position = std::fmod(std::fmod(position, segments) + segments, segments);
  position = std::clamp(position, 0.0, segments);
  segment = std::min(static_cast<size_t>(position), SegmentCount(p) - 1);
  fraction = position - static_cast<double>(segment);
}

// Fraction of the segment p0-p1 (bulge b) nearest to p, and the distance there.
double NearestOnSegment(Vec2 p0, Vec2 p1, double bulge, Vec2 p, double& distance) {
  std::optional<BulgeArc> arc = std::fabs(bulge) > kStraightBulge ? BulgeToArc(p0, p1, bulge) : std::nullopt;
  if (!arc) {
    const Vec2 d = p1 - p0;
    const double t = d.LengthSquared() > 0.0 ? std::clamp((p - p0).Dot(d) / d.LengthSquared(), 0.0, 1.0) : 0.0;
    distance = Distance(p0 + d * t, p);
    return t;
  }
  const Vec2 r = p - arc->center;
  double turned = 0.0;  // angle from the arc's start, in the arc's own direction
  if (r.LengthSquared() > 0.0) {
    const double angle = std::atan2(r.y, r.x);
    const double raw = arc->sweep > 0.0 ? angle - arc->start_angle : arc->start_angle - angle;
    turned = std::fmod(std::fmod(raw, kTwoPi) + kTwoPi, kTwoPi);
  }
  const double sweep = std::fabs(arc->sweep);
  if (turned <= sweep) {
    distance = std::fabs(r.Length() - arc->radius);
    return turned / sweep;
  }
  const double to_start = Distance(p, p0), to_end = Distance(p, p1);
  distance = std::min(to_start, to_end);
  return to_start <= to_end ? 0.0 : 1.0;
}

Vec2 PointOnSegment(Vec2 p0, Vec2 p1, double bulge, double fraction) {
  if (fraction <= 0.0) return p0;
  if (fraction >= 1.0) return p1;
  std::optional<BulgeArc> arc = std::fabs(bulge) > kStraightBulge ? BulgeToArc(p0, p1, bulge) : std::nullopt;
  if (!arc) return p0 + (p1 - p0) * fraction;
  const double angle = arc->start_angle + arc->sweep * fraction;
  return arc->center + Vec2(std::cos(angle), std::sin(angle)) * arc->radius;
}

// The bulge of the part of a segment between two fractions of it.
double PartialBulge(double bulge, double f0, double f1) {
  if (std::fabs(bulge) <= kStraightBulge) return 0.0;
  return BulgeFromSweep(4.0 * std::atan(bulge) * (f1 - f0));
}

double Lerp(double a, double b, double t) { return a + (b - a) * t; }

}  // namespace

double NearestBulgePosition(const LwPolyline& polyline, Vec2 p) {
  double best = 0.0, best_distance = std::numeric_limits<double>::infinity();
  for (size_t i = 0; i < SegmentCount(polyline); ++i) {
    const BulgeVertex& v = VertexAt(polyline, i);
    double distance = 0.0;
    const double t = NearestOnSegment(v.point, VertexAt(polyline, i + 1).point, v.bulge, p, distance);
    if (distance < best_distance) {
      best_distance = distance;
      best = static_cast<double>(i) + t;
    }
  }
  return best;
}

Vec2 BulgePointAt(const LwPolyline& polyline, double position) {
  size_t segment = 0;
  double fraction = 0.0;
  Locate(polyline, position, segment, fraction);
  const BulgeVertex& v = VertexAt(polyline, segment);
  return PointOnSegment(v.point, VertexAt(polyline, segment + 1).point, v.bulge, fraction);
}

LwPolyline BulgePathBetween(const LwPolyline& polyline, double from, double to) {
  LwPolyline out;
  out.elevation = polyline.elevation;
  out.normal = polyline.normal;
  const bool wide = !polyline.widths.empty();
  // Walk segment by segment: each step covers [lo, hi] of segment `index`.
  double at = from;
  // One step per segment; the cap guards against positions that do not advance.
  for (size_t step = 0; step <= 2 * polyline.vertices.size() + 2; ++step) {
    const double index = std::floor(at);
    const double segment_end = std::min(index + 1.0, to);
    const size_t i = static_cast<size_t>(index);
    const BulgeVertex& v = VertexAt(polyline, i);
    const double f0 = at - index, f1 = segment_end - index;
    const Vec2 next = VertexAt(polyline, i + 1).point;
    if (f1 > f0 || out.vertices.empty()) {
      out.vertices.push_back({PointOnSegment(v.point, next, v.bulge, f0), PartialBulge(v.bulge, f0, f1)});
      if (wide) {
        const SegmentWidth w = WidthAt(polyline, i);
        out.widths.push_back({Lerp(w.start, w.end, f0), Lerp(w.start, w.end, f1)});
      }
    }
    if (segment_end >= to) {
      out.vertices.push_back({PointOnSegment(v.point, next, v.bulge, f1), 0.0});
      if (wide) out.widths.push_back({out.widths.back().end, out.widths.back().end});
      break;
    }
    at = segment_end;
  }
  return out;
}

Result<std::vector<LwPolyline>> BreakLwPolyline(const LwPolyline& polyline, Vec2 a, Vec2 b) {
  if (polyline.vertices.size() < 2) return Status::Error("break: the polyline has fewer than two vertices");
  const double end = static_cast<double>(SegmentCount(polyline));
  Result<std::vector<Stretch>> kept =
      RemainingStretches(0.0, end, polyline.closed, NearestBulgePosition(polyline, a),
                         NearestBulgePosition(polyline, b), 1e-12 * end);
  if (!kept.ok()) return kept.status();
  std::vector<LwPolyline> pieces;
  for (const Stretch& s : *kept) pieces.push_back(BulgePathBetween(polyline, s.from, s.to));
  return pieces;
}

}  // namespace veltor::geom
