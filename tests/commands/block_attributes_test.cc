// VELTOR_LOAD_ATTRS, VELTOR_STORE_ATTRS and VELTOR_ATTR_TEMPLATE in the embedded session over
// generated manholes (block references with attributes): the map file's case rules, comments
// and malformed lines, the text conversions both ways, and the template read back as a map.
#include "data_command_fixture.h"

#include <fstream>

#include "commands/exchange/attr_text_file.h"
#include "drawing/model/blocks.h"
#include "drawing/session/object_ids.h"

namespace veltor::commands {
namespace {

using od::Value;

class BlockAttributesTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("Manholes", {Column("ID", Value::Integer(0)), Column("DEPTH", Value::Real(0)),
                        Column("NAME", Value::Character("")), Column("POS", Value::Point({}))});
    Define("Parcels", {Column("No", Value::Integer(0))});
    model::AddBlockDefinition(doc(), "MANHOLE", {0, 0, 0}, {},
                              {{"ID", ""}, {"DEPTH", ""}, {"NAME", ""}, {"POS", ""}});
    model::AddBlockDefinition(doc(), "PARCEL", {0, 0, 0}, {}, {{"NUMBER", ""}, {"Number", ""}});
    map_ = dir_.File("map.txt");
  }

  od::EntityId Manhole(const std::string& id, const std::string& depth, const std::string& name,
                       const std::string& pos) {
    return session::IdOf(doc(), model::AddBlockReference(doc(), "MANHOLE", {0, 0, 0}, 1, 0, "0",
                                                         {{"ID", id}, {"DEPTH", depth},
                                                          {"NAME", name}, {"POS", pos}}));
  }

  void WriteMap(const std::string& bytes) {
    std::ofstream(map_, std::ios::binary) << bytes;
  }

  // The attributes of a block reference as "TAG=text", in drawing order.
  std::vector<std::string> Texts(od::EntityId reference) {
    std::vector<std::string> texts;
    for (const od::AttributeFacts& a : db().Attributes(reference))
      texts.push_back(a.tag + "=" + a.text);
    return texts;
  }

  std::string Load(const od::EntityList& picked) {
    ui_.NextFile(map_);
    return Run("VELTOR_LOAD_ATTRS", picked, {});
  }
  std::string Store(const od::EntityList& picked) {
    ui_.NextFile(map_);
    return Run("VELTOR_STORE_ATTRS", picked, {});
  }

  static constexpr char kManholeMap[] =
      "? manholes\n"
      "manhole\tID\tMANHOLES\tid   ? the number\n"
      "Manhole\t\tDEPTH\tmanholes\tDepth\t\r\n"
      "MANHOLE\tNAME\tManholes\tNAME\n"
      "MANHOLE\tPOS\tManholes\tPOS\n"
      "MANHOLE\tPOS\tManholes\tNAME\n";  // the first line for a block and tag wins

  std::string map_;
};

TEST_F(BlockAttributesTest, LoadAttachesARecordAndConvertsTextsByColumnType) {
  od::EntityId manhole = Manhole("1.9", "1.9", "North", "12.7, 3.2");
  od::EntityId point = AddPoint();
  WriteMap(kManholeMap);
  EXPECT_EQ(Load({manhole, point}),
            "5 attribute mappings loaded\n"
            "Loaded 1 definition(s) for 1 block reference(s)\n");
  // Whole-number parsing for the integer and for every point part; the real keeps 1.9.
  EXPECT_EQ(Records(manhole),
            std::vector<std::string>{"Manholes[1|1.9|North|12.000000,3.000000,0.000000]"});
  EXPECT_TRUE(Records(point).empty());
}

TEST_F(BlockAttributesTest, PointTextsWithFewerPartsLeaveTheRestZero) {
  od::EntityId one = Manhole("", "", "", "-4.5");
  od::EntityId none = Manhole("x", "abc", "", "");
  WriteMap(kManholeMap);
  EXPECT_EQ(Load({one, none}),
            "5 attribute mappings loaded\n"
            "Loaded 2 definition(s) for 2 block reference(s)\n");
  EXPECT_EQ(Records(one), std::vector<std::string>{"Manholes[0|0.0||-4.000000,0.000000,0.000000]"});
  EXPECT_EQ(Records(none), std::vector<std::string>{"Manholes[0|0.0||0.000000,0.000000,0.000000]"});
}

