#include "drawing/geometry/plane_tests.h"

#include <gtest/gtest.h>

#include <cmath>

#include "test_util.h"

namespace veltor::geom {
namespace {

const std::vector<Vec2> kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};

TEST(LocatePointTest, InsideOutsideEdgeAndVertex) {
  EXPECT_EQ(RingLocation::kInside, LocatePoint(kSquare, {5, 5}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(kSquare, {15, 5}, 1e-9));
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(kSquare, {10, 5}, 1e-9));
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(kSquare, {0, 0}, 0.0));
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(kSquare, {10.0000001, 5}, 1e-6));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(kSquare, {10.0000001, 5}, 0.0));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(kSquare, {9.9999999, 5}, 0.0));
  EXPECT_TRUE(PointInRing(kSquare, {10, 5}, 1e-9));
  EXPECT_FALSE(PointInRing(kSquare, {-1, 5}, 1e-9));
}

TEST(LocatePointTest, RayThroughACrossingVertexCountsOnce) {
  // The +x ray from these points passes through the diamond's vertices.
  const std::vector<Vec2> diamond = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
  EXPECT_EQ(RingLocation::kInside, LocatePoint(diamond, {-0.5, 0}, 1e-12));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(diamond, {0, 0}, 1e-12));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(diamond, {-2, 0}, 1e-12));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(diamond, {0.5, 0.6}, 1e-12));
}

TEST(LocatePointTest, RayTouchingAVertexDoesNotCount) {
  // A notch from the top reaching down to (3,1): the +x ray from (1,1) only touches it.
  const std::vector<Vec2> notched = {{0, 0}, {4, 0}, {4, 3}, {3, 1}, {2, 3}, {0, 3}};
  EXPECT_EQ(RingLocation::kInside, LocatePoint(notched, {1, 1}, 1e-12));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(notched, {3, 2}, 1e-12));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(notched, {3.8, 2}, 1e-12));
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(notched, {3, 1}, 1e-12));
}

TEST(LocatePointTest, DegenerateRings) {
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(std::vector<Vec2>{}, {0, 0}, 1.0));
  const std::vector<Vec2> segment = {{0, 0}, {2, 0}};
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(segment, {1, 0}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(segment, {1, 1}, 1e-9));
}

TEST(LocatePointTest, BulgedRingsExactly) {
  const std::vector<BulgeVertex> bulged_out = {
      {{0, 0}, 1.0}, {{2, 0}, 0}, {{2, 2}, 0}, {{0, 2}, 0}};
  EXPECT_EQ(RingLocation::kInside, LocatePoint(bulged_out, {1, -0.5}, 1e-9));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(bulged_out, {1, 1}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(bulged_out, {1, -1.1}, 1e-9));
  EXPECT_EQ(RingLocation::kBoundary, LocatePoint(bulged_out, {1, -1}, 1e-9));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(bulged_out, {1, 0}, 1e-9));  // on the chord
  const std::vector<BulgeVertex> bulged_in = {
      {{0, 0}, -1.0}, {{2, 0}, 0}, {{2, 2}, 0}, {{0, 2}, 0}};
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(bulged_in, {1, 0.5}, 1e-9));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(bulged_in, {1, 1.5}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(bulged_in, {1, 0}, 1e-9));  // on the chord
  const std::vector<BulgeVertex> circle = {{{-1, 0}, 1.0}, {{1, 0}, 1.0}};
  EXPECT_EQ(RingLocation::kInside, LocatePoint(circle, {0, 0}, 1e-9));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(circle, {0.5, 0.5}, 1e-9));
  EXPECT_EQ(RingLocation::kInside, LocatePoint(circle, {0, -0.99}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(circle, {0, 1.01}, 1e-9));
  EXPECT_EQ(RingLocation::kOutside, LocatePoint(circle, {0.8, 0.8}, 1e-9));
}

