// Object Data values: the typed content of one column of one record, and its text forms.
//
// Every text form here is produced and read in the C locale with "." as the decimal
// separator, whatever the process locale is.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace veltor::od {

// Column types, numbered as the host and the drawing file number them.
enum class ValueType { kUnknown = 0, kInteger = 1, kReal = 2, kCharacter = 3, kPoint = 4 };

// "Integer", "Real", "Character", "Point"; "Unknown" for kUnknown and any other number.
const char* TypeName(ValueType type);

struct Point3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline bool operator==(const Point3& a, const Point3& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}
inline bool operator!=(const Point3& a, const Point3& b) { return !(a == b); }

// A typed value. A default-constructed Value is Unknown and holds nothing. Reading the content
// of another type than the value's own gives that type's zero (0, 0.0, "", the origin).
class Value {
 public:
  Value() = default;
  // A value of `type` with zero content, as a fresh column of that type holds.
  explicit Value(ValueType type);

  static Value Integer(int32_t number);
  static Value Real(double number);
  static Value Character(std::string text);
  static Value Point(Point3 point);

  ValueType type() const { return static_cast<ValueType>(content_.index()); }

  int32_t integer() const;
  double real() const;
  const std::string& text() const;
  Point3 point() const;

  // Each setter makes the value of that type with the given content.
  void SetInteger(int32_t number) { content_ = number; }
  void SetReal(double number) { content_ = number; }
  void SetCharacter(std::string text) { content_ = std::move(text); }
  void SetPoint(Point3 point) { content_ = point; }

  // Same type and equal content; reals compare with ==, so a NaN real is unequal to itself and
  // 0.0 equals -0.0.
  friend bool operator==(const Value& a, const Value& b) { return a.content_ == b.content_; }
  friend bool operator!=(const Value& a, const Value& b) { return !(a == b); }

 private:
  // Alternative index == ValueType number.
  std::variant<std::monostate, int32_t, double, std::string, Point3> content_;
};

// The value as users see it:
//   Integer   "%i"
//   Real      "%.12lf" with trailing zeros removed down to one digit after the point
//             ("3.0", "2.5", "100000000000000000000.0"); infinities and NaN, which print
//             without a point, as "inf", "-inf", "nan", "-nan"
//   Character the text itself
//   Point     "%lf,%lf,%lf" ("1.000000,2.500000,0.000000")
//   Unknown   ""
std::string ValueToText(const Value& value);

// Sets `value`, keeping its type, from `text`. Every "*" in `text` is first replaced by the
// value's current ValueToText. Then:
//   Integer   the leading integer as atoi reads it (ParseLeadingInt); always true
//   Real      the leading number as atof reads it (ParseLeadingDouble); always true
//   Character the text as it stands; always true
//   Point     the text must scan as scanf's "%lf,%lf,%lf" with three conversions: each number
//             may have white space before it, each comma must follow its number directly
//             ("1, 2, 3" scans, "1 ,2,3" does not); anything after the third number is
//             ignored. On failure the value is left unchanged and false is returned.
//   Unknown   nothing is set; false
bool SetValueFromText(Value& value, std::string_view text);
// SetValueFromText without the "*" step: for text that is data (a value copied from another
// column), in which a "*" is a character like any other.
bool SetValueFromLiteralText(Value& value, std::string_view text);

// `number` printed with "%.<precision>lf": fixed notation, exactly `precision` decimals,
// correctly rounded (ties to even on the exact binary value, as glibc's printf), no point when
// precision is 0. A negative precision means the printf default of 6 decimals, as a negative
// "%.*lf" argument does; precisions above 1074 (the longest exact expansion of a double)
// are treated as 1074.
std::string FormatNumberWithPrecision(double number, int precision);

}  // namespace veltor::od
