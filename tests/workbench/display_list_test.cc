// What the view draws: entities reduced to shapes in world coordinates with their colours,
// block references transformed, hidden layers left out, and the R-tree culling and picking.
#include "workbench/display_list.h"

#include <gtest/gtest.h>

#include "../drawing/dxf/test_files.h"
#include "drawing/model/blocks.h"
#include "drawing/model/entity.h"
#include "drawing/model/tables.h"
#include "drawing/session/object_ids.h"
#include "workbench/aci_colors.h"

namespace veltor::workbench {
namespace {

using model::Document;
using model::RecordId;

dxf::Tags Line(double x1, double y1, double x2, double y2) {
  return {{100, "AcDbLine"}, {10, std::to_string(x1)}, {20, std::to_string(y1)}, {30, "0"},
          {11, std::to_string(x2)}, {21, std::to_string(y2)}, {31, "0"}};
}

const DisplayItem* ItemOf(const DisplayList& list, od::EntityId id) {
  for (const DisplayItem& item : list.items())
    if (item.id == id) return &item;
  return nullptr;
}

void ExpectNear(geom::Vec2 actual, geom::Vec2 expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

class DisplayListTest : public ::testing::Test {
 protected:
  void SetUp() override {
    doc_ = Document::NewBlank();
    model::AddLayer(*doc_, "Red", 1);
  }
  od::EntityId Add(const char* type, const char* layer, dxf::Tags body) {
    return session::IdOf(*doc_, model::AddModelSpaceEntity(*doc_, type, layer, std::move(body)));
  }
  std::unique_ptr<Document> doc_;
};

TEST_F(DisplayListTest, ColoursComeFromTheEntityOrItsLayer) {
  od::EntityId by_layer = Add("LINE", "Red", Line(0, 0, 1, 0));
  dxf::Tags green = Line(0, 1, 1, 1);
  green.insert(green.begin(), {62, "3"});
  od::EntityId own = Add("LINE", "Red", green);
  DisplayList list = DisplayList::Build(*doc_);
  ASSERT_NE(ItemOf(list, by_layer), nullptr);
  ASSERT_NE(ItemOf(list, own), nullptr);
  EXPECT_EQ(ItemOf(list, by_layer)->shapes.at(0).rgb, 0xFF0000u);
  EXPECT_EQ(ItemOf(list, own)->shapes.at(0).rgb, 0x00FF00u);
}

TEST_F(DisplayListTest, ABlockReferenceDrawsItsBlockTransformedWithItsAttributes) {
  model::AddBlockDefinition(*doc_, "Mark", model::Point3{1, 0, 0},
                            {{"LINE", "0", Line(1, 0, 2, 0)}}, {{"ID", "?"}});
  RecordId insert = model::AddBlockReference(*doc_, "Mark", model::Point3{10, 10, 0}, 2.0, 90.0,
                                             "Red", {{"ID", "M-7"}});
  DisplayList list = DisplayList::Build(*doc_);
  const DisplayItem* item = ItemOf(list, session::IdOf(*doc_, insert));
  ASSERT_NE(item, nullptr);
  ASSERT_EQ(item->shapes.size(), 2u);
  // The block's line from its base point, doubled and turned a quarter: (10,10) to (10,12);
  // on layer 0 inside the block it takes the reference's layer colour.
  const Shape& line = item->shapes[0];
  ASSERT_EQ(line.kind, Shape::Kind::kPath);
  ASSERT_EQ(line.points.size(), 2u);
  ExpectNear(line.points[0], {10, 10});
  ExpectNear(line.points[1], {10, 12});
  EXPECT_EQ(line.rgb, 0xFF0000u);
  const Shape& attribute = item->shapes[1];
  EXPECT_EQ(attribute.kind, Shape::Kind::kText);
  EXPECT_EQ(attribute.text, "M-7");
}

TEST_F(DisplayListTest, ADimensionDrawsTheBlockItNamesWhereItStands) {
  model::AddBlockDefinition(*doc_, "*D1", model::Point3{0, 0, 0},
                            {{"LINE", "0", Line(3, 4, 8, 4)}}, {});
  od::EntityId dimension = Add("DIMENSION", "Red", {{100, "AcDbDimension"}, {2, "*D1"}, {10, "8"},
                                                    {20, "4"}, {30, "0"}, {70, "0"}});
  DisplayList list = DisplayList::Build(*doc_);
  const DisplayItem* item = ItemOf(list, dimension);
  ASSERT_NE(item, nullptr);
  ASSERT_EQ(item->shapes.size(), 1u);
  ExpectNear(item->shapes[0].points.at(0), {3, 4});
  ExpectNear(item->shapes[0].points.at(1), {8, 4});
  EXPECT_EQ(item->shapes[0].rgb, 0xFF0000u);
}

TEST_F(DisplayListTest, CurvesAreFlattenedAndTextsKeepTheirPlacement) {
  od::EntityId arc = Add("ARC", "0", {{100, "AcDbCircle"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "2"},
                                      {100, "AcDbArc"}, {50, "0"}, {51, "90"}});
  od::EntityId text = Add("TEXT", "0", {{100, "AcDbText"}, {10, "5"}, {20, "6"}, {30, "0"}, {40, "2.5"},
                                        {1, "%%c20"}, {50, "30"}});
  DisplayList list = DisplayList::Build(*doc_);
  const Shape& curve = ItemOf(list, arc)->shapes.at(0);
  ASSERT_GT(curve.points.size(), 4u);
  ExpectNear(curve.points.front(), {2, 0});
  ExpectNear(curve.points.back(), {0, 2});
  for (const geom::Vec2& p : curve.points) EXPECT_NEAR(p.Length(), 2.0, 1e-9);
  const Shape& label = ItemOf(list, text)->shapes.at(0);
  ExpectNear(label.points.at(0), {5, 6});
  EXPECT_DOUBLE_EQ(label.height, 2.5);
  EXPECT_NEAR(label.rotation, M_PI / 6, 1e-12);
  EXPECT_EQ(label.text, "\xE2\x8C\x80" "20");
}

TEST_F(DisplayListTest, LayersThatAreOffOrFrozenAreLeftOut) {
  model::SetLayerOff(*doc_, model::AddLayer(*doc_, "Off"), true);
  model::SetLayerFrozen(*doc_, model::AddLayer(*doc_, "Frozen"), true);
  od::EntityId shown = Add("LINE", "0", Line(0, 0, 1, 0));
  Add("LINE", "Off", Line(0, 1, 1, 1));
  Add("LINE", "Frozen", Line(0, 2, 1, 2));
  DisplayList list = DisplayList::Build(*doc_);
  ASSERT_EQ(list.items().size(), 1u);
  EXPECT_EQ(list.items()[0].id, shown);
}

TEST_F(DisplayListTest, TheIndexCullsAndPicksByDistance) {
  od::EntityId left = Add("LINE", "0", Line(0, 0, 10, 0));
  od::EntityId right = Add("LINE", "0", Line(100, 0, 110, 0));
  DisplayList list = DisplayList::Build(*doc_);
  std::vector<size_t> visible = list.Visible(geom::Extents({-5, -5, 0}, {20, 5, 0}));
  ASSERT_EQ(visible.size(), 1u);
  EXPECT_EQ(list.items()[visible[0]].id, left);
  EXPECT_EQ(list.Pick({105, 0.4}, 0.5), right);
  EXPECT_EQ(list.Pick({105, 0.6}, 0.5), od::kNullId);
  // Inside the box of the left line but far from the line itself: nothing.
  EXPECT_EQ(list.Pick({50, 0}, 0.5), od::kNullId);
}

TEST(AciColors, KnownIndices) {
  EXPECT_EQ(AciToRgb(1), 0xFF0000u);
  EXPECT_EQ(AciToRgb(5), 0x0000FFu);
  EXPECT_EQ(AciToRgb(10), 0xFF0000u);
  EXPECT_EQ(AciToRgb(11), 0xFF7F7Fu);  // half saturated
  EXPECT_EQ(AciToRgb(30), 0xFF7F00u);  // orange
  EXPECT_EQ(AciToRgb(250), 0x333333u);
}

}  // namespace
}  // namespace veltor::workbench

namespace veltor::workbench {
namespace {

// Every real drawing of the corpus is reduced to shapes without a failure; every entity kept
// has something to draw and a box to be found by.
TEST(DisplayListCorpus, EveryDrawingIsDrawn) {
  if (!veltor::testing::HaveCorpus()) GTEST_SKIP() << "no corpus at " << veltor::testing::CorpusDir();
  size_t drawn = 0;
  for (const std::string& name : veltor::testing::FilesIn(veltor::testing::CorpusDir(), ".dxf")) {
    auto doc = model::Document::Open(veltor::testing::CorpusFile(name));
    if (!doc.ok()) continue;
    DisplayList list = DisplayList::Build(**doc);
    for (const DisplayItem& item : list.items()) {
      EXPECT_FALSE(item.shapes.empty()) << name;
      EXPECT_TRUE(item.box.valid()) << name;
    }
    drawn += list.items().empty() ? 0 : 1;
  }
  EXPECT_GT(drawn, 0u);
}

}  // namespace
}  // namespace veltor::workbench
