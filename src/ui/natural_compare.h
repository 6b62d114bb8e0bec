// The grid's "natural" order of cell texts: digit runs compare by value, everything else by
// UTF-16 code unit. Deliberately simple: a text that is a prefix of the other compares equal
// to it ("ab" equals "abc"), and a sign or a decimal point is an ordinary character, so "1.5"
// sorts before "1.25".
#pragma once

#include <string>
#include <string_view>

namespace veltor::ui {

// -1, 0 or 1. An empty `a` is -1 (also against an empty `b`); an empty `b` is 1. Digits are
// "0".."9" only; a digit sorts after any other character. A digit run is read as a signed
// 32-bit number, saturating at its maximum.
int NaturalCompare(std::u16string_view a, std::u16string_view b);

// The same for UTF-8 texts (converted first; sorting many texts converts each once instead).
int NaturalCompareUtf8(std::string_view a, std::string_view b);

}  // namespace veltor::ui
