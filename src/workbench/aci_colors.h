// The CAD host's 256 indexed colours (ACI) as RGB, for drawing entities and layers.
#pragma once

#include <cstdint>

namespace veltor::workbench {

// 0xRRGGBB of colour index 1..255. Index 7 is white (drawn on a dark background); 0 (ByBlock),
// 256 (ByLayer) and anything out of range give white as well: the caller resolves those first.
uint32_t AciToRgb(int index);

}  // namespace veltor::workbench
