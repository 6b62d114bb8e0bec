// An open-addressing map from handle to record id: one flat array, no per-entry allocation,
// so indexing millions of handles costs a few tens of milliseconds.
#pragma once

#include <cstdint>
#include <vector>

namespace veltor::dxf {

class HandleIndex {
 public:
  static constexpr uint32_t kMissing = 0xFFFFFFFFu;

  void clear() {
    slots_.clear();
    count_ = 0;
  }
  void reserve(size_t n) {
    if (n * 2 > slots_.size()) Rehash(n * 2);
  }
  size_t size() const { return count_; }

  // Inserts or replaces. Handle 0 is never stored.
  void Put(uint64_t handle, uint32_t value) {
    if ((count_ + 1) * 2 > slots_.size()) Rehash(slots_.empty() ? 1024 : slots_.size() * 2);
    size_t i = Slot(handle);
    while (slots_[i].handle != 0 && slots_[i].handle != handle) i = (i + 1) & mask_;
    if (slots_[i].handle == 0) ++count_;
    slots_[i] = {handle, value};
  }

  uint32_t Get(uint64_t handle) const {
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
    count_ = 0;
    for (const Entry& e : old)
      if (e.handle != 0) Put(e.handle, e.value);
  }

  std::vector<Entry> slots_;
  size_t mask_ = 0;
  size_t count_ = 0;
};

}  // namespace veltor::dxf
