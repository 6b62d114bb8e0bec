// Opening drawings in the workbench: a broken file is reported and changes nothing.
#include <QTabBar>

#include "workbench_fixture.h"

namespace veltor::workbench {
namespace {

TEST_F(WorkbenchTest, ABrokenDrawingGivesAMessageAndLeavesTheOpenOnesAlone) {
  ASSERT_TRUE(window().OpenDrawing(VELTOR_SOURCE_DIR "/tests/data/small.dxf").ok());
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
  ASSERT_TRUE(window().OpenDrawing(VELTOR_SOURCE_DIR "/tests/data/small.dxf").ok());
  EXPECT_EQ(window().session().document_count(), 1u);
  EXPECT_EQ(window().session().active()->name, "small.dxf");
}

}  // namespace
}  // namespace veltor::workbench
