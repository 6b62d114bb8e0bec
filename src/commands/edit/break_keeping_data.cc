#include "commands/edit/break_keeping_data.h"

#include <string>
#include <vector>

namespace veltor::commands {

Result<od::EntityList> BreakKeepingData(od::Database& db, od::Project& project, od::EntityId entity,
                                        const od::Point3& first, const od::Point3& second) {
  od::ObjectDataContainer& container = project.Container();
  if (container.DamagedRecordCount(entity) > 0)
    return Status::Error("the object holds Object Data records that cannot be read");
  // Read before the break: what the entity carries is what every piece must carry.
  const std::vector<od::Record> records = container.Records(entity);
  const std::vector<std::string> tags = project.ClassificationTags(entity);
  Result<od::EntityList> pieces = db.BreakCurve(entity, first, second);
  if (!pieces.ok()) return pieces.status();
  for (size_t i = 1; i < pieces->size(); ++i) {
    const od::EntityId piece = (*pieces)[i];
    for (const std::string& tag : tags)
      if (Status s = project.Classify(piece, tag); !s.ok()) return s;
    for (const od::Record& record : records)
      if (Status s = container.AddRecord(piece, record); !s.ok()) return s;
    if (Status s = db.CopyExtensionData(entity, piece); !s.ok()) return s;
  }
  return pieces;
}

}  // namespace veltor::commands
