// Loads the GIS module (veltor-gis.so, beside the program) the first time the console needs it,
// and registers ODEXPORT and ODIMPORT so that they load it when they are run.
#pragma once

#include "drawing/gis/gis_module.h"
#include "drawing/session/session.h"
#include "od/status.h"

namespace veltor::console {

// The module, loaded once; an error says which file could not be loaded and why.
Result<const gis::GisModule*> LoadGisModule();

// ODEXPORT and ODIMPORT, whose handlers load the module and run its command; when it cannot be
// loaded they print why and change nothing.
void RegisterGisCommandsOnDemand(session::Session& s);

}  // namespace veltor::console
