// Append-only storage for the bytes of changed records: blocks that are never moved or
// freed, so an address stays valid for the arena's life and growing never copies.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace veltor::dxf {

class ByteArena {
 public:
  // Copies `bytes` in; returns their address for View.
  uint64_t Add(std::string_view bytes);
  std::string_view View(uint64_t address, uint64_t size) const {
    return std::string_view(blocks_[address >> 32].get() + (address & 0xFFFFFFFFu), size);
  }
  // Bytes held by the blocks (what the arena costs).
  uint64_t capacity() const { return capacity_total_; }

 private:
  static constexpr size_t kBlockSize = size_t{4} << 20;

  std::vector<std::unique_ptr<char[]>> blocks_;
  size_t block_capacity_ = 0;
  size_t block_used_ = 0;
  uint64_t capacity_total_ = 0;
};

}  // namespace veltor::dxf
