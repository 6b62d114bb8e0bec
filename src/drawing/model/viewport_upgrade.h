// R12 paper space viewports in the layout of R13 and later.
//
// An R12 VIEWPORT keeps its view (target, direction, height, centre, clipping, snap and grid,
// frozen layers) in the "MVIEW" list of its ACAD extended data; from R13 on the same values
// are AcDbViewport group codes and frozen layers are pointers to layer records.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "drawing/dxf/record_store.h"

namespace veltor::model {

// Gives the handle of the layer of that name (as the file writes it) in the new drawing, 0 when
// there is none.
using LayerHandleOf = std::function<dxf::Handle(std::string_view)>;

// The tags after "0 VIEWPORT" and its handle and owner: "100 AcDbEntity" with the common
// properties, "100 AcDbViewport" with the view, then the extended data other than MVIEW.
// Nothing when the record has no readable MVIEW list (the caller then leaves it out).
std::optional<dxf::Tags> UpgradeR12Viewport(const dxf::Tags& source, const LayerHandleOf& layer_handle);

}  // namespace veltor::model
