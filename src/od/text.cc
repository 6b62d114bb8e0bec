#include "od/text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "od/lower_case_table.h"

namespace veltor::od {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

Utf8Char DecodeUtf8(std::string_view s, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  const unsigned char b0 = byte(i);
  if (b0 < 0x80) return {b0, 1, true};

  // Length and the allowed range of the second byte (Unicode table 3-7); this range is what
  // excludes overlong forms, surrogates and code points above U+10FFFF.
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;
  char32_t cp = 0;
  if (b0 >= 0xC2 && b0 <= 0xDF) {
    length = 2;
    cp = b0 & 0x1F;
  } else if (b0 >= 0xE0 && b0 <= 0xEF) {
    length = 3;
    cp = b0 & 0x0F;
    if (b0 == 0xE0) low = 0xA0;
    if (b0 == 0xED) high = 0x9F;
  } else if (b0 >= 0xF0 && b0 <= 0xF4) {
    length = 4;
    cp = b0 & 0x07;
    if (b0 == 0xF0) low = 0x90;
    if (b0 == 0xF4) high = 0x8F;
  } else {
    return {kReplacement, 1, false};
  }
  for (std::size_t k = 1; k < length; ++k) {
    if (i + k >= s.size()) return {kReplacement, k, false};
    const unsigned char b = byte(i + k);
    const unsigned char lo = k == 1 ? low : 0x80;
    const unsigned char hi = k == 1 ? high : 0xBF;
    if (b < lo || b > hi) return {kReplacement, k, false};
    cp = (cp << 6) | (b & 0x3F);
  }
  return {cp, length, true};
}

void AppendUtf8(char32_t cp, std::string& out) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

namespace {

// A key whose order is the order of the code point's UTF-16 code units. Decoded code points
// are never surrogates, so only U+E000..U+FFFF have to move above the supplementary planes.
uint32_t Utf16OrderKey(char32_t cp) {
  return cp >= 0xE000 && cp <= 0xFFFF ? cp + 0x200000 : cp;
}

// C locale isspace.
bool IsCSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

std::size_t SkipCSpace(std::string_view s, std::size_t i) {
  while (i < s.size() && IsCSpace(s[i])) ++i;
  return i;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsHexDigit(char c) {
  return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Number of leading characters of s[i..] that match `word` ignoring ASCII case.
std::size_t MatchWord(std::string_view s, std::size_t i, std::string_view word) {
  std::size_t n = 0;
  while (n < word.size() && i + n < s.size() && AsciiLower(s[i + n]) == word[n]) ++n;
  return n;
}

// The lexical shape of a floating-point number starting at `start` (white space already
// skipped), measured two ways: `number_end` is where strtod stops (== start when there is no
// number), `prefix_end` is the end of the longest text that is still the beginning of some
// number, which is what scanf consumes.
struct NumberLex {
  enum class Kind { kNone, kDecimal, kHex, kInfinity, kNan };
  Kind kind = Kind::kNone;
  bool negative = false;
  std::size_t body = 0;  // first character after the sign
  std::size_t number_end = 0;
  std::size_t prefix_end = 0;
};

// Digits [i, end) followed by an optional exponent introduced by `marker` (e or p).
// Extends lex.number_end / lex.prefix_end over a complete or partial exponent.
std::size_t LexExponent(std::string_view s, std::size_t i, char marker, NumberLex& lex) {
  if (i >= s.size() || AsciiLower(s[i]) != marker) return i;
  std::size_t k = i + 1;
  if (k < s.size() && (s[k] == '+' || s[k] == '-')) ++k;
  const std::size_t digits = k;
  while (k < s.size() && IsDigit(s[k])) ++k;
  if (k == digits) {
    lex.prefix_end = k;  // "1e" or "1e+" could still become a number
    return i;
  }
  lex.number_end = lex.prefix_end = k;
  return k;
}

NumberLex LexNumber(std::string_view s, std::size_t start) {
  NumberLex lex;
  std::size_t i = start;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
    lex.negative = s[i] == '-';
    ++i;
  }
  lex.body = i;
  lex.number_end = start;
  lex.prefix_end = i;
  if (i >= s.size()) return lex;

  if (s[i] == '0' && i + 1 < s.size() && AsciiLower(s[i + 1]) == 'x') {
    // "0x" alone is still the number 0 for strtod.
    lex.kind = NumberLex::Kind::kDecimal;
    lex.number_end = i + 1;
    std::size_t k = i + 2;
    std::size_t digits = 0;
    while (k < s.size() && IsHexDigit(s[k])) ++k, ++digits;
    if (k < s.size() && s[k] == '.') {
      ++k;
      while (k < s.size() && IsHexDigit(s[k])) ++k, ++digits;
    }
    lex.prefix_end = k;
    if (digits == 0) return lex;
    lex.kind = NumberLex::Kind::kHex;
    lex.number_end = k;
    LexExponent(s, k, 'p', lex);
    return lex;
  }

  if (IsDigit(s[i]) || s[i] == '.') {
    std::size_t k = i;
    std::size_t digits = 0;
    while (k < s.size() && IsDigit(s[k])) ++k, ++digits;
    if (k < s.size() && s[k] == '.') {
      ++k;
      while (k < s.size() && IsDigit(s[k])) ++k, ++digits;
    }
    lex.prefix_end = k;
    if (digits == 0) return lex;  // a lone "."
    lex.kind = NumberLex::Kind::kDecimal;
    lex.number_end = k;
    LexExponent(s, k, 'e', lex);
    return lex;
  }

  const std::size_t inf = MatchWord(s, i, "infinity");
  if (inf > 0) {
    lex.prefix_end = i + inf;
    if (inf >= 3) {
      lex.kind = NumberLex::Kind::kInfinity;
      lex.number_end = i + (inf == 8 ? 8 : 3);
    }
    return lex;
  }
  const std::size_t nan = MatchWord(s, i, "nan");
  if (nan > 0) {
    lex.prefix_end = i + nan;
    if (nan < 3) return lex;
    lex.kind = NumberLex::Kind::kNan;
    lex.number_end = i + 3;
    std::size_t k = i + 3;
    if (k < s.size() && s[k] == '(') {
      ++k;
      while (k < s.size() && (IsDigit(s[k]) || s[k] == '_' || (AsciiLower(s[k]) >= 'a' &&
                                                               AsciiLower(s[k]) <= 'z'))) {
        ++k;
      }
      lex.prefix_end = k;
      if (k < s.size() && s[k] == ')') lex.number_end = lex.prefix_end = k + 1;
    }
  }
  return lex;
}

// Rough decimal (or binary, for hex) order of magnitude of a number that from_chars found
// out of range: positive means overflow, otherwise underflow.
bool IsOverflow(std::string_view digits_and_exponent, bool hex) {
  const char marker = hex ? 'p' : 'e';
  const int per_digit = hex ? 4 : 1;
  long long magnitude = 0;
  bool seen_nonzero = false, after_point = false;
  std::size_t k = 0;
  for (; k < digits_and_exponent.size(); ++k) {
    const char c = digits_and_exponent[k];
    if (c == '.') {
      after_point = true;
    } else if (AsciiLower(c) == marker) {
      break;
    } else if (!seen_nonzero && c == '0') {
      if (after_point) magnitude -= per_digit;
    } else {
      seen_nonzero = true;
      if (!after_point) magnitude += per_digit;
    }
  }
  if (k < digits_and_exponent.size()) {
    // Saturating exponent: the range check only needs its sign and rough size.
    const std::int32_t exponent = ParseLeadingInt(digits_and_exponent.substr(k + 1));
    magnitude += exponent;
  }
  return magnitude > 0;
}

double ValueOf(std::string_view s, const NumberLex& lex) {
  double value = 0.0;
  switch (lex.kind) {
    case NumberLex::Kind::kNone:
      return 0.0;
    case NumberLex::Kind::kInfinity:
      value = std::numeric_limits<double>::infinity();
      break;
    case NumberLex::Kind::kNan:
      value = std::numeric_limits<double>::quiet_NaN();
      break;
    case NumberLex::Kind::kDecimal:
    case NumberLex::Kind::kHex: {
      const bool hex = lex.kind == NumberLex::Kind::kHex;
      const std::size_t from = hex ? lex.body + 2 : lex.body;
      const std::string_view text = s.substr(from, lex.number_end - from);
      const auto result = std::from_chars(text.data(), text.data() + text.size(), value,
                                          hex ? std::chars_format::hex
                                              : std::chars_format::general);
      if (result.ec == std::errc::result_out_of_range) {
        value = IsOverflow(text, hex) ? std::numeric_limits<double>::infinity() : 0.0;
      } else if (result.ec != std::errc()) {
        value = 0.0;  // cannot happen: the lexer accepted exactly this text
      }
      break;
    }
  }
  return lex.negative ? -value : value;
}

}  // namespace

// --- UTF-8 / UTF-16 ---------------------------------------------------------------------------

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const Utf8Char d = DecodeUtf8(utf8, i);
    i += d.length;
    if (d.code_point >= 0x10000) {
      const char32_t v = d.code_point - 0x10000;
      out += static_cast<char16_t>(0xD800 + (v >> 10));
      out += static_cast<char16_t>(0xDC00 + (v & 0x3FF));
    } else {
      out += static_cast<char16_t>(d.code_point);
    }
  }
  return out;
}

