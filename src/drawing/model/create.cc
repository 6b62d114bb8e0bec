#include "drawing/model/create.h"

#include "drawing/dxf/binary_values.h"
#include "drawing/model/entity.h"

namespace veltor::model {

namespace {

void Put(Tags& tags, int code, Point3 p, bool with_z = true) {
  tags.push_back({code, FormatNumber(p.x)});
  tags.push_back({code + 10, FormatNumber(p.y)});
  if (with_z) tags.push_back({code + 20, FormatNumber(p.z)});
}

}  // namespace

std::string FormatNumber(double value) { return dxf::FormatDouble(value); }

RecordId AddLine(Document& doc, std::string_view layer, Point3 a, Point3 b) {
  Tags body{{100, "AcDbLine"}};
  Put(body, 10, a);
  Put(body, 11, b);
  return AddModelSpaceEntity(doc, "LINE", layer, std::move(body));
}

RecordId AddLwPolyline(Document& doc, std::string_view layer, const std::vector<Vertex2>& vertices,
                       bool closed, double elevation) {
  Tags body{{100, "AcDbPolyline"},
            {90, std::to_string(vertices.size())},
            {70, closed ? "1" : "0"}};
  if (elevation != 0.0) body.push_back({38, FormatNumber(elevation)});
  for (const Vertex2& v : vertices) {
    body.push_back({10, FormatNumber(v.x)});
    body.push_back({20, FormatNumber(v.y)});
    if (v.bulge != 0.0) body.push_back({42, FormatNumber(v.bulge)});
  }
  return AddModelSpaceEntity(doc, "LWPOLYLINE", layer, std::move(body));
}

RecordId AddPolyline3d(Document& doc, std::string_view layer, const std::vector<Point3>& vertices,
                       bool closed) {
  Tags body{{100, "AcDb3dPolyline"}, {66, "1"}};
  Put(body, 10, Point3{});
  body.push_back({70, closed ? "9" : "8"});
  RecordId polyline = AddModelSpaceEntity(doc, "POLYLINE", layer, std::move(body));
  std::string owner = dxf::FormatHandle(doc.store().at(polyline).handle);
  RecordId before = doc.store().at(polyline).next;
  bool subclassed = doc.AtLeast("AC1012");
  auto common = [&](const char* type) {
    Tags t{{0, type}};
    if (subclassed) {
      t.push_back({330, owner});
      t.push_back({100, "AcDbEntity"});
    }
    t.push_back({8, doc.Encode(layer)});
    return t;
  };
  for (const Point3& p : vertices) {
    Tags v = common("VERTEX");
    if (subclassed) {
      v.push_back({100, "AcDbVertex"});
      v.push_back({100, "AcDb3dPolylineVertex"});
    }
    Put(v, 10, p);
    v.push_back({70, "32"});
    doc.InsertRecordBefore(before, std::move(v), Section::kEntities);
  }
  doc.InsertRecordBefore(before, common("SEQEND"), Section::kEntities);
  return polyline;
}

RecordId AddCircle(Document& doc, std::string_view layer, Point3 center, double radius) {
  Tags body{{100, "AcDbCircle"}};
  Put(body, 10, center);
  body.push_back({40, FormatNumber(radius)});
  return AddModelSpaceEntity(doc, "CIRCLE", layer, std::move(body));
}

RecordId AddArc(Document& doc, std::string_view layer, Point3 center, double radius,
                double start_angle, double end_angle) {
  Tags body{{100, "AcDbCircle"}};
  Put(body, 10, center);
  body.push_back({40, FormatNumber(radius)});
  body.push_back({100, "AcDbArc"});
  body.push_back({50, FormatNumber(start_angle)});
  body.push_back({51, FormatNumber(end_angle)});
  return AddModelSpaceEntity(doc, "ARC", layer, std::move(body));
}

RecordId AddEllipse(Document& doc, std::string_view layer, Point3 center, Point3 major_axis,
                    double ratio, double start_param, double end_param) {
  Tags body{{100, "AcDbEllipse"}};
  Put(body, 10, center);
  Put(body, 11, major_axis);
  body.push_back({40, FormatNumber(ratio)});
  body.push_back({41, FormatNumber(start_param)});
  body.push_back({42, FormatNumber(end_param)});
  return AddModelSpaceEntity(doc, "ELLIPSE", layer, std::move(body));
}

RecordId AddPoint(Document& doc, std::string_view layer, Point3 at) {
  Tags body{{100, "AcDbPoint"}};
  Put(body, 10, at);
  return AddModelSpaceEntity(doc, "POINT", layer, std::move(body));
}

RecordId AddText(Document& doc, std::string_view layer, Point3 at, double height,
                 std::string_view text, double rotation) {
  Tags body{{100, "AcDbText"}};
  Put(body, 10, at);
  body.push_back({40, FormatNumber(height)});
  body.push_back({1, doc.Encode(text)});
  if (rotation != 0.0) body.push_back({50, FormatNumber(rotation)});
  body.push_back({100, "AcDbText"});
  return AddModelSpaceEntity(doc, "TEXT", layer, std::move(body));
}

RecordId AddSpline(Document& doc, std::string_view layer, const std::vector<Point3>& control_points,
                   int degree) {
  int n = static_cast<int>(control_points.size());
  if (degree >= n) degree = n - 1;
  if (degree < 1) degree = 1;
  int knots = n + degree + 1;
  Tags body{{100, "AcDbSpline"},
            {210, "0"}, {220, "0"}, {230, "1"},
            {70, "8"},
            {71, std::to_string(degree)},
            {72, std::to_string(knots)},
            {73, std::to_string(n)},
            {74, "0"},
            {42, "0.0000001"},
            {43, "0.0000001"}};
  // Clamped uniform knots: degree+1 zeros, interior 1..n-degree-1, degree+1 copies of the end.
  int spans = n - degree;
  for (int i = 0; i < knots; ++i) {
    int k = i <= degree ? 0 : i >= n ? spans : i - degree;
    body.push_back({40, FormatNumber(static_cast<double>(k))});
  }
  for (const Point3& p : control_points) Put(body, 10, p);
  return AddModelSpaceEntity(doc, "SPLINE", layer, std::move(body));
}

}  // namespace veltor::model
