#include "commands/exchange/attr_text_file.h"

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

// Splits at "\n" and cuts lines longer than kMaxLineUnits into pieces.
std::vector<std::string> Lines(const std::u16string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(u'\n', start);
    size_t stop = end == std::u16string::npos ? text.size() : end;
    if (stop - start > kMaxLineUnits) {
      lines.push_back(od::Utf16ToUtf8(text.substr(start, kMaxLineUnits)));
      start += kMaxLineUnits;
      continue;
    }
    lines.push_back(od::Utf16ToUtf8(text.substr(start, stop - start)));
    start = stop + 1;
  }
  return lines;
}

}  // namespace

std::vector<std::string> SplitTextFileLines(const od::Database& db, const std::string& bytes) {
  if (StartsWith(bytes, "\xEF\xBB\xBF", 3))
    return Lines(od::Utf8ToUtf16(od::RepairUtf8(bytes.substr(3))));
  if (StartsWith(bytes, "\xFF\xFE", 2)) return Lines(Utf16Units(bytes, 2, false));
  if (StartsWith(bytes, "\xFE\xFF", 2)) return Lines(Utf16Units(bytes, 2, true));
  // The code page is applied line by line so that a line break never joins a multi-byte
  // character.
  std::vector<std::string> lines;
  std::istringstream in(bytes);
  std::string raw;
  while (std::getline(in, raw)) {
    for (std::string& piece : Lines(od::Utf8ToUtf16(db.FromAnsiCodePage(raw))))
      lines.push_back(std::move(piece));
    if (raw.empty()) lines.emplace_back();
  }
  return lines;
}

Result<std::vector<std::string>> ReadTextFileLines(const od::Database& db,
                                                   const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return Status::Error(path + ": cannot be opened");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) return Status::Error(path + ": cannot be read");
  return SplitTextFileLines(db, bytes.str());
}

}  // namespace veltor::commands
