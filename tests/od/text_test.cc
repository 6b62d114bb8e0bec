#include "od/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include "od/lower_case_table.h"

namespace veltor::od {
namespace {

// U+1F600 (a surrogate pair in UTF-16), U+FFFD, U+E000 and U+D7FF in UTF-8.
const std::string kEmoji = "\xF0\x9F\x98\x80";
const std::string kReplacementChar = "\xEF\xBF\xBD";
const std::string kPrivateUse = "\xEE\x80\x80";
const std::string kHangulLast = "\xED\x9F\xBF";

// --- UTF-8 / UTF-16 ---------------------------------------------------------------------------

TEST(Utf8Utf16, RoundTripsEveryPlane) {
  const std::string text = "a\xC3\xA9\xE2\x82\xAC" + kEmoji;  // a é € U+1F600
  const std::u16string wide = Utf8ToUtf16(text);
  EXPECT_EQ(wide, (std::u16string{u'a', 0x00E9, 0x20AC, 0xD83D, 0xDE00}));
  EXPECT_EQ(Utf16ToUtf8(wide), text);
}

TEST(Utf8Utf16, IllFormedUtf8BecomesOneReplacementPerMaximalSubpart) {
  const char16_t r = 0xFFFD;
  EXPECT_EQ(Utf8ToUtf16("\xC0\xAF"), (std::u16string{r, r}));              // overlong
  EXPECT_EQ(Utf8ToUtf16("\xED\xA0\x80"), (std::u16string{r, r, r}));      // encoded surrogate
  EXPECT_EQ(Utf8ToUtf16("\xF4\x90\x80\x80"), (std::u16string{r, r, r, r}));  // > U+10FFFF
  EXPECT_EQ(Utf8ToUtf16("\xE2\x82" "A"), (std::u16string{r, u'A'}));      // truncated
  EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x98"), (std::u16string{r}));            // truncated at end
  EXPECT_EQ(Utf8ToUtf16("\x80" "b"), (std::u16string{r, u'b'}));          // stray continuation
}

TEST(Utf8Utf16, UnpairedSurrogatesBecomeReplacement) {
  EXPECT_EQ(Utf16ToUtf8(std::u16string{0xD83D, u'x'}), kReplacementChar + "x");
  EXPECT_EQ(Utf16ToUtf8(std::u16string{0xDE00, 0xD83D}), kReplacementChar + kReplacementChar);
}

// --- Ordinal order ----------------------------------------------------------------------------

TEST(CompareOrdinalUtf16, SurrogatePairsSortBeforeTheTopOfThePlane) {
  // Byte order would put U+1F600 (F0 ...) after U+FFFD (EF ...); UTF-16 puts it before.
  EXPECT_LT(CompareOrdinalUtf16(kEmoji, kReplacementChar), 0);
  EXPECT_GT(CompareOrdinalUtf16(kReplacementChar, kEmoji), 0);
  EXPECT_LT(CompareOrdinalUtf16(kEmoji, kPrivateUse), 0);
  EXPECT_LT(CompareOrdinalUtf16(kHangulLast, kEmoji), 0);
  EXPECT_LT(CompareOrdinalUtf16("x" + kEmoji + "a", "x" + kReplacementChar), 0);
}

TEST(CompareOrdinalUtf16, PlainCasesAndPrefixes) {
  EXPECT_EQ(CompareOrdinalUtf16("abc", "abc"), 0);
  EXPECT_LT(CompareOrdinalUtf16("B", "a"), 0);  // ordinal: upper case first
  EXPECT_LT(CompareOrdinalUtf16("ab", "abc"), 0);
  EXPECT_GT(CompareOrdinalUtf16("abc", "ab"), 0);
  EXPECT_LT(CompareOrdinalUtf16("", "a"), 0);
  EXPECT_LT(CompareOrdinalUtf16("z", "\xC3\xA0"), 0);  // z < à
}

TEST(CompareOrdinalUtf16, IllFormedBytesStillGiveAStrictOrder) {
  // Both decode to U+FFFD, yet they are different strings.
  const int c = CompareOrdinalUtf16("\xFF", "\xFE");
  EXPECT_NE(c, 0);
  EXPECT_EQ(CompareOrdinalUtf16("\xFE", "\xFF"), -c);
  EXPECT_NE(CompareOrdinalUtf16("\xFF", kReplacementChar), 0);
  EXPECT_EQ(CompareOrdinalUtf16("\xFF", "\xFF"), 0);
}

TEST(LessOrdinalUtf16, OrdersASetAndFindsByStringView) {
  const std::set<std::string, LessOrdinalUtf16> names = {kReplacementChar, "b", kEmoji, "B"};
  const std::vector<std::string> sorted(names.begin(), names.end());
  EXPECT_EQ(sorted, (std::vector<std::string>{"B", "b", kEmoji, kReplacementChar}));
  EXPECT_NE(names.find(std::string_view("b")), names.end());
}

// --- Lower-casing -----------------------------------------------------------------------------

TEST(ToLowerUnicode, ScriptsUsedInTableAndValueNames) {
  EXPECT_EQ(ToLowerUnicode("Road 12-B"), "road 12-b");
  EXPECT_EQ(ToLowerUnicode("\xCE\x91\xCE\x92\xCE\x93"), "\xCE\xB1\xCE\xB2\xCE\xB3");  // ΑΒΓ
  EXPECT_EQ(ToLowerUnicode("\xD0\x94\xD0\x9E\xD0\xA0\xD0\x9E\xD0\x93\xD0\x90"),
            "\xD0\xB4\xD0\xBE\xD1\x80\xD0\xBE\xD0\xB3\xD0\xB0");  // ДОРОГА -> дорога
  EXPECT_EQ(ToLowerUnicode("\xD0\x80\xD0\x8F"), "\xD1\x90\xD1\x9F");   // Ѐ Џ -> ѐ џ
  EXPECT_EQ(ToLowerUnicode("\xD1\xA0\xD2\x8A"), "\xD1\xA1\xD2\x8B");   // Ѡ Ҋ -> ѡ ҋ
  EXPECT_EQ(ToLowerUnicode("\xC3\x80\xC3\x89\xC3\x8E"), "\xC3\xA0\xC3\xA9\xC3\xAE");  // ÀÉÎ
  EXPECT_EQ(ToLowerUnicode("\xC5\x81\xC5\xB9"), "\xC5\x82\xC5\xBA");   // ŁŹ -> łź
  EXPECT_EQ(ToLowerUnicode("\xD4\xB1"), "\xD5\xA1");                   // Armenian Ա -> ա
  EXPECT_EQ(ToLowerUnicode("\xE1\x82\xA0"), "\xE2\xB4\x80");           // Georgian Ⴀ -> ⴀ
  EXPECT_EQ(ToLowerUnicode("\xEF\xBC\xA1\xEF\xBC\xBA"), "\xEF\xBD\x81\xEF\xBD\x9A");  // ＡＺ
  EXPECT_EQ(ToLowerUnicode("Mixed \xD0\x94\xCE\x9B\xC3\x9C x"),
            "mixed \xD0\xB4\xCE\xBB\xC3\xBC x");
}

TEST(ToLowerUnicode, OneToOneMappingsOnly) {
  // Ǆ and its title-case form ǅ both lower to ǆ.
  EXPECT_EQ(ToLowerUnicode("\xC7\x84"), "\xC7\x86");
  EXPECT_EQ(ToLowerUnicode("\xC7\x85"), "\xC7\x86");
  // İ lowers to plain i (no combining dot, no Turkish rule); ẞ to ß.
  EXPECT_EQ(ToLowerUnicode("\xC4\xB0"), "i");
  EXPECT_EQ(ToLowerUnicode("\xE1\xBA\x9E"), "\xC3\x9F");
  // Σ is always σ: no final-sigma context.
  EXPECT_EQ(ToLowerUnicode("\xCE\x9F\xCE\xA3"), "\xCE\xBF\xCF\x83");
}

TEST(ToLowerUnicode, LeavesOtherTextAndIllFormedBytesAlone) {
  const std::string unchanged = "abc 123 \xC3\x9F \xC7\x86 \xE4\xB8\xAD " + kEmoji;  // ß ǆ 中
  EXPECT_EQ(ToLowerUnicode(unchanged), unchanged);
  EXPECT_EQ(ToLowerUnicode("A\xFF" "B\xC3"), "a\xFF" "b\xC3");
  EXPECT_EQ(ToLowerUnicode("\xED\xA0\x80Z"), "\xED\xA0\x80z");
}

TEST(SimpleLowerCase, TableIsConsistent) {
  for (char32_t c = 0; c < 128; ++c) {
    const char32_t expected = c >= 'A' && c <= 'Z' ? c + 32 : c;
    ASSERT_EQ(SimpleLowerCase(c), expected) << static_cast<uint32_t>(c);
  }
  // Lower-casing twice changes nothing, and never produces a surrogate or leaves the range.
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const char32_t lower = SimpleLowerCase(c);
    if (lower == c) continue;
    ASSERT_EQ(SimpleLowerCase(lower), lower) << std::hex << static_cast<uint32_t>(c);
    ASSERT_FALSE(lower >= 0xD800 && lower <= 0xDFFF);
    ASSERT_LE(lower, char32_t{0x10FFFF});
  }
  EXPECT_EQ(SimpleLowerCase(0x110000), char32_t{0x110000});
}

TEST(EqualsIgnoreCase, ComparesLowerCasedText) {
  EXPECT_TRUE(EqualsIgnoreCase("\xD0\x94\xD0\xBE\xD1\x80\xD0\xBE\xD0\xB3\xD0\xB0",
                               "\xD0\x94\xD0\x9E\xD0\xA0\xD0\x9E\xD0\x93\xD0\x90"));
  EXPECT_TRUE(EqualsIgnoreCase("\xC3\x80" "B", "\xC3\xA0" "b"));
  EXPECT_FALSE(EqualsIgnoreCase("abc", "abd"));
  EXPECT_FALSE(EqualsIgnoreCase("abc", "ab"));
  // Simple mappings only: ß does not expand to "ss".
  EXPECT_FALSE(EqualsIgnoreCase("Stra\xC3\x9F" "e", "STRASSE"));
}

// --- Leading numbers --------------------------------------------------------------------------

TEST(ParseLeadingInt, SkipsOnlyCWhiteSpace) {
  EXPECT_EQ(ParseLeadingInt(" \t\n\v\f\r42"), 42);
  EXPECT_EQ(ParseLeadingInt("\xC2\xA0" "42"), 0);  // no-break space is not white space
  EXPECT_EQ(ParseLeadingInt("007"), 7);
  EXPECT_EQ(ParseLeadingInt("+-1"), 0);
}

TEST(ParseLeadingDouble, FollowsStrtod) {
  EXPECT_EQ(ParseLeadingDouble("\v 1.25e+2kg"), 125.0);
  EXPECT_EQ(ParseLeadingDouble("1."), 1.0);
  EXPECT_EQ(ParseLeadingDouble("0x"), 0.0);
  EXPECT_EQ(ParseLeadingDouble("0x1.8p1"), 3.0);
  EXPECT_EQ(ParseLeadingDouble("-0X.8"), -0.5);
  EXPECT_EQ(ParseLeadingDouble("INFINITY"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(ParseLeadingDouble("infinit"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(ParseLeadingDouble("in"), 0.0);
  EXPECT_TRUE(std::isnan(ParseLeadingDouble("NaN(123)")));
  EXPECT_TRUE(std::signbit(ParseLeadingDouble("-nan")));
  EXPECT_EQ(ParseLeadingDouble("--1"), 0.0);
}

TEST(ParseLeadingDouble, RangeLimits) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ParseLeadingDouble("1000e306"), inf);
  EXPECT_EQ(ParseLeadingDouble("-1e99999999999999999999"), -inf);
  EXPECT_EQ(ParseLeadingDouble("0.001e311"), 1e308);
  EXPECT_EQ(ParseLeadingDouble("0.01e-322"), 0.0);  // 1e-324 rounds to zero
  EXPECT_EQ(ParseLeadingDouble("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(ParseLeadingDouble("4.9e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ParseLeadingDouble("0x1p-1080"), 0.0);
  EXPECT_EQ(ParseLeadingDouble("0x1p1024"), inf);
}

TEST(ScanDouble, ConsumesOneNumberAndStopsAfterIt) {
  std::size_t pos = 2;
  double x = 0;
  ASSERT_TRUE(ScanDouble("ab  -2.5,rest", &pos, &x));
  EXPECT_EQ(x, -2.5);
  EXPECT_EQ(pos, 8u);
}

TEST(ScanDouble, IncompleteNumbersFailAndChangeNothing) {
  for (const char* text : {"", "  ", "-", ".", "+.e1", "1e", "1e+,", "0x", "0x.p1", "infin",
                           "nan(12", "x1"}) {
    std::size_t pos = 0;
    double x = 42;
    EXPECT_FALSE(ScanDouble(text, &pos, &x)) << text;
    EXPECT_EQ(pos, 0u) << text;
    EXPECT_EQ(x, 42) << text;
  }
}

}  // namespace
}  // namespace veltor::od
