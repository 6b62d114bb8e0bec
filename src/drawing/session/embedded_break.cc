// EmbeddedDatabase::BreakCurve (the host's BREAK on one entity) and CopyExtensionData (what
// else than Object Data a piece takes from the entity it was broken from).
#include "drawing/model/break_entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/session/embedded_database.h"
#include "drawing/session/embedded_project.h"
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

Status EmbeddedDatabase::CopyExtensionData(od::EntityId from, od::EntityId to) {
  model::RecordId source = Record(from), target = Record(to);
  if (source == model::kNoRecord || target == model::kNoRecord)
    return Status::Error("copy extension data: the entity cannot be opened");
  model::RecordId xdict = model::ExtensionDictionary(doc_, source);
  if (xdict == model::kNoRecord) return Status::Ok();
  bool copied = false;
  for (const model::DictionaryEntry& entry : model::DictionaryEntries(doc_, xdict)) {
    if (entry.key == objectdata::kRecordsKey || entry.key == kClassificationKey) continue;
    model::RecordId object = doc_.Find(entry.handle);
    // Nested dictionaries and other objects stay with the entity: only plain data is copied.
    if (object == model::kNoRecord || doc_.TypeOf(object) != "XRECORD") continue;
    const model::Tags data = model::XRecordData(doc_, object);
    model::RecordId own = model::EnsureExtensionDictionary(doc_, target);
    model::RecordId existing = model::DictionaryLookup(doc_, own, entry.key);
    if (existing != model::kNoRecord) {
      model::SetXRecordData(doc_, existing, data);
    } else {
      model::RecordId made = model::AddXRecord(doc_, doc_.store().at(own).handle, data);
      model::SetDictionaryEntry(doc_, own, entry.key, doc_.store().at(made).handle);
    }
    copied = true;
  }
  if (copied) listener_.Modified(to);
  return Status::Ok();
}

}  // namespace veltor::session
