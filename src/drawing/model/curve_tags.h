// Writing curve geometry into an entity's tags in place: what breaking a curve changes of
// the piece that keeps the entity and of the copies that become the other pieces. Every
// other tag (common properties, thickness, extrusion, extended data) stays as it is.
#pragma once

#include <vector>

#include "drawing/geometry/break_arc.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"

namespace veltor::model {

// Sets a point's x, y and z tags (code, code + 10, code + 20); a missing z is added after y,
// a missing point before the extended data.
void SetPointTags(Tags& tags, int code, const geom::Vec3& p);

// LINE: the two end points (WCS).
void WriteLine(Tags& tags, const geom::Vec3& start, const geom::Vec3& end);

// ARC: start and end angles (radians, written in degrees within [0, 360)).
void WriteArcAngles(Tags& tags, const geom::ArcSpan& arc);

// CIRCLE tags turned into ARC tags (the type tag, the AcDbArc subclass where the drawing has
// subclass markers, the angles). The record's type in the store is the caller's to change.
void CircleTagsToArc(Tags& tags, const geom::ArcSpan& arc);

// LWPOLYLINE: the vertex list (90, 10/20, 40/41, 42), open. Per-vertex widths are written
// unless the polyline has a constant width (43), which then still applies.
void WriteLwPolyline(Tags& tags, const geom::LwPolyline& polyline);

// SPLINE: degree, knots, weights and control points of an open, clamped curve; fit data is
// dropped (it no longer describes the piece), the closed and periodic flags are cleared and
// the rational flag follows the weights.
void WriteSpline(Tags& tags, const geom::SplineData& spline);

// The tags of an entity as the start of a new one: without its handle, its extension
// dictionary and reactor groups (102), which belong to the entity alone.
Tags CopyableTags(Tags tags);

}  // namespace veltor::model
