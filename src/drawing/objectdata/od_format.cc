#include "drawing/objectdata/od_format.h"

#include "drawing/dxf/binary_values.h"
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

}  // namespace

void AppendValueTags(const model::Document& doc, const FieldValue& value, Tags& out) {
  switch (value.type) {
    case ColumnType::kInteger:
      out.push_back({90, std::to_string(value.integer)});
      return;
    case ColumnType::kReal:
      out.push_back({40, dxf::FormatDouble(value.real)});
      return;
    case ColumnType::kPoint:
      out.push_back({10, dxf::FormatDouble(value.x)});
      out.push_back({20, dxf::FormatDouble(value.y)});
      out.push_back({30, dxf::FormatDouble(value.z)});
      return;
    case ColumnType::kCharacter: {
      std::string raw = doc.Encode(value.text);
      bool utf8 = doc.codec().utf8();
      bool double_byte = !utf8 && IsDoubleByteCharset(doc.codec().charset());
      size_t start = 0;
      int code = 1;
      do {
        size_t end = start;
        while (end < raw.size()) {
          size_t n = CharLength(raw, end, utf8, double_byte);
          if (end + n - start > kTextChunk) break;
          end += n;
        }
        out.push_back({code, raw.substr(start, end - start)});
        code = 3;
        start = end;
      } while (start < raw.size());
      return;
    }
  }
}

bool ReadValueTags(const model::Document& doc, const Tags& tags, size_t& i, FieldValue& out) {
  if (i >= tags.size()) return false;
  const Tag& t = tags[i];
  switch (t.code) {
    case 90:
      out = FieldValue::Integer(static_cast<int32_t>(model::ParseInt(t.value)));
      ++i;
      return true;
    case 40:
      out = FieldValue::Real(model::ParseDouble(t.value));
      ++i;
      return true;
    case 10: {
      double x = model::ParseDouble(t.value), y = 0, z = 0;
      ++i;
      if (i < tags.size() && tags[i].code == 20) y = model::ParseDouble(tags[i++].value);
      if (i < tags.size() && tags[i].code == 30) z = model::ParseDouble(tags[i++].value);
      out = FieldValue::Point(x, y, z);
      return true;
    }
    case 1: {
      std::string raw = t.value;
      ++i;
      while (i < tags.size() && tags[i].code == 3) raw += tags[i++].value;
      out = FieldValue::Text(doc.Decode(raw));
      return true;
    }
    default:
      return false;
  }
}

Tags TableDefTags(const model::Document& doc, const TableDef& def) {
  Tags tags{{1, kTableMarker},
            {70, std::to_string(kFormatVersion)},
            {2, doc.Encode(def.name)},
            {4, doc.Encode(def.description)}};
  for (const ColumnDef& c : def.columns) {
    tags.push_back({2, doc.Encode(c.name)});
    tags.push_back({4, doc.Encode(c.description)});
    tags.push_back({70, std::to_string(static_cast<int>(c.type))});
    AppendValueTags(doc, ConvertValue(c.default_value, c.type), tags);
  }
  return tags;
}

bool ParseTableDef(const model::Document& doc, const Tags& data, TableDef& out) {
  if (data.size() < 4 || data[0].code != 1 || data[0].value != kTableMarker) return false;
  size_t i = 1;
  if (data[i].code == 70) ++i;
  if (i >= data.size() || data[i].code != 2) return false;
  out = TableDef();
  out.name = doc.Decode(data[i++].value);
  if (i < data.size() && data[i].code == 4) out.description = doc.Decode(data[i++].value);
  while (i < data.size()) {
    if (data[i].code != 2) return false;
    ColumnDef column;
    column.name = doc.Decode(data[i++].value);
    if (i < data.size() && data[i].code == 4) column.description = doc.Decode(data[i++].value);
    if (i >= data.size() || data[i].code != 70) return false;
    long long type = model::ParseInt(data[i++].value);
    if (type < 1 || type > 4) return false;
    column.type = static_cast<ColumnType>(type);
    FieldValue def;
    if (ReadValueTags(doc, data, i, def))
      column.default_value = ConvertValue(def, column.type);
    else
      column.default_value = FieldValue::Zero(column.type);
    out.columns.push_back(std::move(column));
  }
  return true;
}

FieldValue ConvertValue(const FieldValue& value, ColumnType to) {
  if (value.type == to) return value;
  if (value.type == ColumnType::kInteger && to == ColumnType::kReal)
    return FieldValue::Real(value.integer);
  if (value.type == ColumnType::kReal && to == ColumnType::kInteger) {
    double r = value.real;
    if (!(r > -2147483649.0 && r < 2147483648.0)) return FieldValue::Zero(to);
    return FieldValue::Integer(static_cast<int32_t>(r));
  }
  // Everything else goes through the text forms users see.
  od::Value source;
  switch (value.type) {
    case ColumnType::kInteger: source = od::Value::Integer(value.integer); break;
    case ColumnType::kReal: source = od::Value::Real(value.real); break;
    case ColumnType::kCharacter: source = od::Value::Character(value.text); break;
    case ColumnType::kPoint: source = od::Value::Point({value.x, value.y, value.z}); break;
  }
  std::string text = od::ValueToText(source);
  switch (to) {
    case ColumnType::kInteger: return FieldValue::Integer(od::ParseLeadingInt(text));
    case ColumnType::kReal: return FieldValue::Real(od::ParseLeadingDouble(text));
    case ColumnType::kCharacter: return FieldValue::Text(text);
    case ColumnType::kPoint: {
      // A "*" would stand for the old value in user input; here it is just a character.
      od::Value point(od::ValueType::kPoint);
      if (text.find('*') != std::string::npos || !od::SetValueFromText(point, text)) break;
      od::Point3 p = point.point();
      return FieldValue::Point(p.x, p.y, p.z);
    }
  }
  return FieldValue::Zero(to);
}

}  // namespace veltor::objectdata
