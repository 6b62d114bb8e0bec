// The exact fixed-notation expansion against the standard library's own (where it has the
// fixed-precision overload): the same text for every kind of double and precision.
#include "od/fixed_format.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace veltor::od {
namespace {

std::string Reference(double number, int precision) {
  std::string out(static_cast<size_t>(precision) + 400, '\0');
  auto result = std::to_chars(out.data(), out.data() + out.size(), number,
                              std::chars_format::fixed, precision);
  out.resize(static_cast<size_t>(result.ptr - out.data()));
  return out;
}

TEST(FormatFixedExact, RoundsTheExactBinaryValueWithTiesToEven) {
  EXPECT_EQ(FormatFixedExact(2.5, 0), "2");
  EXPECT_EQ(FormatFixedExact(3.5, 0), "4");
  EXPECT_EQ(FormatFixedExact(0.125, 2), "0.12");  // exactly half: to even
  EXPECT_EQ(FormatFixedExact(0.375, 2), "0.38");
  EXPECT_EQ(FormatFixedExact(2.675, 2), "2.67");  // 2.67499999... in binary
  EXPECT_EQ(FormatFixedExact(9.995, 2), "9.99");
  EXPECT_EQ(FormatFixedExact(9.9951, 2), "10.00");
  EXPECT_EQ(FormatFixedExact(0.1, 20), "0.10000000000000000555");
  EXPECT_EQ(FormatFixedExact(1e22, 1), "10000000000000000000000.0");
  EXPECT_EQ(FormatFixedExact(-0.0, 3), "-0.000");
  EXPECT_EQ(FormatFixedExact(-0.0004, 3), "-0.000");
  EXPECT_EQ(FormatFixedExact(0.0, 0), "0");
  EXPECT_EQ(FormatFixedExact(std::numeric_limits<double>::infinity(), 2), "inf");
  EXPECT_EQ(FormatFixedExact(-std::numeric_limits<double>::quiet_NaN(), 2), "-nan");
}

TEST(FormatFixedExact, AgreesWithTheStandardLibraryEverywhere) {
  const double edges[] = {std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::min(),
                          std::numeric_limits<double>::denorm_min(),
                          4503599627370495.5,
                          9007199254740993.0,
                          0.5,
                          1.0 / 3.0,
                          123456.789e-300};
  for (double d : edges)
    for (int p : {0, 1, 6, 12, 17, 30, 330, 1074}) {
      EXPECT_EQ(FormatFixedExact(d, p), Reference(d, p)) << d << " at " << p;
      EXPECT_EQ(FormatFixedExact(-d, p), Reference(-d, p)) << -d << " at " << p;
    }
  // Random bit patterns cover every exponent; the precisions are the ones the module prints.
  std::mt19937_64 random(20261123);
  for (int i = 0; i < 20000; ++i) {
    uint64_t bits = random();
    double d;
    std::memcpy(&d, &bits, sizeof d);
    if (!std::isfinite(d)) continue;
    int p = static_cast<int>(random() % 20);
    ASSERT_EQ(FormatFixedExact(d, p), Reference(d, p)) << d << " at " << p;
  }
  // Numbers of everyday size, where ties and carries happen.
  for (int i = 0; i < 20000; ++i) {
    double d = static_cast<double>(static_cast<int64_t>(random() % 2000000) - 1000000) / 1000.0;
    for (int p : {0, 1, 2, 8})
      ASSERT_EQ(FormatFixedExact(d, p), Reference(d, p)) << d << " at " << p;
  }
}

}  // namespace
}  // namespace veltor::od
