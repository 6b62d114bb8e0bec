// Axis-aligned 3D bounding box with an explicit empty state.
#pragma once

#include <algorithm>
#include <limits>

#include "drawing/geometry/vec.h"

namespace veltor::geom {

class Extents {
 public:
  // An empty box: valid() is false until a point is added.
  Extents() = default;
  Extents(const Vec3& a, const Vec3& b) { Add(a); Add(b); }

  bool valid() const { return min_.x <= max_.x && min_.y <= max_.y && min_.z <= max_.z; }
  const Vec3& min() const { return min_; }
  const Vec3& max() const { return max_; }
  Vec3 Center() const { return (min_ + max_) * 0.5; }
  Vec3 Size() const { return valid() ? max_ - min_ : Vec3(); }

  void Add(const Vec3& p) {
    min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
    max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
  }
  void Add(const Extents& o) {
    if (!o.valid()) return;
    Add(o.min_);
    Add(o.max_);
  }
  void Clear() { *this = Extents(); }

  // Closed-box tests (touching counts). An empty box contains and meets nothing.
  bool Contains(const Vec3& p) const {
    return valid() && p.x >= min_.x && p.x <= max_.x && p.y >= min_.y && p.y <= max_.y &&
           p.z >= min_.z && p.z <= max_.z;
  }
  bool Intersects(const Extents& o) const {
    return valid() && o.valid() && o.min_.x <= max_.x && o.max_.x >= min_.x &&
           o.min_.y <= max_.y && o.max_.y >= min_.y && o.min_.z <= max_.z && o.max_.z >= min_.z;
  }

 private:
  static constexpr double kInf = std::numeric_limits<double>::infinity();
  Vec3 min_{kInf, kInf, kInf};
  Vec3 max_{-kInf, -kInf, -kInf};
};

}  // namespace veltor::geom
