#include "commands/select/value_matcher.h"

#include <vector>

#include "od/text.h"

namespace veltor::commands {

namespace {

// The operand after an operator, without surrounding blanks.
std::string Operand(const std::string& pattern, size_t skip) {
  return std::string(od::TrimBlanks(std::string_view(pattern).substr(skip), " \t\n"));
}

enum class Compare { kNotEqual, kGreater, kLess };

bool CompareValue(const od::Value& value, Compare op, const std::string& operand) {
  switch (value.type()) {
    case od::ValueType::kInteger: {
      int32_t a = value.integer(), b = od::ParseLeadingInt(operand);
      return op == Compare::kNotEqual ? a != b : op == Compare::kGreater ? a > b : a < b;
    }
    case od::ValueType::kReal: {
      double a = value.real(), b = od::ParseLeadingDouble(operand);
      return op == Compare::kNotEqual ? a != b : op == Compare::kGreater ? a > b : a < b;
    }
    case od::ValueType::kCharacter:
      if (op == Compare::kNotEqual) return od::ToLowerUnicode(value.text()) != od::ToLowerUnicode(operand);
      return op == Compare::kGreater ? od::CompareOrdinalUtf16(value.text(), operand) > 0
                                     : od::CompareOrdinalUtf16(value.text(), operand) < 0;
    default:
      return false;
  }
}

}  // namespace

bool ContainsIgnoreCase(const std::string& value_text, const std::string& pattern) {
  return od::ToLowerUnicode(value_text).find(od::ToLowerUnicode(pattern)) != std::string::npos;
}

bool WildcardMatch(const std::string& value_text, const std::string& pattern) {
  std::string value = od::ToLowerUnicode(value_text);
  std::string lowered = od::ToLowerUnicode(pattern);
  std::vector<std::string> pieces;
  for (size_t start = 0; start <= lowered.size();) {
    size_t star = lowered.find('*', start);
    if (star == std::string::npos) star = lowered.size();
    if (star > start) pieces.push_back(lowered.substr(start, star - start));
    start = star + 1;
  }
  bool leading_star = !lowered.empty() && lowered.front() == '*';
  bool trailing_star = !lowered.empty() && lowered.back() == '*';
  if (pieces.empty()) return true;
  if (!leading_star && value.compare(0, pieces.front().size(), pieces.front()) != 0) return false;
  if (!trailing_star && (value.size() < pieces.back().size() ||
                         value.compare(value.size() - pieces.back().size(), std::string::npos,
                                       pieces.back()) != 0))
    return false;
  size_t from = 0;
  for (size_t i = 0; i < pieces.size(); ++i) {
    const std::string& piece = pieces[i];
    size_t found = value.find(piece, from);
    if (found == std::string::npos) return false;
    bool searched_again = false;
    if (found == 0 && leading_star) {
      // A leading "*" needs at least one character before the piece.
      found = value.find(piece, piece.size());
      if (found == std::string::npos) return false;
      searched_again = true;
    }
    bool last = i + 1 == pieces.size();
    // A trailing "*" needs at least one character after the last piece.
    if (last && trailing_star && !searched_again && found + piece.size() >= value.size()) return false;
    from = found + piece.size();
  }
  return true;
}

bool MatchValue(const od::Value& value, const std::string& pattern, bool extended) {
  if (!extended) return ContainsIgnoreCase(od::ValueToText(value), pattern);
  if (pattern.size() >= 2 && pattern.compare(0, 2, "<>") == 0)
    return CompareValue(value, Compare::kNotEqual, Operand(pattern, 2));
  if (!pattern.empty() && pattern[0] == '>') return CompareValue(value, Compare::kGreater, Operand(pattern, 1));
  if (!pattern.empty() && pattern[0] == '<') return CompareValue(value, Compare::kLess, Operand(pattern, 1));
  if (pattern.find('*') == std::string::npos) {
    switch (value.type()) {
      case od::ValueType::kInteger: return value.integer() == od::ParseLeadingInt(pattern);
      case od::ValueType::kReal: return value.real() == od::ParseLeadingDouble(pattern);
      case od::ValueType::kCharacter: return value.text() == pattern;
      default: return false;
    }
  }
  return WildcardMatch(od::ValueToText(value), pattern);
}

}  // namespace veltor::commands
