#include "drawing/model/entity_geometry.h"

#include <cmath>
#include <string>

#include "drawing/geometry/conic.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/ocs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/text_box.h"
#include "drawing/model/blocks.h"
#include "drawing/model/entity.h"

namespace veltor::model {

namespace {

using geom::Extents;
using geom::Vec3;

constexpr int kMaxBlockDepth = 16;

double D(const Tags& t, int code, double fallback = 0.0) { return TagDouble(t, code, fallback); }
long long I(const Tags& t, int code, long long fallback = 0) { return TagInt(t, code, fallback); }

Vec3 Point(const Tags& t, int code, Vec3 fallback = Vec3()) {
  const Tag* x = FindTag(t, code);
  if (!x) return fallback;
  return Vec3{ParseDouble(x->value), D(t, code + 10), D(t, code + 20)};
}

Vec3 Normal(const Tags& t) { return Point(t, 210, Vec3{0, 0, 1}); }

// Points of a repeated code group (10/20/30 runs), in order.
std::vector<Vec3> Points(const Tags& t, int code) {
  std::vector<Vec3> out;
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code != code) continue;
    Vec3 p{ParseDouble(t[i].value), 0, 0};
    if (i + 1 < t.size() && t[i + 1].code == code + 10) p.y = ParseDouble(t[i + 1].value);
    if (i + 2 < t.size() && t[i + 2].code == code + 20) p.z = ParseDouble(t[i + 2].value);
    out.push_back(p);
  }
  return out;
}

std::vector<double> Values(const Tags& t, int code) {
  std::vector<double> out;
  for (const Tag& tag : t)
    if (tag.code == code) out.push_back(ParseDouble(tag.value));
  return out;
}

geom::LwPolyline ReadLwPolyline(const Tags& t) {
  geom::LwPolyline p;
  p.closed = (I(t, 70) & 1) != 0;
  p.elevation = D(t, 38);
  p.normal = Normal(t);
  for (size_t i = 0; i < t.size(); ++i) {
    if (t[i].code == 10) {
      geom::BulgeVertex v;
      v.point.x = ParseDouble(t[i].value);
      p.vertices.push_back(v);
    } else if (!p.vertices.empty()) {
      if (t[i].code == 20) p.vertices.back().point.y = ParseDouble(t[i].value);
      if (t[i].code == 42) p.vertices.back().bulge = ParseDouble(t[i].value);
    }
  }
  return p;
}

struct PolylineShape {
  bool three_d = false;
  bool mesh = false;  // polygon or polyface mesh: only its points count
  geom::LwPolyline flat;  // 2D polylines (OCS, bulges)
  geom::Polyline3d space;  // 3D polylines and meshes (WCS)
};

PolylineShape ReadPolyline(const Document& doc, RecordId entity, const Tags& t) {
  PolylineShape shape;
  long long flags = I(t, 70);
  shape.three_d = (flags & 8) != 0;
  shape.mesh = (flags & (16 | 64)) != 0;
  bool closed = (flags & 1) != 0;
  shape.flat.closed = shape.space.closed = closed;
  shape.flat.elevation = D(t, 30);
  shape.flat.normal = Normal(t);
  for (RecordId sub : SubEntities(doc, entity)) {
    if (doc.TypeOf(sub) != "VERTEX") continue;
    Tags v = doc.TagsOf(sub);
    long long vflags = I(v, 70);
    if (vflags & 16) continue;  // spline frame control point
    if (shape.mesh && (vflags & 128) && !(vflags & 64)) continue;  // polyface face record
    Vec3 p = Point(v, 10);
    shape.space.points.push_back(p);
    shape.flat.vertices.push_back(geom::BulgeVertex{{p.x, p.y}, D(v, 42)});
  }
  return shape;
}

