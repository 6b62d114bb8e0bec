// The host's own Object Data commands: answers are checked where they are typed, counts read
// in the singular for one, and damaged Object Data is skipped with a count, never lost.
#include <functional>

#include "../drawing/dxf/test_files.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class ObjectDataCommands : public testing::SessionFixture {
 protected:
  ObjectDataCommands() { RegisterObjectDataCommands(session_); }

  // Runs a command answered by `lines` as a person would type them: a refused answer is
  // asked again.
  void Typed(const std::string& command, std::vector<std::string> lines) {
    input_ = std::make_unique<LinesInput>(std::move(lines), [this](const std::string& t) { out_ += t; },
                                          false);
    session_.SetInput(input_.get());
    session_.Execute(command);
  }

  std::string Hex(od::EntityId id) const { return dxf::FormatHandle(id); }

  od::TableDefinition Wells() {
    od::TableDefinition def;
    def.name = "Wells";
    def.columns = {{"ID", od::ValueType::kInteger, "", od::Value::Integer(0)},
                   {"DEPTH", od::ValueType::kReal, "", od::Value::Real(0)},
                   {"AT", od::ValueType::kPoint, "", od::Value::Point({0, 0, 0})}};
    EXPECT_TRUE(container().CreateTable(def).ok());
    return def;
  }

  objectdata::ObjectDataStore& store() { return sdoc().project.container().store(); }

  // Rewrites the data tags of `entity`'s records XRECORD.
  void DamageRecords(od::EntityId entity, const std::function<void(dxf::Tags&)>& edit) {
    model::RecordId e = RecordOf(doc(), entity);
    model::RecordId xrec =
        model::DictionaryLookup(doc(), model::ExtensionDictionary(doc(), e), objectdata::kRecordsKey);
    ASSERT_NE(xrec, model::kNoRecord);
    dxf::Tags data = model::XRecordData(doc(), xrec);
    edit(data);
    model::SetXRecordData(doc(), xrec, std::move(data));
    store().Refresh();
  }
};

// --- typed values ---

TEST_F(ObjectDataCommands, ValuesNotOfTheColumnsTypeAreRefusedAndAskedAgain) {
  Typed("ODTABLE", {"New", "T", "", "N", "Integer", "12.5", "abc", "3000000000", "-42", "",
                    "R", "Real", "inf", "1e999", "2,5", " 2.5 ", "",
                    "P", "Point", "1,2", "1,2,3,4", "x,1,2", "1, 2.5 ,-3", "", ""});
  EXPECT_TRUE(Contains(out(), "Error: '12.5' is not a whole number from -2147483648 to 2147483647.\n"
                              "Default value <0>: abc\n"))
      << out();
  EXPECT_TRUE(Contains(out(), "Error: '3000000000' is not a whole number")) << out();
  EXPECT_TRUE(Contains(out(), "Error: 'inf' is not a finite number.\nDefault value <0.0>: 1e999\n"))
      << out();
  EXPECT_TRUE(Contains(out(), "Error: '2,5' is not a finite number.")) << out();
  EXPECT_TRUE(Contains(out(), "Error: '1,2' is not a point: three numbers x,y,z.")) << out();
  EXPECT_TRUE(Contains(out(), "Error: '1,2,3,4' is not a point")) << out();
  EXPECT_TRUE(Contains(out(), "Table T defined with 3 columns.\n")) << out();
  Result<od::TableDefinition> def = container().GetTable("T");
  ASSERT_TRUE(def.ok()) << def.message();
  ASSERT_EQ(def->columns.size(), 3u);
  EXPECT_EQ(def->columns[0].default_value, od::Value::Integer(-42));
  EXPECT_EQ(def->columns[1].default_value, od::Value::Real(2.5));
  EXPECT_EQ(def->columns[2].default_value, od::Value::Point({1, 2.5, -3}));
}

