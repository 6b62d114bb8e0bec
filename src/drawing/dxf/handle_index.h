// A map from handle to record id without per-entry allocation. Handles of most files are
// dense (1 to N with few gaps), so those below a limit that grows with the number of entries
// go to a direct array (4 bytes a handle); others go to an open-addressing hash table.
#pragma once

#include <cstdint>
#include <vector>

namespace veltor::dxf {

class HandleIndex {
 public:
  static constexpr uint32_t kMissing = 0xFFFFFFFFu;

  void clear() {
    direct_.clear();
    slots_.clear();
    count_ = 0;
  }

  // Inserts or replaces. Handle 0 is never stored.
  void Put(uint64_t handle, uint32_t value) {
    if (handle == 0) return;
    if (handle >= direct_.size() && handle < DirectLimit()) {
      size_t grown = direct_.size() + direct_.size() / 2;
      direct_.resize(handle + 1 > grown ? static_cast<size_t>(handle) + 1 : grown, kMissing);
    }
    if (handle < direct_.size()) {
      if (direct_[handle] == kMissing) ++count_;
      direct_[handle] = value;
      return;
    }
    PutHashed(handle, value);
  }

  uint32_t Get(uint64_t handle) const {
    if (handle < direct_.size() && direct_[handle] != kMissing) return direct_[handle];
    return GetHashed(handle);
  }

 private:
  // The direct array may cover handles up to a few times the number of entries (plus a
  // margin for the first ones), so sparse handles cannot make it large.
  uint64_t DirectLimit() const { return 4 * static_cast<uint64_t>(count_) + 65536; }

  void PutHashed(uint64_t handle, uint32_t value) {
    if ((hashed_ + 1) * 2 > slots_.size()) Rehash(slots_.empty() ? 1024 : slots_.size() * 2);
    size_t i = Slot(handle);
    while (slots_[i].handle != 0 && slots_[i].handle != handle) i = (i + 1) & mask_;
    if (slots_[i].handle == 0) {
      ++count_;
      ++hashed_;
    }
    slots_[i] = {handle, value};
  }

  uint32_t GetHashed(uint64_t handle) const {
    if (slots_.empty() || handle == 0) return kMissing;
    size_t i = Slot(handle);
    while (slots_[i].handle != 0) {
      if (slots_[i].handle == handle) return slots_[i].value;
      i = (i + 1) & mask_;
    }
    return kMissing;
  }

 private:
  struct Entry {
    uint64_t handle = 0;
    uint32_t value = 0;
  };
  // Handles are mostly dense runs, so the low bits are a good index, and neighbouring
  // handles (an entity, its dictionary, its owner) share cache lines; the high bits are
  // folded in for files whose handles are sparse.
  size_t Slot(uint64_t handle) const {
    return static_cast<size_t>(handle ^ (handle >> 24) ^ (handle >> 48)) & mask_;
  }
  void Rehash(size_t want) {
    size_t n = 1024;
    while (n < want) n <<= 1;
    std::vector<Entry> old;
    old.swap(slots_);
    slots_.assign(n, Entry{});
    mask_ = n - 1;
    for (const Entry& e : old) {
      if (e.handle == 0) continue;
      size_t i = Slot(e.handle);
      while (slots_[i].handle != 0) i = (i + 1) & mask_;
      slots_[i] = e;
    }
  }

  std::vector<uint32_t> direct_;  // record id by handle, kMissing where none
  std::vector<Entry> slots_;
  size_t mask_ = 0;
  size_t count_ = 0;   // entries in either part
  size_t hashed_ = 0;  // entries in the hash table
};

}  // namespace veltor::dxf
