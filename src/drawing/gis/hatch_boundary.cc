#include "drawing/gis/hatch_boundary.h"

#include <cmath>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/conic.h"
#include "drawing/geometry/flatten.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/ocs.h"
#include "drawing/gis/gis_geometry.h"
#include "drawing/model/entity_geometry_tags.h"

namespace veltor::gis {

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

// Reads the tags of one hatch in order; every read names the code it expects.
class TagCursor {
 public:
  TagCursor(const model::RecordTags& tags, size_t start) : tags_(tags), at_(start) {}
  bool Next(int code) const { return at_ < tags_.size() && tags_[at_].code == code; }
  // The value of the next tag when it has `code` (then consumed); nothing otherwise.
  bool Take(int code, double& value) {
    if (!Next(code)) return false;
    value = model::ParseDouble(tags_[at_++].value);
    return true;
  }
  bool TakeInt(int code, long long& value) {
    if (!Next(code)) return false;
    value = model::ParseInt(tags_[at_++].value);
    return true;
  }
  bool TakePoint(int code, geom::Vec2& p) { return Take(code, p.x) && Take(code + 10, p.y); }

 private:
  const model::RecordTags& tags_;
  size_t at_;
};

void Append(std::vector<geom::Vec3>& ring, const geom::Vec3& p) {
  if (ring.empty() || ring.back().x != p.x || ring.back().y != p.y) ring.push_back(p);
}

// An elliptic edge stores the angles of its end points, in degrees; the ellipse's parameter
// (in degrees too) of the point at that angle.
double ParamOfAngle(double angle_deg, double ratio) {
  if (!(ratio > 0)) return angle_deg;
  const double a = angle_deg * kDegree;
  double param = std::atan2(std::sin(a) / ratio, std::cos(a)) / kDegree;
  // Keep the turn the angle was in, so that end - start still spans the same sweep.
  const double turns = std::floor(angle_deg / 360.0);
  if (param < 0) param += 360.0;
  return param + turns * 360.0;
}

void AppendConic(std::vector<geom::Vec3>& ring, const geom::ConicArc& arc, double radius,
                 double deviation) {
  geom::FlatPath path = geom::Flatten(arc, PrecisionForDeviation(radius, deviation));
  for (const geom::Vec3& p : path.points) Append(ring, p);
}

// A circular or elliptic edge: `u` runs from the centre to angle 0, `v` to angle 90 degrees
// counter-clockwise. Clockwise edges store their angles mirrored (measured clockwise).
void AppendEdgeArc(std::vector<geom::Vec3>& ring, geom::Vec2 center, geom::Vec2 u, geom::Vec2 v,
                   double start_deg, double end_deg, bool ccw, double deviation) {
  double sweep = end_deg - start_deg;
  while (sweep <= 0) sweep += 360.0;
  while (sweep > 360.0) sweep -= 360.0;
  geom::ConicArc arc;
  arc.center = geom::Vec3(center);
  arc.u = geom::Vec3(u);
  arc.v = ccw ? geom::Vec3(v) : geom::Vec3(-v.x, -v.y, 0);
  arc.start = start_deg * kDegree;
  arc.sweep = sweep * kDegree;
  AppendConic(ring, arc, std::hypot(u.x, u.y), deviation);
}

bool ReadPolylinePath(TagCursor& c, double deviation, std::vector<geom::Vec3>& ring) {
  long long has_bulge = 0, closed = 0, count = 0;
  if (!c.TakeInt(72, has_bulge) || !c.TakeInt(73, closed) || !c.TakeInt(93, count)) return false;
  std::vector<geom::BulgeVertex> vertices;
  for (long long i = 0; i < count; ++i) {
    geom::BulgeVertex v;
    if (!c.TakePoint(10, v.point)) return false;
    c.Take(42, v.bulge);
    vertices.push_back(v);
  }
  geom::LwPolyline p;
  p.vertices = vertices;
  p.closed = true;
  double radius = 0;
  for (size_t i = 0; i < vertices.size(); ++i) {
    const geom::BulgeVertex& a = vertices[i];
    const geom::BulgeVertex& b = vertices[(i + 1) % vertices.size()];
    if (auto arc = geom::BulgeToArc(a.point, b.point, a.bulge)) radius = std::max(radius, arc->radius);
  }
  for (const geom::Vec3& q : geom::Flatten(p, PrecisionForDeviation(radius, deviation)).points)
    Append(ring, q);
  return true;
}

bool ReadEdge(TagCursor& c, double deviation, std::vector<geom::Vec3>& ring) {
  long long type = 0;
  if (!c.TakeInt(72, type)) return false;
  geom::Vec2 a, b;
  double radius = 0, ratio = 0, start = 0, end = 0;
  long long ccw = 1;
  switch (type) {
    case 1:  // line
      if (!c.TakePoint(10, a) || !c.TakePoint(11, b)) return false;
      Append(ring, geom::Vec3(a));
      Append(ring, geom::Vec3(b));
      return true;
    case 2:  // circular arc
      if (!c.TakePoint(10, a) || !c.Take(40, radius) || !c.Take(50, start) || !c.Take(51, end))
        return false;
      c.TakeInt(73, ccw);
      AppendEdgeArc(ring, a, {radius, 0}, {0, radius}, start, end, ccw != 0, deviation);
      return true;
    case 3:  // elliptic arc: major axis end relative to the centre, minor/major ratio
      if (!c.TakePoint(10, a) || !c.TakePoint(11, b) || !c.Take(40, ratio) || !c.Take(50, start) ||
          !c.Take(51, end))
        return false;
      c.TakeInt(73, ccw);
      AppendEdgeArc(ring, a, b, {-b.y * ratio, b.x * ratio}, ParamOfAngle(start, ratio),
                    ParamOfAngle(end, ratio), ccw != 0, deviation);
      return true;
    case 4: {  // spline: flattened as the SPLINE entity is, or its control points when invalid
      long long degree = 0, rational = 0, periodic = 0, knots = 0, controls = 0, fits = 0;
      if (!c.TakeInt(94, degree) || !c.TakeInt(73, rational) || !c.TakeInt(74, periodic) ||
          !c.TakeInt(95, knots) || !c.TakeInt(96, controls))
        return false;
      geom::SplineData spline;
      spline.degree = static_cast<int>(degree);
      spline.periodic = periodic != 0;
      for (long long i = 0; i < knots; ++i) {
        double knot = 0;
        if (!c.Take(40, knot)) return false;
        spline.knots.push_back(knot);
      }
      for (long long i = 0; i < controls; ++i) {
        if (!c.TakePoint(10, a)) return false;
        spline.control_points.push_back(geom::Vec3(a));
        double weight = 1;
        if (c.Take(42, weight)) spline.weights.push_back(weight);
      }
      if (spline.weights.size() != spline.control_points.size()) spline.weights.clear();
      if (c.TakeInt(97, fits))
        for (long long i = 0; i < fits; ++i)
          if (!c.TakePoint(11, b)) return false;
      c.TakePoint(12, a);
      c.TakePoint(13, b);
      Result<geom::NurbsCurve> curve = geom::NurbsCurve::Make(spline);
      if (!curve.ok()) {
        for (const geom::Vec3& p : spline.control_points) Append(ring, p);
        return true;
      }
      for (const geom::Vec3& p : geom::Flatten(*curve, geom::kMaxPrecision).points) Append(ring, p);
      return true;
    }
    default:
      return false;
  }
}

}  // namespace

