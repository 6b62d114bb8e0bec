// ODEXPORT and ODIMPORT: the GIS exchange as host commands of the embedded session.
#pragma once

#include "drawing/session/session.h"

namespace veltor::gis {

void RegisterGisCommands(session::Session& s);

}  // namespace veltor::gis
