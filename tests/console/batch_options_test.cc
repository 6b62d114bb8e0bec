// The batch command line: what it takes, and what it refuses before anything runs.
#include "console/batch_options.h"

#include <gtest/gtest.h>

namespace veltor::console {
namespace {

Result<BatchOptions> Parse(std::vector<const char*> args) {
  args.insert(args.begin(), "veltor");
  return ParseBatchOptions(static_cast<int>(args.size()), args.data());
}

bool IsBatch(std::vector<const char*> args) {
  args.insert(args.begin(), "veltor");
  return IsBatchCommandLine(static_cast<int>(args.size()), args.data());
}

TEST(BatchOptions, ABatchCommandLineIsOneThatSaysBatchBeforeTheEndOfOptions) {
  EXPECT_TRUE(IsBatch({"a.dxf", "--batch", "job.scr"}));
  EXPECT_FALSE(IsBatch({"a.dxf", "-s", "job.scr"}));
  EXPECT_FALSE(IsBatch({"--", "--batch"}));
}

TEST(BatchOptions, ReadsEveryOptionAndKeepsDrawingsAndListsInOrder) {
  auto o = Parse({"--batch", "job.scr", "-j", "3", "--out-dir", "out", "--report", "r.jsonl", "--resume", "a.dxf",
                  "@more.txt", "b.dxf"});
  ASSERT_TRUE(o.ok()) << o.message();
  EXPECT_EQ(o->script, "job.scr");
  EXPECT_EQ(o->jobs, 3);
  EXPECT_EQ(o->out_dir, "out");
  EXPECT_FALSE(o->in_place);
  EXPECT_EQ(o->report, "r.jsonl");
  EXPECT_TRUE(o->resume);
  EXPECT_EQ(o->inputs, (std::vector<std::string>{"a.dxf", "@more.txt", "b.dxf"}));
}

TEST(BatchOptions, DefaultsToOneWorkerPerCoreAndTakesDashedNamesAfterDoubleDash) {
  auto o = Parse({"--in-place", "--batch", "job.scr", "--", "-odd.dxf", "--resume"});
  ASSERT_TRUE(o.ok()) << o.message();
  EXPECT_EQ(o->jobs, 0);
  EXPECT_TRUE(o->in_place);
  EXPECT_FALSE(o->resume);
  EXPECT_EQ(o->inputs, (std::vector<std::string>{"-odd.dxf", "--resume"}));
}

TEST(BatchOptions, RefusesWhatCannotRunNamingTheReason) {
  struct Case {
    std::vector<const char*> args;
    const char* says;
  };
  const Case cases[] = {
      {{"--batch", "job.scr", "a.dxf"}, "either --out-dir DIR or --in-place"},
      {{"--batch", "job.scr", "--out-dir", "o", "--in-place", "a.dxf"}, "either --out-dir DIR or --in-place"},
      {{"--batch", "job.scr", "--out-dir", "o"}, "needs drawings"},
      {{"--batch", "job.scr", "--out-dir", "o", "--resume", "a.dxf"}, "--resume needs --report"},
      {{"--batch", "-", "--out-dir", "o", "a.dxf"}, "cannot share standard input"},
      {{"--batch", "job.scr", "--out-dir", "o", "-j", "0", "a.dxf"}, "from 1 to"},
      {{"--batch", "job.scr", "--out-dir", "o", "-j", "2x", "a.dxf"}, "not '2x'"},
      {{"--batch", "job.scr", "--out-dir", "o", "-o", "x.dxf", "a.dxf"}, "unknown option for --batch: -o"},
      {{"--batch", "job.scr", "--out-dir"}, "--out-dir needs a folder"},
      {{"--batch", "job.scr", "--out-dir", "", "a.dxf"}, "non-empty"},
  };
  for (const Case& c : cases) {
    auto o = Parse(c.args);
    ASSERT_FALSE(o.ok()) << c.says;
    EXPECT_NE(o.message().find(c.says), std::string::npos) << o.message();
  }
}

TEST(BatchOptions, HelpNeedsNothingElse) {
  auto o = Parse({"--batch", "job.scr", "--help"});
  ASSERT_TRUE(o.ok()) << o.message();
  EXPECT_TRUE(o->help);
}

}  // namespace
}  // namespace veltor::console
