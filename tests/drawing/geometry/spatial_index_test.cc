#include "drawing/geometry/spatial_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace veltor::geom {
namespace {

std::vector<SpatialIndex::Entry> RandomBoxes(size_t count, std::mt19937& rng) {
  std::uniform_real_distribution<double> pos(0.0, 1000.0), size(0.0, 40.0);
  std::vector<SpatialIndex::Entry> out;
  for (size_t i = 0; i < count; ++i) {
    const double x = pos(rng), y = pos(rng);
    out.emplace_back(1000 + i * 7, Extents(Vec3(x, y), Vec3(x + size(rng), y + size(rng))));
  }
  return out;
}

Extents RandomWindow(std::mt19937& rng) {
  std::uniform_real_distribution<double> pos(-50.0, 1000.0), size(0.0, 300.0);
  const double x = pos(rng), y = pos(rng);
  return Extents(Vec3(x, y), Vec3(x + size(rng), y + size(rng)));
}

std::vector<uint64_t> BruteIntersecting(const std::vector<SpatialIndex::Entry>& all,
                                        const Extents& w) {
  std::vector<uint64_t> ids;
  for (const auto& [id, box] : all) {
    if (box.Intersects(w)) ids.push_back(id);
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

std::vector<uint64_t> BruteWithin(const std::vector<SpatialIndex::Entry>& all, const Extents& w) {
  std::vector<uint64_t> ids;
  for (const auto& [id, box] : all) {
    if (w.Contains(box.min()) && w.Contains(box.max())) ids.push_back(id);
  }
  std::sort(ids.begin(), ids.end());
  return ids;
}

double BoxDistance(const Extents& b, Vec2 p) {
  const double dx = std::max({b.min().x - p.x, 0.0, p.x - b.max().x});
  const double dy = std::max({b.min().y - p.y, 0.0, p.y - b.max().y});
  return std::hypot(dx, dy);
}

TEST(SpatialIndexTest, BulkLoadedQueriesMatchBruteForce) {
  std::mt19937 rng(12345);
  const auto boxes = RandomBoxes(2000, rng);
  const SpatialIndex index(boxes);
  EXPECT_EQ(2000u, index.size());
  size_t total_hits = 0;
  for (int q = 0; q < 100; ++q) {
    const Extents w = RandomWindow(rng);
    const auto expected = BruteIntersecting(boxes, w);
    total_hits += expected.size();
    EXPECT_EQ(expected, index.Intersecting(w)) << "window " << q;
    EXPECT_EQ(BruteWithin(boxes, w), index.Within(w)) << "window " << q;
  }
  EXPECT_GT(total_hits, 1000u);  // the windows do hit something
}

TEST(SpatialIndexTest, InsertAndRemoveKeepQueriesRight) {
  std::mt19937 rng(777);
  auto boxes = RandomBoxes(800, rng);
  SpatialIndex index;
  for (const auto& [id, box] : boxes) EXPECT_TRUE(index.Insert(id, box));
  // Remove every third, move every fifth.
  std::vector<SpatialIndex::Entry> kept;
  for (size_t i = 0; i < boxes.size(); ++i) {
    if (i % 3 == 0) {
      EXPECT_TRUE(index.Remove(boxes[i].first));
      continue;
    }
    if (i % 5 == 0) {
      boxes[i].second = Extents(Vec3(5000, 5000), Vec3(5001, 5001));
      EXPECT_TRUE(index.Insert(boxes[i].first, boxes[i].second));
    }
    kept.push_back(boxes[i]);
  }
  EXPECT_FALSE(index.Remove(boxes[0].first));  // already gone
  EXPECT_EQ(kept.size(), index.size());
  for (int q = 0; q < 60; ++q) {
    const Extents w = RandomWindow(rng);
    EXPECT_EQ(BruteIntersecting(kept, w), index.Intersecting(w));
    EXPECT_EQ(BruteWithin(kept, w), index.Within(w));
  }
  const Extents far(Vec3(4999, 4999), Vec3(5002, 5002));
  EXPECT_EQ(BruteWithin(kept, far), index.Within(far));
  EXPECT_FALSE(BruteWithin(kept, far).empty());
}

TEST(SpatialIndexTest, NearestMatchesBruteForceOrder) {
  std::mt19937 rng(99);
  const auto boxes = RandomBoxes(1000, rng);
  const SpatialIndex index(boxes);
  std::uniform_real_distribution<double> pos(0.0, 1000.0);
  for (int q = 0; q < 30; ++q) {
    const Vec2 p(pos(rng), pos(rng));
    std::vector<std::pair<double, uint64_t>> ranked;
    for (const auto& [id, box] : boxes) ranked.emplace_back(BoxDistance(box, p), id);
    std::sort(ranked.begin(), ranked.end());
    const std::vector<uint64_t> got = index.Nearest(p, 5);
    ASSERT_EQ(5u, got.size());
    for (size_t i = 0; i < 5; ++i) {
      // Compare distances (several boxes may contain p, all at distance 0).
      EXPECT_NEAR(ranked[i].first, BoxDistance(index.BoxOf(got[i]), p), 1e-12);
    }
  }
  EXPECT_TRUE(index.Nearest({0, 0}, 0).empty());
}

TEST(SpatialIndexTest, EmptyBoxesAndRepeatedIds) {
  SpatialIndex index({{1, Extents()}, {2, Extents(Vec3(0, 0), Vec3(1, 1))},
                      {2, Extents(Vec3(10, 10), Vec3(11, 11))}});
  EXPECT_EQ(1u, index.size());
  EXPECT_TRUE(index.Intersecting(Extents(Vec3(0, 0), Vec3(1, 1))).empty());
  EXPECT_EQ(std::vector<uint64_t>{2}, index.Intersecting(Extents(Vec3(11, 11), Vec3(12, 12))));
  EXPECT_FALSE(index.Insert(3, Extents()));
  EXPECT_TRUE(index.Intersecting(Extents()).empty());
  EXPECT_FALSE(index.BoxOf(3).valid());
  SpatialIndex moved = std::move(index);
  EXPECT_EQ(1u, moved.size());
}

}  // namespace
}  // namespace veltor::geom
