// VELTOR_LOAD_DEFINITION in the embedded session: table definitions copied from a drawing on
// disk through a temporary drive alias and attachment, system tables skipped, existing tables
// kept, and the failure messages for a drawing that cannot be attached; no alias, attachment
// or entity is ever left behind.
#include "data_command_fixture.h"

#include "od/catalogue.h"

namespace veltor::commands {
namespace {

using od::Value;

class LoadDefinitionTest : public testing::DataCommandTest {
 protected:
  // Writes a drawing defining "Roads" (three columns), "Zones" and the system table
  // "TPMID_x", then takes those tables out of the active drawing again.
  void SetUp() override {
    Define("Roads", {Column("NAME", Value::Character("unnamed")), Column("LANES", Value::Integer(2)),
                     Column("WIDTH", Value::Real(7.5))});
    Define("Zones", {Column("CODE", Value::Character(""))});
    Define("TPMID_x", {Column("ID", Value::Integer(0))});
    source_ = dir_.File("source.dxf");
    (void)Saved("source.dxf");
    for (const char* table : {"Roads", "Zones", "TPMID_x"}) ASSERT_TRUE(container().DeleteTable(table).ok());
  }

  std::string Load(std::optional<std::string> path) {
    ui_.NextFile(std::move(path));
    return Run("VELTOR_LOAD_DEFINITION", {}, {});
  }

  void ExpectNothingLeftBehind() {
    od::Project& project = sdoc().project;
    EXPECT_TRUE(project.AttachedDrawings().empty());
    for (const od::DriveAlias& alias : project.DriveAliases()) EXPECT_NE(alias.name, "OBJECT_DATA");
    EXPECT_TRUE(db().ModelSpaceEntities().empty());
  }

  std::string source_;
};

TEST_F(LoadDefinitionTest, CopiesTheUserTablesDefinitionsAndLeavesNoAliasAttachmentOrPoint) {
  EXPECT_EQ(Load(source_), "Operation completed.\n");
  EXPECT_EQ(od::GetAllTableNames(container()), (std::vector<std::string>{"Roads", "Zones"}));
  Result<od::TableDefinition> roads = container().GetTable("Roads");
  ASSERT_TRUE(roads.ok());
  ASSERT_EQ(roads->columns.size(), 3u);
  EXPECT_EQ(roads->columns[1].name, "LANES");
  EXPECT_EQ(roads->columns[1].type, od::ValueType::kInteger);
  EXPECT_EQ(roads->columns[2].default_value, Value::Real(7.5));
  EXPECT_EQ(roads->columns[0].default_value, Value::Character("unnamed"));
  ExpectNothingLeftBehind();
  // The definitions are one undoable change.
  Answer({});
  ASSERT_TRUE(session_.Execute("U"));
  EXPECT_TRUE(od::GetAllTableNames(container()).empty());
}

TEST_F(LoadDefinitionTest, KeepsATableTheActiveDrawingAlreadyDefines) {
  Define("Roads", {Column("ID", Value::Integer(9))});
  EXPECT_EQ(Load(source_), "Operation completed.\n");
  Result<od::TableDefinition> roads = container().GetTable("Roads");
  ASSERT_TRUE(roads.ok());
  ASSERT_EQ(roads->columns.size(), 1u);
  EXPECT_EQ(roads->columns[0].name, "ID");
  EXPECT_TRUE(container().GetTable("Zones").ok());
  ExpectNothingLeftBehind();
}

TEST_F(LoadDefinitionTest, APathWithoutDriveOrRootFailsWithBothMessagesAndChangesNothing) {
  const std::string before = Saved("before.dxf");
  for (const std::string path : {"source.dxf", "\\\\server\\share\\source.dxf"}) {
    EXPECT_EQ(Load(path), "Error: unable to open '" + path +
                              "'.\nError. Operation unsuccessful.\nOperation completed.\n");
    ExpectNothingLeftBehind();
  }
  EXPECT_TRUE(od::GetAllTableNames(container()).empty());
  EXPECT_EQ(Saved("after.dxf"), before);
}

TEST_F(LoadDefinitionTest, ADrawingThatCannotBeReadFailsAndRemovesTheAlias) {
  const std::string broken = dir_.File("broken.dxf");
  { std::ofstream(broken) << "0\nSECTION\n2\nENTITIES\n0\nNOPE"; }
  EXPECT_EQ(Load(broken), "Error: unable to open '" + broken +
                              "'.\nError. Operation unsuccessful.\nOperation completed.\n");
  ExpectNothingLeftBehind();
  EXPECT_TRUE(od::GetAllTableNames(container()).empty());
}

TEST_F(LoadDefinitionTest, CancellingTheFileDialogEndsSilently) {
  EXPECT_EQ(Load(std::nullopt), "");
  EXPECT_TRUE(od::GetAllTableNames(container()).empty());
}

}  // namespace
}  // namespace veltor::commands
