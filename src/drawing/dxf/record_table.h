// The records of a store, indexed by id, in fixed-size chunks: growing never moves a record,
// so a million-record file does not need room for its records twice while it grows (as a
// std::vector does when it reallocates).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "drawing/dxf/record.h"

namespace veltor::dxf {

class RecordTable {
 public:
  size_t size() const { return size_; }
  Record& operator[](RecordId id) { return chunks_[id >> kChunkBits][id & kChunkMask]; }
  const Record& operator[](RecordId id) const { return chunks_[id >> kChunkBits][id & kChunkMask]; }

  void push_back(Record record) {
    if ((size_ & kChunkMask) == 0) chunks_.emplace_back(new Record[kChunkSize]);
    (*this)[static_cast<RecordId>(size_)] = std::move(record);
    ++size_;
  }

 private:
  static constexpr unsigned kChunkBits = 14;  // 16384 records, about 1 MB a chunk
  static constexpr size_t kChunkSize = size_t{1} << kChunkBits;
  static constexpr size_t kChunkMask = kChunkSize - 1;

  std::vector<std::unique_ptr<Record[]>> chunks_;
  size_t size_ = 0;
};

}  // namespace veltor::dxf
