// od::ObjectId <-> the host's AcDbObjectId. An od id packs the drawing's serial with the
// object's handle (see drawing_registry.h), so an id outlives nothing it points to: an id of
// a closed drawing finds no drawing and is refused.
#pragma once

#include "arx/drawing_registry.h"
#include "od/ids.h"
#include "od/status.h"

#include <dbmain.h>

namespace veltor::arx {

// The open drawings of this session. Drawings register when first seen and unregister when
// their document is about to be destroyed (ArxApplication's document reactor).
DrawingRegistry& OpenDrawings();

// kNullId for a null id, an id without a database or a handle too large to pack.
od::ObjectId ToOdId(const AcDbObjectId& id);
// The host id of an od id; fails for kNullId, for an id of a drawing that has been closed, and
// for a handle the drawing does not know.
Result<AcDbObjectId> ToAcDbId(od::ObjectId id);
// ToAcDbId, or the null id on failure (for queries that answer "nothing").
AcDbObjectId ToAcDbIdOrNull(od::ObjectId id);

}  // namespace veltor::arx
