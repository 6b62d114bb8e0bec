#include "commands/edit/set_text_samples.h"

namespace veltor::commands {

namespace {

// Horizontal modes whose text starts at its position: left (0), aligned (3) and fit (5).
bool StartsAtPosition(const od::TextFacts& text) {
  return text.vertical_mode == 0 &&
         (text.horizontal_mode == 0 || text.horizontal_mode == 3 || text.horizontal_mode == 5);
}

}  // namespace

std::vector<TextSample> SplitTextSamples(const od::Database& db, od::EntityList& entities) {
  std::vector<TextSample> samples;
  od::EntityList others;
  for (od::EntityId id : entities) {
    const std::string type = db.EntityClass(id);
    std::optional<od::TextFacts> text;
    if (type == "AcDbText" || type == "AcDbMText") text = db.Text(id);
    if (!text) {
      others.push_back(id);
      continue;
    }
    od::Point3 point =
        text->multiline || StartsAtPosition(*text) ? text->position : text->alignment_point;
    samples.push_back({id, point, std::move(text->text), text->height});
  }
  entities = std::move(others);
  return samples;
}

}  // namespace veltor::commands
