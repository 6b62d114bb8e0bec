// What the drawing view paints: every visible model space entity of a drawing reduced to
// flat shapes in world XY (paths, texts, point markers) with its colour resolved, and an
// R-tree over the entities' boxes that the view culls and picks with.
//
// Built once per drawing change (compare generation() with Document::generation). Entities
// on layers that are off or frozen are left out, so they are neither drawn nor picked.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/spatial_index.h"
#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"
#include "od/ids.h"

namespace veltor::workbench {

struct Shape {
  enum class Kind : uint8_t { kPath, kText, kPoint };
  Kind kind = Kind::kPath;
  bool closed = false;       // kPath: the last point joins the first
  uint32_t rgb = 0xFFFFFF;
  // kPath: the vertices; kText: the left end of the first line's baseline; kPoint: the point.
  std::vector<geom::Vec2> points;
  std::string text;          // kText: lines separated by '\n'
  double height = 0.0;       // kText: letter height in drawing units
  double rotation = 0.0;     // kText: radians, counter-clockwise from world X
};

struct DisplayItem {
  od::EntityId id = od::kNullId;  // the entity's object id (its handle)
  geom::Extents box;              // XY box around its shapes
  std::vector<Shape> shapes;
};

class DisplayList {
 public:
  DisplayList() = default;
  // Reduces every model space entity of `doc`; nothing of `doc` is kept.
  static DisplayList Build(const model::Document& doc);

  const std::vector<DisplayItem>& items() const { return items_; }
  // The box around everything drawn; empty for a drawing with nothing visible.
  const geom::Extents& extents() const { return extents_; }
  uint64_t generation() const { return generation_; }

  // Indices into items() of the entities whose boxes meet `window`, in drawing order.
  std::vector<size_t> Visible(const geom::Extents& window) const;
  // The entity whose shapes pass nearest to `p`, within `tolerance` (drawing units); a text
  // counts where its box is. kNullId when nothing is that close.
  od::EntityId Pick(geom::Vec2 p, double tolerance) const;
  // Entities inside `window` (whole box inside) or, with `crossing`, meeting it, in drawing
  // order.
  od::EntityList InWindow(const geom::Extents& window, bool crossing) const;

 private:
  std::vector<DisplayItem> items_;
  geom::SpatialIndex index_;  // keyed by the index into items_
  geom::Extents extents_;
  uint64_t generation_ = 0;
};

// Distance from `p` to the segment a-b.
double SegmentDistance(geom::Vec2 p, geom::Vec2 a, geom::Vec2 b);

}  // namespace veltor::workbench
