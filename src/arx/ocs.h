// Object coordinate systems of planar entities (the arbitrary axis algorithm of the drawing
// format): a lightweight polyline stores its vertices in the plane's own coordinates.
// Portable: no host header.
#pragma once

#include "od/value.h"

namespace veltor::arx {

// `world` in the coordinates of the OCS with the given normal (need not be unit length; a zero
// normal is taken as +Z). z is the elevation of the point above the plane through the origin.
od::Point3 WorldToOcs(const od::Point3& world, const od::Point3& normal);

}  // namespace veltor::arx
