// The document: header variables, handles and $HANDSEED, and saves that rewrite only what
// changed.
#include <gtest/gtest.h>

#include "drawing/model/entity.h"
#include "drawing/model/tables.h"
#include "saved_drawing.h"

namespace veltor::model {
namespace {

using testing::CorpusFile;
using testing::ExpectSavedAsInMemory;
using testing::OpenOrDie;
using testing::ReadBytes;
using testing::SaveAndReload;
using testing::ScratchDir;

Handle Seed(const Document& doc) {
  auto seed = doc.HeaderVar("$HANDSEED");
  Handle h = 0;
  EXPECT_TRUE(seed && !seed->empty() && dxf::ParseHandle((*seed)[0].value, h));
  return h;
}

TEST(Document, HeaderVariables) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("qcad__visibility2.dxf"));
  ASSERT_TRUE(doc);
  EXPECT_EQ(doc->version(), "AC1027");
  EXPECT_TRUE(doc->AtLeast("AC1015"));
  EXPECT_FALSE(doc->AtLeast("AC1032"));
  auto ver = doc->HeaderVar("$ACADVER");
  ASSERT_TRUE(ver);
  ASSERT_EQ(ver->size(), 1u);
  EXPECT_EQ((*ver)[0], (Tag{1, "AC1027"}));
  auto extmin = doc->HeaderVar("$EXTMIN");
  ASSERT_TRUE(extmin);
  EXPECT_EQ(extmin->size(), 3u) << "a point variable has its 10/20/30";
  EXPECT_FALSE(doc->HeaderVar("$NOSUCHVAR"));
  EXPECT_EQ(doc->HeaderInt("$NOSUCHVAR", -5), -5);

  auto headerless = OpenOrDie(CorpusFile("gdal__3dface.dxf"));
  ASSERT_TRUE(headerless);
  EXPECT_EQ(headerless->version(), "AC1009");
  EXPECT_FALSE(headerless->SetHeaderVar("$X", {}).ok());
}

TEST(Document, SetHeaderVarReplacesAllValuesOfTheVariable) {
  auto doc = Document::NewBlank("AC1018");
  ASSERT_TRUE(doc->SetHeaderVar("$EXTMIN", {{10, "1.5"}, {20, "2.5"}}).ok());
  ASSERT_TRUE(doc->SetHeaderVar("$VELTORTEST", {{1, "x"}}).ok());
  ScratchDir dir;
  auto saved = SaveAndReload(*doc, dir);
  auto extmin = saved->HeaderVar("$EXTMIN");
  ASSERT_TRUE(extmin);
  EXPECT_EQ(*extmin, (Tags{{10, "1.5"}, {20, "2.5"}}));
  EXPECT_EQ(*saved->HeaderVar("$VELTORTEST"), (Tags{{1, "x"}}));
  EXPECT_EQ(saved->version(), "AC1018") << "the neighbouring variable is untouched";
}

TEST(Document, UnmodifiedDrawingSavesByteForByte) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  for (const char* name : {"qcad__visibility2.dxf", "ezdxf__bin_dxf_r2000.dxf", "gdal__attrib.dxf"}) {
    auto doc = OpenOrDie(CorpusFile(name));
    ASSERT_TRUE(doc);
    ASSERT_TRUE(doc->Save(dir.File("same.dxf")).ok());
    EXPECT_TRUE(ReadBytes(dir.File("same.dxf")) == ReadBytes(CorpusFile(name))) << name;
    EXPECT_EQ(testing::ChangedRecords(doc->store()), 0u) << name;
  }
}

TEST(Document, HandseedChangesOnlyWhenHandlesWereAllocated) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  std::string original = ReadBytes(CorpusFile("qcad__visibility2.dxf"));
  auto doc = OpenOrDie(CorpusFile("qcad__visibility2.dxf"));
  ASSERT_TRUE(doc);
  Handle seed = Seed(*doc);
  SetLayerFrozen(*doc, FindLayer(*doc, "red"), true);  // no new object
  ASSERT_TRUE(doc->Save(dir.File("a.dxf")).ok());
  size_t header_end = original.find("ENDSEC");
  EXPECT_EQ(ReadBytes(dir.File("a.dxf")).substr(0, header_end), original.substr(0, header_end))
      << "the header was rewritten";

  RecordId layer = AddLayer(*doc, "new layer");
  Handle layer_handle = doc->store().at(layer).handle;
  EXPECT_GE(layer_handle, seed) << "new handles start at $HANDSEED";
  auto saved = SaveAndReload(*doc, dir, "b.dxf");
  ASSERT_TRUE(saved);
  EXPECT_GT(Seed(*saved), layer_handle);
  EXPECT_GT(Seed(*saved), saved->store().max_handle());
  ExpectSavedAsInMemory(*doc, *saved);
}

TEST(Document, NewHandlesAvoidHandlesAboveAStaleSeed) {
  auto doc = Document::FromBytes(
      "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  9\n$HANDSEED\n  5\n10\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  5\n2A\n  8\n0\n  0\nENDSEC\n  0\nEOF\n",
      "stale.dxf");
  ASSERT_TRUE(doc.ok()) << doc.message();
  EXPECT_EQ((*doc)->NewHandle(), 0x2Bu);
  EXPECT_EQ((*doc)->NewHandle(), 0x2Cu);
}

TEST(Document, BinaryDrawingTakesChangesAndNewRecords) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("ezdxf__bin_dxf_r2000.dxf"));
  ASSERT_TRUE(doc);
  RecordId text = ModelSpaceEntities(*doc).front();
  RecordId line = AddModelSpaceEntity(*doc, "LINE", "0",
                                      {{100, "AcDbLine"}, {10, "0.1"}, {20, "-2"}, {30, "1e+20"},
                                       {11, "3"}, {21, "4"}, {31, "0"}});
  CopyProperties(*doc, text, line);
  SetLayerLocked(*doc, FindLayer(*doc, "Defpoints"), true);
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  EXPECT_TRUE(saved->store().format().binary);
  ExpectSavedAsInMemory(*doc, *saved);
  RecordId again = saved->Find(doc->store().at(line).handle);
  ASSERT_NE(again, kNoRecord);
  EXPECT_DOUBLE_EQ(TagDouble(saved->TagsOf(again), 30), 1e20);
  EXPECT_TRUE(ReadLayer(*saved, FindLayer(*saved, "Defpoints")).locked);
}

// Another program may rewrite the file in place while it is open here; saving must still
// write the drawing that was read, not whatever the file holds now.
TEST(Document, OpenDrawingKeepsItsBytesWhenTheFileIsRewrittenInPlace) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  std::string original = ReadBytes(CorpusFile("gdal__frozen-off.dxf"));
  testing::WriteBytes(dir.File("shared.dxf"), original);
  auto doc = OpenOrDie(dir.File("shared.dxf"));
  ASSERT_TRUE(doc);
  {
    std::fstream f(dir.File("shared.dxf"), std::ios::in | std::ios::out | std::ios::binary);
    f << std::string(original.size(), 'X');  // same length: no truncation
  }
  ASSERT_EQ(ReadBytes(dir.File("shared.dxf")), std::string(original.size(), 'X'));
  EXPECT_TRUE(testing::WriteToString(doc->store()) == original)
      << "unchanged records were read from the file after it changed";
}

}  // namespace
}  // namespace veltor::model
