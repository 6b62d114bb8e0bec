// Damaged Object Data is kept, reported and never rewritten: a definition or a records
// XRECORD that does not follow the format is skipped by readers, its bytes survive every
// change made elsewhere, and a damaged table's name stays taken.
#include <gtest/gtest.h>

#include <functional>

#include "../model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::objectdata {
namespace {

using model::Document;
using model::Handle;
using model::RecordId;
using testing::RecordBytes;
using testing::SaveAndReload;
using testing::ScratchDir;

RecordId AddPoint(Document& doc) {
  return model::AddModelSpaceEntity(doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
}

od::TableDefinition Table(const std::string& name) {
  od::TableDefinition def;
  def.name = name;
  def.columns = {{"Id", od::ValueType::kInteger, "", od::Value::Integer(0)},
                 {"Name", od::ValueType::kCharacter, "", od::Value::Character("")}};
  return def;
}

od::Record Row(const std::string& table, int32_t id, const std::string& name) {
  return od::Record{table, {od::Value::Integer(id), od::Value::Character(name)}};
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// Table Roads and table Rivers; entity a holds Roads 1, Roads 2, Rivers 3; entity b holds
// Roads 4. `damage` then edits the data tags of one object, and the drawing is saved and
// reloaded, so that the damaged object arrives as any file's would: unchanged.
class DamagedObjectData : public ::testing::Test {
 protected:
  void Build(const std::function<void(Document&, RecordId a, RecordId b)>& damage) {
    auto blank = Document::NewBlank("AC1032");
    RecordId a = AddPoint(*blank), b = AddPoint(*blank);
    ObjectDataStore store(*blank);
    ASSERT_TRUE(store.CreateTable(Table("Roads")).ok());
    ASSERT_TRUE(store.CreateTable(Table("Rivers")).ok());
    ASSERT_TRUE(store.AddRecord(a, Row("Roads", 1, "one")).ok());
    ASSERT_TRUE(store.AddRecord(a, Row("Roads", 2, "two")).ok());
    ASSERT_TRUE(store.AddRecord(a, Row("Rivers", 3, "three")).ok());
    ASSERT_TRUE(store.AddRecord(b, Row("Roads", 4, "four")).ok());
    damage(*blank, a, b);
    doc_ = SaveAndReload(*blank, dir_, "damaged.dxf");
    ASSERT_TRUE(doc_);
    a_ = doc_->Find(blank->store().at(a).handle);
    b_ = doc_->Find(blank->store().at(b).handle);
    store_ = std::make_unique<ObjectDataStore>(*doc_);
  }

  // The records XRECORD of an entity, and the definition XRECORD of a table.
  static RecordId RecordsOf(const Document& doc, RecordId entity) {
    return model::DictionaryLookup(doc, model::ExtensionDictionary(doc, entity), kRecordsKey);
  }
  static RecordId DefinitionOf(const Document& doc, const std::string& table) {
    RecordId catalogue = model::DictionaryLookup(doc, model::NamedObjectDictionary(doc), kCatalogueKey);
    for (const auto& entry : model::DictionaryEntries(doc, catalogue)) {
      RecordId xrec = doc.Find(entry.handle);
      dxf::Tags data = model::XRecordData(doc, xrec);
      if (data.size() > 2 && data[2].value == table) return xrec;
    }
    return model::kNoRecord;
  }
  // Replaces the value of the `nth` data tag with group `code` of `xrec`.
  static void SetTag(Document& doc, RecordId xrec, int code, size_t nth, const std::string& value) {
    dxf::Tags data = model::XRecordData(doc, xrec);
    for (dxf::Tag& t : data)
      if (t.code == code && nth-- == 0) {
        t.value = value;
        break;
      }
    model::SetXRecordData(doc, xrec, std::move(data));
  }

  std::vector<int32_t> Ids(RecordId entity) const {
    std::vector<int32_t> ids;
    for (const od::Record& r : store_->Records(entity)) ids.push_back(r.values[0].integer());
    return ids;
  }

  std::string Report() const {
    std::string all;
    for (const std::string& line : store_->DamageReport()) all += line + "\n";
    return all;
  }

  // The bytes the damaged object was read from survive a save of the changed drawing.
  void ExpectKeptByteForByte(RecordId xrec) {
    ASSERT_NE(xrec, model::kNoRecord);
    ASSERT_FALSE(doc_->store().IsChanged(xrec)) << "the damaged object was rewritten";
    std::string before(RecordBytes(doc_->store(), xrec));
    Handle handle = doc_->store().at(xrec).handle;
    auto saved = SaveAndReload(*doc_, dir_, "changed.dxf");
    ASSERT_TRUE(saved);
    RecordId again = saved->Find(handle);
    ASSERT_NE(again, model::kNoRecord);
    EXPECT_EQ(before, std::string(RecordBytes(saved->store(), again)));
  }

  ScratchDir dir_;
  std::unique_ptr<Document> doc_;
  std::unique_ptr<ObjectDataStore> store_;
  RecordId a_ = model::kNoRecord, b_ = model::kNoRecord;
};

TEST_F(DamagedObjectData, UnknownColumnTypeHidesTheTableButKeepsItsName) {
  Build([](Document& doc, RecordId, RecordId) { SetTag(doc, DefinitionOf(doc, "Roads"), 70, 2, "9"); });
  EXPECT_EQ(store_->TableNames(), std::vector<std::string>{"Rivers"});
  ASSERT_EQ(store_->DamagedTables().size(), 1u);
  EXPECT_EQ(store_->DamagedTables()[0].name, "Roads");
  EXPECT_TRUE(Contains(store_->DamagedTables()[0].reason, "type '9' is not known"))
      << store_->DamagedTables()[0].reason;

  Status created = store_->CreateTable(Table("Roads"));
  EXPECT_FALSE(created.ok());
  EXPECT_TRUE(Contains(created.message(), "already exists")) << created.message();
  EXPECT_FALSE(store_->RenameTable("Rivers", "Roads").ok());
  EXPECT_EQ(store_->TableNames(), std::vector<std::string>{"Rivers"});

  // Records of the unreadable table are skipped and counted, the others read.
  EXPECT_EQ(Ids(a_), std::vector<int32_t>{3});
  EXPECT_EQ(store_->RecordTableNames(a_), std::vector<std::string>{"Rivers"});
  EXPECT_EQ(store_->DamagedRecordCount(a_), 2u);
  EXPECT_EQ(store_->DamagedRecordCount(b_), 1u);

  std::string report = Report();
  EXPECT_TRUE(Contains(report, "table 'Roads' (definition " +
                                   dxf::FormatHandle(doc_->store().at(DefinitionOf(*doc_, "Roads")).handle)))
      << report;
  EXPECT_TRUE(Contains(report, "entity " + dxf::FormatHandle(doc_->store().at(a_).handle) + ": 2 records"))
      << report;

  // Changes elsewhere rewrite neither the definition nor the records that use it.
  ASSERT_TRUE(store_->CreateTable(Table("Lakes")).ok());
  ASSERT_TRUE(store_->AddRecord(b_, Row("Rivers", 5, "five")).ok());
  ASSERT_TRUE(store_->AddColumn("Rivers", {"Depth", od::ValueType::kReal, "", od::Value::Real(1)}).ok());
  EXPECT_EQ(store_->DamagedRecordCount(b_), 1u);
  ExpectKeptByteForByte(DefinitionOf(*doc_, "Roads"));
}

TEST_F(DamagedObjectData, DefinitionWithWrongMarkerIsNamedWhenItsNameIsReadable) {
  Build([](Document& doc, RecordId, RecordId) {
    SetTag(doc, DefinitionOf(doc, "Roads"), 1, 0, "SOMETHING_ELSE");
  });
  ASSERT_EQ(store_->DamagedTables().size(), 1u);
  EXPECT_EQ(store_->DamagedTables()[0].name, "Roads");
  EXPECT_FALSE(store_->CreateTable(Table("Roads")).ok());
}

TEST_F(DamagedObjectData, UnknownRecordsVersionKeepsTheEntityReadOnlyUntilAllIsRemoved) {
  Build([](Document& doc, RecordId a, RecordId) { SetTag(doc, RecordsOf(doc, a), 70, 0, "2"); });
  EXPECT_TRUE(store_->Records(a_).empty());
  EXPECT_TRUE(store_->RecordTableNames(a_).empty());
  EXPECT_EQ(store_->DamagedRecordCount(a_), 3u);
  EXPECT_EQ(Ids(b_), std::vector<int32_t>{4});
  EXPECT_TRUE(Contains(Report(), "format version '2' is not known")) << Report();

  Status added = store_->AddRecord(a_, Row("Rivers", 9, "nine"));
  EXPECT_FALSE(added.ok());
  EXPECT_TRUE(Contains(added.message(), "kept as it is")) << added.message();
  EXPECT_FALSE(store_->RemoveRecord(a_, 0).ok());
  // Table-wide changes pass it by.
  ASSERT_TRUE(store_->AddColumn("Rivers", {"Depth", od::ValueType::kReal, "", od::Value::Real(1)}).ok());
  ASSERT_TRUE(store_->RetypeColumn("Rivers", "Name", od::ValueType::kInteger).ok());
  ExpectKeptByteForByte(RecordsOf(*doc_, a_));

  // Asked explicitly, everything goes.
  EXPECT_EQ(store_->RemoveAllRecords(a_), 3u);
  EXPECT_EQ(RecordsOf(*doc_, a_), model::kNoRecord);
  EXPECT_EQ(store_->DamagedRecordCount(a_), 0u);
}

TEST_F(DamagedObjectData, WrongRecordsMarkerIsDamageOfTheWholeEntity) {
  Build([](Document& doc, RecordId a, RecordId) { SetTag(doc, RecordsOf(doc, a), 1, 0, "NOT_OURS"); });
  EXPECT_TRUE(store_->Records(a_).empty());
  EXPECT_EQ(store_->DamagedRecordCount(a_), 3u);
  EXPECT_FALSE(store_->AddRecord(a_, Row("Rivers", 9, "nine")).ok());
}

TEST_F(DamagedObjectData, NumberThatIsNotOneDamagesOnlyItsRecord) {
  // Entity a's first record: Id "12abc".
  Build([](Document& doc, RecordId a, RecordId) { SetTag(doc, RecordsOf(doc, a), 90, 0, "12abc"); });
  EXPECT_EQ(Ids(a_), (std::vector<int32_t>{2, 3}));
  EXPECT_EQ(store_->RecordTableNames(a_), (std::vector<std::string>{"Roads", "Rivers"}));
  EXPECT_EQ(store_->DamagedRecordCount(a_), 1u);
  EXPECT_TRUE(Contains(Report(), "'12abc', which is not a 32-bit whole number")) << Report();

  // Indexes count readable records; the damaged one keeps its tags and its place.
  ASSERT_TRUE(store_->UpdateRecord(a_, 0, Row("Roads", 20, "twenty")).ok());
  ASSERT_TRUE(store_->RemoveRecord(a_, 1).ok());
  EXPECT_EQ(Ids(a_), std::vector<int32_t>{20});
  dxf::Tags data = model::XRecordData(*doc_, RecordsOf(*doc_, a_));
  ASSERT_GE(data.size(), 4u);
  EXPECT_EQ(data[2].code, 340);
  EXPECT_EQ(data[3], (dxf::Tag{90, "12abc"}));
  EXPECT_EQ(store_->DamagedRecordCount(a_), 1u);

  // A change that would shift the damaged record's values is refused, naming the entity.
  Status removed = store_->RemoveColumn("Roads", "Id");
  EXPECT_FALSE(removed.ok());
  EXPECT_TRUE(Contains(removed.message(), dxf::FormatHandle(doc_->store().at(a_).handle)))
      << removed.message();
  EXPECT_FALSE(store_->DeleteTable("Roads").ok());
  EXPECT_EQ(store_->TableNames(), (std::vector<std::string>{"Roads", "Rivers"}));
}

TEST_F(DamagedObjectData, RealThatIsNotANumberAndRecordOfAMissingTable) {
  Build([](Document& doc, RecordId a, RecordId b) {
    model::SetXRecordData(doc, RecordsOf(doc, a),
                          {{1, kRecordsMarker}, {70, "1"}, {340, "FFFF"}, {90, "1"}, {1, "x"}});
    model::SetXRecordData(doc, RecordsOf(doc, b),
                          {{1, kRecordsMarker}, {70, "1"}, {340, "FFFF"}, {40, "1.5.2"}});
  });
  EXPECT_EQ(store_->DamagedRecordCount(a_), 1u);
  EXPECT_TRUE(Contains(Report(), "does not exist")) << Report();
  EXPECT_EQ(store_->DamagedRecordCount(b_), 1u);
}

// The quick scan behind RecordTableNames, DamagedRecordCount and RecordsOf judges every
// record as the full read behind Records does, and RecordsOf reads the same values.
TEST_F(DamagedObjectData, QuickScanAgreesWithTheFullRead) {
  Build([](Document&, RecordId, RecordId) {});
  size_t none_damaged = 9;
  std::vector<od::Record> rivers = store_->RecordsOf(a_, {"Rivers", "Lakes"}, none_damaged);
  ASSERT_EQ(rivers.size(), 1u);
  EXPECT_TRUE(rivers[0].values == store_->Records(a_)[2].values);
  EXPECT_EQ(none_damaged, 0u);
  std::string roads = dxf::FormatHandle(doc_->store().at(DefinitionOf(*doc_, "Roads")).handle);
  using Case = std::pair<dxf::Tags, size_t>;  // data tags, readable records
  const std::vector<Case> cases = {
      {{{1, kRecordsMarker}, {70, "1"}, {340, roads}, {90, "1"}, {1, "a"}, {20, "junk"}, {30, "junk"}}, 1},
      {{{1, kRecordsMarker}, {70, "1"}, {340, roads}, {10, "1"}, {20, "bad"}, {30, "3"}}, 0},
      {{{1, kRecordsMarker}, {70, "1"}, {340, roads}, {10, "1"}, {20, "2"}, {30, "bad"}}, 0},
      {{{1, kRecordsMarker}, {70, "1"}, {340, roads}, {10, "1"}, {30, "bad"}, {340, roads}}, 2},
      {{{1, kRecordsMarker}, {70, "1"}, {340, roads}, {1, "t"}, {3, "12x"}, {300, "y"}, {340, "0"}}, 1},
      {{{1, kRecordsMarker}, {340, roads}, {90, " 5 "}, {40, "+1e3"}}, 1},
      {{{1, kRecordsMarker}, {70, "x"}, {340, roads}}, 0},
      {{}, 0},
  };
  for (size_t k = 0; k < cases.size(); ++k) {
    model::SetXRecordData(*doc_, RecordsOf(*doc_, a_), cases[k].first);
    EXPECT_EQ(store_->Records(a_).size(), cases[k].second) << "case " << k;
    EXPECT_EQ(store_->RecordTableNames(a_).size(), cases[k].second) << "case " << k;
    size_t stored = 0;
    for (const dxf::Tag& t : cases[k].first) stored += t.code == 340;
    size_t damaged = k + 1 == cases.size() ? 1 : stored - cases[k].second;
    EXPECT_EQ(store_->DamagedRecordCount(a_), damaged) << "case " << k;
    size_t counted = 0;
    std::vector<od::Record> roads_read = store_->RecordsOf(a_, {"Roads"}, counted);
    EXPECT_EQ(counted, damaged) << "case " << k;
    std::vector<od::Record> all = store_->Records(a_);
    ASSERT_EQ(roads_read.size(), all.size()) << "case " << k;
    for (size_t r = 0; r < all.size(); ++r)
      EXPECT_TRUE(roads_read[r].values == all[r].values) << "case " << k << " record " << r;
  }
}

TEST_F(DamagedObjectData, ReportIsBoundedOnDrawingsWithManyDamagedEntities) {
  Build([](Document& doc, RecordId a, RecordId b) {
    SetTag(doc, RecordsOf(doc, a), 70, 0, "7");
    SetTag(doc, RecordsOf(doc, b), 70, 0, "7");
  });
  std::vector<std::string> lines = store_->DamageReport(1);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(Contains(lines[1], "1 more entity with")) << lines[1];
}

TEST_F(DamagedObjectData, SoundDrawingReportsNothing) {
  Build([](Document&, RecordId, RecordId) {});
  EXPECT_TRUE(store_->DamageReport().empty());
  EXPECT_TRUE(store_->DamagedTables().empty());
  EXPECT_EQ(store_->DamagedRecordCount(a_), 0u);
  EXPECT_EQ(Ids(a_), (std::vector<int32_t>{1, 2, 3}));
}

TEST_F(DamagedObjectData, RemovingSeveralRecordsAtOnceKeepsTheDamagedOne) {
  // Entity a: Roads 1 cannot be read; Roads 2 and Rivers 3 are readable records 0 and 1.
  Build([](Document& doc, RecordId a, RecordId) { SetTag(doc, RecordsOf(doc, a), 90, 0, "12abc"); });
  ASSERT_TRUE(store_->RemoveRecords(a_, {1, 0}).ok());
  EXPECT_TRUE(store_->Records(a_).empty());
  EXPECT_EQ(store_->DamagedRecordCount(a_), 1u);
  ASSERT_NE(RecordsOf(*doc_, a_), model::kNoRecord);
  EXPECT_EQ(model::XRecordData(*doc_, RecordsOf(*doc_, a_))[3], (dxf::Tag{90, "12abc"}));
}

TEST_F(DamagedObjectData, RemovingSeveralRecordsOfAnUnreadableEntityIsRefused) {
  Build([](Document& doc, RecordId a, RecordId) { SetTag(doc, RecordsOf(doc, a), 70, 0, "2"); });
  EXPECT_FALSE(store_->RemoveRecords(a_, {0}).ok());
  EXPECT_EQ(store_->DamagedRecordCount(a_), 3u);
  ExpectKeptByteForByte(RecordsOf(*doc_, a_));
}

}  // namespace
}  // namespace veltor::objectdata
