#include "commands/edit/poly_plane.h"

#include <algorithm>
#include <cmath>

namespace veltor::commands {

namespace {

od::Point3 Minus(const od::Point3& a, const od::Point3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
od::Point3 Cross(const od::Point3& a, const od::Point3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Dot(const od::Point3& a, const od::Point3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Length(const od::Point3& a) { return std::sqrt(Dot(a, a)); }

PolylinePlane Flat(const std::vector<od::Point3>& points) {
  PolylinePlane plane;
  plane.points = points;
  for (od::Point3& p : plane.points) p.z = points.front().z;
  return plane;
}

}  // namespace

PolylinePlane ChoosePlane(const std::vector<od::Point3>& points) {
  if (points.empty()) return {};
  const od::Point3& origin = points.front();
  // The point farthest from the first spans the extent; the one farthest from the line
  // through both fixes the plane.
  size_t far = 0;
  for (size_t i = 1; i < points.size(); ++i)
    if (Length(Minus(points[i], origin)) > Length(Minus(points[far], origin))) far = i;
  const od::Point3 axis = Minus(points[far], origin);
  const double tolerance = std::max(1e-9, Length(axis) * 1e-6);

  bool level = std::all_of(points.begin(), points.end(), [&](const od::Point3& p) {
    return std::fabs(p.z - origin.z) <= tolerance;
  });
  if (level) return Flat(points);

  od::Point3 widest{};
  for (const od::Point3& p : points) {
    od::Point3 c = Cross(axis, Minus(p, origin));
    if (Length(c) > Length(widest)) widest = c;
  }
  // Length(widest) / Length(axis) is the distance of the widest point from the line.
  if (Length(axis) == 0.0 || Length(widest) / Length(axis) <= tolerance) return Flat(points);
  od::Point3 normal = widest;
  const double size = Length(normal);
  normal = {normal.x / size, normal.y / size, normal.z / size};
  bool planar = std::all_of(points.begin(), points.end(), [&](const od::Point3& p) {
    return std::fabs(Dot(Minus(p, origin), normal)) <= tolerance;
  });
  if (!planar) return Flat(points);
  // Either side of the plane describes it; the one facing +Z (then +Y, then +X) is the
  // natural one to read.
  bool flip = normal.z < 0.0 || (normal.z == 0.0 && (normal.y < 0.0 ||
                                                     (normal.y == 0.0 && normal.x < 0.0)));
  if (flip) normal = {-normal.x, -normal.y, -normal.z};
  return {normal, points};
}

}  // namespace veltor::commands
