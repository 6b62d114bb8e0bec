#include "drawing/objectdata/od_format.h"

#include <charconv>
#include <climits>

#include "drawing/dxf/binary_values.h"
#include "drawing/dxf/encoding.h"
#include "od/text.h"
#include "od/value.h"

namespace veltor::objectdata {

namespace {

using dxf::Tag;
using dxf::Tags;

bool IsDoubleByteCharset(const std::string& charset) {
  return charset == "CP932" || charset == "CP936" || charset == "CP949" || charset == "CP950" ||
         charset == "BIG5" || charset == "GB2312" || charset == "JOHAB";
}

// Length in bytes of the character of file text starting at s[i], so chunks never split
// a multi-byte character or a "\U+XXXX" escape.
size_t CharLength(std::string_view s, size_t i, bool utf8, bool double_byte) {
  unsigned char c = static_cast<unsigned char>(s[i]);
  size_t n = 1;
  if (c == '\\' && i + 6 < s.size() && (s[i + 1] == 'U' || s[i + 1] == 'u') && s[i + 2] == '+')
    n = 7;
  else if (utf8 && c >= 0xC0)
    n = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
  else if (double_byte && c >= 0x81 && c != 0xFF)
    n = 2;
  return std::min(n, s.size() - i);
}

// Appends `raw` file text as pieces of at most kTextChunk bytes: the first in group `code`,
// the rest in group kTextMore.
void AppendChunks(const model::Document& doc, int code, std::string_view raw, Tags& out) {
  bool utf8 = doc.codec().utf8();
  bool double_byte = !utf8 && IsDoubleByteCharset(doc.codec().charset());
  size_t start = 0;
  do {
    size_t end = start;
    while (end < raw.size()) {
      size_t n = CharLength(raw, end, utf8, double_byte);
      if (end + n - start > kTextChunk) break;
      end += n;
    }
    out.push_back({code, std::string(raw.substr(start, end - start))});
    code = kTextMore;
    start = end;
  } while (start < raw.size());
}

bool IsTextContinuation(int code) {
  return code == kTextMore || code == kTextAfterLf || code == kTextAfterCrLf || code == kTextAfterCr;
}

}  // namespace

std::string EncodeName(const model::Document& doc, const std::string& name) {
  return doc.codec().utf8() ? name : doc.Encode(name);
}

std::string DecodeName(const model::Document& doc, std::string_view raw) {
  return doc.codec().utf8() ? od::RepairUtf8(raw) : doc.Decode(raw);
}

void AppendTextTags(const model::Document& doc, int first_code, const std::string& text, Tags& out) {
  if (!doc.codec().utf8()) return AppendChunks(doc, first_code, doc.Encode(text), out);
  // UTF-8 is written as it stands, so other readers get the text as typed; only a line
  // break cannot be on a DXF line, so each line after one starts a group naming the break.
  int code = first_code;
  size_t start = 0;
  for (;;) {
    size_t end = text.find_first_of("\r\n", start);
    AppendChunks(doc, code, std::string_view(text).substr(start, end == std::string::npos
                                                                     ? std::string::npos
                                                                     : end - start),
                 out);
    if (end == std::string::npos) return;
    if (text[end] == '\n') {
      code = kTextAfterLf;
      start = end + 1;
    } else if (end + 1 < text.size() && text[end + 1] == '\n') {
      code = kTextAfterCrLf;
      start = end + 2;
    } else {
      code = kTextAfterCr;
      start = end + 1;
    }
  }
}

std::string ReadTextTags(const model::Document& doc, const Tags& tags, size_t& i) {
  std::string raw = tags[i++].value;
  while (i < tags.size() && IsTextContinuation(tags[i].code)) {
    switch (tags[i].code) {
      case kTextAfterLf: raw += '\n'; break;
      case kTextAfterCrLf: raw += "\r\n"; break;
      case kTextAfterCr: raw += '\r'; break;
      default: break;
    }
    raw += tags[i++].value;
  }
  // Before R2007 escapes stand for characters; from R2007 the text is what was typed.
  return doc.codec().utf8() ? od::RepairUtf8(raw) : doc.Decode(raw);
}

void AppendValueTags(const model::Document& doc, const od::Value& value, Tags& out) {
  switch (value.type()) {
    case od::ValueType::kInteger:
      out.push_back({90, std::to_string(value.integer())});
      return;
    case od::ValueType::kReal:
      out.push_back({40, dxf::FormatDouble(value.real())});
      return;
    case od::ValueType::kPoint: {
      od::Point3 p = value.point();
      out.push_back({10, dxf::FormatDouble(p.x)});
      out.push_back({20, dxf::FormatDouble(p.y)});
      out.push_back({30, dxf::FormatDouble(p.z)});
      return;
    }
    case od::ValueType::kCharacter:
    case od::ValueType::kUnknown:  // the store never keeps one; written as empty text
      AppendTextTags(doc, 1, value.text(), out);
      return;
  }
}

namespace {

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+') text.remove_prefix(1);
  return text;
}

}  // namespace