std::optional<geom::NurbsCurve> ReadSpline(const Tags& t) {
  geom::SplineData data;
  long long flags = I(t, 70);
  data.closed = (flags & 1) != 0;
  data.periodic = (flags & 2) != 0;
  data.degree = static_cast<int>(I(t, 71, 3));
  data.knots = Values(t, 40);
  data.weights = Values(t, 41);
  data.control_points = Points(t, 10);
  data.fit_points = Points(t, 11);
  auto curve = geom::NurbsCurve::Make(data);
  if (!curve.ok()) return std::nullopt;
  return std::move(curve.value());
}

geom::Circle ReadCircle(const Tags& t) { return geom::Circle{Point(t, 10), D(t, 40), Normal(t)}; }
geom::Arc ReadArc(const Tags& t) {
  return geom::Arc{Point(t, 10), D(t, 40), D(t, 50), D(t, 51, 360.0), Normal(t)};
}
geom::Ellipse ReadEllipse(const Tags& t) {
  return geom::Ellipse{Point(t, 10),      Point(t, 11, Vec3{1, 0, 0}), D(t, 40, 1.0),
                       D(t, 41),          D(t, 42, 2 * M_PI),        Normal(t)};
}

// The longest line of TEXT/MTEXT content, in characters, and the number of lines.
std::pair<size_t, size_t> TextMetrics(const Document& doc, const std::string& raw, bool mtext) {
  std::string text = doc.Decode(raw);
  size_t longest = 0, current = 0, lines = 1;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    if (mtext && text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'P' || text[i + 1] == 'p')) {
      longest = std::max(longest, current);
      current = 0;
      ++lines;
      ++i;
      continue;
    }
    if ((c & 0xC0) != 0x80) ++current;  // count characters, not UTF-8 bytes
  }
  return {std::max(longest, current), lines};
}

std::optional<Extents> TextExtents(const Document& doc, const Tags& t, bool mtext) {
  geom::TextBoxInput in;
  in.height = D(t, 40, 1.0);
  in.normal = Normal(t);
  std::string raw = TagText(t, 1);
  if (mtext) {
    for (const Tag& tag : t)
      if (tag.code == 3) raw = tag.value + raw;  // chunks precede the final group 1
    auto [h, v] = geom::MTextAlignment(static_cast<int>(I(t, 71, 1)));
    in.h_align = h;
    in.v_align = v;
    in.wrap_width = D(t, 41);
    in.anchor = Point(t, 10);
    in.rotation_deg = D(t, 50);
    if (FindTag(t, 11)) {
      Vec3 dir = Point(t, 11);
      in.rotation_deg = std::atan2(dir.y, dir.x) * 180.0 / M_PI;
    }
    // MTEXT positions are world coordinates; the box is built in the XY plane.
    in.normal = Vec3{0, 0, 1};
  } else {
    in.width_factor = D(t, 41, 1.0);
    in.rotation_deg = D(t, 50);
    int h72 = static_cast<int>(I(t, 72)), v73 = static_cast<int>(I(t, 73, I(t, 74)));
    auto [h, v] = geom::TextAlignment(h72, v73);
    in.h_align = h;
    in.v_align = v;
    bool aligned = h72 != 0 || v73 != 0;
    in.anchor = aligned && FindTag(t, 11) ? Point(t, 11) : Point(t, 10);
    if (h72 == 3 || h72 == 5) {  // aligned and fit: the text spans its two points
      Vec3 a = Point(t, 10), b = Point(t, 11);
      in.text_width = std::hypot(b.x - a.x, b.y - a.y);
      in.anchor = a;
      in.h_align = geom::TextHAlign::kLeft;
    }
  }
  auto [chars, lines] = TextMetrics(doc, raw, mtext);
  if (chars == 0) return std::nullopt;
  in.char_count = chars;
  in.line_count = lines;
  return geom::EstimateTextBox(in).extents;
}

std::optional<Extents> ExtentsAt(const Document& doc, RecordId entity, int depth);

