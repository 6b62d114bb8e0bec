// The commands that copy Object Data from a reference entity, run in the embedded session:
// targets first, the reference picked after them, the counts each command prints, which
// commands skip the reference among the targets, system tables ignored, graphic properties
// copied by the two ALL variants, and undo taking every change back.
#include "data_command_fixture.h"

#include <algorithm>

#include "drawing/model/entity.h"

namespace veltor::commands {
namespace {

using od::Value;

class CopyCommandsTest : public testing::DataCommandTest {
 protected:
  void SetUp() override {
    Define("A", {Column("NAME", Value::Character("none")), Column("N", Value::Integer(5))});
    Define("B", {Column("X", Value::Real(1.5))});
    Define("C", {Column("NOTE", Value::Character(""))});
    Define("TPMNODE_1", {Column("ID", Value::Integer(0))});
    reference_ = AddPoint("0", 1, 1);
    AttachValues(reference_, "B", {Value::Real(9.25)});
    AttachValues(reference_, "A", {Value::Character("r1"), Value::Integer(1)});
    AttachValues(reference_, "TPMNODE_1", {Value::Integer(77)});
    AttachValues(reference_, "A", {Value::Character("r2"), Value::Integer(2)});
    bare_ = AddPoint("0", 2, 2);
    carrier_ = AddPoint("0", 3, 3);
    AttachValues(carrier_, "A", {Value::Character("old"), Value::Integer(0)});
    AttachValues(carrier_, "C", {Value::Character("keep")});
    AttachValues(carrier_, "A", {Value::Character("older"), Value::Integer(-1)});
    locked_ = AddPoint("LOCKED", 4, 4);
    model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  }

  std::string Pick(const std::string& command, od::EntityList targets, od::EntityId reference) {
    return Run(command, std::move(targets), {Handle(reference)});
  }
  std::string Completed(od::EntityId reference, int count) {
    return "Select reference object: " + Handle(reference) + "\nCompleted: " +
           std::to_string(count) + "\n";
  }

  // Gives an entity's common group codes values of its own (after its layer).
  void SetCommon(od::EntityId id, std::vector<std::pair<int, std::string>> codes) {
    model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), id));
    auto at = std::find_if(tags.begin(), tags.end(), [](const model::Tag& t) { return t.code == 8; });
    ASSERT_NE(at, tags.end());
    for (auto& [code, value] : codes) at = tags.insert(at + 1, model::Tag{code, value});
  }
  void SetLayerName(od::EntityId id, const std::string& layer) {
    for (model::Tag& t : doc().MutableTags(session::RecordOf(doc(), id)))
      if (t.code == 8) t.value = layer;
  }
  model::EntityProperties PropertiesOf(model::RecordId record) {
    return model::ReadProperties(doc(), record);
  }
  model::EntityProperties PropertiesOf(od::EntityId id) {
    return PropertiesOf(session::RecordOf(doc(), id));
  }

  const std::vector<std::string> kReferenceRecords = {"B[9.25]", "A[r1|1]", "TPMNODE_1[77]", "A[r2|2]"};
  od::EntityId reference_ = 0, bare_ = 0, carrier_ = 0, locked_ = 0;
};

TEST_F(CopyCommandsTest, CopyOdAttachesDefaultRecordsShapedLikeTheReferencesAndCountsTargets) {
  EXPECT_EQ(Pick("VELTOR_COPY_OD", {bare_, carrier_}, reference_), Completed(reference_, 2));
  // Two records of A and one of B, tables in name order, default values; no system table.
  EXPECT_EQ(Records(bare_), (std::vector<std::string>{"A[none|5]", "A[none|5]", "B[1.5]"}));
  EXPECT_EQ(Records(carrier_), (std::vector<std::string>{"A[old|0]", "C[keep]", "A[older|-1]",
                                                         "A[none|5]", "A[none|5]", "B[1.5]"}));
  EXPECT_EQ(Records(reference_), kReferenceRecords);
}

TEST_F(CopyCommandsTest, CopyOdGivesTheReferenceAmongTheTargetsASecondSetOfDefaults) {
  EXPECT_EQ(Pick("VELTOR_COPY_OD", {reference_, bare_}, reference_), Completed(reference_, 2));
  std::vector<std::string> expected = kReferenceRecords;
  for (const char* added : {"A[none|5]", "A[none|5]", "B[1.5]"}) expected.push_back(added);
  EXPECT_EQ(Records(reference_), expected);
}

