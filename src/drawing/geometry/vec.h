// Plain 2D and 3D vectors used by the geometry kernel. Value types, no invariants.
#pragma once

#include <cmath>

namespace veltor::geom {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

struct Vec2 {
  double x = 0.0;
  double y = 0.0;

  constexpr Vec2() = default;
  constexpr Vec2(double x_in, double y_in) : x(x_in), y(y_in) {}

  constexpr Vec2 operator+(Vec2 o) const { return {x + o.x, y + o.y}; }
  constexpr Vec2 operator-(Vec2 o) const { return {x - o.x, y - o.y}; }
  constexpr Vec2 operator-() const { return {-x, -y}; }
  constexpr Vec2 operator*(double s) const { return {x * s, y * s}; }
  constexpr Vec2 operator/(double s) const { return {x / s, y / s}; }
  Vec2& operator+=(Vec2 o) { x += o.x; y += o.y; return *this; }
  Vec2& operator-=(Vec2 o) { x -= o.x; y -= o.y; return *this; }
  constexpr bool operator==(Vec2 o) const { return x == o.x && y == o.y; }
  constexpr bool operator!=(Vec2 o) const { return !(*this == o); }

  constexpr double Dot(Vec2 o) const { return x * o.x + y * o.y; }
  // z of the 3D cross product: positive when o is counter-clockwise from this.
  constexpr double Cross(Vec2 o) const { return x * o.y - y * o.x; }
  double Length() const { return std::hypot(x, y); }
  constexpr double LengthSquared() const { return x * x + y * y; }
  // Left-hand perpendicular (rotated +90 degrees).
  constexpr Vec2 Perp() const { return {-y, x}; }
  // Unit vector; the zero vector stays zero.
  Vec2 Normalized() const {
    const double len = Length();
    return len > 0.0 ? Vec2(x / len, y / len) : Vec2();
  }
};

constexpr Vec2 operator*(double s, Vec2 v) { return v * s; }

struct Vec3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  constexpr Vec3() = default;
  constexpr Vec3(double x_in, double y_in, double z_in = 0.0) : x(x_in), y(y_in), z(z_in) {}
  constexpr explicit Vec3(Vec2 v, double z_in = 0.0) : x(v.x), y(v.y), z(z_in) {}

  constexpr Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
  constexpr Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
  constexpr Vec3 operator-() const { return {-x, -y, -z}; }
  constexpr Vec3 operator*(double s) const { return {x * s, y * s, z * s}; }
  constexpr Vec3 operator/(double s) const { return {x / s, y / s, z / s}; }
  Vec3& operator+=(const Vec3& o) { x += o.x; y += o.y; z += o.z; return *this; }
  Vec3& operator-=(const Vec3& o) { x -= o.x; y -= o.y; z -= o.z; return *this; }
  Vec3& operator*=(double s) { x *= s; y *= s; z *= s; return *this; }
  constexpr bool operator==(const Vec3& o) const { return x == o.x && y == o.y && z == o.z; }
  constexpr bool operator!=(const Vec3& o) const { return !(*this == o); }

  // Component by index 0..2 (x, y, z); used by per-axis extents code.
  constexpr double operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }
  double& operator[](int i) { return i == 0 ? x : (i == 1 ? y : z); }

  constexpr double Dot(const Vec3& o) const { return x * o.x + y * o.y + z * o.z; }
  constexpr Vec3 Cross(const Vec3& o) const {
    return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
  }
  double Length() const { return std::sqrt(x * x + y * y + z * z); }
  constexpr double LengthSquared() const { return x * x + y * y + z * z; }
  // Unit vector; the zero vector stays zero.
  Vec3 Normalized() const {
    const double len = Length();
    return len > 0.0 ? Vec3(x / len, y / len, z / len) : Vec3();
  }
  constexpr Vec2 Xy() const { return {x, y}; }
};

constexpr Vec3 operator*(double s, const Vec3& v) { return v * s; }

inline double Distance(const Vec3& a, const Vec3& b) { return (a - b).Length(); }
inline double Distance(Vec2 a, Vec2 b) { return (a - b).Length(); }

}  // namespace veltor::geom
