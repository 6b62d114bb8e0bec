// VELTOR_TRANSLATE in the embedded session: the alias files' line rules and encodings, the
// duplicate-destination stop, which alias wins, the value conversions, the column rename
// outcomes and the round trip from names to aliases and back.
#include "data_command_fixture.h"

#include <fstream>

#include "commands/exchange/alias_file.h"
#include "commands/exchange/alias_maps.h"
#include "commands/exchange/attr_text_file.h"
#include "commands/exchange/translate_steps.h"
#include "od/column_rename.h"
#include "ui/od_translate.h"

namespace veltor::commands {
namespace {

using od::Value;
using ui::ODTranslate;

class TranslateTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("Roads", {Column("NAME", Value::Character("")), Column("CLASS", Value::Character("")),
                     Column("LANES", Value::Integer(0)), Column("WIDTH", Value::Real(0)),
                     Column("AXIS", Value::Point({}))});
    Define("Pipes", {Column("NAME", Value::Character("")), Column("DIAMETER", Value::Integer(0))});
    road_ = AddPoint();
    AttachValues(road_, "Roads", {Value::Character("1"), Value::Character("service"),
                                  Value::Integer(2), Value::Real(7.5), Value::Point({1, 2, 0})});
    pipe_ = AddPoint();
    AttachValues(pipe_, "Pipes", {Value::Character("1"), Value::Integer(1)});
  }

