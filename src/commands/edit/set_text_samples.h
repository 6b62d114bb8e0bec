// The texts VELTOR_SETTEXT reads: each single-line or multi-line text of the entity list
// as a point, a string and a height.
#pragma once

#include <string>
#include <vector>

#include "od/database.h"

namespace veltor::commands {

struct TextSample {
  od::EntityId id = od::kNullId;
  od::Point3 point;
  std::string text;
  double height = 0;
};

// Moves every text out of `entities` (the others keep their order) and returns them as
// samples. A single-line text on the baseline aligned left, aligned or fit gives its
// position; any other single-line text its alignment point; a multi-line text its location.
std::vector<TextSample> SplitTextSamples(const od::Database& db, od::EntityList& entities);

}  // namespace veltor::commands
