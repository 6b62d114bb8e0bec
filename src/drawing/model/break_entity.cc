#include "drawing/model/break_entity.h"

#include <functional>

#include "drawing/geometry/break_arc.h"
#include "drawing/geometry/break_bulge_polyline.h"
#include "drawing/geometry/break_path.h"
#include "drawing/geometry/break_spline.h"
#include "drawing/geometry/ocs.h"
#include "drawing/model/curve_tags.h"
#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry_readers.h"
#include "drawing/model/entity_geometry_tags.h"

namespace veltor::model {

namespace {

namespace gi = geometry_internal;

// Writes the geometry of piece `index` into tags that start as the entity's own.
using PieceWriter = std::function<void(Tags&, size_t index)>;

geom::Vec2 ToOcs(const geom::Vec3& normal, const geom::Vec3& p) {
  return geom::IsWorldNormal(normal) ? p.Xy() : geom::WcsToOcs(normal).Apply(p).Xy();
}

// The entity keeps piece 0; every other piece is a copy of it added at the end of model
// space. All pieces are computed before this runs, so nothing here can fail.
std::vector<RecordId> WritePieces(Document& doc, RecordId entity, size_t count, const PieceWriter& write) {
  const Tags original = CopyableTags(doc.TagsOf(entity));
  write(doc.MutableTags(entity), 0);
  std::vector<RecordId> pieces{entity};
  for (size_t i = 1; i < count; ++i) {
    Tags tags = original;
    write(tags, i);
    pieces.push_back(doc.InsertRecordBefore(doc.SectionEnd(Section::kEntities), std::move(tags),
                                            Section::kEntities));
  }
  return pieces;
}

Result<std::vector<RecordId>> BreakLine(Document& doc, RecordId entity, const geom::Vec3& a, const geom::Vec3& b) {
  const RecordTags t(doc, entity);
  Result<std::vector<geom::Polyline3d>> pieces = geom::BreakPath({{t.Point(10), t.Point(11)}, false}, a, b);
  if (!pieces.ok()) return pieces.status();
  return WritePieces(doc, entity, pieces->size(), [&](Tags& tags, size_t i) {
    WriteLine(tags, (*pieces)[i].points.front(), (*pieces)[i].points.back());
  });
}

Result<std::vector<RecordId>> BreakArcOrCircle(Document& doc, RecordId entity, const geom::Vec3& a,
                                               const geom::Vec3& b, bool circle) {
  const RecordTags t(doc, entity);
  const geom::Vec3 normal = t.Normal();
  const geom::Vec2 center = t.Point(10).Xy(), pa = ToOcs(normal, a), pb = ToOcs(normal, b);
  const double radius = t.Double(40);
  if (circle) {
    Result<geom::ArcSpan> kept = geom::BreakCircle(center, radius, pa, pb);
    if (!kept.ok()) return kept.status();
    CircleTagsToArc(doc.MutableTags(entity), *kept);
    doc.store().SetType(entity, "ARC");
    return std::vector<RecordId>{entity};
  }
  const double to_radians = geom::kPi / 180.0;
  geom::ArcSpan arc{t.Double(50) * to_radians, t.Double(51, 360.0) * to_radians};
  if (arc.end <= arc.start) arc.end += geom::kTwoPi;
  Result<std::vector<geom::ArcSpan>> pieces = geom::BreakArc(center, radius, arc, pa, pb);
  if (!pieces.ok()) return pieces.status();
  return WritePieces(doc, entity, pieces->size(),
                     [&](Tags& tags, size_t i) { WriteArcAngles(tags, (*pieces)[i]); });
}

Result<std::vector<RecordId>> BreakLw(Document& doc, RecordId entity, const geom::Vec3& a, const geom::Vec3& b) {
  const RecordTags t(doc, entity);
  const geom::LwPolyline polyline = gi::ReadLwPolyline(t);
  Result<std::vector<geom::LwPolyline>> pieces =
      geom::BreakLwPolyline(polyline, ToOcs(polyline.normal, a), ToOcs(polyline.normal, b));
  if (!pieces.ok()) return pieces.status();
  return WritePieces(doc, entity, pieces->size(),
                     [&](Tags& tags, size_t i) { WriteLwPolyline(tags, (*pieces)[i]); });
}

Result<std::vector<RecordId>> BreakSplineEntity(Document& doc, RecordId entity, const geom::Vec3& a,
                                                const geom::Vec3& b) {
  const RecordTags t(doc, entity);
  std::optional<geom::NurbsCurve> curve = gi::ReadSpline(t);
  if (!curve) return Status::Error("break: the spline's data cannot be read");
  Result<std::vector<geom::SplineData>> pieces = geom::BreakSpline(*curve, a, b);
  if (!pieces.ok()) return pieces.status();
  return WritePieces(doc, entity, pieces->size(),
                     [&](Tags& tags, size_t i) { WriteSpline(tags, (*pieces)[i]); });
}

// Replaces the vertices of a 3D polyline: the old VERTEX records go, new ones (copies of the
// first old vertex with their own points) are put before `seqend`.
void PutVertices(Document& doc, Handle owner, const Tags& vertex_template, RecordId before,
                 const std::vector<geom::Vec3>& points) {
  for (const geom::Vec3& p : points) {
    Tags v = vertex_template;
    for (Tag& tag : v)
      if (tag.code == 330) tag.value = dxf::FormatHandle(owner);
    SetPointTags(v, 10, p);
    doc.InsertRecordBefore(before, std::move(v), Section::kEntities);
  }
}

Result<std::vector<RecordId>> BreakPolyline3d(Document& doc, RecordId entity, const geom::Vec3& a,
                                              const geom::Vec3& b) {
  const RecordTags t(doc, entity);
  RecordTags scratch;
  const gi::PolylineShape shape = gi::ReadPolyline(doc, entity, t, scratch);
  Result<std::vector<geom::Polyline3d>> pieces = geom::BreakPath(shape.space, a, b);
  if (!pieces.ok()) return pieces.status();
  std::vector<RecordId> vertices, seqend;
  for (RecordId sub : SubEntities(doc, entity))
    (doc.TypeOf(sub) == "VERTEX" ? vertices : seqend).push_back(sub);
  if (vertices.empty() || seqend.empty()) return Status::Error("break: the 3D polyline has no SEQEND");
  const Tags vertex_template = CopyableTags(doc.TagsOf(vertices.front()));
  const Tags seqend_template = CopyableTags(doc.TagsOf(seqend.front()));
  Tags header = CopyableTags(doc.TagsOf(entity));
  for (Tag& tag : header)
    if (tag.code == 70) tag.value = std::to_string(ParseInt(tag.value) & ~1LL);
  for (Tag& tag : doc.MutableTags(entity))
    if (tag.code == 70) tag.value = std::to_string(ParseInt(tag.value) & ~1LL);
  for (RecordId v : vertices) EraseOwnedTree(doc, v);
  PutVertices(doc, doc.store().at(entity).handle, vertex_template, seqend.front(), (*pieces)[0].points);
  std::vector<RecordId> made{entity};
  for (size_t i = 1; i < pieces->size(); ++i) {
    const RecordId end = doc.SectionEnd(Section::kEntities);
    const RecordId piece = doc.InsertRecordBefore(end, header, Section::kEntities);
    const Handle owner = doc.store().at(piece).handle;
    PutVertices(doc, owner, vertex_template, end, (*pieces)[i].points);
    Tags s = seqend_template;
    for (Tag& tag : s)
      if (tag.code == 330) tag.value = dxf::FormatHandle(owner);
    doc.InsertRecordBefore(end, std::move(s), Section::kEntities);
    made.push_back(piece);
  }
  return made;
}

}  // namespace

bool CanBreak(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  if (type == "POLYLINE") return (RecordTags(doc, entity).Int(70) & 8) != 0;
  return type == "LINE" || type == "ARC" || type == "CIRCLE" || type == "LWPOLYLINE" || type == "SPLINE";
}

Result<std::vector<RecordId>> BreakEntity(Document& doc, RecordId entity, const geom::Vec3& first,
                                          const geom::Vec3& second) {
  const std::string type = doc.TypeOf(entity);
  if (!CanBreak(doc, entity))
    return Status::Error("break: an object of type " +
                         (type == "POLYLINE" ? std::string("2D POLYLINE or mesh") : type) +
                         " cannot be broken (lines, arcs, circles, lightweight polylines, 3D polylines "
                         "and splines can)");
  if (type == "LINE") return BreakLine(doc, entity, first, second);
  if (type == "ARC" || type == "CIRCLE") return BreakArcOrCircle(doc, entity, first, second, type == "CIRCLE");
  if (type == "LWPOLYLINE") return BreakLw(doc, entity, first, second);
  if (type == "SPLINE") return BreakSplineEntity(doc, entity, first, second);
  return BreakPolyline3d(doc, entity, first, second);
}

}  // namespace veltor::model
