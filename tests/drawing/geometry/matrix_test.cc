#include "drawing/geometry/matrix.h"

#include <gtest/gtest.h>

#include <cmath>

#include "drawing/geometry/extents.h"
#include "test_util.h"

namespace veltor::geom {
namespace {

TEST(ExtentsTest, StartsEmptyAndGrowsByPointsAndBoxes) {
  Extents box;
  EXPECT_FALSE(box.valid());
  box.Add(Extents());  // adding an empty box changes nothing
  EXPECT_FALSE(box.valid());
  box.Add(Vec3(1, 2, 3));
  EXPECT_TRUE(box.valid());
  ExpectBox({1, 2, 3}, {1, 2, 3}, box, 0.0);
  box.Add(Extents(Vec3(-1, 5, 0), Vec3(0, 4, 9)));
  ExpectBox({-1, 2, 0}, {1, 5, 9}, box, 0.0);
  EXPECT_TRUE(box.Contains(Vec3(1, 5, 9)));
  EXPECT_FALSE(box.Contains(Vec3(1.01, 5, 9)));
  EXPECT_FALSE(Extents().Intersects(box));
}

TEST(MatrixTest, RotationAboutZTurnsXIntoY) {
  const Matrix3d r = Matrix3d::Rotation(Vec3(0, 0, 1), kPi / 2);
  ExpectNear({0, 1, 0}, r.Apply(Vec3(1, 0, 0)), 1e-15);
  ExpectNear({-1, 0, 5}, r.Apply(Vec3(0, 1, 5)), 1e-15);
}

TEST(MatrixTest, RotationAboutDiagonalCyclesTheAxes) {
  // A third of a turn about (1,1,1) maps x to y, y to z, z to x.
  const Matrix3d r = Matrix3d::Rotation(Vec3(1, 1, 1), kTwoPi / 3);
  ExpectNear({0, 1, 0}, r.Apply(Vec3(1, 0, 0)), 1e-15);
  ExpectNear({0, 0, 1}, r.Apply(Vec3(0, 1, 0)), 1e-15);
  ExpectNear({1, 0, 0}, r.Apply(Vec3(0, 0, 1)), 1e-15);
}

TEST(MatrixTest, ComposeAppliesRightOperandFirst) {
  const Matrix3d t = Matrix3d::Translation(Vec3(10, 0, 0));
  const Matrix3d s = Matrix3d::Scale(2);
  ExpectNear({12, 0, 0}, (t * s).Apply(Vec3(1, 0, 0)), 0.0);
  ExpectNear({22, 0, 0}, (s * t).Apply(Vec3(1, 0, 0)), 0.0);
  // Vectors ignore the translation.
  ExpectNear({2, 0, 0}, (t * s).ApplyVector(Vec3(1, 0, 0)), 0.0);
}

TEST(MatrixTest, InverseUndoesAndSingularHasNone) {
  const Matrix3d m = Matrix3d::Translation(Vec3(1, -2, 3)) *
                     Matrix3d::Rotation(Vec3(0.2, 0.5, 1), 0.7) * Matrix3d::Scale(2, 3, -4);
  const auto inv = m.Inverse();
  ASSERT_TRUE(inv.has_value());
  EXPECT_TRUE((*inv * m).NearlyEquals(Matrix3d::Identity(), 1e-14));
  EXPECT_NEAR(-24.0, m.Determinant(), 1e-12);  // rotation keeps 2*3*-4
  EXPECT_FALSE(Matrix3d::Scale(1, 0, 1).Inverse().has_value());
}

TEST(MatrixTest, TransformedBoxEnclosesRotatedCorners) {
  const Extents unit(Vec3(0, 0, 0), Vec3(1, 1, 0));
  const Extents turned = Matrix3d::Rotation(Vec3(0, 0, 1), kPi / 4).Apply(unit);
  const double h = std::sqrt(0.5);
  ExpectBox({-h, 0, 0}, {h, 2 * h, 0}, turned, 1e-15);
  EXPECT_FALSE(Matrix3d().Apply(Extents()).valid());
}

}  // namespace
}  // namespace veltor::geom
