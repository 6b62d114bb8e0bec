// The bytes of a DXF file, read into memory in one piece and read-only for the life of the
// drawing. The file is copied rather than memory-mapped so that another program rewriting
// or truncating it while the drawing is open cannot change or break what we save.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "od/status.h"

namespace veltor::dxf {

class SourceBuffer {
 public:
  SourceBuffer() = default;
  explicit SourceBuffer(std::string bytes) : text_(std::move(bytes)), view_(text_) {}
  SourceBuffer(const SourceBuffer&) = delete;
  SourceBuffer& operator=(const SourceBuffer&) = delete;
  SourceBuffer(SourceBuffer&& other) noexcept { *this = std::move(other); }
  SourceBuffer& operator=(SourceBuffer&& other) noexcept;

  static Result<SourceBuffer> FromFile(const std::string& path);

  std::string_view view() const { return view_; }
  const char* data() const { return view_.data(); }
  size_t size() const { return view_.size(); }

 private:
  // Files are read into a raw array: a std::string would first zero-fill hundreds of MB.
  std::unique_ptr<char[]> raw_;
  std::string text_;
  std::string_view view_;
};

}  // namespace veltor::dxf
