// Saving replaces the target only once the whole file is written, keeps the previous file as
// NAME.bak, and a failed save changes nothing on disk.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

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

// A drawing of `entities` lines, big enough to cross a small file-size limit.
std::string BigDrawing(int entities) {
  std::string text = "  0\nSECTION\n  2\nENTITIES\n";
  for (int i = 0; i < entities; ++i)
    text += "  0\nLINE\n  8\n0\n 10\n" + std::to_string(i) + ".0\n 20\n0.0\n 11\n1.0\n 21\n1.0\n";
  return text + "  0\nENDSEC\n  0\nEOF\n";
}

TEST(BackupName, ReplacesTheExtensionButIsNeverTheFileItself) {
  EXPECT_EQ(BackupPathFor("/d/city.dxf"), "/d/city.bak");
  EXPECT_EQ(BackupPathFor("city"), "city.bak");
  EXPECT_EQ(BackupPathFor("/d.x/city"), "/d.x/city.bak");
  EXPECT_EQ(BackupPathFor("/d/.city"), "/d/.city.bak");
  EXPECT_EQ(BackupPathFor("/d/city.bak"), "/d/city.bak.bak");
  EXPECT_EQ(BackupPathFor("city.bak.bak"), "city.bak.bak.bak");
}

TEST(AtomicSave, FileNamedBakIsReplacedAndBackedUpBesideIt) {
  ScratchDir dir;
  std::string target = dir.File("plan.bak");
  WriteBytes(target, "old contents");
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, target);
  ASSERT_TRUE(saved.ok()) << saved.message();
  EXPECT_EQ(ReadBytes(target), kDrawing);
  EXPECT_EQ(ReadBytes(dir.File("plan.bak.bak")), "old contents");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"plan.bak", "plan.bak.bak"}));
}

TEST(AtomicSave, SavingOverTheBackupOfAnotherDrawingKeepsItsOwnBackup) {
  // "-o plan.bak" while plan.dxf is open: plan.bak is the target, its backup plan.bak.bak.
  ScratchDir dir;
  WriteBytes(dir.File("plan.dxf"), "the drawing");
  WriteBytes(dir.File("plan.bak"), "an old backup");
  auto store = Store(kDrawing);
  ASSERT_TRUE(SaveDxfAtomic(*store, dir.File("plan.bak")).ok());
  EXPECT_EQ(ReadBytes(dir.File("plan.dxf")), "the drawing");
  EXPECT_EQ(ReadBytes(dir.File("plan.bak")), kDrawing);
  EXPECT_EQ(ReadBytes(dir.File("plan.bak.bak")), "an old backup");
}

TEST(AtomicSave, BackupThatCannotBeReplacedFailsAndChangesNothing) {
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  ASSERT_EQ(mkdir(dir.File("plan.bak").c_str(), 0755), 0);
  WriteBytes(dir.File("plan.bak/keep"), "inside");
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, target);
  EXPECT_FALSE(saved.ok());
  EXPECT_EQ(ReadBytes(target), "old contents");
  EXPECT_EQ(ReadBytes(dir.File("plan.bak/keep")), "inside");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"plan.bak", "plan.dxf"}));
  unlink(dir.File("plan.bak/keep").c_str());
}

TEST(AtomicSave, SymbolicLinkIsFollowedAndStaysALink) {
  ScratchDir dir;
  ASSERT_EQ(mkdir(dir.File("real").c_str(), 0755), 0);
  WriteBytes(dir.File("real/plan.dxf"), "old contents");
  ASSERT_EQ(symlink("real/plan.dxf", dir.File("link.dxf").c_str()), 0);  // relative
  ASSERT_EQ(symlink(dir.File("link.dxf").c_str(), dir.File("chain.dxf").c_str()), 0);
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, dir.File("chain.dxf"));
  ASSERT_TRUE(saved.ok()) << saved.message();
  struct stat st;
  ASSERT_EQ(lstat(dir.File("link.dxf").c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode)) << "the link was replaced by a file";
  ASSERT_EQ(lstat(dir.File("chain.dxf").c_str(), &st), 0);
  EXPECT_TRUE(S_ISLNK(st.st_mode));
  EXPECT_EQ(ReadBytes(dir.File("real/plan.dxf")), kDrawing);
  EXPECT_EQ(ReadBytes(dir.File("real/plan.bak")), "old contents");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"chain.dxf", "link.dxf", "real"}));
  unlink(dir.File("real/plan.dxf").c_str());
  unlink(dir.File("real/plan.bak").c_str());
}

