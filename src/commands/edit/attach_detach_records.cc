#include "commands/edit/attach_detach_records.h"

namespace veltor::commands {

WriteTally AttachRecordToEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                              const od::Record& record) {
  WriteTally tally;
  for (od::EntityId entity : entities) tally.Count(container.AddRecord(entity, record));
  return tally;
}

WriteTally DetachTableFromEach(od::ObjectDataContainer& container, const od::EntityList& entities,
                               const std::string& table) {
  WriteTally tally;
  for (od::EntityId entity : entities) {
    std::vector<std::string> tables = container.RecordTableNames(entity);
    // From the last record back, so that removing one leaves the indexes before it valid.
    for (size_t index = tables.size(); index-- > 0;)
      if (tables[index] == table) tally.Count(container.RemoveRecord(entity, index));
  }
  return tally;
}

}  // namespace veltor::commands
