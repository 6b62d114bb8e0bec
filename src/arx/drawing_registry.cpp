#include "arx/drawing_registry.h"

namespace veltor::arx {

od::ObjectId PackId(uint32_t serial, uint64_t handle) {
  if (handle == 0 || handle > kMaxHandle || serial == 0 || serial > kMaxSerial) return od::kNullId;
  return (static_cast<uint64_t>(serial) << kHandleBits) | handle;
}

UnpackedId UnpackId(od::ObjectId id) {
  return {static_cast<uint32_t>(id >> kHandleBits), id & kMaxHandle};
}

uint32_t DrawingRegistry::Register(const void* database) {
  if (!database) return 0;
  if (uint32_t serial = SerialOf(database)) return serial;
  if (last_serial_ >= kMaxSerial) return 0;
  open_.push_back({database, ++last_serial_});
  return last_serial_;
}

void DrawingRegistry::Unregister(const void* database) {
  for (auto it = open_.begin(); it != open_.end(); ++it) {
    if (it->database == database) {
      open_.erase(it);
      return;
    }
  }
}

const void* DrawingRegistry::Find(uint32_t serial) const {
  if (serial == 0) return nullptr;
  for (const Entry& e : open_)
    if (e.serial == serial) return e.database;
  return nullptr;
}

uint32_t DrawingRegistry::SerialOf(const void* database) const {
  for (const Entry& e : open_)
    if (e.database == database) return e.serial;
  return 0;
}

}  // namespace veltor::arx
