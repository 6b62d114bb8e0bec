// Entity records read into the geometry kernel's shapes; shared by the entity geometry
// functions and ExtentsCache. Points are as DXF stores them (OCS where the type says so).
#pragma once

#include <optional>

#include "drawing/geometry/conic.h"
#include "drawing/geometry/nurbs.h"
#include "drawing/geometry/ocs.h"
#include "drawing/geometry/polyline.h"
#include "drawing/model/document.h"
#include "drawing/model/entity_geometry_tags.h"

namespace veltor::model::geometry_internal {

// LWPOLYLINE: vertices with bulges, elevation (38), extrusion, closed flag (70 & 1) and
// widths: a constant width (43) other than 0 applies to every segment, as the CAD host
// draws it; otherwise each vertex's start and end width (40, 41).
geom::LwPolyline ReadLwPolyline(const RecordTags& t);

struct PolylineShape {
  bool three_d = false;
  bool mesh = false;  // polygon or polyface mesh: only its points count
  geom::LwPolyline flat;  // 2D polylines (OCS, bulges, widths)
  geom::Polyline3d space;  // 3D polylines and meshes (WCS)
};

// POLYLINE with its VERTEX records (read through `scratch`). Spline frame control points and
// polyface face records are left out. A vertex without its own start or end width (40, 41)
// takes the POLYLINE's default (40, 41).
PolylineShape ReadPolyline(const Document& doc, RecordId entity, const RecordTags& t,
                           RecordTags& scratch);

std::optional<geom::NurbsCurve> ReadSpline(const RecordTags& t);
geom::Circle ReadCircle(const RecordTags& t);
geom::Arc ReadArc(const RecordTags& t);
geom::Ellipse ReadEllipse(const RecordTags& t);
// INSERT: insertion point, scales (1 when absent), rotation and extrusion. The base point is
// the block's, which the caller reads from the block.
geom::BlockReference ReadBlockReference(const RecordTags& t);

}  // namespace veltor::model::geometry_internal
