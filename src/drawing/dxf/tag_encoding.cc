#include "drawing/dxf/tag_encoding.h"

#include "drawing/dxf/binary_values.h"

namespace veltor::dxf {

bool AppendTag(const Tag& tag, const FileFormat& format, std::string& out) {
  if (format.binary) return AppendBinaryTag(tag, format.binary_one_byte_codes, out);
  std::string code = std::to_string(tag.code);
  if (format.right_aligned_codes && code.size() < 3) out.append(3 - code.size(), ' ');
  out += code;
  out += format.crlf ? "\r\n" : "\n";
  out += tag.value;
  out += format.crlf ? "\r\n" : "\n";
  return tag.value.find_first_of("\r\n") == std::string::npos;
}

}  // namespace veltor::dxf
