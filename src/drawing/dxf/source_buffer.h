// The bytes of a DXF file, read-only for the life of the drawing: either a private
// memory map of the file (no copy, no zero-filling) or bytes owned in memory.
#pragma once

#include <string>
#include <string_view>

#include "od/status.h"

namespace veltor::dxf {

class SourceBuffer {
 public:
  SourceBuffer() = default;
  explicit SourceBuffer(std::string bytes) : owned_(std::move(bytes)), view_(owned_) {}
  ~SourceBuffer();
  SourceBuffer(const SourceBuffer&) = delete;
  SourceBuffer& operator=(const SourceBuffer&) = delete;
  SourceBuffer(SourceBuffer&& other) noexcept { *this = std::move(other); }
  SourceBuffer& operator=(SourceBuffer&& other) noexcept;

  // Maps a file; files that cannot be mapped (pipes, empty files) are read instead.
  static Result<SourceBuffer> FromFile(const std::string& path);

  std::string_view view() const { return view_; }
  const char* data() const { return view_.data(); }
  size_t size() const { return view_.size(); }

 private:
  void Release();
  std::string owned_;
  std::string_view view_;
  void* map_ = nullptr;
  size_t map_size_ = 0;
};

}  // namespace veltor::dxf
