#include "drawing/geometry/break_arc.h"

#include <cmath>

#include "drawing/geometry/break_stretches.h"

namespace veltor::geom {

namespace {

constexpr double kAngleTolerance = 1e-12;

double Normalized(double angle) {
  const double a = std::fmod(angle, kTwoPi);
  return a < 0.0 ? a + kTwoPi : a;
}

Vec2 PointAtAngle(Vec2 center, double radius, double angle) {
  return center + Vec2(std::cos(angle), std::sin(angle)) * radius;
}

}  // namespace

double NearestArcOffset(Vec2 center, double radius, const ArcSpan& arc, Vec2 p) {
  const Vec2 r = p - center;
  if (r.LengthSquared() == 0.0) return 0.0;
  const double sweep = arc.end - arc.start;
  const double offset = Normalized(std::atan2(r.y, r.x) - arc.start);
  if (offset <= sweep) return offset;
  const double to_start = Distance(p, PointAtAngle(center, radius, arc.start));
  const double to_end = Distance(p, PointAtAngle(center, radius, arc.end));
  return to_start <= to_end ? 0.0 : sweep;
}

Result<std::vector<ArcSpan>> BreakArc(Vec2 center, double radius, const ArcSpan& arc, Vec2 a, Vec2 b) {
  Result<std::vector<Stretch>> kept =
      RemainingStretches(0.0, arc.end - arc.start, false, NearestArcOffset(center, radius, arc, a),
                         NearestArcOffset(center, radius, arc, b), kAngleTolerance);
  if (!kept.ok()) return kept.status();
  std::vector<ArcSpan> arcs;
  const double start = Normalized(arc.start);
  for (const Stretch& s : *kept) arcs.push_back({start + s.from, start + s.to});
  return arcs;
}

Result<ArcSpan> BreakCircle(Vec2 center, double radius, Vec2 a, Vec2 b) {
  const ArcSpan whole{0.0, kTwoPi};
  const double first = NearestArcOffset(center, radius, whole, a);
  const double second = NearestArcOffset(center, radius, whole, b);
  const double gap = Normalized(second - first);
  if (gap <= kAngleTolerance || kTwoPi - gap <= kAngleTolerance)
    return Status::Error("break: a circle needs two different break points");
  // What stays runs from the second point counter-clockwise to the first.
  const double start = Normalized(second);
  return ArcSpan{start, start + (kTwoPi - gap)};
}

}  // namespace veltor::geom
