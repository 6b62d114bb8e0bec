// Matching Object Data values against the patterns of the value query.
#pragma once

#include <string>

#include "od/value.h"

namespace veltor::commands {

// Plain test: `pattern` occurs in the value's text, both lower-cased.
bool ContainsIgnoreCase(const std::string& value_text, const std::string& pattern);

// The wildcard test of extended patterns. Lower-cased pieces between "*" must occur in order;
// a leading or trailing "*" stands for at least one character, a "*" between pieces for any
// number, none included: "*road*" matches "xroadx" and "roadroad" but not "road", "xroad" or
// "roadx"; "a*b" matches "ab" and "axb".
bool WildcardMatch(const std::string& value_text, const std::string& pattern);

// One value against a pattern. Plain: containment. Extended: "<>", ">" and "<" compare with
// the operand after them (numbers by their leading number, text: "<>" ignoring case, ">" and
// "<" by code unit), a pattern with "*" is a wildcard, any other pattern must equal the
// value. Point and unknown values never compare and never equal.
bool MatchValue(const od::Value& value, const std::string& pattern, bool extended);

}  // namespace veltor::commands
