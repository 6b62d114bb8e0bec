// Changing Object Data tables: records follow every column change, renaming a table rewrites
// one object, deleting a table deletes its records, and refused changes change nothing.
#include <gtest/gtest.h>

#include "../model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::objectdata {
namespace {

using model::Document;
using model::RecordId;
using testing::ChangedRecords;
using testing::CorpusFile;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

RecordId AddPoint(Document& doc) {
  return model::AddModelSpaceEntity(doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
}

od::TableDefinition Roads() {
  od::TableDefinition def;
  def.name = "Roads";
  def.columns = {{"Id", od::ValueType::kInteger, "", od::Value::Integer(0)},
                 {"Width", od::ValueType::kReal, "", od::Value::Real(2.5)},
                 {"Name", od::ValueType::kCharacter, "", od::Value::Character("")}};
  return def;
}

od::Record Road(int32_t id, double width, const std::string& name) {
  return od::Record{"Roads", {od::Value::Integer(id), od::Value::Real(width), od::Value::Character(name)}};
}

std::vector<od::Value> ValuesOf(const ObjectDataStore& store, RecordId entity, size_t index = 0) {
  std::vector<od::Record> records = store.Records(entity);
  return index < records.size() ? records[index].values : std::vector<od::Value>{};
}

// A drawing with table Roads and two entities holding records, saved and reloaded so that
// every record starts unchanged.
struct Fixture {
  ScratchDir dir;
  std::unique_ptr<Document> doc;
  RecordId a = model::kNoRecord, b = model::kNoRecord;

  Fixture() {
    auto blank = Document::NewBlank("AC1032");
    RecordId ea = AddPoint(*blank), eb = AddPoint(*blank);
    ObjectDataStore store(*blank);
    EXPECT_TRUE(store.CreateTable(Roads()).ok());
    EXPECT_TRUE(store.AddRecord(ea, Road(42, 3.75, "Main")).ok());
    EXPECT_TRUE(store.AddRecord(ea, Road(-7, -2.75, "Back")).ok());
    EXPECT_TRUE(store.AddRecord(eb, Road(1, 1, "Side")).ok());
    doc = SaveAndReload(*blank, dir, "fixture.dxf");
    a = doc->Find(blank->store().at(ea).handle);
    b = doc->Find(blank->store().at(eb).handle);
  }
};

TEST(ObjectDataTables, RenameRewritesExactlyOneObject) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  uint64_t records = f.doc->store().size();
  ASSERT_TRUE(store.RenameTable("Roads", "Straßen").ok());
  EXPECT_EQ(ChangedRecords(f.doc->store()), 1u);
  EXPECT_EQ(f.doc->store().size(), records);
  EXPECT_EQ(store.Records(f.a)[1].table, "Straßen");
  EXPECT_FALSE(store.HasTable("Roads"));
  auto saved = SaveAndReload(*f.doc, f.dir);
  ObjectDataStore again(*saved);
  EXPECT_EQ(again.TableNames(), std::vector<std::string>{"Straßen"});
  EXPECT_EQ(again.RecordTableNames(f.a), (std::vector<std::string>{"Straßen", "Straßen"}));
  EXPECT_EQ(again.RecordCounts()["Straßen"], 3u);
}

TEST(ObjectDataTables, NamesAreCaseSensitive) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  od::TableDefinition upper = Roads();
  upper.name = "ROADS";
  upper.columns.pop_back();
  ASSERT_TRUE(store.CreateTable(upper).ok());
  ASSERT_TRUE(store.AddRecord(f.a, od::Record{"ROADS", {od::Value::Integer(9), od::Value::Real(9)}}).ok());
  EXPECT_EQ(store.TableNames(), (std::vector<std::string>{"Roads", "ROADS"}));
  EXPECT_FALSE(store.HasTable("roads"));
  EXPECT_EQ(store.GetTable("ROADS")->columns.size(), 2u);
  EXPECT_EQ(store.GetTable("Roads")->columns.size(), 3u);
  EXPECT_FALSE(store.RenameTable("Roads", "ROADS").ok()) << "that name is taken";
  ASSERT_TRUE(store.RenameTable("Roads", "roads").ok());
  EXPECT_EQ(store.RecordTableNames(f.a), (std::vector<std::string>{"roads", "roads", "ROADS"}));
}

