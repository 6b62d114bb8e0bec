#include "od/value.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace veltor::od {
namespace {

std::string RealText(double number) { return ValueToText(Value::Real(number)); }

Value IntegerFrom(int32_t start, std::string_view text) {
  Value v = Value::Integer(start);
  EXPECT_TRUE(SetValueFromText(v, text));
  return v;
}

double RealFrom(std::string_view text) {
  Value v = Value::Real(-99.0);
  EXPECT_TRUE(SetValueFromText(v, text));
  EXPECT_EQ(v.type(), ValueType::kReal);
  return v.real();
}

// --- The model --------------------------------------------------------------------------------

TEST(ValueModel, TypeNumbersAndNamesAreTheHostOnes) {
  EXPECT_EQ(static_cast<int>(ValueType::kUnknown), 0);
  EXPECT_EQ(static_cast<int>(ValueType::kInteger), 1);
  EXPECT_EQ(static_cast<int>(ValueType::kReal), 2);
  EXPECT_EQ(static_cast<int>(ValueType::kCharacter), 3);
  EXPECT_EQ(static_cast<int>(ValueType::kPoint), 4);
  EXPECT_STREQ(TypeName(ValueType::kInteger), "Integer");
  EXPECT_STREQ(TypeName(ValueType::kReal), "Real");
  EXPECT_STREQ(TypeName(ValueType::kCharacter), "Character");
  EXPECT_STREQ(TypeName(ValueType::kPoint), "Point");
  EXPECT_STREQ(TypeName(ValueType::kUnknown), "Unknown");
  EXPECT_STREQ(TypeName(static_cast<ValueType>(9)), "Unknown");
}

TEST(ValueModel, TypedConstructionGivesZeroContentOfThatType) {
  EXPECT_EQ(Value().type(), ValueType::kUnknown);
  EXPECT_EQ(Value(ValueType::kInteger), Value::Integer(0));
  EXPECT_EQ(Value(ValueType::kReal), Value::Real(0.0));
  EXPECT_EQ(Value(ValueType::kCharacter), Value::Character(""));
  EXPECT_EQ(Value(ValueType::kPoint), Value::Point({}));
  EXPECT_EQ(Value(ValueType::kUnknown), Value());
}

TEST(ValueModel, EqualityNeedsTheSameType) {
  EXPECT_NE(Value::Integer(0), Value::Real(0.0));
  EXPECT_NE(Value::Character(""), Value());
  EXPECT_EQ(Value::Point({1, 2, 3}), Value::Point({1, 2, 3}));
  EXPECT_NE(Value::Point({1, 2, 3}), Value::Point({1, 2, 4}));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_NE(Value::Real(nan), Value::Real(nan));
}

TEST(ValueModel, SettersChangeTypeAndOtherAccessorsReadZero) {
  Value v = Value::Character("abc");
  v.SetInteger(7);
  EXPECT_EQ(v.type(), ValueType::kInteger);
  EXPECT_EQ(v.integer(), 7);
  EXPECT_EQ(v.text(), "");
  EXPECT_EQ(v.real(), 0.0);
  EXPECT_EQ(v.point(), Point3{});
}

// --- ValueToText ------------------------------------------------------------------------------

TEST(ValueToTextReal, KeepsOneDigitAfterThePoint) {
  EXPECT_EQ(RealText(1e20), "100000000000000000000.0");
  EXPECT_EQ(RealText(-0.5), "-0.5");
  EXPECT_EQ(RealText(3.0), "3.0");
  EXPECT_EQ(RealText(0.1), "0.1");
  EXPECT_EQ(RealText(2.5), "2.5");
  EXPECT_EQ(RealText(0.0), "0.0");
  EXPECT_EQ(RealText(100.0), "100.0");  // zeros before the point stay
  EXPECT_EQ(RealText(123456.25), "123456.25");
}

TEST(ValueToTextReal, RoundsAtTwelveDecimals) {
  EXPECT_EQ(RealText(2.0 / 3.0), "0.666666666667");  // truncation would end in 6
  EXPECT_EQ(RealText(0.1 + 0.2), "0.3");             // 0.30000000000000004
  EXPECT_EQ(RealText(0.9999999999999), "1.0");       // carries into the integer part
  EXPECT_EQ(RealText(1e-13), "0.0");
  EXPECT_EQ(RealText(5e-12), "0.000000000005");
}

TEST(ValueToTextReal, ExactTiesRoundToEvenLikePrintf) {
  // 2^-13 = 0.0001220703125 and 3 * 2^-13 = 0.0003662109375 are exact thirteen-decimal ties.
  EXPECT_EQ(RealText(std::ldexp(1.0, -13)), "0.000122070312");
  EXPECT_EQ(RealText(std::ldexp(3.0, -13)), "0.000366210938");
}

TEST(ValueToTextReal, SignOfZeroAndNonFiniteValuesFollowPrintf) {
  EXPECT_EQ(RealText(-0.0), "-0.0");
  EXPECT_EQ(RealText(-1e-13), "-0.0");
  EXPECT_EQ(RealText(std::numeric_limits<double>::infinity()), "inf");
  EXPECT_EQ(RealText(-std::numeric_limits<double>::infinity()), "-inf");
  EXPECT_EQ(RealText(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(ValueToTextReal, LargestDoubleIsPrintedInFull) {
  const std::string text = RealText(std::numeric_limits<double>::max());
  EXPECT_EQ(text.size(), 309u + 2u);
  EXPECT_EQ(text.substr(0, 20), "17976931348623157081");
  EXPECT_EQ(text.substr(text.size() - 2), ".0");
}

TEST(ValueToText, OtherTypes) {
  EXPECT_EQ(ValueToText(Value::Integer(-42)), "-42");
  EXPECT_EQ(ValueToText(Value::Integer(std::numeric_limits<int32_t>::min())), "-2147483648");
  EXPECT_EQ(ValueToText(Value::Character(" Main  *")), " Main  *");
  EXPECT_EQ(ValueToText(Value::Point({1, 2.5, 0})), "1.000000,2.500000,0.000000");
  EXPECT_EQ(ValueToText(Value::Point({-0.0000004, 1e-7, 1234567.8906255})),
            "-0.000000,0.000000,1234567.890625");
  EXPECT_EQ(ValueToText(Value()), "");
}

// --- FormatNumberWithPrecision ------------------------------------------------------------------

TEST(FormatNumberWithPrecision, FixedDecimalsWithPrintfRounding) {
  EXPECT_EQ(FormatNumberWithPrecision(1.0, 8), "1.00000000");
  EXPECT_EQ(FormatNumberWithPrecision(2.5, 0), "2");  // tie to even, no point
  EXPECT_EQ(FormatNumberWithPrecision(3.5, 0), "4");
  EXPECT_EQ(FormatNumberWithPrecision(0.125, 2), "0.12");
  EXPECT_EQ(FormatNumberWithPrecision(0.375, 2), "0.38");
  EXPECT_EQ(FormatNumberWithPrecision(1.005, 2), "1.00");  // 1.005 is stored below the tie
  EXPECT_EQ(FormatNumberWithPrecision(-1234.5678, 3), "-1234.568");
}

TEST(FormatNumberWithPrecision, OutOfRangePrecisions) {
  EXPECT_EQ(FormatNumberWithPrecision(1.5, -1), "1.500000");
  EXPECT_EQ(FormatNumberWithPrecision(0.1, 5000).size(), 2u + 1074u);
}

// --- SetValueFromText -------------------------------------------------------------------------

TEST(SetValueFromTextInteger, ReadsTheLeadingIntegerLikeAtoi) {
  EXPECT_EQ(IntegerFrom(9, "12abc").integer(), 12);
  EXPECT_EQ(IntegerFrom(9, "abc").integer(), 0);
  EXPECT_EQ(IntegerFrom(9, " -7").integer(), -7);
  EXPECT_EQ(IntegerFrom(9, "\t\n+8").integer(), 8);
  EXPECT_EQ(IntegerFrom(9, "1.9").integer(), 1);
  EXPECT_EQ(IntegerFrom(9, "- 5").integer(), 0);
  EXPECT_EQ(IntegerFrom(9, "0x1A").integer(), 0);
  EXPECT_EQ(IntegerFrom(9, "").integer(), 0);
}

TEST(SetValueFromTextInteger, OutOfRangeSaturates) {
  EXPECT_EQ(IntegerFrom(0, "2147483647").integer(), 2147483647);
  EXPECT_EQ(IntegerFrom(0, "2147483648").integer(), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(IntegerFrom(0, "-2147483648").integer(), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(IntegerFrom(0, "-2147483649").integer(), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(IntegerFrom(0, "99999999999999999999999").integer(),
            std::numeric_limits<int32_t>::max());
}

TEST(SetValueFromTextReal, ReadsTheLeadingNumberLikeAtof) {
  EXPECT_EQ(RealFrom("3,5"), 3.0);  // comma is not a decimal separator
  EXPECT_EQ(RealFrom("1e3x"), 1000.0);
  EXPECT_EQ(RealFrom(".5"), 0.5);
  EXPECT_EQ(RealFrom("-.5e-1"), -0.05);
  EXPECT_EQ(RealFrom("5e"), 5.0);
  EXPECT_EQ(RealFrom("5e+"), 5.0);
  EXPECT_EQ(RealFrom("1.5.5"), 1.5);
  EXPECT_EQ(RealFrom("  +2.25 m"), 2.25);
  EXPECT_EQ(RealFrom("abc"), 0.0);
  EXPECT_EQ(RealFrom("."), 0.0);
  EXPECT_EQ(RealFrom("0x1p4"), 16.0);
}

TEST(SetValueFromTextReal, OutOfRangeAndSpecialValues) {
  EXPECT_EQ(RealFrom("1e400"), std::numeric_limits<double>::infinity());
  const double tiny = RealFrom("-1e-400");
  EXPECT_EQ(tiny, 0.0);
  EXPECT_TRUE(std::signbit(tiny));
  EXPECT_EQ(RealFrom("-Infinity"), -std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(RealFrom("nan")));
}

TEST(SetValueFromTextCharacter, TakesTheTextAsItStands) {
  Value v = Value::Character("old");
  EXPECT_TRUE(SetValueFromText(v, "  12 abc "));
  EXPECT_EQ(v, Value::Character("  12 abc "));
}

TEST(SetValueFromTextPoint, ScansThreeCommaSeparatedNumbers) {
  Value v(ValueType::kPoint);
  EXPECT_TRUE(SetValueFromText(v, "1, 2, 3"));
  EXPECT_EQ(v.point(), (Point3{1, 2, 3}));
  EXPECT_TRUE(SetValueFromText(v, " 1.5e1,-2,+.5"));
  EXPECT_EQ(v.point(), (Point3{15, -2, 0.5}));
  EXPECT_TRUE(SetValueFromText(v, "4,5,6,7 and more"));  // text after the third number is ignored
  EXPECT_EQ(v.point(), (Point3{4, 5, 6}));
}

TEST(SetValueFromTextPoint, FailureLeavesThePointUnchanged) {
  const Point3 before{7, 8, 9};
  for (const char* text : {"1 ,2,3", "1,2 ,3", "1;2;3", "1,2", "1,,3", "", "a,b,c", "1e,2,3",
                           "0x,1,2"}) {
    Value v = Value::Point(before);
    EXPECT_FALSE(SetValueFromText(v, text)) << text;
    EXPECT_EQ(v.point(), before) << text;
  }
}

TEST(SetValueFromTextUnknown, SetsNothing) {
  Value v;
  EXPECT_FALSE(SetValueFromText(v, "12"));
  EXPECT_EQ(v, Value());
}

// --- "*" stands for the old value ---------------------------------------------------------------

TEST(SetValueFromTextStar, ReplacesEveryStarByTheOldText) {
  EXPECT_EQ(IntegerFrom(5, "*5").integer(), 55);
  EXPECT_EQ(IntegerFrom(12, "*0").integer(), 120);
  EXPECT_EQ(IntegerFrom(12, "**").integer(), 1212);
  EXPECT_EQ(IntegerFrom(-3, "1*").integer(), 1);  // "1-3" reads as 1

  Value street = Value::Character("Main");
  EXPECT_TRUE(SetValueFromText(street, "* Street"));
  EXPECT_EQ(street.text(), "Main Street");
  EXPECT_TRUE(SetValueFromText(street, "*/*"));
  EXPECT_EQ(street.text(), "Main Street/Main Street");
}

TEST(SetValueFromTextStar, WorksOnTheTextFormNotTheNumber) {
  // The old real 2 reads back as "2.0", so "*1" gives "2.01".
  Value real = Value::Real(2.0);
  EXPECT_TRUE(SetValueFromText(real, "*1"));
  EXPECT_EQ(real.real(), 2.01);

  Value point = Value::Point({1, -2.5, 3});
  EXPECT_TRUE(SetValueFromText(point, "*"));
  EXPECT_EQ(point.point(), (Point3{1, -2.5, 3}));
  EXPECT_TRUE(SetValueFromText(point, "4,*"));  // "4,1.000000,-2.500000,3.000000"
  EXPECT_EQ(point.point(), (Point3{4, 1, -2.5}));
}

// --- Independence from the process locale -------------------------------------------------------

class CommaLocale : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8",
                             "ru_RU.UTF-8", "ru_RU.utf8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr &&
          std::string(std::localeconv()->decimal_point) == ",") {
        return;
      }
    }
    std::setlocale(LC_ALL, saved_.c_str());
    GTEST_SKIP() << "no locale with a comma decimal separator is installed";
  }
  void TearDown() override { std::setlocale(LC_ALL, saved_.c_str()); }

 private:
  std::string saved_;
};

TEST_F(CommaLocale, TextFormsStillUseAPoint) {
  EXPECT_EQ(RealText(2.5), "2.5");
  EXPECT_EQ(RealText(1234567.125), "1234567.125");
  EXPECT_EQ(ValueToText(Value::Point({1, 2.5, 0})), "1.000000,2.500000,0.000000");
  EXPECT_EQ(FormatNumberWithPrecision(3.25, 3), "3.250");
  EXPECT_EQ(ValueToText(Value::Integer(1234567)), "1234567");
  EXPECT_EQ(RealFrom("2.5"), 2.5);
  EXPECT_EQ(RealFrom("2,5"), 2.0);
  Value point(ValueType::kPoint);
  EXPECT_TRUE(SetValueFromText(point, "1.5,2.5,3.5"));
  EXPECT_EQ(point.point(), (Point3{1.5, 2.5, 3.5}));
}

}  // namespace
}  // namespace veltor::od