TEST_F(ObjectDataCommands, AttachAndEditCheckEveryValue) {
  Wells();
  od::EntityId p = AddPoint();
  Typed("ODATTACH", {"Wells", Hex(p), "", "seven", "7", "deep", "*0", "10,20", "10,20,0"});
  EXPECT_TRUE(Contains(out(), "Error: 'seven' is not a whole number")) << out();
  EXPECT_TRUE(Contains(out(), "Error: 'deep' is not a finite number.")) << out();
  EXPECT_TRUE(Contains(out(), "Error: '10,20' is not a point")) << out();
  EXPECT_TRUE(Contains(out(), "Attached a record of Wells to 1 object.\n")) << out();
  std::vector<od::Record> records = container().Records(p);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].values[0], od::Value::Integer(7));
  EXPECT_EQ(records[0].values[1], od::Value::Real(0));  // "*0" is "0.00"
  EXPECT_EQ(records[0].values[2], od::Value::Point({10, 20, 0}));

  ClearOut();
  Typed("ODEDIT", {Hex(p), "ID", "*.5", "*9", ""});
  EXPECT_TRUE(Contains(out(), "Error: '7.5' is not a whole number")) << out();
  EXPECT_TRUE(Contains(out(), "Record updated.\n")) << out();
  EXPECT_EQ(container().Records(p)[0].values[0], od::Value::Integer(79));
}

// In a script, the first refused answer stops it and nothing is made.
TEST_F(ObjectDataCommands, ScriptStopsAtARefusedValue) {
  Answer({"New", "T", "", "N", "Integer", "12.5", "", ""});
  session_.Execute("ODTABLE");
  EXPECT_TRUE(Contains(out(), "Error: '12.5' is not a whole number")) << out();
  EXPECT_TRUE(container().TableNames().empty());
}

// --- names ---

TEST_F(ObjectDataCommands, NamesAreRefusedWhenTyped) {
  Wells();
  Typed("ODTABLE", {"New", "Wells", "bad\tname", "Pumps", "", "A", "", "", "", "A", "a", "", "", "",
                    "x\x01", ""});
  // The taken name is refused at once: the next prompt asks for the name again.
  EXPECT_TRUE(Contains(out(), "Table name: Wells\nError: table 'Wells' already exists.\nTable name: "))
      << out();
  EXPECT_TRUE(Contains(out(), "Error: a name cannot hold control characters.\nTable name: Pumps"))
      << out();
  EXPECT_TRUE(Contains(out(), "Column name or Enter to finish: A\nError: column 'A' already exists.\n"
                              "Column name or Enter to finish: a\n"))
      << out();
  EXPECT_TRUE(Contains(out(), "Table Pumps defined with 2 columns.\n")) << out();

  ClearOut();
  Typed("ODTABLE", {"Rename", "Pumps", "Wells", "Pumps2"});
  EXPECT_TRUE(Contains(out(), "New name: Wells\nError: table 'Wells' already exists.\nNew name: Pumps2\n"))
      << out();
  ClearOut();
  Typed("ODTABLE", {"Columns", "Pumps2", "Rename", "A", "a", "b"});
  EXPECT_TRUE(Contains(out(), "New name: a\nError: column 'a' already exists.\nNew name: b\n")) << out();
  ClearOut();
  Typed("ODTABLE", {"Columns", "Pumps2", "Add", "b", "c", "", "", ""});
  EXPECT_TRUE(Contains(out(), "Column name: b\nError: column 'b' already exists.\nColumn name: c\n"))
      << out();
  EXPECT_EQ(container().GetTable("Pumps2")->columns.size(), 3u);
}

TEST_F(ObjectDataCommands, CountsOfOneAreSingular) {
  Table("One", {"Only"});
  od::EntityId p = AddPoint();
  Attach(p, "One");
  Typed("ODTABLE", {"List"});
  EXPECT_TRUE(Contains(out(), "One (1 column)\n")) << out();
  Typed("ODDETACH", {"One", Hex(p), ""});
  EXPECT_TRUE(Contains(out(), "Detached 1 record.\n")) << out();
  Typed("ODTABLE", {"New", "Two", "", "X", "", "", "", ""});
  EXPECT_TRUE(Contains(out(), "Table Two defined with 1 column.\n")) << out();
}

// --- damaged Object Data ---

