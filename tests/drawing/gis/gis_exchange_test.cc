// Object Data to GIS formats and back, checked with GDAL's own tools (ogrinfo, ogr2ogr) as
// the independent reader: layers, counts, field types and values, geometries, the round trip
// through a GeoPackage, and bad input that must change nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include <gdal.h>
#include <ogr_api.h>

#include "../../session/session_fixture.h"
#include "drawing/gis/gis_commands.h"
#include "drawing/gis/gis_geometry.h"
#include "drawing/gis/od_export.h"
#include "drawing/gis/od_import.h"
#include "drawing/model/create.h"
#include "gis_test_support.h"

namespace veltor::gis {
namespace {

using testing::ExactText;
using testing::RecordsByTable;
using testing::ScratchDir;
using testing::Shell;

od::ColumnDefinition Column(const std::string& name, od::ValueType type) {
  return {name, type, "", od::Value(type)};
}

od::Record SiteRecord(int id, double area, const std::string& owner, od::Point3 p) {
  return {"Sites", {od::Value::Integer(id), od::Value::Real(area), od::Value::Character(owner), od::Value::Point(p)}};
}

// A drawing with two tables and entities of every kind the exporter maps.
class GisExchange : public testing::SessionFixture {
 protected:
  GisExchange() {
    session::RegisterHostCommands(session_);
    RegisterGisCommands(session_);
    od::TableDefinition sites{"Sites", "surveyed sites", {}};
    sites.columns = {Column("ID", od::ValueType::kInteger), Column("AREA", od::ValueType::kReal),
                     Column("OWNER", od::ValueType::kCharacter), Column("CENTRE", od::ValueType::kPoint)};
    od::TableDefinition roads{"Roads", "", {Column("NAME", od::ValueType::kCharacter)}};
    EXPECT_TRUE(container().CreateTable(sites).ok());
    EXPECT_TRUE(container().CreateTable(roads).ok());
    model::AddLayer(doc(), "SITES");

    // A 3D point with two records of one table: two features.
    point_ = Add(model::AddPoint(doc(), "SITES", {1, 2, 3}));
    Attach(point_, SiteRecord(1, 0.1, "Ana", {1.0 / 3, 2.0 / 3, -7.25}));
    Attach(point_, SiteRecord(2, 1e-300, "Bö Ŝ", {0, 0, 0}));
    // A closed polyline with a bulge: a polygon whose arc keeps within the deviation.
    closed_ = Add(model::AddLwPolyline(doc(), "SITES", {{0, 0, 0}, {10, 0, 1}, {10, 10, 0}, {0, 10, 0}}, true));
    Attach(closed_, SiteRecord(3, 100.125, "", {5, 5, 0}));
    circle_ = Add(model::AddCircle(doc(), "SITES", {50, 50, 0}, 4));
    Attach(circle_, SiteRecord(-2147483647 - 1, -2.5e-10, "circle", {50, 50, 0}));
    // Roads: a line, an open polyline, an arc; a text with a record; a line without records.
    line_ = Add(model::AddLine(doc(), "0", {0, 0, 0}, {100, 0, 0}));
    Attach(line_, {"Roads", {od::Value::Character("Main Street")}});
    open_ = Add(model::AddLwPolyline(doc(), "0", {{0, 0, 0}, {5, 5, 0}, {10, 0, 0}}, false));
    Attach(open_, {"Roads", {od::Value::Character("Zig")}});
    arc_ = Add(model::AddArc(doc(), "0", {0, 0, 0}, 100, 0, 90));
    Attach(arc_, {"Roads", {od::Value::Character("Bend")}});
    text_ = Add(model::AddText(doc(), "0", {7, 8, 0}, 2.5, "label"));
    Attach(text_, {"Roads", {od::Value::Character("label road")}});
    bare_ = Add(model::AddLine(doc(), "0", {0, 0, 0}, {1, 1, 0}));
  }

