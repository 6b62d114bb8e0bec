// The table catalogue: system tables, per-entity table names, the table-name set and its
// scan limit, shared columns.
#include "od/catalogue.h"

#include "session_fixture.h"

namespace veltor::od {
namespace {

using testing::SessionFixture;

TEST(SystemTables, PrefixesAreCaseSensitiveAndAnchored) {
  for (const char* name : {"TPMCNTR_a", "TPMDESC_", "TPMID_x", "TPMLINK_1", "TPMNODE_1", "CNTR_A"})
    EXPECT_TRUE(IsSystemTableName(name)) << name;
  for (const char* name : {"CNTR", "tpmid_x", "XTPMID_", "TPMID", "Cntr_A", ""})
    EXPECT_FALSE(IsSystemTableName(name)) << name;
}

class CatalogueTest : public SessionFixture {};

TEST_F(CatalogueTest, EntityTableNamesSkipSystemTablesAndKeepRepeats) {
  Table("Roads", {"ID"});
  Table("TPMNODE_1", {"ID"});
  EntityId e = AddPoint();
  Attach(e, "Roads");
  Attach(e, "TPMNODE_1");
  Attach(e, "Roads");
  EXPECT_EQ(GetEntityTableNames(container(), e), (std::vector<std::string>{"Roads", "Roads"}));
  EXPECT_TRUE(GetEntityTableNames(container(), AddPoint()).empty());
  EXPECT_TRUE(GetEntityTableNames(container(), 0xFFFFFF).empty());
}

TEST_F(CatalogueTest, TableNamesAreOrderedByCodeUnitAndListedOnce) {
  Table("a", {"x"});
  Table("B", {"x"});
  Table("TPMID_1", {"x"});
  EntityId e1 = AddPoint(), e2 = AddPoint();
  Attach(e1, "a");
  Attach(e2, "B");
  Attach(e2, "a");
  Attach(e2, "TPMID_1");
  TableNameSet with_system = GetTableNames(session_, {e1, e2}, false);
  EXPECT_EQ(std::vector<std::string>(with_system.begin(), with_system.end()),
            (std::vector<std::string>{"B", "TPMID_1", "a"}));
  TableNameSet user = GetTableNames(session_, {e1, e2}, true);
  EXPECT_EQ(std::vector<std::string>(user.begin(), user.end()), (std::vector<std::string>{"B", "a"}));
}

TEST_F(CatalogueTest, EmptyListScansUsableModelSpace) {
  Table("Used", {"x"});
  Table("OnLockedLayer", {"x"});
  Table("Unused", {"x"});
  Attach(AddPoint(), "Used");
  EntityId locked = AddPoint("LOCKED");
  Attach(locked, "OnLockedLayer");
  model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  TableNameSet names = GetTableNames(session_, {}, true);
  EXPECT_EQ(std::vector<std::string>(names.begin(), names.end()), (std::vector<std::string>{"Used"}));
}

// Above 32768 usable entities every defined table is listed, used or not; at 100 only the
// used ones are.
TEST_F(CatalogueTest, LargeDrawingsListEveryDefinedTable) {
  Table("Used", {"x"});
  Table("Unused", {"x"});
  Attach(AddPoint(), "Used");
  for (int i = 0; i < 99; ++i) AddPoint();
  TableNameSet small = GetTableNames(session_, {}, true);
  EXPECT_EQ(small.count("Unused"), 0u);
  for (int i = 0; i < 40000 - 100; ++i) AddPoint();
  TableNameSet large = GetTableNames(session_, {}, true);
  EXPECT_EQ(std::vector<std::string>(large.begin(), large.end()),
            (std::vector<std::string>{"Unused", "Used"}));
}

TEST_F(CatalogueTest, ScanLimitCountsUsableEntitiesOnly) {
  Table("Used", {"x"});
  Table("Unused", {"x"});
  Attach(AddPoint(), "Used");
  for (size_t i = 0; i < kTableScanLimit; ++i) AddPoint("OFF");
  model::SetLayerOff(doc(), model::FindLayer(doc(), "OFF"), true);
  // 32769 entities, but only one on a usable layer: the drawing is scanned.
  EXPECT_EQ(GetTableNames(session_, {}, true).count("Unused"), 0u);
}

TEST_F(CatalogueTest, SharedColumnsKeepTheFirstTablesOrder) {
  Table("A", {"ID", "NAME", "TYPE"});
  Table("B", {"TYPE", "ID"});
  EXPECT_EQ(GetSharedColumns(container(), {"A", "B"}), (std::vector<std::string>{"ID", "TYPE"}));
  EXPECT_EQ(GetSharedColumns(container(), {"B", "A"}), (std::vector<std::string>{"TYPE", "ID"}));
  EXPECT_TRUE(GetSharedColumns(container(), {}).empty());
  EXPECT_TRUE(GetSharedColumns(container(), {"A", "Missing"}).empty());
  Result<TableDefinition> a = container().GetTable("A");
  ASSERT_TRUE(a.ok());
  EXPECT_EQ(FindColumn(*a, "TYPE"), 2);
  EXPECT_LT(FindColumn(*a, "type"), 0);
}

TEST_F(CatalogueTest, DrawingsWithoutObjectDataGiveEmptyLists) {
  session_.AddDocument(model::Document::NewBlank("AC1009"), "r12.dxf");
  EXPECT_FALSE(session_.ActiveProject().ok());
  AddPoint();
  EXPECT_TRUE(GetTableNames(session_, {}, false).empty());
}

}  // namespace
}  // namespace veltor::od
