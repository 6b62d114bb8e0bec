// The characteristic point of an entity that VELTOR_SETXYZ writes.
#pragma once

#include "od/database.h"
#include "ui/od_select_xyz.h"

namespace veltor::commands {

// A coordinate that cannot be had: the largest finite double.
inline constexpr double kUnavailable = 1.7976931348623157e308;

// The entity's point by the modes: block references their insertion point and single-line
// texts their position, whatever the modes; lines, lightweight and 3D polylines and multilines
// their first or last vertex, or for Center the mean of a closed polyline's vertices or the
// point halfway along any other path (Z from the extents); everything else the corner or the
// middle of its extents. Coordinates that cannot be had are kUnavailable.
od::Point3 EntityPoint(const od::Database& db, od::EntityId entity, ui::XyMode xy_mode,
                       ui::ZMode z_mode);

// The point halfway along the straight segments through `points`; kUnavailable for X and Y
// with fewer than two points.
od::Point3 HalfwayAlong(const std::vector<od::Point3>& points);

}  // namespace veltor::commands
