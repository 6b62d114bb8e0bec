#include "drawing/gis/gis_geometry.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/flatten.h"
#include "drawing/geometry/ocs.h"
#include "drawing/gis/hatch_boundary.h"
#include "drawing/model/entity_geometry.h"
#include "drawing/model/entity_geometry_readers.h"

namespace veltor::gis {

namespace {

namespace gi = model::geometry_internal;
using Path = std::vector<geom::Vec3>;

constexpr double kPi = 3.14159265358979323846;

bool HasZ(const Path& points) {
  return std::any_of(points.begin(), points.end(), [](const geom::Vec3& p) { return p.z != 0.0; });
}

GeometryPtr MakePoint(const geom::Vec3& p) {
  GeometryPtr g(OGR_G_CreateGeometry(p.z != 0.0 ? wkbPoint25D : wkbPoint));
  if (p.z != 0.0) OGR_G_SetPoint(g.get(), 0, p.x, p.y, p.z);
  else OGR_G_SetPoint_2D(g.get(), 0, p.x, p.y);
  return g;
}

// A line string, or a linear ring repeating its first point at the end.
GeometryPtr MakeCurve(OGRwkbGeometryType type, const Path& points, bool z, bool ring) {
  GeometryPtr g(OGR_G_CreateGeometry(z ? wkbSetZ(type) : type));
  const int count = static_cast<int>(points.size()) + (ring ? 1 : 0);
  OGR_G_SetPointCount(g.get(), count);
  for (int i = 0; i < count; ++i) {
    const geom::Vec3& p = points[static_cast<size_t>(i) % points.size()];
    if (z) OGR_G_SetPoint(g.get(), i, p.x, p.y, p.z);
    else OGR_G_SetPoint_2D(g.get(), i, p.x, p.y);
  }
  return g;
}

GeometryPtr MakePolygon(const std::vector<const Path*>& rings, bool z) {
  GeometryPtr g(OGR_G_CreateGeometry(z ? wkbPolygon25D : wkbPolygon));
  for (const Path* ring : rings)
    OGR_G_AddGeometryDirectly(g.get(), MakeCurve(wkbLinearRing, *ring, z, true).release());
  return g;
}

// An open path as a line string, a closed one as a polygon; nullptr when too short.
GeometryPtr FromPath(const Path& points, bool closed) {
  const bool z = HasZ(points);
  if (closed && points.size() >= 3) return MakePolygon({&points}, z);
  if (points.size() < 2) return nullptr;
  return MakeCurve(wkbLineString, points, z, false);
}

// Even-odd point in ring, in XY.
bool Inside(const geom::Vec3& p, const Path& ring) {
  bool in = false;
  for (size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
    const geom::Vec3& a = ring[i];
    const geom::Vec3& b = ring[j];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) in = !in;
  }
  return in;
}

// Hatch rings sorted into polygons: a ring inside an even number of others is an outer ring,
// one inside an odd number is a hole of the innermost outer ring around it.
GeometryPtr FromRings(const std::vector<Path>& rings) {
  if (rings.empty()) return nullptr;
  const size_t n = rings.size();
  std::vector<std::vector<size_t>> around(n);  // rings containing ring i
  for (size_t i = 0; i < n; ++i)
    for (size_t j = 0; j < n; ++j)
      if (i != j && Inside(rings[i][0], rings[j])) around[i].push_back(j);
  std::vector<size_t> outers;
  std::vector<std::vector<const Path*>> polygons;
  for (size_t i = 0; i < n; ++i)
    if (around[i].size() % 2 == 0) {
      outers.push_back(i);
      polygons.push_back({&rings[i]});
    }
  for (size_t i = 0; i < n; ++i) {
    if (around[i].size() % 2 == 0) continue;
    // The innermost outer ring around it: the one contained in the most others.
    size_t best = outers.size();
    for (size_t k = 0; k < outers.size(); ++k) {
      const std::vector<size_t>& a = around[i];
      if (std::find(a.begin(), a.end(), outers[k]) == a.end()) continue;
      if (best == outers.size() || around[outers[k]].size() > around[outers[best]].size()) best = k;
    }
    if (best < outers.size()) polygons[best].push_back(&rings[i]);
  }
  const bool z = std::any_of(rings.begin(), rings.end(), HasZ);
  if (polygons.size() == 1) return MakePolygon(polygons[0], z);
  GeometryPtr multi(OGR_G_CreateGeometry(z ? wkbMultiPolygon25D : wkbMultiPolygon));
  for (const auto& polygon : polygons)
    OGR_G_AddGeometryDirectly(multi.get(), MakePolygon(polygon, z).release());
  return multi;
}

geom::Vec3 ToWorld(const geom::Vec3& p, const geom::Vec3& normal) {
  return geom::IsWorldNormal(normal) ? p : geom::OcsToWcs(normal).Apply(p);
}

// The largest radius of the polyline's bulged segments (0 when all are straight).
double LargestBulgeRadius(const geom::LwPolyline& p) {
  double radius = 0.0;
  const size_t n = p.vertices.size();
  for (size_t i = 0; i + (p.closed ? 0 : 1) < n; ++i) {
    const geom::BulgeVertex& a = p.vertices[i];
    const geom::BulgeVertex& b = p.vertices[(i + 1) % n];
    if (auto arc = geom::BulgeToArc(a.point, b.point, a.bulge)) radius = std::max(radius, arc->radius);
  }
  return radius;
}

GeometryPtr FromFlat(const geom::FlatPath& path) { return FromPath(path.points, path.closed); }

}  // namespace

