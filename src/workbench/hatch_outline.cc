#include "workbench/hatch_outline.h"

#include <algorithm>
#include <cmath>

#include "drawing/geometry/bulge.h"
#include "drawing/geometry/flatten.h"
#include "drawing/geometry/ocs.h"
#include "drawing/model/document.h"

namespace veltor::workbench {

namespace {

using geom::Vec2;

// Reads the tags of a HATCH in order; each read takes the next tag of the code asked for,
// stopping before `limit` tags so that one path never reads into the next.
class Cursor {
 public:
  explicit Cursor(const model::RecordTags& tags) : tags_(tags) {}

  // The value of the next tag with `code`, or nullopt when there is none before a tag of
  // `stop` (0: read to the end).
  bool Next(int code, double& value, int stop = 0) {
    for (size_t i = at_; i < tags_.size(); ++i) {
      if (tags_[i].code == code) {
        value = model::ParseDouble(tags_[i].value);
        at_ = i + 1;
        return true;
      }
      if (stop != 0 && tags_[i].code == stop) return false;
    }
    return false;
  }
  double Get(int code, double fallback = 0.0) {
    double value = fallback;
    return Next(code, value) ? value : fallback;
  }
  // The code of the next tag, or -1 at the end.
  int Peek() const { return at_ < tags_.size() ? tags_[at_].code : -1; }
  void Skip() { ++at_; }

 private:
  const model::RecordTags& tags_;
  size_t at_ = 0;
};

Shape Path(std::vector<Vec2> points, bool closed) {
  Shape shape;
  shape.points = std::move(points);
  shape.closed = closed;
  return shape;
}

// An arc from `start` to `end` (radians) about `center`; clockwise edges store their angles
// mirrored, so they are walked on the mirrored angles.
std::vector<Vec2> ArcPoints(Vec2 center, Vec2 major, double ratio, double start, double end,
                            bool ccw, int precision) {
  if (!std::isfinite(start) || !std::isfinite(end)) return {};
  if (!ccw) {
    start = -start;
    end = -end;
    std::swap(start, end);
  }
  start = std::fmod(start, 2 * M_PI);
  end = std::fmod(end, 2 * M_PI);
  while (end <= start) end += 2 * M_PI;
  const int segments = geom::ArcSegmentCount(end - start, precision);
  const Vec2 minor{-major.y * ratio, major.x * ratio};
  std::vector<Vec2> points;
  for (int i = 0; i <= segments; ++i) {
    const double a = start + (end - start) * i / segments;
    points.push_back(center + major * std::cos(a) + minor * std::sin(a));
  }
  if (!ccw) std::reverse(points.begin(), points.end());
  return points;
}

void ReadEdges(Cursor& c, int edges, int precision, std::vector<Shape>& out) {
  for (int e = 0; e < edges; ++e) {
    double kind = 0;
    if (!c.Next(72, kind)) return;
    const Vec2 a{c.Get(10), c.Get(20)};
    switch (static_cast<int>(kind)) {
      case 1: out.push_back(Path({a, {c.Get(11), c.Get(21)}}, false)); break;
      case 2: {
        const double r = c.Get(40), start = c.Get(50), end = c.Get(51);
        const bool ccw = c.Get(73, 1) != 0;
        out.push_back(Path(ArcPoints(a, {r, 0}, 1.0, start * M_PI / 180, end * M_PI / 180, ccw,
                                     precision), false));
        break;
      }
      case 3: {
        const Vec2 major{c.Get(11), c.Get(21)};
        const double ratio = c.Get(40), start = c.Get(50), end = c.Get(51);
        const bool ccw = c.Get(73, 1) != 0;
        out.push_back(Path(ArcPoints(a, major, ratio, start * M_PI / 180, end * M_PI / 180, ccw,
                                     precision), false));
        break;
      }
      case 4: {
        // The first control point was read as `a`; the others follow as 10/20 pairs.
        const int controls = static_cast<int>(c.Get(96));
        std::vector<Vec2> points{a};
        for (int i = 1; i < controls; ++i) {
          double x = 0, y = 0;
          if (!c.Next(10, x, 72) || !c.Next(20, y, 72)) break;
          points.push_back({x, y});
        }
        out.push_back(Path(std::move(points), false));
        break;
      }
      default: return;
    }
  }
}

}  // namespace

std::vector<Shape> HatchOutlines(const model::RecordTags& hatch, int precision) {
  std::vector<Shape> out;
  Cursor c(hatch);
  double paths = 0;
  if (!c.Next(91, paths)) return out;
  for (int p = 0; p < static_cast<int>(paths); ++p) {
    double flags = 0;
    if (!c.Next(92, flags)) break;
    if (static_cast<int>(flags) & 2) {
      const bool bulges = c.Get(72) != 0;
      const bool closed = c.Get(73) != 0;
      const int count = static_cast<int>(c.Get(93));
      std::vector<geom::BulgeVertex> vertices;
      for (int i = 0; i < count; ++i) {
        geom::BulgeVertex v;
        if (!c.Next(10, v.point.x, 92) || !c.Next(20, v.point.y, 92)) break;
        if (bulges && c.Peek() == 42) c.Next(42, v.bulge);
        vertices.push_back(v);
      }
      out.push_back(Path(geom::FlattenBulgePath(vertices, closed, precision), closed));
    } else {
      ReadEdges(c, static_cast<int>(c.Get(93)), precision, out);
    }
  }
  const geom::Vec3 normal = hatch.Normal();
  if (!geom::IsWorldNormal(normal)) {
    const geom::Matrix3d to_wcs = geom::OcsToWcs(normal);
    const double elevation = hatch.Point(10).z;
    for (Shape& shape : out)
      for (Vec2& v : shape.points) {
        geom::Vec3 w = to_wcs.Apply({v.x, v.y, elevation});
        v = {w.x, w.y};
      }
  }
  return out;
}

}  // namespace veltor::workbench
