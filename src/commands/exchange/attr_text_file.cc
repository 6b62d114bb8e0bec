#include "commands/exchange/attr_text_file.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "od/text.h"

namespace veltor::commands {

namespace {

bool StartsWith(const std::string& bytes, const char* prefix, size_t n) {
  return bytes.size() >= n && bytes.compare(0, n, prefix, n) == 0;
}

std::u16string Utf16Units(const std::string& bytes, size_t from, bool big_endian) {
  std::u16string units;
  for (size_t i = from; i + 1 < bytes.size(); i += 2) {
    auto hi = static_cast<unsigned char>(bytes[big_endian ? i : i + 1]);
    auto lo = static_cast<unsigned char>(bytes[big_endian ? i + 1 : i]);
    units.push_back(static_cast<char16_t>(hi << 8 | lo));
  }
  return units;
}

// The text mode's one translation on reading: "\r\n" becomes "\n".
template <typename String>
String WithoutCarriageReturns(const String& text) {
  String out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i)
    if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')) out.push_back(text[i]);
  return out;
}

// Appends the reads of `text`: lines up to and including each "\n", cut into pieces of at
// most kMaxLineUnits units.
void AppendReads(const std::u16string& text, std::vector<std::string>& lines) {
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(u'\n', start);
    size_t stop = end == std::u16string::npos ? text.size() : end + 1;
    size_t length = std::min(stop - start, kMaxLineUnits);
    lines.push_back(od::Utf16ToUtf8(text.substr(start, length)));
    start += length;
  }
}

std::vector<std::string> WithoutLineBreaks(std::vector<std::string> lines) {
  for (std::string& line : lines)
    if (!line.empty() && line.back() == '\n') line.pop_back();
  return lines;
}

}  // namespace

std::vector<std::string> SplitTextFileLinesAsRead(const od::Database& db, const std::string& bytes) {
  std::vector<std::string> lines;
  if (StartsWith(bytes, "\xEF\xBB\xBF", 3)) {
    AppendReads(WithoutCarriageReturns(od::Utf8ToUtf16(od::RepairUtf8(bytes.substr(3)))), lines);
  } else if (StartsWith(bytes, "\xFF\xFE", 2)) {
    AppendReads(WithoutCarriageReturns(Utf16Units(bytes, 2, false)), lines);
  } else if (StartsWith(bytes, "\xFE\xFF", 2)) {
    AppendReads(WithoutCarriageReturns(Utf16Units(bytes, 2, true)), lines);
  } else {
    // The code page is applied line by line so that a line break never joins a multi-byte
    // character.
    const std::string text = WithoutCarriageReturns(bytes);
    size_t start = 0;
    while (start < text.size()) {
      size_t end = text.find('\n', start);
      size_t stop = end == std::string::npos ? text.size() : end;
      std::u16string line = od::Utf8ToUtf16(db.FromAnsiCodePage(text.substr(start, stop - start)));
      if (end != std::string::npos) line.push_back(u'\n');
      AppendReads(line, lines);
      start = stop + 1;
    }
  }
  return lines;
}

std::vector<std::string> SplitTextFileLines(const od::Database& db, const std::string& bytes) {
  return WithoutLineBreaks(SplitTextFileLinesAsRead(db, bytes));
}

Result<std::vector<std::string>> ReadTextFileLinesAsRead(const od::Database& db,
                                                         const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Status::Error(path + ": cannot be opened");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) return Status::Error(path + ": cannot be read");
  return SplitTextFileLinesAsRead(db, bytes.str());
}

Result<std::vector<std::string>> ReadTextFileLines(const od::Database& db,
                                                   const std::string& path) {
  Result<std::vector<std::string>> lines = ReadTextFileLinesAsRead(db, path);
  if (!lines.ok()) return lines;
  return WithoutLineBreaks(std::move(*lines));
}

}  // namespace veltor::commands
