// Extents of drawing entities as drawn: polyline widths, thickness, multiline elements and
// caps, block references through ExtentsCache, and the model space R-tree.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "drawing/model/entity.h"
#include "drawing/model/entity_geometry.h"
#include "drawing/model/extents_cache.h"
#include "saved_drawing.h"

namespace veltor::model {
namespace {

using geom::Extents;
using geom::Vec3;
using testing::CorpusFile;
using testing::OpenOrDie;

// A record as DXF text from (code, value) pairs.
std::string Record(const std::vector<std::pair<int, std::string>>& tags) {
  std::ostringstream out;
  for (const auto& [code, value] : tags) out << code << "\n" << value << "\n";
  return out.str();
}

// A drawing of the given BLOCKS, ENTITIES and OBJECTS contents.
std::unique_ptr<Document> Drawing(const std::string& entities, const std::string& blocks = "",
                                  const std::string& objects = "") {
  std::string text = "0\nSECTION\n2\nBLOCKS\n" + blocks + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
                     entities + "0\nENDSEC\n0\nSECTION\n2\nOBJECTS\n" + objects +
                     "0\nENDSEC\n0\nEOF\n";
  auto doc = Document::FromBytes(text, "geometry.dxf");
  EXPECT_TRUE(doc.ok()) << doc.message();
  return doc.ok() ? std::move(doc.value()) : nullptr;
}

std::vector<RecordId> Entities(const Document& doc) { return ModelSpaceEntities(doc); }

void ExpectBox(const Vec3& min, const Vec3& max, const std::optional<Extents>& box, double tol) {
  ASSERT_TRUE(box.has_value());
  EXPECT_NEAR(min.x, box->min().x, tol);
  EXPECT_NEAR(min.y, box->min().y, tol);
  EXPECT_NEAR(min.z, box->min().z, tol);
  EXPECT_NEAR(max.x, box->max().x, tol);
  EXPECT_NEAR(max.y, box->max().y, tol);
  EXPECT_NEAR(max.z, box->max().z, tol);
}

std::string LwPolyline(const std::string& head, const std::vector<std::string>& vertices) {
  std::string out = Record({{0, "LWPOLYLINE"}, {8, "0"}, {90, std::to_string(vertices.size())}}) + head;
  for (const std::string& v : vertices) out += v;
  return out;
}

TEST(WidePolylineExtents, ConstantWidthCoversEverySegment) {
  auto doc = Drawing(LwPolyline(Record({{43, "2"}}), {Record({{10, "0"}, {20, "0"}, {40, "6"}, {41, "6"}}),
                                                      Record({{10, "10"}, {20, "0"}})}));
  ASSERT_TRUE(doc);
  // A constant width other than 0 wins over vertex widths, as the CAD host draws it.
  ExpectBox({0, -1, 0}, {10, 1, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(WidePolylineExtents, VertexWidthsApplyWhenConstantWidthIsZero) {
  auto doc = Drawing(LwPolyline(Record({{43, "0"}}), {Record({{10, "0"}, {20, "0"}, {40, "4"}, {41, "0"}}),
                                                      Record({{10, "10"}, {20, "0"}})}));
  ASSERT_TRUE(doc);
  ExpectBox({0, -2, 0}, {10, 2, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
  // Length and area stay those of the path.
  EXPECT_NEAR(10.0, *EntityLength(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(WidePolylineExtents, Polyline2dVerticesTakeTheDefaultWidths) {
  std::string polyline = Record({{0, "POLYLINE"}, {8, "0"}, {66, "1"}, {10, "0"}, {20, "0"}, {30, "0"},
                                 {40, "2"}, {41, "2"}}) +
                         Record({{0, "VERTEX"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}}) +
                         Record({{0, "VERTEX"}, {8, "0"}, {10, "10"}, {20, "0"}, {30, "0"}, {40, "6"}, {41, "6"}}) +
                         Record({{0, "VERTEX"}, {8, "0"}, {10, "20"}, {20, "0"}, {30, "0"}}) +
                         Record({{0, "SEQEND"}, {8, "0"}});
  auto doc = Drawing(polyline);
  ASSERT_TRUE(doc);
  // 2 wide up to x = 10, then 6 wide: the band reaches 3 from the path.
  ExpectBox({0, -3, 0}, {20, 3, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(ThicknessExtents, ShapesAreSweptAlongTheExtrusionDirection) {
  auto doc = Drawing(
      Record({{0, "LINE"}, {8, "0"}, {39, "5"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "10"}, {21, "0"}, {31, "0"}}) +
      Record({{0, "LINE"}, {8, "0"}, {39, "2"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "10"}, {21, "0"},
              {31, "0"}, {210, "0"}, {220, "4"}, {230, "0"}}) +
      Record({{0, "CIRCLE"}, {8, "0"}, {39, "3"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "1"},
              {210, "0"}, {220, "0"}, {230, "-1"}}) +
      Record({{0, "POINT"}, {8, "0"}, {39, "-2"}, {10, "1"}, {20, "2"}, {30, "3"}}) +
      Record({{0, "ARC"}, {8, "0"}, {39, "1"}, {10, "0"}, {20, "0"}, {30, "0"}, {40, "1"}, {50, "0"}, {51, "90"}}));
  ASSERT_TRUE(doc);
  const std::vector<RecordId> e = Entities(*doc);
  ASSERT_EQ(5u, e.size());
  ExpectBox({0, 0, 0}, {10, 0, 5}, EntityExtents(*doc, e[0]), 1e-12);
  // Thickness runs along the unit extrusion, whatever the stored vector's length.
  ExpectBox({0, 0, 0}, {10, 2, 0}, EntityExtents(*doc, e[1]), 1e-12);
  ExpectBox({-1, -1, -3}, {1, 1, 0}, EntityExtents(*doc, e[2]), 1e-12);
  ExpectBox({1, 2, 1}, {1, 2, 3}, EntityExtents(*doc, e[3]), 1e-12);
  ExpectBox({0, 0, 0}, {1, 1, 1}, EntityExtents(*doc, e[4]), 1e-12);
}

TEST(ThicknessExtents, WidePolylineWithThicknessIsASweptBand) {
  auto doc = Drawing(LwPolyline(Record({{43, "2"}, {38, "1"}, {39, "4"}}),
                                {Record({{10, "0"}, {20, "0"}}), Record({{10, "10"}, {20, "0"}})}));
  ASSERT_TRUE(doc);
  ExpectBox({0, -1, 1}, {10, 1, 5}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(ThicknessExtents, Polyline3dHasNoThickness) {
  std::string polyline = Record({{0, "POLYLINE"}, {8, "0"}, {66, "1"}, {70, "8"}, {39, "5"}}) +
                         Record({{0, "VERTEX"}, {8, "0"}, {10, "0"}, {20, "0"}, {30, "0"}, {70, "32"}}) +
                         Record({{0, "VERTEX"}, {8, "0"}, {10, "1"}, {20, "1"}, {30, "1"}, {70, "32"}}) +
                         Record({{0, "SEQEND"}, {8, "0"}});
  auto doc = Drawing(polyline);
  ASSERT_TRUE(doc);
  ExpectBox({0, 0, 0}, {1, 1, 1}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
}

// An MLINE along x from (0,0) to (10,0) with two elements whose first parameters are the
// offsets along the miter direction (0,1) at each vertex.
std::string Mline(const std::string& style_handle, double low, double high, int flags = 1) {
  std::string out = Record({{0, "MLINE"}, {5, "A0"}, {8, "0"}, {2, "STANDARD"}, {340, style_handle},
                            {40, "20"}, {70, "0"}, {71, std::to_string(flags)}, {72, "2"}, {73, "2"},
                            {10, "0"}, {20, "0"}, {30, "0"}});
  for (const char* x : {"0", "10"}) {
    out += Record({{11, x}, {21, "0"}, {31, "0"}, {12, "1"}, {22, "0"}, {32, "0"}, {13, "0"}, {23, "1"}, {33, "0"},
                   {74, "2"}, {41, std::to_string(high)}, {41, "0"}, {75, "0"},
                   {74, "2"}, {41, std::to_string(low)}, {41, "0"}, {75, "0"}});
  }
  return out;
}

std::string MlineStyle(const std::string& handle, int flags) {
  return Record({{0, "MLINESTYLE"}, {5, handle}, {2, "STYLE"}, {70, std::to_string(flags)}});
}

TEST(MlineExtents, ElementsLieAtTheirOffsetsAlongTheMiter) {
  // The parameters are stored scaled already: the scale 20 is not applied again.
  auto doc = Drawing(Mline("B0", -20, 0), "", MlineStyle("B0", 0));
  ASSERT_TRUE(doc);
  ExpectBox({0, -20, 0}, {10, 0, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
  // The reference line is what length and vertices describe.
  EXPECT_NEAR(10.0, *EntityLength(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(MlineExtents, RoundCapsAddHalfCirclesAcrossTheOuterElements) {
  // Start round cap (64) and end round cap (1024): half circles of radius 1 about (0,0)
  // and (10,0), behind the start and beyond the end.
  auto doc = Drawing(Mline("B0", -1, 1), "", MlineStyle("B0", 64 | 1024));
  ASSERT_TRUE(doc);
  ExpectBox({-1, -1, 0}, {11, 1, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
  // The MLINE may suppress its start caps (71 & 4).
  auto end_only = Drawing(Mline("B0", -1, 1, 1 | 4), "", MlineStyle("B0", 64 | 1024));
  ASSERT_TRUE(end_only);
  ExpectBox({0, -1, 0}, {11, 1, 0}, EntityExtents(*end_only, Entities(*end_only)[0]), 1e-12);
  // A closed multiline has no caps.
  auto closed = Drawing(Mline("B0", -1, 1, 3), "", MlineStyle("B0", 64 | 1024));
  ASSERT_TRUE(closed);
  ExpectBox({0, -1, 0}, {10, 1, 0}, EntityExtents(*closed, Entities(*closed)[0]), 1e-12);
}

std::string Block(const std::string& name, const std::string& base_x, const std::string& contents) {
  return Record({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, "0"}, {10, base_x}, {20, "0"}, {30, "0"}}) + contents +
         Record({{0, "ENDBLK"}, {8, "0"}});
}

std::string Insert(const std::string& name, const std::string& x, const std::string& scale = "1") {
  return Record({{0, "INSERT"}, {8, "0"}, {2, name}, {10, x}, {20, "0"}, {30, "0"}, {41, scale}, {42, scale}});
}

std::string Line(const std::string& x0, const std::string& x1) {
  return Record({{0, "LINE"}, {8, "0"}, {10, x0}, {20, "0"}, {30, "0"}, {11, x1}, {21, "1"}, {31, "0"}});
}

TEST(ExtentsCacheTest, BlockReferencesMeasureTheBlockOnce) {
  auto doc = Drawing(Insert("inner", "100") + Insert("Outer", "0", "2") + Insert("outer", "50"),
                     Block("INNER", "1", Line("1", "3")) + Block("OUTER", "0", Insert("inner", "0") + Line("0", "1")));
  ASSERT_TRUE(doc);
  ExtentsCache cache(*doc);
  const std::vector<RecordId> e = Entities(*doc);
  ExpectBox({100, 0, 0}, {102, 1, 0}, cache.Measure(e[0]), 1e-12);
  // Block names match without regard to case; nested blocks are measured inside.
  ExpectBox({0, 0, 0}, {4, 2, 0}, cache.Measure(e[1]), 1e-12);
  ExpectBox({50, 0, 0}, {52, 1, 0}, cache.Measure(e[2]), 1e-12);
  for (RecordId id : e) ExpectBox(cache.Measure(id)->min(), cache.Measure(id)->max(), EntityExtents(*doc, id), 0.0);
}

TEST(ExtentsCacheTest, StartsOverWhenTheDrawingChanges) {
  auto doc = Drawing(Insert("B", "0"), Block("B", "0", Line("0", "1")));
  ASSERT_TRUE(doc);
  ExtentsCache cache(*doc);
  const RecordId insert = Entities(*doc)[0];
  ExpectBox({0, 0, 0}, {1, 1, 0}, cache.Measure(insert), 1e-12);
  // Lengthen the line inside the block: the cached block contents must not be used.
  const RecordId begin = doc->store().at(doc->SectionStart(Section::kBlocks)).next;
  const RecordId line = doc->store().at(begin).next;
  ASSERT_EQ("LINE", doc->TypeOf(line));
  SetTag(doc->MutableTags(line), 11, "7");
  ExpectBox({0, 0, 0}, {7, 1, 0}, cache.Measure(insert), 1e-12);
}

TEST(ExtentsCacheTest, BlockInsideItselfEnds) {
  auto doc = Drawing(Insert("LOOP", "0"), Block("LOOP", "0", Line("0", "1") + Insert("LOOP", "5")));
  ASSERT_TRUE(doc);
  // The inner reference to the block being measured adds nothing.
  ExpectBox({0, 0, 0}, {1, 1, 0}, EntityExtents(*doc, Entities(*doc)[0]), 1e-12);
}

TEST(ExtentsCacheTest, SameExtentsFromFileBytesAndFromChangedRecords) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("ezdxf__POLI-ALL210_12.dxf"));
  ASSERT_TRUE(doc);
  std::vector<std::optional<Extents>> from_file;
  for (RecordId id : Entities(*doc)) from_file.push_back(EntityExtents(*doc, id));
  // Materialising a record's tags (as an edit does) moves its values out of the file bytes.
  for (RecordId id = doc->store().first(); id != kNoRecord; id = doc->store().at(id).next)
    doc->MutableTags(id);
  size_t i = 0;
  for (RecordId id : Entities(*doc)) {
    const auto& before = from_file[i++];
    const auto after = EntityExtents(*doc, id);
    ASSERT_EQ(before.has_value(), after.has_value());
    if (before) ExpectBox(before->min(), before->max(), after, 0.0);
  }
}

TEST(ModelSpaceIndexTest, FindsWideAndThickEntitiesByTheirDrawnExtents) {
  auto doc = Drawing(LwPolyline(Record({{43, "4"}}), {Record({{10, "0"}, {20, "0"}}), Record({{10, "10"}, {20, "0"}})}) +
                     Line("20", "30"));
  ASSERT_TRUE(doc);
  const geom::SpatialIndex index = BuildModelSpaceIndex(*doc);
  EXPECT_EQ(2u, index.size());
  // The band reaches y = -2: a window below the path still meets it.
  const auto hits = index.Intersecting(Extents({4, -1.9, 0}, {6, -1.5, 0}));
  ASSERT_EQ(1u, hits.size());
  EXPECT_EQ(Entities(*doc)[0], hits[0]);
}

}  // namespace
}  // namespace veltor::model
