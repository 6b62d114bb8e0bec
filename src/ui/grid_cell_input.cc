#include "ui/grid_cell_input.h"

#include "od/text.h"

namespace veltor::ui {

void ParseCellInput(od::Value& value, std::string_view text) {
  switch (value.type()) {
    case od::ValueType::kInteger:
      value.SetInteger(od::ParseLeadingInt(text));
      return;
    case od::ValueType::kReal:
      value.SetReal(od::ParseLeadingDouble(text));
      return;
    case od::ValueType::kCharacter:
      value.SetCharacter(std::string(text));
      return;
    case od::ValueType::kPoint: {
      size_t first = text.find(',');
      size_t last = text.rfind(',');
      if (first == std::string_view::npos || first == last) return;
      od::Point3 p;
      p.x = od::ParseLeadingDouble(text.substr(0, first));
      p.y = od::ParseLeadingDouble(text.substr(first + 1, last - first - 1));
      p.z = od::ParseLeadingDouble(text.substr(last + 1));
      value.SetPoint(p);
      return;
    }
    default:
      return;
  }
}

const char* CellTypeName(const od::Value& value) {
  switch (value.type()) {
    case od::ValueType::kInteger: return "integer";
    case od::ValueType::kReal: return "real";
    case od::ValueType::kCharacter: return "character";
    case od::ValueType::kPoint: return "point";
    default: return "unknown";
  }
}

}  // namespace veltor::ui
