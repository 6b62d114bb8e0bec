// Converting R12 drawings up: the structure R2000 needs (handles, owners, block records,
// subclass markers), what is carried over, what is left out and said so, and Object Data on
// the converted drawing.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "saved_drawing.h"
#include "drawing/model/blocks.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/model/subclass_layout.h"
#include "drawing/model/tables.h"
#include "drawing/model/upgrade_r12.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::model {
namespace {

using testing::CorpusFile;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

std::string Fixture() { return std::string(VELTOR_SOURCE_DIR) + "/tests/data/small_r12.dxf"; }

std::unique_ptr<Document> Convert(const Document& source, std::string_view acadver,
                                  std::vector<std::string>* warnings = nullptr) {
  Result<UpgradedDrawing> converted = UpgradeR12(source, acadver);
  EXPECT_TRUE(converted.ok()) << converted.message();
  if (!converted.ok()) return nullptr;
  if (warnings) *warnings = converted->warnings;
  return std::move(converted->doc);
}

// The subclass markers of a record, in order.
std::vector<std::string> Markers(const Tags& tags) {
  std::vector<std::string> out;
  for (const Tag& t : tags)
    if (t.code == 100) out.push_back(t.value);
  return out;
}

// The value of `code` under the marker `subclass` (the `nth` marker of that name), or "".
std::string Under(const Tags& tags, const std::string& subclass, int code, int nth = 0) {
  int seen = -1;
  bool inside = false;
  for (const Tag& t : tags) {
    if (t.code == 100) {
      inside = t.value == subclass && ++seen == nth;
      continue;
    }
    if (inside && t.code == code) return t.value;
  }
  return "";
}

std::map<std::string, int> TypeCounts(const Document& doc, const std::vector<RecordId>& ids) {
  std::map<std::string, int> counts;
  for (RecordId id : ids) ++counts[doc.TypeOf(id)];
  return counts;
}

TEST(UpgradeR12, EveryRecordHasAHandleAndAnOwnerThatExists) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  auto doc = Convert(*source, "AC1015");
  ASSERT_TRUE(doc);
  ScratchDir dir;
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->version(), "AC1015");
  const dxf::RecordStore& s = saved->store();
  std::set<Handle> handles;
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next) {
    const std::string& type = s.TypeOf(id);
    if (type == "SECTION" || type == "ENDSEC" || type == "ENDTAB" || type == "EOF") continue;
    SCOPED_TRACE(type);
    ASSERT_NE(s.at(id).handle, 0u);
    EXPECT_TRUE(handles.insert(s.at(id).handle).second) << "duplicate handle";
    if (type != "TABLE" && !(type == "DICTIONARY" && s.at(id).owner == 0)) {
      EXPECT_NE(saved->Find(s.at(id).owner), kNoRecord) << "owner " << s.at(id).owner;
    }
  }
  auto seed = saved->HeaderVar("$HANDSEED");
  ASSERT_TRUE(seed && !seed->empty());
  Handle next = 0;
  ASSERT_TRUE(dxf::ParseHandle((*seed)[0].value, next));
  EXPECT_GT(next, *handles.rbegin());
}

