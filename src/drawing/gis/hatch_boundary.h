// The boundary paths of a HATCH as rings of world points.
#pragma once

#include <vector>

#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"

namespace veltor::gis {

// Each boundary path of the hatch as one ring (first point not repeated at the end), in the
// stored order: polyline paths with their bulges and edge paths (lines, circular and elliptic
// arcs) flattened with chords within `deviation`; spline edges at the finest spline precision
// (their control points when they do not make a valid curve).
// Paths with fewer than three points are left out; reading stops at the first tag that does
// not follow the path layout, keeping the rings read so far.
std::vector<std::vector<geom::Vec3>> HatchBoundaryRings(const model::Document& doc,
                                                        model::RecordId hatch, double deviation);

}  // namespace veltor::gis
