// The module's commands when the host says no: a drawing without an Object Data project,
// Object Data writes that fail, entities that cannot be opened, a refused document lock.
// Every command must end normally (no exception, no crash), leave the drawing unchanged
// where nothing could be written, and never leave a record half-written.
#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "../drawing/dxf/test_files.h"
#include "../support/faulty_host.h"
#include "app/veltor_app.h"
#include "console/console_ui.h"
#include "drawing/objectdata/od_store.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/session.h"

namespace veltor::testing {
namespace {

struct CommandRun {
  const char* name;
  // Prompts and dialogs, as typed in the console; "@SCRATCH@" stands for a scratch folder.
  std::vector<std::string> answers;
  bool edits;                        // writes Object Data when it can
  bool locks = false;                // takes the document lock for its edits
  bool says_refused = false;         // names the writes the drawing refused, and why
};

// Every built module command with answers that work on the drawing below.
const std::vector<CommandRun>& Commands() {
  static const std::vector<CommandRun> runs = {
      {"VELTOR_HAS_OD", {"ALL", ""}, false},
      {"VELTOR_HAS_NO_OD", {"ALL", ""}, false},
      {"VELTOR_HAS_MULTIPLE_OD", {"ALL", ""}, false},
      {"VELTOR_HAS_DUPLICATE_OD", {"ALL", ""}, false},
      {"VELTOR_HAS_SPECIFIC_OD", {"T", "", "", ""}, false},
      {"VELTOR_HAS_NO_SPECIFIC_OD", {"T", "Yes", "", ""}, false},
      {"VELTOR_HAS_SPECIFIC_VALUES", {"T", "1", ">0", "", "", "", ""}, false},
      {"VELTOR_COPY_OD", {"ALL", "", "L"}, true},
      {"VELTOR_COPY_VALUE", {"ALL", "", "L"}, true},
      {"VELTOR_COPY_OD_VALUE", {"ALL", "", "L"}, true},
      {"VELTOR_COPY_ALL", {"ALL", "", "L"}, true},
      {"VELTOR_COPY_ALL_VALUE", {"ALL", "", "L"}, true},
      {"VELTOR_ADEATTACHDATA", {"T", "", "", "ALL", ""}, true, true, true},
      {"VELTOR_ADDVAL", {"T", "N", "NAME", "2", "", "ALL", ""}, true, true, true},
      {"VELTOR_ADDVAL_OD2OD", {"T", "U", "", "Yes", "", "ALL", ""}, true, true, true},
      {"VELTOR_SETXYZ", {"G", "X", "Y", "", "Center", "", "", "", "", "ALL", ""}, true},
      {"VELTOR_SETPROP", {"G", "LEN", "AREA", "", "", "", "ALL", ""}, true},
      {"VELTOR_SETID", {"G", "ID", "G-", "", "1", "", "ALL", ""}, true},
      {"VELTOR_SETTEXT", {"G", "TXT", "", "", "ALL", ""}, true},
      {"VELTOR_RM", {"T", "", "ALL", ""}, true},
      {"VELTOR_RM_ALL", {"Yes", "ALL", ""}, true, true},
      {"VELTOR_REMOVE_DUPLICATE_OD", {"", "ALL", ""}, true, true},
      {"VELTOR_REPLACE", {"ALL", "", "T", "NAME", "a", "z", ""}, true, true},
      {"VELTOR_RMUNUSED", {"Spare", ""}, true, true},
      {"VELTOR_23DPOLY", {"10", "ALL", ""}, true, true},
      {"VELTOR_2POLY", {"", "ALL", ""}, true, true},
      {"VELTOR_STAT", {}, false},
      // A drawing on disk to take definitions from (its own tables, if any, are copied).
      {"VELTOR_LOAD_DEFINITION", {VELTOR_SOURCE_DIR "/tests/data/copy_reference.dxf"}, true},
      {"VELTOR_EXPL", {"T", "NAME", "", "@SCRATCH@/expl.csv", "ALL", ""}, false},
      // The drawing has no block reference: the map is read, the selection taken and nothing
      // is written.
      {"VELTOR_LOAD_ATTRS", {VELTOR_SOURCE_DIR "/tests/data/attribute_map.txt", "ALL", ""}, false, true},
      {"VELTOR_STORE_ATTRS", {VELTOR_SOURCE_DIR "/tests/data/attribute_map.txt", "ALL", ""}, false, true},
      {"VELTOR_ATTR_TEMPLATE", {"ALL", ""}, false},
      // The dialog's file buttons, then the direction: table Spare renamed, T's NAME renamed
      // and its values "a" replaced.
      {"VELTOR_TRANSLATE",
       {"t", VELTOR_SOURCE_DIR "/tests/data/translate_tables.txt", "f",
        VELTOR_SOURCE_DIR "/tests/data/translate_fields.txt", "v",
        VELTOR_SOURCE_DIR "/tests/data/translate_values.txt", "Name -->"},
       true, true, true},
      // "@LINE@" stands for the line of the drawing below.
      {"VELTOR_BREAK", {"@LINE@", "3,0", "6,0"}, true, true},
  };
  return runs;
}

class CommandFaults : public ::testing::TestWithParam<CommandRun> {
 protected:
  CommandFaults() : session_([this](std::string_view t) { out_ += t; }), ui_(session_.Ed()), faulty_(session_) {
    session::RegisterHostCommands(session_);
    session_.SetUi(&ui_);
    session_.AddDocument(model::Document::NewBlank("AC1027"), "faults.dxf");
    // The module sees the faulty host as its host.
    session_.LoadModule([this](int message, void*) {
      return app::AcrxEntryPoint(message, static_cast<od::Host*>(&faulty_));
    });
    BuildDrawing();
  }
  ~CommandFaults() override { session_.UnloadModules(); }