TEST(UpgradeR12, CarriesEveryEntityWithItsSubclassesAndOwners) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  std::vector<std::string> warnings;
  auto doc = Convert(*source, "AC1015", &warnings);
  ASSERT_TRUE(doc);
  EXPECT_TRUE(warnings.empty()) << warnings.front();
  std::vector<RecordId> before = ModelSpaceEntities(*source);
  std::vector<RecordId> after = ModelSpaceEntities(*doc);
  ASSERT_EQ(after.size(), before.size());
  EXPECT_EQ(TypeCounts(*doc, after), TypeCounts(*source, before));
  Handle model_space = ModelSpaceOwner(*doc);
  for (RecordId id : after) {
    SCOPED_TRACE(doc->TypeOf(id));
    EXPECT_EQ(doc->store().at(id).owner, model_space);
    Tags tags = doc->TagsOf(id);
    ASSERT_GE(Markers(tags).size(), 1u);
    EXPECT_EQ(Markers(tags)[0], "AcDbEntity");
  }
  // The layer stays with the common properties; geometry goes under the type's subclass.
  Tags line = doc->TagsOf(after[0]);
  EXPECT_EQ(Markers(line), (std::vector<std::string>{"AcDbEntity", "AcDbLine"}));
  EXPECT_EQ(Under(line, "AcDbEntity", 8), "ROADS");
  EXPECT_EQ(Under(line, "AcDbLine", 11), "100.0");
  // Extended data stays at the end, its application registered.
  EXPECT_EQ(line.back().value, "main road");
  EXPECT_NE(FindTableRecord(*doc, "APPID", "SURVEY"), kNoRecord);

  Tags arc = doc->TagsOf(after[2]);
  EXPECT_EQ(Under(arc, "AcDbCircle", 40), "10.0");
  EXPECT_EQ(Under(arc, "AcDbArc", 51), "90.0");
  EXPECT_EQ(Under(arc, "AcDbCircle", 51), "");

  // Vertices and SEQEND belong to their polyline; attributes to their block reference.
  for (RecordId polyline : {after[4], after[5]}) {
    Handle h = doc->store().at(polyline).handle;
    std::vector<RecordId> subs = SubEntities(*doc, polyline);
    ASSERT_FALSE(subs.empty());
    for (RecordId sub : subs) EXPECT_EQ(doc->store().at(sub).owner, h);
  }
  EXPECT_EQ(Markers(doc->TagsOf(SubEntities(*doc, after[5])[0])),
            (std::vector<std::string>{"AcDbEntity", "AcDbVertex", "AcDb3dPolylineVertex"}));
  std::vector<AttributeInfo> attributes = Attributes(*doc, after[6]);
  ASSERT_EQ(attributes.size(), 1u);
  EXPECT_EQ(attributes[0].text, "W-1");
  EXPECT_EQ(doc->store().at(attributes[0].id).owner, doc->store().at(after[6]).handle);
}

TEST(UpgradeR12, BlocksGetBlockRecordsThatOwnTheirEntities) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  auto doc = Convert(*source, "AC1018");
  ASSERT_TRUE(doc);
  RecordId record = FindBlockRecord(*doc, "WELLHEAD");
  ASSERT_NE(record, kNoRecord);
  RecordId begin = FindBlockBegin(*doc, "WELLHEAD");
  ASSERT_NE(begin, kNoRecord);
  Handle owner = doc->store().at(record).handle;
  EXPECT_EQ(doc->store().at(begin).owner, owner);
  std::vector<RecordId> inside = BlockEntities(*doc, "WELLHEAD");
  ASSERT_EQ(inside.size(), 2u);
  for (RecordId id : inside) EXPECT_EQ(doc->store().at(id).owner, owner);
  // The R12 stand-ins for model and paper space are not carried as blocks of their own.
  EXPECT_EQ(FindBlockRecord(*doc, "$MODEL_SPACE"), kNoRecord);
  EXPECT_NE(FindBlockRecord(*doc, "*Model_Space"), kNoRecord);
}

