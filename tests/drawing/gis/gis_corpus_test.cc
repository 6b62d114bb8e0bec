// Real drawings with records on every entity, exported to a GeoPackage and taken by ogr2ogr
// into GeoJSON: every record arrives as a feature, hatches as polygons with their holes.
#include <gtest/gtest.h>

#include "../../session/session_fixture.h"
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
