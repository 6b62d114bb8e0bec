#include "drawing/model/entity_geometry.h"

#include <cmath>
#include <string>

#include "drawing/geometry/conic.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/ocs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry_readers.h"
#include "drawing/model/entity_geometry_tags.h"
#include "drawing/model/extents_cache.h"

namespace veltor::model {

using geom::Vec3;
using namespace geometry_internal;

std::optional<geom::Extents> EntityExtents(const Document& doc, RecordId entity) {
  return ExtentsCache(doc).Measure(entity);
}

std::optional<EntityVertexList> EntityVertices(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  RecordTags t(doc, entity);
  EntityVertexList out;
  if (type == "LINE") {
    out.points = {t.Point(10), t.Point(11)};
    return out;
  }
  if (type == "LWPOLYLINE") {
    geom::LwPolyline p = ReadLwPolyline(t);
    geom::Matrix3d m = geom::OcsToWcs(p.normal);
    for (const auto& v : p.vertices) out.points.push_back(m.Apply(Vec3{v.point.x, v.point.y, p.elevation}));
    out.closed = p.closed;
    return out;
  }
  if (type == "POLYLINE") {
    RecordTags scratch;
    PolylineShape shape = ReadPolyline(doc, entity, t, scratch);
    if (shape.three_d || shape.mesh) {
      out.points = shape.space.points;
    } else {
      geom::Matrix3d m = geom::OcsToWcs(shape.flat.normal);
      for (const auto& v : shape.flat.vertices)
        out.points.push_back(m.Apply(Vec3{v.point.x, v.point.y, shape.flat.elevation}));
    }
    out.closed = shape.flat.closed;
    return out;
  }
  if (type == "MLINE") {
    out.points = t.Points(11);
    out.closed = (t.Int(71) & 2) != 0;
    return out;
  }
  return std::nullopt;
}

bool IsClosedCurve(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  RecordTags t(doc, entity);
  if (type == "CIRCLE") return true;
  if (type == "LWPOLYLINE" || type == "POLYLINE") return (t.Int(70) & 1) != 0;
  if (type == "MLINE") return (t.Int(71) & 2) != 0;
  if (type == "ELLIPSE") {
    double sweep = geom::SweepBetween(t.Double(41), t.Double(42, 2 * M_PI));
    return std::fabs(sweep - 2 * M_PI) < 1e-9;
  }
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    return ((t.Int(70) & 1) != 0) || (curve && curve->IsClosed());
  }
  return false;
}

std::optional<double> EntityLength(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  RecordTags t(doc, entity);
  if (type == "LINE") {
    Vec3 a = t.Point(10), b = t.Point(11);
    return (b - a).Length();
  }
  if (type == "CIRCLE") return geom::LengthOf(ReadCircle(t));
  if (type == "ARC") return geom::LengthOf(ReadArc(t));
  if (type == "ELLIPSE") return geom::LengthOf(ReadEllipse(t));
  if (type == "LWPOLYLINE") return geom::LengthOf(ReadLwPolyline(t));
  if (type == "POLYLINE") {
    RecordTags scratch;
    PolylineShape shape = ReadPolyline(doc, entity, t, scratch);
    if (shape.mesh) return std::nullopt;
    return shape.three_d ? geom::LengthOf(shape.space) : geom::LengthOf(shape.flat);
  }
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    if (!curve) return std::nullopt;
    return geom::LengthOf(*curve);
  }
  if (type == "MLINE") {
    auto v = EntityVertices(doc, entity);
    geom::Polyline3d p{v->points, v->closed};
    return geom::LengthOf(p);
  }
  return std::nullopt;
}

std::optional<double> EntityArea(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  RecordTags t(doc, entity);
  if (type == "CIRCLE") {
    double r = t.Double(40);
    return M_PI * r * r;
  }
  if (type == "LWPOLYLINE") return geom::AreaOf(ReadLwPolyline(t));
  if (type == "POLYLINE") {
    RecordTags scratch;
    PolylineShape shape = ReadPolyline(doc, entity, t, scratch);
    if (shape.mesh) return std::nullopt;
    if (!shape.three_d) return geom::AreaOf(shape.flat);
  }
  // Other curves: the area of their outline in its own plane, from a fine flattening.
  auto path = FlattenEntity(doc, entity, 99);
  if (!path || path->points.size() < 3) {
    if (type == "ARC" || type == "ELLIPSE" || type == "SPLINE" || type == "POLYLINE" ||
        type == "MLINE")
      return 0.0;
    return std::nullopt;
  }
  // Newell's method gives the area of a planar ring in any orientation.
  Vec3 normal;
  const auto& p = path->points;
  for (size_t i = 0; i < p.size(); ++i) {
    const Vec3& a = p[i];
    const Vec3& b = p[(i + 1) % p.size()];
    normal.x += (a.y - b.y) * (a.z + b.z);
    normal.y += (a.z - b.z) * (a.x + b.x);
    normal.z += (a.x - b.x) * (a.y + b.y);
  }
  return normal.Length() / 2.0;
}

std::optional<geom::FlatPath> FlattenEntity(const Document& doc, RecordId entity, int precision) {
  const std::string& type = doc.TypeOf(entity);
  RecordTags t(doc, entity);
  if (type == "CIRCLE") return geom::Flatten(ReadCircle(t), precision);
  if (type == "ARC") return geom::Flatten(ReadArc(t), precision);
  if (type == "ELLIPSE") return geom::Flatten(ReadEllipse(t), precision);
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    if (!curve) return std::nullopt;
    return geom::Flatten(*curve, precision);
  }
  if (type == "LWPOLYLINE") return geom::Flatten(ReadLwPolyline(t), precision);
  if (type == "POLYLINE") {
    RecordTags scratch;
    PolylineShape shape = ReadPolyline(doc, entity, t, scratch);
    if (!shape.three_d && !shape.mesh) return geom::Flatten(shape.flat, precision);
  }
  if (auto v = EntityVertices(doc, entity)) return geom::FlatPath{v->points, v->closed};
  return std::nullopt;
}

geom::SpatialIndex BuildModelSpaceIndex(const Document& doc) {
  ExtentsCache cache(doc);
  const std::vector<RecordId> entities = ModelSpaceEntities(doc);
  std::vector<geom::SpatialIndex::Entry> entries;
  entries.reserve(entities.size());
  for (RecordId id : entities)
    if (auto e = cache.Measure(id)) entries.emplace_back(id, *e);
  return geom::SpatialIndex(entries);
}

}  // namespace veltor::model
