#include "drawing/dxf/reader.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "drawing/dxf/binary_values.h"
#include "drawing/dxf/record_builder.h"

namespace veltor::dxf {

namespace {

bool IsBlank(const char* p, const char* end) {
  for (; p < end; ++p)
    if (*p != ' ' && *p != '\t' && *p != '\r' && *p != '\n' && *p != '\0' && *p != '\x1a')
      return false;
  return true;
}

// Parses a group code line: optional blanks, optional '-', digits, optional blanks.
bool ParseCode(const char* p, const char* end, int& code) {
  while (p < end && (*p == ' ' || *p == '\t')) ++p;
  while (end > p && (end[-1] == ' ' || end[-1] == '\t')) --end;
  bool negative = false;
  if (p < end && *p == '-') {
    negative = true;
    ++p;
  }
  if (p == end || end - p > 5) return false;
  int value = 0;
  for (; p < end; ++p) {
    if (*p < '0' || *p > '9') return false;
    value = value * 10 + (*p - '0');
  }
  code = negative ? -value : value;
  return true;
}

std::string Printable(const char* p, const char* end) {
  std::string s;
  for (; p < end && s.size() < 40; ++p) s += (*p >= 32 && *p < 127) ? *p : '?';
  return s;
}

Status ScanAscii(RecordStore& store, std::vector<std::string>& warnings) {
  std::string_view src = store.source();
  const char* base = src.data();
  const char* end = base + src.size();
  const char* p = base;
  if (src.size() >= 3 && std::memcmp(base, "\xEF\xBB\xBF", 3) == 0) {
    store.prefix.assign(base, 3);
    p += 3;
  }
  RecordBuilder builder(store, "line");
  uint32_t line = 1;
  bool first = true;
  while (p < end) {
    const char* code_begin = p;
    const char* nl = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
    const char* code_end = nl ? nl : end;
    if (code_end > p && code_end[-1] == '\r') --code_end;
    if (first) {
      store.format().crlf = nl && nl > p && nl[-1] == '\r';
      store.format().right_aligned_codes = *p == ' ';
      first = false;
    }
    int code;
    if (!ParseCode(p, code_end, code)) {
      if (IsBlank(p, end)) {
        store.trailer.assign(p, static_cast<size_t>(end - p));
        break;
      }
      return Status::Error("line " + std::to_string(line) + ": group code expected, found '" +
                           Printable(p, code_end) + "'");
    }
    if (!nl || nl + 1 >= end)
      return Status::Error("line " + std::to_string(line) + ": the file ends after group code " +
                           std::to_string(code) + " without its value");
    p = nl + 1;
    const char* vnl = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
    const char* value_end = vnl ? vnl : end;
    if (value_end > p && value_end[-1] == '\r') --value_end;
    std::string_view value(p, static_cast<size_t>(value_end - p));
    if (!builder.OnTag(code, value, static_cast<uint64_t>(code_begin - base), line))
      return Status::Error(builder.error());
    p = vnl ? vnl + 1 : end;
    line += 2;
    if (builder.in_eof_record()) {
      store.trailer.assign(p, static_cast<size_t>(end - p));
      if (!IsBlank(p, end))
        builder.warnings().push_back("ignored " + std::to_string(end - p) +
                                     " bytes after the EOF marker (kept as they are on save)");
      end = p;
      break;
    }
  }
  if (!builder.Finish(static_cast<uint64_t>(p - base))) return Status::Error(builder.error());
  for (auto& w : builder.warnings()) warnings.push_back(std::move(w));
  return Status::Ok();
}

Status ScanBinary(RecordStore& store, std::vector<std::string>& warnings) {
  std::string_view src = store.source();
  store.format().binary = true;
  store.prefix.assign(src.data(), kBinarySentinelSize);
  // R12 binary files use one-byte group codes: the first tag is then 0x00 'S'(ECTION)
  // rather than 0x00 0x00.
  store.format().binary_one_byte_codes =
      src.size() > kBinarySentinelSize + 1 && src[kBinarySentinelSize + 1] != '\0';
  RecordBuilder builder(store, "byte");
  BinaryCursor cursor(src, kBinarySentinelSize, src.size(), store.format().binary_one_byte_codes);
  Tag tag;
  std::string error;
  uint64_t begin = cursor.position();
  while (cursor.Next(tag, error)) {
    if (tag.code < -9999 || tag.code > 9999)
      return Status::Error("byte " + std::to_string(begin) + ": invalid group code " +
                           std::to_string(tag.code));
    if (!builder.OnTag(tag.code, tag.value, begin, static_cast<uint32_t>(begin)))
      return Status::Error(builder.error());
    begin = cursor.position();
    if (builder.in_eof_record()) {
      store.trailer = std::string(src.substr(begin));
      if (!store.trailer.empty())
        builder.warnings().push_back("ignored " + std::to_string(store.trailer.size()) +
                                     " bytes after the EOF marker (kept as they are on save)");
      break;
    }
  }
  if (!error.empty()) return Status::Error(error);
  if (!builder.Finish(begin)) return Status::Error(builder.error());
  for (auto& w : builder.warnings()) warnings.push_back(std::move(w));
  return Status::Ok();
}

}  // namespace

namespace {

Result<ReadOutcome> Parse(SourceBuffer bytes, const std::string& name) {
  ReadOutcome outcome;
  outcome.store = std::make_unique<RecordStore>();
  bool binary = bytes.size() >= kBinarySentinelSize &&
                std::memcmp(bytes.data(), kBinarySentinel, kBinarySentinelSize) == 0;
  // Line numbers and offsets in messages are 32-bit.
  if (bytes.size() > 0xFFFFFFF0ull)
    return Status::Error(name + ": files over 4 GB are not supported");
  outcome.store->SetSource(std::move(bytes));
  Status status = binary ? ScanBinary(*outcome.store, outcome.warnings)
                         : ScanAscii(*outcome.store, outcome.warnings);
  if (!status.ok()) return status.Wrap(name);
  if (outcome.store->size() == 0) return Status::Error(name + ": not a DXF file (no tags)");
  return outcome;
}

}  // namespace

Result<ReadOutcome> ParseDxf(std::string bytes, const std::string& name) {
  return Parse(SourceBuffer(std::move(bytes)), name);
}

Result<ReadOutcome> ReadDxfFile(const std::string& path) {
  auto bytes = SourceBuffer::FromFile(path);
  if (!bytes.ok()) return bytes.status();
  return Parse(std::move(bytes.value()), path);
}

}  // namespace veltor::dxf
