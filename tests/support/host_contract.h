// What every host must do for the module, checked through the host interface alone. The
// cases are defined here, once; each host instantiates them with its own HostMaker:
// tests/session/host_contract_test.cc for the embedded host and its fault-injecting wrapper,
// tests/arx/host_contract_arx.cpp for the Windows plug-in's host (compiled by the Windows
// check, run inside the CAD host). Include this from one file of a test program only.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "od/host.h"

namespace veltor::testing {

// A host with one empty drawing open.
struct HostUnderTest {
  virtual ~HostUnderTest() = default;
  virtual od::Host& host() = 0;
};

struct HostMaker {
  const char* name;
  std::function<std::unique_ptr<HostUnderTest>()> make;
};

class HostContract : public ::testing::TestWithParam<HostMaker> {
 protected:
  HostContract() : under_test_(GetParam().make()), host_(under_test_->host()) {}

  od::Database& db() { return *host_.WorkingDatabase(); }
  od::ObjectDataContainer& od() {
    Result<od::Project*> project = host_.ActiveProject();
    EXPECT_TRUE(project.ok()) << project.message();
    return (*project)->Container();
  }
  od::EntityId NewPoint(double x = 0) {
    Result<od::EntityId> id = db().AddPoint({x, 0, 0});
    EXPECT_TRUE(id.ok()) << id.message();
    return id.ok() ? *id : od::kNullId;
  }
  // Table "Pipes": DN Integer (default 150), Material Character (default "steel").
  void DefinePipes() {
    od::TableDefinition def;
    def.name = "Pipes";
    def.columns = {{"DN", od::ValueType::kInteger, "", od::Value::Integer(150)},
                   {"Material", od::ValueType::kCharacter, "", od::Value::Character("steel")}};
    Status s = od().CreateTable(def);
    ASSERT_TRUE(s.ok()) << s.message();
  }
  static od::Record Pipe(int dn, const std::string& material) {
    return {"Pipes", {od::Value::Integer(dn), od::Value::Character(material)}};
  }
  std::vector<int> DiameterList(od::EntityId e) {
    std::vector<int> dns;
    for (const od::Record& r : od().Records(e)) dns.push_back(r.values[0].integer());
    return dns;
  }

