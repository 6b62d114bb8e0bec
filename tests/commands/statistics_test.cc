// VELTOR_STAT over a drawing built in memory: the census of model space (block definitions
// left out) shown in the 350 by 400 text box, with system tables counted for "multiple" and
// "duplicated" but given no line, unused tables, and table lines in ordinal order.
#include "data_command_fixture.h"

#include "drawing/model/blocks.h"
#include "drawing/model/tables.h"
#include "ui/text_box_dialog.h"

namespace veltor::commands {
namespace {

using od::Value;

class StatisticsTest : public testing::DataCommandTest {
 protected:
  // Runs VELTOR_STAT, closing its dialog with OK; returns the report with "\n" line ends.
  std::string Report() {
    ui_.NextDialog()
        .Inspect([](const od::DialogModel& d) {
          EXPECT_EQ(d.size().width, 350);
          EXPECT_EQ(d.size().height, 400);
        })
        .Press(od::kIdOk);
    EXPECT_EQ(Run("VELTOR_STAT", {}, {}), "") << "the report is not printed";
    const testing::ScriptedUi::Opened& box = ui_.opened().back();
    EXPECT_EQ(box.title, "Object Data statistics.");
    std::string text = box.Find(ui::TextBoxDialog::kTextId).text;
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
      plain += text[i];
    }
    return plain;
  }
  void DefineOne(const std::string& name) { Define(name, {Column("ID", Value::Integer(0))}); }
};

TEST_F(StatisticsTest, CountsModelSpaceAndPlacesTheTableLinesBetweenTheSecondAndThirdFigures) {
  for (const char* name : {"a", "B", "Unused", "TPMID_x", "CNTR_y"}) DefineOne(name);
  od::EntityId twice_a = AddPoint();
  AttachValues(twice_a, "a", {Value::Integer(1)});
  AttachValues(twice_a, "a", {Value::Integer(2)});
  od::EntityId b_and_system = AddPoint();
  AttachValues(b_and_system, "B", {Value::Integer(1)});
  AttachValues(b_and_system, "TPMID_x", {Value::Integer(1)});
  od::EntityId system_only = AddPoint();
  AttachValues(system_only, "CNTR_y", {Value::Integer(1)});
  od::EntityId system_twice = AddPoint();
  AttachValues(system_twice, "TPMID_x", {Value::Integer(1)});
  AttachValues(system_twice, "TPMID_x", {Value::Integer(2)});
  AddPoint();
  // Every entity of model space counts, whatever its layer's state.
  od::EntityId frozen = AddPoint("FROZEN");
  model::SetLayerFrozen(doc(), model::FindLayer(doc(), "FROZEN"), true);
  AttachValues(frozen, "B", {Value::Integer(3)});

  const std::string before = Saved("before.dxf");
  EXPECT_EQ(Report(),
            "Objects: 6\n"
            "Objects with no Object Data: 1\n"
            "Graphical objects with Object Data:\n"
            "\tB: 2\n"
            "\ta: 2\n"
            "Objects with Object Data: 5\n"
            "Objects containing duplicated Object Data: 2\n"
            "Objects containing multiple Object Data: 3\n"
            "Object Data: 3\n"
            "Unused Object Data: 1\n");
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(StatisticsTest, TablesWithoutRecordsAreAllUnusedAndHaveNoBlock) {
  DefineOne("Roads");
  DefineOne("TPMNODE_1");
  AddPoint();
  // An entity of a block definition is not in model space.
  model::AddBlockDefinition(doc(), "MARK", {0, 0, 0}, {{"POINT", "0", {{10, "1"}, {20, "1"}, {30, "0"}}}}, {});
  EXPECT_EQ(Report(),
            "Objects: 1\n"
            "Objects with no Object Data: 1\n"
            "Objects with Object Data: 0\n"
            "Objects containing duplicated Object Data: 0\n"
            "Objects containing multiple Object Data: 0\n"
            "Object Data: 1\n"
            "Unused Object Data: 1\n");
}

TEST_F(StatisticsTest, ADrawingWithoutTablesReportsZeroTables) {
  EXPECT_EQ(Report(),
            "Objects: 0\n"
            "Objects with no Object Data: 0\n"
            "Objects with Object Data: 0\n"
            "Objects containing duplicated Object Data: 0\n"
            "Objects containing multiple Object Data: 0\n"
            "Object Data: 0\n"
            "Unused Object Data: 0\n");
  EXPECT_EQ(ui_.opened().back().controls.size(), 2u);  // the text and OK
}

}  // namespace
}  // namespace veltor::commands
