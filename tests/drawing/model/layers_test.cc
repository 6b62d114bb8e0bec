// Layers and their states, as other programs wrote them and as we write them.
#include <gtest/gtest.h>

#include "drawing/model/tables.h"
#include "saved_drawing.h"

namespace veltor::model {
namespace {

using testing::CorpusFile;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

LayerInfo Layer(const Document& doc, std::string_view name) {
  RecordId id = FindLayer(doc, name);
  EXPECT_NE(id, kNoRecord) << name;
  return id == kNoRecord ? LayerInfo{} : ReadLayer(doc, id);
}

TEST(Layers, StatesWrittenByOtherPrograms) {
  VELTOR_NEEDS_CORPUS();
  auto r12 = OpenOrDie(CorpusFile("gdal__frozen-off.dxf"));
  ASSERT_TRUE(r12);
  std::vector<std::string> names;
  for (const LayerInfo& l : Layers(*r12)) names.push_back(l.name);
  EXPECT_EQ(names, (std::vector<std::string>{"0", "ONTHAW", "ONFREEZE", "OFFTHAW", "OFFFREEZE"}));
  LayerInfo l = Layer(*r12, "ONTHAW");
  EXPECT_FALSE(l.frozen || l.off || l.locked);
  l = Layer(*r12, "ONFREEZE");
  EXPECT_TRUE(l.frozen && !l.off);
  l = Layer(*r12, "OFFTHAW");
  EXPECT_TRUE(!l.frozen && l.off);
  EXPECT_EQ(l.color, -7);
  l = Layer(*r12, "OFFFREEZE");
  EXPECT_TRUE(l.frozen && l.off && !l.locked);

  auto qcad = OpenOrDie(CorpusFile("qcad__visibility2.dxf"));
  ASSERT_TRUE(qcad);
  l = Layer(*qcad, "z_annotations");
  EXPECT_TRUE(l.locked && !l.frozen && !l.off);
  EXPECT_EQ(l.color, 251);
  EXPECT_FALSE(Layer(*qcad, "red").locked);
  EXPECT_FALSE(Layer(*qcad, "red").hidden);
}

TEST(Layers, NamesMatchWithoutAsciiCase) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("qcad__visibility2.dxf"));
  ASSERT_TRUE(doc);
  EXPECT_EQ(FindLayer(*doc, "Z_ANNOTATIONS"), FindLayer(*doc, "z_annotations"));
  EXPECT_EQ(FindLayer(*doc, "z_annotation"), kNoRecord);
  size_t records = doc->store().size();
  EXPECT_EQ(AddLayer(*doc, "RED"), FindLayer(*doc, "red")) << "an existing layer is returned";
  EXPECT_EQ(doc->store().size(), records);
}

TEST(Layers, StatesSetAndClearedSurviveSaving) {
  VELTOR_NEEDS_CORPUS();
  ScratchDir dir;
  auto doc = OpenOrDie(CorpusFile("qcad__visibility2.dxf"));
  ASSERT_TRUE(doc);
  RecordId red = FindLayer(*doc, "red");
  SetLayerFrozen(*doc, red, true);
  SetLayerLocked(*doc, red, true);
  SetLayerOff(*doc, red, true);
  SetLayerHidden(*doc, red, true);
  SetLayerHidden(*doc, red, true);  // twice: still one mark
  SetLayerOff(*doc, red, true);     // twice: still off, colour kept
  auto saved = SaveAndReload(*doc, dir, "set.dxf");
  ASSERT_TRUE(saved);
  LayerInfo l = Layer(*saved, "red");
  EXPECT_TRUE(l.frozen && l.locked && l.off && l.hidden);
  EXPECT_EQ(l.color, -1);
  EXPECT_FALSE(Layer(*saved, "blue").hidden) << "only the layer asked for";
  EXPECT_NE(FindTableRecord(*saved, "APPID", "VELTOR"), kNoRecord) << "xdata needs its APPID";
  int marks = 0;
  for (const Tag& t : saved->TagsOf(FindLayer(*saved, "red")))
    marks += t.code == 1001 && t.value == "VELTOR";
  EXPECT_EQ(marks, 1);

  red = FindLayer(*saved, "red");
  SetLayerFrozen(*saved, red, false);
  SetLayerLocked(*saved, red, false);
  SetLayerOff(*saved, red, false);
  SetLayerHidden(*saved, red, false);
  size_t appids = 0;
  for (RecordId id = saved->store().first(); id != kNoRecord; id = saved->store().at(id).next)
    appids += saved->TypeOf(id) == "APPID";
  auto cleared = SaveAndReload(*saved, dir, "cleared.dxf");
  ASSERT_TRUE(cleared);
  l = Layer(*cleared, "red");
  EXPECT_FALSE(l.frozen || l.locked || l.off || l.hidden);
  EXPECT_EQ(l.color, 1);
  for (const Tag& t : cleared->TagsOf(l.id)) EXPECT_NE(t.value, "VELTOR") << "the hidden mark is removed";
  size_t appids_after = 0;
  for (RecordId id = cleared->store().first(); id != kNoRecord; id = cleared->store().at(id).next)
    appids_after += cleared->TypeOf(id) == "APPID";
  EXPECT_EQ(appids_after, appids) << "the APPID is registered once";
}

TEST(Layers, OtherFlagBitsAreKept) {
  auto doc = Document::NewBlank("AC1015");
  RecordId layer = AddLayer(*doc, "Xref|Walls", 3);
  SetTag(doc->MutableTags(layer), 70, "48");  // externally dependent + resolved
  SetLayerFrozen(*doc, layer, true);
  SetLayerLocked(*doc, layer, true);
  EXPECT_EQ(TagInt(doc->TagsOf(layer), 70), 48 | 1 | 4);
  SetLayerFrozen(*doc, layer, false);
  EXPECT_EQ(TagInt(doc->TagsOf(layer), 70), 48 | 4);
  EXPECT_EQ(ReadLayer(*doc, layer).color, 3);
}

}  // namespace
}  // namespace veltor::model
