// The geometry of drawing entities in world coordinates: extents, vertices, lengths, areas
// and curve-to-polyline conversion, built on the geometry kernel.
#pragma once

#include <optional>
#include <vector>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/flatten.h"
#include "drawing/geometry/spatial_index.h"
#include "drawing/geometry/vec.h"
#include "drawing/model/document.h"

namespace veltor::model {

// Extents in world coordinates, or nothing for entities without geometry the engine can
// measure (3DSOLID bodies, proxies, empty blocks). Block references include their block's
// contents (nested blocks too) and their attributes. TEXT, MTEXT and attributes are estimates
// (see geom::EstimateTextBox). Polylines include their width, and LINE, POINT, CIRCLE, ARC,
// 2D polylines, TEXT, attributes, SOLID and TRACE their thickness (the shape moved by
// thickness along the extrusion direction); MLINE its elements and round caps. To measure
// many entities use ExtentsCache (extents_cache.h), which measures each block once.
std::optional<geom::Extents> EntityExtents(const Document& doc, RecordId entity);

struct EntityVertexList {
  std::vector<geom::Vec3> points;  // world coordinates; bulges dropped (chords)
  bool closed = false;
};
// Vertices of LINE, LWPOLYLINE, POLYLINE (2D and 3D) and MLINE; nothing for other types.
std::optional<EntityVertexList> EntityVertices(const Document& doc, RecordId entity);

// Closed curves: closed polylines and splines, circles, full ellipses, closed multilines.
bool IsClosedCurve(const Document& doc, RecordId entity);
// Length of curves (lines, polylines with bulges, arcs, circles, ellipses, splines, MLINE).
std::optional<double> EntityLength(const Document& doc, RecordId entity);
// Enclosed area of curves (as if closed), bulge-aware for LWPOLYLINE and 2D POLYLINE.
std::optional<double> EntityArea(const Document& doc, RecordId entity);
// ARC, CIRCLE, ELLIPSE and SPLINE to a vertex list (precision 1-99, at most 10000 vertices);
// polylines flatten their bulges. Nothing for other types.
std::optional<geom::FlatPath> FlattenEntity(const Document& doc, RecordId entity, int precision);

// An R-tree over the XY extents of every model space entity, keyed by record id (measured
// through one ExtentsCache).
geom::SpatialIndex BuildModelSpaceIndex(const Document& doc);

}  // namespace veltor::model
