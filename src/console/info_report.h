// The summary `veltor --info` prints: version, encoding, entities by type in model and
// paper space, layers with their states, Object Data tables with columns and record counts.
#pragma once

#include <string>

#include "drawing/model/document.h"

namespace veltor::console {

std::string InfoReport(const model::Document& doc);

}  // namespace veltor::console
