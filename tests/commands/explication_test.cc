// VELTOR_EXPL in the embedded session: the dialog, the save-file dialog, the gathered entities,
// and the CSV it writes read back by Python's csv module (an independent reader): one row per
// record with handle, type, layer, length, area and the fields, RFC 4180 quoting, the group
// summary, and no file at all when the command fails or is cancelled.
#include "data_command_fixture.h"

#include <cstdio>
#include <filesystem>

#include "drawing/model/tables.h"
#include "ui/explication_dialog.h"

namespace veltor::commands {
namespace {

using od::Value;
using ui::ExplicationDialog;

class ExplicationTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    // The report is read back by an independent reader; a machine without it skips.
    if (!std::filesystem::exists("/usr/bin/python3")) GTEST_SKIP() << "/usr/bin/python3 is not installed";
    Define("Parcels", {Column("NAME", Value::Character("")), Column("ZONE", Value::Character("")),
                       Column("N", Value::Integer(0))});
    Define("Other", {Column("X", Value::Real(0))});
    square_ = session::IdOf(doc(), model::AddLwPolyline(doc(), "0", {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true));
    AttachValues(square_, "Parcels", {Value::Character("Oak, \"big\""), Value::Character("R1"), Value::Integer(3)});
    AttachValues(square_, "Other", {Value::Real(1)});
    AttachValues(square_, "Parcels", {Value::Character("Elm"), Value::Character("C"), Value::Integer(1)});
    model::AddLayer(doc(), "Roads");
    line_ = session::IdOf(doc(), model::AddLine(doc(), "Roads", {0, 0, 0}, {3, 4, 0}));
    AttachValues(line_, "Parcels", {Value::Character("Ash"), Value::Character("R1"), Value::Integer(2)});
    pine_ = AddPoint("0", 5, 5);
    AttachValues(pine_, "Parcels", {Value::Character("Pine"), Value::Character("C"), Value::Integer(4)});
    other_ = AddPoint("0", 6, 6);
    AttachValues(other_, "Other", {Value::Real(2)});
    locked_ = AddPoint("LOCKED", 7, 7);
    AttachValues(locked_, "Parcels", {Value::Character("Locked"), Value::Character("C"), Value::Integer(9)});
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
    csv_ = dir_.File("report.csv");
  }

  void Choose(const std::string& table, const std::string& group_by) {
    ui_.NextDialog()
        .SelectItems(ExplicationDialog::kTableCombo, {table})
        .SelectItems(ExplicationDialog::kGroupByCombo, {group_by})
        .Press(od::kIdOk);
  }

  // The file as Python's csv module reads it (BOM taken off by "utf-8-sig"): one line per
  // record, fields joined by "|".
  std::string ReadBack(const std::string& path) {
    std::string command = "/usr/bin/python3 -c \"import csv,sys\n"
                          "with open(sys.argv[1], newline='', encoding='utf-8-sig') as f:\n"
                          "  [print('|'.join(r)) for r in csv.reader(f)]\" '" + path + "'";
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return "popen failed";
    std::string text;
    char buffer[4096];
    while (size_t n = fread(buffer, 1, sizeof buffer, pipe)) text.append(buffer, n);
    EXPECT_EQ(pclose(pipe), 0) << text;
    return text;
  }

  std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }

  od::EntityId square_ = 0, line_ = 0, pine_ = 0, other_ = 0, locked_ = 0;
  std::string csv_;
};

TEST_F(ExplicationTest, WritesOneRowPerRecordOfTheTableAndAGroupSummary) {
  const std::string before = Saved("before.dxf");
  Choose("Parcels", "ZONE");
  ui_.NextFile(csv_);
  EXPECT_EQ(Run("VELTOR_EXPL", {square_, line_, pine_, other_, locked_}, {}), "Completed: 4\n");
  EXPECT_EQ(Saved("after.dxf"), before);
  const std::string sq = Handle(square_), ln = Handle(line_), pn = Handle(pine_);
  EXPECT_EQ(ReadBack(csv_),
            "Handle|Type|Layer|Length|Area|NAME|ZONE|N\n" +
            sq + "|LWPOLYLINE|0|40.0|100.0|Oak, \"big\"|R1|3\n" +
            sq + "|LWPOLYLINE|0|40.0|100.0|Elm|C|1\n" +
            ln + "|LINE|Roads|5.0||Ash|R1|2\n" +
            pn + "|POINT|0|||Pine|C|4\n"
            "\n"
            "ZONE|Records|Total length|Total area\n"
            "C|2|40.0|100.0\n"
            "R1|2|45.0|100.0\n");
  const std::string bytes = Bytes(csv_);
  EXPECT_EQ(bytes.substr(0, 3), "\xEF\xBB\xBF");
  EXPECT_NE(bytes.find("\"Oak, \"\"big\"\"\""), std::string::npos);
  EXPECT_NE(bytes.find("NAME,ZONE,N\r\n"), std::string::npos);
}

