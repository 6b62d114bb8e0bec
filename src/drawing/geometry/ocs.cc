#include "drawing/geometry/ocs.h"

#include <cmath>

namespace veltor::geom {

OcsAxes ArbitraryAxes(const Vec3& normal) {
  OcsAxes axes;
  // World Z, by far the most common extrusion, gives the WCS axes (as computed below).
  if (normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0 && std::isfinite(normal.z)) return axes;
  const Vec3 n = normal.Normalized();
  if (!(std::isfinite(n.x) && std::isfinite(n.y) && std::isfinite(n.z)) ||
      n.LengthSquared() == 0.0) {
    return axes;
  }
  constexpr double kLimit = 1.0 / 64.0;
  const Vec3 ax = (std::fabs(n.x) < kLimit && std::fabs(n.y) < kLimit)
                      ? Vec3(0, 1, 0).Cross(n)
                      : Vec3(0, 0, 1).Cross(n);
  axes.x = ax.Normalized();
  axes.y = n.Cross(axes.x).Normalized();
  axes.z = n;
  return axes;
}

bool IsWorldNormal(const Vec3& normal) {
  const Vec3 n = normal.Normalized();
  return std::fabs(n.x) <= 1e-12 && std::fabs(n.y) <= 1e-12 && n.z > 0.0;
}

Matrix3d OcsToWcs(const Vec3& normal) {
  const OcsAxes a = ArbitraryAxes(normal);
  return Matrix3d::FromAxes(Vec3(), a.x, a.y, a.z);
}

Matrix3d WcsToOcs(const Vec3& normal) {
  // The axes are orthonormal, so the inverse is the transpose.
  const OcsAxes a = ArbitraryAxes(normal);
  return Matrix3d::FromAxes(Vec3(), Vec3(a.x.x, a.y.x, a.z.x), Vec3(a.x.y, a.y.y, a.z.y),
                            Vec3(a.x.z, a.y.z, a.z.z));
}

Matrix3d BlockTransform(const BlockReference& ref) {
  return OcsToWcs(ref.normal) * Matrix3d::Translation(ref.insertion) *
         Matrix3d::Rotation(Vec3(0, 0, 1), ref.rotation_deg * kPi / 180.0) *
         Matrix3d::Scale(ref.x_scale, ref.y_scale, ref.z_scale) *
         Matrix3d::Translation(-ref.base_point);
}

}  // namespace veltor::geom
