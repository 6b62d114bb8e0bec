// Bad input gives an error naming the file and where, or loads with what was tolerated
// said in warnings; it never crashes and never gives a partial document.
#include <gtest/gtest.h>

#include <regex>

#include "drawing/dxf/reader.h"
#include "drawing/model/document.h"
#include "test_files.h"

namespace veltor::model {
namespace {

using testing::BrokenCorpusDir;
using testing::BrokenFixtureDir;
using testing::CorpusDir;
using testing::FilesIn;
using testing::ReadBytes;
using testing::WriteToString;

// An error must start with the file's name and say where: "NAME: line N: ..." or
// "NAME: ... byte N: ...".
::testing::AssertionResult NamesFileAndPlace(const std::string& message, const std::string& name) {
  if (message.compare(0, name.size() + 2, name + ": ") != 0)
    return ::testing::AssertionFailure() << "does not start with the file name: " << message;
  static const std::regex kPlace(": (line|byte) [0-9]+: ");
  if (!std::regex_search(message, kPlace))
    return ::testing::AssertionFailure() << "names no line or byte: " << message;
  return ::testing::AssertionSuccess();
}

bool Mentions(const std::vector<std::string>& warnings, const std::string& word) {
  for (const std::string& w : warnings)
    if (w.find(word) != std::string::npos) return true;
  return false;
}

// Every damaged file either fails with a located message, or loads and writes back unchanged,
// or (a file without the EOF marker) writes back what it had up to its last section followed
// by "0 EOF", which then loads without that warning.
void CheckEveryFileIn(const std::string& dir) {
  std::vector<std::string> names = FilesIn(dir, ".dxf");
  ASSERT_FALSE(names.empty()) << dir;
  for (const std::string& name : names) {
    std::string path = dir + "/" + name;
    auto doc = Document::Open(path);
    if (!doc.ok()) {
      EXPECT_TRUE(NamesFileAndPlace(doc.message(), path)) << name;
      continue;
    }
    std::string written = WriteToString((*doc)->store());
    std::string input = ReadBytes(path);
    if (!Mentions((*doc)->warnings(), "no EOF marker")) {
      EXPECT_EQ(written, input) << name;
      continue;
    }
    size_t eof = written.rfind("EOF");
    ASSERT_NE(eof, std::string::npos) << name;
    size_t kept = written.rfind("ENDSEC", eof);
    ASSERT_NE(kept, std::string::npos) << name;
    EXPECT_EQ(written.compare(0, kept, input, 0, kept), 0) << name;
    auto again = Document::FromBytes(written, name);
    ASSERT_TRUE(again.ok()) << again.message();
    EXPECT_FALSE(Mentions((*again)->warnings(), "EOF")) << name;
  }
}

TEST(BrokenInput, CorpusOfDamagedFilesFailsCleanlyOrLoads) {
  VELTOR_NEEDS_CORPUS();
  CheckEveryFileIn(BrokenCorpusDir());
}

TEST(BrokenInput, HandMadeFixturesFailCleanlyOrLoad) { CheckEveryFileIn(BrokenFixtureDir()); }

struct Expected {
  const char* file;
  const char* message;  // after "PATH: "
};

class FixtureMessage : public ::testing::TestWithParam<Expected> {};

TEST_P(FixtureMessage, IsExact) {
  std::string path = BrokenFixtureDir() + "/" + GetParam().file;
  auto doc = Document::Open(path);
  ASSERT_FALSE(doc.ok()) << "loaded " << path;
  EXPECT_EQ(doc.message(), path + ": " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    BrokenInput, FixtureMessage,
    ::testing::Values(
        Expected{"truncated_mid_tag.dxf", "line 7: the file ends after group code 8 without its value"},
        Expected{"value_where_code_belongs.dxf", "line 11: group code expected, found '2.5'"},
        Expected{"non_numeric_code.dxf", "line 7: group code expected, found ' 8x'"},
        Expected{"bad_hex_handle.dxf", "line 8: invalid handle '1G7'"},
        Expected{"duplicate_handle.dxf", "line 11: duplicate handle 1A (already used at line 5)"},
        Expected{"missing_endsec.dxf",
                 "line 9: end of file marker inside section ENTITIES (missing ENDSEC)"},
        Expected{"nested_section.dxf",
                 "line 9: SECTION inside section HEADER (started at line 1) that has no ENDSEC"},
        Expected{"endsec_without_section.dxf", "line 7: ENDSEC without a SECTION"},
        Expected{"binary_truncated_double.dxf", "byte 56: file ends inside a real value"},
        Expected{"binary_unterminated_string.dxf",
                 "byte 52: text value without its terminating zero"}),
    [](const ::testing::TestParamInfo<Expected>& param) {
      std::string name = param.param.file;
      return name.substr(0, name.find('.'));
    });

TEST(BrokenInput, DanglingOwnerLoadsWithAWarning) {
  auto doc = Document::Open(BrokenFixtureDir() + "/dangling_owner.dxf");
  ASSERT_TRUE(doc.ok()) << doc.message();
  ASSERT_EQ((*doc)->warnings().size(), 1u);
  EXPECT_NE((*doc)->warnings()[0].find("owner"), std::string::npos) << (*doc)->warnings()[0];
  EXPECT_NE((*doc)->warnings()[0].find("1A"), std::string::npos) << (*doc)->warnings()[0];
  EXPECT_NE((*doc)->Find(0x1A), kNoRecord);
}

TEST(BrokenInput, HugeThumbnailSizeIsKeptNotTrusted) {
  std::string path = BrokenFixtureDir() + "/thumbnail_2gb.dxf";
  auto doc = Document::Open(path);
  ASSERT_TRUE(doc.ok()) << doc.message();
  EXPECT_TRUE((*doc)->warnings().empty());
  EXPECT_EQ(WriteToString((*doc)->store()), ReadBytes(path));
}

TEST(BrokenInput, MissingEndsecWithoutEofNamesTheSectionStart) {
  auto doc = Document::FromBytes("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\n0\n", "cut.dxf");
  ASSERT_FALSE(doc.ok());
  EXPECT_EQ(doc.message(), "cut.dxf: line 1: section ENTITIES has no ENDSEC before the end of file");
}

TEST(BrokenInput, ToleratedDamageIsReported) {
  // No EOF marker: complete otherwise, so it loads, says so, and is written with the marker.
  auto no_eof = Document::FromBytes("  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n", "a.dxf");
  ASSERT_TRUE(no_eof.ok()) << no_eof.message();
  ASSERT_EQ((*no_eof)->warnings().size(), 1u);
  EXPECT_NE((*no_eof)->warnings()[0].find("EOF"), std::string::npos);
  EXPECT_EQ(WriteToString((*no_eof)->store()),
            "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n");
  // Bytes after EOF are kept, and reported.
  std::string trash = "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\ngarbage here";
  auto after_eof = Document::FromBytes(trash, "b.dxf");
  ASSERT_TRUE(after_eof.ok()) << after_eof.message();
  ASSERT_EQ((*after_eof)->warnings().size(), 1u);
  EXPECT_NE((*after_eof)->warnings()[0].find("12 bytes"), std::string::npos);
  EXPECT_EQ(WriteToString((*after_eof)->store()), trash);
  // Empty input is not a drawing.
  auto empty = Document::FromBytes("", "c.dxf");
  ASSERT_FALSE(empty.ok());
  EXPECT_EQ(empty.message().compare(0, 7, "c.dxf: "), 0) << empty.message();
}

// A file cut short inside its EOF marker: the cut marker is dropped, the warning says what
// and where, and what is written (changed or not) ends with a whole "0 EOF".
TEST(BrokenInput, DamagedTailIsDroppedAndEveryCopyEndsWithEof) {
  const std::string kept =
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nLINE\r\n  5\r\n1A\r\n  0\r\nENDSEC\r\n";
  auto doc = Document::FromBytes(kept + "  0\r\nEO", "cut.dxf");
  ASSERT_TRUE(doc.ok()) << doc.message();
  ASSERT_EQ((*doc)->warnings().size(), 1u);
  EXPECT_EQ((*doc)->warnings()[0],
            "the file has no EOF marker and ends in 7 bytes after its last section (line 11: "
            "'0 EO'); they were dropped, and a saved copy ends with EOF");
  EXPECT_EQ(WriteToString((*doc)->store()), kept + "  0\r\nEOF\r\n");
  EXPECT_NE((*doc)->Find(0x1A), kNoRecord);

  // Loose tags after the last section, with a handle of their own, go too.
  auto loose = Document::FromBytes(kept + "  0\r\nLINE\r\n  5\r\n2B\r\n", "loose.dxf");
  ASSERT_TRUE(loose.ok()) << loose.message();
  EXPECT_EQ(WriteToString((*loose)->store()), kept + "  0\r\nEOF\r\n");
  EXPECT_EQ((*loose)->Find(0x2B), kNoRecord);
}

TEST(BrokenInput, BinaryFileWithoutEofGetsABinaryEof) {
  // Binary DXF: sentinel, then (code, value) pairs with two-byte codes and zero-ended text.
  std::string sentinel("AutoCAD Binary DXF\r\n\x1a\0", 22);
  auto tag = [](int code, const std::string& text) {
    std::string t(1, static_cast<char>(code & 0xFF));
    t += static_cast<char>(code >> 8);
    t += text;
    t += '\0';
    return t;
  };
  std::string body = tag(0, "SECTION") + tag(2, "ENTITIES") + tag(0, "ENDSEC");
  for (const std::string& tail : {std::string(), tag(0, "EO")}) {
    auto doc = Document::FromBytes(sentinel + body + tail, "cut.dxb");
    ASSERT_TRUE(doc.ok()) << doc.message();
    EXPECT_EQ(WriteToString((*doc)->store()), sentinel + body + tag(0, "EOF"));
  }
}

// Every real file cut short at twenty points: an error that names the file and the place, or
// a loaded drawing. Run under the sanitizers this is the reader's crash test.
TEST(BrokenInput, EveryCorpusFileCutShortFailsCleanlyOrLoads) {
  VELTOR_NEEDS_CORPUS();
  std::vector<std::string> names = FilesIn(CorpusDir(), ".dxf");
  ASSERT_FALSE(names.empty());
  size_t failures = 0, loads = 0;
  for (const std::string& name : names) {
    std::string bytes = ReadBytes(CorpusDir() + "/" + name);
    for (size_t k = 1; k <= 20; ++k) {
      size_t cut = bytes.size() * k / 21;
      std::string label = name + " cut at " + std::to_string(cut);
      auto doc = Document::FromBytes(bytes.substr(0, cut), label);
      if (doc.ok()) {
        ++loads;
        continue;
      }
      ++failures;
      EXPECT_TRUE(NamesFileAndPlace(doc.message(), label));
    }
  }
  EXPECT_GT(failures, names.size() * 15);  // cuts inside a section cannot load
  (void)loads;
}

}  // namespace
}  // namespace veltor::model
