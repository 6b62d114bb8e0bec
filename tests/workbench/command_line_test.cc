// The command line dock: commands run on the main thread while their prompts wait in a
// nested event loop, scripts answer prompts line by line, Escape and the command palette
// cancel what runs.
#include <cstdio>

#include <QLineEdit>
#include <QTreeWidget>

#include "workbench/command_palette_dock.h"
#include "workbench/drawing_view.h"
#include "workbench_fixture.h"

namespace veltor::workbench {
namespace {

const std::string kCity = VELTOR_SOURCE_DIR "/examples/city.dxf";

// Types a line into the command line's input and presses Enter.
void Enter(MainWindow& window, const QString& text) {
  QLineEdit* input = window.command_line().input();
  input->setText(text);
  emit input->returnPressed();
}

class CommandLineTest : public WorkbenchTest {
 protected:
  void SetUp() override {
    WorkbenchTest::SetUp();
    ASSERT_TRUE(window().OpenDrawing(kCity).ok());
  }
};

TEST_F(CommandLineTest, APromptWaitsInANestedLoopUntilTheLineIsEntered) {
  std::string waiting_prompt;
  bool was_running = false;
  Later([&] {
    waiting_prompt = window().input().prompt();
    was_running = window().session().command_running();
    Enter(window(), "");  // Enter: all of model space
  });
  Enter(window(), "VELTOR_HAS_OD");

  EXPECT_EQ(waiting_prompt, "Select objects: ");
  EXPECT_TRUE(was_running);
  EXPECT_FALSE(window().session().command_running());
  const std::string history = History();
  EXPECT_NE(history.find("Command: VELTOR_HAS_OD\nSelect objects: \nSelected: 276"), std::string::npos)
      << history;
  // The entities found are the pickfirst set, drawn highlighted.
  EXPECT_EQ(window().session().active()->pickfirst.size(), 276u);
}

TEST_F(CommandLineTest, AScriptAnswersPromptsLineByLine) {
  window().driver().RunScript({"VELTOR_HAS_OD", "", "VELTOR_HAS_MULTIPLE_OD"});
  const std::string history = History();
  EXPECT_NE(history.find("Selected: 276"), std::string::npos) << history;
  // The second command takes the pickfirst set the first one left, as in the console.
  EXPECT_NE(history.find("Command: VELTOR_HAS_MULTIPLE_OD\nSelected: 25"), std::string::npos) << history;
  EXPECT_FALSE(window().input().has_queued());
}

TEST_F(CommandLineTest, AScriptStopsAtARefusedLine) {
  window().driver().RunScript({"NO_SUCH_COMMAND", "VELTOR_HAS_OD", ""});
  const std::string history = History();
  EXPECT_NE(history.find("Unknown command \"NO_SUCH_COMMAND\""), std::string::npos) << history;
  EXPECT_NE(history.find("Script stopped"), std::string::npos) << history;
  EXPECT_EQ(history.find("Selected:"), std::string::npos) << history;
}

TEST_F(CommandLineTest, EscapeCancelsTheWaitingCommand) {
  Later([&] { window().driver().Escape(); });
  Enter(window(), "VELTOR_HAS_OD");
  const std::string history = History();
  // The module reports a cancelled selection as an empty one.
  EXPECT_NE(history.find("Select objects: *Cancel*\nSelected: 0"), std::string::npos) << history;
  EXPECT_FALSE(window().session().command_running());
  EXPECT_TRUE(window().session().active()->pickfirst.empty());
}

TEST_F(CommandLineTest, ZoomAtTheCommandLineMovesTheView) {
  DrawingView& view = window().view();
  window().driver().RunScript({"ZOOM", "W", "10,20", "30,60"});
  EXPECT_DOUBLE_EQ(view.center().x, 20);
  EXPECT_DOUBLE_EQ(view.center().y, 40);
  const double window_scale = view.scale();

  window().driver().RunScript({"ZOOM", "E"});
  EXPECT_LT(view.scale(), window_scale);  // the whole town is larger than the window

  // Object: the box around what is chosen, here one circle.
  std::optional<od::Box3> circle = window().session().active()->database.GeomExtents(0x17D);
  ASSERT_TRUE(circle);
  window().driver().RunScript({"ZOOM", "O", "17D", ""});
  EXPECT_NEAR(view.center().x, (circle->min.x + circle->max.x) / 2, 1e-9);
  EXPECT_NEAR(view.center().y, (circle->min.y + circle->max.y) / 2, 1e-9);
}

TEST_F(CommandLineTest, TheGisExchangeRunsAtTheCommandLine) {
  const std::string out = ::testing::TempDir() + "workbench-city.gpkg";
  std::remove(out.c_str());
  window().driver().RunScript({"ODEXPORT", out, "", "Roads"});
  const std::string history = History();
  EXPECT_NE(history.find("Exported: 54 features in 1 layer."), std::string::npos) << history;
  std::remove(out.c_str());
}

QTreeWidgetItem* Item(QTreeWidget* tree, const QString& label) {
  QList<QTreeWidgetItem*> found = tree->findItems(label, Qt::MatchExactly | Qt::MatchRecursive);
  return found.isEmpty() ? nullptr : found.front();
}

TEST_F(CommandLineTest, ADoubleClickInThePaletteRunsItsCommand) {
  QTreeWidget* tree = window().palette_dock()->tree();
  QTreeWidgetItem* item = Item(tree, "Find entities with OD");
  ASSERT_NE(item, nullptr);
  Later([&] { Enter(window(), ""); });
  emit tree->itemDoubleClicked(item, 0);
  const std::string history = History();
  EXPECT_NE(history.find("Command: VELTOR_HAS_OD\nSelect objects: \nSelected: 276"), std::string::npos)
      << history;
}

TEST_F(CommandLineTest, ADoubleClickOnAGroupCancelsTheRunningCommandAndRunsNothing) {
  QTreeWidget* tree = window().palette_dock()->tree();
  QTreeWidgetItem* group = Item(tree, "Search OD");
  ASSERT_NE(group, nullptr);
  Later([&] { emit tree->itemDoubleClicked(group, 0); });
  Enter(window(), "VELTOR_HAS_OD");
  const std::string history = History();
  EXPECT_NE(history.find("Select objects: *Cancel*\nSelected: 0"), std::string::npos) << history;
  EXPECT_EQ(Count(history, "Command: "), 1u) << history;
  EXPECT_FALSE(window().session().command_running());
}

TEST_F(CommandLineTest, ADoubleClickWhileACommandWaitsRunsTheNewCommandAfterIt) {
  QTreeWidget* tree = window().palette_dock()->tree();
  QTreeWidgetItem* item = Item(tree, "Find entities with multiple OD");
  ASSERT_NE(item, nullptr);
  Later([&] {
    emit tree->itemDoubleClicked(item, 0);
    Later([&] { Enter(window(), ""); });  // answers the new command's prompt
  });
  Enter(window(), "VELTOR_HAS_OD");
  const std::string history = History();
  const size_t cancelled = history.find("*Cancel*");
  const size_t second = history.find("Command: VELTOR_HAS_MULTIPLE_OD");
  ASSERT_NE(cancelled, std::string::npos) << history;
  ASSERT_NE(second, std::string::npos) << history;
  EXPECT_LT(cancelled, second);
  EXPECT_NE(history.find("Selected: 25"), std::string::npos) << history;
}

}  // namespace
}  // namespace veltor::workbench