std::vector<std::vector<geom::Vec3>> HatchBoundaryRings(const model::Document& doc,
                                                        model::RecordId hatch, double deviation) {
  model::RecordTags tags(doc, hatch);
  std::vector<std::vector<geom::Vec3>> rings;
  size_t start = 0;
  while (start < tags.size() && tags[start].code != 91) ++start;
  TagCursor c(tags, start);
  long long paths = 0;
  if (!c.TakeInt(91, paths)) return rings;
  const double elevation = tags.Point(10).z;
  const geom::Vec3 normal = tags.Normal();
  const bool world = geom::IsWorldNormal(normal);
  const geom::Matrix3d to_world = geom::OcsToWcs(normal);
  for (long long i = 0; i < paths; ++i) {
    long long flags = 0;
    if (!c.TakeInt(92, flags)) break;
    std::vector<geom::Vec3> ring;
    bool read = true;
    if (flags & 2) {
      read = ReadPolylinePath(c, deviation, ring);
    } else {
      long long edges = 0;
      read = c.TakeInt(93, edges);
      for (long long e = 0; read && e < edges; ++e) read = ReadEdge(c, deviation, ring);
    }
    if (!read) break;
    long long sources = 0;
    if (c.TakeInt(97, sources)) {
      double ignored = 0;
      for (long long s = 0; s < sources; ++s) c.Take(330, ignored);
    }
    if (ring.size() > 1 && ring.front().x == ring.back().x && ring.front().y == ring.back().y)
      ring.pop_back();
    if (ring.size() < 3) continue;
    for (geom::Vec3& p : ring) {
      p.z = elevation;
      if (!world) p = to_world.Apply(p);
    }
    rings.push_back(std::move(ring));
  }
  return rings;
}

}  // namespace veltor::gis
