// EmbeddedDatabase::BreakCurve: the host's BREAK on one entity.
#include "drawing/model/break_entity.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/object_ids.h"

namespace veltor::session {

Result<od::EntityList> EmbeddedDatabase::BreakCurve(od::EntityId entity, const od::Point3& first,
                                                     const od::Point3& second) {
  model::RecordId record = Record(entity);
  if (record == model::kNoRecord) return Status::Error("break: the entity cannot be opened");
  Result<std::vector<model::RecordId>> pieces =
      model::BreakEntity(doc_, record, {first.x, first.y, first.z}, {second.x, second.y, second.z});
  if (!pieces.ok()) return pieces.status();
  od::EntityList ids{entity};
  listener_.Modified(entity);
  for (size_t i = 1; i < pieces->size(); ++i) ids.push_back(Added((*pieces)[i]));
  return ids;
}

}  // namespace veltor::session
