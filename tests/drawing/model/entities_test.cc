// Entities: common properties, creating, copying properties and erasing with what they own.
#include <gtest/gtest.h>

#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/model/tables.h"
#include "saved_drawing.h"

namespace veltor::model {
namespace {

using testing::CorpusFile;
using testing::ExpectSavedAsInMemory;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

RecordId FirstOfType(const Document& doc, const std::string& type) {
  for (RecordId id : ModelSpaceEntities(doc))
    if (doc.TypeOf(id) == type) return id;
  return kNoRecord;
}

TEST(EntityProperties, ReadFromOtherProgramsFiles) {
  VELTOR_NEEDS_CORPUS();
  auto transparency = OpenOrDie(CorpusFile("gdal__transparency.dxf"));
  ASSERT_TRUE(transparency);
  RecordId poly = FirstOfType(*transparency, "LWPOLYLINE");
  ASSERT_NE(poly, kNoRecord);
  EntityProperties p = ReadProperties(*transparency, poly);
  EXPECT_EQ(p.true_color, 16760504);
  EXPECT_EQ(p.transparency, 0x0200007F);
  EXPECT_EQ(p.layer, "0");

  auto hatch_file = OpenOrDie(CorpusFile("gdal__hatch_as_multipolygon.dxf"));
  ASSERT_TRUE(hatch_file);
  p = ReadProperties(*hatch_file, FirstOfType(*hatch_file, "HATCH"));
  EXPECT_EQ(p.lineweight, 20);
  EXPECT_EQ(p.layer, "Строения");
  EXPECT_EQ(p.true_color, -1);

  auto binary = OpenOrDie(CorpusFile("ezdxf__bin_dxf_r2000.dxf"));
  ASSERT_TRUE(binary);
  p = ReadProperties(*binary, FirstOfType(*binary, "TEXT"));
  ASSERT_FALSE(p.hyperlinks.empty());
  EXPECT_EQ(p.hyperlinks[0], "http://ezdxf.mozman.at");
}

TEST(EntityProperties, OnlyTheEntitySubclassCounts) {
  auto doc = Document::NewBlank("AC1032");
  // 62, 370 and 420 after the entity's own subclass marker mean something else there.
  RecordId e = AddModelSpaceEntity(*doc, "MULTILEADER", "L1",
                                   {{62, "3"}, {390, "F"}, {100, "AcDbMLeader"}, {62, "5"},
                                    {370, "50"}, {420, "255"}, {8, "other"}});
  EntityProperties p = ReadProperties(*doc, e);
  EXPECT_EQ(p.layer, "L1");
  EXPECT_EQ(p.color, 3);
  EXPECT_EQ(p.lineweight, -1);
  EXPECT_EQ(p.true_color, -1);
  EXPECT_EQ(p.plot_style_name, "Normal") << "390 points at the Normal placeholder";
}

TEST(EntityProperties, CopiedOntoAnotherEntitySurviveSaving) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("gdal__transparency.dxf"));
  ASSERT_TRUE(doc);
  RecordId source = FirstOfType(*doc, "LWPOLYLINE");
  doc->MutableTags(source).push_back({1001, "PE_URL"});
  doc->MutableTags(source).push_back({1000, "https://example.org/a"});
  RecordId target = AddModelSpaceEntity(*doc, "LINE", "0",
                                        {{100, "AcDbLine"}, {10, "0"}, {20, "0"},
                                         {30, "0"}, {11, "1"}, {21, "1"}, {31, "0"}});
  SetTag(doc->MutableTags(target), 370, "35", 4);
  CopyProperties(*doc, source, target);
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  ExpectSavedAsInMemory(*doc, *saved);
  EntityProperties from = ReadProperties(*saved, saved->Find(doc->store().at(source).handle));
  EntityProperties to = ReadProperties(*saved, saved->Find(doc->store().at(target).handle));
  EXPECT_EQ(to.true_color, from.true_color);
  EXPECT_EQ(to.transparency, from.transparency);
  EXPECT_EQ(to.lineweight, -1) << "absent on the source, so removed from the target";
  EXPECT_EQ(to.hyperlinks, std::vector<std::string>{"https://example.org/a"});
  EXPECT_EQ(TagDouble(saved->TagsOf(saved->Find(doc->store().at(target).handle)), 11), 1.0)
      << "geometry is not a property";
  EXPECT_NE(FindTableRecord(*saved, "APPID", "PE_URL"), kNoRecord);
}

TEST(Entities, CreatedInANewDrawing) {
  ScratchDir dir;
  auto doc = Document::NewBlank("AC1032");
  AddLayer(*doc, "Walls", 3);
  RecordId line = AddModelSpaceEntity(*doc, "LINE", "Walls",
                                      {{100, "AcDbLine"}, {10, "1"}, {20, "2"}, {30, "0"},
                                       {11, "3"}, {21, "4"}, {31, "0"}});
  RecordId point = AddModelSpaceEntity(*doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "5"}, {20, "6"}, {30, "0"}});
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  std::vector<RecordId> entities = ModelSpaceEntities(*saved);
  ASSERT_EQ(entities.size(), 2u);
  EXPECT_EQ(saved->store().at(entities[0]).handle, doc->store().at(line).handle);
  EXPECT_EQ(saved->store().at(entities[1]).handle, doc->store().at(point).handle);
  EXPECT_EQ(saved->store().at(entities[0]).owner, ModelSpaceOwner(*saved));
  EXPECT_NE(ModelSpaceOwner(*saved), 0u);
  EXPECT_EQ(ReadProperties(*saved, entities[0]).layer, "Walls");
  EXPECT_EQ(ReadLayer(*saved, FindLayer(*saved, "Walls")).color, 3);
  EXPECT_TRUE(PaperSpaceEntities(*saved).empty());
  EXPECT_TRUE(saved->warnings().empty()) << saved->warnings()[0];
}

