// The replacement rules of VELTOR_REPLACE: an old-value pattern, tested on one value, and the
// new text the value is set from.
#pragma once

#include <string>

#include "od/value.h"

namespace veltor::commands {

// Applies the first rule that fits `pattern`, exactly as typed, to `value` and returns the
// number of replacements it counts. Setting a value always goes through SetValueFromText, so
// a "*" in the text stands for the old value and the text is converted to the value's type.
//   "*"          every value; counts 1
//   "<>OPERAND"  values that differ from the operand (text: ignoring case); counts 1
//   ">OPERAND"   values the operand is greater than (text: by UTF-16 code unit); counts 1
//   "<XOPERAND"  the character after "<" is passed over and the test is the one of ">":
//                values the operand is greater than; counts 1
//   other text   each occurrence of the pattern in the value's text (see ReplaceOccurrences)
//                is replaced and counted; the value is then set from the resulting text,
//                also when nothing was replaced
//   ""           nothing
// Operands are trimmed of spaces, tabs and line feeds and read as the value's type (integers
// as atoi, reals as atof). Point and unknown values never match "<>", ">" or "<".
int ReplaceByPattern(od::Value& value, const std::string& pattern, const std::string& new_text);

// Replaces each occurrence of `pattern` in `text` by `new_text`, searching on right after the
// inserted text, and adds the number replaced to *count. Letters match without regard to
// case. A "*" stands for a run of characters: the pieces between "*" (a run of "*" counts as
// one) are found in order, each as early as it can be; a leading "*" takes the characters
// from where the search stands up to the first piece and needs at least one of them; a
// trailing "*" takes the rest of the text.
std::string ReplaceOccurrences(const std::string& text, const std::string& pattern,
                               const std::string& new_text, int* count);

}  // namespace veltor::commands
