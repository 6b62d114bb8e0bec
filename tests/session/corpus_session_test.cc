// Every real drawing takes the session's everyday work without a crash: selection of all,
// LIST, the presence queries, a new table, a record attached to every entity, its names and
// values translated to aliases and back, a save that reads back with the records in place,
// and then the commands that copy records from a
// reference, attach and detach them through their dialog, add values between fields and
// tables, and fill columns from geometry, numbering and texts; the statistics, definitions
// loaded from the drawing's own file, the explication report, and every table shown, sorted
// and selected in the OD table palette; the records exported to a GeoPackage. Runs under the
// sanitizers like every test, so an
// invalid read anywhere on these paths fails here.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <memory>
#include <string>
#include <vector>

#include "../drawing/dxf/test_files.h"
#include "../support/scripted_ui.h"
#include "app/veltor_app.h"
#include "console/console_ui.h"
#include "drawing/gis/gis_commands.h"
#include "drawing/session/host_commands.h"
#include "drawing/session/object_ids.h"
#include "drawing/session/session.h"
#include "od/catalogue.h"
#include "od/format.h"
#include "od/gathering.h"
#include "ui/options_replace.h"
#include "ui/options_rm_unused.h"
#include "ui/od_table_view.h"
#include "ui/pgui_od_list.h"

namespace veltor::session {
namespace {

using veltor::testing::CorpusDir;
using veltor::testing::FilesIn;

class CorpusSession : public ::testing::TestWithParam<std::string> {
 protected:
  CorpusSession() : session_([this](std::string_view t) { out_ += t; }), ui_(session_.Ed()) {
    RegisterHostCommands(session_);
    gis::RegisterGisCommands(session_);
    // Dialogs are answered by script lines, as in the console.
    session_.SetUi(&ui_);
    session_.LoadModule(app::AcrxEntryPoint);
  }
  ~CorpusSession() override { session_.UnloadModules(); }

  // Runs one command with its answers; every answer must be taken (none refused).
  void Run(const std::string& command, std::vector<std::string> answers) {
    input_ = std::make_unique<LinesInput>(std::move(answers), [this](const std::string& t) { out_ += t; });
    session_.SetInput(input_.get());
    session_.editor().SetPickfirst({});
    out_ += "Command: " + command + "\n";
    ASSERT_TRUE(session_.Execute(command)) << out_;
    session_.RunQueue();
    ASSERT_FALSE(input_->failed()) << command << ": " << input_->failure() << "\n" << Tail();
  }

  // Sends every attribute line of a written template to CorpusCheck's NAME; without a
  // template, writes a map whose one line names no block of the drawing.
  static void CompleteTemplate(const std::string& path, bool templated) {
    std::string text;
    if (templated) {
      std::ifstream in(path, std::ios::binary);
      std::stringstream bytes;
      bytes << in.rdbuf();
      text = bytes.str();
      const std::string open = "\t?TableName\t?ColumnName", done = "\tCorpusCheck\tNAME";
      for (size_t at = text.find(open); at != std::string::npos; at = text.find(open, at))
        text.replace(at, open.size(), done);
    } else {
      text = "NO SUCH BLOCK\tTAG\tCorpusCheck\tNAME\n";
    }
    std::ofstream(path, std::ios::binary) << text;
  }

