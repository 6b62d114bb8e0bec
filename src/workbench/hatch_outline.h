// The boundary paths of a HATCH as outlines: polyline paths (with bulges) and edge paths of
// lines, arcs and elliptic arcs; a spline edge is drawn as its control polygon.
#pragma once

#include <vector>

#include "drawing/model/entity_geometry_tags.h"
#include "workbench/display_list.h"

namespace veltor::workbench {

// Paths in world XY (the hatch's OCS taken to the WCS); empty when the hatch has none.
std::vector<Shape> HatchOutlines(const model::RecordTags& hatch, int precision);

}  // namespace veltor::workbench
