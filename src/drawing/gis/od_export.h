// Object Data to any vector format GDAL writes: one layer per table (named after it), one
// feature per record, with the record's entity as the geometry (gis_geometry.h) and the
// fields of gis_fields.h.
#pragma once

#include <string>
#include <vector>

#include "drawing/model/document.h"
#include "od/status.h"

namespace veltor::gis {

inline constexpr char kDefaultFormat[] = "GPKG";
// Default largest distance between a curve and its chords, in drawing units.
inline constexpr double kDefaultDeviation = 0.01;

struct ExportOptions {
  std::string target;                // a file or folder name, or a "PG:..." connection string
  std::string format = kDefaultFormat;  // a GDAL driver's short name; ignored for "PG:"
  std::string srs;                   // anything OSRSetFromUserInput reads ("EPSG:2056"); "" none
  std::vector<std::string> tables;   // the tables to export; empty: every table
  bool without_records = false;      // entities without records go to kNoRecordsLayer
  double deviation = kDefaultDeviation;
  bool overwrite = false;            // PostgreSQL: replace tables that exist
};

struct ExportSource {
  model::Document* doc = nullptr;  // read only
  std::string name;                // the drawing's name in veltor_drawing
};

struct ExportSummary {
  size_t features = 0;
  size_t layers = 0;
  size_t damaged_records = 0;  // records that could not be read, left out

  // "Exported: 54 features in 1 layer.", the line both front ends print.
  std::string Line() const {
    auto counted = [](size_t n, const char* one, const char* many) {
      return std::to_string(n) + " " + (n == 1 ? one : many);
    };
    return "Exported: " + counted(features, "feature", "features") + " in " + counted(layers, "layer", "layers") +
           ".\n";
  }
};

// Exports the model space entities of every drawing into one output. Several drawings share a
// layer when they have a table of the same name and the same columns (name and type, in
// order); other definitions of one name are refused. Files are written beside the target and
// moved over it when complete; PostgreSQL writes in one transaction, rolled back on failure,
// and refuses tables that exist unless `overwrite`. On failure nothing is left behind.
Result<ExportSummary> ExportObjectData(const std::vector<ExportSource>& drawings,
                                       const ExportOptions& options);

}  // namespace veltor::gis
