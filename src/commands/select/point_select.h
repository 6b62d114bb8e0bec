// Selecting the closed contours around a point.
#pragma once

#include <vector>

#include "od/command_context.h"
#include "od/host.h"

namespace veltor::commands {

// Even-odd test of a point against a closed ring of XY vertices. A ray to +X counts each edge
// it crosses with the half-open rule (an edge counts when one end is above the ray and the
// other on or below it), so a ray through a vertex counts once, not twice. A point on an edge
// or a vertex counts as inside.
bool InsideRing(const std::vector<od::Point3>& ring, const od::Point3& point);

// The closed contours of model space (lightweight and 3D polylines, splines, multilines)
// that enclose the point in the XY plane, in model space order. `tolerance` closes a contour
// whose ends are that close. `use_index` finds candidates through the spatial index; without
// it every entity of model space is examined (the results are the same).
od::EntityList ContoursAround(const od::Database& db, const od::Point3& point, double tolerance,
                              bool use_index = true);

void PointSelect(od::CommandContext& context);

}  // namespace veltor::commands
