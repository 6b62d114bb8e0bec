// The attach/detach dialog command and the two value-addition commands, run in the embedded
// session with their dialogs answered by control id: what the dialogs offer, what is written
// where, the counts printed, refusals that keep a dialog open, and undo. AddValue's three
// modes are checked on each value type directly.
#include "data_command_fixture.h"

#include "commands/edit/add_value.h"
#include "ui/add_value_dialog.h"
#include "ui/attach_detach_dialog.h"
#include "ui/od_to_od_dialog.h"

namespace veltor::commands {
namespace {

using od::Value;
using Strings = std::vector<std::string>;
using Attach = ui::AttachDetachDialog;
using AddDialog = ui::AddValueDialog;
using OdToOd = ui::OdToOdDialog;

class DataDialogCommandsTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("Pipes", {Column("ID", Value::Integer(0)), Column("DIAM", Value::Real(0.5)),
                     Column("NAME", Value::Character("pipe")),
                     Column("AT", Value::Point({1, 2, 3})), Column("LABEL", Value::Character(""))});
    Define("Survey", {Column("CODE", Value::Character("")), Column("DIAM", Value::Real(0)),
                      Column("ID", Value::Integer(0))});
    Define("TPMNODE_9", {Column("N", Value::Integer(0))});
    e1_ = AddPoint("0", 1, 1);
    e2_ = AddPoint("0", 2, 2);
    locked_ = AddPoint("LOCKED", 3, 3);
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  }

  void Pipe(od::EntityId id, int number, const std::string& label = "") {
    AttachValues(id, "Pipes", {Value::Integer(number), Value::Real(0.5), Value::Character("pipe"),
                               Value::Point({1, 2, 3}), Value::Character(label)});
  }
  void Survey(od::EntityId id, const std::string& code, double diam, int number) {
    AttachValues(id, "Survey", {Value::Character(code), Value::Real(diam), Value::Integer(number)});
  }
  // Fails the test when the selection prompt was shown before the dialog.
  void ExpectNoPromptYet(const od::DialogModel&) {
    EXPECT_EQ(out().find("Select objects"), std::string::npos) << "prompted before the dialog";
  }

  od::EntityId e1_ = 0, e2_ = 0, locked_ = 0;
};

TEST_F(DataDialogCommandsTest, AttachOffersUserTablesWithDefaultsAndAttachesTheEditedValues) {
  ui_.NextDialog()
      .SetCell(Attach::kValueGrid, "ID", Attach::kValueColumn, "7")
      .SetCell(Attach::kValueGrid, "DIAM", Attach::kValueColumn, "*5")
      .SetCell(Attach::kValueGrid, "AT", Attach::kValueColumn, "10, 20, 0")
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADEATTACHDATA", {e1_, e2_, locked_}, {}), "Completed: 2\n");
  ASSERT_EQ(ui_.opened().size(), 1u);
  EXPECT_EQ(ui_.opened()[0].title, "Attach/detach OD");
  od::Control tables = ui_.opened()[0].Find(Attach::kTableCombo);
  EXPECT_EQ(tables.items, (Strings{"Pipes", "Survey"}));
  EXPECT_EQ(tables.selection, std::vector<int>{0});
  EXPECT_EQ(ui_.opened()[0].Find(Attach::kValueGrid).rows,
            (od::GridRows{{"ID", "Integer", "0"},
                          {"DIAM", "Real", "0.5"},
                          {"NAME", "Character", "pipe"},
                          {"AT", "Point", "1.000000,2.000000,3.000000"},
                          {"LABEL", "Character", ""}}));
  // "*" stands for the default, as in every typed value; the locked entity is no target.
  const Strings attached = {"Pipes[7|0.55|pipe|10.000000,20.000000,0.000000|]"};
  EXPECT_EQ(Records(e1_), attached);
  EXPECT_EQ(Records(e2_), attached);
  EXPECT_TRUE(Records(locked_).empty());

  // The table used last is offered first; choosing another shows its columns.
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.SelectedIndex(Attach::kTableCombo), 0); })
      .SelectItems(Attach::kTableCombo, {"Survey"})
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.Rows(Attach::kValueGrid).size(), 3u); })
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADEATTACHDATA", {e1_}, {}), "Completed: 1\n");
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) { EXPECT_EQ(d.SelectedIndex(Attach::kTableCombo), 1); })
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_ADEATTACHDATA", {e1_}, {}), "");
}

