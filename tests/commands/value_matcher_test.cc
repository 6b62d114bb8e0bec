// The value matcher: plain containment, extended comparisons and the wildcard asymmetries.
#include "commands/select/value_matcher.h"

#include <gtest/gtest.h>

namespace veltor::commands {
namespace {

using od::Value;

TEST(Wildcard, OuterStarsNeedACharacterInnerStarsDoNot) {
  EXPECT_TRUE(WildcardMatch("xroadx", "*road*"));
  EXPECT_TRUE(WildcardMatch("roadroad", "*road*"));
  EXPECT_TRUE(WildcardMatch("Main Road 5", "*road*"));
  EXPECT_FALSE(WildcardMatch("road", "*road*"));
  EXPECT_FALSE(WildcardMatch("xroad", "*road*"));
  EXPECT_FALSE(WildcardMatch("roadx", "*road*"));
  EXPECT_FALSE(WildcardMatch("Road", "*road*"));
  EXPECT_TRUE(WildcardMatch("ab", "a*b"));
  EXPECT_TRUE(WildcardMatch("axb", "a*b"));
  EXPECT_FALSE(WildcardMatch("axbc", "a*b"));
  EXPECT_TRUE(WildcardMatch("ROADS", "road*"));
  EXPECT_FALSE(WildcardMatch("road", "road*"));
  EXPECT_TRUE(WildcardMatch("Ulica Łódzka", "*ŁÓDZ*"));  // lower-cased beyond ASCII
}

TEST(MatchValue, PlainPatternsAreCaseInsensitiveContainment) {
  EXPECT_TRUE(MatchValue(Value::Integer(5), "5", false));
  EXPECT_TRUE(MatchValue(Value::Integer(15), "5", false));
  EXPECT_TRUE(MatchValue(Value::Integer(50), "5", false));
  EXPECT_FALSE(MatchValue(Value::Integer(7), "5", false));
  EXPECT_TRUE(MatchValue(Value::Character("Main ROAD"), "road", false));
  EXPECT_TRUE(MatchValue(Value::Real(2.5), "2.5", false));
  EXPECT_TRUE(MatchValue(Value::Point({1, 2, 3}), "2.000000", false));
}

TEST(MatchValue, ExtendedEqualityIsExactPerType) {
  EXPECT_TRUE(MatchValue(Value::Integer(5), "5", true));
  EXPECT_FALSE(MatchValue(Value::Integer(15), "5", true));
  EXPECT_TRUE(MatchValue(Value::Integer(12), "12abc", true));  // leading number
  EXPECT_TRUE(MatchValue(Value::Character("5"), "5", true));
  EXPECT_FALSE(MatchValue(Value::Character("15"), "5", true));
  EXPECT_FALSE(MatchValue(Value::Character("Road"), "road", true));  // case-sensitive
  EXPECT_TRUE(MatchValue(Value::Real(3.0), "3", true));
  EXPECT_FALSE(MatchValue(Value::Point({1, 0, 0}), "1", true));  // points never equal
}

TEST(MatchValue, ExtendedComparisons) {
  EXPECT_TRUE(MatchValue(Value::Real(10.5), ">  10", true));
  EXPECT_FALSE(MatchValue(Value::Real(10.0), ">  10", true));
  EXPECT_TRUE(MatchValue(Value::Integer(3), "< 4", true));
  EXPECT_FALSE(MatchValue(Value::Character("ABC"), "<>abc", true));
  EXPECT_TRUE(MatchValue(Value::Character("abd"), "<>abc", true));
  EXPECT_TRUE(MatchValue(Value::Character("n"), ">m", true));
  EXPECT_FALSE(MatchValue(Value::Character("M"), ">m", true));  // upper case sorts first
  EXPECT_TRUE(MatchValue(Value::Integer(4), "<>5", true));
  EXPECT_FALSE(MatchValue(Value::Point({9, 9, 9}), ">1", true));
  EXPECT_TRUE(MatchValue(Value::Point({1, 2, 3}), "1.0*", true));  // wildcards read the text form
}

}  // namespace
}  // namespace veltor::commands
