// VELTOR_BREAK: breaks a curve between two points as the host's BREAK does, every piece
// keeping the Object Data records and feature classification of the curve.
#pragma once

#include "od/command_context.h"

namespace veltor::commands {

// Asks "Select object: ", "Specify first break point: " and "Specify second break point
// <same point>: " (Enter: the first point, a split without gap), breaks the object with the
// document locked and prints "Completed: %i\n" with the number of pieces. A cancelled prompt
// changes nothing; a failure prints "Error: VELTOR_BREAK failed: REASON" and changes nothing.
void Break(od::CommandContext& context);

}  // namespace veltor::commands
