// Real files written by other programs come back unchanged, and records written from their
// tags read back as the same tags.
#include <gtest/gtest.h>

#include "drawing/dxf/binary_values.h"
#include "drawing/dxf/reader.h"
#include "drawing/dxf/writer.h"
#include "test_files.h"

namespace veltor::dxf {
namespace {

using testing::CorpusDir;
using testing::FilesIn;
using testing::ReadBytes;
using testing::WriteToString;

TEST(CorpusRoundTrip, EveryFileIsWrittenBackByteForByte) {
  VELTOR_NEEDS_CORPUS();
  std::vector<std::string> names = FilesIn(CorpusDir(), ".dxf");
  ASSERT_GE(names.size(), 70u) << "corpus missing at " << CorpusDir();
  std::vector<std::string> failed;
  for (const std::string& name : names) {
    std::string original = ReadBytes(CorpusDir() + "/" + name);
    auto read = ParseDxf(original, name);
    if (!read.ok()) {
      failed.push_back(name + " (does not load: " + read.message() + ")");
      continue;
    }
    std::string written = WriteToString(*read->store);
    if (written != original) {
      size_t at = 0;
      while (at < written.size() && at < original.size() && written[at] == original[at]) ++at;
      failed.push_back(name + " (differs from byte " + std::to_string(at) + ")");
    }
  }
  EXPECT_TRUE(failed.empty()) << ::testing::PrintToString(failed);
}

// Marks every record changed so the writer formats all of it from tags.
std::string RewriteAll(RecordStore& store) {
  for (RecordId id = store.first(); id != kNoRecord; id = store.at(id).next) store.MutableTags(id);
  return WriteToString(store);
}

// Binary values are stored in their shortest exact text, so re-encoding every tag must give
// the very same bytes: any lost precision, wrong width or wrong code type shows here.
TEST(CorpusRoundTrip, BinaryFilesRewrittenFromTagsAreIdentical) {
  VELTOR_NEEDS_CORPUS();
  int binary_files = 0;
  for (const std::string& name : FilesIn(CorpusDir(), ".dxf")) {
    std::string original = ReadBytes(CorpusDir() + "/" + name);
    if (original.compare(0, kBinarySentinelSize, std::string(kBinarySentinel, kBinarySentinelSize)) != 0)
      continue;
    ++binary_files;
    auto read = ParseDxf(original, name);
    ASSERT_TRUE(read.ok()) << read.message();
    EXPECT_TRUE(RewriteAll(*read->store) == original) << name;
  }
  EXPECT_GE(binary_files, 6);
}

// ASCII code alignment varies between writers, so compare what the rewritten file reads as.
TEST(CorpusRoundTrip, AsciiFilesRewrittenFromTagsReadBackAsTheSameTags) {
  VELTOR_NEEDS_CORPUS();
  for (const std::string& name : FilesIn(CorpusDir(), ".dxf")) {
    std::string original = ReadBytes(CorpusDir() + "/" + name);
    if (original.size() > 250000 || original.compare(0, 18, "AutoCAD Binary DXF") == 0) continue;
    auto before = ParseDxf(original, name);
    ASSERT_TRUE(before.ok()) << before.message();
    std::string rewritten = RewriteAll(*before->store);
    auto after = ParseDxf(rewritten, name + " rewritten");
    ASSERT_TRUE(after.ok()) << after.message();
    const RecordStore& a = *before->store;
    const RecordStore& b = *after->store;
    ASSERT_EQ(a.size(), b.size()) << name;
    RecordId x = a.first(), y = b.first();
    for (; x != kNoRecord && y != kNoRecord; x = a.at(x).next, y = b.at(y).next) {
      ASSERT_EQ(a.TagsOf(x), b.TagsOf(y)) << name << ": record at byte " << a.at(x).begin;
      EXPECT_EQ(a.at(x).handle, b.at(y).handle);
      EXPECT_EQ(a.at(x).owner, b.at(y).owner);
    }
    EXPECT_EQ(x, y);
    EXPECT_EQ(a.trailer, b.trailer) << name;
  }
}

TEST(CorpusRoundTrip, HandlesOwnersAndSectionsAreIndexed) {
  // A hand-made file checks what the record builder extracts from tags.
  std::string text =
      "  0\nSECTION\n  2\nENTITIES\n"
      "  0\nLINE\n  5\n2A\n102\n{ACAD_REACTORS\n330\n99\n102\n}\n"
      "102\n{ACAD_XDICTIONARY\n360\n3B\n102\n}\n330\n1F\n100\nAcDbEntity\n 67\n1\n  8\n0\n"
      "  0\nPOLYLINE\n  5\n2B\n  8\n0\n  0\nVERTEX\n  5\n2C\n  8\n0\n  0\nSEQEND\n  5\n2D\n  8\n0\n"
      "  0\nENDSEC\n  0\nEOF\n";
  auto read = ParseDxf(text, "t.dxf");
  ASSERT_TRUE(read.ok()) << read.message();
  const RecordStore& s = *read->store;
  RecordId line = s.FindHandle(0x2A);
  ASSERT_NE(line, kNoRecord);
  EXPECT_EQ(s.TypeOf(line), "LINE");
  EXPECT_EQ(s.at(line).owner, 0x1Fu) << "reactor pointers are not the owner";
  EXPECT_EQ(s.at(line).xdict, 0x3Bu);
  EXPECT_TRUE(s.at(line).paper_space);
  EXPECT_EQ(s.at(line).section, Section::kEntities);
  EXPECT_EQ(s.at(line).begin, 25u);  // after "0 SECTION 2 ENTITIES"
  EXPECT_FALSE(s.at(s.FindHandle(0x2B)).sub_entity);
  EXPECT_TRUE(s.at(s.FindHandle(0x2C)).sub_entity);
  EXPECT_TRUE(s.at(s.FindHandle(0x2D)).sub_entity);
  EXPECT_EQ(s.max_handle(), 0x2Du);
  EXPECT_TRUE(read->warnings.empty());
}

}  // namespace
}  // namespace veltor::dxf
