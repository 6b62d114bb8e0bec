#include "ui/text_box_dialog.h"

#include <gtest/gtest.h>

namespace veltor::ui {
namespace {

TEST(TextBoxDialog, HoldsTitleSizeAndOneReadOnlyText) {
  TextBoxDialog dialog("Object Data statistics.", 350, 400);
  EXPECT_EQ(dialog.title(), "Object Data statistics.");
  EXPECT_EQ(dialog.size().width, 350);
  EXPECT_EQ(dialog.size().height, 400);
  const od::Control* text = dialog.Find(TextBoxDialog::kTextId);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->kind, od::ControlKind::kTextBox);
  EXPECT_FALSE(text->Answerable());
  int answerable = 0;
  for (const od::Control& control : dialog.controls()) answerable += control.Answerable();
  EXPECT_EQ(answerable, 0);
}

TEST(TextBoxDialog, EveryLineFeedGetsACarriageReturn) {
  TextBoxDialog dialog("t", 1, 1);
  dialog.SetText("Entities: 3\n\nTables: 2\nend");
  EXPECT_EQ(dialog.text(), "Entities: 3\r\n\r\nTables: 2\r\nend");
  dialog.SetText("a\r\nb");  // each line feed, even one that already has its return
  EXPECT_EQ(dialog.text(), "a\r\r\nb");
  dialog.SetText("");
  EXPECT_EQ(dialog.text(), "");
}

TEST(TextBoxDialog, OkClosesWithOk) {
  TextBoxDialog dialog("t", 1, 1);
  od::PressOutcome outcome = dialog.Press(od::kIdOk);
  EXPECT_TRUE(outcome.closes);
  EXPECT_EQ(outcome.result, od::DialogResult::kOk);
}

}  // namespace
}  // namespace veltor::ui