std::string RepairUtf8(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const Utf8Char d = DecodeUtf8(utf8, i);
    if (d.valid)
      out.append(utf8.substr(i, d.length));
    else
      AppendUtf8(kReplacement, out);
    i += d.length;
  }
  return out;
}

bool IsValidUtf8(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size();) {
    const Utf8Char d = DecodeUtf8(utf8, i);
    if (!d.valid) return false;
    i += d.length;
  }
  return true;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    const char16_t u = utf16[i];
    char32_t cp = u;
    if (u >= 0xD800 && u <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
        utf16[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
      ++i;
    } else if (u >= 0xD800 && u <= 0xDFFF) {
      cp = kReplacement;
    }
    AppendUtf8(cp, out);
  }
  return out;
}

// --- Ordering and case ------------------------------------------------------------------------

int CompareOrdinalUtf16(std::string_view a, std::string_view b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    const Utf8Char da = DecodeUtf8(a, i);
    const Utf8Char db = DecodeUtf8(b, j);
    const uint32_t ka = Utf16OrderKey(da.code_point);
    const uint32_t kb = Utf16OrderKey(db.code_point);
    if (ka != kb) return ka < kb ? -1 : 1;
    i += da.length;
    j += db.length;
  }
  if (i < a.size()) return 1;
  if (j < b.size()) return -1;
  // Equal as UTF-16; only ill-formed input can still differ.
  const int bytes = a.compare(b);
  return bytes < 0 ? -1 : (bytes > 0 ? 1 : 0);
}

