// The module shell: entry point messages, registration order and flags, the LISP function,
// the command wrapper.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>

#include "app/command_table.h"
#include "app/veltor_app.h"
#include "drawing/session/session.h"
#include "ui/command_palette.h"

namespace veltor::app {
namespace {

class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() : session_([this](std::string_view t) { out_ += t; }) {
    session_.AddDocument(model::Document::NewBlank("AC1027"), "test.dxf");
  }
  ~ModuleTest() override { session_.UnloadModules(); }
  void Load() { session_.LoadModule(AcrxEntryPoint); }
  std::vector<od::CommandInfo> Group(const std::string& group) {
    std::vector<od::CommandInfo> out;
    for (const od::CommandInfo& c : session_.Commands())
      if (c.group == group) out.push_back(c);
    return out;
  }
  std::string out_;
  session::Session session_;
};

TEST_F(ModuleTest, RegistersTheCommandsInOrderWithTheirFlags) {
  Load();
  std::vector<od::CommandInfo> veltor = Group("VELTOR");
  ASSERT_EQ(veltor.size(), 38u);
  EXPECT_EQ(veltor.front().global_name, "VELTOR_PSEL");
  EXPECT_EQ(veltor[2].global_name, "VELTOR_LOAD_DEFINITION");
  EXPECT_EQ(veltor.back().global_name, "VELTOR_ATTR_TEMPLATE");
  std::set<std::string> names;
  for (const od::CommandInfo& c : veltor) {
    EXPECT_EQ(c.local_name, c.global_name);
    EXPECT_TRUE(names.insert(c.global_name).second) << c.global_name << " twice";
    EXPECT_EQ(c.flags, c.global_name == "VELTOR_LOAD_DEFINITION" ? 0 : 7) << c.global_name;
  }
  std::vector<od::CommandInfo> mine = Group("MyGroup");
  ASSERT_EQ(mine.size(), 3u);
  EXPECT_EQ(mine[0].local_name, "MyCommandLocal");
  EXPECT_EQ(mine[1].flags, od::kCmdUsePickSet);
  EXPECT_EQ(mine[2].flags, 0x200000);
  EXPECT_TRUE(session_.application_unlocked());
  EXPECT_TRUE(session_.mdi_aware());
}

TEST_F(ModuleTest, PaletteLabelsKeepTheirSpelling) {
  int labelled = 0;
  for (const CommandEntry& c : CommandTable()) {
    if (c.label) ++labelled;
    if (std::string(c.name) == "VELTOR_2POLY") {
      EXPECT_STREQ(c.label, "Covert to 2D polylines");
    }
  }
  EXPECT_EQ(labelled, 35);  // all but VELTOR_PSEL, VELTOR_CTL and VELTOR_ATTR_TEMPLATE
}

TEST_F(ModuleTest, PaletteAndHelpShowWhatTheCommandTableSays) {
  // Every runnable label of the palette is the label of its command's row, and every labelled
  // row is on the palette once.
  std::map<std::string, std::string> label_of;
  for (const CommandEntry& c : CommandTable())
    if (c.label) label_of[c.name] = c.label;
  size_t shown = 0;
  for (const ui::MenuLine& line : ui::NumberedMenu(ui::CommandMenu())) {
    if (line.number == 0) continue;
    std::optional<std::string> command = ui::FindCommand(ui::CommandMenu(), line.label);
    ASSERT_TRUE(command) << line.label;
    EXPECT_EQ(label_of[*command], line.label);
    ++shown;
  }
  EXPECT_EQ(shown, label_of.size());
  // HELP reads the summaries the module registered from the same rows.
  Load();
  std::vector<od::CommandInfo> registered = Group("VELTOR");
  ASSERT_EQ(registered.size(), CommandTable().size());
  for (size_t i = 0; i < registered.size(); ++i)
    EXPECT_EQ(registered[i].summary, CommandTable()[i].summary) << registered[i].global_name;
}

TEST_F(ModuleTest, UnloadRemovesBothGroupsAndNeedsNoPalette) {
  Load();
  session_.UnloadModules();
  EXPECT_TRUE(Group("VELTOR").empty());
  EXPECT_TRUE(Group("MyGroup").empty());
  EXPECT_EQ(TheApp().host(), nullptr);
  EXPECT_EQ(TheApp().command_palette(), nullptr);
}

TEST_F(ModuleTest, MessagesAboveFifteenDoNothing) {
  EXPECT_EQ(AcrxEntryPoint(16, nullptr), 0);
  EXPECT_EQ(AcrxEntryPoint(1000, nullptr), 0);
  EXPECT_EQ(AcrxEntryPoint(-1, nullptr), 0);
  EXPECT_EQ(TheApp().host(), nullptr);  // nothing initialised
}

TEST_F(ModuleTest, MyLispFunctionAnswersNormallyAndDoesNothing) {
  Load();
  session_.NewDocument();  // each drawing defines the function
  EXPECT_TRUE(session_.CallLisp("(MyLispFunction)"));
  EXPECT_EQ(out_, "nil\n");
  EXPECT_EQ(CVeltorApp::LispFunctions()[0].handler(), od::kRtNorm);
}

TEST_F(ModuleTest, EveryCommandIsBuiltAndOneWithoutAHandlerWouldSaySo) {
  for (const CommandEntry& command : CommandTable())
    EXPECT_NE(command.handler, nullptr) << command.name << " has no handler";
  Load();
  WrapHandler(session_, "VELTOR_SOMETHING", nullptr)();
  EXPECT_EQ(out_, "Error: VELTOR_SOMETHING is not available in this build.\n");
}

}  // namespace
}  // namespace veltor::app
