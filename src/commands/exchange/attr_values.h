// Converting between attribute texts and OD values.
#pragma once

#include <optional>
#include <string>

#include "od/value.h"

namespace veltor::commands {

// Sets `value`, keeping its type, from an attribute's text: Integer as atoi reads it, Real as
// atof reads it, Character as the text itself, Point from up to three comma-separated parts
// each read as a whole number (fractions are dropped: "12.7, 3.2" is 12, 3, 0; missing parts
// are 0). An Unknown value is left as it is.
void SetValueFromAttributeText(od::Value& value, const std::string& text);

// The text an attribute gets from a value: Integer "%i", Real "%.12lf" with trailing zeros
// cut back to one decimal ("10.0", "0.125"), Character the text, Point "%lf, %lf, %lf".
// Nothing for an Unknown value.
std::optional<std::string> AttributeTextOf(const od::Value& value);

}  // namespace veltor::commands