TEST(ObjectDataTables, DeleteRemovesItsRecordsOnly) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  od::TableDefinition other = Roads();
  other.name = "Other";
  ASSERT_TRUE(store.CreateTable(other).ok());
  od::Record kept = Road(5, 5, "kept");
  kept.table = "Other";
  ASSERT_TRUE(store.AddRecord(f.a, kept).ok());
  ASSERT_TRUE(store.DeleteTable("Roads").ok());
  EXPECT_EQ(store.TableNames(), std::vector<std::string>{"Other"});
  EXPECT_EQ(store.RecordTableNames(f.a), std::vector<std::string>{"Other"});
  EXPECT_TRUE(store.Records(f.b).empty());
  EXPECT_EQ(model::DictionaryLookup(*f.doc, model::ExtensionDictionary(*f.doc, f.b), kRecordsKey),
            model::kNoRecord);

  auto saved = SaveAndReload(*f.doc, f.dir);
  ObjectDataStore again(*saved);
  EXPECT_EQ(again.TableNames(), std::vector<std::string>{"Other"});
  EXPECT_EQ(again.RecordCounts(), (std::map<std::string, size_t>{{"Other", 1}}));
  EXPECT_TRUE(again.Records(f.a)[0].values == kept.values);
  size_t definitions = 0;
  for (RecordId id = saved->store().first(); id != model::kNoRecord; id = saved->store().at(id).next)
    if (saved->TypeOf(id) == "XRECORD") {
      dxf::Tags data = model::XRecordData(*saved, id);
      definitions += !data.empty() && data[0].value == kTableMarker;
    }
  EXPECT_EQ(definitions, 1u) << "the deleted table's definition is gone from the file";
  EXPECT_FALSE(again.DeleteTable("Roads").ok());
}

TEST(ObjectDataColumns, RecordsFollowAddRemoveAndRename) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  ASSERT_TRUE(store.AddColumn("Roads", {"Lanes", od::ValueType::kInteger, "", od::Value::Character("2 lanes")}).ok());
  std::vector<od::Value> expected = {od::Value::Integer(42), od::Value::Real(3.75),
                                      od::Value::Character("Main"), od::Value::Integer(2)};
  EXPECT_TRUE(ValuesOf(store, f.a) == expected) << "new column holds its converted default";
  EXPECT_TRUE(store.GetTable("Roads")->columns[3].default_value == od::Value::Integer(2));

  ASSERT_TRUE(store.RemoveColumn("Roads", "Width").ok());
  expected.erase(expected.begin() + 1);
  EXPECT_TRUE(ValuesOf(store, f.a) == expected);
  EXPECT_TRUE(ValuesOf(store, f.a, 1) == (std::vector<od::Value>{od::Value::Integer(-7),
                                                                  od::Value::Character("Back"),
                                                                  od::Value::Integer(2)}));

  ASSERT_TRUE(store.RenameColumn("Roads", "Name", "Название").ok());
  EXPECT_TRUE(ValuesOf(store, f.a) == expected);

  auto saved = SaveAndReload(*f.doc, f.dir);
  ObjectDataStore again(*saved);
  auto def = again.GetTable("Roads");
  ASSERT_TRUE(def.ok());
  std::vector<std::string> names;
  for (const od::ColumnDefinition& c : def->columns) names.push_back(c.name);
  EXPECT_EQ(names, (std::vector<std::string>{"Id", "Название", "Lanes"}));
  EXPECT_TRUE(ValuesOf(again, f.a) == expected);
  EXPECT_TRUE(ValuesOf(again, f.b) == (std::vector<od::Value>{od::Value::Integer(1),
                                                               od::Value::Character("Side"),
                                                               od::Value::Integer(2)}));
}

TEST(ObjectDataColumns, RetypeConvertsEveryRecord) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  ASSERT_TRUE(store.RetypeColumn("Roads", "Id", od::ValueType::kReal).ok());
  EXPECT_TRUE(ValuesOf(store, f.a)[0] == od::Value::Real(42));
  EXPECT_TRUE(ValuesOf(store, f.a, 1)[0] == od::Value::Real(-7));
  ASSERT_TRUE(store.RetypeColumn("Roads", "Id", od::ValueType::kCharacter).ok());
  EXPECT_TRUE(ValuesOf(store, f.a)[0] == od::Value::Character("42.0")) << ValuesOf(store, f.a)[0].text();
  ASSERT_TRUE(store.RetypeColumn("Roads", "Id", od::ValueType::kInteger).ok());
  EXPECT_TRUE(ValuesOf(store, f.a)[0] == od::Value::Integer(42));
  EXPECT_TRUE(ValuesOf(store, f.a, 1)[0] == od::Value::Integer(-7));
  EXPECT_TRUE(ValuesOf(store, f.b)[0] == od::Value::Integer(1));
  EXPECT_EQ(store.GetTable("Roads")->columns[0].type, od::ValueType::kInteger);

  ASSERT_TRUE(store.RetypeColumn("Roads", "Width", od::ValueType::kInteger).ok());
  EXPECT_TRUE(ValuesOf(store, f.a)[1] == od::Value::Integer(3)) << "reals truncate toward zero";
  EXPECT_TRUE(ValuesOf(store, f.a, 1)[1] == od::Value::Integer(-2));
  EXPECT_TRUE(store.GetTable("Roads")->columns[1].default_value == od::Value::Integer(2));
  ASSERT_TRUE(store.RetypeColumn("Roads", "Name", od::ValueType::kPoint).ok());
  EXPECT_TRUE(ValuesOf(store, f.a)[2] == od::Value::Point({0, 0, 0})) << "'Main' is no point";

  auto saved = SaveAndReload(*f.doc, f.dir);
  ObjectDataStore again(*saved);
  EXPECT_TRUE(ValuesOf(again, f.a) == ValuesOf(store, f.a));
  EXPECT_TRUE(ValuesOf(again, f.a, 1) == ValuesOf(store, f.a, 1));
}

