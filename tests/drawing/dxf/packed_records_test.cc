// Changed records are packed into the store's arena once they are no longer being edited:
// what they read back, what is written and what undo restores must not depend on whether a
// record is packed or still holds its tags.
#include <gtest/gtest.h>

#include "drawing/dxf/reader.h"
#include "test_files.h"

namespace veltor::dxf {
namespace {

using testing::WriteToString;

// `n` LINE records with handles 1 to n, on layer "0".
std::string Lines(int n, bool crlf) {
  const char* nl = crlf ? "\r\n" : "\n";
  std::string text = std::string("  0") + nl + "SECTION" + nl + "  2" + nl + "ENTITIES" + nl;
  for (int i = 1; i <= n; ++i)
    text += std::string("  0") + nl + "LINE" + nl + "  5" + nl + FormatHandle(i) + nl + "  8" +
            nl + "0" + nl;
  return text + "  0" + nl + "ENDSEC" + nl + "  0" + nl + "EOF" + nl;
}

std::unique_ptr<RecordStore> Read(const std::string& text) {
  auto read = ParseDxf(text, "mem.dxf");
  EXPECT_TRUE(read.ok()) << read.message();
  return std::move(read->store);
}

// Moves every LINE of `store` to layer "L<handle>" in one undo group.
void MoveEveryLine(RecordStore& store, int n) {
  store.BeginUndoGroup();
  for (int i = 1; i <= n; ++i) {
    Tags& tags = store.MutableTags(store.FindHandle(i));
    tags[2].value = "L" + FormatHandle(i);
  }
  store.EndUndoGroup();
}

TEST(PackedRecords, ManyChangesReadWriteUndoAndRedoAlike) {
  const int n = 50;  // far more than are kept as tags while being edited
  for (bool crlf : {false, true}) {
    std::string original = Lines(n, crlf);
    auto store = Read(original);
    MoveEveryLine(*store, n);
    for (int i = 1; i <= n; ++i) {
      RecordId id = store->FindHandle(i);
      EXPECT_TRUE(store->IsChanged(id));
      EXPECT_EQ(store->TagsOf(id)[2].value, "L" + FormatHandle(i));
    }
    std::string changed = WriteToString(*store);
    auto reread = Read(changed);
    EXPECT_EQ(reread->TagsOf(reread->FindHandle(n)), store->TagsOf(store->FindHandle(n)));

    ASSERT_NE(store->Undo(), nullptr);
    EXPECT_EQ(WriteToString(*store), original);
    EXPECT_FALSE(store->IsChanged(store->FindHandle(1)));
    ASSERT_NE(store->Redo(), nullptr);
    EXPECT_EQ(WriteToString(*store), changed);
  }
}

TEST(PackedRecords, ChangingAChangedRecordAgainIsUndoneOneGroupAtATime) {
  std::string original = Lines(3, false);
  auto store = Read(original);
  MoveEveryLine(*store, 3);
  std::string first = WriteToString(*store);
  store->BeginUndoGroup();
  store->MutableTags(store->FindHandle(2))[2].value = "again";
  store->EndUndoGroup();
  EXPECT_EQ(store->TagsOf(store->FindHandle(2))[2].value, "again");
  ASSERT_NE(store->Undo(), nullptr);
  EXPECT_EQ(WriteToString(*store), first);
  ASSERT_NE(store->Undo(), nullptr);
  EXPECT_EQ(WriteToString(*store), original);
}

TEST(PackedRecords, InsertedRecordsEditedInTheirGroupUndoAndRedo) {
  std::string original = Lines(1, false);
  auto store = Read(original);
  store->BeginUndoGroup();
  RecordId id = store->InsertAfter(store->FindHandle(1), {{0, "POINT"}, {8, "0"}}, Section::kEntities);
  store->MutableTags(id).push_back({10, "1.5"});
  store->EndUndoGroup();
  std::string with_point = WriteToString(*store);
  EXPECT_NE(with_point.find("POINT\n  8\n0\n 10\n1.5\n"), std::string::npos) << with_point;
  ASSERT_NE(store->Undo(), nullptr);
  EXPECT_EQ(WriteToString(*store), original);
  ASSERT_NE(store->Redo(), nullptr);
  EXPECT_EQ(WriteToString(*store), with_point);
}

TEST(PackedRecords, ValueWithALineBreakKeepsItsTags) {
  // Packed as text it would read back as two tags; such a record keeps its tags.
  auto store = Read(Lines(20, false));
  store->BeginUndoGroup();
  store->MutableTags(store->FindHandle(1))[2].value = "two\nlines";
  store->EndUndoGroup();
  MoveEveryLine(*store, 20);  // the first record is no longer among those being edited
  EXPECT_EQ(store->TagsOf(store->FindHandle(1)).size(), 3u);
  ASSERT_NE(store->Undo(), nullptr);
  EXPECT_EQ(store->TagsOf(store->FindHandle(1))[2].value, "two\nlines");
}

}  // namespace
}  // namespace veltor::dxf