std::optional<Extents> BlockContentExtents(const Document& doc, const std::string& block, int depth) {
  if (depth > kMaxBlockDepth) return std::nullopt;
  Extents box;
  for (RecordId id : BlockEntities(doc, block)) {
    const std::string& type = doc.TypeOf(id);
    if (type == "ATTDEF" || type == "BLOCK") continue;  // definitions show as attributes
    if (auto e = ExtentsAt(doc, id, depth + 1)) box.Add(*e);
  }
  if (!box.valid()) return std::nullopt;
  return box;
}

std::optional<Extents> InsertExtents(const Document& doc, RecordId entity, const Tags& t, int depth) {
  std::string block = doc.Decode(TagText(t, 2));
  Extents box;
  if (auto content = BlockContentExtents(doc, block, depth)) {
    geom::BlockReference ref;
    ref.insertion = Point(t, 10);
    ref.x_scale = D(t, 41, 1.0);
    ref.y_scale = D(t, 42, 1.0);
    ref.z_scale = D(t, 43, 1.0);
    ref.rotation_deg = D(t, 50);
    ref.normal = Normal(t);
    RecordId begin = FindBlockBegin(doc, block);
    if (begin != kNoRecord) ref.base_point = Point(doc.TagsOf(begin), 10);
    geom::Matrix3d m = geom::BlockTransform(ref);
    // A MINSERT repeats the block in rows and columns along the block's rotated axes; the
    // outermost copies bound the rest.
    long long columns = std::max(1LL, I(t, 70, 1)), rows = std::max(1LL, I(t, 71, 1));
    double column_step = D(t, 44), row_step = D(t, 45);
    double angle = ref.rotation_deg * M_PI / 180.0;
    Vec3 col_dir{std::cos(angle), std::sin(angle), 0}, row_dir{-std::sin(angle), std::cos(angle), 0};
    geom::Matrix3d ocs = geom::OcsToWcs(ref.normal);
    for (long long r : {0LL, rows - 1})
      for (long long c : {0LL, columns - 1}) {
        Vec3 shift = ocs.ApplyVector(col_dir * (column_step * static_cast<double>(c)) +
                                     row_dir * (row_step * static_cast<double>(r)));
        box.Add(geom::Matrix3d::Translation(shift).operator*(m).Apply(*content));
      }
  }
  for (RecordId sub : SubEntities(doc, entity))
    if (doc.TypeOf(sub) == "ATTRIB") {
      Tags a = doc.TagsOf(sub);
      if (I(a, 70) & 1) continue;  // invisible attribute
      if (auto e = TextExtents(doc, a, false)) box.Add(*e);
    }
  if (!box.valid()) return std::nullopt;
  return box;
}

std::optional<Extents> ExtentsAt(const Document& doc, RecordId entity, int depth) {
  const std::string& type = doc.TypeOf(entity);
  Tags t = doc.TagsOf(entity);
  auto some = [](const Extents& e) -> std::optional<Extents> {
    if (!e.valid()) return std::nullopt;
    return e;
  };
  if (type == "LINE") return Extents(Point(t, 10), Point(t, 11));
  if (type == "POINT") return Extents(Point(t, 10), Point(t, 10));
  if (type == "CIRCLE") return some(geom::BoundsOf(ReadCircle(t)));
  if (type == "ARC") return some(geom::BoundsOf(ReadArc(t)));
  if (type == "ELLIPSE") return some(geom::BoundsOf(ReadEllipse(t)));
  if (type == "LWPOLYLINE") return some(geom::BoundsOf(ReadLwPolyline(t)));
  if (type == "POLYLINE") {
    PolylineShape shape = ReadPolyline(doc, entity, t);
    return some(shape.three_d || shape.mesh ? geom::BoundsOf(shape.space) : geom::BoundsOf(shape.flat));
  }
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    if (!curve) return std::nullopt;
    return some(geom::BoundsOf(*curve));
  }
  if (type == "TEXT" || type == "ATTRIB" || type == "ATTDEF") return TextExtents(doc, t, false);
  if (type == "MTEXT") return TextExtents(doc, t, true);
  if (type == "INSERT") return InsertExtents(doc, entity, t, depth);
  if (type == "MLINE" || type == "LEADER") {
    Extents box;
    for (const Vec3& p : Points(t, type == "MLINE" ? 11 : 10)) box.Add(p);
    return some(box);
  }
  if (type == "SOLID" || type == "TRACE" || type == "3DFACE") {
    Extents box;
    for (int code : {10, 11, 12, 13}) {
      Vec3 p = Point(t, code, Point(t, 12));
      box.Add(type == "3DFACE" ? p : geom::OcsToWcs(Normal(t)).Apply(p));
    }
    return some(box);
  }
  if (type == "DIMENSION") {
    // The dimension's picture is an anonymous block drawn in world coordinates.
    return BlockContentExtents(doc, doc.Decode(TagText(t, 2)), depth);
  }
  return std::nullopt;
}

}  // namespace

