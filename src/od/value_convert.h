// Converting a value to another column type, as a host does when a value is written into a
// column of another type.
#pragma once

#include "od/value.h"

namespace veltor::od {

// Converts a value to another column type: numbers between each other (reals truncated
// toward zero), anything to text in its usual text form, text to numbers by its leading
// number, text to a point when it reads "x,y,z"; what cannot convert becomes the zero value.
Value ConvertValue(const Value& value, ValueType to);

}  // namespace veltor::od
