// The length, area and volume of an entity that VELTOR_SETPROP writes.
#pragma once

#include "od/database.h"

namespace veltor::commands {

struct Measures {
  double length = 0;
  double area = 0;
  double volume = 0;
  // A 3D solid whose volume this host cannot measure (its volume stays 0).
  bool volume_unmeasured = false;
};

// Lines, lightweight and 3D polylines and multilines get a length: the straight distances
// between their vertices (arc segments count as their chords), closed polylines with their
// closing segment. Lightweight polylines get the host's area; closed 3D polylines and closed
// multilines the area of their outline projected on XY. 3D solids get their volume. Anything
// else, and an entity that cannot be opened, measures 0.
Measures MeasureEntity(const od::Database& db, od::EntityId entity);

// The area enclosed by the XY projection of `points`, as a closed outline of straight edges.
double ProjectedArea(const std::vector<od::Point3>& points);

}  // namespace veltor::commands
