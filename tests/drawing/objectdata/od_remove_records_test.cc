// Removing several records of an entity at once leaves what removing them one by one leaves,
// and refuses, changing nothing, an index without a record.
#include <gtest/gtest.h>

#include "../model/saved_drawing.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/objectdata/od_format.h"
#include "drawing/objectdata/od_store.h"

namespace veltor::objectdata {
namespace {

using model::Document;
using model::RecordId;

class RemoveRecordsTest : public ::testing::Test {
 protected:
  // Two drawings built alike: entity e holds A "a1", B "b", A "a2", A "a3".
  void SetUp() override {
    for (auto* doc : {&one_, &other_}) {
      *doc = Document::NewBlank("AC1032");
      e_ = model::AddModelSpaceEntity(**doc, "POINT", "0", {{100, "AcDbPoint"}, {10, "0"}, {20, "0"}, {30, "0"}});
      ObjectDataStore store(**doc);
      for (const char* name : {"A", "B"}) {
        od::TableDefinition def;
        def.name = name;
        def.columns = {{"TAG", od::ValueType::kCharacter, "", od::Value::Character("")}};
        ASSERT_TRUE(store.CreateTable(def).ok());
      }
      for (auto [table, tag] : {std::pair{"A", "a1"}, {"B", "b"}, {"A", "a2"}, {"A", "a3"}})
        ASSERT_TRUE(store.AddRecord(e_, {table, {od::Value::Character(tag)}}).ok());
    }
  }

  std::vector<std::string> Tags(Document& doc) {
    std::vector<std::string> tags;
    for (const od::Record& r : ObjectDataStore(doc).Records(e_)) tags.push_back(r.values[0].text());
    return tags;
  }

  std::string Saved(Document& doc, const std::string& name) {
    EXPECT_TRUE(doc.Save(dir_.File(name)).ok());
    return testing::ReadBytes(dir_.File(name));
  }

  std::unique_ptr<Document> one_, other_;
  RecordId e_ = model::kNoRecord;
  testing::ScratchDir dir_;
};

TEST_F(RemoveRecordsTest, SomeAtOnceAsOneByOne) {
  ASSERT_TRUE(ObjectDataStore(*one_).RemoveRecords(e_, {3, 0, 3}).ok());
  ObjectDataStore other(*other_);
  ASSERT_TRUE(other.RemoveRecord(e_, 3).ok());
  ASSERT_TRUE(other.RemoveRecord(e_, 0).ok());
  EXPECT_EQ(Tags(*one_), (std::vector<std::string>{"b", "a2"}));
  EXPECT_EQ(Saved(*one_, "one.dxf"), Saved(*other_, "other.dxf"));
}

TEST_F(RemoveRecordsTest, AllAtOnceAsOneByOne) {
  ASSERT_TRUE(ObjectDataStore(*one_).RemoveRecords(e_, {0, 1, 2, 3}).ok());
  ObjectDataStore other(*other_);
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(other.RemoveRecord(e_, 0).ok());
  EXPECT_TRUE(Tags(*one_).empty());
  EXPECT_EQ(model::DictionaryLookup(*one_, model::ExtensionDictionary(*one_, e_), kRecordsKey),
            model::kNoRecord);
  EXPECT_EQ(Saved(*one_, "one.dxf"), Saved(*other_, "other.dxf"));
}

TEST_F(RemoveRecordsTest, AnIndexWithoutARecordChangesNothing) {
  // Four indexes, as many as records, but not all of them: not the "remove all" case.
  EXPECT_FALSE(ObjectDataStore(*one_).RemoveRecords(e_, {0, 1, 2, 4}).ok());
  EXPECT_FALSE(ObjectDataStore(*one_).RemoveRecords(e_, {7}).ok());
  EXPECT_TRUE(ObjectDataStore(*one_).RemoveRecords(e_, {}).ok());
  EXPECT_EQ(Tags(*one_), (std::vector<std::string>{"a1", "b", "a2", "a3"}));
}

}  // namespace
}  // namespace veltor::objectdata
