// Saving replaces the target only once the whole file is written, keeps the previous file as
// NAME.bak, and a failed save changes nothing on disk.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "drawing/dxf/reader.h"
#include "drawing/dxf/writer.h"
#include "test_files.h"

namespace veltor::dxf {
namespace {

using testing::Exists;
using testing::ReadBytes;
using testing::ScratchDir;
using testing::WriteBytes;

const char kDrawing[] = "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n";

std::unique_ptr<RecordStore> Store(const std::string& text) {
  auto read = ParseDxf(text, "mem.dxf");
  EXPECT_TRUE(read.ok()) << read.message();
  return std::move(read->store);
}

TEST(AtomicSave, NewFileLeavesNothingElseBehind) {
  ScratchDir dir;
  auto store = Store(kDrawing);
  ASSERT_TRUE(SaveDxfAtomic(*store, dir.File("new.dxf")).ok());
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"new.dxf"});
  EXPECT_EQ(ReadBytes(dir.File("new.dxf")), kDrawing);
  struct stat st;
  ASSERT_EQ(stat(dir.File("new.dxf").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0644u) << "not the temporary file's 0600";
}

TEST(AtomicSave, PreviousFileIsKeptAsBak) {
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  chmod(target.c_str(), 0640);
  WriteBytes(dir.File("plan.bak"), "older backup");
  auto store = Store(kDrawing);
  ASSERT_TRUE(SaveDxfAtomic(*store, target).ok());
  EXPECT_EQ(ReadBytes(target), kDrawing);
  EXPECT_EQ(ReadBytes(dir.File("plan.bak")), "old contents");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"plan.bak", "plan.dxf"}));
  struct stat st;
  ASSERT_EQ(stat(target.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0640u) << "the file keeps its permissions";

  // Saving again keeps the version just replaced.
  ASSERT_TRUE(SaveDxfAtomic(*store, target).ok());
  EXPECT_EQ(ReadBytes(dir.File("plan.bak")), kDrawing);
  EXPECT_EQ(dir.Entries().size(), 2u);
}

TEST(AtomicSave, PathThatIsADirectoryFailsAndChangesNothing) {
  ScratchDir dir;
  std::string target = dir.File("drawing.dxf");
  ASSERT_EQ(mkdir(target.c_str(), 0755), 0);
  WriteBytes(dir.File("drawing.bak"), "backup");
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, target);
  EXPECT_FALSE(saved.ok());
  EXPECT_EQ(saved.message().compare(0, target.size(), target), 0) << saved.message();
  struct stat st;
  ASSERT_EQ(stat(target.c_str(), &st), 0);
  EXPECT_TRUE(S_ISDIR(st.st_mode)) << "the folder was moved or replaced";
  EXPECT_EQ(ReadBytes(dir.File("drawing.bak")), "backup");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"drawing.bak", "drawing.dxf"}));
}

TEST(AtomicSave, MissingFolderFails) {
  ScratchDir dir;
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, dir.File("no/such/drawing.dxf"));
  EXPECT_FALSE(saved.ok());
  EXPECT_TRUE(dir.Entries().empty());
}

TEST(AtomicSave, ReadOnlyFolderFailsAndChangesNothing) {
  if (geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  ASSERT_EQ(chmod(dir.path().c_str(), 0555), 0);
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, target);
  chmod(dir.path().c_str(), 0755);
  EXPECT_FALSE(saved.ok());
  EXPECT_EQ(ReadBytes(target), "old contents");
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"plan.dxf"});
}

}  // namespace
}  // namespace veltor::dxf