TEST_F(BlockAttributesTest, BlockTableAndColumnNamesIgnoreCaseButTagsDoNot) {
  od::EntityId parcel = session::IdOf(
      doc(), model::AddBlockReference(doc(), "PARCEL", {0, 0, 0}, 1, 0, "0",
                                      {{"NUMBER", "7"}, {"Number", "8"}}));
  WriteMap("Parcel\tNUMBER\tPARCELS\tNO\n");
  EXPECT_EQ(Load({parcel}),
            "1 attribute mappings loaded\nLoaded 1 definition(s) for 1 block reference(s)\n");
  EXPECT_EQ(Records(parcel), std::vector<std::string>{"Parcels[7]"});

  AttachValues(parcel, "Parcels", {Value::Integer(42)});  // a second record: store reads the first
  WriteMap("parcel\tNumber\tparcels\tno\n");
  EXPECT_EQ(Store({parcel}),
            "1 attribute mappings loaded\nLoaded 1 attribute(s) for 1 block reference(s)\n");
  EXPECT_EQ(Texts(parcel), (std::vector<std::string>{"NUMBER=7", "Number=7"}));
}

TEST_F(BlockAttributesTest, LoadWritesTheFirstOfTwoRecords) {
  od::EntityId manhole = Manhole("5", "2", "", "");
  AttachValues(manhole, "Manholes", {Value::Integer(1), Value::Real(0), Value::Character("a"), Value::Point({})});
  AttachValues(manhole, "Manholes", {Value::Integer(2), Value::Real(0), Value::Character("b"), Value::Point({})});
  WriteMap("MANHOLE\tID\tManholes\tID\n");
  EXPECT_EQ(Load({manhole}),
            "1 attribute mappings loaded\nLoaded 1 definition(s) for 1 block reference(s)\n");
  EXPECT_EQ(Records(manhole),
            (std::vector<std::string>{"Manholes[5|0.0|a|0.000000,0.000000,0.000000]",
                                      "Manholes[2|0.0|b|0.000000,0.000000,0.000000]"}));
}

TEST_F(BlockAttributesTest, StoreWritesValuesInTheirAttributeTextForms) {
  od::EntityId ten = Manhole("", "", "", "");
  od::EntityId eighth = Manhole("", "", "", "");
  od::EntityId bare = Manhole("keep", "keep", "keep", "keep");  // no record: left alone
  AttachValues(ten, "Manholes", {Value::Integer(-3), Value::Real(10), Value::Character("Nord"),
                                 Value::Point({1.5, -2, 0.25})});
  AttachValues(eighth, "Manholes", {Value::Integer(0), Value::Real(0.125), Value::Character(""),
                                    Value::Point({})});
  WriteMap(kManholeMap);
  EXPECT_EQ(Store({ten, eighth, bare}),
            "5 attribute mappings loaded\nLoaded 8 attribute(s) for 3 block reference(s)\n");
  EXPECT_EQ(Texts(ten), (std::vector<std::string>{"ID=-3", "DEPTH=10.0", "NAME=Nord",
                                                  "POS=1.500000, -2.000000, 0.250000"}));
  EXPECT_EQ(Texts(eighth), (std::vector<std::string>{"ID=0", "DEPTH=0.125", "NAME=",
                                                     "POS=0.000000, 0.000000, 0.000000"}));
  EXPECT_EQ(Texts(bare), (std::vector<std::string>{"ID=keep", "DEPTH=keep", "NAME=keep", "POS=keep"}));
}

TEST_F(BlockAttributesTest, UndoTakesBackWhatLoadAndStoreChanged) {
  od::EntityId manhole = Manhole("4", "2.5", "South", "1,2");
  AttachValues(manhole, "Parcels", {Value::Integer(1)});
  WriteMap(kManholeMap);
  std::string before = Saved("before.dxf");
  Load({manhole});
  ExpectUndoRestores(before, "VELTOR_LOAD_ATTRS");
  AttachValues(manhole, "Manholes", {Value::Integer(9), Value::Real(1), Value::Character("x"),
                                     Value::Point({})});
  before = Saved("before.dxf");
  Store({manhole});
  ExpectUndoRestores(before, "VELTOR_STORE_ATTRS");
}

