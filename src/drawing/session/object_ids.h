// Object ids of the embedded host: an object's drawing handle, or - for the records of old
// drawings written without handles - the record's index with the top bit set.
#pragma once

#include "drawing/model/document.h"
#include "od/ids.h"

namespace veltor::session {

inline constexpr od::ObjectId kRecordIdFlag = od::ObjectId{1} << 63;

inline od::ObjectId IdOf(const model::Document& doc, model::RecordId record) {
  if (record == model::kNoRecord) return od::kNullId;
  model::Handle handle = doc.store().at(record).handle;
  return handle != 0 ? handle : (kRecordIdFlag | record);
}

// The live record an id names, or kNoRecord (null, unknown and erased ids).
inline model::RecordId RecordOf(const model::Document& doc, od::ObjectId id) {
  if (id == od::kNullId) return model::kNoRecord;
  if (id & kRecordIdFlag) {
    od::ObjectId index = id & ~kRecordIdFlag;
    if (index >= doc.store().size() || doc.store().at(static_cast<model::RecordId>(index)).erased)
      return model::kNoRecord;
    return static_cast<model::RecordId>(index);
  }
  return doc.Find(id);
}

}  // namespace veltor::session