  // Writes an alias file and returns its path.
  std::string File(const std::string& name, const std::string& bytes) {
    std::string path = dir_.File(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  // Runs the command with the files given ("" leaves a file unchosen), pressing the direction
  // button; returns what it printed.
  std::string Translate(const std::string& tables, const std::string& fields,
                        const std::string& values, int direction = ODTranslate::kNameToAlias) {
    testing::DialogScript& dialog = ui_.NextDialog();
    const std::pair<int, std::string> files[] = {{ODTranslate::kTableFileButton, tables},
                                                 {ODTranslate::kFieldFileButton, fields},
                                                 {ODTranslate::kValueFileButton, values}};
    for (const auto& [button, path] : files) {
      if (path.empty()) continue;
      ui_.NextFile(path);
      dialog.Press(button);
    }
    dialog.Press(direction);
    return Run("VELTOR_TRANSLATE", {}, {});
  }

  std::vector<std::string> ColumnNames(const std::string& table) {
    std::vector<std::string> names;
    Result<od::TableDefinition> def = container().GetTable(table);
    if (def.ok())
      for (const od::ColumnDefinition& c : def->columns) names.push_back(c.name);
    return names;
  }

  od::EntityId road_ = 0;
  od::EntityId pipe_ = 0;
};

// --- alias file lines ----------------------------------------------------------------------------

TEST(AliasFields, CommentsBlanksAndTabRunsAreCut) {
  using Fields = std::vector<std::string>;
  // Roads, two blanks, a tab, two blanks, a Cyrillic alias, three blanks, a comment.
  EXPECT_EQ(AliasFields("Roads  \t  Дороги   # main roads\n"), (Fields{"Roads", "Дороги"}));
  EXPECT_EQ(AliasFields("A\t\tB"), (Fields{"A", "B"}));
  EXPECT_EQ(AliasFields("\t\tA\tB\t\t\r\n"), (Fields{"A", "B"}));
  EXPECT_EQ(AliasFields("Oak Street\tOak  St."), (Fields{"Oak Street", "Oak  St."}));
  EXPECT_EQ(AliasFields("\n"), Fields{});
  EXPECT_EQ(AliasFields("   # only a comment\n"), Fields{});
  EXPECT_EQ(AliasFields("A#\tB"), Fields{"A"});
}

TEST_F(TranslateTest, LinesAreReadAsTheTextModeReadsThemLineBreakIncluded) {
  // "\r\n" reads as "\n"; a lone "\r" is kept; the last line may have no break.
  EXPECT_EQ(SplitTextFileLinesAsRead(db(), "a\r\nb\rc\n\nd"),
            (std::vector<std::string>{"a\n", "b\rc\n", "\n", "d"}));
  // A line of 10239 characters fills the buffer: its break is read on its own.
  const std::string full(kMaxLineUnits, 'x');
  EXPECT_EQ(SplitTextFileLinesAsRead(db(), "\xEF\xBB\xBF" + full + "\nz"),
            (std::vector<std::string>{full, "\n", "z"}));
  EXPECT_EQ(SplitTextFileLines(db(), full + "\r\nz"), (std::vector<std::string>{full, "", "z"}));
}

TEST_F(TranslateTest, BadLinesAreReportedAsReadAndTheOthersStillLoad) {
  const std::string tables = File("tables.txt", "Roads\tStreets\n\nA\tB\tC\r\n# note\nPipes\tMains");
  EXPECT_EQ(Translate(tables, "", ""),
            "Loading table aliases from '" + tables + "'\n"
            "Error: incorrect table alias '\n'\n"
            "Error: incorrect table alias 'A\tB\tC\n'\n"
            "Error: incorrect table alias '# note\n'\n"
            "2 table aliases loaded\n"
            "Updated 0 records with new values\n"
            "Updated 0 columns\n");
  EXPECT_EQ(container().TableNames(), (std::vector<std::string>{"Streets", "Mains"}));
  EXPECT_EQ(Records(road_)[0].substr(0, 8), "Streets[");
}

TEST_F(TranslateTest, FieldAndValueLinesTakeTheirFieldCounts) {
  const std::string fields = File("fields.txt", "NAME\n"  // 1 field
                                                "NAME\tTITLE\n"
                                                "Pipes\tDIAMETER\tDN\n"
                                                "a\tb\tc\td\n");
  const std::string values = File("values.txt", "service\n"
                                                "service\taccess\n"
                                                "CLASS\tservice\tlocal\n"
                                                "Roads\tCLASS\tservice\tlane\n"
                                                "a\tb\tc\td\te\n");
  EXPECT_EQ(Translate("", fields, values),
            "Loading field aliases from '" + fields + "'\n"
            "Error: incorrect field alias 'NAME\n'\n"
            "Error: incorrect field alias 'a\tb\tc\td\n'\n"
            "2 field aliases loaded\n"
            "Loading value aliases from '" + values + "'\n"
            "Error: incorrect value alias 'service\n'\n"
            "Error: incorrect value alias 'a\tb\tc\td\te\n'\n"
            "3 value aliases loaded\n"
            "Updated 1 records with new values\n"
            "Updated 3 columns\n");
}

TEST_F(TranslateTest, AFileThatCannotBeReadIsSaidAndItsStepRunsEmpty) {
  const std::string missing = dir_.File("missing.txt");
  const std::string values = File("values.txt", "service\taccess\n");
  EXPECT_EQ(Translate(missing, missing, values),
            "Error: unable to read '" + missing + "'\n"
            "Error: unable to read '" + missing + "'\n"
            "Loading value aliases from '" + values + "'\n"
            "1 value aliases loaded\n"
            "Updated 1 records with new values\n"
            "Updated 0 columns\n");
}

// A line longer than the line buffer is read in pieces: the first piece alone has one field.
TEST_F(TranslateTest, ALineLongerThanTheBufferIsReadInPieces) {
  const std::string long_value(kMaxLineUnits, 'v');
  const std::string values = File("values.txt", long_value + "service\taccess\n");
  std::string printed = Translate("", "", values);
  EXPECT_EQ(printed, "Loading value aliases from '" + values + "'\n"
                     "Error: incorrect value alias '" + long_value + "'\n"
                     "1 value aliases loaded\n"
                     "Updated 1 records with new values\n"
                     "Updated 0 columns\n");
  EXPECT_EQ(Records(road_)[0], "Roads[1|access|2|7.5|1.000000,2.000000,0.000000]");
}

// --- encodings ---------------------------------------------------------------------------------

TEST_F(TranslateTest, AFileWithoutAMarkIsInTheDrawingsCodePageAndAMarkSelectsUtf8) {
  ASSERT_TRUE(doc().SetHeaderVar("$DWGCODEPAGE", {dxf::Tag{3, "ANSI_1251"}}).ok());
  // "Дороги" in Windows-1251, and "Трубы" in UTF-8 after a byte-order mark.
  (void)Translate(File("cp1251.txt", "Roads\t\xC4\xEE\xF0\xEE\xE3\xE8\n"), "", "");
  (void)Translate(File("utf8.txt", "\xEF\xBB\xBFPipes\tТрубы  # comment\r\n"), "", "");
  EXPECT_EQ(container().TableNames(), (std::vector<std::string>{"Дороги", "Трубы"}));
}

// --- the duplicate-destination stop ---------------------------------------------------------------

TEST_F(TranslateTest, TwoTablesToOneAliasStopBeforeAnyChangeAndTheOtherFilesAreNotRead) {
  const std::string before = Saved("before.dxf");
  const std::string tables = File("tables.txt", "Roads\tX\nPipes\tX\n");
  const std::string fields = File("fields.txt", "NAME\tTITLE\n");
  EXPECT_EQ(Translate(tables, fields, dir_.File("missing.txt")),
            "Loading table aliases from '" + tables + "'\n"
            "2 table aliases loaded\n"
            "Error: duplicate destination table 'X'\n"
            "Error: duplicate destination table(s)\n");
  EXPECT_EQ(Saved("after.dxf"), before);
}

// --- which alias applies ---------------------------------------------------------------------------

TEST_F(TranslateTest, TheMostSpecificValueAliasThatChangesTheValueWins) {
  const std::string values = File("values.txt",
                                  "1\tone\n"                  // every table and field
                                  "Pipes\tNAME\t1\tuno\n"     // overrides it in Pipes' NAME
                                  "Roads\tNAME\t1\t1\n"       // maps to itself: does not block
                                  "CLASS\tservice\tlocal\n"   // any table's CLASS
                                  "service\taccess\n"         // loses to the per-field alias
                                  "1\tignored\n");            // a later line for a key
  EXPECT_EQ(Translate("", "", values),
            "Loading value aliases from '" + values + "'\n"
            "6 value aliases loaded\n"
            "Updated 2 records with new values\n"
            "Updated 0 columns\n");
  EXPECT_EQ(Records(road_), std::vector<std::string>{"Roads[one|local|2|7.5|1.000000,2.000000,0.000000]"});
  // The Integer 1 reads "1" too: the global alias makes it 0 ("one" has no leading number).
  EXPECT_EQ(Records(pipe_), std::vector<std::string>{"Pipes[uno|0]"});
}

TEST_F(TranslateTest, APerTableFieldAliasWinsOverTheGlobalOneUnlessItIsTheNameItself) {
  const std::string fields = File("fields.txt", "NAME\tTITLE\n"
                                                "Pipes\tNAME\tLABEL\n"
                                                "Roads\tCLASS\tCLASS\n"
                                                "CLASS\tKIND\n");
  EXPECT_EQ(Translate("", fields, ""),
            "Loading field aliases from '" + fields + "'\n"
            "4 field aliases loaded\n"
            "Updated 0 records with new values\n"
            "Updated 3 columns\n");
  EXPECT_EQ(ColumnNames("Roads"), (std::vector<std::string>{"TITLE", "KIND", "LANES", "WIDTH", "AXIS"}));
  EXPECT_EQ(ColumnNames("Pipes"), (std::vector<std::string>{"LABEL", "DIAMETER"}));
  // Renamed columns keep their values.
  EXPECT_EQ(Records(road_), std::vector<std::string>{"Roads[1|service|2|7.5|1.000000,2.000000,0.000000]"});
}

TEST_F(TranslateTest, RenamesThatFailAreReportedAndTheOthersStillHappen) {
  // CLASS to NAME collides; a name with a control character is refused by the drawing.
  const std::string fields = File("fields.txt", "Roads\tCLASS\tNAME\nWIDTH\tW\x01\nLANES\tN\n");
  EXPECT_EQ(Translate("", fields, ""),
            "Loading field aliases from '" + fields + "'\n"
            "3 field aliases loaded\n"
            "Updated 0 records with new values\n"
            "Error: duplicate column names.\n"
            "Error. Operation unsuccessful.\n"
            "Updated 1 columns\n");
  EXPECT_EQ(ColumnNames("Roads"), (std::vector<std::string>{"NAME", "CLASS", "N", "WIDTH", "AXIS"}));
}

TEST_F(TranslateTest, WithOnlyAFieldFileBothUpdatedLinesArePrinted) {
  const std::string fields = File("fields.txt", "DIAMETER\tDN\n");
  EXPECT_EQ(Translate("", fields, ""),
            "Loading field aliases from '" + fields + "'\n"
            "1 field aliases loaded\n"
            "Updated 0 records with new values\n"
            "Updated 1 columns\n");
}

// An entity's records are written back by their position, whether every table has an alias
// (all records read at once) or only some (the others' records are not read).
TEST_F(TranslateTest, EachRecordIsWrittenBackInItsOwnPlace) {
  od::EntityId both = AddPoint();
  AttachValues(both, "Pipes", {Value::Character("service"), Value::Integer(5)});
  AttachValues(both, "Roads", {Value::Character("x"), Value::Character("service"), Value::Integer(1),
                               Value::Real(0), Value::Point({})});
  (void)Translate("", "", File("some.txt", "CLASS\tservice\tlocal\n"));
  EXPECT_EQ(Records(both), (std::vector<std::string>{
                               "Pipes[service|5]", "Roads[x|local|1|0.0|0.000000,0.000000,0.000000]"}));
  (void)Translate("", "", File("every.txt", "local\tlane\nPipes\tDIAMETER\t5\t6\n"));
  EXPECT_EQ(Records(both), (std::vector<std::string>{
                               "Pipes[service|6]", "Roads[x|lane|1|0.0|0.000000,0.000000,0.000000]"}));
}

// --- value conversions -----------------------------------------------------------------------------

TEST_F(TranslateTest, NewTextsAreReadByTheColumnsType) {
  const std::string values = File("values.txt",
                                  "Roads\tLANES\t2\t12abc\n"
                                  "Roads\tWIDTH\t7.5\t3,5\n"
                                  "Roads\tAXIS\t1.000000,2.000000,0.000000\t5,,6\n"
                                  "Pipes\tDIAMETER\t1\tnone\n");
  (void)Translate("", "", values);
  EXPECT_EQ(Records(road_), std::vector<std::string>{"Roads[1|service|12|3.0|5.000000,6.000000,0.000000]"});
  EXPECT_EQ(Records(pipe_), std::vector<std::string>{"Pipes[1|0]"});
}

TEST(SetTranslatedValue, PointsTakeOneToThreeNumbersAndNoStarStandsForTheOldValue) {
  Value point = Value::Point({9, 9, 9});
  SetTranslatedValue(point, "4");
  EXPECT_EQ(od::ValueToText(point), "4.000000,0.000000,0.000000");
  SetTranslatedValue(point, ",1.5, 2,3");
  EXPECT_EQ(od::ValueToText(point), "1.500000,2.000000,3.000000");
  SetTranslatedValue(point, "1,2,3,4");  // more than three numbers: kept
  EXPECT_EQ(od::ValueToText(point), "1.500000,2.000000,3.000000");
  Value text = Value::Character("Main");
  SetTranslatedValue(text, "* Street");
  EXPECT_EQ(text.text(), "* Street");
  Value integer = Value::Integer(5);
  SetTranslatedValue(integer, "*5");
  EXPECT_EQ(integer.integer(), 0);
}

// --- inversion and the round trip -----------------------------------------------------------------

TEST(InvertAliasMaps, AliasesBecomeKeysAndTheFirstNameKeepsASharedAlias) {
  AliasMaps maps;
  maps.values = {{"b", "x"}, {"a", "x"}, {"c", "y"}};
  maps.table_field_values["Roads"]["NAME"] = {{"Main", "Haupt"}};
  InvertAliasMaps(maps);
  EXPECT_EQ(maps.values, (AliasMap{{"x", "a"}, {"y", "c"}}));
  EXPECT_EQ(maps.table_field_values["Roads"]["NAME"], (AliasMap{{"Haupt", "Main"}}));
}

TEST_F(TranslateTest, NamesToAliasesAndBackRestoreTheSavedDrawing) {
  const std::string before = Saved("before.dxf");
  const std::string tables = File("tables.txt", "Roads\tStreets\nPipes\tMains\n");
  // The per-table alias is keyed by the table's name: it holds both ways because tables are
  // renamed last towards aliases and first back to names.
  const std::string fields = File("fields.txt", "\xEF\xBB\xBFRoads\tNAME\tНазвание\nDIAMETER\tDN\n");
  const std::string values = File("values.txt",
                                  "\xEF\xBB\xBFservice\tобслуживание\n"
                                  "Roads\tWIDTH\t7.5\t9.25\n"
                                  "Roads\tAXIS\t1.000000,2.000000,0.000000\t3.000000,4.000000,5.000000\n"
                                  "DIAMETER\t1\t100\n");
  EXPECT_EQ(Translate(tables, fields, values, ODTranslate::kNameToAlias),
            "Loading table aliases from '" + tables + "'\n"
            "2 table aliases loaded\n"
            "Loading field aliases from '" + fields + "'\n"
            "2 field aliases loaded\n"
            "Loading value aliases from '" + values + "'\n"
            "4 value aliases loaded\n"
            "Updated 2 records with new values\n"
            "Updated 2 columns\n");
  EXPECT_EQ(Records(road_),
            std::vector<std::string>{"Streets[1|обслуживание|2|9.25|3.000000,4.000000,5.000000]"});
  EXPECT_EQ(ColumnNames("Streets")[0], "Название");
  EXPECT_EQ(Records(pipe_), std::vector<std::string>{"Mains[1|100]"});
  EXPECT_NE(Saved("aliases.dxf"), before);

  EXPECT_EQ(Translate(tables, fields, values, ODTranslate::kAliasToName),
            "Loading table aliases from '" + tables + "'\n"
            "2 table aliases loaded\n"
            "Loading field aliases from '" + fields + "'\n"
            "2 field aliases loaded\n"
            "Loading value aliases from '" + values + "'\n"
            "4 value aliases loaded\n"
            "Updated 2 columns\n"
            "Updated 2 records with new values\n");
  EXPECT_EQ(Saved("names.dxf"), before);
}

// --- the dialog and the command's edges ---------------------------------------------------------------

TEST_F(TranslateTest, AChosenFileBecomesItsButtonsCaptionAndCancelChangesNothing) {
  const std::string tables = File("tables.txt", "Roads\tStreets\n");
  ui_.NextFile(std::nullopt);  // the file dialog cancelled: nothing chosen
  ui_.NextFile(tables);
  ui_.NextDialog()
      .Press(ODTranslate::kTableFileButton)
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Find(ODTranslate::kTableFileButton)->label, "Table alias file");
      })
      .Press(ODTranslate::kTableFileButton)
      .Inspect([&tables](const od::DialogModel& d) {
        EXPECT_EQ(d.Find(ODTranslate::kTableFileButton)->label, tables);
        EXPECT_FALSE(d.Find(od::kIdOk)->visible);
      })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_TRANSLATE", {}, {}), "");
  EXPECT_EQ(container().TableNames(), (std::vector<std::string>{"Roads", "Pipes"}));
}

