// 3D affine transform stored as the top three rows of a 4x4 matrix (the last row is 0 0 0 1).
// Points are column vectors: Apply(p) = L * p + t. A * B applies B first, then A.
#pragma once

#include <optional>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

class Matrix3d {
 public:
  // The identity.
  Matrix3d();

  static Matrix3d Identity() { return Matrix3d(); }
  static Matrix3d Translation(const Vec3& t);
  static Matrix3d Scale(double sx, double sy, double sz);
  static Matrix3d Scale(double s) { return Scale(s, s, s); }
  // Right-handed rotation by `radians` about `axis` (need not be unit; zero axis gives identity)
  // through the origin.
  static Matrix3d Rotation(const Vec3& axis, double radians);
  // Maps the unit axes to x_axis, y_axis, z_axis and the origin to `origin`.
  static Matrix3d FromAxes(const Vec3& origin, const Vec3& x_axis, const Vec3& y_axis,
                           const Vec3& z_axis);

  Matrix3d operator*(const Matrix3d& o) const;

  Vec3 Apply(const Vec3& p) const;         // a point: translation applies
  Vec3 ApplyVector(const Vec3& v) const;   // a direction: translation ignored
  // Box around the eight transformed corners: encloses the transformed contents but may be
  // larger than the exact extents of a rotated shape. Empty stays empty.
  Extents Apply(const Extents& e) const;

  // Determinant of the linear part; negative for a mirroring transform.
  double Determinant() const;
  // Inverse, or nothing when the linear part is singular (|det| <= 1e-300).
  std::optional<Matrix3d> Inverse() const;

  // Element at row r (0..2), column c (0..3); column 3 is the translation.
  double at(int r, int c) const { return m_[r][c]; }
  void set(int r, int c, double v) { m_[r][c] = v; }

  bool NearlyEquals(const Matrix3d& o, double tol) const;

 private:
  double m_[3][4];
};

}  // namespace veltor::geom