TEST(UpgradeR12, CarriesHeaderAndTablesTheNewReleaseKnows) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  auto doc = Convert(*source, "AC1015");
  ASSERT_TRUE(doc);
  EXPECT_EQ(doc->Luprec(), 3);
  EXPECT_EQ(TagText(*doc->HeaderVar("$CLAYER"), 8), "ROADS");
  EXPECT_FALSE(doc->HeaderVar("$HANDLING"));
  EXPECT_FALSE(doc->HeaderVar("$OSMODE"));
  EXPECT_EQ(TagText(*doc->HeaderVar("$ACADVER"), 1), "AC1015");

  LayerInfo roads = ReadLayer(*doc, FindLayer(*doc, "ROADS"));
  EXPECT_EQ(roads.color, 1);
  Tags roads_tags = doc->TagsOf(roads.id);
  EXPECT_EQ(Markers(roads_tags), (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbLayerTableRecord"}));
  EXPECT_NE(FindTag(roads_tags, 390), nullptr);
  // A record the blank drawing has takes the R12 values: one layer "0", one STANDARD style.
  int zero_layers = 0;
  for (const LayerInfo& layer : Layers(*doc)) zero_layers += layer.name == "0";
  EXPECT_EQ(zero_layers, 1);
  EXPECT_EQ(TagText(doc->TagsOf(FindTableRecord(*doc, "STYLE", "Standard")), 2), "STANDARD");
  // Dash lengths get their element type.
  Tags dashed = doc->TagsOf(FindTableRecord(*doc, "LTYPE", "DASHED"));
  auto dash = std::find_if(dashed.begin(), dashed.end(), [](const Tag& t) { return t.code == 49; });
  ASSERT_NE(dash, dashed.end());
  EXPECT_EQ((dash + 1)->code, 74);
}

TEST(UpgradeR12, PaperSpaceViewportTakesItsViewFromTheMviewData) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  auto doc = Convert(*source, "AC1015");
  ASSERT_TRUE(doc);
  std::vector<RecordId> paper = PaperSpaceEntities(*doc);
  ASSERT_EQ(paper.size(), 1u);
  EXPECT_EQ(doc->TypeOf(paper[0]), "VIEWPORT");
  Tags tags = doc->TagsOf(paper[0]);
  EXPECT_EQ(doc->store().at(paper[0]).owner, doc->store().at(FindBlockRecord(*doc, "*Paper_Space")).handle);
  EXPECT_EQ(Under(tags, "AcDbViewport", 12), "50.0");  // view centre
  EXPECT_EQ(Under(tags, "AcDbViewport", 22), "40.0");
  EXPECT_EQ(Under(tags, "AcDbViewport", 45), "80.0");  // view height
  EXPECT_EQ(Under(tags, "AcDbViewport", 36), "1.0");   // view direction z
  for (const Tag& t : tags) EXPECT_NE(t.value, "MVIEW");
}

TEST(UpgradeR12, TextIsUtf8FromR2007On) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  auto r2004 = Convert(*source, "AC1018");
  auto r2007 = Convert(*source, "AC1021");
  ASSERT_TRUE(r2004 && r2007);
  RecordId text2004 = ModelSpaceEntities(*r2004)[3];
  RecordId text2007 = ModelSpaceEntities(*r2007)[3];
  EXPECT_EQ(TagText(r2004->TagsOf(text2004), 1), "Stra\xdf" "e");  // code page 1252
  EXPECT_EQ(TagText(r2007->TagsOf(text2007), 1), "Stra\xc3\x9f" "e");
  EXPECT_EQ(r2007->Decode(TagText(r2007->TagsOf(text2007), 1)), "Straße");
}

TEST(UpgradeR12, UnknownTypesAreLeftOutAndCounted) {
  std::string r12 =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n"
      "0\nLINE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n1\n31\n0\n"
      "0\nGADGET\n8\n0\n10\n0\n20\n0\n"
      "0\nGADGET\n8\n0\n10\n0\n20\n0\n"
      "0\nENDSEC\n0\nEOF\n";
  auto source = Document::FromBytes(r12, "gadgets.dxf");
  ASSERT_TRUE(source.ok()) << source.message();
  std::vector<std::string> warnings;
  auto doc = Convert(**source, "AC1032", &warnings);
  ASSERT_TRUE(doc);
  EXPECT_EQ(ModelSpaceEntities(*doc).size(), 1u);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(warnings[0].find("2 GADGET entities left out"), std::string::npos) << warnings[0];
}

