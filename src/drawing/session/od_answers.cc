#include "drawing/session/od_answers.h"

#include <cmath>

#include "drawing/objectdata/od_format.h"

namespace veltor::session {

namespace {

bool ReadFinite(std::string_view text, double& out) {
  return objectdata::ParseWholeDouble(text, out) && std::isfinite(out);
}

// Every "*" stands for the current value in its text form.
std::string ExpandStars(const std::string& typed, const od::Value& value) {
  if (typed.find('*') == std::string::npos) return typed;
  std::string current = od::ValueToText(value), out;
  for (char c : typed) {
    if (c == '*') out += current;
    else out += c;
  }
  return out;
}

}  // namespace

std::string ReadTypedValue(const std::string& typed, od::Value& value) {
  if (value.type() == od::ValueType::kCharacter) {
    od::SetValueFromText(value, typed);
    return "";
  }
  const std::string text = ExpandStars(typed, value);
  switch (value.type()) {
    case od::ValueType::kInteger: {
      int32_t number = 0;
      if (!objectdata::ParseWholeInt32(text, number))
        return "'" + text + "' is not a whole number from -2147483648 to 2147483647.";
      value.SetInteger(number);
      return "";
    }
    case od::ValueType::kReal: {
      double number = 0;
      if (!ReadFinite(text, number)) return "'" + text + "' is not a finite number.";
      value.SetReal(number);
      return "";
    }
    case od::ValueType::kPoint: {
      od::Point3 p;
      double* axes[3] = {&p.x, &p.y, &p.z};
      size_t start = 0;
      for (int axis = 0; axis < 3; ++axis) {
        size_t comma = text.find(',', start);
        bool last = axis == 2;
        if (last != (comma == std::string::npos) ||
            !ReadFinite(std::string_view(text).substr(start, last ? std::string::npos : comma - start),
                        *axes[axis]))
          return "'" + text + "' is not a point: three numbers x,y,z.";
        start = comma + 1;
      }
      value.SetPoint(p);
      return "";
    }
    case od::ValueType::kCharacter:
    case od::ValueType::kUnknown:
      break;
  }
  return "the column has no type.";
}

std::string NameProblem(const std::string& name) {
  for (unsigned char c : name)
    if (c < 32 || c == 127) return "a name cannot hold control characters.";
  return "";
}

std::string SkippedRecordsWarning(size_t skipped) {
  if (skipped == 0) return "";
  return "Warning: " + CountOf(static_cast<long>(skipped), "damaged record", "damaged records") +
         " skipped (kept in the drawing as " + (skipped == 1 ? "it is" : "they are") + ").\n";
}

std::string CountOf(long count, const std::string& singular, const std::string& plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

}  // namespace veltor::session