// A refused change leaves the drawing exactly as it was.
class Unchanged {
 public:
  explicit Unchanged(const Document& doc)
      : doc_(doc), generation_(doc.generation()), size_(doc.store().size()), changed_(ChangedRecords(doc.store())) {}
  ::testing::AssertionResult Check() const {
    if (doc_.generation() != generation_ || doc_.store().size() != size_ ||
        ChangedRecords(doc_.store()) != changed_)
      return ::testing::AssertionFailure() << "the drawing changed";
    return ::testing::AssertionSuccess();
  }

 private:
  const Document& doc_;
  uint64_t generation_;
  size_t size_;
  size_t changed_;
};

TEST(ObjectDataRefusals, R12DrawingIsRefusedAndUntouched) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("gdal__frozen-off.dxf"));
  ASSERT_TRUE(doc);
  ASSERT_EQ(doc->version(), "AC1009");
  Unchanged unchanged(*doc);
  ObjectDataStore store(*doc);
  Status created = store.CreateTable(Roads());
  ASSERT_FALSE(created.ok());
  EXPECT_NE(created.message().find("R2000"), std::string::npos) << created.message();
  EXPECT_NE(created.message().find("AC1009"), std::string::npos) << created.message();
  EXPECT_FALSE(store.CanWrite().ok());
  EXPECT_TRUE(store.TableNames().empty());
  std::vector<RecordId> entities = model::ModelSpaceEntities(*doc);
  ASSERT_FALSE(entities.empty());
  EXPECT_FALSE(store.AddRecord(entities[0], Road(1, 1, "x")).ok());
  EXPECT_TRUE(unchanged.Check());
  EXPECT_FALSE(doc->modified());
}

TEST(ObjectDataRefusals, BadInputChangesNothing) {
  Fixture f;
  ObjectDataStore store(*f.doc);
  Unchanged unchanged(*f.doc);
  od::TableDefinition twice = Roads();
  twice.name = "Twice";
  twice.columns.push_back(twice.columns[0]);
  Status s = store.CreateTable(twice);
  EXPECT_FALSE(s.ok());
  EXPECT_NE(s.message().find("'Id'"), std::string::npos) << s.message();
  od::TableDefinition unnamed = Roads();
  unnamed.name = "";
  EXPECT_FALSE(store.CreateTable(unnamed).ok());
  od::TableDefinition empty_column = Roads();
  empty_column.name = "X";
  empty_column.columns[1].name = "";
  EXPECT_FALSE(store.CreateTable(empty_column).ok());
  od::TableDefinition control = Roads();
  control.name = "Line\nbreak";
  EXPECT_FALSE(store.CreateTable(control).ok());
  EXPECT_FALSE(store.CreateTable(Roads()).ok()) << "exists";

  od::Record short_record = Road(1, 1, "x");
  short_record.values.pop_back();
  s = store.AddRecord(f.a, short_record);
  EXPECT_FALSE(s.ok());
  EXPECT_NE(s.message().find("3 columns"), std::string::npos) << s.message();
  od::Record long_record = Road(1, 1, "x");
  long_record.values.push_back(od::Value::Integer(0));
  EXPECT_FALSE(store.AddRecord(f.a, long_record).ok());
  EXPECT_FALSE(store.UpdateRecord(f.a, 0, short_record).ok());
  EXPECT_FALSE(store.AddRecord(f.a, od::Record{"Nope", {}}).ok());
  EXPECT_FALSE(store.UpdateRecord(f.a, 2, Road(1, 1, "x")).ok()) << "only two records";
  EXPECT_FALSE(store.RemoveRecord(f.b, 1).ok());
  EXPECT_FALSE(store.AddColumn("Roads", {"Name", od::ValueType::kInteger, "", {}}).ok());
  EXPECT_FALSE(store.AddColumn("Roads", {"", od::ValueType::kInteger, "", {}}).ok());
  EXPECT_FALSE(store.RemoveColumn("Roads", "name").ok());
  EXPECT_FALSE(store.RenameColumn("Roads", "Name", "Id").ok());
  EXPECT_FALSE(store.RenameColumn("Roads", "Name", "").ok());
  EXPECT_FALSE(store.RetypeColumn("Roads", "Nope", od::ValueType::kReal).ok());
  EXPECT_FALSE(store.RenameTable("Nope", "X").ok());
  EXPECT_FALSE(store.RenameTable("Roads", "").ok());
  EXPECT_TRUE(unchanged.Check());
  EXPECT_EQ(store.TableNames(), std::vector<std::string>{"Roads"});
  EXPECT_EQ(store.Records(f.a).size(), 2u);
}

}  // namespace
}  // namespace veltor::objectdata
