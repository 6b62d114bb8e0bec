// Object Data tables and records come back from a saved drawing equal in every type, in code
// page drawings (R2000) and UTF-8 ones (R2018).
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>

#include "../model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::objectdata {
namespace {

using model::Document;
using model::RecordId;
using testing::CorpusFile;
using testing::OpenOrDie;
using testing::SaveAndReload;
using testing::ScratchDir;

std::string Repeat(const std::string& unit, size_t n) {
  std::string s;
  for (size_t i = 0; i < n; ++i) s += unit;
  return s;
}

const std::vector<std::string> kTableNames = {"Roads", "ROADS", "Дороги", "Δρόμοι", "道路",
                                              "\xF0\x9F\x9A\x97 cars"};

od::TableDefinition ValuesTable(const std::string& name) {
  od::TableDefinition def;
  def.name = name;
  def.description = "Beschreibung: ä ж 路";
  def.columns = {{"Count", od::ValueType::kInteger, "", od::Value::Integer(-1)},
                 {"Länge", od::ValueType::kReal, "in m", od::Value::Real(0.5)},
                 {"名前", od::ValueType::kCharacter, "", od::Value::Character("unnamed ж")},
                 {"Where", od::ValueType::kPoint, "", od::Value::Point({1, 2, 3})}};
  return def;
}

od::Record Row(const std::string& table, int32_t i, double r, std::string text, od::Value p) {
  return od::Record{table, {od::Value::Integer(i), od::Value::Real(r), od::Value::Character(std::move(text)), p}};
}

std::vector<od::Record> Rows(const std::string& table) {
  return {
      Row(table, 0, 0.1, "", od::Value::Point({0, 0, 0})),
      Row(table, INT32_MIN, 1e-300, Repeat("abcdefghij", 100), od::Value::Point({1.5, -2.25, 1e-300})),
      Row(table, INT32_MAX, DBL_MAX, Repeat("ж", 1000), od::Value::Point({-1e15, 0.1, 7})),
      Row(table, -42, -2.5, Repeat("道", 300) + "\xF0\x9F\x98\x80", od::Value::Point({3, 4, 5})),
      Row(table, 7, DBL_TRUE_MIN, "  Ελληνικά, 中文, emoji \xF0\x9F\x98\x80 and \\ backslash  ",
          od::Value::Point({1e300, -0.0, 2})),
  };
}

void ExpectEqualRecords(const std::vector<od::Record>& expected, const std::vector<od::Record>& actual,
                        const std::string& label) {
  ASSERT_EQ(expected.size(), actual.size()) << label;
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(expected[i].table, actual[i].table) << label << " record " << i;
    ASSERT_EQ(expected[i].values.size(), actual[i].values.size()) << label << " record " << i;
    for (size_t k = 0; k < expected[i].values.size(); ++k) {
      const od::Value& e = expected[i].values[k];
      const od::Value& a = actual[i].values[k];
      EXPECT_TRUE(e == a) << label << " record " << i << " value " << k << ": '" << od::ValueToText(a)
                          << "' of type " << od::TypeName(a.type());
    }
  }
}

// Fills a drawing with every table of kTableNames, puts all rows of each on one entity
// (interleaved with a second table's rows), saves, reloads and compares.
void CheckRoundTrip(Document& doc, RecordId entity, RecordId other, const std::string& label) {
  ScratchDir dir;
  ObjectDataStore store(doc);
  ASSERT_TRUE(store.CanWrite().ok()) << label << ": " << store.CanWrite().message();
  for (const std::string& name : kTableNames) {
    ASSERT_TRUE(store.CreateTable(ValuesTable(name)).ok()) << name;
  }
  std::vector<od::Record> expected;
  for (const od::Record& r : Rows("Roads")) {
    expected.push_back(r);
    expected.push_back(Rows(kTableNames[expected.size() % kTableNames.size()])[expected.size() % 5]);
  }
  for (const od::Record& r : expected) ASSERT_TRUE(store.AddRecord(entity, r).ok()) << label;
  ASSERT_TRUE(store.AddRecord(other, store.NewRecord("ROADS").value()).ok());

  auto saved = SaveAndReload(doc, dir);
  ASSERT_TRUE(saved);
  ObjectDataStore again(*saved);
  EXPECT_EQ(again.TableNames(), kTableNames) << label << ": creation order";
  for (const std::string& name : kTableNames) {
    auto def = again.GetTable(name);
    ASSERT_TRUE(def.ok()) << def.message();
    EXPECT_EQ(def->description, ValuesTable(name).description);
    ASSERT_EQ(def->columns.size(), 4u);
    for (size_t k = 0; k < 4; ++k) {
      EXPECT_EQ(def->columns[k].name, ValuesTable(name).columns[k].name);
      EXPECT_EQ(def->columns[k].type, ValuesTable(name).columns[k].type);
      EXPECT_TRUE(def->columns[k].default_value == ValuesTable(name).columns[k].default_value);
    }
  }
  RecordId e = saved->Find(doc.store().at(entity).handle);
  ExpectEqualRecords(expected, again.Records(e), label);
  std::vector<std::string> names;
  for (const od::Record& r : expected) names.push_back(r.table);
  EXPECT_EQ(again.RecordTableNames(e), names);
  std::vector<od::Record> defaults = {again.NewRecord("ROADS").value()};
  EXPECT_EQ(defaults[0].values[2].text(), "unnamed ж");
  ExpectEqualRecords(defaults, again.Records(saved->Find(doc.store().at(other).handle)), label);
  std::map<std::string, size_t> counts;
  for (const std::string& name : kTableNames) counts[name] = 0;
  for (const od::Record& r : expected) ++counts[r.table];
  ++counts["ROADS"];
  EXPECT_EQ(again.RecordCounts(), counts);

  // Long text is cut into chunks that every DXF reader accepts.
  RecordId xdict = model::ExtensionDictionary(*saved, e);
  RecordId xrec = model::DictionaryLookup(*saved, xdict, kRecordsKey);
  ASSERT_NE(xrec, model::kNoRecord);
  // Each chunk holds whole characters, so readers that decode chunk by chunk lose none.
  for (const dxf::Tag& t : model::XRecordData(*saved, xrec)) {
    if (t.code != 1 && t.code != 3) continue;
    EXPECT_LE(t.value.size(), kTextChunk) << label;
    EXPECT_EQ(saved->Decode(t.value).find("\xEF\xBF\xBD"), std::string::npos) << label;
  }
}

