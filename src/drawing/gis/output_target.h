// Where an export writes: a temporary name beside the target, moved over the target only
// when the whole output was written, so a failed export leaves nothing behind and an existing
// output is either kept or replaced whole.
//
// The temporary name keeps the target's extension ("out.gpkg" is written as
// "out.veltor-tmp-PID.gpkg"), which drivers use to pick the flavour of a format. Drivers that
// write several files beside each other (a shapefile's .shp, .shx, .dbf, .prj) or a folder
// are handled too: everything named after the temporary stem is moved.
#pragma once

#include <string>

#include "od/status.h"

namespace veltor::gis {

class OutputTarget {
 public:
  // Fails when the target's folder does not exist.
  static Result<OutputTarget> Prepare(const std::string& target);

  // The name GDAL writes to.
  const std::string& write_path() const { return write_path_; }
  // Moves what was written over the target (an existing file or folder of that name is
  // replaced).
  Status Commit();
  // Removes what was written.
  void Discard();

 private:
  std::string folder_;
  std::string stem_;       // the target's file name without its extension
  std::string temp_stem_;  // the temporary file name without its extension
  std::string write_path_;
  std::string target_;
};

}  // namespace veltor::gis
