// The smallest complete drawing of R2000 or later that CAD programs open: the standard
// tables with their default records, model and paper space, and the root dictionaries with
// the two layouts. New drawings start from it.
#pragma once

#include <string>
#include <string_view>

namespace veltor::model {

// ASCII DXF text of an empty drawing; `acadver` is "AC1015" to "AC1032".
std::string BlankDrawingText(std::string_view acadver);

}  // namespace veltor::model
