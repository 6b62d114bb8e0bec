#include "drawing/geometry/text_box.h"

#include <cmath>

#include "drawing/geometry/ocs.h"

namespace veltor::geom {

TextBox EstimateTextBox(const TextBoxInput& in) {
  const double h = std::fabs(in.height);
  double width = in.text_width > 0.0
                     ? in.text_width
                     : static_cast<double>(in.char_count) * kGlyphWidthRatio * h *
                           std::fabs(in.width_factor);
  double lines = static_cast<double>(in.line_count == 0 ? 1 : in.line_count);
  if (in.wrap_width > 0.0 && width > in.wrap_width) {
    lines *= std::ceil(width / in.wrap_width);
    width = in.wrap_width;
  }
  // Local frame: x along the text, y up, origin at the left end of the first baseline.
  const double top = h;
  const double bottom = -(lines - 1.0) * h * in.line_spacing;
  double ax = 0.0;
  if (in.h_align == TextHAlign::kCenter) ax = 0.5 * width;
  if (in.h_align == TextHAlign::kRight) ax = width;
  double ay = 0.0;
  switch (in.v_align) {
    case TextVAlign::kBaseline: ay = 0.0; break;
    case TextVAlign::kBottom: ay = bottom; break;
    case TextVAlign::kMiddle: ay = 0.5 * (top + bottom); break;
    case TextVAlign::kTop: ay = top; break;
  }
  const double angle = in.rotation_deg * kPi / 180.0;
  const double c = std::cos(angle), s = std::sin(angle);
  const Matrix3d to_wcs = OcsToWcs(in.normal);
  const Vec2 local[4] = {{0.0, bottom}, {width, bottom}, {width, top}, {0.0, top}};
  TextBox box;
  for (int i = 0; i < 4; ++i) {
    const double x = local[i].x - ax, y = local[i].y - ay;
    const Vec3 ocs(in.anchor.x + x * c - y * s, in.anchor.y + x * s + y * c, in.anchor.z);
    box.corners[static_cast<size_t>(i)] = to_wcs.Apply(ocs);
    box.extents.Add(box.corners[static_cast<size_t>(i)]);
  }
  return box;
}

std::pair<TextHAlign, TextVAlign> TextAlignment(int group72, int group73) {
  TextHAlign h = TextHAlign::kLeft;
  if (group72 == 1) h = TextHAlign::kCenter;
  if (group72 == 2) h = TextHAlign::kRight;
  if (group72 == 4) return {TextHAlign::kCenter, TextVAlign::kMiddle};
  if (group72 == 3 || group72 == 5) return {TextHAlign::kLeft, TextVAlign::kBaseline};
  TextVAlign v = TextVAlign::kBaseline;
  if (group73 == 1) v = TextVAlign::kBottom;
  if (group73 == 2) v = TextVAlign::kMiddle;
  if (group73 == 3) v = TextVAlign::kTop;
  return {h, v};
}

std::pair<TextHAlign, TextVAlign> MTextAlignment(int attachment) {
  if (attachment < 1 || attachment > 9) attachment = 1;
  static constexpr TextHAlign kH[3] = {TextHAlign::kLeft, TextHAlign::kCenter,
                                       TextHAlign::kRight};
  static constexpr TextVAlign kV[3] = {TextVAlign::kTop, TextVAlign::kMiddle,
                                       TextVAlign::kBottom};
  return {kH[(attachment - 1) % 3], kV[(attachment - 1) / 3]};
}

}  // namespace veltor::geom
