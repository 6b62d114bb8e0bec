// Breaking a curve of model space in two points, as the CAD host's BREAK does.
#pragma once

#include <vector>

#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"

namespace veltor::model {

// Removes the part of `entity` between the points of it nearest to `first` and `second`
// (WCS): lines, arcs, lightweight polylines, 3D polylines and splines lose the part between
// the two points (equal points split the curve there), closed ones the part from the first
// point forward to the second (counter-clockwise on a circle, which becomes an arc), and the
// rest stays as one open curve. Returns the pieces: `entity` first, which keeps its handle,
// extension dictionary and extended data, then the new entities, copies of it (every common
// property and its extended data) without its extension dictionary. Fails without changing
// anything for other entity types and for points that do not break the curve.
Result<std::vector<RecordId>> BreakEntity(Document& doc, RecordId entity, const geom::Vec3& first,
                                          const geom::Vec3& second);

// True for the entity types BreakEntity handles (a POLYLINE only when it is a 3D polyline).
bool CanBreak(const Document& doc, RecordId entity);

}  // namespace veltor::model
