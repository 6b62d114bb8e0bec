#include "drawing/geometry/matrix.h"

#include <cmath>

namespace veltor::geom {

Matrix3d::Matrix3d() {
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 4; ++c) m_[r][c] = (r == c) ? 1.0 : 0.0;
}

Matrix3d Matrix3d::Translation(const Vec3& t) {
  Matrix3d m;
  m.m_[0][3] = t.x;
  m.m_[1][3] = t.y;
  m.m_[2][3] = t.z;
  return m;
}

Matrix3d Matrix3d::Scale(double sx, double sy, double sz) {
  Matrix3d m;
  m.m_[0][0] = sx;
  m.m_[1][1] = sy;
  m.m_[2][2] = sz;
  return m;
}

Matrix3d Matrix3d::Rotation(const Vec3& axis, double radians) {
  const Vec3 a = axis.Normalized();
  Matrix3d m;
  if (a.LengthSquared() == 0.0) return m;
  // Rodrigues: R = cos I + sin [a]x + (1 - cos) a a^T.
  const double c = std::cos(radians), s = std::sin(radians), k = 1.0 - c;
  m.m_[0][0] = c + k * a.x * a.x;
  m.m_[0][1] = k * a.x * a.y - s * a.z;
  m.m_[0][2] = k * a.x * a.z + s * a.y;
  m.m_[1][0] = k * a.y * a.x + s * a.z;
  m.m_[1][1] = c + k * a.y * a.y;
  m.m_[1][2] = k * a.y * a.z - s * a.x;
  m.m_[2][0] = k * a.z * a.x - s * a.y;
  m.m_[2][1] = k * a.z * a.y + s * a.x;
  m.m_[2][2] = c + k * a.z * a.z;
  return m;
}

Matrix3d Matrix3d::FromAxes(const Vec3& origin, const Vec3& x_axis, const Vec3& y_axis,
                            const Vec3& z_axis) {
  Matrix3d m;
  const Vec3 cols[4] = {x_axis, y_axis, z_axis, origin};
  for (int c = 0; c < 4; ++c) {
    m.m_[0][c] = cols[c].x;
    m.m_[1][c] = cols[c].y;
    m.m_[2][c] = cols[c].z;
  }
  return m;
}

Matrix3d Matrix3d::operator*(const Matrix3d& o) const {
  Matrix3d r;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) {
      double sum = 0.0;
      for (int k = 0; k < 3; ++k) sum += m_[i][k] * o.m_[k][j];
      r.m_[i][j] = sum + (j == 3 ? m_[i][3] : 0.0);
    }
  }
  return r;
}

Vec3 Matrix3d::Apply(const Vec3& p) const {
  return {m_[0][0] * p.x + m_[0][1] * p.y + m_[0][2] * p.z + m_[0][3],
          m_[1][0] * p.x + m_[1][1] * p.y + m_[1][2] * p.z + m_[1][3],
          m_[2][0] * p.x + m_[2][1] * p.y + m_[2][2] * p.z + m_[2][3]};
}

Vec3 Matrix3d::ApplyVector(const Vec3& v) const {
  return {m_[0][0] * v.x + m_[0][1] * v.y + m_[0][2] * v.z,
          m_[1][0] * v.x + m_[1][1] * v.y + m_[1][2] * v.z,
          m_[2][0] * v.x + m_[2][1] * v.y + m_[2][2] * v.z};
}

Extents Matrix3d::Apply(const Extents& e) const {
  Extents out;
  if (!e.valid()) return out;
  for (int i = 0; i < 8; ++i) {
    const Vec3 corner((i & 1) ? e.max().x : e.min().x, (i & 2) ? e.max().y : e.min().y,
                      (i & 4) ? e.max().z : e.min().z);
    out.Add(Apply(corner));
  }
  return out;
}

double Matrix3d::Determinant() const {
  return m_[0][0] * (m_[1][1] * m_[2][2] - m_[1][2] * m_[2][1]) -
         m_[0][1] * (m_[1][0] * m_[2][2] - m_[1][2] * m_[2][0]) +
         m_[0][2] * (m_[1][0] * m_[2][1] - m_[1][1] * m_[2][0]);
}

std::optional<Matrix3d> Matrix3d::Inverse() const {
  const double det = Determinant();
  if (std::fabs(det) <= 1e-300) return std::nullopt;
  Matrix3d r;
  // Inverse of the linear part by cofactors, then t' = -L^-1 t.
  r.m_[0][0] = (m_[1][1] * m_[2][2] - m_[1][2] * m_[2][1]) / det;
  r.m_[0][1] = (m_[0][2] * m_[2][1] - m_[0][1] * m_[2][2]) / det;
  r.m_[0][2] = (m_[0][1] * m_[1][2] - m_[0][2] * m_[1][1]) / det;
  r.m_[1][0] = (m_[1][2] * m_[2][0] - m_[1][0] * m_[2][2]) / det;
  r.m_[1][1] = (m_[0][0] * m_[2][2] - m_[0][2] * m_[2][0]) / det;
  r.m_[1][2] = (m_[0][2] * m_[1][0] - m_[0][0] * m_[1][2]) / det;
  r.m_[2][0] = (m_[1][0] * m_[2][1] - m_[1][1] * m_[2][0]) / det;
  r.m_[2][1] = (m_[0][1] * m_[2][0] - m_[0][0] * m_[2][1]) / det;
  r.m_[2][2] = (m_[0][0] * m_[1][1] - m_[0][1] * m_[1][0]) / det;
  const Vec3 t = r.ApplyVector(Vec3(m_[0][3], m_[1][3], m_[2][3]));
  r.m_[0][3] = -t.x;
  r.m_[1][3] = -t.y;
  r.m_[2][3] = -t.z;
  return r;
}

bool Matrix3d::NearlyEquals(const Matrix3d& o, double tol) const {
  for (int r = 0; r < 3; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(m_[r][c] - o.m_[r][c]) > tol) return false;
  return true;
}

}  // namespace veltor::geom
