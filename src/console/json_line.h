// The little JSON a batch report needs: writing strings, and reading back one flat object per
// line (string, number, null, boolean and array-of-string values).
//
// Paths are bytes on POSIX and need not be UTF-8. A string is written as JSON text of its
// valid UTF-8 sequences; each byte that is not part of one is written as the lone surrogate
// \udcXX (XX the byte), the way Python's "surrogateescape" decodes such bytes, so any JSON
// reader accepts the line and ParseJsonObject gives back the original bytes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "od/status.h"

namespace veltor::console {

// `text` as a JSON string literal, quotes included.
std::string JsonString(const std::string& text);

struct JsonValue {
  enum class Kind { kNull, kBool, kNumber, kString, kStringArray };
  Kind kind = Kind::kNull;
  bool boolean = false;
  double number = 0;
  int64_t integer = 0;  // the number when it is written without fraction or exponent
  std::string text;
  std::vector<std::string> items;
};

// Parses a line holding one JSON object whose values are of the kinds above. Nested objects
// and arrays of other things are refused ("json: ..."), as is anything after the object.
Result<std::map<std::string, JsonValue>> ParseJsonObject(const std::string& line);

}  // namespace veltor::console