  // Tables T (N Integer, NAME Character) and U (N Integer); a line with two records of T
  // (what VELTOR_BREAK breaks, made first so that the last entity is a point); four points: two records of T,
  // one of T, one of U, one of T (the copy commands' reference). Each point also carries a
  // record of G, the table the commands that set values from geometry and text write. Table
  // Spare is used by nothing.
  void BuildDrawing() {
    od::Database& db = session_.active()->database;
    od::ObjectDataContainer& od = session_.active()->project.Container();
    od::TableDefinition t{"T", "", {{"N", od::ValueType::kInteger, "", od::Value::Integer(0)},
                                    {"NAME", od::ValueType::kCharacter, "", od::Value::Character("")}}};
    od::TableDefinition u{"U", "", {{"N", od::ValueType::kInteger, "", od::Value::Integer(0)}}};
    ASSERT_TRUE(od.CreateTable(t).ok());
    ASSERT_TRUE(od.CreateTable(u).ok());
    od::TableDefinition g{"G", "", {}};
    for (const char* real : {"X", "Y", "LEN"})
      g.columns.push_back({real, od::ValueType::kReal, "", od::Value::Real(0)});
    g.columns.push_back({"AREA", od::ValueType::kInteger, "", od::Value::Integer(0)});
    for (const char* text : {"ID", "TXT"})
      g.columns.push_back({text, od::ValueType::kCharacter, "", od::Value::Character("")});
    ASSERT_TRUE(od.CreateTable(g).ok());
    ASSERT_TRUE(od.CreateTable({"Spare", "", {{"N", od::ValueType::kInteger, "", od::Value::Integer(0)}}}).ok());
    auto record = [](int n, const char* name) {
      return od::Record{"T", {od::Value::Integer(n), od::Value::Character(name)}};
    };
    line_ = *db.AddPolyline3d({{0, 0, 0}, {10, 0, 0}}, false);
    ASSERT_TRUE(od.AddRecord(line_, record(7, "line")).ok());
    ASSERT_TRUE(od.AddRecord(line_, record(8, "line")).ok());
    for (int i = 0; i < 4; ++i) points_.push_back(*db.AddPoint({double(i), 0, 0}));
    ASSERT_TRUE(od.AddRecord(points_[0], record(1, "a")).ok());
    ASSERT_TRUE(od.AddRecord(points_[0], record(2, "b")).ok());
    ASSERT_TRUE(od.AddRecord(points_[1], record(3, "c")).ok());
    ASSERT_TRUE(od.AddRecord(points_[2], {"U", {od::Value::Integer(4)}}).ok());
    ASSERT_TRUE(od.AddRecord(points_[3], record(5, "e")).ok());
    for (od::EntityId p : points_) ASSERT_TRUE(od.AddRecord(p, *od.NewRecord("G")).ok());
  }

  void Run(const CommandRun& run) {
    std::vector<std::string> answers = run.answers;
    for (std::string& answer : answers)
      if (answer.rfind("@SCRATCH@", 0) == 0) answer = dir_.File(answer.substr(10));
      else if (answer == "@LINE@") answer = session_.active()->database.EntityHandle(line_);
    input_ = std::make_unique<session::LinesInput>(answers, [this](const std::string& t) { out_ += t; });
    session_.SetInput(input_.get());
    session_.editor().SetPickfirst({});
    out_.clear();
    ASSERT_TRUE(session_.Execute(run.name)) << out_;
    session_.RunQueue();
  }

