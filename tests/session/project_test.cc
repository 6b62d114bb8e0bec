// The project: drive aliases, attached drawings lending their table definitions, and
// feature classification.
#include "../drawing/dxf/test_files.h"
#include "drawing/objectdata/od_store.h"
#include "session_fixture.h"

namespace veltor::session {
namespace {

struct ChangeListenerStub : ChangeListener {
  void Appended(od::ObjectId) override {}
  void Modified(od::ObjectId) override {}
  void Erased(od::ObjectId, bool) override {}
};

class ProjectTest : public testing::SessionFixture {
 protected:
  EmbeddedProject& project() { return sdoc().project; }
  // A drawing on disk defining "Pipes" and the system table "TPMID_1".
  std::string SourceDrawing() {
    auto other = model::Document::NewBlank("AC1027");
    objectdata::ObjectDataStore store(*other);
    od::TableDefinition pipes;
    pipes.name = "Pipes";
    pipes.columns = {{"DN", od::ValueType::kInteger, "diameter",
                      od::Value::Integer(150)}};
    EXPECT_TRUE(store.CreateTable(pipes).ok());
    od::TableDefinition system = pipes;
    system.name = "TPMID_1";
    EXPECT_TRUE(store.CreateTable(system).ok());
    std::string path = dir_.File("source.dxf");
    EXPECT_TRUE(other->Save(path).ok());
    return path;
  }
  testing::ScratchDir dir_;
};

TEST_F(ProjectTest, AliasPathIsTheDriveTheRootOrNothing) {
  EXPECT_EQ(project().AliasPathOf("D:\\maps\\city.dwg"), "D:");
  EXPECT_EQ(project().AliasPathOf("/home/me/city.dxf"), "/");
  EXPECT_EQ(project().AliasPathOf("\\\\server\\share\\city.dwg"), "");
  EXPECT_EQ(project().AliasPathOf("relative/city.dxf"), "");
}

TEST_F(ProjectTest, AttachingNeedsAnAliasThatReachesThePath) {
  std::string path = SourceDrawing();
  EXPECT_FALSE(project().AttachDrawing(path).ok());
  ASSERT_TRUE(project().AddDriveAlias("OBJECT_DATA", "/").ok());
  EXPECT_FALSE(project().AttachDrawing(dir_.File("missing.dxf")).ok());
  Result<int> id = project().AttachDrawing(path);
  ASSERT_TRUE(id.ok()) << id.message();
  auto names = project().AttachedTableNames(*id);
  ASSERT_TRUE(names.ok());
  EXPECT_EQ(*names, (std::vector<std::string>{"Pipes", "TPMID_1"}));
  EXPECT_TRUE(project().DetachDrawing(*id).ok());
  EXPECT_TRUE(project().RemoveDriveAlias("object_data").ok());
  EXPECT_TRUE(project().AttachedDrawings().empty());
  EXPECT_TRUE(project().DriveAliases().empty());
}

TEST_F(ProjectTest, ARecordOfAnAttachedTableCopiesItsDefinition) {
  std::string path = SourceDrawing();
  ASSERT_TRUE(project().AddDriveAlias("OBJECT_DATA", "/").ok());
  int id = *project().AttachDrawing(path);
  EXPECT_FALSE(container().GetTable("Pipes").ok());  // not yet activated
  ASSERT_TRUE(project().ActivateDrawing(id).ok());
  Result<od::Record> record = container().NewRecord("Pipes");
  ASSERT_TRUE(record.ok()) << record.message();
  EXPECT_EQ(record->values[0], od::Value::Integer(150));
  EXPECT_TRUE(container().TableNames().empty());

  od::EntityId point = AddPoint();
  ASSERT_TRUE(container().AddRecord(point, *record).ok());
  ASSERT_TRUE(db().Erase(point).ok());
  ASSERT_TRUE(project().DetachDrawing(id).ok());
  EXPECT_EQ(container().TableNames(), (std::vector<std::string>{"Pipes"}));
  Result<od::TableDefinition> copied = container().GetTable("Pipes");
  ASSERT_TRUE(copied.ok());
  EXPECT_EQ(copied->columns[0].name, "DN");
  EXPECT_EQ(copied->columns[0].description, "diameter");
  EXPECT_EQ(copied->columns[0].default_value, od::Value::Integer(150));
}

TEST_F(ProjectTest, ClassificationIsKeptInTheDrawing) {
  od::EntityId point = AddPoint();
  EXPECT_TRUE(project().ClassificationTags(point).empty());
  ASSERT_TRUE(project().Classify(point, "Hydrant").ok());
  ASSERT_TRUE(project().Classify(point, "Valve").ok());
  EXPECT_EQ(project().ClassificationTags(point), (std::vector<std::string>{"Valve"}));
  std::string path = dir_.File("classified.dxf");
  ASSERT_TRUE(doc().Save(path).ok());
  auto reopened = model::Document::Open(path);
  ASSERT_TRUE(reopened.ok());
  ChangeListenerStub listener;
  EmbeddedProject again(**reopened, listener);
  EXPECT_EQ(again.ClassificationTags(point), (std::vector<std::string>{"Valve"}));
  EXPECT_FALSE(project().Classify(0xFFFFFF, "Valve").ok());
}

}  // namespace
}  // namespace veltor::session
