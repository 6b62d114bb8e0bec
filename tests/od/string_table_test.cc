// The string table: the messages commands print and the texts dialogs show, by id.
#include "od/string_table.h"

#include <gtest/gtest.h>

#include <string>

namespace veltor::od {
namespace {

TEST(StringTable, HoldsTheMessagesCommandsPrint) {
  EXPECT_STREQ(Str(kStrSelected), "Selected: %i\n");
  EXPECT_STREQ(Str(kStrCompletedOutOf), "Completed: %i out of %i\n");
  EXPECT_STREQ(Str(kStrDetachAllWarning), "This will detach ALL tables from selected objects. Continue?\n");
  EXPECT_STREQ(Str(999), "");
  for (int i = 1; i < StringCount(); ++i) {
    EXPECT_LT(StringIdAt(i - 1), StringIdAt(i));
    EXPECT_GE(StringIdAt(i), 100);
    EXPECT_LE(StringIdAt(i), 180);
  }
}

TEST(StringTable, ShellMessagesAndDialogTextsHaveTheirOwnRanges) {
  EXPECT_STREQ(Str(kStrField), "Field");
  EXPECT_STREQ(Str(kStrValue), "Value");
  EXPECT_STREQ(Str(kStrValueQueryTitle), "Find entities with specific OD values");
  EXPECT_STREQ(Str(kStrSelectAllNothing), "Select all/nothing");
  ASSERT_GT(DialogStringCount(), 0);
  for (int i = 0; i < DialogStringCount(); ++i) {
    int id = DialogStringIdAt(i);
    EXPECT_GE(id, kFirstShellStringId);
    if (i > 0) {
      EXPECT_LT(DialogStringIdAt(i - 1), id);
    }
    EXPECT_NE(std::string(Str(id)), "") << id;
  }
}

}  // namespace
}  // namespace veltor::od
