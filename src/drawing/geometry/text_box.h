// Estimated boxes of TEXT and MTEXT, which have no glyph outlines here.
//
// Estimate: each character is 0.6 * height * width_factor wide (an average glyph of a
// proportional font); a line reaches from its baseline to `height` above it (descenders are
// not counted); baselines of successive lines are line_spacing * height apart. The box is
// placed by its alignment point, rotated, and taken to WCS.
#pragma once

#include <array>
#include <cstddef>
#include <utility>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"

namespace veltor::geom {

constexpr double kGlyphWidthRatio = 0.6;
// Default MTEXT baseline spacing: 5/3 of the text height (line spacing factor 1.0).
constexpr double kDefaultLineSpacing = 5.0 / 3.0;

enum class TextHAlign { kLeft, kCenter, kRight };
// kBaseline is the first line's baseline; kBottom is the last line's baseline (the box has
// no descender), kTop the cap line of the first line, kMiddle halfway between the two.
enum class TextVAlign { kBaseline, kBottom, kMiddle, kTop };

struct TextBoxInput {
  Vec3 anchor;               // alignment point, in the OCS of `normal`
  double height = 1.0;
  double width_factor = 1.0;
  double rotation_deg = 0.0;  // about the OCS Z axis
  TextHAlign h_align = TextHAlign::kLeft;
  TextVAlign v_align = TextVAlign::kBaseline;
  size_t char_count = 0;      // characters on the longest line
  size_t line_count = 1;
  double line_spacing = kDefaultLineSpacing;
  // When > 0, the line width to use instead of the estimate (TEXT "aligned"/"fit": distance
  // between its two alignment points).
  double text_width = 0.0;
  // When > 0 (MTEXT reference width), lines longer than this wrap: the width becomes this and
  // each line counts as ceil(estimate / wrap_width) lines.
  double wrap_width = 0.0;
  Vec3 normal{0, 0, 1};
};

struct TextBox {
  // Corners in WCS counter-clockwise from bottom-left (in the text's own direction).
  std::array<Vec3, 4> corners;
  Extents extents;
};

TextBox EstimateTextBox(const TextBoxInput& in);

// Alignment of TEXT from group codes 72 (0 left, 1 center, 2 right, 3 aligned, 4 middle,
// 5 fit) and 73 (0 baseline, 1 bottom, 2 middle, 3 top). "Aligned" and "fit" give left /
// baseline at the first alignment point (set text_width); "middle" centres both ways.
std::pair<TextHAlign, TextVAlign> TextAlignment(int group72, int group73);

// Alignment of MTEXT from its attachment point 1..9 (top-left .. bottom-right, row by row);
// other values are taken as 1.
std::pair<TextHAlign, TextVAlign> MTextAlignment(int attachment);

}  // namespace veltor::geom