TEST(Entities, R12DrawingsGetNoSubclassMarkers) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("gdal__frozen-off.dxf"));
  ASSERT_TRUE(doc);
  RecordId line = AddModelSpaceEntity(*doc, "LINE", "ONTHAW",
                                      {{100, "AcDbLine"}, {10, "1"}, {20, "2"}, {11, "3"}, {21, "4"}});
  for (const Tag& t : doc->TagsOf(line)) {
    EXPECT_NE(t.code, 100);
    EXPECT_NE(t.code, 330);
  }
  EXPECT_EQ(ModelSpaceEntities(*doc).back(), line);
}

TEST(Entities, ErasedWithTheirExtensionDictionaryAndSubEntities) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("ezdxf__xclip.dxf"));
  ASSERT_TRUE(doc);
  // A clipped block reference (extension dictionary -> ACAD_FILTER dictionary -> filter),
  // and an entity we give an XRECORD.
  RecordId with_xdict = kNoRecord;
  for (RecordId id : ModelSpaceEntities(*doc))
    if (DictionaryLookup(*doc, ExtensionDictionary(*doc, id), "ACAD_FILTER") != kNoRecord) {
      with_xdict = id;
      break;
    }
  ASSERT_NE(with_xdict, kNoRecord);
  RecordId plain = kNoRecord;
  for (RecordId id : ModelSpaceEntities(*doc))
    if (doc->store().at(id).xdict == 0 && id != with_xdict) plain = id;
  ASSERT_NE(plain, kNoRecord);
  RecordId dict = EnsureExtensionDictionary(*doc, plain);
  RecordId xrec = AddXRecord(*doc, doc->store().at(dict).handle, {{1, "data"}});
  SetDictionaryEntry(*doc, dict, "KEY", doc->store().at(xrec).handle);
  auto saved = SaveAndReload(*doc, dir, "with.dxf");
  ASSERT_TRUE(saved);
  ASSERT_NE(DictionaryLookup(*saved, ExtensionDictionary(*saved, saved->Find(doc->store().at(plain).handle)), "KEY"),
            kNoRecord);

  std::vector<Handle> gone = {doc->store().at(with_xdict).handle, doc->store().at(with_xdict).xdict,
                              doc->store().at(plain).handle, doc->store().at(dict).handle,
                              doc->store().at(xrec).handle};
  RecordId filters = DictionaryLookup(*doc, ExtensionDictionary(*doc, with_xdict), "ACAD_FILTER");
  ASSERT_NE(filters, kNoRecord);
  gone.push_back(doc->store().at(filters).handle);
  for (const DictionaryEntry& e : DictionaryEntries(*doc, filters)) gone.push_back(e.handle);
  ASSERT_EQ(gone.size(), 7u);
  Handle survivor = 0;
  for (RecordId id : ModelSpaceEntities(*saved))
    if (saved->store().at(id).handle != gone[0] && saved->store().at(id).handle != gone[2])
      survivor = saved->store().at(id).handle;
  EraseEntity(*saved, saved->Find(gone[0]));
  EraseEntity(*saved, saved->Find(gone[2]));
  auto after = SaveAndReload(*saved, dir, "without.dxf");
  ASSERT_TRUE(after);
  for (Handle h : gone) EXPECT_EQ(after->Find(h), kNoRecord) << dxf::FormatHandle(h);
  EXPECT_NE(after->Find(survivor), kNoRecord);
  EXPECT_EQ(ModelSpaceEntities(*after).size(), ModelSpaceEntities(*doc).size() - 2);
  ExpectSavedAsInMemory(*saved, *after);
  EXPECT_EQ(testing::ChangedRecords(saved->store()), 0u) << "erasing rewrites no other record";
}

TEST(Entities, ErasingAPolylineErasesItsVertices) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("gdal__polyline_smooth.dxf"));
  ASSERT_TRUE(doc);
  RecordId poly = FirstOfType(*doc, "POLYLINE");
  ASSERT_NE(poly, kNoRecord);
  size_t subs = SubEntities(*doc, poly).size();
  EXPECT_GE(subs, 3u);
  EraseEntity(*doc, poly);
  auto after = SaveAndReload(*doc, dir);
  ASSERT_TRUE(after);
  for (RecordId id = after->store().first(); id != kNoRecord; id = after->store().at(id).next) {
    EXPECT_NE(after->TypeOf(id), "VERTEX");
    EXPECT_NE(after->TypeOf(id), "SEQEND");
  }
  EXPECT_EQ(FirstOfType(*after, "POLYLINE"), kNoRecord);
}

}  // namespace
}  // namespace veltor::model
