#include "arx/object_ids.h"

namespace veltor::arx {

DrawingRegistry& OpenDrawings() {
  static DrawingRegistry drawings;
  return drawings;
}

od::ObjectId ToOdId(const AcDbObjectId& id) {
  if (id.isNull()) return od::kNullId;
  AcDbDatabase* db = id.database();
  if (!db) return od::kNullId;
  AcDbHandle handle = id.handle();
  uint64_t value = (static_cast<uint64_t>(handle.high()) << 32) | handle.low();
  return PackId(OpenDrawings().Register(db), value);
}

Result<AcDbObjectId> ToAcDbId(od::ObjectId id) {
  if (id == od::kNullId) return Status::Error("object id: the id is null");
  UnpackedId unpacked = UnpackId(id);
  const void* known = OpenDrawings().Find(unpacked.serial);
  if (!known) return Status::Error("object id: the drawing of this object is closed");
  // The registry only hands back pointers of drawings that are still open.
  AcDbDatabase* db = static_cast<AcDbDatabase*>(const_cast<void*>(known));
  AcDbHandle handle(static_cast<Adesk::UInt32>(unpacked.handle & 0xFFFFFFFFu),
                    static_cast<Adesk::UInt32>(unpacked.handle >> 32));
  AcDbObjectId result;
  if (db->getAcDbObjectId(result, false, handle) != Acad::eOk || result.isNull())
    return Status::Error("object id: no object has this handle in the drawing");
  return result;
}

AcDbObjectId ToAcDbIdOrNull(od::ObjectId id) {
  Result<AcDbObjectId> result = ToAcDbId(id);
  return result.ok() ? *result : AcDbObjectId();
}

}  // namespace veltor::arx
