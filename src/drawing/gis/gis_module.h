// The GIS exchange as a module that a program loads when it is first used. GDAL brings a
// hundred shared libraries with it; linked into the console, loading them would cost every
// script run (and every worker of a batch) tens of milliseconds before it reads a drawing.
// The module's code runs against the program's own drawing engine: the program exports its
// symbols, and the module holds only the exchange.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/gis/od_export.h"
#include "drawing/gis/od_import.h"
#include "drawing/session/session.h"

namespace veltor::gis {

struct GisModule {
  // As gis_commands.h's RunGisCommand.
  void (*run_command)(session::Session& s, size_t index);
  Result<ExportSummary> (*export_object_data)(const std::vector<ExportSource>& drawings,
                                              const ExportOptions& options);
  Result<ImportSummary> (*import_object_data)(session::SessionDocument& doc, const ImportOptions& options);
};

// The name of the function the module exports: `const GisModule* VeltorGisModule()`.
inline constexpr char kGisModuleEntry[] = "VeltorGisModule";

}  // namespace veltor::gis