TEST_F(DataDialogCommandsTest, AValueThatDoesNotConvertKeepsTheDialogOpen) {
  std::string before = Saved("before.dxf");
  ui_.NextDialog()
      .SetCell(Attach::kValueGrid, "AT", Attach::kValueColumn, "1;2;3")
      .Press(od::kIdOk)
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_ADEATTACHDATA", {e1_}, {}), "");
  EXPECT_EQ(ui_.refusals(), Strings{"AT: \"1;2;3\" does not convert to Point."});
  EXPECT_TRUE(Records(e1_).empty());
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(DataDialogCommandsTest, DetachAsksTheDialogFirstThenTheEntitiesAndCountsRecords) {
  Pipe(e1_, 1);
  Survey(e1_, "S", 1, 1);
  Pipe(e1_, 2);
  Pipe(e2_, 3);
  Pipe(locked_, 4);
  ui_.NextDialog()
      .Inspect([this](const od::DialogModel& d) { ExpectNoPromptYet(d); })
      .Press(Attach::kDetach);
  // Enter at the prompt: all of model space, less the entity on the locked layer.
  EXPECT_EQ(Run("VELTOR_ADEATTACHDATA", {}, {""}), "Select objects: \nCompleted: 3\n");
  EXPECT_EQ(Records(e1_), Strings{"Survey[S|1.0|1]"});
  EXPECT_TRUE(Records(e2_).empty());
  EXPECT_EQ(Records(locked_).size(), 1u);
}

TEST_F(DataDialogCommandsTest, WithoutUserTablesNothingIsAsked) {
  ASSERT_TRUE(container().DeleteTable("Pipes").ok());
  ASSERT_TRUE(container().DeleteTable("Survey").ok());
  for (const char* command : {"VELTOR_ADEATTACHDATA", "VELTOR_ADDVAL", "VELTOR_ADDVAL_OD2OD"})
    EXPECT_EQ(Run(command, {e1_}, {}), "Error: table not found.\n") << command;
  EXPECT_TRUE(ui_.opened().empty());
}

TEST_F(DataDialogCommandsTest, AddValueModesOnEachType) {
  auto add = [](Value source, Value target, ui::AddMode mode) {
    bool converted = AddValue(source, target, mode);
    return (converted ? "" : "failed:") + od::ValueToText(target);
  };
  using ui::AddMode;
  // Replace: same type exactly, other types through their text.
  EXPECT_EQ(add(Value::Character("12abc"), Value::Integer(5), AddMode::kReplace), "12");
  EXPECT_EQ(add(Value::Integer(3), Value::Real(0.5), AddMode::kReplace), "3.0");
  EXPECT_EQ(add(Value::Real(2.5), Value::Character("x"), AddMode::kReplace), "2.5");
  EXPECT_EQ(add(Value::Character("a*b"), Value::Character("x"), AddMode::kReplace), "a*b");
  EXPECT_EQ(add(Value::Character("1;2;3"), Value::Point({4, 5, 6}), AddMode::kReplace),
            "failed:4.000000,5.000000,6.000000");
  Value exact = Value::Real(0.5);
  ASSERT_TRUE(AddValue(Value::Real(1e-15), exact, AddMode::kReplace));
  EXPECT_EQ(exact.real(), 1e-15);  // its text would read 0.0
  // Append: the target's text, then the source's.
  EXPECT_EQ(add(Value::Integer(3), Value::Integer(12), AddMode::kAppend), "123");
  EXPECT_EQ(add(Value::Integer(1), Value::Real(2.5), AddMode::kAppend), "2.51");
  EXPECT_EQ(add(Value::Character(" Street"), Value::Character("Main"), AddMode::kAppend),
            "Main Street");
  EXPECT_EQ(add(Value::Character("*"), Value::Character("a"), AddMode::kAppend), "a*");
  // Add: the source converted to the target's type, then summed.
  EXPECT_EQ(add(Value::Character("30"), Value::Integer(12), AddMode::kAddNumbers), "42");
  EXPECT_EQ(add(Value::Real(2.9), Value::Integer(12), AddMode::kAddNumbers), "14");
  EXPECT_EQ(add(Value::Integer(3), Value::Real(2.5), AddMode::kAddNumbers), "5.5");
  EXPECT_EQ(add(Value::Character("abc"), Value::Real(1.5), AddMode::kAddNumbers), "1.5");
  EXPECT_EQ(add(Value::Integer(1), Value::Integer(2147483647), AddMode::kAddNumbers),
            "failed:2147483647");
  EXPECT_EQ(add(Value::Real(1e308), Value::Real(1e308), AddMode::kAddNumbers).substr(0, 7),
            "failed:");
  EXPECT_EQ(add(Value::Integer(1), Value::Character("7"), AddMode::kAddNumbers), "failed:7");
}

TEST_F(DataDialogCommandsTest, AddValWritesEveryRecordOfTheTableAndSaysWhatDidNotConvert) {
  Pipe(e1_, 2147483647, "1");
  Pipe(e1_, 10, "5");
  Pipe(e2_, 20, "x");
  Survey(e2_, "", 0, 99);
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Items(AddDialog::kTableCombo), (Strings{"Pipes", "Survey"}));
        EXPECT_EQ(d.Items(AddDialog::kSourceCombo), (Strings{"ID", "DIAM", "NAME", "AT", "LABEL"}));
        // The first field into the second until the user chooses.
        EXPECT_EQ(d.SelectedIndex(AddDialog::kSourceCombo), 0);
        EXPECT_EQ(d.SelectedIndex(AddDialog::kTargetCombo), 1);
        EXPECT_EQ(d.Items(AddDialog::kModeCombo),
                  (Strings{"Replace the target with the source",
                           "Append the source's text to the target's",
                           "Add the source's number to the target's"}));
      })
      .SelectItems(AddDialog::kSourceCombo, {"LABEL"})
      .SelectItems(AddDialog::kTargetCombo, {"ID"})
      .Select(AddDialog::kModeCombo, {2})
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADDVAL", {e1_, e2_}, {}),
            "Warning: 1 value could not be converted and was left as it was.\nCompleted: 2\n");
  EXPECT_EQ(Records(e1_), (Strings{"Pipes[2147483647|0.5|pipe|1.000000,2.000000,3.000000|1]",
                                   "Pipes[15|0.5|pipe|1.000000,2.000000,3.000000|5]"}));
  // "x" reads as 0: written, unchanged in value. Survey is another table.
  EXPECT_EQ(Records(e2_), (Strings{"Pipes[20|0.5|pipe|1.000000,2.000000,3.000000|x]",
                                   "Survey[|0.0|99]"}));

  // Remembered: the same choice again; replacing a Point from text that is no point fails.
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.SelectedItems(AddDialog::kSourceCombo), Strings{"LABEL"});
        EXPECT_EQ(d.SelectedItems(AddDialog::kTargetCombo), Strings{"ID"});
        EXPECT_EQ(d.SelectedIndex(AddDialog::kModeCombo), 2);
      })
      .SelectItems(AddDialog::kTargetCombo, {"AT"})
      .Select(AddDialog::kModeCombo, {0})
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADDVAL", {e1_, e2_}, {}),
            "Warning: 3 values could not be converted and were left as they were.\nCompleted: 0\n");
}

