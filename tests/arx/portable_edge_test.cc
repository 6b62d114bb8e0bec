// The adapter's portable edge: wide text conversion and packed object ids.
#include <gtest/gtest.h>

#include "arx/drawing_registry.h"
#include "arx/wide_text.h"

namespace veltor::arx {
namespace {

TEST(WideText, RoundTripsEveryPlane) {
  const std::string text = u8"Rohr \u00e4\u00df \u4e2d \U0001F600 end";
  std::wstring wide = Widen(text);
  EXPECT_EQ(Narrow(wide), text);
  // The supplementary character is one pair of units on a 16-bit wchar_t, one unit otherwise.
  size_t expected = sizeof(wchar_t) == 2 ? 16 : 15;
  EXPECT_EQ(wide.size(), expected);
  EXPECT_EQ(wide[5], static_cast<wchar_t>(0xE4));
}

TEST(WideText, RepairsIllFormedInput) {
  EXPECT_EQ(Widen("a\xC3"), (std::wstring{L'a', static_cast<wchar_t>(0xFFFD)}));
  EXPECT_EQ(Widen("\xE0\x80\x80"), std::wstring(3, static_cast<wchar_t>(0xFFFD)));  // overlong
  std::wstring lone{L'x', static_cast<wchar_t>(0xD800), L'y'};
  EXPECT_EQ(Narrow(lone), u8"x\uFFFDy");
  EXPECT_EQ(Narrow(static_cast<const wchar_t*>(nullptr)), "");
}

TEST(WideText, WidenIntoTerminatesAndReportsOverflow) {
  wchar_t buffer[4];
  EXPECT_TRUE(WidenInto("abc", buffer, 4));
  EXPECT_EQ(std::wstring(buffer), L"abc");
  EXPECT_FALSE(WidenInto("abcd", buffer, 4));
  EXPECT_EQ(std::wstring(buffer), L"abc");
  EXPECT_FALSE(WidenInto("", buffer, 0));
  // A character that would be split is left out whole.
  EXPECT_EQ(WidenInto(u8"ab\U0001F600", buffer, 4), sizeof(wchar_t) != 2);
  EXPECT_EQ(Narrow(buffer), sizeof(wchar_t) == 2 ? "ab" : u8"ab\U0001F600");
}

TEST(PackedIds, PackAndUnpackKeepSerialAndHandle) {
  od::ObjectId id = PackId(3, 0x1F);
  ASSERT_NE(id, od::kNullId);
  EXPECT_EQ(UnpackId(id).serial, 3u);
  EXPECT_EQ(UnpackId(id).handle, 0x1Fu);
  od::ObjectId big = PackId(kMaxSerial, kMaxHandle);
  EXPECT_EQ(UnpackId(big).serial, kMaxSerial);
  EXPECT_EQ(UnpackId(big).handle, kMaxHandle);
}

TEST(PackedIds, RefusesWhatCannotBePacked) {
  EXPECT_EQ(PackId(1, 0), od::kNullId);
  EXPECT_EQ(PackId(0, 5), od::kNullId);
  EXPECT_EQ(PackId(1, kMaxHandle + 1), od::kNullId);
  EXPECT_EQ(PackId(kMaxSerial + 1, 5), od::kNullId);
}

TEST(DrawingRegistry, AClosedDrawingsSerialFindsNothingAndIsNotReused) {
  DrawingRegistry drawings;
  int a = 0, b = 0;
  uint32_t sa = drawings.Register(&a);
  uint32_t sb = drawings.Register(&b);
  EXPECT_NE(sa, 0u);
  EXPECT_NE(sa, sb);
  EXPECT_EQ(drawings.Register(&a), sa);
  EXPECT_EQ(drawings.Find(sa), &a);
  drawings.Unregister(&a);
  EXPECT_EQ(drawings.Find(sa), nullptr);
  EXPECT_EQ(drawings.SerialOf(&a), 0u);
  EXPECT_EQ(drawings.Find(sb), &b);
  // The same address opened again (a new drawing reusing freed memory) gets a new serial.
  uint32_t again = drawings.Register(&a);
  EXPECT_NE(again, sa);
  EXPECT_EQ(drawings.Find(sa), nullptr);
  EXPECT_EQ(drawings.Register(nullptr), 0u);
}

}  // namespace
}  // namespace veltor::arx

#include "arx/ocs.h"