  std::unique_ptr<HostUnderTest> under_test_;
  od::Host& host_;
};

TEST_P(HostContract, EntitiesComeAndGoAndAGoneOneIsNeverOpened) {
  od::EntityId a = NewPoint(1), b = NewPoint(2);
  EXPECT_EQ(db().LastEntity(), b);
  EXPECT_EQ(db().ModelSpaceEntities(), (od::EntityList{a, b}));
  EXPECT_TRUE(db().CanOpen(a));
  EXPECT_EQ(db().EntityType(a), "POINT");
  // A handle is upper-case hexadecimal, one per entity.
  const std::string handle = db().EntityHandle(a);
  EXPECT_FALSE(handle.empty());
  EXPECT_EQ(handle.find_first_not_of("0123456789ABCDEF"), std::string::npos) << handle;
  EXPECT_NE(db().EntityHandle(b), handle);
  EXPECT_EQ(db().LayerOf(a), db().FindLayer("0"));
  EXPECT_NE(db().FindLayer("0"), od::kNullId);

  ASSERT_TRUE(db().Erase(a).ok());
  EXPECT_FALSE(db().CanOpen(a));
  EXPECT_EQ(db().ModelSpaceEntities(), od::EntityList{b});
  EXPECT_EQ(db().EntityType(a), "");
  EXPECT_EQ(db().EntityHandle(a), "");
  EXPECT_EQ(db().LayerOf(a), od::kNullId);
  EXPECT_FALSE(db().GeomExtents(a).has_value());
  EXPECT_FALSE(db().Erase(a).ok());
  EXPECT_FALSE(db().CanOpen(od::kNullId));
  EXPECT_TRUE(od().Records(a).empty());
}

TEST_P(HostContract, RecordsKeepHostOrderAndIndexesFollowRemovals) {
  DefinePipes();
  od::EntityId e = NewPoint();
  for (int dn : {100, 200, 300}) ASSERT_TRUE(od().AddRecord(e, Pipe(dn, "pvc")).ok());
  EXPECT_EQ(DiameterList(e), (std::vector<int>{100, 200, 300}));
  EXPECT_EQ(od().RecordTableNames(e), (std::vector<std::string>{"Pipes", "Pipes", "Pipes"}));

  ASSERT_TRUE(od().UpdateRecord(e, 1, Pipe(250, "cast iron")).ok());
  ASSERT_TRUE(od().RemoveRecord(e, 0).ok());
  EXPECT_EQ(DiameterList(e), (std::vector<int>{250, 300}));
  EXPECT_EQ(od().Records(e)[0].values[1].text(), "cast iron");

  // Out of range, a wrong number of values, an unknown table: refused, nothing changed.
  EXPECT_FALSE(od().RemoveRecord(e, 2).ok());
  EXPECT_FALSE(od().UpdateRecord(e, 5, Pipe(1, "x")).ok());
  EXPECT_FALSE(od().AddRecord(e, {"Pipes", {od::Value::Integer(1)}}).ok());
  EXPECT_FALSE(od().AddRecord(e, {"Cables", {od::Value::Integer(1)}}).ok());
  EXPECT_EQ(DiameterList(e), (std::vector<int>{250, 300}));
}

TEST_P(HostContract, TablesDefineDefaultsAndTakeTheirRecordsWithThem) {
  DefinePipes();
  Result<od::Record> fresh = od().NewRecord("Pipes");
  ASSERT_TRUE(fresh.ok());
  EXPECT_EQ(fresh->values[0], od::Value::Integer(150));
  EXPECT_EQ(fresh->values[1], od::Value::Character("steel"));
  EXPECT_FALSE(od().NewRecord("Nothing").ok());
  EXPECT_FALSE(od().GetTable("Nothing").ok());
  EXPECT_EQ(od().GetTable("Pipes")->ColumnIndex("Material"), 1);

  od::TableDefinition again;
  again.name = "Pipes";
  EXPECT_FALSE(od().CreateTable(again).ok()) << "a second table of the same name";
  again.name = "pipes";
  EXPECT_TRUE(od().CreateTable(again).ok()) << "table names are case-sensitive";

  od::EntityId e = NewPoint();
  ASSERT_TRUE(od().AddRecord(e, *fresh).ok());
  ASSERT_TRUE(od().DeleteTable("Pipes").ok());
  EXPECT_TRUE(od().Records(e).empty());
  EXPECT_EQ(od().TableNames(), std::vector<std::string>{"pipes"});
}

TEST_P(HostContract, ValuesComeBackInTheirColumnsType) {
  DefinePipes();
  od::EntityId e = NewPoint();
  // A Real in the Integer column and an Integer in the Character column.
  ASSERT_TRUE(od().AddRecord(e, {"Pipes", {od::Value::Real(12.9), od::Value::Integer(7)}}).ok());
  std::vector<od::Record> records = od().Records(e);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].values[0], od::Value::Integer(12));
  EXPECT_EQ(records[0].values[1], od::Value::Character("7"));
}

TEST_P(HostContract, FilteredReadMatchesTheFullRead) {
  DefinePipes();
  od::TableDefinition cables;
  cables.name = "Cables";
  cables.columns = {{"Volts", od::ValueType::kReal, "", od::Value::Real(230)}};
  ASSERT_TRUE(od().CreateTable(cables).ok());
  od::EntityId e = NewPoint();
  ASSERT_TRUE(od().AddRecord(e, Pipe(100, "a")).ok());
  ASSERT_TRUE(od().AddRecord(e, {"Cables", {od::Value::Real(400)}}).ok());
  ASSERT_TRUE(od().AddRecord(e, Pipe(200, "b")).ok());
  size_t damaged = 7;
  std::vector<od::Record> pipes = od().RecordsOf(e, {"Pipes"}, damaged);
  EXPECT_EQ(damaged, 0u);
  ASSERT_EQ(pipes.size(), 2u);
  EXPECT_EQ(pipes[1].values[1].text(), "b");
  EXPECT_TRUE(od().RecordsOf(e, {"Water"}, damaged).empty());
}