std::string ToLowerUnicode(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const Utf8Char d = DecodeUtf8(utf8, i);
    if (d.valid) {
      AppendUtf8(SimpleLowerCase(d.code_point), out);
    } else {
      out.append(utf8.substr(i, d.length));
    }
    i += d.length;
  }
  return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return ToLowerUnicode(a) == ToLowerUnicode(b);
}

// --- Leading numbers --------------------------------------------------------------------------

int32_t ParseLeadingInt(std::string_view text) {
  std::size_t i = SkipCSpace(text, 0);
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
    negative = text[i] == '-';
    ++i;
  }
  // Accumulate the magnitude, stopping growth once it is beyond any int32 value.
  constexpr int64_t kLimit = int64_t{std::numeric_limits<int32_t>::max()} + 1;
  int64_t magnitude = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i) {
    if (magnitude <= kLimit) magnitude = magnitude * 10 + (text[i] - '0');
  }
  if (negative) {
    return magnitude >= kLimit ? std::numeric_limits<int32_t>::min()
                               : static_cast<int32_t>(-magnitude);
  }
  return magnitude >= kLimit ? std::numeric_limits<int32_t>::max()
                             : static_cast<int32_t>(magnitude);
}

double ParseLeadingDouble(std::string_view text) {
  return ValueOf(text, LexNumber(text, SkipCSpace(text, 0)));
}

bool ScanDouble(std::string_view text, std::size_t* pos, double* out) {
  const NumberLex lex = LexNumber(text, SkipCSpace(text, *pos));
  if (lex.kind == NumberLex::Kind::kNone || lex.prefix_end != lex.number_end) return false;
  *out = ValueOf(text, lex);
  *pos = lex.number_end;
  return true;
}

std::string_view TrimBlanks(std::string_view text, std::string_view blanks) {
  size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) return {};
  size_t end = text.find_last_not_of(blanks);
  return text.substr(begin, end - begin + 1);
}

bool MatchesKeyword(std::string_view answer, std::string_view keyword) {
  if (answer.empty()) return false;
  std::string typed = ToLowerUnicode(answer);
  std::string word = ToLowerUnicode(keyword);
  return typed.size() <= word.size() && word.compare(0, typed.size(), typed) == 0;
}

}  // namespace veltor::od
