#include "ui/command_palette.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "drawing/model/document.h"
#include "drawing/session/session.h"

namespace veltor::ui {
namespace {

// Every runnable label of the palette with its command, in display order.
const std::vector<std::pair<std::string, std::string>> kRunnable = {
    {"Copy definitions from file", "VELTOR_LOAD_DEFINITION"},
    {"Usage stats", "VELTOR_STAT"},
    {"Translate", "VELTOR_TRANSLATE"},
    {"Remove unused", "VELTOR_RMUNUSED"},
    {"Find entities with no OD", "VELTOR_HAS_NO_OD"},
    {"Find entities with OD", "VELTOR_HAS_OD"},
    {"Find entities with duplicate OD", "VELTOR_HAS_DUPLICATE_OD"},
    {"Find entities with multiple OD", "VELTOR_HAS_MULTIPLE_OD"},
    {"Find entities with no specific OD", "VELTOR_HAS_NO_SPECIFIC_OD"},
    {"Find entities with specific OD", "VELTOR_HAS_SPECIFIC_OD"},
    {"Find entities with specific OD values", "VELTOR_HAS_SPECIFIC_VALUES"},
    {"Attach/detach", "VELTOR_ADEATTACHDATA"},
    {"Detach all", "VELTOR_RM_ALL"},
    {"Detach specified", "VELTOR_RM"},
    {"Detach duplicate", "VELTOR_REMOVE_DUPLICATE_OD"},
    {"Copy OD from reference", "VELTOR_COPY_OD"},
    {"Copy OD/values from reference", "VELTOR_COPY_OD_VALUE"},
    {"Copy properties/OD from reference", "VELTOR_COPY_ALL"},
    {"Copy properties/OD/values from reference", "VELTOR_COPY_ALL_VALUE"},
    {"Copy values from reference", "VELTOR_COPY_VALUE"},
    {"Set from XYZ", "VELTOR_SETXYZ"},
    {"Set from geometric properties", "VELTOR_SETPROP"},
    {"Set from text", "VELTOR_SETTEXT"},
    {"Set from attributes", "VELTOR_LOAD_ATTRS"},
    {"Upload to attributes", "VELTOR_STORE_ATTRS"},
    {"Create IDs", "VELTOR_SETID"},
    {"Replace", "VELTOR_REPLACE"},
    {"Add from field in field", "VELTOR_ADDVAL"},
    {"Add values from OD to OD", "VELTOR_ADDVAL_OD2OD"},
    {"Covert to 2D polylines", "VELTOR_2POLY"},
    {"Convert to 3D polylines", "VELTOR_23DPOLY"},
    {"Break", "VELTOR_BREAK"},
    {"Explication", "VELTOR_EXPL"},
    {"OD table", "VELTOR_TABLE"},
    {"About", "VELTOR_ABOUT"},
};

const std::vector<std::string> kGroups = {"OD management",      "Search OD",       "Attach/detach OD",
                                          "Copy OD",            "Set/edit OD values",
                                          "Modify entities",    "Export/import"};

// --- the shipped tree ---------------------------------------------------------------------------

TEST(CommandMenu, GroupsThenTwoLeavesAtTheTopLevel) {
  const MenuTree& tree = CommandMenu();
  ASSERT_EQ(tree.size(), kGroups.size() + 2);
  for (size_t i = 0; i < kGroups.size(); ++i) {
    EXPECT_EQ(tree[i].label, kGroups[i]);
    EXPECT_FALSE(tree[i].entries.empty()) << kGroups[i];
    EXPECT_TRUE(tree[i].command.empty()) << kGroups[i];
    EXPECT_TRUE(tree[i].children.empty()) << kGroups[i];
  }
  EXPECT_EQ(tree[7].label, "OD table");
  EXPECT_EQ(tree[7].command, "VELTOR_TABLE");
  EXPECT_TRUE(tree[7].entries.empty());
  EXPECT_EQ(tree[8].label, "About");
  EXPECT_EQ(tree[8].command, "VELTOR_ABOUT");
  EXPECT_TRUE(tree[8].entries.empty());
}

TEST(CommandMenu, EntriesAppearInDisplayOrderWithTheirCommands) {
  std::vector<std::pair<std::string, std::string>> shown;
  for (const MenuGroup& group : CommandMenu()) {
    for (const MenuEntry& entry : group.entries) shown.emplace_back(entry.label, entry.command);
    if (group.entries.empty()) shown.emplace_back(group.label, group.command);
  }
  EXPECT_EQ(shown, kRunnable);
}

TEST(CommandMenu, EveryLabelFindsItsCommand) {
  for (const auto& [label, command] : kRunnable)
    EXPECT_EQ(FindCommand(CommandMenu(), label), command) << label;
  EXPECT_EQ(FindCommand(CommandMenu(), "Convert to 2D polylines"), std::nullopt);
}

TEST(CommandMenu, GroupLabelsAndUnknownLabelsFindNothing) {
  for (const std::string& group : kGroups)
    EXPECT_EQ(FindCommand(CommandMenu(), group), std::nullopt) << group;
  EXPECT_EQ(FindCommand(CommandMenu(), "usage stats"), std::nullopt);  // exact comparison
  EXPECT_EQ(FindCommand(CommandMenu(), ""), std::nullopt);
}

// --- lookup rules on a small tree -----------------------------------------------------------------

MenuTree NestedTree() {
  MenuGroup inner{"Inner", "", {{"INNER_A", "A"}}, {}};
  MenuGroup leaf{"Solo", "SOLO", {}, {}};
  MenuGroup outer{"Outer", "", {{"OUTER_B", "B"}}, {inner, leaf}};
  MenuGroup later{"Later", "", {{"LATER_A", "A"}, {"LATER_B", "B"}}, {}};
  return {outer, later};
}

TEST(FindCommand, FirstMatchInDepthFirstOrderWins) {
  MenuTree tree = NestedTree();
  EXPECT_EQ(FindCommand(tree, "A"), "INNER_A");  // a child group before a later top group
  EXPECT_EQ(FindCommand(tree, "B"), "OUTER_B");  // a group's own entries before its children
  EXPECT_EQ(FindCommand(tree, "Solo"), "SOLO");  // a nested leaf
}

TEST(FindCommand, GroupWithEntriesDoesNotMatchItsOwnLabel) {
  MenuTree tree = NestedTree();
  EXPECT_EQ(FindCommand(tree, "Later"), std::nullopt);
  EXPECT_EQ(FindCommand(tree, "Inner"), std::nullopt);
}

// --- numbered text form -----------------------------------------------------------------------------

TEST(NumberedMenu, NumbersEveryRunnableLabelAndIndentsEntries) {
  std::vector<MenuLine> lines = NumberedMenu(CommandMenu());
  ASSERT_EQ(lines.size(), kGroups.size() + kRunnable.size());
  EXPECT_EQ(lines[0].text, "OD management");
  EXPECT_EQ(lines[0].number, 0);
  EXPECT_EQ(lines[1].text, "   1  Copy definitions from file");
  EXPECT_EQ(lines[2].text, "   2  Usage stats");
  EXPECT_EQ(lines[5].text, "Search OD");
  EXPECT_EQ(lines[lines.size() - 2].text, "34  OD table");
  EXPECT_EQ(lines.back().text, "35  About");
  int expected = 0;
  for (const MenuLine& line : lines)
    if (line.number != 0) {
      EXPECT_EQ(line.number, ++expected);
    }
}

TEST(NumberedMenu, NumbersMapBackToLabels) {
  for (size_t i = 0; i < kRunnable.size(); ++i)
    EXPECT_EQ(LabelOfNumber(CommandMenu(), static_cast<int>(i + 1)), kRunnable[i].first);
  EXPECT_EQ(LabelOfNumber(CommandMenu(), 0), std::nullopt);
  EXPECT_EQ(LabelOfNumber(CommandMenu(), 36), std::nullopt);
}

TEST(NumberedMenu, NestedGroupsShowChildrenBeforeEntries) {
  std::vector<std::string> texts;
  for (const MenuLine& line : NumberedMenu(NestedTree())) texts.push_back(line.text);
  EXPECT_EQ(texts, (std::vector<std::string>{"Outer", "  Inner", "    1  A", "  2  Solo", "  3  B",
                                             "Later", "  4  A", "  5  B"}));
}

// --- running a label in the embedded host -------------------------------------------------------

class RunLabelTest : public ::testing::Test {
 protected:
  RunLabelTest() : session_([this](std::string_view text) { out_ += text; }) {
    session_.AddDocument(model::Document::NewBlank("AC1027"), "t.dxf");
  }

