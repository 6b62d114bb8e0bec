// The Win32 dialog's handling of the user's gestures, against a model that records its hooks.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "arx/dialog_driver.h"
#include "od/dialog_model.h"

namespace veltor::arx {
namespace {

constexpr int kKeep = 10;
constexpr int kPrecision = 11;
constexpr int kName = 12;
constexpr int kTable = 13;
constexpr int kCells = 14;
constexpr int kApply = 20;

// Records every hook call in order; OnOk refuses while "Name" is empty.
class Recording : public od::DialogModel {
 public:
  Recording() : DialogModel("Recording", {}) {
    AddCheckBox(kKeep, "Keep");
    od::Control& precision = AddEditBox(kPrecision, "Precision", od::EditType::kInteger);
    precision.minimum = 0;
    precision.maximum = 8;
    precision.text = "2";
    AddEditBox(kName, "Name");
    AddComboBox(kTable, "Table").items = {"A", "B"};
    AddGrid(kCells, "Cells", {"Field", "Value"}, {false, true});
    SetRows(kCells, {{"F", "1"}});
    AddButton(kApply, "Apply");
    AddButton(od::kIdOk, "OK");
  }

  void OnChanged(int id) override { calls.push_back("changed " + std::to_string(id)); }
  std::optional<od::DialogResult> OnButton(int id) override {
    calls.push_back("button " + std::to_string(id));
    if (id == kApply) return std::nullopt;
    return DialogModel::OnButton(id);
  }
  Status OnOk() override {
    calls.push_back("ok name=" + Text(kName) + " precision=" + Text(kPrecision));
    if (Text(kName).empty()) return Status::Error("Name: required");
    return Status::Ok();
  }

  std::vector<std::string> calls;
};

using Calls = std::vector<std::string>;

TEST(DialogDriver, ChangesReachTheModelAndOnChangedOnlyWhenSomethingChanged) {
  Recording model;
  DialogDriver driver(model);
  driver.Check(kKeep, true);
  driver.Check(kKeep, true);  // no change: no OnChanged
  driver.Select(kTable, {1});
  driver.Select(kTable, {1});
  driver.EditCell(kCells, 0, 1, "2");
  driver.EditCell(kCells, 0, 1, "2");
  driver.Check(99, true);  // an unknown control: nothing
  EXPECT_TRUE(model.Checked(kKeep));
  EXPECT_EQ(model.SelectedIndex(kTable), 1);
  EXPECT_EQ(model.Rows(kCells)[0][1], "2");
  EXPECT_EQ(model.calls, (Calls{"changed 10", "changed 13", "changed 14"}));
}

TEST(DialogDriver, EditTextIsCheckedTrimmedForNumbersAndTakenOnlyWhenItFits) {
  Recording model;
  DialogDriver driver(model);
  EXPECT_EQ(driver.CommitEdit(kPrecision, "9"), "Precision: requires an integer from 0 to 8.");
  EXPECT_EQ(model.Text(kPrecision), "2");
  EXPECT_EQ(driver.CommitEdit(kPrecision, "x"), "Precision: requires an integer from 0 to 8.");
  EXPECT_TRUE(model.calls.empty());
  EXPECT_EQ(driver.CommitEdit(kPrecision, " 5 "), "");
  EXPECT_EQ(model.Text(kPrecision), "5");
  EXPECT_EQ(driver.CommitEdit(kPrecision, "5"), "");  // unchanged: no second OnChanged
  EXPECT_EQ(driver.CommitEdit(kName, " spaced "), "");
  EXPECT_EQ(model.Text(kName), " spaced ") << "text edits keep their blanks";
  EXPECT_EQ(model.calls, (Calls{"changed 11", "changed 12"}));
}

TEST(DialogDriver, HiddenOrDisabledEditsAreNotTaken) {
  Recording model;
  DialogDriver driver(model);
  model.SetEnabled(kPrecision, false);
  EXPECT_EQ(driver.CommitEdit(kPrecision, "99"), "");
  model.SetEnabled(kPrecision, true);
  model.SetVisible(kPrecision, false);
  EXPECT_EQ(driver.CommitEdit(kPrecision, "7"), "");
  EXPECT_EQ(model.Text(kPrecision), "2");
  EXPECT_TRUE(model.calls.empty());
}

TEST(DialogDriver, PressTakesTheEditsFirstThenRunsOnButtonAndOnOk) {
  Recording model;
  DialogDriver driver(model);
  std::map<int, std::string> shown = {{kPrecision, "3"}, {kName, ""}};
  auto text = [&](int id) { return shown[id]; };

  PressResult refused = driver.Press(od::kIdOk, text);
  EXPECT_FALSE(refused.closes);
  EXPECT_EQ(refused.refusal, "Name: required");
  EXPECT_EQ(refused.refused_edit, 0);

  shown[kName] = "Main";
  PressResult applied = driver.Press(kApply, text);
  EXPECT_FALSE(applied.closes);
  EXPECT_TRUE(applied.refusal.empty());

  PressResult accepted = driver.Press(od::kIdOk, text);
  EXPECT_TRUE(accepted.closes);
  EXPECT_EQ(accepted.result, od::DialogResult::kOk);
  EXPECT_EQ(model.calls, (Calls{"changed 11", "button 1", "ok name= precision=3", "changed 12",
                                "button 20", "button 1", "ok name=Main precision=3"}));
}

TEST(DialogDriver, ARefusedEditStopsThePressBeforeTheModelSeesIt) {
  Recording model;
  DialogDriver driver(model);
  PressResult outcome = driver.Press(od::kIdOk, [](int id) { return id == kPrecision ? "12" : "x"; });
  EXPECT_FALSE(outcome.closes);
  EXPECT_EQ(outcome.refused_edit, kPrecision);
  EXPECT_EQ(outcome.refusal, "Precision: requires an integer from 0 to 8.");
  EXPECT_TRUE(model.calls.empty());
}

TEST(DialogDriver, CancelClosesWithoutPressingOrTakingAnything) {
  Recording model;
  DialogDriver driver(model);
  PressResult outcome = driver.Press(od::kIdCancel, [](int) { return std::string("7"); });
  EXPECT_TRUE(outcome.closes);
  EXPECT_EQ(outcome.result, od::DialogResult::kCancel);
  EXPECT_TRUE(model.calls.empty());
  EXPECT_EQ(model.Text(kPrecision), "2");
}

}  // namespace
}  // namespace veltor::arx
