// Text helpers shared by every command: UTF-8/UTF-16 conversion, ordinal ordering by UTF-16
// code unit, locale-free Unicode lower-casing, and the C runtime's leading-number readers.
//
// Text is UTF-8 inside the module; the host speaks UTF-16. Orderings and case-insensitive
// matches that users can see must follow the host's wide-character rules, so they go through
// these functions and never through byte comparisons or std::tolower.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltor::od {

// --- UTF-8 / UTF-16 ---------------------------------------------------------------------------

// Converts UTF-8 to UTF-16. Every ill-formed sequence (stray continuation bytes, overlong
// forms, encoded surrogates, code points above U+10FFFF, truncated sequences) becomes one
// U+FFFD per maximal ill-formed subpart, as the Unicode standard recommends.
std::u16string Utf8ToUtf16(std::string_view utf8);

// One step of UTF-8 decoding at byte `i` (< s.size()). `valid` is false for an ill-formed
// sequence (stray or missing continuation bytes, overlong forms, surrogates, code points above
// U+10FFFF); `code_point` is then U+FFFD and `length` the maximal subpart, at least one byte.
struct Utf8Char {
  char32_t code_point;
  std::size_t length;
  bool valid;
};
Utf8Char DecodeUtf8(std::string_view s, std::size_t i);
// Appends the UTF-8 form of a code point (not a surrogate, at most U+10FFFF).
void AppendUtf8(char32_t code_point, std::string& out);
// `utf8` with every ill-formed sequence replaced by one U+FFFD per maximal subpart.
std::string RepairUtf8(std::string_view utf8);

// True when `utf8` is well-formed UTF-8 (no stray, overlong, surrogate or truncated sequence).
bool IsValidUtf8(std::string_view utf8);

// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);

// --- Ordering and case ------------------------------------------------------------------------

// Orders two UTF-8 strings as their UTF-16 forms compare code unit by code unit (the host's
// ordinal order). This differs from byte order: a supplementary-plane character (a surrogate
// pair, 0xD800..0xDFFF) sorts before U+E000..U+FFFF. Ill-formed bytes compare as U+FFFD; two
// strings that compare equal that way are then ordered by their bytes, so the result is 0 only
// for identical strings. Returns a negative number, 0 or a positive number.
int CompareOrdinalUtf16(std::string_view a, std::string_view b);

// Strict weak ordering by CompareOrdinalUtf16, usable as a transparent map/set comparator.
struct LessOrdinalUtf16 {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const {
    return CompareOrdinalUtf16(a, b) < 0;
  }
};

// Lower-cases every code point by its simple (1:1) Unicode mapping; no locale is consulted.
// Code points without a mapping, and ill-formed bytes, are copied unchanged.
std::string ToLowerUnicode(std::string_view utf8);

// True when both strings are equal after ToLowerUnicode.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// --- Trimming --------------------------------------------------------------------------------

// The blanks answers and labels are trimmed of: space, tab, carriage return, line feed.
inline constexpr char kBlanks[] = " \t\r\n";

// `text` without any of the characters of `blanks` at either end; a view into `text`.
std::string_view TrimBlanks(std::string_view text, std::string_view blanks = kBlanks);

// --- Keywords -----------------------------------------------------------------------------------

// True when `answer` selects `keyword`: the answer is not empty and, lower-cased, equals the
// beginning of the lower-cased keyword ("y" and "YES" both select "Yes"). Callers substitute
// their default for an empty answer first.
bool MatchesKeyword(std::string_view answer, std::string_view keyword);

// --- Leading numbers, as the C runtime reads them ------------------------------------------------
// White space means the C locale's: space, \t, \n, \v, \f, \r. The decimal separator is always
// "."; nothing here depends on the process locale.

// atoi: skips white space, reads an optional sign and the decimal digits up to the first other
// character. No digits gives 0. Out of range saturates to INT32_MAX / INT32_MIN, as the
// Windows runtime's atoi/_wtoi do (where long is 32 bits), rather than wrapping.
int32_t ParseLeadingInt(std::string_view text);

// atof/strtod: skips white space and reads the longest leading floating-point number: optional
// sign, then decimal digits with an optional "." and exponent, or a "0x" hexadecimal number
// with an optional "p" exponent, or "inf"/"infinity"/"nan"/"nan(chars)" in any case. No number
// gives 0.0. Overflow gives +-HUGE_VAL (infinity), underflow gives a (signed) zero or the
// correctly rounded subnormal.
double ParseLeadingDouble(std::string_view text);

// Reads one number as scanf's "%lf" does, starting at *pos: skips white space, then takes the
// longest text that could still begin a number and succeeds only when all of it is a number
// (so "1e," and "-x" fail where ParseLeadingDouble would read 1 and 0). On success stores the
// number in *out, moves *pos past it and returns true; otherwise changes neither.
bool ScanDouble(std::string_view text, std::size_t* pos, double* out);

}  // namespace veltor::od
