// Blocks and block references: attributes, the effective name of dynamic blocks, creating
// definitions and references.
#include <gtest/gtest.h>

#include "drawing/model/blocks.h"
#include "drawing/model/entity.h"
#include "drawing/model/tables.h"
#include "saved_drawing.h"

namespace veltor::model {
namespace {

using testing::CorpusFile;
using testing::ExpectSavedAsInMemory;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

std::vector<RecordId> Inserts(const Document& doc) {
  std::vector<RecordId> out;
  for (RecordId id : ModelSpaceEntities(doc))
    if (doc.TypeOf(id) == "INSERT") out.push_back(id);
  return out;
}

std::vector<std::pair<std::string, std::string>> Pairs(const std::vector<AttributeInfo>& attrs) {
  std::vector<std::pair<std::string, std::string>> out;
  for (const AttributeInfo& a : attrs) out.emplace_back(a.tag, a.text);
  return out;
}

using PairList = std::vector<std::pair<std::string, std::string>>;

TEST(Blocks, AttributesOfReferencesInOtherProgramsFiles) {
  VELTOR_NEEDS_CORPUS();
  auto gdal = OpenOrDie(CorpusFile("gdal__attrib.dxf"));
  ASSERT_TRUE(gdal);
  std::vector<RecordId> inserts = Inserts(*gdal);
  ASSERT_EQ(inserts.size(), 2u);
  EXPECT_EQ(BlockName(*gdal, inserts[0]), "AttBlock");
  EXPECT_EQ(Pairs(Attributes(*gdal, inserts[0])),
            (PairList{{"MYATT1", "super test"}, {"MYATTMULTI_001", "%%UCorps"}, {"MYATTMULTI_002", "plpl"}}));
  EXPECT_EQ(Pairs(Attributes(*gdal, inserts[1])), (PairList{{"MYATTMULTI", ""}}));

  auto ezdxf = OpenOrDie(CorpusFile("ezdxf__multi_insert_with_attribs.dxf"));
  ASSERT_TRUE(ezdxf);
  inserts = Inserts(*ezdxf);
  ASSERT_FALSE(inserts.empty());
  EXPECT_EQ(Pairs(Attributes(*ezdxf, inserts[0])),
            (PairList{{"NAME", "Flag"}, {"XPOS", "x = 0.000"}, {"YPOS", "y = 0.000"}}));
  // A reference without attributes has none, even when the next record is another's ATTRIB.
  auto plain = OpenOrDie(CorpusFile("gdal__frozen-off.dxf"));
  ASSERT_TRUE(plain);
  for (RecordId id : Inserts(*plain)) EXPECT_TRUE(Attributes(*plain, id).empty());
}

TEST(Blocks, DynamicBlockReferencesHaveTheirDefinitionsName) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("dxfparser__api-cw750-details.dxf"));
  ASSERT_TRUE(doc);
  int anonymous = 0;
  for (RecordId id : Inserts(*doc)) {
    std::string name = BlockName(*doc, id);
    if (name.compare(0, 2, "*U") != 0) {
      EXPECT_EQ(EffectiveBlockName(*doc, id), name);
      continue;
    }
    ++anonymous;
    std::string effective = EffectiveBlockName(*doc, id);
    EXPECT_FALSE(effective.empty());
    EXPECT_NE(effective[0], '*') << name << " -> " << effective;
    EXPECT_NE(FindBlockRecord(*doc, effective), kNoRecord) << effective;
  }
  EXPECT_GT(anonymous, 0);
  EXPECT_NE(FindBlockRecord(*doc, "Section Callout"), kNoRecord);
}

TEST(Blocks, AttributeTextChangeTouchesOnlyThatAttribute) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("ezdxf__multi_insert_with_attribs.dxf"));
  ASSERT_TRUE(doc);
  RecordId insert = Inserts(*doc)[0];
  SetAttributeText(*doc, Attributes(*doc, insert)[1].id, "x = 12,5 Ω");
  EXPECT_EQ(testing::ChangedRecords(doc->store()), 1u);
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  ExpectSavedAsInMemory(*doc, *saved);
  EXPECT_EQ(Pairs(Attributes(*saved, saved->Find(doc->store().at(insert).handle))),
            (PairList{{"NAME", "Flag"}, {"XPOS", "x = 12,5 Ω"}, {"YPOS", "y = 0.000"}}));
}

TEST(Blocks, DefinitionAndReferenceCreated) {
  ScratchDir dir;
  for (const char* version : {"AC1015", "AC1032"}) {
    auto doc = Document::NewBlank(version);
    RecordId record = AddBlockDefinition(
        *doc, "Tür", Point3{1, 2, 0},
        {{"LINE", "0", {{100, "AcDbLine"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "1"}, {21, "0"}, {31, "0"}}}},
        {{"NUMBER", "0"}, {"ROOM", "?"}});
    RecordId insert = AddBlockReference(*doc, "Tür", Point3{10, 20, 0}, 2.0, 90.0, "0",
                                        {{"NUMBER", "17"}, {"ROOM", "Küche"}});
    RecordId after = AddModelSpaceEntity(*doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
    auto saved = SaveAndReload(*doc, dir);
    ASSERT_TRUE(saved);
    ExpectSavedAsInMemory(*doc, *saved);
    EXPECT_TRUE(saved->warnings().empty()) << version << ": " << saved->warnings()[0];

    Handle record_handle = doc->store().at(record).handle;
    EXPECT_EQ(saved->store().at(FindBlockRecord(*saved, "Tür")).handle, record_handle);
    RecordId begin = FindBlockBegin(*saved, "Tür");
    ASSERT_NE(begin, kNoRecord);
    EXPECT_EQ(saved->store().at(begin).owner, record_handle);
    std::vector<RecordId> contents = BlockEntities(*saved, "Tür");
    ASSERT_EQ(contents.size(), 3u);
    EXPECT_EQ(saved->TypeOf(contents[0]), "LINE");
    EXPECT_EQ(saved->TypeOf(contents[1]), "ATTDEF");
    EXPECT_EQ(TagText(saved->TagsOf(contents[2]), 2), "ROOM");

    RecordId ref = saved->Find(doc->store().at(insert).handle);
    EXPECT_EQ(BlockName(*saved, ref), "Tür");
    EXPECT_EQ(EffectiveBlockName(*saved, ref), "Tür");
    EXPECT_EQ(Pairs(Attributes(*saved, ref)), (PairList{{"NUMBER", "17"}, {"ROOM", "Küche"}}));
    std::vector<RecordId> subs = SubEntities(*saved, ref);
    ASSERT_EQ(subs.size(), 3u);
    EXPECT_EQ(saved->TypeOf(subs[2]), "SEQEND");
    for (RecordId sub : subs) EXPECT_EQ(saved->store().at(sub).owner, saved->store().at(ref).handle);
    EXPECT_EQ(TagDouble(saved->TagsOf(ref), 41), 2.0);
    EXPECT_EQ(TagDouble(saved->TagsOf(ref), 50), 90.0);
    // The entity added after the reference follows its SEQEND.
    std::vector<RecordId> model = ModelSpaceEntities(*saved);
    ASSERT_EQ(model.size(), 2u);
    EXPECT_EQ(saved->store().at(model[1]).handle, doc->store().at(after).handle);
  }
}

}  // namespace
}  // namespace veltor::model
