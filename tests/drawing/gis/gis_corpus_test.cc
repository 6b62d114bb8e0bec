// Real drawings with records on every entity, exported to a GeoPackage and taken by ogr2ogr
// into GeoJSON: every record arrives as a feature, hatches as polygons with their holes.
#include <gtest/gtest.h>

#include "../../session/session_fixture.h"
#include <cmath>

#include "drawing/gis/gis_geometry.h"
#include "drawing/gis/od_export.h"
#include "gis_test_support.h"

namespace veltor::gis {
namespace {

using testing::Shell;

// The number after `key` in `text` (-1 when absent).
long NumberAfter(const std::string& text, const std::string& key) {
  size_t at = text.find(key);
  return at == std::string::npos ? -1 : std::atol(text.c_str() + at + key.size());
}

size_t Count(const std::string& text, const std::string& what) {
  size_t n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
  return n;
}

class GisCorpus : public ::testing::TestWithParam<std::string> {};

TEST_P(GisCorpus, ExportedRecordsGoThroughOgr2ogrIntoGeoJson) {
  VELTOR_NEEDS_CORPUS();
  if (!testing::HaveOgrTools()) GTEST_SKIP() << "gdal-bin is not installed";
  std::string out;
  session::Session s([&out](std::string_view t) { out += t; });
  session::RegisterHostCommands(s);
  Status opened = s.OpenDocument(testing::CorpusFile(GetParam()));
  ASSERT_TRUE(opened.ok()) << opened.message();
  od::ObjectDataContainer& c = s.active()->project.Container();
  od::TableDefinition def{"Corpus", "", {{"N", od::ValueType::kInteger, "", od::Value::Integer(0)},
                                         {"WHAT", od::ValueType::kCharacter, "", od::Value::Character("")}}};
  ASSERT_TRUE(c.CreateTable(def).ok());
  // A record on every model space entity, numbered, with its type.
  std::map<std::string, int> types;
  int n = 0;
  for (od::EntityId e : s.active()->database.ModelSpaceEntities()) {
    const std::string type = s.active()->database.EntityType(e);
    ++types[type];
    ASSERT_TRUE(c.AddRecord(e, {"Corpus", {od::Value::Integer(++n), od::Value::Character(type)}}).ok());
  }
  ASSERT_GT(types["HATCH"], 0);

  testing::ScratchDir dir;
  ExportOptions options;
  options.target = dir.File("corpus.gpkg");
  Result<ExportSummary> done = ExportObjectData({{s.active()->doc.get(), GetParam()}}, options);
  ASSERT_TRUE(done.ok()) << done.message();
  EXPECT_EQ(done->features, static_cast<size_t>(n));

  int status = 0;
  const std::string json = dir.File("corpus.geojson");
  std::string log = Shell("ogr2ogr -f GeoJSON " + json + " " + options.target + " Corpus", &status);
  ASSERT_EQ(status, 0) << log;
  const std::string info = Shell("ogrinfo -ro -al " + json);
  EXPECT_EQ(NumberAfter(info, "Feature Count: "), n) << info.substr(0, 2000);
  EXPECT_EQ(Count(info, "  veltor_drawing (String) = " + GetParam()), static_cast<size_t>(n));
  // Every hatch is a polygon (or several), none without geometry.
  const std::string hatches = Shell("ogrinfo -ro -al -geom=SUMMARY " + json + " -where \"WHAT = 'HATCH'\"");
  EXPECT_EQ(NumberAfter(hatches, "Feature Count: "), types["HATCH"]);
  EXPECT_EQ(Count(hatches, "  POLYGON : ") + Count(hatches, "  MULTIPOLYGON : "),
            static_cast<size_t>(types["HATCH"])) << hatches.substr(0, 3000);
  const std::string lines = Shell("ogrinfo -ro -al -geom=SUMMARY " + json + " -where \"WHAT = 'LINE'\"");
  EXPECT_EQ(Count(lines, "  LINESTRING : "), static_cast<size_t>(types["LINE"]));
}

// Hatch boundaries against areas known independently: two nested full ellipses (a ring
// between them, computed from the ellipses' axes); an edge path of lines, circular and
// elliptic arcs and a spline (ezdxf 0.18.1's path flattening gives 1268.824); an edge path
// with clockwise arcs (ezdxf: 0.1978). Ellipses are cut into at most 396 chords per turn, which
// loses up to 4e-5 of their area.
TEST(GisHatches, BoundaryAreasMatchAnIndependentReading) {
  VELTOR_NEEDS_CORPUS();
  struct Case {
    const char* drawing;
    model::Handle hatch;
    double area;
    double tolerance;
  };
  const double a1 = 12.13728813739648, b1 = a1 * 0.4999999999999999;
  const double a2 = 9.102966103047358, b2 = a2 * 0.6666666666666666;
  const Case cases[] = {{"qcad__DIN7200.dxf", 0xE51, M_PI * (a1 * b1 - a2 * b2), 0.005},
                        {"ezdxf__hatches_2.dxf", 0x233, 1268.824, 0.01},
                        {"dxfparser__api-cw750-details.dxf", 0x1438, 0.1978, 0.0001}};
  for (const Case& c : cases) {
    auto doc = model::Document::Open(testing::CorpusFile(c.drawing));
    ASSERT_TRUE(doc.ok()) << doc.message();
    const model::RecordId hatch = (*doc)->Find(c.hatch);
    ASSERT_NE(hatch, model::kNoRecord) << c.drawing;
    GeometryPtr g = EntityGeometry(**doc, hatch, 1e-5);
    ASSERT_TRUE(g) << c.drawing;
    EXPECT_NEAR(OGR_G_Area(g.get()), c.area, c.tolerance) << c.drawing;
  }
}

INSTANTIATE_TEST_SUITE_P(Hatches, GisCorpus,
                         ::testing::Values("ezdxf__hatches_1.dxf", "ezdxf__hatches_2.dxf",
                                           "gdal__hatch_as_multipolygon.dxf"),
                         [](const ::testing::TestParamInfo<std::string>& p) {
                           std::string name = p.param.substr(0, p.param.size() - 4);
                           for (char& ch : name)
                             if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
                           return name;
                         });

}  // namespace
}  // namespace veltor::gis
