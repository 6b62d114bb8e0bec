#include "commands/edit/set_text_outline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltor::commands {

namespace {

constexpr double kSamePoint = 1e-10;

double Cross(const od::Point3& o, const od::Point3& a, const od::Point3& b) {
  return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

bool Near(const od::Point3& a, const od::Point3& b) {
  return std::fabs(a.x - b.x) <= kSamePoint && std::fabs(a.y - b.y) <= kSamePoint;
}

// True when segment ab and segment cd share a point (touching counts).
bool SegmentsMeet(const od::Point3& a, const od::Point3& b, const od::Point3& c,
                  const od::Point3& d) {
  double d1 = Cross(c, d, a), d2 = Cross(c, d, b), d3 = Cross(a, b, c), d4 = Cross(a, b, d);
  if (((d1 > 0 && d2 < 0) || (d1 < 0 && d2 > 0)) && ((d3 > 0 && d4 < 0) || (d3 < 0 && d4 > 0)))
    return true;
  auto on = [](const od::Point3& p, const od::Point3& q, const od::Point3& r, double cross) {
    return cross == 0 && std::min(p.x, q.x) <= r.x && r.x <= std::max(p.x, q.x) &&
           std::min(p.y, q.y) <= r.y && r.y <= std::max(p.y, q.y);
  };
  return on(c, d, a, d1) || on(c, d, b, d2) || on(a, b, c, d3) || on(a, b, d, d4);
}

double DistanceToSegment(const od::Point3& a, const od::Point3& b, const od::Point3& p) {
  double dx = b.x - a.x, dy = b.y - a.y;
  double length2 = dx * dx + dy * dy;
  double t = length2 > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / length2 : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

}  // namespace

bool InsideOutline(const std::vector<od::Point3>& outline, const od::Point3& p) {
  if (outline.size() < 3) return false;
  double max_x = outline[0].x, max_y = outline[0].y, min_y = outline[0].y;
  for (const od::Point3& v : outline) {
    max_x = std::max(max_x, v.x);
    max_y = std::max(max_y, v.y);
    min_y = std::min(min_y, v.y);
  }
  // Outside the extents, at an odd slope so that the segment rarely passes through a vertex.
  const double span = std::max(1.0, max_y - min_y);
  const od::Point3 outside{max_x + span * 1.1, max_y + span * 1.7318, 0};
  int crossings = 0;
  for (size_t i = 0; i < outline.size(); ++i) {
    const od::Point3& a = outline[i];
    const od::Point3& b = outline[(i + 1) % outline.size()];
    if (Near(a, p) || Near(b, p)) continue;
    if (SegmentsMeet(p, outside, a, b)) ++crossings;
  }
  return crossings % 2 == 1;
}

double DistanceToPath(const std::vector<od::Point3>& path, const od::Point3& p) {
  if (path.empty()) return std::numeric_limits<double>::infinity();
  if (path.size() == 1) return std::hypot(p.x - path[0].x, p.y - path[0].y);
  double best = std::numeric_limits<double>::infinity();
  for (size_t i = 1; i < path.size(); ++i)
    best = std::min(best, DistanceToSegment(path[i - 1], path[i], p));
  return best;
}

}  // namespace veltor::commands
