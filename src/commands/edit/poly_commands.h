// VELTOR_23DPOLY and VELTOR_2POLY: replace entities by 3D polylines or lightweight polylines
// that carry the entities' properties, classification and Object Data.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Asks "Precision [0-99]<0> (> 0 - enable conversion): ", gathers the entities and replaces
// each line, lightweight polyline and (at precision 1 or more) arc, circle, ellipse and
// spline by a 3D polyline; prints "Completed: %i out of %i\n".
void To3dPolyline(od::CommandContext& context);

// Asks "Precision [1-99]<10>: " (0 is accepted as well), gathers the entities and replaces
// each 3D polyline, arc, circle, ellipse and spline by a lightweight polyline; prints
// "Completed: %i out of %i\n".
void To2dPolyline(od::CommandContext& context);

}  // namespace veltor::commands