  // The drawing's bytes as saved now.
  std::string SavedBytes(const std::string& path) {
    Status written = session_.active()->doc->Save(path);
    EXPECT_TRUE(written.ok()) << written.message();
    std::ifstream in(path, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
  }

  // VELTOR_TRANSLATE renames CorpusCheck, its NAME (`columns`: 1, or 0 where there is no
  // such table) and the value "road" (on `attached` records) to aliases and back: the drawing
  // then saves exactly as before.
  void ExpectTranslationRoundTrip(int attached, int columns = 1) {
    veltor::testing::ScratchDir dir;
    const std::string before = SavedBytes(dir.File("before.dxf"));
    const std::string tables = dir.File("tables.txt"), fields = dir.File("fields.txt"),
                      values = dir.File("values.txt");
    std::ofstream(tables, std::ios::binary) << "CorpusCheck\tCorpusAlias\n";
    std::ofstream(fields, std::ios::binary) << "CorpusCheck\tNAME\tTITLE\n";
    std::ofstream(values, std::ios::binary) << "CorpusCheck\tNAME\troad\tstreet\n";
    for (const char* direction : {"Name -->", "Name <--"}) {
      size_t from = out_.size();
      Run("VELTOR_TRANSLATE", {"t", tables, "f", fields, "v", values, direction});
      EXPECT_NE(out_.find("Updated " + std::to_string(attached) + " records with new values\n", from),
                std::string::npos) << Tail();
      EXPECT_NE(out_.find("Updated " + std::to_string(columns) + " columns\n", from), std::string::npos)
          << Tail();
    }
    EXPECT_EQ(SavedBytes(dir.File("after.dxf")), before);
  }

  std::string Tail() const { return out_.size() > 2000 ? out_.substr(out_.size() - 2000) : out_; }

  // The number in "Attached a record of T to N objects." (-1 when not printed).
  int AttachedCount() const {
    size_t at = out_.rfind("Attached a record of CorpusCheck to ");
    if (at == std::string::npos) return -1;
    return std::atoi(out_.c_str() + at + std::string("Attached a record of CorpusCheck to ").size());
  }

  std::string out_;
  Session session_;
  console::ConsoleUi ui_;
  std::unique_ptr<LinesInput> input_;
};

TEST_P(CorpusSession, TakesEverydayWorkAndSavesWhatItDid) {
  const std::string path = CorpusDir() + "/" + GetParam();
  Status opened = session_.OpenDocument(path);
  ASSERT_TRUE(opened.ok()) << opened.message();

  Run("SELECT", {"ALL", ""});
  // A handle typed at the prompt finds its entity, in ASCII and binary drawings alike.
  for (od::EntityId id : session_.active()->database.ModelSpaceEntities()) {
    if (id & kRecordIdFlag) break;  // a drawing without handles
    out_.clear();
    Run("SELECT", {dxf::FormatHandle(id), ""});
    EXPECT_NE(out_.find("1 found"), std::string::npos) << out_;
    break;
  }
  Run("LIST", {"ALL", ""});
  for (const char* query : {"VELTOR_HAS_OD", "VELTOR_HAS_NO_OD", "VELTOR_HAS_MULTIPLE_OD",
                            "VELTOR_HAS_DUPLICATE_OD"})
    Run(query, {"ALL", ""});
  Run("LAYER", {"?"});
  Run("VELTOR_STAT", {});

  if (session_.active()->doc->version() < "AC1015") {
    // Drawings before R2000 cannot hold Object Data: the table is refused, nothing changes.
    input_ = std::make_unique<LinesInput>(std::vector<std::string>{"New", "CorpusCheck"}, nullptr);
    session_.SetInput(input_.get());
    session_.Execute("ODTABLE");
    EXPECT_FALSE(session_.active()->doc->modified());
    ExpectTranslationRoundTrip(0, 0);
    EXPECT_FALSE(session_.active()->doc->modified());
    return;
  }
  Run("ODTABLE", {"New", "CorpusCheck", "", "NAME", "Character", "none", "", "N", "Integer", "0",
                  "", ""});
  // The drawing's own table definitions, taken from its file: nothing to copy but a point
  // made and erased, and the file read as an attached drawing.
  size_t from = out_.size();
  Run("VELTOR_LOAD_DEFINITION", {path});
  EXPECT_EQ(out_.find("Error", from), std::string::npos) << Tail();
  Run("ODATTACH", {"CorpusCheck", "ALL", "", "road", "7"});
  // ODATTACH says nothing when there is nothing to attach to.
  int attached = AttachedCount();
  if (session_.active()->database.ModelSpaceEntities().empty()) attached = 0;
  ASSERT_GE(attached, 0) << Tail();
  ExpectTranslationRoundTrip(attached);
  {
    // ODEXPORT writes one feature per attached record.
    veltor::testing::ScratchDir exported;
    from = out_.size();
    Run("ODEXPORT", {exported.File("corpus.gpkg"), "", "CorpusCheck"});
    const std::string features = std::to_string(attached) + (attached == 1 ? " feature" : " features");
    EXPECT_NE(out_.find("Exported: " + features + " in 1 layer.\n", from),
              std::string::npos) << Tail();
    // ODIMPORT takes them back into the same table, and UNDO takes the import back.
    if (attached > 0) {
      auto entities = [this] { return session_.active()->database.ModelSpaceEntities().size(); };
      const size_t before = entities();
      from = out_.size();
      Run("ODIMPORT", {exported.File("corpus.gpkg"), "CorpusCheck", "", "CorpusCheck"});
      EXPECT_NE(out_.find("Imported: ", from), std::string::npos) << Tail();
      EXPECT_EQ(out_.find("Error", from), std::string::npos) << Tail();
      const bool made_some = out_.find(" as 0 entities", from) == std::string::npos;
      EXPECT_EQ(entities() > before, made_some) << Tail();
      Run("UNDO", {""});
      EXPECT_EQ(entities(), before) << Tail();
    }
  }

  veltor::testing::ScratchDir scratch;
  const std::string saved = scratch.File("saved.dxf");
  Status written = session_.active()->doc->Save(saved);
  ASSERT_TRUE(written.ok()) << written.message();

  auto reread = model::Document::Open(saved);
  ASSERT_TRUE(reread.ok()) << reread.message();
  session_.AddDocument(std::move(reread).value(), "saved.dxf");
  SessionDocument& doc = *session_.active();
  int with_record = 0;
  for (od::EntityId id : doc.database.ModelSpaceEntities())
    for (const std::string& table : doc.project.Container().RecordTableNames(id))
      if (table == "CorpusCheck") ++with_record;
  EXPECT_EQ(with_record, attached);

  if (doc.database.ModelSpaceEntities().empty()) return;
  Run("ODTABLE", {"New", "CorpusCopy", "", "N", "Integer", "0", "", ""});
  // Every entity a target; the reference is the last entity of model space.
  for (const char* copy : {"VELTOR_COPY_OD", "VELTOR_COPY_VALUE", "VELTOR_COPY_OD_VALUE",
                           "VELTOR_COPY_ALL", "VELTOR_COPY_ALL_VALUE"})
    Run(copy, {"ALL", "", "L"});
  // Dialog lines: table, Enter past the grid, the button; then the selection.
  Run("VELTOR_ADEATTACHDATA", {"CorpusCheck", "", "", "ALL", ""});
  // CorpusCheck's N appended to its NAME.
  Run("VELTOR_ADDVAL", {"CorpusCheck", "N", "NAME", "2", "", "ALL", ""});
  // CorpusCheck into CorpusCopy (N into N, proposed), attaching where there is none.
  Run("VELTOR_ADDVAL_OD2OD", {"CorpusCheck", "CorpusCopy", "", "Yes", "", "ALL", ""});
  // The report of CorpusCheck grouped by NAME: one row per record attached above.
  const std::string report = scratch.File("report.csv");
  from = out_.size();
  Run("VELTOR_EXPL", {"CorpusCheck", "NAME", "", report, "ALL", ""});
  EXPECT_NE(out_.find("Completed: ", from), std::string::npos) << Tail();
  // A map template of the drawing's block references, completed so that every attribute goes
  // to CorpusCheck's NAME; then attributes into records and NAME back into the attributes.
  const std::string map = scratch.File("attributes.txt");
  from = out_.size();
  Run("VELTOR_ATTR_TEMPLATE", {"ALL", "", map});
  const bool templated = out_.find("Generated template for ", from) != std::string::npos;
  EXPECT_TRUE(templated || out_.find("No valid entities selected\n", from) != std::string::npos)
      << Tail();
  CompleteTemplate(map, templated);
  // Both end quietly when nothing usable is selected (every layer frozen or off).
  od::EntityList selectable = doc.database.ModelSpaceEntities();
  od::FilterUsable(doc.database, selectable);
  from = out_.size();
  Run("VELTOR_LOAD_ATTRS", {map, "ALL", ""});
  EXPECT_EQ(out_.find(" definition(s) for ", from) != std::string::npos, !selectable.empty())
      << Tail();
  if (templated) {
    EXPECT_EQ(out_.find("Loaded 0 definition(s)", from), std::string::npos) << Tail();
  }
  from = out_.size();
  Run("VELTOR_STORE_ATTRS", {map, "ALL", ""});
  EXPECT_EQ(out_.find(" attribute(s) for ", from) != std::string::npos, !selectable.empty())
      << Tail();
  Run("VELTOR_ADEATTACHDATA", {"CorpusCheck", "", "Detach", "ALL", ""});

  // Values from geometry, numbering and texts into a table of their own. Their dialogs offer
  // the tables of usable entities: a drawing whose layers are all frozen or off offers none.
  od::EntityList usable = doc.database.ModelSpaceEntities();
  od::FilterUsable(doc.database, usable);
  if (!usable.empty()) {
    // Dialog lines: the table, the columns, the modes or texts, the button; then the selection.
    Run("ODTABLE", {"New", "CorpusGeo", "", "X", "Real", "0", "", "Y", "Real", "0", "", "LEN",
                    "Real", "0", "", "AREA", "Integer", "0", "", "ID", "Character", "", "", "TXT",
                    "Character", "", "", ""});
    Run("ODATTACH", {"CorpusGeo", "ALL", "", "", "", "", "", "", ""});
    Run("VELTOR_SETXYZ", {"CorpusGeo", "X", "Y", "", "Center", "", "", "", "", "ALL", ""});
    Run("VELTOR_SETPROP", {"CorpusGeo", "LEN", "AREA", "", "", "", "ALL", ""});
    Run("VELTOR_SETID", {"CorpusGeo", "ID", "G-", "", "1", "", "ALL", ""});
    Run("VELTOR_SETTEXT", {"CorpusGeo", "TXT", "", "", "ALL", ""});
    EXPECT_NE(out_.find("Completed (Length/Area/Volume): "), std::string::npos) << Tail();
  }
  EXPECT_EQ(out_.find("Error:"), std::string::npos) << Tail();
}

// The detach, remove and replace commands over every real drawing: duplicates removed, values
// replaced and the result saved and read back; then everything detached and the unused
// tables removed. Drawings before R2000 take the commands and stay unchanged.
TEST_P(CorpusSession, TakesTheDetachRemoveAndReplaceCommands) {
  const std::string path = CorpusDir() + "/" + GetParam();
  Status opened = session_.OpenDocument(path);
  ASSERT_TRUE(opened.ok()) << opened.message();
  veltor::testing::ScriptedUi ui;
  session_.SetUi(&ui);
  struct UiReset {
    Session& session;
    ~UiReset() { session.SetUi(nullptr); }
  } reset{session_};
  // The number in the last "Completed: N" line, -1 when there is none.
  auto completed = [this] {
    size_t at = out_.rfind("Completed: ");
    return at == std::string::npos ? -1 : std::atoi(out_.c_str() + at + 11);
  };

  if (session_.active()->doc->version() < "AC1015") {
    ui.NextDialog().Press(od::kIdOk);  // no tables to offer
    Run("VELTOR_RM", {""});
    ui.NextMessageAnswer(od::MessageAnswer::kYes);
    Run("VELTOR_RM_ALL", {""});
    Run("VELTOR_REMOVE_DUPLICATE_OD", {"", "ALL", ""});
    ui.NextDialog().Press(od::kIdCancel);  // OK needs a column
    Run("VELTOR_REPLACE", {""});
    ui.NextDialog().Press(ui::OptionsRmUnused::kSelectAllNothing).Press(od::kIdOk);
    Run("VELTOR_RMUNUSED", {});
    EXPECT_FALSE(session_.active()->doc->modified());
    return;
  }
  Run("ODTABLE", {"New", "CorpusCheck", "", "NAME", "Character", "none", "", ""});
  Run("ODATTACH", {"CorpusCheck", "ALL", "", "road"});
  int attached = AttachedCount();
  Run("ODATTACH", {"CorpusCheck", "ALL", "", "lane"});
  if (attached < 0) attached = 0;  // nothing to attach to

  // Each entity ALL picked has two records of one table: "first" keeps the last ("lane").
  out_.clear();
  Run("VELTOR_REMOVE_DUPLICATE_OD", {"first", "ALL", ""});
  EXPECT_EQ(completed(), attached) << Tail();
  // The table is offered when a usable model space entity carries it (some drawings keep
  // everything on layers that are off or locked).
  int replaced = 0;
  out_.clear();
  if (od::GetTableNames(session_, {}, true).count("CorpusCheck")) {
    ui.NextDialog()
        .SelectItems(ui::OptionsReplace::kTableList, {"CorpusCheck"})
        .SelectItems(ui::OptionsReplace::kColumnList, {"NAME"})
        .SetText(ui::OptionsReplace::kOldValue, "LANE")
        .SetText(ui::OptionsReplace::kNewValue, "street")
        .Press(od::kIdOk);
    Run("VELTOR_REPLACE", {""});
    replaced = completed();
    ASSERT_GT(replaced, 0) << Tail();
  } else {
    ui.NextDialog().Press(od::kIdCancel);
    Run("VELTOR_REPLACE", {""});
    EXPECT_EQ(completed(), -1) << Tail();
  }

  veltor::testing::ScratchDir scratch;
  const std::string saved = scratch.File("saved.dxf");
  Status written = session_.active()->doc->Save(saved);
  ASSERT_TRUE(written.ok()) << written.message();
  auto reread = model::Document::Open(saved);
  ASSERT_TRUE(reread.ok()) << reread.message();
  session_.AddDocument(std::move(reread).value(), "saved.dxf");
  int records = 0, streets = 0;
  for (od::EntityId id : session_.active()->database.ModelSpaceEntities())
    for (const od::Record& record : session_.active()->project.Container().Records(id)) {
      if (record.table != "CorpusCheck") continue;
      ++records;
      if (od::ValueToText(record.values.at(0)) == "street") ++streets;
    }
  EXPECT_EQ(records, attached);
  EXPECT_EQ(streets, replaced);

  // VELTOR_RM answers either way (with no table to choose it says 0 at once); VELTOR_RM_ALL
  // says nothing where no entity is usable.
  od::EntityList usable = session_.active()->database.ModelSpaceEntities();
  od::FilterUsable(session_.active()->database, usable);
  ui.NextDialog().Press(ui::PGUIODList::kSelectAllNothing).Press(od::kIdOk);
  out_.clear();
  Run("VELTOR_RM", {""});
  EXPECT_GE(completed(), 0) << Tail();
  for (od::EntityId id : usable)
    EXPECT_TRUE(session_.active()->project.Container().RecordTableNames(id).empty()) << Tail();
  ui.NextMessageAnswer(od::MessageAnswer::kYes);
  out_.clear();
  Run("VELTOR_RM_ALL", {""});
  EXPECT_EQ(completed() >= 0, !usable.empty()) << Tail();
  ui.NextDialog().Press(ui::OptionsRmUnused::kSelectAllNothing).Press(od::kIdOk);
  out_.clear();
  Run("VELTOR_RMUNUSED", {});
  EXPECT_GE(completed(), 0) << Tail();
  EXPECT_TRUE(session_.active()->doc->Save(scratch.File("emptied.dxf")).ok());
  EXPECT_TRUE(model::Document::Open(scratch.File("emptied.dxf")).ok());
  EXPECT_EQ(ui.pending(), 0u);
}

// Both polyline conversions over every real drawing: each prints its count, no Object Data
// record of model space is lost or duplicated (converted entities hand theirs on), and the
// result saves and reads back.
TEST_P(CorpusSession, ConvertsToPolylinesKeepingEveryRecord) {
  const std::string path = CorpusDir() + "/" + GetParam();
  Status opened = session_.OpenDocument(path);
  ASSERT_TRUE(opened.ok()) << opened.message();
  auto record_count = [this] {
    size_t count = 0;
    for (od::EntityId id : session_.active()->database.ModelSpaceEntities())
      count += session_.active()->project.Container().Records(id).size();
    return count;
  };
  const size_t records = record_count();
  Run("VELTOR_23DPOLY", {"10", "ALL", ""});
  Run("VELTOR_2POLY", {"", "ALL", ""});
  if (!session_.ActiveProject().ok()) {
    // A drawing that cannot hold Object Data (before R2000) is refused, not converted.
    EXPECT_EQ(out_.find("Completed: "), std::string::npos) << Tail();
    EXPECT_FALSE(session_.active()->doc->modified()) << Tail();
    return;
  }
  size_t first = out_.find("Completed: ");
  ASSERT_NE(first, std::string::npos) << Tail();
  EXPECT_NE(out_.find("Completed: ", first + 1), std::string::npos) << Tail();
  EXPECT_EQ(out_.find("Error:"), std::string::npos) << Tail();
  EXPECT_EQ(record_count(), records);
  veltor::testing::ScratchDir scratch;
  ASSERT_TRUE(session_.active()->doc->Save(scratch.File("converted.dxf")).ok());
  EXPECT_TRUE(model::Document::Open(scratch.File("converted.dxf")).ok());
}

TEST_P(CorpusSession, ShowsEveryTableInTheTablePalette) {
  const std::string path = CorpusDir() + "/" + GetParam();
  Status opened = session_.OpenDocument(path);
  ASSERT_TRUE(opened.ok()) << opened.message();
  Run("VELTOR_TABLE", {});
  auto* view = dynamic_cast<ui::OdTableView*>(app::TheApp().table_palette().get());
  ASSERT_NE(view, nullptr);
  view->FillTableChoices();
  const std::vector<std::string> tables = view->table_choices();
  for (const std::string& table : tables) {
    view->ChooseTable(table);
    for (size_t column = 0; column < view->ColumnCount(); ++column) {
      view->SortByColumn(column);
      for (size_t row = 0; row < view->RowCount(); ++row) (void)view->CellText(row, column);
    }
    view->RunViewEntry(ui::TableViewEntry::kSelectAll);
    EXPECT_EQ(view->SelectedCount(), view->RowCount()) << table;
    view->RunViewEntry(ui::TableViewEntry::kInvertSelection);
    EXPECT_EQ(view->SelectedCount(), 0u) << table;
    // A cell given back the text it shows writes nothing.
    if (view->RowCount() > 0 && view->ColumnCount() > 1)
      view->EditCell(0, 1, view->CellText(0, 1));
  }
  EXPECT_FALSE(session_.active()->doc->modified());
}

// VELTOR_BREAK over every real drawing: each curve it can break (up to 40 a drawing) is broken
// between the points nearest to the points a third and two thirds of the way across its
// extents. Each break either completes and
// every piece carries the records the curve had, or says why not; the result saves and reads
// back.
TEST_P(CorpusSession, BreaksCurvesKeepingTheirRecords) {
  const std::string path = CorpusDir() + "/" + GetParam();
  Status opened = session_.OpenDocument(path);
  ASSERT_TRUE(opened.ok()) << opened.message();
  od::Database& db = session_.active()->database;
  od::ObjectDataContainer& container = session_.active()->project.Container();
  auto breakable = [&db](od::EntityId id) {
    const std::string type = db.EntityType(id);
    return type == "LINE" || type == "ARC" || type == "CIRCLE" || type == "LWPOLYLINE" ||
           type == "SPLINE" || db.EntityClass(id) == "AcDb3dPolyline";
  };
  auto point = [](const od::Point3& p) { return od::Format("%.17g,%.17g,%.17g", p.x, p.y, p.z); };
  int tried = 0, completed = 0;
  const od::EntityList entities = db.ModelSpaceEntities();
  for (od::EntityId id : entities) {
    if (tried == 40) break;
    std::optional<od::Box3> box = db.GeomExtents(id);
    if (!breakable(id) || !box) continue;
    ++tried;
    const std::vector<std::string> tables = container.RecordTableNames(id);
    const size_t before = db.ModelSpaceEntities().size();
    out_.clear();
    const od::Point3 a = box->min, b = box->max;
    auto across = [&a, &b](double f) {
      return od::Point3{a.x + f * (b.x - a.x), a.y + f * (b.y - a.y), a.z + f * (b.z - a.z)};
    };
    Run("VELTOR_BREAK", {db.EntityHandle(id), point(across(1.0 / 3)), point(across(2.0 / 3))});
    const size_t done = out_.find("Completed: ");
    if (done == std::string::npos) {
      EXPECT_NE(out_.find("Error: VELTOR_BREAK failed: "), std::string::npos) << Tail();
      EXPECT_EQ(db.ModelSpaceEntities().size(), before) << Tail();
      continue;
    }
    ++completed;
    const od::EntityList after = db.ModelSpaceEntities();
    ASSERT_EQ(after.size(), before + std::stoul(out_.substr(done + 11)) - 1) << Tail();
    for (size_t i = before; i < after.size(); ++i)
      EXPECT_EQ(container.RecordTableNames(after[i]), tables) << Tail();
    EXPECT_EQ(container.RecordTableNames(id), tables) << Tail();
  }
  if (session_.ActiveProject().ok()) {
    EXPECT_EQ(completed > 0, tried > 0) << Tail();
  }
  veltor::testing::ScratchDir scratch;
  Status saved = session_.active()->doc->Save(scratch.File("broken.dxf"));
  ASSERT_TRUE(saved.ok()) << saved.message();
  EXPECT_TRUE(model::Document::Open(scratch.File("broken.dxf")).ok());
}

std::vector<std::string> CorpusDrawings() { return FilesIn(CorpusDir(), ".dxf"); }

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusSession, ::testing::ValuesIn(CorpusDrawings()),
                         [](const ::testing::TestParamInfo<std::string>& drawing) {
                           std::string name = drawing.param.substr(0, drawing.param.size() - 4);
                           for (char& c : name)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusSession);

}  // namespace
}  // namespace veltor::session