TEST(DistanceTest, SegmentsAndEnds) {
  const std::vector<Vec2> line = {{0, 0}, {10, 0}};
  EXPECT_DOUBLE_EQ(3.0, DistanceToPath(line, false, {5, 3}));
  EXPECT_DOUBLE_EQ(5.0, DistanceToPath(line, false, {-3, 4}));
  EXPECT_DOUBLE_EQ(5.0, DistanceToPath(kSquare, true, {5, 5}));
  // Open, the square lacks its left side.
  EXPECT_DOUBLE_EQ(5.0, DistanceToPath(kSquare, false, {1, 5}));
  EXPECT_TRUE(std::isinf(DistanceToPath(std::vector<Vec2>{}, false, {0, 0})));
  const std::vector<Vec3> post = {{0, 0, 0}, {0, 0, 10}};
  EXPECT_DOUBLE_EQ(5.0, DistanceToPath(post, false, Vec3(3, 4, 5)));
}

TEST(DistanceTest, BulgeArcs) {
  // Half circle below (0,0)-(2,0) about (1,0).
  const std::vector<BulgeVertex> arc = {{{0, 0}, 1.0}, {{2, 0}, 0}};
  EXPECT_NEAR(2.0, DistanceToPath(arc, false, {1, -3}), 1e-15);
  EXPECT_NEAR(std::sqrt(10.0), DistanceToPath(arc, false, {1, 3}), 1e-15);  // to an end
  EXPECT_NEAR(1.0, DistanceToPath(arc, false, {1, 0}), 1e-15);
  EXPECT_NEAR(0.5, DistanceToPath(arc, false, {1, -0.5}), 1e-15);
}

void ExpectHits(const std::vector<RayHit>& hits, const std::vector<double>& ts,
                const std::vector<Vec2>& points, double tol) {
  ASSERT_EQ(ts.size(), hits.size());
  for (size_t i = 0; i < ts.size(); ++i) {
    EXPECT_NEAR(ts[i], hits[i].t, tol) << i;
    ExpectNear(points[i], hits[i].point, tol);
  }
}

TEST(RayTest, Circle) {
  const Circle c{{0, 0, 0}, 1.0, {0, 0, 1}};
  ExpectHits(IntersectRay(Ray2{{-5, 0}, {1, 0}}, c), {4, 6}, {{-1, 0}, {1, 0}}, 1e-15);
  ExpectHits(IntersectRay(Ray2{{-5, 0}, {2, 0}}, c), {2, 3}, {{-1, 0}, {1, 0}}, 1e-15);
  ExpectHits(IntersectRay(Ray2{{-5, 1}, {1, 0}}, c), {5}, {{0, 1}}, 1e-7);  // tangent
  ExpectHits(IntersectRay(Ray2{{0, 0}, {1, 0}}, c), {1}, {{1, 0}}, 1e-15);  // from inside
  EXPECT_TRUE(IntersectRay(Ray2{{5, 0}, {1, 0}}, c).empty());              // pointing away
  EXPECT_TRUE(IntersectRay(Ray2{{-5, 2}, {1, 0}}, c).empty());
}

TEST(RayTest, ArcKeepsOnlySweptHits) {
  const Arc a{{0, 0, 0}, 1.0, 0.0, 90.0, {0, 0, 1}};
  ExpectHits(IntersectRay(Ray2{{-5, 0.5}, {1, 0}}, a), {5 + std::sqrt(0.75)},
             {{std::sqrt(0.75), 0.5}}, 1e-15);
  EXPECT_TRUE(IntersectRay(Ray2{{-5, -0.5}, {1, 0}}, a).empty());
  // Exactly through the arc's end points.
  ExpectHits(IntersectRay(Ray2{{-5, 0}, {1, 0}}, a), {6}, {{1, 0}}, 1e-15);
  ExpectHits(IntersectRay(Ray2{{0, -5}, {0, 1}}, a), {6}, {{0, 1}}, 1e-15);
}