bool ParseWholeInt32(std::string_view text, int32_t& out) {
  text = Trimmed(text);
  long long value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return false;
  if (value < INT32_MIN || value > INT32_MAX) return false;
  out = static_cast<int32_t>(value);
  return true;
}

bool ParseWholeDouble(std::string_view text, double& out) {
  text = Trimmed(text);
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
  return error == std::errc() && end == text.data() + text.size() && !text.empty();
}

ValueRead ReadValueTags(const model::Document& doc, const Tags& tags, size_t& i, od::Value& out,
                        std::string& why) {
  if (i >= tags.size()) return ValueRead::kNoValue;
  const Tag& t = tags[i];
  auto not_a_number = [&](const Tag& bad, const char* kind) {
    why = "group " + std::to_string(bad.code) + " holds '" + bad.value + "', which is not " + kind;
    return ValueRead::kDamaged;
  };
  switch (t.code) {
    case 90: {
      int32_t v = 0;
      if (!ParseWholeInt32(t.value, v)) return not_a_number(t, "a 32-bit whole number");
      out = od::Value::Integer(v);
      ++i;
      return ValueRead::kValue;
    }
    case 40: {
      double v = 0;
      if (!ParseWholeDouble(t.value, v)) return not_a_number(t, "a number");
      out = od::Value::Real(v);
      ++i;
      return ValueRead::kValue;
    }
    case 10: {
      double xyz[3] = {0, 0, 0};
      for (int axis = 0; axis < 3 && i < tags.size() && tags[i].code == 10 + 10 * axis; ++axis)
        if (!ParseWholeDouble(tags[i++].value, xyz[axis])) return not_a_number(tags[i - 1], "a number");
      out = od::Value::Point({xyz[0], xyz[1], xyz[2]});
      return ValueRead::kValue;
    }
    case 1:
      out = od::Value::Character(ReadTextTags(doc, tags, i));
      return ValueRead::kValue;
    default:
      return ValueRead::kNoValue;
  }
}

Tags TableDefTags(const model::Document& doc, const od::TableDefinition& def) {
  Tags tags{{1, kTableMarker}, {70, std::to_string(kFormatVersion)}, {2, EncodeName(doc, def.name)}};
  AppendTextTags(doc, 4, def.description, tags);
  for (const od::ColumnDefinition& c : def.columns) {
    tags.push_back({2, EncodeName(doc, c.name)});
    AppendTextTags(doc, 4, c.description, tags);
    tags.push_back({70, std::to_string(static_cast<int>(c.type))});
    AppendValueTags(doc, ConvertValue(c.default_value, c.type), tags);
  }
  return tags;
}

Status ParseTableDef(const model::Document& doc, const Tags& data, od::TableDefinition& out) {
  out = od::TableDefinition();
  // The name is read first, so that a definition damaged elsewhere still says whose it is.
  size_t i = 0;
  if (i < data.size() && data[i].code == 1) ++i;
  size_t version_at = i < data.size() && data[i].code == 70 ? i++ : data.size();
  if (i < data.size() && data[i].code == 2) out.name = DecodeName(doc, data[i].value);
  if (data.empty() || data[0].code != 1 || data[0].value != kTableMarker)
    return Status::Error("it does not start with the marker " + std::string(kTableMarker));
  if (version_at < data.size()) {
    int32_t version = 0;
    if (!ParseWholeInt32(data[version_at].value, version) || version != kFormatVersion)
      return Status::Error("format version '" + data[version_at].value +
                           "' is not known (this program reads " + std::to_string(kFormatVersion) + ")");
  }
  if (i >= data.size() || data[i].code != 2) return Status::Error("it holds no table name");
  ++i;
  if (i < data.size() && data[i].code == 4) out.description = ReadTextTags(doc, data, i);
  while (i < data.size()) {
    std::string where = "column " + std::to_string(out.columns.size() + 1);
    if (data[i].code != 2)
      return Status::Error(where + ": group " + std::to_string(data[i].code) +
                           " where the column name (group 2) belongs");
    od::ColumnDefinition column;
    column.name = DecodeName(doc, data[i++].value);
    where = "column '" + column.name + "'";
    if (i < data.size() && data[i].code == 4) column.description = ReadTextTags(doc, data, i);
    if (i >= data.size() || data[i].code != 70) return Status::Error(where + ": it has no type");
    int32_t type = 0;
    if (!ParseWholeInt32(data[i].value, type) || type < 1 || type > 4)
      return Status::Error(where + ": type '" + data[i].value + "' is not known");
    ++i;
    column.type = static_cast<od::ValueType>(type);
    od::Value def;
    std::string why;
    switch (ReadValueTags(doc, data, i, def, why)) {
      case ValueRead::kValue: column.default_value = ConvertValue(def, column.type); break;
      case ValueRead::kNoValue: column.default_value = od::Value(column.type); break;
      case ValueRead::kDamaged: return Status::Error(where + ": default value: " + why);
    }
    out.columns.push_back(std::move(column));
  }
  return Status::Ok();
}

}  // namespace veltor::objectdata
