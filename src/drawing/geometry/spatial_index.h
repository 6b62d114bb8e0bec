// 2D spatial index of entity boxes (XY of their extents), keyed by 64-bit ids.
// A thin layer over Boost.Geometry's R*-tree; Boost stays in spatial_index.cc.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

class SpatialIndex {
 public:
  using Entry = std::pair<uint64_t, Extents>;

  SpatialIndex();
  // Bulk load (packing): faster to build and better balanced than inserting one by one.
  // Entries with empty extents are skipped; a repeated id keeps its last box.
  explicit SpatialIndex(const std::vector<Entry>& entries);
  ~SpatialIndex();
  SpatialIndex(SpatialIndex&&) noexcept;
  SpatialIndex& operator=(SpatialIndex&&) noexcept;
  SpatialIndex(const SpatialIndex&) = delete;
  SpatialIndex& operator=(const SpatialIndex&) = delete;

  size_t size() const;
  bool empty() const { return size() == 0; }

  // Adds or replaces the box of `id`. Returns false (and indexes nothing) for empty extents.
  bool Insert(uint64_t id, const Extents& box);
  // Removes `id`; false when it was not indexed.
  bool Remove(uint64_t id);
  // The indexed box of `id`, empty when absent.
  Extents BoxOf(uint64_t id) const;

  // Ids whose boxes meet the window (touching counts), ascending.
  std::vector<uint64_t> Intersecting(const Extents& window) const;
  // Ids whose boxes lie entirely inside the window (touching counts), ascending.
  std::vector<uint64_t> Within(const Extents& window) const;
  // Up to n ids nearest to p (distance from p to the box; 0 inside), nearest first; equal
  // distances are ordered by id (which of several equally distant boxes make the cut at n is
  // unspecified).
  std::vector<uint64_t> Nearest(Vec2 p, size_t n) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltor::geom