TEST_F(BlockAttributesTest, AMalformedLineStopsTheCommandBeforeAnyChange) {
  od::EntityId manhole = Manhole("1", "2", "n", "");
  WriteMap("MANHOLE\tID\tManholes\tID\n"
           "MANHOLE\tNAME\tManholes ? three fields are left\tNAME\n"
           "MANHOLE\tDEPTH\tRoads\tDEPTH\n"
           "MANHOLE\tDEPTH\tManholes\tWIDTH\n");
  const std::string before = Saved("before.dxf");
  const std::string expected =
      "Error: invalid mapping 'MANHOLE\tNAME\tManholes'\n"
      "Error: table Roads not found\n"
      "Error: column WIDTH not found in table Manholes\n"
      "1 attribute mappings loaded\n";
  EXPECT_EQ(Load({manhole}), expected);
  EXPECT_EQ(Store({manhole}), expected);
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(BlockAttributesTest, MissingTablesAndColumnsOnlyDropTheirLines) {
  od::EntityId manhole = Manhole("12", "", "", "");
  WriteMap("MANHOLE\tID\tManholes\tID\nMANHOLE\tDEPTH\tRoads\tDEPTH\n");
  EXPECT_EQ(Load({manhole}),
            "Error: table Roads not found\n1 attribute mappings loaded\n"
            "Loaded 1 definition(s) for 1 block reference(s)\n");
  EXPECT_EQ(Records(manhole),
            std::vector<std::string>{"Manholes[12|0.0||0.000000,0.000000,0.000000]"});
}

TEST_F(BlockAttributesTest, AnUnreadableMapIsNamedAndNothingHappens) {
  od::EntityId manhole = Manhole("1", "", "", "");
  map_ = dir_.File("missing.txt");
  EXPECT_EQ(Load({manhole}), "Error: unable to read '" + map_ + "'\n");
  EXPECT_TRUE(Records(manhole).empty());
}

TEST_F(BlockAttributesTest, Utf16MapsWithAByteOrderMarkAreRead) {
  od::EntityId manhole = Manhole("3", "", "", "");
  const std::string line = "MANHOLE\tID\tManholes\tID\r\n";
  std::string bytes = "\xFF\xFE";
  for (char c : line) bytes += std::string{c, '\0'};
  WriteMap(bytes);
  EXPECT_EQ(Load({manhole}),
            "1 attribute mappings loaded\nLoaded 1 definition(s) for 1 block reference(s)\n");
  EXPECT_EQ(Records(manhole), std::vector<std::string>{"Manholes[3|0.0||0.000000,0.000000,0.000000]"});
}

TEST_F(BlockAttributesTest, LongLinesAreReadInPiecesOfTheLineBuffer) {
  // 10239 characters and 3 more: "abc", the piece read after the buffer filled, is a line of
  // its own (the text mode reads its "\r\n" as "\n"). Counted in UTF-16 units, so a two-byte
  // "é" counts once.
  const std::string first = "\xC3\xA9" + std::string(kMaxLineUnits - 1, 'x');
  EXPECT_EQ(SplitTextFileLines(db(), "\xEF\xBB\xBF" + first + "abc\r\nlast"),
            (std::vector<std::string>{first, "abc", "last"}));
  // Without a mark the bytes are Windows-1252, where every byte is a character.
  const std::string ansi(kMaxLineUnits, 'x');
  EXPECT_EQ(SplitTextFileLines(db(), ansi + "abc\n\nlast"),
            (std::vector<std::string>{ansi, "abc", "", "last"}));
}

TEST_F(BlockAttributesTest, TheTemplateListsBlocksTagsAndColumnsAndReadsBackAsNoMapping) {
  od::EntityId a = Manhole("", "", "", "");
  od::EntityId b = session::IdOf(doc(), model::AddBlockReference(doc(), "PARCEL", {0, 0, 0}, 1, 0, "0",
                                                                 {{"NUMBER", ""}, {"Number", ""}}));
  Define("TPMNODE_X", {Column("N", Value::Integer(0))});
  ui_.NextFile(map_);
  EXPECT_EQ(Run("VELTOR_ATTR_TEMPLATE", {b, a, AddPoint()}, {}),
            "Generated template for 2 block(s), 2 table(s)\n");
  std::ifstream in(map_, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_EQ(text.str(),
            "MANHOLE\tDEPTH\t?TableName\t?ColumnName\n"
            "MANHOLE\tID\t?TableName\t?ColumnName\n"
            "MANHOLE\tNAME\t?TableName\t?ColumnName\n"
            "MANHOLE\tPOS\t?TableName\t?ColumnName\n"
            "PARCEL\tNUMBER\t?TableName\t?ColumnName\n"
            "PARCEL\tNumber\t?TableName\t?ColumnName\n"
            "\n"
            "?BlockName\t?AttributeName\tManholes\tID\t?Integer\n"
            "?BlockName\t?AttributeName\tManholes\tDEPTH\t?Real\n"
            "?BlockName\t?AttributeName\tManholes\tNAME\t?Character\n"
            "?BlockName\t?AttributeName\tManholes\tPOS\t?Point\n"
            "?BlockName\t?AttributeName\tParcels\tNo\t?Integer\n");

  // The block lines, cut at their comments, have two fields each.
  const std::string before = Saved("before.dxf");
  EXPECT_EQ(Load({a, b}),
            "Error: invalid mapping 'MANHOLE\tDEPTH'\n"
            "Error: invalid mapping 'MANHOLE\tID'\n"
            "Error: invalid mapping 'MANHOLE\tNAME'\n"
            "Error: invalid mapping 'MANHOLE\tPOS'\n"
            "Error: invalid mapping 'PARCEL\tNUMBER'\n"
            "Error: invalid mapping 'PARCEL\tNumber'\n"
            "0 attribute mappings loaded\n");
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(BlockAttributesTest, TheTemplateIsInTheDrawingsAnsiCodePageAndSoAreMapsWithoutAMark) {
  model::AddBlockDefinition(doc(), "Tür", {0, 0, 0}, {}, {{"HÖHE", ""}});
  od::EntityId door = session::IdOf(
      doc(), model::AddBlockReference(doc(), "Tür", {0, 0, 0}, 1, 0, "0", {{"HÖHE", "Größe"}}));
  ui_.NextFile(map_);
  EXPECT_EQ(Run("VELTOR_ATTR_TEMPLATE", {door}, {}), "Generated template for 1 block(s), 2 table(s)\n");
  std::ifstream in(map_, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  // Windows-1252, as $DWGCODEPAGE says: one byte a letter, no byte-order mark.
  EXPECT_EQ(text.str().substr(0, 14), "T\xFCr\tH\xD6HE\t?Tabl");

  WriteMap("t\xFCr\tH\xD6HE\tmanholes\tname\n");
  EXPECT_EQ(Load({door}), "1 attribute mappings loaded\nLoaded 1 definition(s) for 1 block reference(s)\n");
  EXPECT_EQ(Records(door), std::vector<std::string>{"Manholes[0|0.0|Größe|0.000000,0.000000,0.000000]"});
}

TEST_F(BlockAttributesTest, TheTemplateNeedsAnAttributeAndAWritableFile) {
  EXPECT_EQ(Run("VELTOR_ATTR_TEMPLATE", {AddPoint()}, {}), "No valid entities selected\n");
  model::AddBlockDefinition(doc(), "PLAIN", {0, 0, 0}, {}, {});
  od::EntityId plain = session::IdOf(doc(), model::AddBlockReference(doc(), "PLAIN", {0, 0, 0}, 1, 0, "0", {}));
  EXPECT_EQ(Run("VELTOR_ATTR_TEMPLATE", {plain}, {}), "No valid entities selected\n");

  const std::string target = dir_.File("no_such_folder/map.txt");
  ui_.NextFile(target);
  ui_.NextMessageAnswer(od::MessageAnswer::kOk);
  EXPECT_EQ(Run("VELTOR_ATTR_TEMPLATE", {Manhole("", "", "", "")}, {}), "");
  EXPECT_EQ(ui_.messages(), std::vector<std::string>{"Attribute map template: Error: unable to open '" +
                                                     target + "'.\n"});
}

}  // namespace
}  // namespace veltor::commands