  std::string out_;
  session::Session session_;
};

TEST_F(RunLabelTest, EntryQueuesItsCommandWithALineEnd) {
  RunLabel(session_, "Usage stats");
  ASSERT_EQ(session_.queue().size(), 1u);
  EXPECT_EQ(session_.queue().front(), "VELTOR_STAT\n");
}

TEST_F(RunLabelTest, LeafQueuesItsOwnCommand) {
  RunLabel(session_, "OD table");
  ASSERT_EQ(session_.queue().size(), 1u);
  EXPECT_EQ(session_.queue().front(), "VELTOR_TABLE\n");
}

TEST_F(RunLabelTest, GroupAndUnknownLabelsQueueNothing) {
  RunLabel(session_, "Search OD");
  RunLabel(session_, "Nothing like this");
  EXPECT_TRUE(session_.queue().empty());
}

TEST_F(RunLabelTest, GroupWithChildrenButNoEntriesRunsNothing) {
  MenuTree tree = {{"Parent", "PARENT", {}, {{"Child", "CHILD", {}, {}}}}};
  RunLabel(session_, tree, "Parent");
  EXPECT_TRUE(session_.queue().empty());
  RunLabel(session_, tree, "Child");
  ASSERT_EQ(session_.queue().size(), 1u);
  EXPECT_EQ(session_.queue().front(), "CHILD\n");
}

// Choosing a label while a command waits at a prompt cancels that command first, whether the
// label runs anything or not; the chosen command then runs from the queue.
class RunLabelDuringCommand : public RunLabelTest,
                              public ::testing::WithParamInterface<std::string> {};

TEST_P(RunLabelDuringCommand, CancelsTheRunningCommand) {
  auto command = [](const std::string& name) {
    od::CommandInfo info;
    info.group = "TEST";
    info.global_name = info.local_name = name;
    return info;
  };
  int stat_runs = 0;
  ASSERT_TRUE(session_.AddCommand(command("VELTOR_STAT"), [&] { ++stat_runs; }).ok());
  od::PromptStatus status = od::PromptStatus::kOk;
  ASSERT_TRUE(session_
                  .AddCommand(command("WAITER"),
                              [&] {
                                RunLabel(session_, GetParam());
                                status = session_.Ed().GetString("Anything: ", false).status;
                              })
                  .ok());
  session::LinesInput input({"answer"}, nullptr);
  session_.SetInput(&input);
  ASSERT_TRUE(session_.Execute("WAITER"));
  EXPECT_EQ(status, od::PromptStatus::kCancel);
  EXPECT_FALSE(input.exhausted());  // the prompt never read its line

  const bool runs = GetParam() == "Usage stats";
  EXPECT_EQ(session_.queue().size(), runs ? 1u : 0u);
  session_.RunQueue();
  EXPECT_EQ(stat_runs, runs ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Labels, RunLabelDuringCommand,
                         ::testing::Values("Usage stats", "OD management"));

}  // namespace
}  // namespace veltor::ui
