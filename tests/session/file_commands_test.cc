// OPEN, SAVE and SAVEAS: where a drawing is written and how typed paths are read.
#include <unistd.h>

#include "../drawing/dxf/test_files.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

using testing::Exists;

class FileCommandsTest : public testing::SessionFixture {
 protected:
  // The commands run with the scratch folder as the current folder, where SAVE of a new
  // drawing writes.
  void SetUp() override {
    RegisterFileCommands(session_);
    char here[4096];
    ASSERT_NE(getcwd(here, sizeof here), nullptr);
    previous_dir_ = here;
    ASSERT_EQ(chdir(dir_.path().c_str()), 0);
  }
  void TearDown() override { EXPECT_EQ(chdir(previous_dir_.c_str()), 0); }

  testing::ScratchDir dir_;
  std::string previous_dir_;
};

TEST_F(FileCommandsTest, SaveOfANewDrawingWritesItUnderItsName) {
  session_.NewDocument();
  const std::string name = session_.ActiveDocumentName();
  ASSERT_EQ(name.compare(0, 7, "Drawing"), 0) << name;
  Answer({});
  EXPECT_TRUE(session_.Execute("SAVE"));
  EXPECT_EQ(dir_.Entries(), std::vector<std::string>{name}) << out();
  EXPECT_NE(out().find("Saved " + name), std::string::npos) << out();
  EXPECT_FALSE(session_.active()->doc->modified());
  // Saved once, the drawing has a file: the next SAVE replaces it and keeps a backup.
  AddPoint();
  EXPECT_TRUE(session_.Execute("SAVE"));
  std::string stem = name.substr(0, name.rfind('.'));
  EXPECT_EQ(dir_.Entries(), (std::vector<std::string>{stem + ".bak", name}));
}

TEST_F(FileCommandsTest, PathPromptsTakeQuotedPathsWithSpaces) {
  Answer({"\"my drawing.dxf\"", ""});  // Enter keeps the drawing's own format
  EXPECT_TRUE(session_.Execute("SAVEAS"));
  EXPECT_EQ(dir_.Entries(), std::vector<std::string>{"my drawing.dxf"}) << out();

  Answer({"  \"my drawing.dxf\"  "});
  EXPECT_TRUE(session_.Execute("OPEN"));
  EXPECT_EQ(session_.ActiveDocumentName(), "my drawing.dxf") << out();

  // Without quotes the line is the path as typed.
  Answer({"plain name.dxf", ""});
  EXPECT_TRUE(session_.Execute("SAVEAS"));
  EXPECT_TRUE(Exists(dir_.File("plain name.dxf"))) << out();
}

}  // namespace
}  // namespace veltor::session