TEST(AtomicSave, LinkToAFileNotYetMadeCreatesIt) {
  ScratchDir dir;
  ASSERT_EQ(symlink("made.dxf", dir.File("link.dxf").c_str()), 0);
  auto store = Store(kDrawing);
  ASSERT_TRUE(SaveDxfAtomic(*store, dir.File("link.dxf")).ok());
  EXPECT_EQ(ReadBytes(dir.File("made.dxf")), kDrawing);
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"link.dxf", "made.dxf"}));
}

TEST(AtomicSave, LinkLoopFails) {
  ScratchDir dir;
  ASSERT_EQ(symlink("b.dxf", dir.File("a.dxf").c_str()), 0);
  ASSERT_EQ(symlink("a.dxf", dir.File("b.dxf").c_str()), 0);
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, dir.File("a.dxf"));
  EXPECT_FALSE(saved.ok());
  EXPECT_NE(saved.message().find("symbolic links"), std::string::npos) << saved.message();
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"a.dxf", "b.dxf"}));
}

TEST(AtomicSave, ReadOnlyFileIsRefusedEvenForTheSuperuser) {
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  WriteBytes(dir.File("plan.bak"), "older backup");
  ASSERT_EQ(chmod(target.c_str(), 0444), 0);
  auto store = Store(kDrawing);
  Status saved = SaveDxfAtomic(*store, target);
  EXPECT_FALSE(saved.ok());
  EXPECT_EQ(saved.message(), target + ": the file is read-only; it was not replaced");
  EXPECT_EQ(ReadBytes(target), "old contents");
  EXPECT_EQ(ReadBytes(dir.File("plan.bak")), "older backup");
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"plan.bak", "plan.dxf"}));
}

// Saves `store` over `target` in a child process whose file-size limit is `limit` bytes.
// Returns the child's exit code: 0 when the save failed with "File too large", 1 when it
// succeeded, 2 for another message; -1 when the child died (killed by SIGXFSZ).
int SaveUnderFileSizeLimit(const RecordStore& store, const std::string& target, rlim_t limit) {
  std::fflush(nullptr);
  pid_t child = fork();
  if (child == 0) {
    struct rlimit rl;
    rl.rlim_cur = limit;
    rl.rlim_max = limit;
    if (setrlimit(RLIMIT_FSIZE, &rl) != 0) _exit(3);
    Status saved = SaveDxfAtomic(store, target);
    if (saved.ok()) _exit(1);
    _exit(saved.message().find(std::strerror(EFBIG)) != std::string::npos ? 0 : 2);
  }
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return -2;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(AtomicSave, FileSizeLimitFailsTheSaveCleanly) {
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  WriteBytes(dir.File("plan.bak"), "older backup");
  WriteBytes(dir.File("plan.dxf.tmp-Zz0000"), "left by a killed save");
  std::string big = BigDrawing(2000);
  ASSERT_GT(big.size(), 20000u);
  auto store = Store(big);
  EXPECT_EQ(SaveUnderFileSizeLimit(*store, target, 8192), 0)
      << "the save must fail with EFBIG, and the process must survive";
  EXPECT_EQ(ReadBytes(target), "old contents");
  EXPECT_EQ(ReadBytes(dir.File("plan.bak")), "older backup");
  EXPECT_EQ(dir.Entries(),
            (std::vector<std::string>{"plan.bak", "plan.dxf", "plan.dxf.tmp-Zz0000"}));
  // The same save without the limit succeeds, and then removes the stale file.
  EXPECT_EQ(SaveUnderFileSizeLimit(*store, target, RLIM_INFINITY), 1);
  EXPECT_EQ(ReadBytes(target), big);
  EXPECT_EQ(dir.Entries(), (std::vector<std::string>{"plan.bak", "plan.dxf"}));
}

TEST(AtomicSave, StaleTemporaryFilesOfThisTargetAreRemoved) {
  ScratchDir dir;
  std::string target = dir.File("plan.dxf");
  WriteBytes(target, "old contents");
  WriteBytes(dir.File("plan.dxf.tmp-a1B2c3"), "left by a killed save");
  WriteBytes(dir.File("plan.dxf.tmp-a1B2c34"), "not the pattern");
  WriteBytes(dir.File("plan.dxf.tmp-a1B2c"), "not the pattern");
  WriteBytes(dir.File("other.dxf.tmp-a1B2c3"), "another drawing's");
  auto store = Store(kDrawing);
  ASSERT_TRUE(SaveDxfAtomic(*store, target).ok());
  EXPECT_EQ(dir.Entries(),
            (std::vector<std::string>{"other.dxf.tmp-a1B2c3", "plan.bak", "plan.dxf",
                                      "plan.dxf.tmp-a1B2c", "plan.dxf.tmp-a1B2c34"}));
}

}  // namespace
}  // namespace veltor::dxf