namespace veltor::arx {
namespace {

TEST(Ocs, FollowsTheArbitraryAxisAlgorithm) {
  od::Point3 p{1, 2, 3};
  od::Point3 up = WorldToOcs(p, {0, 0, 5});
  EXPECT_DOUBLE_EQ(up.x, 1);
  EXPECT_DOUBLE_EQ(up.y, 2);
  EXPECT_DOUBLE_EQ(up.z, 3);
  // Seen from below, X turns round and the elevation changes sign.
  od::Point3 down = WorldToOcs(p, {0, 0, -1});
  EXPECT_DOUBLE_EQ(down.x, -1);
  EXPECT_DOUBLE_EQ(down.y, 2);
  EXPECT_DOUBLE_EQ(down.z, -3);
  // Normal +X: the OCS X axis is world Y, its Y axis world Z.
  od::Point3 side = WorldToOcs(p, {1, 0, 0});
  EXPECT_NEAR(side.x, 2, 1e-12);
  EXPECT_NEAR(side.y, 3, 1e-12);
  EXPECT_NEAR(side.z, 1, 1e-12);
}

}  // namespace
}  // namespace veltor::arx

#include "arx/alias_paths.h"

namespace veltor::arx {
namespace {

TEST(AliasPaths, TheAliasPathIsTheDriveOrTheRoot) {
  EXPECT_EQ(AliasPathOf("D:\\data\\a.dwg"), "D:");
  EXPECT_EQ(AliasPathOf("/home/a.dwg"), "/");
  EXPECT_EQ(AliasPathOf("\\\\server\\share\\a.dwg"), "");
}

TEST(AliasPaths, TheLongestAliasThatEndsAtASeparatorReachesThePath) {
  std::vector<od::DriveAlias> aliases = {{"DRIVE", "D:"}, {"DATA", "d:\\Data"}, {"DA", "D:\\Da"}};
  EXPECT_EQ(ThroughAlias("D:\\data\\pipes\\a.dwg", aliases), "DATA:\\pipes\\a.dwg");
  EXPECT_EQ(ThroughAlias("D:\\other\\a.dwg", aliases), "DRIVE:\\other\\a.dwg");
  EXPECT_EQ(ThroughAlias("D:\\Dave\\a.dwg", aliases), "DRIVE:\\Dave\\a.dwg");
  EXPECT_EQ(ThroughAlias("E:\\a.dwg", aliases), std::nullopt);
  EXPECT_EQ(ThroughAlias("E:\\a.dwg", {}), std::nullopt);
}

}  // namespace
}  // namespace veltor::arx

#include "arx/break_plan.h"

namespace veltor::arx {
namespace {

TEST(BreakPlan, AnOpenCurveKeepsWhatLiesOutsideThePoints) {
  std::optional<BreakPlan> middle = PlanBreak(false, 0, 2, 1.5, 0.5);  // points in any order
  ASSERT_TRUE(middle.has_value());
  EXPECT_EQ(middle->params, (std::vector<double>{0.5, 1.5}));
  EXPECT_EQ(middle->kept, (std::vector<size_t>{0, 2}));
  EXPECT_EQ(middle->pieces, 3u);
  std::optional<BreakPlan> head = PlanBreak(false, 0, 2, 0, 1);
  ASSERT_TRUE(head.has_value());
  EXPECT_EQ(head->params, std::vector<double>{1});
  EXPECT_EQ(head->kept, std::vector<size_t>{1});
  std::optional<BreakPlan> tail = PlanBreak(false, 0, 2, 1, 2);
  ASSERT_TRUE(tail.has_value());
  EXPECT_EQ(tail->kept, std::vector<size_t>{0});
  std::optional<BreakPlan> split = PlanBreak(false, 0, 2, 1, 1);
  ASSERT_TRUE(split.has_value());
  EXPECT_EQ(split->kept, (std::vector<size_t>{0, 1}));
}

TEST(BreakPlan, RefusesABreakThatLeavesTheCurveWholeOrNothing) {
  EXPECT_FALSE(PlanBreak(false, 0, 2, 0, 2).has_value());
  EXPECT_FALSE(PlanBreak(false, 0, 2, 0, 0).has_value());
  EXPECT_FALSE(PlanBreak(false, 0, 2, 2, 2).has_value());
}

TEST(BreakPlan, AClosedCurveLosesThePartFromTheFirstPointForward) {
  std::optional<BreakPlan> forward = PlanBreak(true, 0, 6.28, 1, 2);
  ASSERT_TRUE(forward.has_value());
  EXPECT_EQ(forward->params, (std::vector<double>{1, 2}));
  EXPECT_EQ(forward->kept, std::vector<size_t>{1});
  std::optional<BreakPlan> round = PlanBreak(true, 0, 6.28, 2, 1);
  ASSERT_TRUE(round.has_value());
  EXPECT_EQ(round->params, (std::vector<double>{1, 2}));
  EXPECT_EQ(round->kept, std::vector<size_t>{0});
  std::optional<BreakPlan> opened = PlanBreak(true, 0, 6.28, 3, 3);
  ASSERT_TRUE(opened.has_value());
  EXPECT_EQ(opened->pieces, 1u);
}

}  // namespace
}  // namespace veltor::arx
