#include "commands/edit/attach_detach_records.h"

namespace veltor::commands {

size_t AttachRecordToEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                          const od::Record& record) {
  size_t attached = 0;
  for (od::EntityId entity : entities)
    if (container.AddRecord(entity, record).ok()) ++attached;
  return attached;
}

size_t DetachTableFromEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                           const std::string& table) {
  size_t detached = 0;
  for (od::EntityId entity : entities) {
    std::vector<std::string> tables = container.RecordTableNames(entity);
    // From the last record back, so that removing one leaves the indexes before it valid.
    for (size_t index = tables.size(); index-- > 0;)
      if (tables[index] == table && container.RemoveRecord(entity, index).ok()) ++detached;
  }
  return detached;
}

}  // namespace veltor::commands