TEST(UpgradeR12, ApplicationsAreRegisteredOnceWhereverTheirFirstUseIs) {
  // The layer's extended data names SURVEY before the APPID table registers it.
  std::string r12 =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
      "0\nSECTION\n2\nTABLES\n"
      "0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\nPIPES\n70\n0\n62\n3\n6\nCONTINUOUS\n"
      "1001\nSURVEY\n1000\nchecked\n0\nENDTAB\n"
      "0\nTABLE\n2\nAPPID\n70\n1\n0\nAPPID\n2\nSURVEY\n70\n0\n0\nENDTAB\n"
      "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
      "0\nPOINT\n8\nPIPES\n10\n0\n20\n0\n30\n0\n1001\nOTHER\n1000\nx\n"
      "0\nENDSEC\n0\nEOF\n";
  auto source = Document::FromBytes(r12, "apps.dxf");
  ASSERT_TRUE(source.ok()) << source.message();
  auto doc = Convert(**source, "AC1015");
  ASSERT_TRUE(doc);
  std::map<std::string, int> apps;
  const dxf::RecordStore& s = doc->store();
  for (RecordId id = s.first(); id != kNoRecord; id = s.at(id).next)
    if (s.TypeOf(id) == "APPID") ++apps[TagText(doc->TagsOf(id), 2)];
  EXPECT_EQ(apps, (std::map<std::string, int>{{"ACAD", 1}, {"OTHER", 1}, {"SURVEY", 1}}));
  EXPECT_EQ(TagText(doc->TagsOf(FindLayer(*doc, "PIPES")), 1000), "checked");
}

TEST(UpgradeR12, DimensionStylesPointToTheirArrowBlocks) {
  std::string r12 =
      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
      "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nDIMSTYLE\n70\n1\n"
      "0\nDIMSTYLE\n2\nARCH\n70\n0\n3\n\n4\n\n5\nDOT\n6\nMISSING\n7\n\n40\n1.0\n"
      "0\nENDTAB\n0\nENDSEC\n"
      "0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\n0\n2\nDOT\n70\n0\n10\n0\n20\n0\n30\n0\n3\nDOT\n"
      "0\nCIRCLE\n8\n0\n10\n0\n20\n0\n30\n0\n40\n0.5\n0\nENDBLK\n8\n0\n0\nENDSEC\n"
      "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
  auto source = Document::FromBytes(r12, "arrows.dxf");
  ASSERT_TRUE(source.ok()) << source.message();
  std::vector<std::string> warnings;
  auto doc = Convert(**source, "AC1015", &warnings);
  ASSERT_TRUE(doc);
  Tags arch = doc->TagsOf(FindTableRecord(*doc, "DIMSTYLE", "ARCH"));
  EXPECT_EQ(TagText(arch, 342), dxf::FormatHandle(doc->store().at(FindBlockRecord(*doc, "DOT")).handle));
  EXPECT_EQ(FindTag(arch, 343), nullptr);
  EXPECT_EQ(FindTag(arch, 5), nullptr);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(warnings[0].find("'MISSING'"), std::string::npos) << warnings[0];
}

TEST(UpgradeR12, RefusesOtherReleases) {
  auto r2000 = Document::NewBlank("AC1015");
  Result<UpgradedDrawing> from_r2000 = UpgradeR12(*r2000, "AC1032");
  EXPECT_FALSE(from_r2000.ok());
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  EXPECT_FALSE(UpgradeR12(*source, "AC1009").ok());
  EXPECT_FALSE(UpgradeR12(*source, "AC1033").ok());
}

TEST(UpgradeR12, ConvertedDrawingHoldsObjectData) {
  auto source = OpenOrDie(Fixture());
  ASSERT_TRUE(source);
  EXPECT_FALSE(objectdata::ObjectDataStore(*source).CanWrite().ok());
  auto doc = Convert(*source, "AC1015");
  ASSERT_TRUE(doc);
  objectdata::ObjectDataStore store(*doc);
  ASSERT_TRUE(store.CanWrite().ok()) << store.CanWrite().message();
  od::TableDefinition def;
  def.name = "Wells";
  def.columns = {{"Depth", od::ValueType::kReal, "", od::Value::Real(0)}};
  ASSERT_TRUE(store.CreateTable(def).ok());
  RecordId circle = ModelSpaceEntities(*doc)[1];
  Status added = store.AddRecord(circle, od::Record{"Wells", {od::Value::Real(12.5)}});
  ASSERT_TRUE(added.ok()) << added.message();
  ScratchDir dir;
  auto saved = SaveAndReload(*doc, dir);
  ASSERT_TRUE(saved);
  objectdata::ObjectDataStore reread(*saved);
  std::vector<od::Record> records = reread.Records(ModelSpaceEntities(*saved)[1]);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].table, "Wells");
}

