// Checks of answers typed at the host's own Object Data prompts: a value must be of its
// column's type, a name must be usable.
#pragma once

#include <string>

#include "od/value.h"

namespace veltor::session {

// Reads `text` as a value of `value`'s type, after replacing every "*" in it by the current
// value's text form:
//   Integer   a whole number from -2147483648 to 2147483647
//   Real      a finite number
//   Character any text
//   Point     three finite numbers "x,y,z"
// Blanks around a number are allowed. Returns why the text is refused ("" when accepted, and
// `value` then holds it; otherwise `value` is unchanged).
std::string ReadTypedValue(const std::string& text, od::Value& value);

// Why `name` cannot name a table or a column ("" when it can): it holds a control character.
std::string NameProblem(const std::string& name);

// "Warning: N damaged records skipped (...)." with a line break; "" for none.
std::string SkippedRecordsWarning(size_t skipped);

// "1 column", "2 columns": `count` and the noun, plural unless the count is 1.
std::string CountOf(long count, const std::string& singular, const std::string& plural);

}  // namespace veltor::session
