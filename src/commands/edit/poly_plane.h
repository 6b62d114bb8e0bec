// The plane of a lightweight polyline made from world points.
#pragma once

#include <vector>

#include "od/value.h"

namespace veltor::commands {

struct PolylinePlane {
  od::Point3 normal{0.0, 0.0, 1.0};
  // The points moved into the plane (unchanged when they already lie in it).
  std::vector<od::Point3> points;
};

// Points that lie in one plane keep it: points of equal Z give a polyline parallel to XY at
// that elevation, points in a tilted plane (a circle drawn in a tilted UCS) give that plane,
// its normal turned towards +Z. Points in no single plane, and sloping points on one line,
// are projected along Z onto the plane parallel to XY through the first point. Points closer
// than a millionth of their extent (at least 1e-9) count as lying in the plane.
PolylinePlane ChoosePlane(const std::vector<od::Point3>& points);

}  // namespace veltor::commands
