#include "drawing/geometry/break_path.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/geometry/break_stretches.h"

namespace veltor::geom {

namespace {

size_t SegmentCount(const Polyline3d& path) {
  const size_t n = path.points.size();
  return path.closed ? n : n - 1;
}

const Vec3& Vertex(const Polyline3d& path, size_t i) { return path.points[i % path.points.size()]; }

// Splits a position into segment index and fraction; the end of the last segment stays on it.
void Locate(const Polyline3d& path, double position, size_t& segment, double& fraction) {
  const double segments = static_cast<double>(SegmentCount(path));
  if (path.closed) position = std::fmod(std::fmod(position, segments) + segments, segments);
  position = std::clamp(position, 0.0, segments);
  segment = std::min(static_cast<size_t>(position), SegmentCount(path) - 1);
  fraction = position - static_cast<double>(segment);
}

}  // namespace

double NearestPathPosition(const Polyline3d& path, const Vec3& p) {
  double best = 0.0, best_distance = std::numeric_limits<double>::infinity();
  for (size_t i = 0; i < SegmentCount(path); ++i) {
    const Vec3& s = Vertex(path, i);
    const Vec3 d = Vertex(path, i + 1) - s;
    const double length2 = d.LengthSquared();
    const double t = length2 > 0.0 ? std::clamp((p - s).Dot(d) / length2, 0.0, 1.0) : 0.0;
    const double distance = Distance(s + d * t, p);
    if (distance < best_distance) {
      best_distance = distance;
      best = static_cast<double>(i) + t;
    }
  }
  return best;
}

Vec3 PathPointAt(const Polyline3d& path, double position) {
  size_t segment = 0;
  double fraction = 0.0;
  Locate(path, position, segment, fraction);
  const Vec3& s = Vertex(path, segment);
  if (fraction <= 0.0) return s;
  if (fraction >= 1.0) return Vertex(path, segment + 1);
  return s + (Vertex(path, segment + 1) - s) * fraction;
}

std::vector<Vec3> PathBetween(const Polyline3d& path, double from, double to) {
  std::vector<Vec3> points{PathPointAt(path, from)};
  for (double v = std::floor(from) + 1.0; v < to; v += 1.0)
    if (v > from) points.push_back(Vertex(path, static_cast<size_t>(v)));
  points.push_back(PathPointAt(path, to));
  return points;
}

Result<std::vector<Polyline3d>> BreakPath(const Polyline3d& path, const Vec3& a, const Vec3& b) {
  if (path.points.size() < 2) return Status::Error("break: the polyline has fewer than two vertices");
  const double end = static_cast<double>(SegmentCount(path));
  Result<std::vector<Stretch>> kept = RemainingStretches(
      0.0, end, path.closed, NearestPathPosition(path, a), NearestPathPosition(path, b), 1e-12 * end);
  if (!kept.ok()) return kept.status();
  std::vector<Polyline3d> pieces;
  for (const Stretch& s : *kept) pieces.push_back({PathBetween(path, s.from, s.to), false});
  return pieces;
}

}  // namespace veltor::geom