std::optional<Extents> EntityExtents(const Document& doc, RecordId entity) {
  return ExtentsAt(doc, entity, 0);
}

std::optional<EntityVertexList> EntityVertices(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  Tags t = doc.TagsOf(entity);
  EntityVertexList out;
  if (type == "LINE") {
    out.points = {Point(t, 10), Point(t, 11)};
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
    PolylineShape shape = ReadPolyline(doc, entity, t);
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
    out.points = Points(t, 11);
    out.closed = (I(t, 71) & 2) != 0;
    return out;
  }
  return std::nullopt;
}

bool IsClosedCurve(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  Tags t = doc.TagsOf(entity);
  if (type == "CIRCLE") return true;
  if (type == "LWPOLYLINE" || type == "POLYLINE") return (I(t, 70) & 1) != 0;
  if (type == "MLINE") return (I(t, 71) & 2) != 0;
  if (type == "ELLIPSE") {
    double sweep = geom::SweepBetween(D(t, 41), D(t, 42, 2 * M_PI));
    return std::fabs(sweep - 2 * M_PI) < 1e-9;
  }
  if (type == "SPLINE") {
    auto curve = ReadSpline(t);
    return ((I(t, 70) & 1) != 0) || (curve && curve->IsClosed());
  }
  return false;
}

std::optional<double> EntityLength(const Document& doc, RecordId entity) {
  const std::string& type = doc.TypeOf(entity);
  Tags t = doc.TagsOf(entity);
  if (type == "LINE") {
    Vec3 a = Point(t, 10), b = Point(t, 11);
    return (b - a).Length();
  }
  if (type == "CIRCLE") return geom::LengthOf(ReadCircle(t));
  if (type == "ARC") return geom::LengthOf(ReadArc(t));
  if (type == "ELLIPSE") return geom::LengthOf(ReadEllipse(t));
  if (type == "LWPOLYLINE") return geom::LengthOf(ReadLwPolyline(t));
  if (type == "POLYLINE") {
    PolylineShape shape = ReadPolyline(doc, entity, t);
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
  Tags t = doc.TagsOf(entity);
  if (type == "CIRCLE") {
    double r = D(t, 40);
    return M_PI * r * r;
  }
  if (type == "LWPOLYLINE") return geom::AreaOf(ReadLwPolyline(t));
  if (type == "POLYLINE") {
    PolylineShape shape = ReadPolyline(doc, entity, t);
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
  Tags t = doc.TagsOf(entity);
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
    PolylineShape shape = ReadPolyline(doc, entity, t);
    if (!shape.three_d && !shape.mesh) return geom::Flatten(shape.flat, precision);
  }
  if (auto v = EntityVertices(doc, entity)) return geom::FlatPath{v->points, v->closed};
  return std::nullopt;
}

geom::SpatialIndex BuildModelSpaceIndex(const Document& doc) {
  std::vector<geom::SpatialIndex::Entry> entries;
  for (RecordId id : ModelSpaceEntities(doc))
    if (auto e = EntityExtents(doc, id)) entries.emplace_back(id, *e);
  return geom::SpatialIndex(entries);
}

}  // namespace veltor::model
