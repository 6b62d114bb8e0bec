#include "drawing/dxf/encoding.h"

#include <cctype>
#include <cerrno>
#include <vector>

#include "od/text.h"

namespace veltor::dxf {

namespace {

const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);

bool IsPlainAscii(std::string_view s) {
  for (char c : s)
    if (static_cast<unsigned char>(c) >= 0x80 || c == '\\') return false;
  return true;
}

int Hex(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

// The value of the "\U+XXXX" escape at s[i], or -1 if there is none.
long EscapeAt(std::string_view s, size_t i) {
  if (s[i] != '\\' || i + 6 >= s.size() || (s[i + 1] != 'U' && s[i + 1] != 'u') || s[i + 2] != '+')
    return -1;
  int a = Hex(s[i + 3]), b = Hex(s[i + 4]), c = Hex(s[i + 5]), d = Hex(s[i + 6]);
  if (a < 0 || b < 0 || c < 0 || d < 0) return -1;
  return (a << 12) | (b << 8) | (c << 4) | d;
}

// Replaces "\U+XXXX" escapes in UTF-8 text. Characters beyond U+FFFF are written as a pair
// of escapes (UTF-16 surrogates); a surrogate without its partner becomes U+FFFD.
std::string ResolveEscapes(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    long cp = EscapeAt(s, i);
    if (cp < 0) {
      out += s[i];
      continue;
    }
    i += 6;
    if (cp >= 0xD800 && cp <= 0xDBFF) {
      long low = i + 1 < s.size() ? EscapeAt(s, i + 1) : -1;
      if (low >= 0xDC00 && low <= 0xDFFF) {
        cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
        i += 7;
      } else {
        cp = 0xFFFD;
      }
    } else if (cp >= 0xDC00 && cp <= 0xDFFF) {
      cp = 0xFFFD;
    }
    od::AppendUtf8(static_cast<uint32_t>(cp), out);
  }
  return out;
}

void AppendEscape(uint32_t v, std::string& out) {
  static const char kHex[] = "0123456789ABCDEF";
  out += "\\U+";
  for (int shift = 12; shift >= 0; shift -= 4) out += kHex[(v >> shift) & 15];
}

std::string Convert(iconv_t cd, std::string_view in, bool& ok) {
  ok = true;
  std::string out;
  if (cd == kNoConverter) {
    ok = false;
    return out;
  }
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  std::vector<char> buf(in.size() * 4 + 16);
  char* src = const_cast<char*>(in.data());
  size_t src_left = in.size();
  char* dst = buf.data();
  size_t dst_left = buf.size();
  if (iconv(cd, &src, &src_left, &dst, &dst_left) == static_cast<size_t>(-1)) ok = false;
  out.assign(buf.data(), buf.size() - dst_left);
  return out;
}

}  // namespace

std::string CharsetForCodePage(std::string_view page) {
  std::string upper;
  for (char c : page) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  auto digits_after = [&](std::string_view prefix) -> std::string {
    if (upper.compare(0, prefix.size(), prefix) != 0) return "";
    return upper.substr(prefix.size());
  };
  std::string n = digits_after("ANSI_");
  if (!n.empty()) {
    if (n == "932") return "CP932";
    if (n == "936") return "CP936";
    if (n == "949") return "CP949";
    if (n == "950") return "CP950";
    return "CP" + n;
  }
  n = digits_after("DOS");
  if (!n.empty()) return "CP" + n;
  if (upper == "BIG5") return "BIG5";
  if (upper == "GB2312") return "GB2312";
  if (upper == "JOHAB") return "JOHAB";
  if (upper.rfind("ISO8859-", 0) == 0) return "ISO-8859-" + upper.substr(8);
  return "CP1252";
}

TextCodec::TextCodec(bool utf8, std::string_view dwg_code_page) : utf8_(utf8) {
  charset_ = utf8 ? "UTF-8" : CharsetForCodePage(dwg_code_page);
  if (!utf8_) {
    to_utf8_ = iconv_open("UTF-8", charset_.c_str());
    if (to_utf8_ == kNoConverter) {
      charset_ = "CP1252";
      to_utf8_ = iconv_open("UTF-8", charset_.c_str());
    }
    from_utf8_ = iconv_open(charset_.c_str(), "UTF-8");
  }
}

TextCodec::~TextCodec() {
  if (to_utf8_ != kNoConverter) iconv_close(to_utf8_);
  if (from_utf8_ != kNoConverter) iconv_close(from_utf8_);
}

std::string TextCodec::Decode(std::string_view raw) const {
  if (IsPlainAscii(raw)) return std::string(raw);
  // Repair invalid sequences so that callers always get valid UTF-8.
  if (utf8_) return ResolveEscapes(od::RepairUtf8(raw));
  bool ok;
  std::string converted = Convert(to_utf8_, raw, ok);
  if (!ok) {
    // Decode byte by byte so that one bad byte costs one character, not the whole text.
    converted.clear();
    for (char c : raw) {
      bool one_ok;
      std::string one = Convert(to_utf8_, std::string_view(&c, 1), one_ok);
      if (one_ok && !one.empty())
        converted += one;
      else
        od::AppendUtf8(0xFFFD, converted);
    }
  }
  return ResolveEscapes(converted);
}

std::string TextCodec::Encode(std::string_view utf8) const {
  bool plain = true;
  for (char c : utf8)
    if (static_cast<unsigned char>(c) >= 0x80 || static_cast<unsigned char>(c) < 0x20 || c == '\\')
      plain = false;
  if (plain) return std::string(utf8);
  std::string out;
  for (size_t i = 0; i < utf8.size();) {
    const od::Utf8Char decoded = od::DecodeUtf8(utf8, i);
    uint32_t cp = decoded.code_point;
    size_t n = decoded.length;
    // A line break would end the DXF line, and a literal "\U+XXXX" would read back as the
    // character it spells: both are written as escapes so that any text round-trips.
    if (cp < 0x20 || (cp == '\\' && EscapeAt(utf8, i) >= 0)) {
      AppendEscape(cp, out);
    } else if (cp < 0x80) {
      out += static_cast<char>(cp);
    } else if (utf8_) {
      if (!decoded.valid)
        od::AppendUtf8(0xFFFD, out);
      else
        out.append(utf8.substr(i, n));
    } else {
      bool ok;
      std::string one = Convert(from_utf8_, utf8.substr(i, n), ok);
      if (ok && !one.empty()) {
        out += one;
      } else if (cp > 0xFFFF) {
        AppendEscape(0xD800 + ((cp - 0x10000) >> 10), out);
        AppendEscape(0xDC00 + ((cp - 0x10000) & 0x3FF), out);
      } else {
        AppendEscape(cp, out);
      }
    }
    i += n;
  }
  return out;
}

}  // namespace veltor::dxf