TEST(SubclassLayout, PutsEachTagUnderItsSubclass) {
  Tags text{{0, "TEXT"}, {5, "2A"}, {8, "0"}, {10, "1"}, {20, "2"}, {40, "2.5"}, {1, "A"}, {73, "2"}};
  Tags out = *SubclassEntityTags("TEXT", text);
  EXPECT_EQ(Markers(out), (std::vector<std::string>{"AcDbEntity", "AcDbText", "AcDbText"}));
  EXPECT_EQ(Under(out, "AcDbText", 73, 1), "2");
  EXPECT_EQ(Under(out, "AcDbText", 73, 0), "");
  EXPECT_EQ(FindTag(out, 5), nullptr);  // the caller gives the new handle

  Tags attrib{{0, "ATTRIB"}, {8, "0"}, {10, "1"}, {1, "W-1"}, {2, "NAME"}, {70, "0"}, {73, "8"}, {74, "1"}};
  Tags a = *SubclassEntityTags("ATTRIB", attrib);
  EXPECT_EQ(Under(a, "AcDbText", 1), "W-1");
  EXPECT_EQ(Under(a, "AcDbAttribute", 2), "NAME");
  EXPECT_EQ(Under(a, "AcDbAttribute", 74), "1");

  Tags face{{0, "VERTEX"}, {8, "0"}, {10, "0"}, {70, "128"}, {71, "1"}, {72, "2"}, {73, "3"}};
  EXPECT_EQ(Markers(*SubclassEntityTags("VERTEX", face, PolylineKind::kPolyfaceMesh)),
            (std::vector<std::string>{"AcDbEntity", "AcDbVertex", "AcDbFaceRecord"}));
  Tags mesh_vertex{{0, "VERTEX"}, {8, "0"}, {10, "0"}, {70, "192"}};
  EXPECT_EQ(Markers(*SubclassEntityTags("VERTEX", mesh_vertex, PolylineKind::kPolyfaceMesh)).back(),
            "AcDbPolyFaceMeshVertex");

  Tags linear{{0, "DIMENSION"}, {8, "0"}, {2, "*D1"}, {10, "0"}, {20, "0"}, {70, "0"}, {13, "1"},
              {23, "5"}, {33, "0"}, {14, "2"}, {24, "6"}, {50, "30"}};
  Tags d = *SubclassEntityTags("DIMENSION", linear);
  EXPECT_EQ(Markers(d), (std::vector<std::string>{"AcDbEntity", "AcDbDimension", "AcDbAlignedDimension",
                                                  "AcDbRotatedDimension"}));
  EXPECT_EQ(Under(d, "AcDbDimension", 2), "*D1");
  EXPECT_EQ(Under(d, "AcDbAlignedDimension", 50), "30");
  // A point's y and z stay with its x.
  EXPECT_EQ(Under(d, "AcDbAlignedDimension", 23), "5");
  EXPECT_EQ(Under(d, "AcDbAlignedDimension", 24), "6");
  EXPECT_EQ(Under(d, "AcDbDimension", 20), "0");

  EXPECT_FALSE(SubclassEntityTags("GADGET", {{0, "GADGET"}}));
}

TEST(SubclassLayout, TableRecordsLeaveOutWhatLaterReleasesReadDifferently) {
  Tags dimstyle{{0, "DIMSTYLE"}, {105, "1F"}, {2, "ARCH"}, {70, "0"}, {5, "DOT"}, {6, ""}, {7, ""}, {40, "1"}};
  EXPECT_EQ(ArrowBlockNames(dimstyle), (std::vector<std::pair<int, std::string>>{{342, "DOT"}}));
  Tags out = SubclassTableRecordTags("DIMSTYLE", dimstyle);
  EXPECT_EQ(Markers(out), (std::vector<std::string>{"AcDbSymbolTableRecord", "AcDbDimStyleTableRecord"}));
  for (const Tag& t : out) {
    EXPECT_NE(t.code, 5);
    EXPECT_NE(t.code, 105);
    EXPECT_NE(t.code, 6);
  }
  EXPECT_EQ(TagText(out, 40), "1");
}

}  // namespace
}  // namespace veltor::model
