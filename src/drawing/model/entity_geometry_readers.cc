#include "drawing/model/entity_geometry_readers.h"

#include <cmath>

namespace veltor::model::geometry_internal {

using geom::Vec3;

geom::LwPolyline ReadLwPolyline(const RecordTags& t) {
  geom::LwPolyline p;
  p.closed = (t.Int(70) & 1) != 0;
  p.elevation = t.Double(38);
  p.normal = t.Normal();
  bool any_width = false;
  for (const TagView& tag : t) {
    if (tag.code == 10) {
      geom::BulgeVertex v;
      v.point.x = ParseDouble(tag.value);
      p.vertices.push_back(v);
      p.widths.emplace_back();
    } else if (!p.vertices.empty()) {
      if (tag.code == 20) p.vertices.back().point.y = ParseDouble(tag.value);
      if (tag.code == 42) p.vertices.back().bulge = ParseDouble(tag.value);
      if (tag.code == 40 || tag.code == 41) {
        const double w = ParseDouble(tag.value);
        (tag.code == 40 ? p.widths.back().start : p.widths.back().end) = w;
        any_width = any_width || w != 0.0;
      }
    }
  }
  const double constant = t.Double(43);
  if (constant != 0.0) {
    for (geom::SegmentWidth& w : p.widths) w = {constant, constant};
    any_width = true;
  }
  if (!any_width) p.widths.clear();
  return p;
}

PolylineShape ReadPolyline(const Document& doc, RecordId entity, const RecordTags& t,
                           RecordTags& scratch) {
  PolylineShape shape;
  const long long flags = t.Int(70);
  shape.three_d = (flags & 8) != 0;
  shape.mesh = (flags & (16 | 64)) != 0;
  const bool closed = (flags & 1) != 0;
  shape.flat.closed = shape.space.closed = closed;
  shape.flat.elevation = t.Double(30);
  shape.flat.normal = t.Normal();
  const bool flat = !shape.three_d && !shape.mesh;
  const double default_start = t.Double(40), default_end = t.Double(41);
  bool any_width = flat && (default_start != 0.0 || default_end != 0.0);
  const dxf::RecordStore& store = doc.store();
  for (RecordId sub = store.at(entity).next; sub != kNoRecord && store.at(sub).sub_entity;
       sub = store.at(sub).next) {
    if (doc.TypeOf(sub) != "VERTEX") continue;
    scratch.Read(store, sub);
    const long long vflags = scratch.Int(70);
    if (vflags & 16) continue;  // spline frame control point
    if (shape.mesh && (vflags & 128) && !(vflags & 64)) continue;  // polyface face record
    const Vec3 p = scratch.Point(10);
    shape.space.points.push_back(p);
    shape.flat.vertices.push_back(geom::BulgeVertex{{p.x, p.y}, scratch.Double(42)});
    if (flat) {
      geom::SegmentWidth w{scratch.Double(40, default_start), scratch.Double(41, default_end)};
      any_width = any_width || w.start != 0.0 || w.end != 0.0;
      shape.flat.widths.push_back(w);
    }
  }
  if (!any_width) shape.flat.widths.clear();
  return shape;
}

std::optional<geom::NurbsCurve> ReadSpline(const RecordTags& t) {
  geom::SplineData data;
  const long long flags = t.Int(70);
  data.closed = (flags & 1) != 0;
  data.periodic = (flags & 2) != 0;
  data.degree = static_cast<int>(t.Int(71, 3));
  data.knots = t.Values(40);
  data.weights = t.Values(41);
  data.control_points = t.Points(10);
  data.fit_points = t.Points(11);
  auto curve = geom::NurbsCurve::Make(data);
  if (!curve.ok()) return std::nullopt;
  return std::move(curve.value());
}

geom::Circle ReadCircle(const RecordTags& t) {
  return geom::Circle{t.Point(10), t.Double(40), t.Normal()};
}

geom::Arc ReadArc(const RecordTags& t) {
  return geom::Arc{t.Point(10), t.Double(40), t.Double(50), t.Double(51, 360.0), t.Normal()};
}

geom::BlockReference ReadBlockReference(const RecordTags& t) {
  geom::BlockReference ref;
  ref.insertion = t.Point(10);
  ref.x_scale = t.Double(41, 1.0);
  ref.y_scale = t.Double(42, 1.0);
  ref.z_scale = t.Double(43, 1.0);
  ref.rotation_deg = t.Double(50);
  ref.normal = t.Normal();
  return ref;
}

geom::Ellipse ReadEllipse(const RecordTags& t) {
  return geom::Ellipse{t.Point(10),     t.Point(11, Vec3{1, 0, 0}), t.Double(40, 1.0),
                       t.Double(41),    t.Double(42, 2 * M_PI),     t.Normal()};
}

}  // namespace veltor::model::geometry_internal
