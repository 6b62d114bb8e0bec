#include "arx/wide_text.h"

#include "od/text.h"

namespace veltor::arx {

namespace {

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

}  // namespace

std::wstring Widen(std::string_view utf8) {
  std::wstring out;
  out.reserve(utf8.size());
  if (kWideIsUtf16) {
    for (char16_t unit : od::Utf8ToUtf16(utf8)) out.push_back(static_cast<wchar_t>(unit));
    return out;
  }
  for (size_t i = 0; i < utf8.size();) {
    od::Utf8Char c = od::DecodeUtf8(utf8, i);
    out.push_back(static_cast<wchar_t>(c.code_point));
    i += c.length;
  }
  return out;
}

std::string Narrow(std::wstring_view wide) {
  if (kWideIsUtf16) {
    std::u16string units;
    units.reserve(wide.size());
    for (wchar_t w : wide) units.push_back(static_cast<char16_t>(w));
    return od::Utf16ToUtf8(units);
  }
  std::string out;
  out.reserve(wide.size());
  for (wchar_t w : wide) {
    char32_t c = static_cast<char32_t>(w);
    if (c > 0x10FFFF || IsHighSurrogate(c) || IsLowSurrogate(c)) c = 0xFFFD;
    od::AppendUtf8(c, out);
  }
  return out;
}

std::string Narrow(const wchar_t* wide) {
  return wide ? Narrow(std::wstring_view(wide)) : std::string();
}

bool WidenInto(std::string_view utf8, wchar_t* buffer, size_t capacity) {
  if (capacity == 0) return false;
  std::wstring wide = Widen(utf8);
  size_t n = wide.size();
  bool fits = n < capacity;
  if (!fits) {
    n = capacity - 1;
    // Never leave half of a surrogate pair at the end.
    if (kWideIsUtf16 && n > 0 && IsHighSurrogate(static_cast<char32_t>(wide[n - 1]))) --n;
  }
  wide.copy(buffer, n);
  buffer[n] = L'\0';
  return fits;
}

}  // namespace veltor::arx
