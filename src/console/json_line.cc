#include "console/json_line.h"

#include <cstdio>
#include <cstdlib>

#include "od/text.h"

namespace veltor::console {

namespace {

// Length of the valid UTF-8 sequence at s[i], or 0 when the byte there does not start one
// (overlong forms, surrogates and values past U+10FFFF are not valid).
size_t Utf8SequenceLength(const std::string& s, size_t i) {
  auto byte = [&](size_t k) { return static_cast<unsigned char>(s[k]); };
  unsigned char b = byte(i);
  if (b < 0x80) return 1;
  size_t n = b >= 0xF0 ? 4 : b >= 0xE0 ? 3 : b >= 0xC2 ? 2 : 0;
  if (n == 0 || b > 0xF4 || i + n > s.size()) return 0;
  for (size_t k = 1; k < n; ++k)
    if ((byte(i + k) & 0xC0) != 0x80) return 0;
  unsigned char b1 = byte(i + 1);
  if (b == 0xE0 && b1 < 0xA0) return 0;  // overlong
  if (b == 0xED && b1 >= 0xA0) return 0;  // surrogate
  if (b == 0xF0 && b1 < 0x90) return 0;  // overlong
  if (b == 0xF4 && b1 >= 0x90) return 0;  // past U+10FFFF
  return n;
}


class Parser {
 public:
  explicit Parser(const std::string& text) : s_(text) {}

  Result<std::map<std::string, JsonValue>> Object() {
    std::map<std::string, JsonValue> object;
    Blanks();
    if (!Take('{')) return Fail("an object must start with '{'");
    Blanks();
    if (Take('}')) return End(std::move(object));
    for (;;) {
      Blanks();
      std::string key;
      if (!String(key)) return Fail("a key must be a string");
      Blanks();
      if (!Take(':')) return Fail("':' must follow a key");
      Blanks();
      JsonValue value;
      if (!Value(value)) return Fail("a value must be a string, a number, null, true, false or an array of strings");
      object[key] = std::move(value);
      Blanks();
      if (Take('}')) return End(std::move(object));
      if (!Take(',')) return Fail("',' or '}' must follow a value");
    }
  }

 private:
  Result<std::map<std::string, JsonValue>> End(std::map<std::string, JsonValue> object) {
    Blanks();
    if (pos_ != s_.size()) return Fail("text after the object");
    return object;
  }
  Status Fail(const std::string& why) const {
    return Status::Error("json: " + why + " (at character " + std::to_string(pos_ + 1) + ")");
  }
  void Blanks() {
    while (pos_ < s_.size() && (s_[pos_] == ' ' || s_[pos_] == '\t' || s_[pos_] == '\r' || s_[pos_] == '\n')) ++pos_;
  }
  bool Take(char c) {
    if (pos_ < s_.size() && s_[pos_] == c) return ++pos_, true;
    return false;
  }
  bool Word(const char* w) {
    std::string word(w);
    if (s_.compare(pos_, word.size(), word) != 0) return false;
    pos_ += word.size();
    return true;
  }

  bool Value(JsonValue& v) {
    if (pos_ >= s_.size()) return false;
    char c = s_[pos_];
    if (c == '"') return v.kind = JsonValue::Kind::kString, String(v.text);
    if (c == '[') return v.kind = JsonValue::Kind::kStringArray, Array(v.items);
    if (Word("null")) return v.kind = JsonValue::Kind::kNull, true;
    if (Word("true")) return v.kind = JsonValue::Kind::kBool, v.boolean = true, true;
    if (Word("false")) return v.kind = JsonValue::Kind::kBool, v.boolean = false, true;
    return Number(v);
  }