TEST_F(DataDialogCommandsTest, AddingNumbersIntoTextIsRefusedInTheDialog) {
  Pipe(e1_, 1, "2");
  ui_.NextDialog()
      .SelectItems(AddDialog::kSourceCombo, {"ID"})
      .SelectItems(AddDialog::kTargetCombo, {"LABEL"})
      .Select(AddDialog::kModeCombo, {2})
      .Press(od::kIdOk)
      .Select(AddDialog::kModeCombo, {1})
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADDVAL", {e1_}, {}), "Completed: 1\n");
  EXPECT_EQ(ui_.refusals(), Strings{"Target field: adding numbers needs an Integer or Real field."});
  EXPECT_EQ(Records(e1_), Strings{"Pipes[1|0.5|pipe|1.000000,2.000000,3.000000|21]"});
}

TEST_F(DataDialogCommandsTest, OdToOdCopiesTheFirstSourceRecordIntoTheFirstTargetRecord) {
  Survey(e1_, "S1", 2.25, 42);
  Survey(e1_, "S2", 9, 43);
  Pipe(e1_, 1);
  Pipe(e1_, 2);
  Survey(e2_, "S3", 3.5, 44);
  Pipe(locked_, 5);
  Survey(locked_, "S4", 1, 45);
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        // Survey into Pipes: same-named fields proposed.
        EXPECT_EQ(d.SelectedItems(OdToOd::kSourceCombo), Strings{"Pipes"});
        EXPECT_EQ(d.SelectedItems(OdToOd::kTargetCombo), Strings{"Survey"});
      })
      .SelectItems(OdToOd::kSourceCombo, {"Survey"})
      .SelectItems(OdToOd::kTargetCombo, {"Pipes"})
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.Rows(OdToOd::kFieldGrid),
                  (od::GridRows{{"ID", "Integer", "ID"},
                                {"DIAM", "Real", "DIAM"},
                                {"NAME", "Character", ""},
                                {"AT", "Point", ""},
                                {"LABEL", "Character", ""}}));
      })
      .SetCell(OdToOd::kFieldGrid, "LABEL", OdToOd::kSourceColumn, "code")
      .Press(od::kIdOk);
  // e2_ has no Pipes record and attaching is off: passed over.
  EXPECT_EQ(Run("VELTOR_ADDVAL_OD2OD", {e1_, e2_, locked_}, {}), "Completed: 1\n");
  EXPECT_EQ(Records(e1_), (Strings{"Survey[S1|2.25|42]", "Survey[S2|9.0|43]",
                                   "Pipes[42|2.25|pipe|1.000000,2.000000,3.000000|S1]",
                                   "Pipes[2|0.5|pipe|1.000000,2.000000,3.000000|]"}));
  EXPECT_EQ(Records(e2_), Strings{"Survey[S3|3.5|44]"});

  // With attaching: e2_ gets a Pipes record of defaults filled from its Survey record.
  ui_.NextDialog()
      .Inspect([](const od::DialogModel& d) {
        EXPECT_EQ(d.SelectedItems(OdToOd::kSourceCombo), Strings{"Survey"});
        EXPECT_FALSE(d.Checked(OdToOd::kAttachMissing));
      })
      .Check(OdToOd::kAttachMissing, true)
      .Press(od::kIdOk);
  EXPECT_EQ(Run("VELTOR_ADDVAL_OD2OD", {e2_}, {}), "Completed: 1\n");
  EXPECT_EQ(Records(e2_), (Strings{"Survey[S3|3.5|44]",
                                   "Pipes[44|3.5|pipe|1.000000,2.000000,3.000000|]"}));
}

