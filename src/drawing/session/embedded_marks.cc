// Layers and blocks that commands create to mark entities.
#include "drawing/model/blocks.h"
#include "drawing/model/create.h"
#include "drawing/model/tables.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

namespace {

// The ACI color nearest a true color among the seven standard ones (for drawings before
// true colors and for readers that ignore them).
int NearestStandardColor(long rgb) {
  static const long kStandard[] = {0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                   0x0000FF, 0xFF00FF, 0xFFFFFF};
  int best = 7;
  long best_distance = -1;
  for (int i = 0; i < 7; ++i) {
    long distance = 0;
    for (int shift : {0, 8, 16}) {
      long d = ((rgb >> shift) & 0xFF) - ((kStandard[i] >> shift) & 0xFF);
      distance += d * d;
    }
    if (best_distance < 0 || distance < best_distance) {
      best = i + 1;
      best_distance = distance;
    }
  }
  return best;
}

}  // namespace

Result<od::ObjectId> EmbeddedDatabase::AddLayer(const std::string& name, long true_color) {
  if (name.empty()) return Status::Error("layer: the name is empty");
  if (FindLayer(name) != od::kNullId) return Status::Error("layer " + name + ": exists already");
  model::RecordId layer = model::AddLayer(doc_, name, NearestStandardColor(true_color));
  // True colors (group 420) exist from R2004 on; they follow the ACI color.
  if (doc_.AtLeast("AC1018")) {
    model::Tags& tags = doc_.MutableTags(layer);
    for (size_t i = 0; i < tags.size(); ++i) {
      if (tags[i].code == 62) {
        tags.insert(tags.begin() + static_cast<long>(i) + 1,
                    model::Tag{420, std::to_string(true_color & 0xFFFFFF)});
        break;
      }
    }
  }
  return IdOf(doc_, layer);
}

bool EmbeddedDatabase::HasBlock(const std::string& name) const {
  return model::FindBlockBegin(doc_, name) != model::kNoRecord;
}

Status EmbeddedDatabase::AddCircleBlock(const std::string& name, const od::Point3& center,
                                        double radius) {
  if (HasBlock(name)) return Status::Error("block " + name + ": exists already");
  if (!doc_.AtLeast("AC1012"))
    return Status::Error("block " + name + ": new blocks need a drawing of R13 or later");
  if (!(radius > 0)) return Status::Error("block " + name + ": the radius must be positive");
  model::Tags circle{{100, "AcDbCircle"},
                     {10, model::FormatNumber(center.x)},
                     {20, model::FormatNumber(center.y)},
                     {30, model::FormatNumber(center.z)},
                     {40, model::FormatNumber(radius)}};
  model::AddBlockDefinition(doc_, name, {0, 0, 0}, {{"CIRCLE", "0", std::move(circle)}}, {});
  return Status::Ok();
}

}  // namespace veltor::session
