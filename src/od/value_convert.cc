#include "od/value_convert.h"

#include <string>

#include "od/text.h"

namespace veltor::od {

Value ConvertValue(const Value& value, ValueType to) {
  if (value.type() == to) return value;
  if (value.type() == ValueType::kInteger && to == ValueType::kReal)
    return Value::Real(value.integer());
  if (value.type() == ValueType::kReal && to == ValueType::kInteger) {
    double r = value.real();
    if (!(r > -2147483649.0 && r < 2147483648.0)) return Value(to);
    return Value::Integer(static_cast<int32_t>(r));
  }
  // Everything else goes through the text forms users see.
  std::string text = ValueToText(value);
  switch (to) {
    case ValueType::kInteger: return Value::Integer(ParseLeadingInt(text));
    case ValueType::kReal: return Value::Real(ParseLeadingDouble(text));
    case ValueType::kCharacter: return Value::Character(std::move(text));
    case ValueType::kPoint: {
      // A "*" would stand for the old value in user input; here it is just a character.
      Value point(ValueType::kPoint);
      if (text.find('*') != std::string::npos || !SetValueFromText(point, text)) break;
      return point;
    }
    case ValueType::kUnknown: break;
  }
  return Value(to);
}

}  // namespace veltor::od
