#include "commands/edit/replace_pattern.h"

#include <optional>
#include <vector>

#include "od/lower_case_table.h"
#include "od/text.h"

namespace veltor::commands {

namespace {

// A text as lower-cased code points, with the byte offset in the original of each of them
// (and of the end, at index size()).
struct FoldedText {
  std::u32string chars;
  std::vector<size_t> offsets;
};

FoldedText Fold(const std::string& text) {
  FoldedText folded;
  for (size_t i = 0; i < text.size();) {
    od::Utf8Char c = od::DecodeUtf8(text, i);
    folded.chars.push_back(od::SimpleLowerCase(c.code_point));
    folded.offsets.push_back(i);
    i += c.length;
  }
  folded.offsets.push_back(text.size());
  return folded;
}

// A pattern cut at its "*": the lower-cased pieces between them and whether it begins or ends
// with one.
struct Pieces {
  std::vector<std::u32string> pieces;
  bool leading_star = false;
  bool trailing_star = false;
};

Pieces CutAtStars(const std::string& pattern) {
  Pieces cut;
  std::u32string piece;
  for (char32_t c : Fold(pattern).chars) {
    if (c != U'*') {
      piece += c;
      continue;
    }
    if (!piece.empty()) cut.pieces.push_back(std::move(piece));
    piece.clear();
  }
  if (!piece.empty()) cut.pieces.push_back(std::move(piece));
  cut.leading_star = !pattern.empty() && pattern.front() == '*';
  cut.trailing_star = !pattern.empty() && pattern.back() == '*';
  return cut;
}

struct Span {
  size_t begin;  // code points
  size_t end;
};

// The next occurrence at or after code point `from`.
std::optional<Span> FindOccurrence(const std::u32string& text, const Pieces& cut, size_t from) {
  // Every occurrence takes at least one character (the pattern is not empty).
  if (from >= text.size()) return std::nullopt;
  size_t search = cut.leading_star ? from + 1 : from;
  Span span{from, from};
  for (size_t i = 0; i < cut.pieces.size(); ++i) {
    size_t found = text.find(cut.pieces[i], search);
    if (found == std::u32string::npos) return std::nullopt;
    if (i == 0 && !cut.leading_star) span.begin = found;
    search = found + cut.pieces[i].size();
  }
  span.end = cut.trailing_star ? text.size() : search;
  if (span.end <= span.begin) return std::nullopt;
  return span;
}

std::string Operand(const std::string& pattern, size_t skip) {
  if (skip >= pattern.size()) return "";
  return std::string(od::TrimBlanks(std::string_view(pattern).substr(skip), " \t\n"));
}

enum class Test { kDiffers, kOperandGreater };

bool Matches(const od::Value& value, Test test, const std::string& operand) {
  switch (value.type()) {
    case od::ValueType::kInteger: {
      int32_t number = od::ParseLeadingInt(operand);
      return test == Test::kDiffers ? number != value.integer() : number > value.integer();
    }
    case od::ValueType::kReal: {
      double number = od::ParseLeadingDouble(operand);
      return test == Test::kDiffers ? number != value.real() : number > value.real();
    }
    case od::ValueType::kCharacter:
      if (test == Test::kDiffers) return od::ToLowerUnicode(operand) != od::ToLowerUnicode(value.text());
      return od::CompareOrdinalUtf16(operand, value.text()) > 0;
    default:
      return false;
  }
}

int SetOnMatch(od::Value& value, Test test, const std::string& operand, const std::string& new_text) {
  if (!Matches(value, test, operand)) return 0;
  (void)od::SetValueFromText(value, new_text);  // a Point that does not scan stays; still counted
  return 1;
}

}  // namespace

std::string ReplaceOccurrences(const std::string& text, const std::string& pattern,
                               const std::string& new_text, int* count) {
  if (pattern.empty()) return text;
  const FoldedText folded = Fold(text);
  const Pieces cut = CutAtStars(pattern);
  std::string result;
  size_t at = 0;  // code points of `text` consumed
  while (std::optional<Span> span = FindOccurrence(folded.chars, cut, at)) {
    result.append(text, folded.offsets[at], folded.offsets[span->begin] - folded.offsets[at]);
    result += new_text;
    at = span->end;
    ++*count;
  }
  result.append(text, folded.offsets[at], std::string::npos);
  return result;
}

int ReplaceByPattern(od::Value& value, const std::string& pattern, const std::string& new_text) {
  if (pattern == "*") {
    (void)od::SetValueFromText(value, new_text);
    return 1;
  }
  if (pattern.size() >= 2 && pattern.compare(0, 2, "<>") == 0)
    return SetOnMatch(value, Test::kDiffers, Operand(pattern, 2), new_text);
  if (!pattern.empty() && pattern[0] == '>')
    return SetOnMatch(value, Test::kOperandGreater, Operand(pattern, 1), new_text);
  // "<" passes over the character after it and tests as ">" does.
  if (!pattern.empty() && pattern[0] == '<')
    return SetOnMatch(value, Test::kOperandGreater, Operand(pattern, 2), new_text);
  if (pattern.empty()) return 0;
  int count = 0;
  std::string replaced = ReplaceOccurrences(od::ValueToText(value), pattern, new_text, &count);
  (void)od::SetValueFromText(value, replaced);
  return count;
}

}  // namespace veltor::commands
