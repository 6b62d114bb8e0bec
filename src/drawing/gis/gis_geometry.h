// Drawing entities as OGR geometries, in world coordinates.
//
//   POINT                                   Point
//   LINE, open LWPOLYLINE / POLYLINE, ARC,  LineString
//   open SPLINE, elliptic arc
//   closed LWPOLYLINE / POLYLINE, CIRCLE,   Polygon (one ring)
//   full ELLIPSE, closed SPLINE
//   HATCH                                   Polygon (outer ring and holes), MultiPolygon when
//                                           the boundaries hold several outer rings
//   TEXT, MTEXT, INSERT                     Point at the insertion point
//   anything else (meshes too)              no geometry
// A geometry has Z (the 25D types) when one of its coordinates has a Z other than 0.
// Arcs, bulges, circles and ellipses become chords no farther than `deviation` drawing units
// from the curve, with at most 396 chords per full turn (geom::Flatten's finest precision);
// splines take that finest precision.
#pragma once

#include <memory>
#include <type_traits>

#include <ogr_api.h>

#include "drawing/model/document.h"

namespace veltor::gis {

struct GeometryDeleter {
  void operator()(OGRGeometryH geometry) const { OGR_G_DestroyGeometry(geometry); }
};
using GeometryPtr = std::unique_ptr<std::remove_pointer_t<OGRGeometryH>, GeometryDeleter>;

// The entity's geometry, or nullptr when it has none (or too few points to make one).
GeometryPtr EntityGeometry(const model::Document& doc, model::RecordId entity, double deviation);

// The geom::Flatten precision (1..99) whose chords stay within `deviation` of a circular curve
// of `radius`.
int PrecisionForDeviation(double radius, double deviation);

}  // namespace veltor::gis
