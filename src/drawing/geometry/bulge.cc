#include "drawing/geometry/bulge.h"

#include <cmath>

namespace veltor::geom {

std::optional<BulgeArc> BulgeToArc(Vec2 p0, Vec2 p1, double bulge) {
  const Vec2 d = p1 - p0;
  if (std::fabs(bulge) < kStraightBulge || d.LengthSquared() == 0.0) return std::nullopt;
  // The centre lies on the chord's bisector, (1 - b^2) / (4b) chord lengths to its left.
  const Vec2 mid = (p0 + p1) * 0.5;
  BulgeArc arc;
  arc.center = mid + d.Perp() * ((1.0 - bulge * bulge) / (4.0 * bulge));
  arc.radius = d.Length() * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
  const Vec2 r0 = p0 - arc.center;
  arc.start_angle = std::atan2(r0.y, r0.x);
  arc.sweep = 4.0 * std::atan(bulge);
  return arc;
}

ConicArc BulgeToConic(Vec2 p0, Vec2 p1, double bulge, double elevation) {
  ConicArc c;
  const std::optional<BulgeArc> arc = BulgeToArc(p0, p1, bulge);
  if (!arc) {
    c.center = Vec3(p0, elevation);
    c.u = c.v = Vec3();
    return c;
  }
  const double dir = arc->sweep > 0.0 ? 1.0 : -1.0;
  c.center = Vec3(arc->center, elevation);
  c.u = Vec3(arc->radius, 0.0, 0.0);
  c.v = Vec3(0.0, dir * arc->radius, 0.0);
  // With v mirrored for clockwise arcs, the parameter of p0 is its angle mirrored too.
  c.start = dir * arc->start_angle;
  c.sweep = std::fabs(arc->sweep);
  return c;
}

double BulgeFromSweep(double sweep) { return std::tan(sweep / 4.0); }

double BulgeSegmentLength(Vec2 p0, Vec2 p1, double bulge) {
  const std::optional<BulgeArc> arc = BulgeToArc(p0, p1, bulge);
  if (!arc) return Distance(p0, p1);
  return arc->radius * std::fabs(arc->sweep);
}

Extents BulgeSegmentExtents(Vec2 p0, Vec2 p1, double bulge) {
  if (!BulgeToArc(p0, p1, bulge)) return Extents(Vec3(p0), Vec3(p1));
  return BoundsOf(BulgeToConic(p0, p1, bulge));
}

double BulgeSegmentSignedArea(Vec2 p0, Vec2 p1, double bulge) {
  double area = 0.5 * p0.Cross(p1);
  const std::optional<BulgeArc> arc = BulgeToArc(p0, p1, bulge);
  if (arc) {
    const double a = std::fabs(arc->sweep);
    const double segment = 0.5 * arc->radius * arc->radius * (a - std::sin(a));
    area += bulge > 0.0 ? segment : -segment;
  }
  return area;
}

}  // namespace veltor::geom
