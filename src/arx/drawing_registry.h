// Which drawings are open, and how a drawing object's id is packed into an od::ObjectId.
//
// The module keeps object ids between calls (selections, palette rows), and the host frees a
// drawing's object ids when the drawing closes. So an od::ObjectId never holds a host pointer:
// it packs the serial number the open drawing was given here with the object's handle. A
// serial is never reused, so an id of a closed drawing finds no drawing and is refused rather
// than followed. Portable: no host header.
#pragma once

#include <cstdint>
#include <vector>

#include "od/ids.h"

namespace veltor::arx {

// Bits of a packed id: the top kSerialBits hold the serial, the rest the handle.
inline constexpr int kHandleBits = 44;
inline constexpr int kSerialBits = 64 - kHandleBits;
inline constexpr uint64_t kMaxHandle = (uint64_t{1} << kHandleBits) - 1;
inline constexpr uint32_t kMaxSerial = (uint32_t{1} << kSerialBits) - 1;

struct UnpackedId {
  uint32_t serial = 0;
  uint64_t handle = 0;
};

// kNullId for a null handle, a handle above kMaxHandle, or a serial of 0 or above kMaxSerial.
od::ObjectId PackId(uint32_t serial, uint64_t handle);
UnpackedId UnpackId(od::ObjectId id);

// The open drawings, keyed by the host's database pointer (never dereferenced here).
class DrawingRegistry {
 public:
  // The drawing's serial, giving it the next one when it is not registered yet; 0 when the
  // serials are used up.
  uint32_t Register(const void* database);
  // Forgets the drawing: ids packed with its serial are refused from now on.
  void Unregister(const void* database);
  // The drawing registered under `serial`, or nullptr (closed or never seen).
  const void* Find(uint32_t serial) const;
  // 0 when the drawing is not registered.
  uint32_t SerialOf(const void* database) const;

 private:
  struct Entry {
    const void* database;
    uint32_t serial;
  };
  std::vector<Entry> open_;
  uint32_t last_serial_ = 0;
};

}  // namespace veltor::arx
