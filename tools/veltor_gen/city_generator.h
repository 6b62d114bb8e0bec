// Generates a realistic small-town drawing with Object Data: parcels with labels, roads,
// pipes, manholes (a block with ID and DEPTH attributes, one dynamic variant), trees, survey
// points, contours, and a few other curves, on layers of which one is frozen, one locked and
// one off. The same seed and size give the same file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "drawing/model/document.h"
#include "od/status.h"

namespace veltor::tools {

struct CityOptions {
  size_t entities = 1000;  // model space entities (100 to 2,000,000)
  uint64_t seed = 1;
  std::string version = "AC1032";
};

Result<std::unique_ptr<model::Document>> GenerateCity(const CityOptions& options);

}  // namespace veltor::tools
