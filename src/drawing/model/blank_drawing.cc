#include "drawing/model/blank_drawing.h"

#include "drawing/model/blank_drawing_data.h"

namespace veltor::model {

std::string BlankDrawingText(std::string_view acadver) {
  std::string text(kBlankDrawingDxf, kBlankDrawingDxfSize);
  // The template is an R2018 drawing; only its $ACADVER value changes with the version.
  const std::string key = "$ACADVER\n  1\n";
  size_t at = text.find(key) + key.size();
  text.replace(at, text.find('\n', at) - at, acadver);
  return text;
}

}  // namespace veltor::model
