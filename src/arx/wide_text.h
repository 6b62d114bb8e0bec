// UTF-8 <-> the host's wide text, at the adapter's edge only: inside the module text is UTF-8,
// the host SDK speaks wchar_t. On Windows wchar_t holds UTF-16 code units; where it is 32
// bits wide (the Linux build of the unit tests) it holds code points. Both directions repair
// ill-formed input (one U+FFFD per maximal ill-formed subpart, an unpaired surrogate becomes
// U+FFFD) and never fail.
#pragma once

#include <string>
#include <string_view>

namespace veltor::arx {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view wide);
// A null pointer reads as the empty text.
std::string Narrow(const wchar_t* wide);

// Copies `utf8` widened into `buffer` of `capacity` wide characters, always terminated;
// returns false (leaving the longest whole-character prefix) when it does not fit.
bool WidenInto(std::string_view utf8, wchar_t* buffer, size_t capacity);

}  // namespace veltor::arx
