#include "drawing/geometry/ocs.h"

#include <gtest/gtest.h>

#include "test_util.h"

namespace veltor::geom {
namespace {

TEST(OcsTest, WorldNormalGivesWorldAxes) {
  const OcsAxes a = ArbitraryAxes(Vec3(0, 0, 5));
  ExpectNear({1, 0, 0}, a.x, 0.0);
  ExpectNear({0, 1, 0}, a.y, 0.0);
  EXPECT_TRUE(IsWorldNormal(Vec3(0, 0, 2)));
  EXPECT_FALSE(IsWorldNormal(Vec3(0, 0, -1)));
}

TEST(OcsTest, NegativeZNormalMirrorsX) {
  const OcsAxes a = ArbitraryAxes(Vec3(0, 0, -1));
  ExpectNear({-1, 0, 0}, a.x, 0.0);
  ExpectNear({0, 1, 0}, a.y, 0.0);
  ExpectNear({-5, 2, -3}, OcsToWcs(Vec3(0, 0, -1)).Apply(Vec3(5, 2, 3)), 1e-15);
}

TEST(OcsTest, XNormalMapsOcsXyzToWorldYzx) {
  // Normal +X is beyond the 1/64 limit, so Ax = Wz x N = +Y and Ay = N x Ax = +Z.
  ExpectNear({3, 1, 2}, OcsToWcs(Vec3(1, 0, 0)).Apply(Vec3(1, 2, 3)), 1e-15);
}

TEST(OcsTest, NearZNormalUsesWorldYBranch) {
  // |Nx| and |Ny| below 1/64: Ax = Wy x N, which is close to +X (not -Y as Wz x N would give).
  const OcsAxes a = ArbitraryAxes(Vec3(0.01, 0.0, 1.0));
  EXPECT_GT(a.x.x, 0.99);
  EXPECT_NEAR(0.0, a.x.Dot(a.z), 1e-15);
  EXPECT_NEAR(1.0, a.y.Length(), 1e-15);
}

TEST(OcsTest, WcsToOcsInvertsOcsToWcs) {
  const Vec3 n(0.3, -0.5, 0.8);
  const Vec3 p(4, -7, 2.5);
  ExpectNear(p, WcsToOcs(n).Apply(OcsToWcs(n).Apply(p)), 1e-14);
}

TEST(OcsTest, ZeroNormalFallsBackToWorld) {
  ExpectNear({1, 2, 3}, OcsToWcs(Vec3()).Apply(Vec3(1, 2, 3)), 0.0);
}

TEST(BlockTransformTest, BasePointScaleRotationInsertion) {
  BlockReference ref;
  ref.insertion = Vec3(10, 20, 0);
  ref.x_scale = ref.y_scale = ref.z_scale = 2.0;
  ref.rotation_deg = 90.0;
  ref.base_point = Vec3(1, 0, 0);
  // (2,0,0) - base = (1,0,0); scaled (2,0,0); turned (0,2,0); moved (10,22,0).
  ExpectNear({10, 22, 0}, BlockTransform(ref).Apply(Vec3(2, 0, 0)), 1e-14);
  ExpectNear({10, 20, 0}, BlockTransform(ref).Apply(ref.base_point), 1e-14);
}

TEST(BlockTransformTest, MirroredExtrusionPlacesInsertionInOcs) {
  BlockReference ref;
  ref.insertion = Vec3(5, 0, 0);
  ref.normal = Vec3(0, 0, -1);
  ExpectNear({-6, 0, 0}, BlockTransform(ref).Apply(Vec3(1, 0, 0)), 1e-15);
}

}  // namespace
}  // namespace veltor::geom
