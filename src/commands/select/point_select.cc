#include "commands/select/point_select.h"

#include <cmath>
#include <unordered_set>

#include "od/gathering.h"

namespace veltor::commands {

namespace {

// Contours are flattened finely enough that the polygon test follows the curve closely.
constexpr int kContourPrecision = 99;

bool OnSegment(const od::Point3& a, const od::Point3& b, const od::Point3& p) {
  double cross = (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
  double scale = std::fabs(b.x - a.x) + std::fabs(b.y - a.y);
  if (std::fabs(cross) > 1e-12 * (scale * scale + 1.0)) return false;
  return p.x >= std::fmin(a.x, b.x) && p.x <= std::fmax(a.x, b.x) && p.y >= std::fmin(a.y, b.y) &&
         p.y <= std::fmax(a.y, b.y);
}

bool IsContourClass(const std::string& cls) {
  return cls == "AcDbPolyline" || cls == "AcDb3dPolyline" || cls == "AcDbSpline" || cls == "AcDbMline";
}

// The contour's ring in the XY plane when it is closed (by its flag or by ends within the
// tolerance); nothing otherwise.
std::optional<std::vector<od::Point3>> ClosedRing(const od::Database& db, od::EntityId id,
                                                  const std::string& cls, double tolerance) {
  std::optional<od::VertexList> vertices =
      cls == "AcDbPolyline" || cls == "AcDbSpline" ? db.Flatten(id, kContourPrecision) : db.Vertices(id);
  if (!vertices || vertices->points.size() < 3) return std::nullopt;
  const od::Point3& first = vertices->points.front();
  const od::Point3& last = vertices->points.back();
  bool closed = vertices->closed || db.IsClosedCurve(id) ||
                std::hypot(first.x - last.x, first.y - last.y) <= tolerance;
  if (!closed) return std::nullopt;
  return vertices->points;
}

}  // namespace

bool InsideRing(const std::vector<od::Point3>& ring, const od::Point3& point) {
  bool inside = false;
  size_t n = ring.size();
  for (size_t i = 0, j = n - 1; i < n; j = i++) {
    const od::Point3& a = ring[i];
    const od::Point3& b = ring[j];
    if (OnSegment(a, b, point)) return true;
    if ((a.y > point.y) != (b.y > point.y)) {
      double x = a.x + (point.y - a.y) * (b.x - a.x) / (b.y - a.y);
      if (x > point.x) inside = !inside;
    }
  }
  return inside;
}

od::EntityList ContoursAround(const od::Database& db, const od::Point3& point, double tolerance,
                              bool use_index) {
  od::EntityList candidates;
  if (use_index) {
    od::Box3 at{{point.x, point.y, -1e300}, {point.x, point.y, 1e300}};
    od::EntityList hits = db.EntitiesInBox(at);
    std::unordered_set<od::EntityId> hit(hits.begin(), hits.end());
    for (od::EntityId id : od::GetModelSpaceEntities(db))
      if (hit.count(id)) candidates.push_back(id);
  } else {
    candidates = od::GetModelSpaceEntities(db);
  }
  od::EntityList found;
  for (od::EntityId id : candidates) {
    std::string cls = db.EntityClass(id);
    if (!IsContourClass(cls)) continue;
    std::optional<od::Box3> box = db.GeomExtents(id);
    if (!box || point.x < box->min.x || point.x > box->max.x || point.y < box->min.y ||
        point.y > box->max.y)
      continue;
    std::optional<std::vector<od::Point3>> ring = ClosedRing(db, id, cls, tolerance);
    if (ring && InsideRing(*ring, point)) found.push_back(id);
  }
  return found;
}

void PointSelect(od::CommandContext& context) {
  od::Host& host = context.host();
  od::PromptResult<od::Point3> point = host.Ed().GetPoint("");
  if (point.status == od::PromptStatus::kCancel) return context.Cancel();
  if (point.status != od::PromptStatus::kOk) return;
  od::Database* db = host.WorkingDatabase();
  if (!db) return;
  double tolerance = std::pow(0.1, db->GetIntVar("LUPREC").value_or(4));
  od::SetPickfirst(host, ContoursAround(*db, point.value, tolerance));
}

}  // namespace veltor::commands
