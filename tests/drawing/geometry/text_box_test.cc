#include "drawing/geometry/text_box.h"

#include <gtest/gtest.h>

#include "test_util.h"

namespace veltor::geom {
namespace {

TextBoxInput FiveChars() {
  TextBoxInput in;
  in.anchor = Vec3(10, 20, 0);
  in.height = 2.0;
  in.char_count = 5;  // 5 * 0.6 * 2 = 6 wide
  return in;
}

TEST(TextBoxTest, LeftBaselineFromInsertionPoint) {
  ExpectBox({10, 20, 0}, {16, 22, 0}, EstimateTextBox(FiveChars()).extents, 1e-15);
}

TEST(TextBoxTest, WidthFactorStretches) {
  TextBoxInput in = FiveChars();
  in.width_factor = 0.5;
  ExpectBox({10, 20, 0}, {13, 22, 0}, EstimateTextBox(in).extents, 1e-15);
}

TEST(TextBoxTest, RotationTurnsAboutTheAnchor) {
  TextBoxInput in = FiveChars();
  in.rotation_deg = 90.0;
  const TextBox box = EstimateTextBox(in);
  ExpectBox({8, 20, 0}, {10, 26, 0}, box.extents, 1e-14);
  ExpectNear({10, 26, 0}, box.corners[1], 1e-14);  // end of the baseline
}

TEST(TextBoxTest, AlignmentMovesTheBox) {
  TextBoxInput in = FiveChars();
  in.anchor = Vec3();
  in.h_align = TextHAlign::kCenter;
  in.v_align = TextVAlign::kMiddle;
  ExpectBox({-3, -1, 0}, {3, 1, 0}, EstimateTextBox(in).extents, 1e-15);
  in.h_align = TextHAlign::kRight;
  in.v_align = TextVAlign::kTop;
  ExpectBox({-6, -2, 0}, {0, 0, 0}, EstimateTextBox(in).extents, 1e-15);
}

TEST(TextBoxTest, MultiLineAndWrapping) {
  TextBoxInput in;
  in.height = 1.0;
  in.char_count = 10;  // 6 wide
  in.line_count = 3;
  in.h_align = TextHAlign::kLeft;
  in.v_align = TextVAlign::kTop;
  // Top of the first line at the anchor; last baseline 2 * 5/3 below the first.
  ExpectBox({0, -(1 + 10.0 / 3), 0}, {6, 0, 0}, EstimateTextBox(in).extents, 1e-14);
  in.line_count = 1;
  in.wrap_width = 2.5;  // 6 wide wraps into 3 lines of 2.5
  ExpectBox({0, -(1 + 10.0 / 3), 0}, {2.5, 0, 0}, EstimateTextBox(in).extents, 1e-14);
}

TEST(TextBoxTest, FitWidthAndMirroredNormal) {
  TextBoxInput in = FiveChars();
  in.text_width = 4.0;
  in.normal = Vec3(0, 0, -1);  // OCS x is world -x
  ExpectBox({-14, 20, 0}, {-10, 22, 0}, EstimateTextBox(in).extents, 1e-15);
}

TEST(TextBoxTest, DxfAlignmentCodes) {
  EXPECT_EQ(std::make_pair(TextHAlign::kCenter, TextVAlign::kMiddle), TextAlignment(4, 0));
  EXPECT_EQ(std::make_pair(TextHAlign::kRight, TextVAlign::kTop), TextAlignment(2, 3));
  EXPECT_EQ(std::make_pair(TextHAlign::kLeft, TextVAlign::kBaseline), TextAlignment(5, 2));
  EXPECT_EQ(std::make_pair(TextHAlign::kLeft, TextVAlign::kTop), MTextAlignment(1));
  EXPECT_EQ(std::make_pair(TextHAlign::kCenter, TextVAlign::kMiddle), MTextAlignment(5));
  EXPECT_EQ(std::make_pair(TextHAlign::kRight, TextVAlign::kBottom), MTextAlignment(9));
  EXPECT_EQ(std::make_pair(TextHAlign::kLeft, TextVAlign::kTop), MTextAlignment(0));
}

}  // namespace
}  // namespace veltor::geom
