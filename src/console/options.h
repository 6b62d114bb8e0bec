// The command line of the veltor console.
#pragma once

#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

struct Options {
  std::string drawing;               // opened at start; a new drawing when empty
  std::string script;                // -s FILE ("-": standard input)
  std::vector<std::string> lines;    // -c LINE, in order (after the script's lines)
  std::string output;                // -o OUT
  bool in_place = false;             // --in-place
  bool info = false;                 // --info
  // --export OUT: the drawings' Object Data to a GIS format (see docs/gis.md).
  std::string export_target;
  std::vector<std::string> more_drawings;  // with --export: the drawings after the first
  std::string format;                      // --format NAME ("" : GeoPackage)
  std::string srs;                         // --srs EPSG:N
  std::vector<std::string> tables;         // --tables T1,T2
  bool without_records = false;            // --without-records
  double precision = 0.0;                  // --precision D (0: the default deviation)
  bool overwrite = false;                  // --overwrite (PostgreSQL tables)
  // --import SOURCE: a GIS layer into the drawing before the script runs.
  std::string import_source;
  std::string import_layer;                // --layer NAME
  std::string target_layer;                // --target-layer DWGLAYER
  std::string table;                       // --table NAME
  bool help = false;
  bool version = false;
  bool scripted() const { return !script.empty() || !lines.empty(); }
  bool exporting() const { return !export_target.empty(); }
};

Result<Options> ParseOptions(int argc, const char* const* argv);
extern const char kUsage[];

}  // namespace veltor::console
