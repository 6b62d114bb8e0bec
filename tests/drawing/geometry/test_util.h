// Shared assertions for the geometry tests.
#pragma once

#include <gtest/gtest.h>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

inline void ExpectNear(const Vec3& expected, const Vec3& actual, double tol) {
  EXPECT_NEAR(expected.x, actual.x, tol);
  EXPECT_NEAR(expected.y, actual.y, tol);
  EXPECT_NEAR(expected.z, actual.z, tol);
}

inline void ExpectNear(Vec2 expected, Vec2 actual, double tol) {
  EXPECT_NEAR(expected.x, actual.x, tol);
  EXPECT_NEAR(expected.y, actual.y, tol);
}

inline void ExpectBox(const Vec3& min, const Vec3& max, const Extents& box, double tol) {
  ASSERT_TRUE(box.valid());
  ExpectNear(min, box.min(), tol);
  ExpectNear(max, box.max(), tol);
}

}  // namespace veltor::geom
