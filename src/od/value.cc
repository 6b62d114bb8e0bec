#include "od/value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

#include "od/fixed_format.h"
#include "od/text.h"

namespace veltor::od {
namespace {

constexpr int kDefaultPrecision = 6;
constexpr int kMaxPrecision = 1074;

// std::to_chars does not consult the locale, so "." is always the separator. A toolset
// without its fixed-precision overload takes the exact expansion of fixed_format.h instead.
std::string FormatFixed(double number, int precision) {
#if !VELTOR_HAS_FIXED_TO_CHARS
  return FormatFixedExact(number, precision);
#else
  // Sign, 309 integer digits of DBL_MAX, point, and some slack.
  constexpr int kFixedOverhead = 320;
  if (std::isnan(number)) return std::signbit(number) ? "-nan" : "nan";
  if (std::isinf(number)) return number < 0 ? "-inf" : "inf";
  std::string out(static_cast<std::size_t>(precision + kFixedOverhead), '\0');
  const auto result = std::to_chars(out.data(), out.data() + out.size(), number,
                                    std::chars_format::fixed, precision);
  out.resize(result.ec == std::errc() ? static_cast<std::size_t>(result.ptr - out.data()) : 0);
  return out;
#endif
}

// "3.000000000000" -> "3.0", "2.500000000000" -> "2.5"; text without "." is unchanged.
std::string TrimFractionZeros(std::string text) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  std::size_t end = text.size();
  while (end > point + 2 && text[end - 1] == '0') --end;
  text.resize(end);
  return text;
}

std::string ReplaceStars(std::string_view text, const std::string& replacement) {
  std::string out;
  for (const char c : text) {
    if (c == '*') {
      out += replacement;
    } else {
      out += c;
    }
  }
  return out;
}

// scanf("%lf,%lf,%lf") == 3.
bool ScanPoint(std::string_view text, Point3* point) {
  double xyz[3];
  std::size_t pos = 0;
  for (int i = 0; i < 3; ++i) {
    if (i > 0) {
      if (pos >= text.size() || text[pos] != ',') return false;
      ++pos;
    }
    if (!ScanDouble(text, &pos, &xyz[i])) return false;
  }
  *point = Point3{xyz[0], xyz[1], xyz[2]};
  return true;
}

}  // namespace

const char* TypeName(ValueType type) {
  switch (type) {
    case ValueType::kInteger:
      return "Integer";
    case ValueType::kReal:
      return "Real";
    case ValueType::kCharacter:
      return "Character";
    case ValueType::kPoint:
      return "Point";
    case ValueType::kUnknown:
      break;
  }
  return "Unknown";
}

Value::Value(ValueType type) {
  switch (type) {
    case ValueType::kInteger:
      content_ = int32_t{0};
      break;
    case ValueType::kReal:
      content_ = 0.0;
      break;
    case ValueType::kCharacter:
      content_ = std::string();
      break;
    case ValueType::kPoint:
      content_ = Point3{};
      break;
    case ValueType::kUnknown:
      break;
  }
}

Value Value::Integer(int32_t number) {
  Value v;
  v.SetInteger(number);
  return v;
}

Value Value::Real(double number) {
  Value v;
  v.SetReal(number);
  return v;
}

Value Value::Character(std::string text) {
  Value v;
  v.SetCharacter(std::move(text));
  return v;
}

Value Value::Point(Point3 point) {
  Value v;
  v.SetPoint(point);
  return v;
}

int32_t Value::integer() const {
  const int32_t* p = std::get_if<int32_t>(&content_);
  return p ? *p : 0;
}

double Value::real() const {
  const double* p = std::get_if<double>(&content_);
  return p ? *p : 0.0;
}

const std::string& Value::text() const {
  static const std::string kEmpty;
  const std::string* p = std::get_if<std::string>(&content_);
  return p ? *p : kEmpty;
}

Point3 Value::point() const {
  const Point3* p = std::get_if<Point3>(&content_);
  return p ? *p : Point3{};
}

std::string ValueToText(const Value& value) {
  switch (value.type()) {
    case ValueType::kInteger:
      return std::to_string(value.integer());
    case ValueType::kReal:
      return TrimFractionZeros(FormatFixed(value.real(), 12));
    case ValueType::kCharacter:
      return value.text();
    case ValueType::kPoint: {
      const Point3 p = value.point();
      return FormatFixed(p.x, 6) + "," + FormatFixed(p.y, 6) + "," + FormatFixed(p.z, 6);
    }
    case ValueType::kUnknown:
      break;
  }
  return std::string();
}

bool SetValueFromText(Value& value, std::string_view text) {
  if (text.find('*') == std::string_view::npos) return SetValueFromLiteralText(value, text);
  return SetValueFromLiteralText(value, ReplaceStars(text, ValueToText(value)));
}

bool SetValueFromLiteralText(Value& value, std::string_view text) {
  switch (value.type()) {
    case ValueType::kInteger:
      value.SetInteger(ParseLeadingInt(text));
      return true;
    case ValueType::kReal:
      value.SetReal(ParseLeadingDouble(text));
      return true;
    case ValueType::kCharacter:
      value.SetCharacter(std::string(text));
      return true;
    case ValueType::kPoint: {
      Point3 point;
      if (!ScanPoint(text, &point)) return false;
      value.SetPoint(point);
      return true;
    }
    case ValueType::kUnknown:
      break;
  }
  return false;
}

std::string FormatNumberWithPrecision(double number, int precision) {
  if (precision < 0) precision = kDefaultPrecision;
  return FormatFixed(number, std::min(precision, kMaxPrecision));
}

}  // namespace veltor::od