TEST_F(TranslateTest, TheCommandIsOneUndoStep) {
  const std::string before = Saved("before.dxf");
  (void)Translate(File("tables.txt", "Roads\tStreets\n"), File("fields.txt", "NAME\tTITLE\n"),
                  File("values.txt", "service\taccess\n"));
  ExpectUndoRestores(before, "VELTOR_TRANSLATE");
}

// --- the column rename operation -------------------------------------------------------------------

TEST_F(TranslateTest, ColumnRenameTellsItsFiveOutcomesApart) {
  using Outcome = od::ColumnRenameOutcome;
  EXPECT_EQ(od::RenameTableColumn(container(), "Lakes", "NAME", "X"), Outcome::kTableNotFound);
  EXPECT_EQ(od::RenameTableColumn(container(), "Roads", "DEPTH", "X"), Outcome::kColumnNotFound);
  EXPECT_EQ(od::RenameTableColumn(container(), "Roads", "CLASS", "NAME"), Outcome::kDuplicateColumnNames);
  EXPECT_EQ(od::RenameTableColumn(container(), "Roads", "CLASS", ""), Outcome::kFailure);
  EXPECT_EQ(ColumnNames("Roads")[1], "CLASS");
  EXPECT_EQ(od::RenameTableColumn(container(), "Roads", "CLASS", "class"), Outcome::kSuccess);
  EXPECT_EQ(ColumnNames("Roads")[1], "class");
  EXPECT_EQ(Records(road_), std::vector<std::string>{"Roads[1|service|2|7.5|1.000000,2.000000,0.000000]"});
}

}  // namespace
}  // namespace veltor::commands
