#include "arx/ocs.h"

#include <cmath>

namespace veltor::arx {

namespace {

od::Point3 Cross(const od::Point3& a, const od::Point3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double Dot(const od::Point3& a, const od::Point3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
od::Point3 Unit(const od::Point3& v) {
  double length = std::sqrt(Dot(v, v));
  if (length == 0.0) return {0, 0, 1};
  return {v.x / length, v.y / length, v.z / length};
}

}  // namespace

od::Point3 WorldToOcs(const od::Point3& world, const od::Point3& normal) {
  od::Point3 n = Unit(normal);
  constexpr double kLimit = 1.0 / 64.0;
  od::Point3 ax = (std::fabs(n.x) < kLimit && std::fabs(n.y) < kLimit) ? Cross({0, 1, 0}, n)
                                                                       : Cross({0, 0, 1}, n);
  ax = Unit(ax);
  od::Point3 ay = Unit(Cross(n, ax));
  return {Dot(world, ax), Dot(world, ay), Dot(world, n)};
}

}  // namespace veltor::arx
