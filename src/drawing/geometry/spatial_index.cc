#include "drawing/geometry/spatial_index.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

// Boost.Geometry still includes a header that Boost itself marks deprecated; keep its notice
// out of our build output.
#ifndef BOOST_ALLOW_DEPRECATED_HEADERS
#define BOOST_ALLOW_DEPRECATED_HEADERS
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>

namespace veltor::geom {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {

using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Value = std::pair<Box, uint64_t>;
using Tree = bgi::rtree<Value, bgi::rstar<16>>;

Box ToBox(const Extents& e) {
  return Box(Point(e.min().x, e.min().y), Point(e.max().x, e.max().y));
}

Extents ToExtents(const Box& b) {
  return Extents(Vec3(b.min_corner().get<0>(), b.min_corner().get<1>()),
                 Vec3(b.max_corner().get<0>(), b.max_corner().get<1>()));
}

std::vector<uint64_t> SortedIds(const std::vector<Value>& found) {
  std::vector<uint64_t> ids;
  ids.reserve(found.size());
  for (const Value& v : found) ids.push_back(v.second);
  std::sort(ids.begin(), ids.end());
  return ids;
}

}  // namespace

// The tree holds (box, id); the map finds an id's box, which the tree needs for removal.
struct SpatialIndex::Impl {
  Tree tree;
  std::unordered_map<uint64_t, Box> boxes;
};

SpatialIndex::SpatialIndex() : impl_(std::make_unique<Impl>()) {}

SpatialIndex::SpatialIndex(const std::vector<Entry>& entries) : impl_(std::make_unique<Impl>()) {
  impl_->boxes.reserve(entries.size());
  for (const Entry& e : entries) {
    if (e.second.valid()) impl_->boxes[e.first] = ToBox(e.second);
  }
  std::vector<Value> values;
  values.reserve(impl_->boxes.size());
  for (const auto& [id, box] : impl_->boxes) values.emplace_back(box, id);
  impl_->tree = Tree(values.begin(), values.end());  // the range constructor packs
}

SpatialIndex::~SpatialIndex() = default;
SpatialIndex::SpatialIndex(SpatialIndex&&) noexcept = default;
SpatialIndex& SpatialIndex::operator=(SpatialIndex&&) noexcept = default;

size_t SpatialIndex::size() const { return impl_->boxes.size(); }

bool SpatialIndex::Insert(uint64_t id, const Extents& box) {
  if (!box.valid()) return false;
  Remove(id);
  const Box b = ToBox(box);
  impl_->boxes[id] = b;
  impl_->tree.insert(Value(b, id));
  return true;
}

bool SpatialIndex::Remove(uint64_t id) {
  auto it = impl_->boxes.find(id);
  if (it == impl_->boxes.end()) return false;
  impl_->tree.remove(Value(it->second, id));
  impl_->boxes.erase(it);
  return true;
}

Extents SpatialIndex::BoxOf(uint64_t id) const {
  auto it = impl_->boxes.find(id);
  return it == impl_->boxes.end() ? Extents() : ToExtents(it->second);
}

std::vector<uint64_t> SpatialIndex::Intersecting(const Extents& window) const {
  std::vector<Value> found;
  if (window.valid()) {
    impl_->tree.query(bgi::intersects(ToBox(window)), std::back_inserter(found));
  }
  return SortedIds(found);
}

std::vector<uint64_t> SpatialIndex::Within(const Extents& window) const {
  std::vector<Value> found;
  if (window.valid()) {
    impl_->tree.query(bgi::covered_by(ToBox(window)), std::back_inserter(found));
  }
  return SortedIds(found);
}

std::vector<uint64_t> SpatialIndex::Nearest(Vec2 p, size_t n) const {
  std::vector<Value> found;
  if (n == 0) return {};
  const Point q(p.x, p.y);
  impl_->tree.query(bgi::nearest(q, static_cast<unsigned>(n)), std::back_inserter(found));
  std::vector<std::pair<double, uint64_t>> ranked;
  ranked.reserve(found.size());
  for (const Value& v : found) ranked.emplace_back(bg::comparable_distance(q, v.first), v.second);
  std::sort(ranked.begin(), ranked.end());
  std::vector<uint64_t> ids;
  ids.reserve(ranked.size());
  for (const auto& r : ranked) ids.push_back(r.second);
  return ids;
}

}  // namespace veltor::geom