  std::string Saved() {
    std::string path = dir_.File("saved.dxf");
    Status s = session_.active()->doc->Save(path);
    EXPECT_TRUE(s.ok()) << s.message();
    std::ifstream in(path, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }

  // Every record of the drawing as text, entity by entity.
  std::string AllRecords() {
    std::string all;
    for (od::EntityId e : points_) {
      all += "|";
      for (const od::Record& r : session_.active()->project.Container().Records(e)) {
        all += r.table + ":";
        for (const od::Value& v : r.values) all += od::ValueToText(v) + ",";
      }
    }
    return all;
  }

  void TearDown() override {
    if (HasFailure()) std::cerr << "--- what " << GetParam().name << " printed:\n" << out_ << "---\n";
  }

  // A command may stop and say an injected fault was why; any other "failed:" line is a
  // failure of the command itself (an exception the command context caught).
  void ExpectNoCommandFailure() {
    std::istringstream lines(out_);
    for (std::string line; std::getline(lines, line);)
      if (line.find("failed:") != std::string::npos) {
        EXPECT_NE(line.find(kInjected), std::string::npos) << out_;
      }
  }

  std::string out_;
  session::Session session_;
  console::ConsoleUi ui_;
  FaultyHost faulty_;
  std::unique_ptr<session::LinesInput> input_;
  std::vector<od::EntityId> points_;
  od::EntityId line_ = od::kNullId;
  ScratchDir dir_;
};

// Without faults the command takes every answer given: the runs below ask what they mean to.
TEST_P(CommandFaults, WithoutFaultsTheAnswersAreTaken) {
  Run(GetParam());
  ExpectNoCommandFailure();
  EXPECT_FALSE(input_->failed()) << input_->failure();
  EXPECT_TRUE(input_->exhausted()) << "answers left over";
}

TEST_P(CommandFaults, WithoutAProjectNothingIsChanged) {
  std::string before = Saved();
  faulty_.faults.project_missing = true;
  Run(GetParam());
  ExpectNoCommandFailure();
  EXPECT_EQ(Saved(), before) << out_;
}

TEST_P(CommandFaults, WhenEveryWriteFailsNothingIsChanged) {
  std::string records = AllRecords();
  faulty_.faults.writes_before_failure = 0;
  Run(GetParam());
  ExpectNoCommandFailure();
  EXPECT_EQ(AllRecords(), records) << out_;
  if (GetParam().says_refused) {
    EXPECT_NE(out_.find(kInjected), std::string::npos) << out_;
  }
}

TEST_P(CommandFaults, WhenWritesFailMidwayEveryRecordIsWholeAndTheDrawingReadsBack) {
  faulty_.faults.writes_before_failure = 1;
  std::string records = AllRecords();
  Run(GetParam());
  ExpectNoCommandFailure();
  if (!GetParam().edits) {
    EXPECT_EQ(AllRecords(), records);
  }
  // What was written reads back from the saved file, with no record damaged.
  std::string path = dir_.File("midway.dxf");
  ASSERT_TRUE(session_.active()->doc->Save(path).ok());
  auto reread = model::Document::Open(path);
  ASSERT_TRUE(reread.ok()) << reread.message();
  objectdata::ObjectDataStore store(**reread);
  EXPECT_TRUE(store.DamageReport().empty());
}

TEST_P(CommandFaults, EntitiesThatCannotBeOpenedKeepTheirRecords) {
  faulty_.faults.unopenable = {points_[0], points_[1]};
  od::ObjectDataContainer& od = session_.active()->project.Container();
  std::vector<od::Record> first = od.Records(points_[0]), second = od.Records(points_[1]);
  Run(GetParam());
  ExpectNoCommandFailure();
  EXPECT_EQ(od.Records(points_[0]).size(), first.size());
  EXPECT_EQ(od.Records(points_[1]).size(), second.size());
  EXPECT_EQ(od.Records(points_[0])[0].values, first[0].values);
}

using LockingCommandFaults = CommandFaults;

TEST_P(LockingCommandFaults, ARefusedLockChangesNothingAndSaysWhy) {
  std::string before = Saved();
  faulty_.faults.lock_refused = true;
  Run(GetParam());
  EXPECT_NE(out_.find(kInjected), std::string::npos) << out_;
  EXPECT_EQ(Saved(), before) << out_;
}

INSTANTIATE_TEST_SUITE_P(Module, CommandFaults, ::testing::ValuesIn(Commands()),
                         [](const ::testing::TestParamInfo<CommandRun>& run) {
                           return std::string(run.param.name);
                         });

std::vector<CommandRun> LockingCommands() {
  std::vector<CommandRun> locking;
  for (const CommandRun& run : Commands())
    if (run.locks) locking.push_back(run);
  return locking;
}

INSTANTIATE_TEST_SUITE_P(Module, LockingCommandFaults, ::testing::ValuesIn(LockingCommands()),
                         [](const ::testing::TestParamInfo<CommandRun>& run) {
                           return std::string(run.param.name);
                         });

}  // namespace
}  // namespace veltor::testing