  bool Number(JsonValue& v) {
    size_t start = pos_;
    Take('-');
    size_t digits = pos_;
    while (pos_ < s_.size() && s_[pos_] >= '0' && s_[pos_] <= '9') ++pos_;
    if (pos_ == digits) return false;
    bool whole = true;
    if (Take('.')) whole = false;
    while (pos_ < s_.size() && ((s_[pos_] >= '0' && s_[pos_] <= '9') || s_[pos_] == 'e' || s_[pos_] == 'E' ||
                                ((s_[pos_] == '+' || s_[pos_] == '-') && (s_[pos_ - 1] == 'e' || s_[pos_ - 1] == 'E')))) {
      if (s_[pos_] == 'e' || s_[pos_] == 'E') whole = false;
      ++pos_;
    }
    std::string text = s_.substr(start, pos_ - start);
    char* end = nullptr;
    v.number = std::strtod(text.c_str(), &end);
    if (*end != '\0') return false;
    v.kind = JsonValue::Kind::kNumber;
    v.integer = whole ? std::strtoll(text.c_str(), nullptr, 10) : static_cast<int64_t>(v.number);
    return true;
  }

  bool Array(std::vector<std::string>& items) {
    if (!Take('[')) return false;
    Blanks();
    if (Take(']')) return true;
    for (;;) {
      Blanks();
      std::string item;
      if (!String(item)) return false;
      items.push_back(std::move(item));
      Blanks();
      if (Take(']')) return true;
      if (!Take(',')) return false;
    }
  }

  bool Hex4(uint32_t& unit) {
    if (pos_ + 4 > s_.size()) return false;
    unit = 0;
    for (int k = 0; k < 4; ++k) {
      char c = s_[pos_++];
      unit <<= 4;
      if (c >= '0' && c <= '9') unit |= c - '0';
      else if (c >= 'a' && c <= 'f') unit |= c - 'a' + 10;
      else if (c >= 'A' && c <= 'F') unit |= c - 'A' + 10;
      else return false;
    }
    return true;
  }

  bool String(std::string& out) {
    if (!Take('"')) return false;
    while (pos_ < s_.size()) {
      char c = s_[pos_++];
      if (c == '"') return true;
      if (static_cast<unsigned char>(c) < 0x20) return false;
      if (c != '\\') {
        out += c;
        continue;
      }
      if (pos_ >= s_.size()) return false;
      char e = s_[pos_++];
      switch (e) {
        case '"': out += '"'; break;
        case '\\': out += '\\'; break;
        case '/': out += '/'; break;
        case 'b': out += '\b'; break;
        case 'f': out += '\f'; break;
        case 'n': out += '\n'; break;
        case 'r': out += '\r'; break;
        case 't': out += '\t'; break;
        case 'u': {
          uint32_t unit;
          if (!Hex4(unit)) return false;
          if (unit >= 0xD800 && unit <= 0xDBFF && s_.compare(pos_, 2, "\\u") == 0) {
            size_t back = pos_;
            pos_ += 2;
            uint32_t low;
            if (Hex4(low) && low >= 0xDC00 && low <= 0xDFFF) {
              od::AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), out);
              break;
            }
            pos_ = back;
          }
          if (unit >= 0xDC80 && unit <= 0xDCFF) {
            out += static_cast<char>(unit - 0xDC00);  // a byte that was not UTF-8
          } else {
            od::AppendUtf8(unit >= 0xD800 && unit <= 0xDFFF ? 0xFFFD : unit, out);
          }
          break;
        }
        default: return false;
      }
    }
    return false;
  }

  const std::string& s_;
  size_t pos_ = 0;
};

}  // namespace

std::string JsonString(const std::string& text) {
  std::string out = "\"";
  for (size_t i = 0; i < text.size();) {
    unsigned char b = static_cast<unsigned char>(text[i]);
    size_t n = Utf8SequenceLength(text, i);
    char escape[8];
    if (n == 0) {
      std::snprintf(escape, sizeof escape, "\\udc%02x", b);
      out += escape;
      ++i;
      continue;
    }
    if (b == '"') out += "\\\"";
    else if (b == '\\') out += "\\\\";
    else if (b == '\n') out += "\\n";
    else if (b == '\r') out += "\\r";
    else if (b == '\t') out += "\\t";
    else if (b < 0x20 || b == 0x7F) {
      std::snprintf(escape, sizeof escape, "\\u%04x", b);
      out += escape;
    } else {
      out.append(text, i, n);
    }
    i += n;
  }
  return out + "\"";
}

Result<std::map<std::string, JsonValue>> ParseJsonObject(const std::string& line) {
  return Parser(line).Object();
}

}  // namespace veltor::console
