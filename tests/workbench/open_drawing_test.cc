// Drawings in the workbench: opening (a broken file is reported and changes nothing), saving
// through the engine's atomic save, closing with unsaved changes, palettes and file filters.
#include <QDockWidget>
#include <QFile>
#include <QTabBar>
#include <QTemporaryDir>
#include <filesystem>

#include "ui/command_palette.h"
#include "workbench/command_palette_dock.h"
#include "workbench/workbench_ui.h"
#include "workbench_fixture.h"

namespace veltor::workbench {
namespace {

const std::string kSmall = VELTOR_SOURCE_DIR "/tests/data/small.dxf";

TEST_F(WorkbenchTest, ABrokenDrawingGivesAMessageAndLeavesTheOpenOnesAlone) {
  ASSERT_TRUE(window().OpenDrawing(kSmall).ok());
  const size_t before = window().session().document_count();
  std::string message;
  AnswerMessageBox(&message);
  window().OpenDrawingAndReport(VELTOR_SOURCE_DIR "/tests/data/broken/truncated_mid_tag.dxf");
  EXPECT_NE(message.find("truncated_mid_tag.dxf"), std::string::npos) << message;
  EXPECT_EQ(window().session().document_count(), before);
  EXPECT_EQ(window().tabs().count(), static_cast<int>(before));
  EXPECT_EQ(window().session().active()->name, "small.dxf");
  EXPECT_NE(History().find("Error: "), std::string::npos);
}

TEST_F(WorkbenchTest, TheFirstDrawingOpenedReplacesAnUntouchedNewOne) {
  window().session().NewDocument();
  window().SyncWithSession();
  ASSERT_TRUE(window().OpenDrawing(kSmall).ok());
  EXPECT_EQ(window().session().document_count(), 1u);
  EXPECT_EQ(window().session().active()->name, "small.dxf");
}

TEST_F(WorkbenchTest, SavingWritesTheDrawingAndKeepsTheOldFile) {
  QTemporaryDir dir;
  const std::string path = dir.filePath("copy.dxf").toStdString();
  ASSERT_TRUE(std::filesystem::copy_file(kSmall, path));
  ASSERT_TRUE(window().OpenDrawing(path).ok());
  window().session().active()->doc->MarkModified();
  window().SyncWithSession();
  EXPECT_EQ(window().tabs().tabText(0), "copy.dxf*");

  const std::string renamed = dir.filePath("renamed.dxf").toStdString();
  ASSERT_TRUE(window().SaveActive(renamed).ok());
  EXPECT_EQ(window().tabs().tabText(0), "renamed.dxf");
  EXPECT_FALSE(window().session().active()->doc->modified());
  EXPECT_TRUE(model::Document::Open(renamed).ok());
  ASSERT_TRUE(window().SaveActive(renamed).ok());
  EXPECT_TRUE(std::filesystem::exists(dir.filePath("renamed.bak").toStdString()));

  // A folder that does not exist: the save fails, says so, and the drawing stays modified.
  window().session().active()->doc->MarkModified();
  EXPECT_FALSE(window().SaveActive(dir.filePath("no/such/folder.dxf").toStdString()).ok());
  EXPECT_TRUE(window().session().active()->doc->modified());
  EXPECT_NE(History().find("Error: "), std::string::npos);
}

TEST_F(WorkbenchTest, ClosingWithUnsavedChangesAsksFirst) {
  ASSERT_TRUE(window().OpenDrawing(kSmall).ok());
  window().show();
  window().session().active()->doc->MarkModified();
  std::string question;
  PressInMessageBox(QMessageBox::Cancel, &question);
  EXPECT_FALSE(window().close());
  EXPECT_NE(question.find("small.dxf"), std::string::npos) << question;
  EXPECT_EQ(window().session().document_count(), 1u);

  PressInMessageBox(QMessageBox::Discard, &question);
  EXPECT_TRUE(window().close());
}

class ForeignPalette : public od::Palette {
 public:
  std::string Name() const override { return "SOMETHING_ELSE"; }
};

TEST_F(WorkbenchTest, PalettesTheWorkbenchKnowsAreShownAsDocks) {
  window().show();
  window().palette_dock()->hide();
  ui::CommandPalette commands;
  WorkbenchUi& ui = static_cast<WorkbenchUi&>(window().session().Ui());
  EXPECT_TRUE(ui.ShowPalette(commands));
  EXPECT_TRUE(window().palette_dock()->isVisible());
  ForeignPalette other;
  EXPECT_FALSE(ui.ShowPalette(other));
  // VELTOR_CTL from the command line shows the same dock.
  window().palette_dock()->hide();
  window().driver().Type("VELTOR_CTL");
  EXPECT_TRUE(window().palette_dock()->isVisible());
}

TEST(QtFileFilter, PairsOfDescriptionAndPatternsBecomeQtFilters) {
  EXPECT_EQ(QtFileFilter("CSV files (*.csv)|*.csv||").toStdString(), "CSV files (*.csv)");
  EXPECT_EQ(QtFileFilter("Drawings (*.dxf;*.dwg)|*.dxf;*.dwg|All files|*.*||").toStdString(),
            "Drawings (*.dxf *.dwg);;All files (*.*)");
  EXPECT_EQ(QtFileFilter("").toStdString(), "");
}

}  // namespace
}  // namespace veltor::workbench
