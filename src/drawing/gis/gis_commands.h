// ODEXPORT and ODIMPORT: the GIS exchange as host commands of the embedded session.
#pragma once

#include <cstddef>

#include "drawing/session/session.h"
#include "od/application.h"

namespace veltor::gis {

struct GisCommand {
  const char* name;
  int flags;
  const char* summary;
};

// The commands, in registration order; `RunGisCommand` takes an index into this table.
inline constexpr GisCommand kGisCommands[] = {
    {"ODEXPORT", od::kCmdModal, "Exports the Object Data with its entities to a GIS format through GDAL"},
    {"ODIMPORT", od::kCmdModal, "Imports a GIS layer as entities with Object Data records"},
};

// Runs the command `kGisCommands[index]` on `s`'s active drawing.
void RunGisCommand(session::Session& s, size_t index);

// Registers every command of `kGisCommands` with its handler.
void RegisterGisCommands(session::Session& s);

}  // namespace veltor::gis