TEST_F(CopyCommandsTest, CopyValueOverwritesExistingRecordsOnlyAndSkipsTheReference) {
  // carrier_ has two records of A: both take the reference's first A; C is not the
  // reference's table and B is not added. The count is of records overwritten.
  EXPECT_EQ(Pick("VELTOR_COPY_VALUE", {reference_, carrier_, bare_}, reference_),
            Completed(reference_, 2));
  EXPECT_EQ(Records(carrier_), (std::vector<std::string>{"A[r1|1]", "C[keep]", "A[r1|1]"}));
  EXPECT_TRUE(Records(bare_).empty());
  EXPECT_EQ(Records(reference_), kReferenceRecords);
  // A target without any of the reference's tables adds nothing to the count.
  EXPECT_EQ(Pick("VELTOR_COPY_VALUE", {bare_}, reference_), Completed(reference_, 0));
}

TEST_F(CopyCommandsTest, CopyOdValueAttachesCopiesInHostOrderAndSkipsTheReference) {
  EXPECT_EQ(Pick("VELTOR_COPY_OD_VALUE", {bare_, reference_}, reference_), Completed(reference_, 2));
  EXPECT_EQ(Records(bare_), (std::vector<std::string>{"B[9.25]", "A[r1|1]", "A[r2|2]"}));
  EXPECT_EQ(Records(reference_), kReferenceRecords);
  // Records already there stay: a second run attaches a second set.
  EXPECT_EQ(Pick("VELTOR_COPY_OD_VALUE", {bare_}, reference_), Completed(reference_, 1));
  EXPECT_EQ(Records(bare_).size(), 6u);
  // The count is the number of targets even when the reference has nothing to copy.
  od::EntityId empty = AddPoint("0", 9, 9);
  EXPECT_EQ(Pick("VELTOR_COPY_OD_VALUE", {bare_, carrier_}, empty), Completed(empty, 2));
  EXPECT_EQ(Records(bare_).size(), 6u);
}

TEST_F(CopyCommandsTest, CopyAllValueAttachesTheReferencesRecordsGroupedByTableWithProperties) {
  SetCommon(reference_, {{62, "1"}});
  EXPECT_EQ(Pick("VELTOR_COPY_ALL_VALUE", {bare_, reference_}, reference_), Completed(reference_, 2));
  // Grouped by table name: A before B, whatever the reference's own order.
  EXPECT_EQ(Records(bare_), (std::vector<std::string>{"A[r1|1]", "A[r2|2]", "B[9.25]"}));
  std::vector<std::string> expected = kReferenceRecords;
  for (const char* added : {"A[r1|1]", "A[r2|2]", "B[9.25]"}) expected.push_back(added);
  EXPECT_EQ(Records(reference_), expected);
  EXPECT_EQ(PropertiesOf(bare_).color, 1);
}