int PrecisionForDeviation(double radius, double deviation) {
  if (!(radius > 0.0) || !(deviation > 0.0)) return geom::kMaxPrecision;
  if (deviation >= radius) return geom::kMinPrecision;
  // A chord of a turn cut into n pieces lies r (1 - cos(pi / n)) from the arc.
  const double per_turn = kPi / std::acos(1.0 - deviation / radius);
  const double precision = std::ceil(per_turn / 4.0);
  return precision >= geom::kMaxPrecision ? geom::kMaxPrecision
                                          : std::max(geom::kMinPrecision, static_cast<int>(precision));
}

GeometryPtr EntityGeometry(const model::Document& doc, model::RecordId entity, double deviation) {
  const std::string& type = doc.TypeOf(entity);
  if (type == "POINT") {
    model::RecordTags t(doc, entity);
    return MakePoint(t.Point(10));
  }
  if (type == "TEXT" || type == "INSERT") {
    model::RecordTags t(doc, entity);
    return MakePoint(ToWorld(t.Point(10), t.Normal()));
  }
  if (type == "MTEXT") {
    model::RecordTags t(doc, entity);
    return MakePoint(t.Point(10));
  }
  if (type == "LINE") {
    auto v = model::EntityVertices(doc, entity);
    return v ? FromPath(v->points, false) : nullptr;
  }
  if (type == "LWPOLYLINE") {
    model::RecordTags t(doc, entity);
    geom::LwPolyline p = gi::ReadLwPolyline(t);
    return FromFlat(geom::Flatten(p, PrecisionForDeviation(LargestBulgeRadius(p), deviation)));
  }
  if (type == "POLYLINE") {
    model::RecordTags t(doc, entity);
    model::RecordTags scratch;
    gi::PolylineShape shape = gi::ReadPolyline(doc, entity, t, scratch);
    if (shape.mesh) return nullptr;
    if (shape.three_d) return FromPath(shape.space.points, shape.space.closed);
    return FromFlat(geom::Flatten(shape.flat, PrecisionForDeviation(LargestBulgeRadius(shape.flat), deviation)));
  }
  if (type == "ARC") {
    model::RecordTags t(doc, entity);
    geom::Arc arc = gi::ReadArc(t);
    return FromFlat(geom::Flatten(arc, PrecisionForDeviation(arc.radius, deviation)));
  }
  if (type == "CIRCLE") {
    model::RecordTags t(doc, entity);
    geom::Circle circle = gi::ReadCircle(t);
    return FromFlat(geom::Flatten(circle, PrecisionForDeviation(circle.radius, deviation)));
  }
  if (type == "ELLIPSE") {
    model::RecordTags t(doc, entity);
    geom::Ellipse e = gi::ReadEllipse(t);
    return FromFlat(geom::Flatten(e, PrecisionForDeviation(e.major_axis.Length(), deviation)));
  }
  if (type == "SPLINE") {
    auto path = model::FlattenEntity(doc, entity, geom::kMaxPrecision);
    return path ? FromFlat(*path) : nullptr;
  }
  if (type == "HATCH") return FromRings(HatchBoundaryRings(doc, entity, deviation));
  return nullptr;
}

}  // namespace veltor::gis