TEST_F(DataDialogCommandsTest, OdToOdRefusesTheSameTableAFieldTheSourceLacksAndNoPair) {
  Survey(e1_, "S1", 2.25, 42);
  Pipe(e1_, 1);
  ui_.NextDialog()
      .SelectItems(OdToOd::kSourceCombo, {"Pipes"})
      .SelectItems(OdToOd::kTargetCombo, {"Pipes"})
      .Press(od::kIdOk)
      .SelectItems(OdToOd::kSourceCombo, {"Survey"})
      .SetCell(OdToOd::kFieldGrid, "NAME", OdToOd::kSourceColumn, "NOPE")
      .Press(od::kIdOk)
      .SetCell(OdToOd::kFieldGrid, "NAME", OdToOd::kSourceColumn, "")
      .SetCell(OdToOd::kFieldGrid, "ID", OdToOd::kSourceColumn, "")
      .SetCell(OdToOd::kFieldGrid, "DIAM", OdToOd::kSourceColumn, "")
      .Press(od::kIdOk)
      .Press(od::kIdCancel);
  EXPECT_EQ(Run("VELTOR_ADDVAL_OD2OD", {e1_}, {}), "");
  EXPECT_EQ(ui_.refusals(), (Strings{"Target table: choose a table other than the source table.",
                                     "Fields: table Survey has no field \"NOPE\".",
                                     "Fields: type a source field in at least one row."}));
}

TEST_F(DataDialogCommandsTest, UndoRestoresTheSavedDrawingByteForByte) {
  Pipe(e1_, 1, "4");
  Survey(e1_, "S1", 2.25, 42);
  Survey(e2_, "S2", 3.5, 43);
  std::string before = Saved("before.dxf");
  ui_.NextDialog().Press(od::kIdOk);
  Run("VELTOR_ADEATTACHDATA", {e1_, e2_}, {});
  ExpectUndoRestores(before, "attach");
  ui_.NextDialog().Press(Attach::kDetach);
  Run("VELTOR_ADEATTACHDATA", {e1_, e2_}, {});
  ExpectUndoRestores(before, "detach");
  ui_.NextDialog()
      .SelectItems(AddDialog::kSourceCombo, {"LABEL"})
      .SelectItems(AddDialog::kTargetCombo, {"NAME"})
      .Select(AddDialog::kModeCombo, {1})
      .Press(od::kIdOk);
  Run("VELTOR_ADDVAL", {e1_}, {});
  ExpectUndoRestores(before, "add value");
  ui_.NextDialog()
      .SelectItems(OdToOd::kSourceCombo, {"Survey"})
      .SelectItems(OdToOd::kTargetCombo, {"Pipes"})
      .Check(OdToOd::kAttachMissing, true)
      .Press(od::kIdOk);
  Run("VELTOR_ADDVAL_OD2OD", {e1_, e2_}, {});
  ExpectUndoRestores(before, "OD to OD");
}

}  // namespace
}  // namespace veltor::commands
