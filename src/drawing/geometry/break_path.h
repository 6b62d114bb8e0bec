// Breaking straight-segment paths: lines (two points) and 3D polylines.
#pragma once

#include <vector>

#include "drawing/geometry/polyline.h"
#include "drawing/geometry/vec.h"
#include "od/status.h"

namespace veltor::geom {

// The position on the path nearest to `p`: the index of the segment plus the fraction of it
// (0 at its start vertex, 1 at its end). A closed path has a last segment back to vertex 0.
// The path needs two or more vertices.
double NearestPathPosition(const Polyline3d& path, const Vec3& p);

// The point at a position (a position past the end of a closed path wraps round).
Vec3 PathPointAt(const Polyline3d& path, double position);

// The open path between two positions (`to` may pass the end of a closed path): the point
// at `from`, the vertices strictly between, the point at `to`.
std::vector<Vec3> PathBetween(const Polyline3d& path, double from, double to);

// Removes the part between the points nearest to `a` and `b` (see RemainingStretches) and
// returns the open paths that remain, in the path's direction; the first starts where the
// path started unless the path is closed.
Result<std::vector<Polyline3d>> BreakPath(const Polyline3d& path, const Vec3& a, const Vec3& b);

}  // namespace veltor::geom