TEST_P(HostContract, UndoGroupTakenBackLeavesTheDrawingAsItWas) {
  DefinePipes();
  od::EntityId kept = NewPoint();
  ASSERT_TRUE(od().AddRecord(kept, Pipe(100, "a")).ok());
  ASSERT_TRUE(host_.App().BeginUndoGroup("CONTRACT"));
  od::EntityId added = NewPoint(5);
  ASSERT_TRUE(od().AddRecord(kept, Pipe(200, "b")).ok());
  ASSERT_TRUE(od().RemoveRecord(kept, 0).ok());
  ASSERT_TRUE(db().SetIntVar("LUPREC", 2).ok());
  host_.App().TakeBackUndoGroup();
  EXPECT_FALSE(db().CanOpen(added));
  EXPECT_EQ(DiameterList(kept), std::vector<int>{100});
  EXPECT_NE(db().GetIntVar("LUPREC"), std::optional<int>(2));
}

TEST_P(HostContract, SystemVariablesAndTheWriteLock) {
  ASSERT_TRUE(db().SetIntVar("LUPREC", 3).ok());
  EXPECT_EQ(db().GetIntVar("LUPREC"), std::optional<int>(3));
  EXPECT_FALSE(db().GetIntVar("NO_SUCH_VARIABLE").has_value());
  Result<std::unique_ptr<od::WriteLock>> lock = db().LockForWrite();
  ASSERT_TRUE(lock.ok()) << lock.message();
  // Changes go on while the lock is held; releasing it is destroying it.
  EXPECT_TRUE(db().AddPoint({1, 1, 0}).ok());
  lock->reset();
  EXPECT_TRUE(db().LockForWrite().ok());
}

TEST_P(HostContract, ClassificationReplacesTheEarlierTag) {
  od::EntityId e = NewPoint();
  Result<od::Project*> project = host_.ActiveProject();
  ASSERT_TRUE(project.ok());
  ASSERT_TRUE((*project)->Classify(e, "Hydrant").ok());
  ASSERT_TRUE((*project)->Classify(e, "Valve").ok());
  EXPECT_EQ((*project)->ClassificationTags(e), std::vector<std::string>{"Valve"});
}

TEST_P(HostContract, BreakKeepsTheEntityAsTheFirstPieceAndRefusesWhatItCannotBreak) {
  DefinePipes();
  Result<od::EntityId> made = db().AddPolyline3d({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, false);
  ASSERT_TRUE(made.ok()) << made.message();
  const od::EntityId path = *made;
  ASSERT_TRUE(od().AddRecord(path, Pipe(200, "cast iron")).ok());
  Result<od::EntityList> pieces = db().BreakCurve(path, {4, 1, 0}, {10, 3, 0});
  ASSERT_TRUE(pieces.ok()) << pieces.message();
  ASSERT_EQ(pieces->size(), 2u);
  EXPECT_EQ((*pieces)[0], path);
  EXPECT_EQ(db().LastEntity(), (*pieces)[1]);
  EXPECT_NEAR(*db().Length(path), 4.0, 1e-12);
  EXPECT_NEAR(*db().Length((*pieces)[1]), 7.0, 1e-12);
  // The entity keeps its records; a new piece starts without any.
  EXPECT_EQ(DiameterList(path), std::vector<int>{200});
  EXPECT_TRUE(od().Records((*pieces)[1]).empty());

  const od::EntityId point = NewPoint();
  EXPECT_FALSE(db().BreakCurve(point, {0, 0, 0}, {1, 0, 0}).ok());
  EXPECT_FALSE(db().BreakCurve(od::kNullId, {0, 0, 0}, {1, 0, 0}).ok());
  EXPECT_EQ(db().ModelSpaceEntities().size(), 3u);
}

}  // namespace veltor::testing