TEST(RayTest, EllipseAndMirroredAndTiltedCircles) {
  const Ellipse e{{0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kTwoPi, {0, 0, 1}};
  ExpectHits(IntersectRay(Ray2{{0, -5}, {0, 1}}, e), {4, 6}, {{0, -1}, {0, 1}}, 1e-15);
  ExpectHits(IntersectRay(Ray2{{-5, 0}, {1, 0}}, e), {3, 7}, {{-2, 0}, {2, 0}}, 1e-15);
  // Centre (5,0) in the OCS of -Z is world (-5,0).
  const Circle mirrored{{5, 0, 0}, 1.0, {0, 0, -1}};
  EXPECT_TRUE(IntersectRay(Ray2{{0, 0}, {1, 0}}, mirrored).empty());
  ExpectHits(IntersectRay(Ray2{{0, 0}, {-1, 0}}, mirrored), {4, 6}, {{-4, 0}, {-6, 0}}, 1e-14);
  // A circle standing in the YZ plane is the segment x = 0, |y| <= 1 from above; its two
  // crossings there project onto one point.
  const Circle standing{{0, 0, 0}, 1.0, {1, 0, 0}};
  ExpectHits(IntersectRay(Ray2{{-5, 0.5}, {1, 0}}, standing), {5}, {{0, 0.5}}, 1e-15);
}

TEST(RayTest, SegmentPaths) {
  ExpectHits(IntersectRay(Ray2{{-5, 5}, {1, 0}}, kSquare, true), {5, 15}, {{0, 5}, {10, 5}},
             1e-15);
  EXPECT_EQ(1u, IntersectRay(Ray2{{-5, 5}, {1, 0}}, kSquare, false).size());  // no left side
  // Through two corners: each shared by two edges, reported once.
  ExpectHits(IntersectRay(Ray2{{-5, -5}, {1, 1}}, kSquare, true), {5, 15}, {{0, 0}, {10, 10}},
             1e-14);
  // Along the bottom edge.
  ExpectHits(IntersectRay(Ray2{{-5, 0}, {1, 0}}, kSquare, true), {5, 15}, {{0, 0}, {10, 0}},
             1e-15);
  // Starting inside the bottom edge and running along it.
  ExpectHits(IntersectRay(Ray2{{4, 0}, {1, 0}}, kSquare, true), {0, 6}, {{4, 0}, {10, 0}},
             1e-15);
}

TEST(RayTest, BulgePath) {
  const std::vector<BulgeVertex> ring = {{{0, 0}, 1.0}, {{2, 0}, 0}, {{2, 2}, 0}, {{0, 2}, 0}};
  ExpectHits(IntersectRay(Ray2{{1, -5}, {0, 1}}, ring, true), {4, 7}, {{1, -1}, {1, 2}}, 1e-14);
}

TEST(RayTest, SplineThroughFlattening) {
  SplineData d;
  d.degree = 2;
  d.control_points = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  d.weights = {1.0, std::sqrt(0.5), 1.0};
  d.knots = {0, 0, 0, 1, 1, 1};
  const NurbsCurve quarter = NurbsCurve::Make(d).value();
  const std::vector<RayHit> hits = IntersectRay(Ray2{{0, 0}, {1, 1}}, quarter);
  ASSERT_EQ(1u, hits.size());
  // 99 chords over a quarter turn: sagitta below 1 - cos(pi/4/99) ~ 3.2e-5.
  EXPECT_NEAR(1.0, hits[0].point.Length(), 4e-5);
  EXPECT_NEAR(hits[0].point.x, hits[0].point.y, 1e-12);
}

TEST(RayTest, ThreeDimensionalRayAgainstConic) {
  const ConicArc c = ToConic(Circle{{0, 0, 0}, 1.0, {0, 0, 1}});
  const std::vector<RayHit3> hits = IntersectRay(Ray3{{0.6, 0.8, 5}, {0, 0, -1}}, c, 1e-9);
  ASSERT_EQ(1u, hits.size());
  EXPECT_NEAR(5.0, hits[0].t, 1e-15);
  ExpectNear({0.6, 0.8, 0}, hits[0].point, 1e-15);
  EXPECT_TRUE(IntersectRay(Ray3{{0, 0, 5}, {0, 0, -1}}, c, 1e-9).empty());   // centre
  EXPECT_TRUE(IntersectRay(Ray3{{0, 0, 5}, {1, 0, 0}}, c, 1e-9).empty());    // parallel
  EXPECT_TRUE(IntersectRay(Ray3{{0.6, 0.8, -5}, {0, 0, -1}}, c, 1e-9).empty());  // behind
}

}  // namespace
}  // namespace veltor::geom
