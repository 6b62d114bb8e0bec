#include "commands/edit/set_measure.h"

#include <cmath>

namespace veltor::commands {

namespace {

// The host's default tolerance for equal points: a multiline whose ends lie this close
// counts as closed.
constexpr double kClosingTolerance = 1e-10;

double Distance(const od::Point3& a, const od::Point3& b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) +
                   (b.z - a.z) * (b.z - a.z));
}

double PathLength(const std::vector<od::Point3>& points, bool closed) {
  double length = 0;
  for (size_t i = 1; i < points.size(); ++i) length += Distance(points[i - 1], points[i]);
  if (closed && points.size() > 1) length += Distance(points.back(), points.front());
  return length;
}

}  // namespace

double ProjectedArea(const std::vector<od::Point3>& points) {
  double twice = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    const od::Point3& a = points[i];
    const od::Point3& b = points[(i + 1) % points.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return std::fabs(twice) / 2;
}

Measures MeasureEntity(const od::Database& db, od::EntityId entity) {
  Measures m;
  const std::string type = db.EntityClass(entity);
  if (type == "AcDb3dSolid") {
    std::optional<double> volume = db.SolidVolume(entity);
    m.volume = volume.value_or(0.0);
    m.volume_unmeasured = !volume;
    return m;
  }
  const bool polyline = type == "AcDbPolyline";
  const bool polyline3d = type == "AcDb3dPolyline";
  const bool mline = type == "AcDbMline";
  if (!polyline && !polyline3d && !mline && type != "AcDbLine") return m;
  std::optional<od::VertexList> vertices = db.Vertices(entity);
  if (!vertices) return m;
  const std::vector<od::Point3>& points = vertices->points;
  // Multilines never add a closing segment to their length; the others do when closed.
  m.length = PathLength(points, vertices->closed && !mline);
  if (polyline) {
    m.area = db.Area(entity).value_or(0.0);
  } else if (polyline3d && vertices->closed) {
    m.area = ProjectedArea(points);
  } else if (mline && points.size() > 2) {
    const od::Point3& a = points.front();
    const od::Point3& b = points.back();
    if (std::fabs(a.x - b.x) <= kClosingTolerance && std::fabs(a.y - b.y) <= kClosingTolerance &&
        std::fabs(a.z - b.z) <= kClosingTolerance)
      m.area = ProjectedArea(points);
  }
  return m;
}

}  // namespace veltor::commands