TEST_F(ExplicationTest, NumericGroupsAreOrderedByValueAndNoGroupingWritesNoSummary) {
  Define("Lots", {Column("SIZE", Value::Integer(0))});
  for (int size : {10, 9, 10}) AttachValues(pine_, "Lots", {Value::Integer(size)});
  Choose("Lots", "SIZE");
  ui_.NextFile(csv_);
  EXPECT_EQ(Run("VELTOR_EXPL", {pine_}, {}), "Completed: 3\n");
  EXPECT_NE(ReadBack(csv_).find("SIZE|Records|Total length|Total area\n9|1|0.0|0.0\n10|2|0.0|0.0\n"),
            std::string::npos);

  Choose("Lots", "(none)");
  ui_.NextFile(csv_);
  EXPECT_EQ(Run("VELTOR_EXPL", {pine_}, {}), "Completed: 3\n");
  EXPECT_EQ(ReadBack(csv_), "Handle|Type|Layer|Length|Area|SIZE\n" + Handle(pine_) +
                                "|POINT|0|||10\n" + Handle(pine_) + "|POINT|0|||9\n" +
                                Handle(pine_) + "|POINT|0|||10\n");
}

TEST_F(ExplicationTest, TheGroupByListFollowsTheTableAndAnEmptyPromptTakesModelSpace) {
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Items(ExplicationDialog::kTableCombo), (std::vector<std::string>{"Other", "Parcels"}));
        EXPECT_EQ(d.Items(ExplicationDialog::kGroupByCombo), (std::vector<std::string>{"(none)", "X"}));
      })
      .SelectItems(ExplicationDialog::kTableCombo, {"Parcels"})
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Items(ExplicationDialog::kGroupByCombo),
                  (std::vector<std::string>{"(none)", "NAME", "ZONE", "N"}));
        EXPECT_EQ(d.SelectedIndex(ExplicationDialog::kGroupByCombo), 0);
      })
      .Press(od::kIdOk);
  ui_.NextFile(csv_);
  // Nothing picked, Enter at the prompt: every usable entity of model space.
  std::string out = Run("VELTOR_EXPL", {}, {""});
  EXPECT_NE(out.find("Completed: 4\n"), std::string::npos) << out;
  EXPECT_EQ(ReadBack(csv_).find("Locked"), std::string::npos);
  // The dialog offers the table chosen last.
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.SelectedItems(ExplicationDialog::kTableCombo), (std::vector<std::string>{"Parcels"}));
      })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_EXPL", {}, {}), "");
}

TEST_F(ExplicationTest, AFileThatCannotBeWrittenIsNamedAndAnExistingFileIsKept) {
  { std::ofstream(csv_) << "old"; }
  const std::string missing = dir_.File("no/such/folder/report.csv");
  Choose("Parcels", "(none)");
  ui_.NextFile(missing);
  std::string out = Run("VELTOR_EXPL", {square_}, {});
  EXPECT_EQ(out.rfind("Error: unable to write " + missing + ": ", 0), 0u) << out;
  EXPECT_FALSE(std::filesystem::exists(missing));

  // Cancelling the file dialog writes nothing and prints nothing.
  Choose("Parcels", "(none)");
  ui_.NextFile(std::nullopt);
  EXPECT_EQ(Run("VELTOR_EXPL", {square_}, {}), "");
  EXPECT_EQ(Bytes(csv_), "old");
  for (const auto& entry : std::filesystem::directory_iterator(dir_.File("")))
    EXPECT_EQ(entry.path().filename().string().find(".tmp-"), std::string::npos);
}

}  // namespace
}  // namespace veltor::commands