TEST_F(CopyCommandsTest, CopyAllGivesTargetsAndTheirSubEntitiesTheFiveGraphicPropertiesOnly) {
  model::AddLayer(doc(), "REF");
  SetCommon(reference_, {{62, "1"}, {420, "16711680"}, {6, "DASHED"}, {48, "2.5"}, {370, "35"},
                         {440, "33554534"}});
  SetLayerName(reference_, "REF");
  ASSERT_EQ(PropertiesOf(reference_).layer, "REF");
  model::RecordId pline = model::AddPolyline3d(doc(), "0", {{0, 0, 0}, {5, 5, 0}}, false);
  od::EntityId target = session::IdOf(doc(), pline);
  SetCommon(target, {{62, "3"}, {440, "33554500"}});

  EXPECT_EQ(Pick("VELTOR_COPY_ALL", {target, bare_}, reference_), Completed(reference_, 2));
  EXPECT_EQ(Records(target), (std::vector<std::string>{"A[none|5]", "A[none|5]", "B[1.5]"}));
  std::vector<model::RecordId> changed = model::SubEntities(doc(), pline);
  ASSERT_EQ(changed.size(), 3u);  // two vertices and the SEQEND
  changed.push_back(pline);
  for (model::RecordId record : changed) {
    model::EntityProperties p = PropertiesOf(record);
    EXPECT_EQ(p.color, 1);
    EXPECT_EQ(p.true_color, 16711680);
    EXPECT_EQ(p.layer, "REF");
    EXPECT_EQ(p.linetype, "DASHED");
    EXPECT_EQ(p.linetype_scale, 2.5);
    EXPECT_EQ(p.lineweight, 35);
  }
  // Transparency is not one of them: the target keeps its own.
  EXPECT_EQ(PropertiesOf(pline).transparency, 33554500);
  EXPECT_EQ(PropertiesOf(bare_).transparency, -1);
  // A property the reference leaves at its default is reset on the target.
  od::EntityId plain = AddPoint("0", 8, 8);
  AttachValues(plain, "C", {Value::Character("x")});
  EXPECT_EQ(Pick("VELTOR_COPY_ALL", {target}, plain), Completed(plain, 1));
  EXPECT_EQ(PropertiesOf(pline).color, 256);
  EXPECT_EQ(PropertiesOf(pline).true_color, -1);
  EXPECT_EQ(PropertiesOf(pline).layer, "0");
  EXPECT_EQ(PropertiesOf(pline).lineweight, -1);
}

TEST_F(CopyCommandsTest, AReferenceWithOnlySystemTableRecordsCopiesNothing) {
  od::EntityId system_only = AddPoint("0", 6, 6);
  AttachValues(system_only, "TPMNODE_1", {Value::Integer(1)});
  SetCommon(system_only, {{62, "1"}});
  for (const char* command : {"VELTOR_COPY_OD", "VELTOR_COPY_ALL", "VELTOR_COPY_ALL_VALUE"}) {
    EXPECT_EQ(Pick(command, {bare_}, system_only), Completed(system_only, 0)) << command;
    EXPECT_TRUE(Records(bare_).empty()) << command;
    EXPECT_EQ(PropertiesOf(bare_).color, 256) << command;
  }
}

TEST_F(CopyCommandsTest, TargetsComeFirstThenTheReference) {
  // Enter at the selection prompt takes model space; the entity on the locked layer is no
  // target, the reference is one.
  EXPECT_EQ(Run("VELTOR_COPY_OD", {}, {"", Handle(bare_)}),
            "Select objects: \nSelect reference object: " + Handle(bare_) + "\nCompleted: 0\n");
  EXPECT_EQ(Run("VELTOR_COPY_OD", {}, {"", Handle(reference_)}),
            "Select objects: \n" + Completed(reference_, 3));
  EXPECT_EQ(Records(bare_).size(), 3u);
  EXPECT_TRUE(Records(locked_).empty());
  EXPECT_EQ(Records(reference_).size(), 7u);
}

TEST_F(CopyCommandsTest, NoTargetOrNoReferenceEndsTheCommandWithItsMessage) {
  // Only an unusable target: "Completed: 0" and no reference is asked for.
  EXPECT_EQ(Run("VELTOR_COPY_OD", {locked_}, {}), "Completed: 0\n");
  // The reference prompt cancelled (the script ends there).
  std::string before = Saved("before.dxf");
  EXPECT_EQ(Run("VELTOR_COPY_OD_VALUE", {bare_}, {}),
            "Select reference object: *Cancel*\nError: no objects selected.\n");
  EXPECT_EQ(Saved("unchanged.dxf"), before);
  // A cancelled selection prompt ends the command silently.
  EXPECT_EQ(Run("VELTOR_COPY_VALUE", {}, {"*Cancel*"}), "Select objects: *Cancel*\n*Cancel*\n");
}

TEST_F(CopyCommandsTest, UndoRestoresTheSavedDrawingByteForByte) {
  SetCommon(reference_, {{62, "1"}, {370, "35"}});
  for (const char* command : {"VELTOR_COPY_OD", "VELTOR_COPY_VALUE", "VELTOR_COPY_OD_VALUE",
                              "VELTOR_COPY_ALL", "VELTOR_COPY_ALL_VALUE"}) {
    std::string before = Saved("before.dxf");
    Pick(command, {bare_, carrier_}, reference_);
    ExpectUndoRestores(before, command);
  }
}

}  // namespace
}  // namespace veltor::commands
