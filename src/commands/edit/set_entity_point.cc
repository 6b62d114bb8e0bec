#include "commands/edit/set_entity_point.h"

#include <cmath>

namespace veltor::commands {

namespace {

double Distance(const od::Point3& a, const od::Point3& b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) +
                   (b.z - a.z) * (b.z - a.z));
}

// The mean of a closed outline's vertices; a last vertex repeating the first (within 0.0001)
// is left out so that it does not count twice.
od::Point3 MeanOfOutline(const std::vector<od::Point3>& points) {
  size_t count = points.size();
  if (count > 1 && Distance(points.front(), points.back()) <= 0.0001) --count;
  od::Point3 sum;
  for (size_t i = 0; i < count; ++i) {
    sum.x += points[i].x;
    sum.y += points[i].y;
  }
  return {sum.x / static_cast<double>(count), sum.y / static_cast<double>(count), 0.0};
}

bool HasVertexPath(const std::string& type) {
  return type == "AcDbLine" || type == "AcDbPolyline" || type == "AcDb3dPolyline" ||
         type == "AcDbMline";
}

}  // namespace

od::Point3 HalfwayAlong(const std::vector<od::Point3>& points) {
  if (points.size() < 2) return {kUnavailable, kUnavailable, kUnavailable};
  if (points.size() == 2)
    return {(points[0].x + points[1].x) / 2, (points[0].y + points[1].y) / 2,
            (points[0].z + points[1].z) / 2};
  double total = 0;
  for (size_t i = 1; i < points.size(); ++i) total += Distance(points[i - 1], points[i]);
  const double half = total / 2;
  double run = 0;
  for (size_t i = 1; i < points.size(); ++i) {
    const od::Point3& a = points[i - 1];
    const od::Point3& b = points[i];
    double length = Distance(a, b);
    run += length;
    if (run > half) {
      // Back from the segment's end by what the running length passed the half.
      double back = (run - half) / length;
      return {b.x - (b.x - a.x) * back, b.y - (b.y - a.y) * back, b.z - (b.z - a.z) * back};
    }
  }
  return points.front();  // a path of zero length: every vertex is the halfway point
}

od::Point3 EntityPoint(const od::Database& db, od::EntityId entity, ui::XyMode xy_mode,
                       ui::ZMode z_mode) {
  od::Point3 point{kUnavailable, kUnavailable, kUnavailable};
  if (!db.CanOpen(entity)) return point;
  if (std::optional<od::Box3> box = db.GeomExtents(entity)) {
    switch (xy_mode) {
      case ui::XyMode::kFirst: point.x = box->min.x, point.y = box->min.y; break;
      case ui::XyMode::kLast: point.x = box->max.x, point.y = box->max.y; break;
      case ui::XyMode::kCenter:
        point.x = (box->min.x + box->max.x) / 2, point.y = (box->min.y + box->max.y) / 2;
        break;
    }
    switch (z_mode) {
      case ui::ZMode::kMin: point.z = box->min.z; break;
      case ui::ZMode::kMax: point.z = box->max.z; break;
      case ui::ZMode::kAverage: point.z = (box->min.z + box->max.z) / 2; break;
    }
  }
  const std::string type = db.EntityClass(entity);
  if (type == "AcDbBlockReference") {
    if (std::optional<od::Point3> at = db.InsertionPoint(entity)) return *at;
    return point;
  }
  if (type == "AcDbText") {
    if (std::optional<od::TextFacts> text = db.Text(entity)) return text->position;
    return point;
  }
  if (!HasVertexPath(type)) return point;
  std::optional<od::VertexList> vertices = db.Vertices(entity);
  if (!vertices || vertices->points.empty()) return point;
  const std::vector<od::Point3>& points = vertices->points;
  od::Point3 xy;
  switch (xy_mode) {
    case ui::XyMode::kFirst: xy = points.front(); break;
    case ui::XyMode::kLast: xy = points.back(); break;
    case ui::XyMode::kCenter: {
      bool closed_polyline =
          vertices->closed && (type == "AcDbPolyline" || type == "AcDb3dPolyline");
      xy = closed_polyline ? MeanOfOutline(points) : HalfwayAlong(points);
      break;
    }
  }
  point.x = xy.x;
  point.y = xy.y;
  return point;
}

}  // namespace veltor::commands
