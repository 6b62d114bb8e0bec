#include "od/dialog_model.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltor::od {
namespace {

Control IntegerEdit(std::optional<double> minimum, std::optional<double> maximum) {
  Control edit;
  edit.kind = ControlKind::kEditBox;
  edit.label = "Precision:";
  edit.edit_type = EditType::kInteger;
  edit.minimum = minimum;
  edit.maximum = maximum;
  return edit;
}

// --- edit box rules ---------------------------------------------------------------------------

TEST(CheckEditText, IntegerMustBeWholeAndWithinBounds) {
  Control edit = IntegerEdit(0, 8);
  EXPECT_TRUE(CheckEditText(edit, "0").ok());
  EXPECT_TRUE(CheckEditText(edit, " 8 ").ok());
  EXPECT_TRUE(CheckEditText(edit, "+3").ok());
  EXPECT_FALSE(CheckEditText(edit, "9").ok());
  EXPECT_FALSE(CheckEditText(edit, "-1").ok());
  EXPECT_FALSE(CheckEditText(edit, "5x").ok());  // no leading-number reading here
  EXPECT_FALSE(CheckEditText(edit, "2.5").ok());
  EXPECT_FALSE(CheckEditText(edit, "").ok());
  EXPECT_FALSE(CheckEditText(IntegerEdit({}, {}), "99999999999").ok());  // beyond 32 bits
  EXPECT_EQ(CheckEditText(edit, "9").message(), "Precision: requires an integer from 0 to 8");
}

TEST(CheckEditText, RealReadsOneFiniteNumber) {
  Control edit = IntegerEdit(0, {});
  edit.edit_type = EditType::kReal;
  edit.label = "Tolerance";
  EXPECT_TRUE(CheckEditText(edit, "0.5").ok());
  EXPECT_TRUE(CheckEditText(edit, "1e3").ok());
  EXPECT_FALSE(CheckEditText(edit, "-0.1").ok());
  EXPECT_FALSE(CheckEditText(edit, "1,5").ok());  // "." is the only decimal separator
  EXPECT_FALSE(CheckEditText(edit, "nan").ok());
  EXPECT_FALSE(CheckEditText(edit, "inf").ok());
  EXPECT_EQ(CheckEditText(edit, "x").message(), "Tolerance: requires a number of at least 0");
}

TEST(CheckEditText, TextEditsTakeAnything) {
  Control edit = IntegerEdit(0, 8);
  edit.edit_type = EditType::kText;
  EXPECT_TRUE(CheckEditText(edit, "anything at all").ok());
  EXPECT_EQ(EditRule(edit), "");
}

// --- typed access --------------------------------------------------------------------------------

class Model : public DialogModel {
 public:
  Model() : DialogModel("Title", {100, 50}) {
    AddComboBox(1, "Combo").items = {"a", "b", "c"};
    AddListBox(2, "Single", ListMode::kSingle).items = {"a", "b", "c"};
    AddListBox(3, "Multiple", ListMode::kMultiple).items = {"a", "b", "c"};
    AddGrid(4, "Grid", {"Field", "Value"}, {false, true});
  }
};

TEST(DialogModel, ControlsKeepTheirAddressesAsMoreAreAdded) {
  Model model;
  Control& first = *model.Find(1);
  for (int id = 10; id < 200; ++id) model.AddStaticText(id, "x");
  EXPECT_EQ(&first, model.Find(1));
  EXPECT_EQ(model.controls().front().id, 1);
}

TEST(DialogModel, SelectionsAreSortedUniqueAndWithinTheItems) {
  Model model;
  model.SetSelectedIndices(3, {2, 0, 2, 7, -1});
  EXPECT_EQ(model.SelectedIndices(3), (std::vector<int>{0, 2}));
  EXPECT_EQ(model.SelectedItems(3), (std::vector<std::string>{"a", "c"}));
  model.SetSelectedIndices(2, {2, 1});  // single choice keeps one
  EXPECT_EQ(model.SelectedIndices(2), (std::vector<int>{1}));
  model.SetSelectedIndex(1, 2);
  EXPECT_EQ(model.SelectedIndex(1), 2);
  model.SetSelectedIndex(1, -1);
  EXPECT_EQ(model.SelectedIndex(1), -1);
  model.SetSelectedIndex(3, 1);
  model.SetItems(3, {"x"});  // new items drop the old selection
  EXPECT_TRUE(model.SelectedIndices(3).empty());
}

TEST(DialogModel, GridRowsFollowTheColumns) {
  Model model;
  model.SetRows(4, {{"NAME"}, {"LENGTH", "*", "extra"}});
  EXPECT_EQ(model.Rows(4), (GridRows{{"NAME", ""}, {"LENGTH", "*"}}));
  model.SetCell(4, 1, 1, ">10");
  model.SetCell(4, 5, 1, "ignored");
  EXPECT_EQ(model.Rows(4)[1][1], ">10");
}

TEST(DialogModel, UnknownIdsReadEmptyAndIgnoreWrites) {
  Model model;
  model.SetText(99, "x");
  model.SetChecked(99, true);
  EXPECT_EQ(model.Text(99), "");
  EXPECT_FALSE(model.Checked(99));
  EXPECT_TRUE(model.Items(99).empty());
  EXPECT_EQ(model.SelectedIndex(99), -1);
}

TEST(DialogModel, GridIsAnswerableOnlyWithRowsAndAnEditableColumn) {
  Model model;
  EXPECT_FALSE(model.Find(4)->Answerable());
  model.SetRows(4, {{"NAME", "*"}});
  EXPECT_TRUE(model.Find(4)->Answerable());
  model.SetEnabled(4, false);
  EXPECT_FALSE(model.Find(4)->Answerable());
}

// --- buttons -------------------------------------------------------------------------------------

class Refusing : public DialogModel {
 public:
  Refusing() : DialogModel("t", {}) {}
  Status OnOk() override {
    ++ok_calls;
    return accept ? Status::Ok() : Status::Error("Select at least one table");
  }
  bool accept = false;
  int ok_calls = 0;
};

TEST(DialogModel, PressRunsOnOkOnlyForOkAndKeepsTheDialogOpenOnRefusal) {
  Refusing dialog;
  PressOutcome refused = dialog.Press(kIdOk);
  EXPECT_FALSE(refused.closes);
  EXPECT_EQ(refused.refusal.message(), "Select at least one table");

  PressOutcome other = dialog.Press(102);  // not a closing button by default
  EXPECT_FALSE(other.closes);
  EXPECT_TRUE(other.refusal.ok());

  PressOutcome cancel = dialog.Press(kIdCancel);
  EXPECT_TRUE(cancel.closes);
  EXPECT_EQ(cancel.result, DialogResult::kCancel);
  EXPECT_EQ(dialog.ok_calls, 1);

  dialog.accept = true;
  PressOutcome ok = dialog.Press(kIdOk);
  EXPECT_TRUE(ok.closes);
  EXPECT_EQ(ok.result, DialogResult::kOk);
}

}  // namespace
}  // namespace veltor::od
