#include "commands/exchange/attr_values.h"

#include "od/format.h"
#include "od/text.h"

namespace veltor::commands {

void SetValueFromAttributeText(od::Value& value, const std::string& text) {
  switch (value.type()) {
    case od::ValueType::kInteger:
      value = od::Value::Integer(od::ParseLeadingInt(text));
      return;
    case od::ValueType::kReal:
      value = od::Value::Real(od::ParseLeadingDouble(text));
      return;
    case od::ValueType::kCharacter:
      value = od::Value::Character(text);
      return;
    case od::ValueType::kPoint: {
      double parts[3] = {0, 0, 0};
      size_t start = 0;
      for (int i = 0; i < 3 && start <= text.size(); ++i) {
        size_t comma = text.find(',', start);
        size_t end = comma == std::string::npos ? text.size() : comma;
        parts[i] = od::ParseLeadingInt(std::string_view(text).substr(start, end - start));
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
      value = od::Value::Point({parts[0], parts[1], parts[2]});
      return;
    }
    default:
      return;
  }
}

std::optional<std::string> AttributeTextOf(const od::Value& value) {
  switch (value.type()) {
    case od::ValueType::kInteger:
    case od::ValueType::kReal:
    case od::ValueType::kCharacter:
      return od::ValueToText(value);
    case od::ValueType::kPoint: {
      od::Point3 p = value.point();
      return od::Format("%lf, %lf, %lf", p.x, p.y, p.z);
    }
    default:
      return std::nullopt;
  }
}

}  // namespace veltor::commands
