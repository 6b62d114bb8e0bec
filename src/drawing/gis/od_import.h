// A GDAL layer into a drawing: each feature becomes entities carrying a record of one table
// made from the layer's fields.
//
// Geometries: a point -> POINT; a line string -> LWPOLYLINE at its elevation, or a 3D
// POLYLINE when its Z varies; a polygon -> one closed polyline per ring (holes too);
// multi-geometries and collections -> one entity per part; curves are taken as GDAL
// linearises them. Every entity made from a feature carries the feature's record. Features
// without geometry are skipped (and counted).
// Fields: Integer and Integer64 -> Integer (Integer64 values outside 32 bits are refused),
// Real -> Real, String -> Character; three Real fields NAME_X, NAME_Y, NAME_Z (any case)
// -> a Point column NAME; anything else (dates, binary, lists) -> Character holding GDAL's
// text of the value, with one warning per such field. The exporter's veltor_* fields are not
// columns. A null field gives the column's default (0, 0.0, "", the origin).
#pragma once

#include <string>
#include <vector>

#include "drawing/session/session_document.h"
#include "od/status.h"

namespace veltor::gis {

struct ImportOptions {
  std::string source;        // anything GDAL opens as vector data, "PG:..." included
  std::string layer;         // "" : the source's only layer (or its first one)
  std::string target_layer;  // the drawing layer of the new entities; "" : the current layer
  std::string table;         // "" : the GDAL layer's name
};

struct ImportSummary {
  std::string table;
  bool table_created = false;
  size_t features = 0;  // features imported
  size_t entities = 0;  // entities made
  size_t skipped = 0;   // features without geometry
  std::vector<std::string> warnings;
};

// Reads the whole layer first; the drawing is changed only when it was read without error.
// A table of that name that exists is used when its columns are the same (names and types in
// order) and refused otherwise.
Result<ImportSummary> ImportObjectData(session::SessionDocument& doc, const ImportOptions& options);

}  // namespace veltor::gis