  od::EntityId Add(model::RecordId record) { return session::IdOf(doc(), record); }
  void Attach(od::EntityId entity, const od::Record& record) {
    Status s = container().AddRecord(entity, record);
    ASSERT_TRUE(s.ok()) << s.message();
  }
  std::string Handle(od::EntityId id) { return db().EntityHandle(id); }

  Result<ExportSummary> ExportTo(const std::string& target, ExportOptions options = {}) {
    options.target = target;
    return ExportObjectData({{&doc(), "test.dxf"}}, options);
  }

  // One value of the feature of `layer` whose handle is `handle`, as ogrinfo prints it.
  std::string OgrValue(const std::string& file, const std::string& sql) {
    return Shell("ogrinfo -q -ro " + file + " -sql \"" + sql + "\"");
  }

  ScratchDir dir_;
  od::EntityId point_, closed_, circle_, line_, open_, arc_, text_, bare_;
};

TEST_F(GisExchange, OgrinfoSeesOneLayerPerTableWithTypedFieldsAndOneFeaturePerRecord) {
  if (!testing::HaveOgrTools()) GTEST_SKIP() << "gdal-bin is not installed";
  const std::string out = dir_.File("out.gpkg");
  Result<ExportSummary> done = ExportTo(out);
  ASSERT_TRUE(done.ok()) << done.message();
  // Counted independently of the exporter's walk: the store's own per-table counts.
  std::map<std::string, size_t> counts = objectdata::ObjectDataStore(doc()).RecordCounts();
  EXPECT_EQ(counts["Sites"], 4u);
  EXPECT_EQ(done->features, counts["Sites"] + counts["Roads"]);
  EXPECT_EQ(done->layers, 2u);

  const std::string info = Shell("ogrinfo -so -al -ro " + out);
  EXPECT_NE(info.find("Layer name: Sites"), std::string::npos) << info;
  EXPECT_NE(info.find("Layer name: Roads"), std::string::npos) << info;
  EXPECT_EQ(info.find("veltor_no_records"), std::string::npos) << info;
  EXPECT_NE(info.find("Feature Count: " + std::to_string(counts["Sites"])), std::string::npos) << info;
  EXPECT_NE(info.find("Feature Count: " + std::to_string(counts["Roads"])), std::string::npos) << info;
  for (const char* field : {"veltor_handle: String", "veltor_type: String", "veltor_layer: String",
                            "veltor_drawing: String", "ID: Integer", "AREA: Real", "OWNER: String",
                            "CENTRE_X: Real", "CENTRE_Y: Real", "CENTRE_Z: Real", "NAME: String"})
    EXPECT_NE(info.find(field), std::string::npos) << field << "\n" << info;
  // Coordinates are drawing units: the GeoPackage's undefined Cartesian system.
  EXPECT_NE(info.find("Undefined Cartesian SRS"), std::string::npos) << info;

  // The point's two records are two features of the same entity, with their values.
  const std::string point = OgrValue(out, "SELECT ID, OWNER, AREA, CENTRE_Z, veltor_type, veltor_layer, "
                                          "veltor_drawing, geom FROM Sites WHERE veltor_handle = '" + Handle(point_) +
                                          "' ORDER BY ID");
  EXPECT_NE(point.find("ID (Integer) = 1"), std::string::npos) << point;
  EXPECT_NE(point.find("ID (Integer) = 2"), std::string::npos) << point;
  EXPECT_NE(point.find("OWNER (String) = Bö Ŝ"), std::string::npos) << point;
  EXPECT_NE(point.find("CENTRE_Z (Real) = -7.25"), std::string::npos) << point;
  EXPECT_NE(point.find("veltor_type (String) = POINT"), std::string::npos) << point;
  EXPECT_NE(point.find("veltor_layer (String) = SITES"), std::string::npos) << point;
  EXPECT_NE(point.find("veltor_drawing (String) = test.dxf"), std::string::npos) << point;
  EXPECT_NE(point.find("POINT Z (1 2 3)"), std::string::npos) << point;
  const std::string minimum = OgrValue(out, "SELECT ID FROM Sites WHERE OWNER = 'circle'");
  EXPECT_NE(minimum.find("ID (Integer) = -2147483648"), std::string::npos) << minimum;
}

TEST_F(GisExchange, GeometriesFollowTheEntityTypes) {
  if (!testing::HaveOgrTools()) GTEST_SKIP() << "gdal-bin is not installed";
  const std::string out = dir_.File("geometry.gpkg");
  ExportOptions options;
  options.without_records = true;
  ASSERT_TRUE(ExportTo(out, options).ok());
  // The geometry as ogrinfo prints it (WKT) for the entity's feature in `layer`.
  auto wkt_of = [&](const std::string& layer, od::EntityId id) {
    return Shell("ogrinfo -q -ro " + out + " " + layer + " -where \"veltor_handle = '" + Handle(id) + "'\"");
  };
  EXPECT_NE(wkt_of("Sites", point_).find("POINT Z (1 2 3)"), std::string::npos) << wkt_of("Sites", point_);
  EXPECT_NE(wkt_of("Sites", closed_).find("POLYGON (("), std::string::npos) << wkt_of("Sites", closed_);
  EXPECT_NE(wkt_of("Sites", circle_).find("POLYGON (("), std::string::npos);
  EXPECT_NE(wkt_of("Roads", line_).find("LINESTRING (0 0,100 0)"), std::string::npos) << wkt_of("Roads", line_);
  EXPECT_NE(wkt_of("Roads", open_).find("LINESTRING (0 0,5 5,10 0)"), std::string::npos);
  EXPECT_NE(wkt_of("Roads", arc_).find("LINESTRING (100 0,"), std::string::npos) << wkt_of("Roads", arc_);
  EXPECT_NE(wkt_of("Roads", text_).find("POINT (7 8)"), std::string::npos) << wkt_of("Roads", text_);
  // Entities without records have their own layer when asked for.
  EXPECT_NE(wkt_of("veltor_no_records", bare_).find("LINESTRING (0 0,1 1)"), std::string::npos);
  EXPECT_EQ(wkt_of("veltor_no_records", point_).find("POINT"), std::string::npos);
  // The bulge of the closed polyline (from (10,0) to (10,10)) bows out beyond x = 10.
  const std::string bulge = OgrValue(out, "SELECT ST_MaxX(geom) AS x FROM Sites WHERE ID = 3");
  EXPECT_NE(bulge.find("x (Real) = 15"), std::string::npos) << bulge;

  // The flattened arc (radius 100) stays within the deviation: every chord's middle is at
  // least 100 - 0.01 from the centre, and the polygon of the circle has the circle's area
  // within the chords' loss.
  const std::string arc_points = OgrValue(out, "SELECT ST_NPoints(geom) AS n FROM Roads WHERE NAME = 'Bend'");
  const size_t at = arc_points.find("n (Integer) = ");
  ASSERT_NE(at, std::string::npos) << arc_points;
  const int n = std::stoi(arc_points.substr(at + 14));
  const double chord_sagitta = 100 * (1 - std::cos(M_PI / 2 / (n - 1) / 2));
  EXPECT_LE(chord_sagitta, 0.01) << n;
  EXPECT_GT(n, 10);
  const std::string area = OgrValue(out, "SELECT ST_Area(geom) AS a FROM Sites WHERE OWNER = 'circle'");
  const double a = std::stod(area.substr(area.find("a (Real) = ") + 11));
  EXPECT_NEAR(a, M_PI * 16, 2 * M_PI * 4 * 0.01);
  EXPECT_LT(a, M_PI * 16);
}

TEST_F(GisExchange, GeoPackageRoundTripGivesBackEveryRecordAtFullPrecision) {
  const std::string out = dir_.File("round.gpkg");
  ASSERT_TRUE(ExportTo(out).ok());
  session::Session back([](std::string_view) {});
  back.AddDocument(model::Document::NewBlank("AC1027"), "back.dxf");
  for (const char* layer : {"Sites", "Roads"}) {
    ImportOptions options;
    options.source = out;
    options.layer = layer;
    options.target_layer = std::string("GIS_") + layer;
    Result<ImportSummary> done = ImportObjectData(*back.active(), options);
    ASSERT_TRUE(done.ok()) << done.message();
    EXPECT_TRUE(done->table_created);
    EXPECT_TRUE(done->warnings.empty());
  }
  // The same definitions: names, types and order of the columns (veltor_* fields are not columns).
  objectdata::ObjectDataStore store(*back.active()->doc);
  Result<od::TableDefinition> sites = store.GetTable("Sites");
  ASSERT_TRUE(sites.ok());
  ASSERT_EQ(sites->columns.size(), 4u);
  EXPECT_EQ(sites->columns[3].name, "CENTRE");
  EXPECT_EQ(sites->columns[3].type, od::ValueType::kPoint);
  EXPECT_EQ(sites->columns[0].type, od::ValueType::kInteger);
  EXPECT_EQ(sites->columns[1].type, od::ValueType::kReal);
  EXPECT_EQ(store.GetTable("Roads")->columns.size(), 1u);
  // Every record's values, reals and points bit for bit.
  EXPECT_EQ(RecordsByTable(*back.active()->doc), RecordsByTable(doc()));
  // The geometry came back as entities on the chosen layer.
  EXPECT_NE(model::FindLayer(*back.active()->doc, "GIS_Sites"), model::kNoRecord);
  std::map<std::string, int> types;
  for (model::RecordId e : model::ModelSpaceEntities(*back.active()->doc)) ++types[back.active()->doc->TypeOf(e)];
  EXPECT_EQ(types["POINT"], 3);       // the point's two records and the text
  EXPECT_EQ(types["LWPOLYLINE"], 5);  // polygon, circle, line, open polyline, arc
  EXPECT_EQ(types.size(), 2u);
}

TEST_F(GisExchange, ImportIntoAnExistingTableAddsRecordsOrRefusesOtherColumns) {
  const std::string out = dir_.File("again.gpkg");
  ASSERT_TRUE(ExportTo(out).ok());
  const size_t before = RecordsByTable(doc())["Roads"].size();
  ImportOptions same;
  same.source = out;
  same.layer = "Roads";
  Result<ImportSummary> added = ImportObjectData(sdoc(), same);
  ASSERT_TRUE(added.ok()) << added.message();
  EXPECT_FALSE(added->table_created);
  EXPECT_EQ(RecordsByTable(doc())["Roads"].size(), 2 * before);

  ImportOptions other = same;
  other.layer = "Sites";
  other.table = "Roads";
  const auto records = RecordsByTable(doc());
  Result<ImportSummary> refused = ImportObjectData(sdoc(), other);
  ASSERT_FALSE(refused.ok());
  EXPECT_EQ(refused.message(), "table 'Roads' exists with other columns (give another table name)");
  EXPECT_EQ(RecordsByTable(doc()), records);
}

TEST_F(GisExchange, BadInputSaysWhyAndLeavesNothingBehind) {
  ExportOptions unknown;
  unknown.format = "NoSuchFormat";
  Result<ExportSummary> format = ExportTo(dir_.File("a.xyz"), unknown);
  ASSERT_FALSE(format.ok());
  EXPECT_EQ(format.message(), "format 'NoSuchFormat': not a vector format GDAL knows (ogrinfo --formats lists them)");

  // /proc takes no new files, even from root.
  Result<ExportSummary> unwritable = ExportTo("/proc/veltor-out.gpkg");
  ASSERT_FALSE(unwritable.ok());
  EXPECT_EQ(unwritable.message().rfind("/proc/veltor-out.gpkg: cannot be written", 0), 0u) << unwritable.message();
  Result<ExportSummary> no_folder = ExportTo(dir_.File("missing/out.gpkg"));
  ASSERT_FALSE(no_folder.ok());
  EXPECT_NE(no_folder.message().find("does not exist"), std::string::npos);

  ExportOptions tables;
  tables.tables = {"Nope"};
  Result<ExportSummary> no_table = ExportTo(dir_.File("t.gpkg"), tables);
  ASSERT_FALSE(no_table.ok());
  EXPECT_EQ(no_table.message(), "no table named 'Nope' in the drawings");

  // A driver that takes one layer only fails at the second: no half file is left.
  ExportOptions geojson;
  geojson.format = "GeoJSON";
  Result<ExportSummary> half = ExportTo(dir_.File("half.geojson"), geojson);
  ASSERT_FALSE(half.ok());
  EXPECT_NE(half.message().find("more than one layer"), std::string::npos) << half.message();
  EXPECT_TRUE(dir_.Entries().empty());

  // An existing output is replaced whole, and only when the export succeeds.
  const std::string kept = dir_.File("kept.gpkg");
  ASSERT_TRUE(ExportTo(kept).ok());
  const auto size = std::filesystem::file_size(kept);
  ExportOptions broken;
  broken.srs = "EPSG:nonsense";
  ASSERT_FALSE(ExportTo(kept, broken).ok());
  EXPECT_EQ(std::filesystem::file_size(kept), size);
  EXPECT_EQ(dir_.Entries(), std::vector<std::string>{"kept.gpkg"});

  const auto records = RecordsByTable(doc());
  ImportOptions missing;
  missing.source = dir_.File("nothing.gpkg");
  Result<ImportSummary> not_there = ImportObjectData(sdoc(), missing);
  ASSERT_FALSE(not_there.ok());
  EXPECT_NE(not_there.message().find("nothing.gpkg: cannot be opened as vector data"), std::string::npos)
      << not_there.message();
  std::ofstream(dir_.File("junk.gpkg")) << "not a database";
  missing.source = dir_.File("junk.gpkg");
  EXPECT_FALSE(ImportObjectData(sdoc(), missing).ok());
  ImportOptions layer;
  layer.source = kept;
  layer.layer = "Parcels";
  Result<ImportSummary> no_layer = ImportObjectData(sdoc(), layer);
  ASSERT_FALSE(no_layer.ok());
  EXPECT_EQ(no_layer.message(), kept + ": no layer named 'Parcels'");
  EXPECT_EQ(RecordsByTable(doc()), records);
  EXPECT_EQ(objectdata::ObjectDataStore(doc()).TableNames(), (std::vector<std::string>{"Sites", "Roads"}));
}

TEST_F(GisExchange, TheHostCommandsAskTheirOptionsAndSayWhatTheyDid) {
  const std::string out = dir_.File("cmd.gpkg");
  Answer({out, "", "Roads"});
  ASSERT_TRUE(session_.Execute("ODEXPORT"));
  EXPECT_NE(out_.find("Exported: 4 features in 1 layer.\n"), std::string::npos) << out_;
  ClearOut();
  Answer({out, "Roads", "IMPORTED", "Roads copy"});
  ASSERT_TRUE(session_.Execute("ODIMPORT"));
  EXPECT_NE(out_.find("Imported: 4 features as 4 entities with records of table Roads copy (new).\n"),
            std::string::npos)
      << out_;
  EXPECT_EQ(RecordsByTable(doc())["Roads copy"], RecordsByTable(doc())["Roads"]);
  // The import is one undo step.
  session_.Undo(1);
  EXPECT_FALSE(objectdata::ObjectDataStore(doc()).HasTable("Roads copy"));
  ClearOut();
  Answer({dir_.File("absent.gpkg"), "", "", ""});
  session_.Execute("ODIMPORT");
  EXPECT_NE(out_.find("Error: " + dir_.File("absent.gpkg") + ": cannot be opened as vector data"), std::string::npos)
      << out_;
}

}  // namespace
}  // namespace veltor::gis
