// Reading and writing the tags of binary DXF.
//
// Values are turned into the text an ASCII file would hold (doubles in their shortest exact
// form, binary chunks in upper-case hex) and back, so the rest of the engine sees one tag model.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/dxf/tag.h"

namespace veltor::dxf {

inline constexpr char kBinarySentinel[] = "AutoCAD Binary DXF\r\n\x1a";  // + '\0': 22 bytes
inline constexpr size_t kBinarySentinelSize = 22;

class BinaryCursor {
 public:
  BinaryCursor(std::string_view data, uint64_t begin, uint64_t end, bool one_byte_codes)
      : data_(data), pos_(begin), end_(end), one_byte_codes_(one_byte_codes) {}

  // Reads the next tag. Returns false at the end of the range, or on malformed data with
  // `error` set ("byte N: reason").
  bool Next(Tag& tag, std::string& error);
  uint64_t position() const { return pos_; }

 private:
  bool Need(uint64_t n, std::string& error, const char* what);

  std::string_view data_;
  uint64_t pos_;
  uint64_t end_;
  bool one_byte_codes_;
};

// Appends one tag in binary form. Returns false if the text cannot be written as the code's
// binary type (an unparsable number, an odd-length hex chunk).
bool AppendBinaryTag(const Tag& tag, bool one_byte_codes, std::string& out);

std::string FormatDouble(double value);

}  // namespace veltor::dxf