TEST_F(ObjectDataCommands, DamagedRecordsAreSkippedAndCounted) {
  Wells();
  od::EntityId p = AddPoint();
  for (int id : {1, 2, 3}) {
    od::Record r = *container().NewRecord("Wells");
    r.values[0] = od::Value::Integer(id);
    ASSERT_TRUE(container().AddRecord(p, r).ok());
  }
  // The first record's ID is not a number.
  DamageRecords(p, [](dxf::Tags& data) {
    for (dxf::Tag& t : data)
      if (t.code == 90) {
        t.value = "1x";
        break;
      }
  });
  Typed("ODEDIT", {Hex(p), "2", "ID", "30", ""});
  EXPECT_TRUE(Contains(out(), "Warning: 1 damaged record skipped (kept in the drawing as it is).\n"))
      << out();
  // Record 2 of the readable ones is the third stored record.
  std::vector<od::Record> records = container().Records(p);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].values[0], od::Value::Integer(2));
  EXPECT_EQ(records[1].values[0], od::Value::Integer(30));

  ClearOut();
  Typed("ODDETACH", {"Wells", Hex(p), ""});
  EXPECT_TRUE(Contains(out(), "Warning: 1 damaged record skipped")) << out();
  EXPECT_TRUE(Contains(out(), "Detached 2 records.\n")) << out();
  EXPECT_EQ(container().DamagedRecordCount(p), 1u);

  ClearOut();
  Typed("ODDETACH", {"*", Hex(p), ""});
  EXPECT_TRUE(Contains(out(), "Detached 1 record (1 of them damaged).\n")) << out();
  EXPECT_EQ(container().DamagedRecordCount(p), 0u);
}

TEST_F(ObjectDataCommands, EntityWithUnreadableRecordsGetsNoNewRecord) {
  Wells();
  od::EntityId damaged = AddPoint(), sound = AddPoint("0", 5, 5);
  Attach(damaged, "Wells");
  DamageRecords(damaged, [](dxf::Tags& data) { data[1].value = "3"; });  // format version 3
  Typed("ODATTACH", {"Wells", Hex(damaged), Hex(sound), "", "", "", ""});
  EXPECT_TRUE(Contains(out(), "Warning: entity " + Hex(damaged) + ": its Object Data cannot be read"))
      << out();
  EXPECT_TRUE(Contains(out(), "Attached a record of Wells to 1 object.\n")) << out();
  EXPECT_EQ(container().Records(sound).size(), 1u);
  EXPECT_EQ(container().DamagedRecordCount(damaged), 1u);
}

TEST_F(ObjectDataCommands, DamagedDefinitionIsListedMarkedAndKeepsItsName) {
  Wells();
  Table("Other", {"X"});
  model::RecordId catalogue = model::DictionaryLookup(doc(), model::NamedObjectDictionary(doc()),
                                                      objectdata::kCatalogueKey);
  model::RecordId def = doc().Find(model::DictionaryEntries(doc(), catalogue)[0].handle);
  dxf::Tags data = model::XRecordData(doc(), def);
  data[1].value = "2";  // format version 2
  model::SetXRecordData(doc(), def, data);
  store().Refresh();

  Typed("ODTABLE", {"List"});
  EXPECT_TRUE(Contains(out(), "Other (1 column)\n")) << out();
  EXPECT_TRUE(Contains(out(), "Wells [damaged, definition " + dxf::FormatHandle(doc().store().at(def).handle) +
                                  "]: format version '2' is not known"))
      << out();
  ClearOut();
  Typed("ODTABLE", {"New", "Wells", "Wells2", "", ""});
  EXPECT_TRUE(Contains(out(), "Error: table 'Wells' already exists (its definition")) << out();
  EXPECT_TRUE(Contains(out(), "Table Wells2 defined with 0 columns.\n")) << out();
  ClearOut();
  Typed("ODTABLE", {"Delete", "Wells", ""});
  EXPECT_TRUE(Contains(out(), "Error: table 'Wells' cannot be read (format version '2' is not known")) << out();
}

// --- LIST ---

TEST_F(ObjectDataCommands, ListLinesUpColumnNamesByCharactersNotBytes) {
  RegisterInfoCommands(session_);
  Table("Улицы", {"ИМЯ", "NAME"});
  od::EntityId p = AddPoint();
  Attach(p, "Улицы");
  Typed("LIST", {Hex(p), ""});
  // Both names take 20 characters before the value, whatever their encoded length.
  EXPECT_TRUE(Contains(out(), "    ИМЯ                  \n")) << out();
  EXPECT_TRUE(Contains(out(), "    NAME                 \n")) << out();
}

}  // namespace
}  // namespace veltor::session
