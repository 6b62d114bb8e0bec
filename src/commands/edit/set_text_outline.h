// Plane tests of VELTOR_SETTEXT: whether a point lies inside an outline, and how far it lies
// from a path. Both work in XY.
#pragma once

#include <vector>

#include "od/value.h"

namespace veltor::commands {

// True when `p` lies inside the closed outline through `outline`: the segment from `p` to a
// point outside the outline's extents crosses an odd number of edges. An edge with an end at
// `p` (within 1e-10) is not counted.
bool InsideOutline(const std::vector<od::Point3>& outline, const od::Point3& p);

// The smallest XY distance from `p` to the segments of `path`, or to its single vertex;
// infinity for an empty path.
double DistanceToPath(const std::vector<od::Point3>& path, const od::Point3& p);

}  // namespace veltor::commands
