#include "workbench/display_list.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/geometry/text_box.h"
#include "drawing/model/entity.h"
#include "drawing/session/object_ids.h"
#include "workbench/entity_shapes.h"

namespace veltor::workbench {

namespace {

// The box a text covers, estimated as geom::EstimateTextBox does.
std::vector<geom::Vec2> TextCorners(const Shape& text) {
  size_t lines = 1, longest = 0, current = 0;
  for (char c : text.text) {
    if (c == '\n') {
      ++lines;
      current = 0;
    } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      longest = std::max(longest, ++current);
    }
  }
  const double width = geom::kGlyphWidthRatio * text.height * static_cast<double>(longest);
  const double below = static_cast<double>(lines - 1) * geom::kDefaultLineSpacing * text.height;
  const geom::Vec2 along{std::cos(text.rotation), std::sin(text.rotation)};
  const geom::Vec2 up{-along.y, along.x};
  const geom::Vec2 o = text.points.front();
  return {o - up * below, o - up * below + along * width, o + along * width + up * text.height,
          o + up * text.height};
}

geom::Extents BoxOf(const Shape& shape) {
  geom::Extents box;
  const std::vector<geom::Vec2> corners =
      shape.kind == Shape::Kind::kText && !shape.points.empty() ? TextCorners(shape) : shape.points;
  for (const geom::Vec2& p : corners) box.Add(geom::Vec3(p.x, p.y, 0));
  return box;
}

bool InsidePolygon(geom::Vec2 p, const std::vector<geom::Vec2>& ring) {
  bool inside = false;
  for (size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
    if ((ring[i].y > p.y) != (ring[j].y > p.y) &&
        p.x < (ring[j].x - ring[i].x) * (p.y - ring[i].y) / (ring[j].y - ring[i].y) + ring[i].x)
      inside = !inside;
  }
  return inside;
}

double ShapeDistance(const Shape& shape, geom::Vec2 p) {
  const auto& pts = shape.points;
  if (pts.empty()) return std::numeric_limits<double>::infinity();
  if (shape.kind == Shape::Kind::kText) {
    const std::vector<geom::Vec2> box = TextCorners(shape);
    if (InsidePolygon(p, box)) return 0.0;
    double best = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < 4; ++i) best = std::min(best, SegmentDistance(p, box[i], box[(i + 1) % 4]));
    return best;
  }
  if (pts.size() == 1) return (p - pts[0]).Length();
  double best = std::numeric_limits<double>::infinity();
  for (size_t i = 0; i + 1 < pts.size(); ++i) best = std::min(best, SegmentDistance(p, pts[i], pts[i + 1]));
  if (shape.closed) best = std::min(best, SegmentDistance(p, pts.back(), pts.front()));
  return best;
}

}  // namespace

double SegmentDistance(geom::Vec2 p, geom::Vec2 a, geom::Vec2 b) {
  const geom::Vec2 ab = b - a;
  const double length2 = ab.LengthSquared();
  double t = length2 > 0 ? ((p.x - a.x) * ab.x + (p.y - a.y) * ab.y) / length2 : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  return (p - (a + ab * t)).Length();
}

DisplayList DisplayList::Build(const model::Document& doc) {
  DisplayList list;
  list.generation_ = doc.generation();
  EntityShapes shapes(doc);
  std::vector<geom::SpatialIndex::Entry> entries;
  for (model::RecordId id : model::ModelSpaceEntities(doc)) {
    DisplayItem item;
    item.shapes = shapes.Of(id);
    if (item.shapes.empty()) continue;
    for (const Shape& shape : item.shapes) item.box.Add(BoxOf(shape));
    // Numbers a file got wrong (infinite, not a number) give nothing to draw or index.
    const geom::Vec3 size = item.box.Size();
    if (!item.box.valid() || !std::isfinite(size.x) || !std::isfinite(size.y)) continue;
    item.id = session::IdOf(doc, id);
    list.extents_.Add(item.box);
    entries.emplace_back(list.items_.size(), item.box);
    list.items_.push_back(std::move(item));
  }
  list.index_ = geom::SpatialIndex(entries);
  return list;
}

std::vector<size_t> DisplayList::Visible(const geom::Extents& window) const {
  std::vector<uint64_t> found = index_.Intersecting(window);
  return std::vector<size_t>(found.begin(), found.end());
}

od::EntityId DisplayList::Pick(geom::Vec2 p, double tolerance) const {
  const geom::Extents near({p.x - tolerance, p.y - tolerance, 0}, {p.x + tolerance, p.y + tolerance, 0});
  od::EntityId best = od::kNullId;
  double best_distance = tolerance;
  for (uint64_t index : index_.Intersecting(near)) {
    for (const Shape& shape : items_[index].shapes) {
      const double d = ShapeDistance(shape, p);
      // On a tie the entity drawn later (on top) wins.
      if (d <= best_distance) {
        best_distance = d;
        best = items_[index].id;
      }
    }
  }
  return best;
}

od::EntityList DisplayList::InWindow(const geom::Extents& window, bool crossing) const {
  std::vector<uint64_t> found = crossing ? index_.Intersecting(window) : index_.Within(window);
  od::EntityList ids;
  ids.reserve(found.size());
  for (uint64_t index : found) ids.push_back(items_[index].id);
  return ids;
}

}  // namespace veltor::workbench
