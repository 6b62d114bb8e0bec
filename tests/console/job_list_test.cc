// The drawings of a batch: list files, and where each result goes (or why it cannot go).
#include "console/job_list.h"

#include <gtest/gtest.h>

#include "../drawing/dxf/test_files.h"

namespace veltor::console {
namespace {

TEST(JobList, AListHasOnePathALineWithLineEndsAndBlankLinesDropped) {
  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("list.txt"), "a.dxf\r\n\n  \nsub/b c.dxf \n/abs/d.dxf");
  auto paths = ReadPathList(dir.File("list.txt"));
  ASSERT_TRUE(paths.ok()) << paths.message();
  EXPECT_EQ(*paths, (std::vector<std::string>{"a.dxf", "sub/b c.dxf ", "/abs/d.dxf"}));
}

TEST(JobList, ListsAreExpandedInPlaceAndAMissingListIsNamed) {
  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("list.txt"), "b.dxf\nc.dxf\n");
  auto inputs = ExpandInputs({"a.dxf", "@" + dir.File("list.txt"), "d.dxf", "@"});
  ASSERT_TRUE(inputs.ok()) << inputs.message();
  EXPECT_EQ(*inputs, (std::vector<std::string>{"a.dxf", "b.dxf", "c.dxf", "d.dxf", "@"}));

  auto missing = ExpandInputs({"@" + dir.File("nope.txt")});
  ASSERT_FALSE(missing.ok());
  EXPECT_NE(missing.message().find("nope.txt"), std::string::npos) << missing.message();
}

TEST(JobList, EachResultIsTheOutputFolderAndTheFileName) {
  auto jobs = PlanJobs({"x/a.dxf", "b.dxf", "/abs/y/c.dxf"}, "out/", false);
  ASSERT_TRUE(jobs.ok()) << jobs.message();
  ASSERT_EQ(jobs->size(), 3u);
  EXPECT_EQ((*jobs)[0].output, "out/a.dxf");
  EXPECT_EQ((*jobs)[1].output, "out/b.dxf");
  EXPECT_EQ((*jobs)[2].output, "out/c.dxf");
  auto in_place = PlanJobs({"x/a.dxf"}, "", true);
  ASSERT_TRUE(in_place.ok());
  EXPECT_EQ((*in_place)[0].output, "x/a.dxf");
}

TEST(JobList, RefusesResultsThatWouldOverwriteEachOtherOrTheInput) {
  auto clash = PlanJobs({"x/a.dxf", "b.dxf", "y/a.dxf"}, "out", false);
  ASSERT_FALSE(clash.ok());
  EXPECT_EQ(clash.message(), "x/a.dxf and y/a.dxf have the same file name; their results would both be out/a.dxf");
  // In place, the same file name in two folders is two different files.
  EXPECT_TRUE(PlanJobs({"x/a.dxf", "y/a.dxf"}, "", true).ok());

  auto twice = PlanJobs({"a.dxf", "a.dxf"}, "", true);
  ASSERT_FALSE(twice.ok());
  EXPECT_EQ(twice.message(), "a.dxf: listed twice");
  EXPECT_FALSE(PlanJobs({"dir/"}, "out", false).ok());

  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("a.dxf"), "0\nEOF\n");
  auto itself = PlanJobs({dir.File("a.dxf")}, dir.path(), false);
  ASSERT_FALSE(itself.ok());
  EXPECT_NE(itself.message().find("would replace the drawing itself"), std::string::npos) << itself.message();
}

TEST(JobList, AStampChangesWithTheFileAndIsMissingForNoFile) {
  testing::ScratchDir dir;
  testing::WriteBytes(dir.File("a.dxf"), "0\nEOF\n");
  FileStamp first = StampOf(dir.File("a.dxf"));
  EXPECT_EQ(first.size, 6);
  testing::WriteBytes(dir.File("a.dxf"), "0\nEOF\n\n");
  EXPECT_FALSE(StampOf(dir.File("a.dxf")) == first);
  EXPECT_EQ(StampOf(dir.File("none.dxf")).size, -1);
}

}  // namespace
}  // namespace veltor::console
