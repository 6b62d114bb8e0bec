#include "drawing/dxf/byte_arena.h"

#include <algorithm>
#include <cstring>

namespace veltor::dxf {

uint64_t ByteArena::Add(std::string_view bytes) {
  if (blocks_.empty() || bytes.size() > block_capacity_ - block_used_) {
    // A record larger than a block gets a block of its own.
    block_capacity_ = std::max(kBlockSize, bytes.size());
    // Not zero-filled: pages cost memory only once written.
    blocks_.emplace_back(new char[block_capacity_]);
    block_used_ = 0;
    capacity_total_ += block_capacity_;
  }
  uint64_t address = (static_cast<uint64_t>(blocks_.size() - 1) << 32) | block_used_;
  if (!bytes.empty()) std::memcpy(blocks_.back().get() + block_used_, bytes.data(), bytes.size());
  block_used_ += bytes.size();
  return address;
}

}  // namespace veltor::dxf
