// Converting one entity into a 3D polyline or a lightweight polyline that takes its place:
// the new entity gets the source's properties, feature classification and Object Data
// records. The source itself is left alone; the command erases it.
#pragma once

#include <optional>

#include "od/database.h"
#include "od/object_data.h"

namespace veltor::commands {

// The vertices a 3D polyline is built from, or nothing when the entity is not converted:
// a line (its two points), a lightweight polyline (its vertices; arc segments become chords)
// and, when `precision` is 1 or more, an arc, circle, ellipse or spline flattened with it.
std::optional<od::VertexList> Polyline3dVertices(const od::Database& db, od::EntityId entity,
                                                 int precision);

// The vertices a lightweight polyline is built from, or nothing when the entity is not
// converted: a 3D polyline (its vertices), an arc, circle, ellipse or spline (flattened with
// `precision`; 0 is taken as 1, the coarsest conversion).
std::optional<od::VertexList> LwPolylineVertices(const od::Database& db, od::EntityId entity,
                                                 int precision);

// Gives `result` what `source` carries: colour, layer, linetype, lineweight, transparency,
// linetype scale, plot style and hyperlink (a 3D polyline's vertices take the graphic ones
// too), the feature classification and a copy of every Object Data record in host order.
// Without a project (a drawing without Object Data) only the properties are copied. Stops at
// the first failure.
[[nodiscard]] Status CarryOver(od::Database& db, od::Project* project, od::EntityId source,
                               od::EntityId result);

// The 3D converter: the new 3D polyline's id, or nothing when the entity is not converted or
// a step fails (a half-made polyline is erased again).
std::optional<od::EntityId> ConvertTo3dPolyline(od::Database& db, od::Project* project,
                                                od::EntityId entity, int precision);

// The 2D converter: the new lightweight polyline's id, or nothing (as above).
std::optional<od::EntityId> ConvertToLwPolyline(od::Database& db, od::Project* project,
                                                od::EntityId entity, int precision);

}  // namespace veltor::commands