RecordId AddPoint(Document& doc) {
  return model::AddModelSpaceEntity(doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
}

TEST(ObjectDataRoundTrip, NewR2000DrawingInCodePage1252) {
  auto doc = Document::NewBlank("AC1015");
  RecordId a = AddPoint(*doc), b = AddPoint(*doc);
  CheckRoundTrip(*doc, a, b, "R2000 ANSI_1252");
}

TEST(ObjectDataRoundTrip, CorpusR2000DrawingInCodePage1251) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("zcad__entities.dxf"));
  ASSERT_TRUE(doc);
  ASSERT_EQ(doc->codec().charset(), "CP1251");
  std::vector<RecordId> entities = model::ModelSpaceEntities(*doc);
  ASSERT_GE(entities.size(), 2u);
  CheckRoundTrip(*doc, entities[0], entities.back(), "R2000 ANSI_1251");
}

TEST(ObjectDataRoundTrip, NewR2018DrawingInUtf8) {
  auto doc = Document::NewBlank("AC1032");
  RecordId a = AddPoint(*doc), b = AddPoint(*doc);
  CheckRoundTrip(*doc, a, b, "R2018");
}

TEST(ObjectDataRoundTrip, BinaryR2000Drawing) {
  VELTOR_NEEDS_CORPUS();
  auto doc = OpenOrDie(CorpusFile("ezdxf__bin_dxf_r2000.dxf"));
  ASSERT_TRUE(doc);
  RecordId a = model::ModelSpaceEntities(*doc).front();
  RecordId b = AddPoint(*doc);
  CheckRoundTrip(*doc, a, b, "binary R2000");
}

TEST(ObjectDataRecords, UpdateAndRemoveByPosition) {
  auto doc = Document::NewBlank("AC1032");
  RecordId e = AddPoint(*doc);
  ObjectDataStore store(*doc);
  ASSERT_TRUE(store.CreateTable(ValuesTable("A")).ok());
  ASSERT_TRUE(store.CreateTable(ValuesTable("B")).ok());
  std::vector<od::Record> rows = {Row("A", 1, 1, "one", od::Value::Point({1, 1, 1})),
                                Row("B", 2, 2, "two", od::Value::Point({2, 2, 2})),
                                Row("A", 3, 3, "three", od::Value::Point({3, 3, 3}))};
  for (const od::Record& r : rows) ASSERT_TRUE(store.AddRecord(e, r).ok());
  rows[1] = Row("B", 20, 20, "twenty", od::Value::Point({0, 0, 0}));
  ASSERT_TRUE(store.UpdateRecord(e, 1, rows[1]).ok());
  ExpectEqualRecords(rows, store.Records(e), "after update");
  // A value of another type is converted to the column's type.
  od::Record converted{"A", {od::Value::Character("12abc"), od::Value::Integer(4), od::Value::Real(2.5),
                           od::Value::Character("1,2,3")}};
  ASSERT_TRUE(store.UpdateRecord(e, 2, converted).ok());
  rows[2] = Row("A", 12, 4.0, "2.5", od::Value::Point({1, 2, 3}));
  ExpectEqualRecords(rows, store.Records(e), "after converting update");
  ASSERT_TRUE(store.RemoveRecord(e, 0).ok());
  rows.erase(rows.begin());
  ExpectEqualRecords(rows, store.Records(e), "after removing the first");
  ASSERT_TRUE(store.RemoveRecord(e, 1).ok());
  ASSERT_TRUE(store.RemoveRecord(e, 0).ok());
  EXPECT_TRUE(store.Records(e).empty());
  EXPECT_EQ(model::DictionaryLookup(*doc, model::ExtensionDictionary(*doc, e), kRecordsKey),
            model::kNoRecord)
      << "an entity without records keeps no empty XRECORD";
}

}  // namespace
}  // namespace veltor::objectdata
