// How a file writes its tags, and one tag written that way.
#pragma once

#include <string>

#include "drawing/dxf/tag.h"

namespace veltor::dxf {

struct FileFormat {
  bool binary = false;
  bool binary_one_byte_codes = false;  // binary R12: one-byte group codes, 255 escapes
  bool crlf = false;                   // ASCII line ends
  bool right_aligned_codes = true;     // "  0" rather than "0"
};

// Appends `tag` as the file writes it. Returns false when the value cannot be written so that
// it reads back unchanged: binary, a value the code's type cannot hold; ASCII, a value with a
// line break (it is still appended, as the file would show it).
bool AppendTag(const Tag& tag, const FileFormat& format, std::string& out);

}  // namespace veltor::dxf
