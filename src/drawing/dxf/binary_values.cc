#include "drawing/dxf/binary_values.h"

#include <charconv>
#include <cstring>

#include "drawing/dxf/group_codes.h"

namespace veltor::dxf {

namespace {

template <typename T>
T LoadLittle(const char* p) {
  T value;
  std::memcpy(&value, p, sizeof(T));  // the engine targets little-endian machines
  return value;
}

template <typename T>
void StoreLittle(T value, std::string& out) {
  char buf[sizeof(T)];
  std::memcpy(buf, &value, sizeof(T));
  out.append(buf, sizeof(T));
}

template <typename T>
std::string IntText(T value) {
  char buf[32];
  auto r = std::to_chars(buf, buf + sizeof(buf), value);
  return std::string(buf, r.ptr);
}

template <typename T>
bool ParseInt(const std::string& text, T& out) {
  const char* b = text.data();
  const char* e = b + text.size();
  while (b < e && *b == ' ') ++b;
  while (e > b && e[-1] == ' ') --e;
  if (b < e && *b == '+') ++b;
  long long wide = 0;
  auto r = std::from_chars(b, e, wide);
  if (r.ec != std::errc() || r.ptr != e) return false;
  out = static_cast<T>(wide);
  return true;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string FormatDouble(double value) {
  char buf[64];
  auto r = std::to_chars(buf, buf + sizeof(buf), value);
  return std::string(buf, r.ptr);
}

bool BinaryCursor::Need(uint64_t n, std::string& error, const char* what) {
  if (end_ - pos_ >= n) return true;
  error = "byte " + std::to_string(pos_) + ": file ends inside " + what;
  return false;
}

bool BinaryCursor::Next(Tag& tag, std::string& error) {
  error.clear();
  if (pos_ >= end_) return false;
  int code;
  if (one_byte_codes_) {
    uint8_t b = static_cast<uint8_t>(data_[pos_]);
    if (b == 255) {
      if (!Need(3, error, "a group code")) return false;
      code = LoadLittle<int16_t>(&data_[pos_ + 1]);
      pos_ += 3;
    } else {
      code = b;
      pos_ += 1;
    }
  } else {
    if (!Need(2, error, "a group code")) return false;
    code = LoadLittle<int16_t>(&data_[pos_]);
    pos_ += 2;
  }
  tag.code = code;
  const char* p = data_.data() + pos_;
  switch (KindOfCode(code)) {
    case ValueKind::kDouble:
      if (!Need(8, error, "a real value")) return false;
      tag.value = FormatDouble(LoadLittle<double>(p));
      pos_ += 8;
      break;
    case ValueKind::kInt16:
      if (!Need(2, error, "an integer value")) return false;
      tag.value = IntText(LoadLittle<int16_t>(p));
      pos_ += 2;
      break;
    case ValueKind::kInt32:
      if (!Need(4, error, "an integer value")) return false;
      tag.value = IntText(LoadLittle<int32_t>(p));
      pos_ += 4;
      break;
    case ValueKind::kInt64:
      if (!Need(8, error, "an integer value")) return false;
      tag.value = IntText(LoadLittle<int64_t>(p));
      pos_ += 8;
      break;
    case ValueKind::kBool:
      if (!Need(1, error, "a flag value")) return false;
      tag.value = IntText(static_cast<unsigned>(static_cast<uint8_t>(*p)));
      pos_ += 1;
      break;
    case ValueKind::kBinary: {
      if (!Need(1, error, "a binary chunk")) return false;
      size_t length = static_cast<uint8_t>(*p);
      ++pos_;
      if (!Need(length, error, "a binary chunk")) return false;
      static const char kHex[] = "0123456789ABCDEF";
      tag.value.resize(length * 2);
      for (size_t i = 0; i < length; ++i) {
        uint8_t b = static_cast<uint8_t>(data_[pos_ + i]);
        tag.value[2 * i] = kHex[b >> 4];
        tag.value[2 * i + 1] = kHex[b & 15];
      }
      pos_ += length;
      break;
    }
    case ValueKind::kString: {
      const void* nul = std::memchr(p, '\0', static_cast<size_t>(end_ - pos_));
      if (!nul) {
        error = "byte " + std::to_string(pos_) + ": text value without its terminating zero";
        return false;
      }
      size_t length = static_cast<size_t>(static_cast<const char*>(nul) - p);
      tag.value.assign(p, length);
      pos_ += length + 1;
      break;
    }
  }
  return true;
}

bool AppendBinaryTag(const Tag& tag, bool one_byte_codes, std::string& out) {
  if (one_byte_codes) {
    if (tag.code >= 0 && tag.code < 255) {
      out.push_back(static_cast<char>(tag.code));
    } else {
      out.push_back(static_cast<char>(255));
      StoreLittle<int16_t>(static_cast<int16_t>(tag.code), out);
    }
  } else {
    StoreLittle<int16_t>(static_cast<int16_t>(tag.code), out);
  }
  switch (KindOfCode(tag.code)) {
    case ValueKind::kDouble: {
      const char* b = tag.value.data();
      const char* e = b + tag.value.size();
      while (b < e && *b == ' ') ++b;
      while (e > b && e[-1] == ' ') --e;
      if (b < e && *b == '+') ++b;
      double d = 0;
      auto r = std::from_chars(b, e, d);
      if (r.ec != std::errc() || r.ptr != e) return false;
      StoreLittle<double>(d, out);
      return true;
    }
    case ValueKind::kInt16: {
      int16_t v;
      if (!ParseInt(tag.value, v)) return false;
      StoreLittle(v, out);
      return true;
    }
    case ValueKind::kInt32: {
      int32_t v;
      if (!ParseInt(tag.value, v)) return false;
      StoreLittle(v, out);
      return true;
    }
    case ValueKind::kInt64: {
      int64_t v;
      if (!ParseInt(tag.value, v)) return false;
      StoreLittle(v, out);
      return true;
    }
    case ValueKind::kBool: {
      int v;
      if (!ParseInt(tag.value, v)) return false;
      out.push_back(static_cast<char>(v));
      return true;
    }
    case ValueKind::kBinary: {
      if (tag.value.size() % 2 != 0 || tag.value.size() / 2 > 255) return false;
      out.push_back(static_cast<char>(tag.value.size() / 2));
      for (size_t i = 0; i < tag.value.size(); i += 2) {
        int hi = HexDigit(tag.value[i]), lo = HexDigit(tag.value[i + 1]);
        if (hi < 0 || lo < 0) return false;
        out.push_back(static_cast<char>(hi * 16 + lo));
      }
      return true;
    }
    case ValueKind::kString:
      out.append(tag.value);
      out.push_back('\0');
      return true;
  }
  return true;
}

}  // namespace veltor::dxf
