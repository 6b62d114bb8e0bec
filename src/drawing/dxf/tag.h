// A DXF tag: a group code and its value as text in the file's own encoding.
//
// Values are kept exactly as the file wrote them (ASCII) or as the shortest text that reads
// back to the same binary value (binary DXF), so an unchanged tag writes back unchanged.
#pragma once

#include <string>
#include <vector>

namespace veltor::dxf {

struct Tag {
  int code = 0;
  std::string value;

  bool operator==(const Tag& other) const { return code == other.code && value == other.value; }
  bool operator!=(const Tag& other) const { return !(*this == other); }
};

using Tags = std::vector<Tag>;

}  // namespace veltor::dxf
