// Simple (one code point to one code point) Unicode lower-case mapping.
#pragma once

namespace veltor::od {

// Returns the simple lower-case mapping of `cp` (Unicode 14.0 UnicodeData.txt, field 13), or
// `cp` itself when it has none. Independent of any locale: U+0130 maps to 'i' and U+0049 to
// 'i' everywhere. Code points outside the Unicode range are returned unchanged.
char32_t SimpleLowerCase(char32_t cp);

}  // namespace veltor::od
