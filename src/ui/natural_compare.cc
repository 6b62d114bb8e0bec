#include "ui/natural_compare.h"

#include <cstdint>

#include "od/text.h"

namespace veltor::ui {
namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Reads the digit run starting at `i`, moves `i` past it and returns its value, saturated at
// INT32_MAX as the runtime's string-to-int conversion does.
int32_t ReadRun(std::u16string_view s, size_t& i) {
  int64_t number = 0;
  for (; i < s.size() && IsDigit(s[i]); ++i) {
    number = number * 10 + (s[i] - u'0');
    if (number > INT32_MAX) number = INT32_MAX;
  }
  return static_cast<int32_t>(number);
}

}  // namespace

int NaturalCompare(std::u16string_view a, std::u16string_view b) {
  if (a.empty()) return -1;
  if (b.empty()) return 1;
  size_t i = 0;
  size_t j = 0;
  for (;;) {
    if (j >= b.size()) return 0;
    if (!IsDigit(a[i])) {
      if (IsDigit(b[j])) return -1;
      if (a[i] != b[j]) return a[i] > b[j] ? 1 : -1;
      ++i;
      ++j;
    } else {
      if (!IsDigit(b[j])) return 1;
      int32_t x = ReadRun(a, i);
      int32_t y = ReadRun(b, j);
      if (x != y) return x > y ? 1 : -1;
    }
    if (i >= a.size()) return 0;
  }
}

int NaturalCompareUtf8(std::string_view a, std::string_view b) {
  return NaturalCompare(od::Utf8ToUtf16(a), od::Utf8ToUtf16(b));
}

}  // namespace veltor::ui
