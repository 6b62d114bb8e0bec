// The scripted user interface fails a test that scripts a dialog wrongly, so command tests
// cannot pass by answering controls that are not there.
#include "scripted_ui.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace veltor::testing {
namespace {

class TwoControls : public od::DialogModel {
 public:
  TwoControls() : DialogModel("Two", {100, 100}) {
    AddEditBox(10, "Name");
    AddCheckBox(11, "Hidden").visible = false;
    AddButton(od::kIdOk, "OK");
    AddButton(od::kIdCancel, "Cancel");
  }
  Status OnOk() override {
    if (Text(10).empty()) return Status::Error("Name: required");
    return Status::Ok();
  }
};

TEST(ScriptedUi, AppliesStepsByIdAndKeepsRefusals) {
  ScriptedUi ui;
  TwoControls dialog;
  ui.NextDialog().Press(od::kIdOk).SetText(10, "x").Press(od::kIdOk);
  EXPECT_EQ(ui.ShowModal(dialog), od::DialogResult::kOk);
  EXPECT_EQ(dialog.Text(10), "x");
  EXPECT_EQ(ui.refusals(), std::vector<std::string>{"Name: required"});
  ASSERT_EQ(ui.opened().size(), 1u);
  EXPECT_EQ(ui.opened()[0].Find(10).text, "");  // as it opened
  EXPECT_EQ(ui.pending(), 0u);
}

TEST(ScriptedUi, WrongScriptsFailTheTest) {
  ScriptedUi ui;
  TwoControls dialog;
  EXPECT_NONFATAL_FAILURE(
      {
        ui.NextDialog().Check(11, true).Press(od::kIdCancel);
        (void)ui.ShowModal(dialog);
      },
      "cannot be changed");
  EXPECT_NONFATAL_FAILURE((void)ui.ShowModal(dialog), "without a script");
  EXPECT_NONFATAL_FAILURE(
      {
        ui.NextDialog().SetText(10, "x");
        (void)ui.ShowModal(dialog);
      },
      "left \"Two\" open");
  EXPECT_NONFATAL_FAILURE(
      {
        ui.NextDialog().Press(99).Press(od::kIdCancel);
        (void)ui.ShowModal(dialog);
      },
      "no button 99");
  EXPECT_NONFATAL_FAILURE((void)ui.MessageBox("T", "text", od::MessageButtons::kOk),
                          "without an answer");
}

}  // namespace
}  // namespace veltor::testing
