// VELTOR_BREAK and the host's BREAK in the embedded session: the pieces of each curve type,
// the records and classification every piece carries, the properties of new pieces, what a
// cancelled prompt or a refused object leaves (nothing), and undo.
#include "data_command_fixture.h"

#include <algorithm>
#include <tuple>

#include "drawing/model/create.h"
#include "drawing/model/entity.h"
#include "drawing/model/objects.h"
#include "drawing/model/tables.h"

namespace veltor::commands {
namespace {

using od::Value;

class BreakCommandTest : public testing::DataCommandTest {
 protected:
  BreakCommandTest() { session::RegisterEditCommands(session_); }

  od::EntityId Id(model::RecordId record) { return session::IdOf(doc(), record); }
  od::EntityId Line() { return Id(model::AddLine(doc(), "0", {0, 0, 0}, {10, 0, 0})); }

  // A line on layer ROADS with a colour, a linetype scale and a lineweight, two records of
  // table A, one of B and the classification "Road".
  od::EntityId DressedLine() {
    Define("A", {Column("NAME", Value::Character("")), Column("N", Value::Integer(0))});
    Define("B", {Column("X", Value::Real(0))});
    model::AddLayer(doc(), "ROADS");
    od::EntityId line = Id(model::AddLine(doc(), "ROADS", {0, 0, 0}, {10, 0, 0}));
    model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), line));
    auto at = std::find_if(tags.begin(), tags.end(), [](const model::Tag& t) { return t.code == 8; });
    tags.insert(at + 1, {{62, "1"}, {48, "2.5"}, {370, "35"}});
    AttachValues(line, "A", {Value::Character("first"), Value::Integer(1)});
    AttachValues(line, "B", {Value::Real(2.5)});
    AttachValues(line, "A", {Value::Character("second"), Value::Integer(2)});
    EXPECT_TRUE(sdoc().project.Classify(line, "Road").ok());
    return line;
  }

  od::EntityList AddedSince(const od::EntityList& before) {
    od::EntityList added;
    for (od::EntityId id : db().ModelSpaceEntities())
      if (std::find(before.begin(), before.end(), id) == before.end()) added.push_back(id);
    return added;
  }

  std::string Breaking(const std::string& handle, const std::string& first, const std::string& second) {
    return "Select object: " + handle + "\nSpecify first break point: " + first +
           "\nSpecify second break point <same point>: " + second + "\n";
  }
};

TEST_F(BreakCommandTest, EveryPieceCarriesEveryRecordAndTheClassification) {
  od::EntityId line = DressedLine();
  const od::EntityList before = db().ModelSpaceEntities();
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(line), "3,1", "7,-1"}),
            Breaking(Handle(line), "3,1", "7,-1") + "Completed: 2\n");
  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 1u);
  const std::vector<std::string> records{"A[first|1]", "B[2.5]", "A[second|2]"};
  for (od::EntityId piece : {line, added[0]}) {
    EXPECT_EQ(Records(piece), records) << Handle(piece);
    EXPECT_EQ(sdoc().project.ClassificationTags(piece), (std::vector<std::string>{"Road"}));
  }
  EXPECT_NEAR(*db().Length(line), 3.0, 1e-12);
  EXPECT_NEAR(*db().Length(added[0]), 3.0, 1e-12);
  std::optional<od::EntityProperties> p = db().Properties(added[0]);
  ASSERT_TRUE(p);
  EXPECT_EQ(p->layer, "ROADS");
  EXPECT_EQ(p->color, 1);
  EXPECT_EQ(p->linetype_scale, 2.5);
  EXPECT_EQ(p->lineweight, 35);
  // A query for entities with several records finds both pieces.
  EXPECT_EQ(Run("VELTOR_HAS_MULTIPLE_OD", {}, {""}), "Select objects: \nSelected: 2\n");
  EXPECT_EQ(sdoc().pickfirst, (od::EntityList{line, added[0]}));
}

TEST_F(BreakCommandTest, OtherDataOfTheExtensionDictionaryGoesWithEveryPiece) {
  od::EntityId line = DressedLine();
  const model::RecordId record = session::RecordOf(doc(), line);
  const model::RecordId xdict = model::EnsureExtensionDictionary(doc(), record);
  const model::RecordId xrec = model::AddXRecord(doc(), doc().store().at(xdict).handle, {{1, "survey 12"}, {40, "0.25"}});
  model::SetDictionaryEntry(doc(), xdict, "OTHER_APP", doc().store().at(xrec).handle);
  const od::EntityList before = db().ModelSpaceEntities();
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(line), "3,0", "7,0"}),
            Breaking(Handle(line), "3,0", "7,0") + "Completed: 2\n");
  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 1u);
  const model::RecordId piece_dict =
      model::ExtensionDictionary(doc(), session::RecordOf(doc(), added[0]));
  ASSERT_NE(piece_dict, model::kNoRecord);
  const model::RecordId copied = model::DictionaryLookup(doc(), piece_dict, "OTHER_APP");
  ASSERT_NE(copied, model::kNoRecord);
  EXPECT_NE(copied, xrec);
  EXPECT_EQ(model::XRecordData(doc(), copied), (model::Tags{{1, "survey 12"}, {40, "0.25"}}));
  // The records and the classification are there once, not copied twice.
  EXPECT_EQ(Records(added[0]).size(), 3u);
  EXPECT_EQ(sdoc().project.ClassificationTags(added[0]), (std::vector<std::string>{"Road"}));
}

TEST_F(BreakCommandTest, BreakIsOneUndoStep) {
  od::EntityId line = DressedLine();
  const std::string saved = Saved("before.dxf");
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(line), "3,1", "7,-1"}),
            Breaking(Handle(line), "3,1", "7,-1") + "Completed: 2\n");
  ExpectUndoRestores(saved, "VELTOR_BREAK");
}

TEST_F(BreakCommandTest, CancelAtEachPromptChangesNothing) {
  od::EntityId line = DressedLine();
  const std::string saved = Saved("before.dxf");
  const std::vector<std::vector<std::string>> answers = {
      {"*Cancel*"}, {Handle(line), "*Cancel*"}, {Handle(line), "3,0", "*Cancel*"}};
  for (const auto& a : answers) {
    Run("VELTOR_BREAK", {}, a);
    EXPECT_EQ(Saved("after.dxf"), saved) << a.size() << " answers";
  }
}

TEST_F(BreakCommandTest, RefusedObjectAndPointsThatDoNotBreakChangeNothing) {
  Define("A", {Column("NAME", Value::Character(""))});
  od::EntityId text = Id(model::AddText(doc(), "0", {0, 0, 0}, 1, "x"));
  od::EntityId line = Line();
  AttachValues(line, "A", {Value::Character("kept")});
  model::AddLayer(doc(), "LOCKED");
  od::EntityId locked = Id(model::AddLine(doc(), "LOCKED", {0, 5, 0}, {10, 5, 0}));
  model::SetLayerLocked(doc(), model::FindLayer(doc(), "LOCKED"), true);
  const std::string saved = Saved("before.dxf");
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(locked), "2,5", "4,5"}),
            Breaking(Handle(locked), "2,5", "4,5") +
                "Error: VELTOR_BREAK failed: the object is on a frozen, hidden, locked or off layer\n");
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(text), "0,0", "1,0"}),
            Breaking(Handle(text), "0,0", "1,0") +
                "Error: VELTOR_BREAK failed: break: an object of type TEXT cannot be broken (lines, "
                "arcs, circles, lightweight polylines, 3D polylines and splines can)\n");
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(line), "0,0", "10,0"}),
            Breaking(Handle(line), "0,0", "10,0") +
                "Error: VELTOR_BREAK failed: break: nothing would be left\n");
  EXPECT_EQ(Saved("after.dxf"), saved);
}

TEST_F(BreakCommandTest, EnterAtTheSecondPointSplitsWithoutGap) {
  od::EntityId line = Line();
  const od::EntityList before = db().ModelSpaceEntities();
  EXPECT_EQ(Run("VELTOR_BREAK", {}, {Handle(line), "4,0", ""}),
            Breaking(Handle(line), "4,0", "") + "Completed: 2\n");
  od::EntityList added = AddedSince(before);
  ASSERT_EQ(added.size(), 1u);
  EXPECT_NEAR(*db().Length(line), 4.0, 1e-12);
  EXPECT_NEAR(*db().Length(added[0]), 6.0, 1e-12);
}

TEST_F(BreakCommandTest, HostBreakOnEachCurveTypeKeepsTheRestOfItsLength) {
  struct Case {
    const char* what;
    od::EntityId id;
    const char* first;
    const char* second;
    size_t pieces;
    double gap;
  };
  const double quarter = M_PI / 2;
  std::vector<Case> cases = {
      {"line", Line(), "2,0", "5,0", 2, 3.0},
      {"arc", Id(model::AddArc(doc(), "0", {20, 0, 0}, 2, 0, 180)), "22,0", "20,2", 1, quarter * 2},
      {"circle", Id(model::AddCircle(doc(), "0", {30, 0, 0}, 2)), "32,0", "30,2", 1, quarter * 2},
      {"bulged closed polyline",
       Id(model::AddLwPolyline(doc(), "0", {{40, 0, 1}, {42, 0}, {42, 2}, {40, 2}}, true)), "42,1",
       "41,2", 1, 2.0},
      {"3D polyline", Id(model::AddPolyline3d(doc(), "0", {{50, 0, 0}, {54, 0, 0}, {54, 4, 3}}, false)),
       "52,0", "54,0", 2, 2.0},
      {"spline", Id(model::AddSpline(doc(), "0", {{60, 0, 0}, {61, 2, 0}, {63, 2, 0}, {64, 0, 0}})),
       "60,0", "62,3", 1, -1.0},
  };
  for (const Case& c : cases) {
    const double length = *db().Length(c.id);
    const od::EntityList before = db().ModelSpaceEntities();
    Answer({Handle(c.id), c.first, c.second});
    ClearOut();
    ASSERT_TRUE(session_.Execute("BREAK"));
    od::EntityList pieces = AddedSince(before);
    pieces.insert(pieces.begin(), c.id);
    ASSERT_EQ(pieces.size(), c.pieces) << c.what << "\n" << out();
    double total = 0;
    for (od::EntityId piece : pieces) total += *db().Length(piece);
    if (c.gap >= 0) EXPECT_NEAR(total, length - c.gap, 1e-9) << c.what;
    else EXPECT_LT(total, length) << c.what;
  }
  EXPECT_EQ(db().EntityType(cases[2].id), "ARC");
}

// The tags of `entity` of `code`, as text.
std::vector<std::string> TagValues(const model::Document& doc, od::EntityId entity, int code) {
  std::vector<std::string> values;
  for (const model::Tag& t : doc.TagsOf(session::RecordOf(doc, entity)))
    if (t.code == code) values.push_back(t.value);
  return values;
}

TEST_F(BreakCommandTest, PiecesKeepTheTagsTheBreakDoesNotChange) {
  // A polyline with elevation and constant width, a spline with its tolerances and normal.
  od::EntityId polyline =
      Id(model::AddLwPolyline(doc(), "0", {{0, 0}, {10, 0}, {10, 10}}, false, 2.5));
  model::Tags& tags = doc().MutableTags(session::RecordOf(doc(), polyline));
  tags.insert(std::find_if(tags.begin(), tags.end(), [](const model::Tag& t) { return t.code == 10; }),
              {43, "0.5"});
  od::EntityId spline = Id(model::AddSpline(doc(), "0", {{60, 0, 0}, {61, 2, 0}, {63, 2, 0}, {64, 0, 0}}));
  for (auto [entity, first, second] : {std::tuple{polyline, "5,0", "10,5"}, std::tuple{spline, "61,1", "63,1"}}) {
    const od::EntityList before = db().ModelSpaceEntities();
    Answer({Handle(entity), first, second});
    ASSERT_TRUE(session_.Execute("BREAK"));
    od::EntityList pieces = AddedSince(before);
    ASSERT_EQ(pieces.size(), 1u) << out();
    pieces.push_back(entity);
    for (od::EntityId piece : pieces) {
      if (entity == polyline) {
        EXPECT_EQ(TagValues(doc(), piece, 38), (std::vector<std::string>{"2.5"}));
        EXPECT_EQ(TagValues(doc(), piece, 43), (std::vector<std::string>{"0.5"}));
        EXPECT_EQ(TagValues(doc(), piece, 90), (std::vector<std::string>{"2"}));
      } else {
        EXPECT_EQ(TagValues(doc(), piece, 230), (std::vector<std::string>{"1"}));
        EXPECT_EQ(TagValues(doc(), piece, 42), (std::vector<std::string>{"0.0000001"}));
        EXPECT_EQ(TagValues(doc(), piece, 71), (std::vector<std::string>{"3"}));
      }
    }
  }
}

TEST_F(BreakCommandTest, HostBreakRefusesOtherObjectsAndIsUndone) {
  od::EntityId ellipse = Id(model::AddEllipse(doc(), "0", {0, 0, 0}, {4, 0, 0}, 0.5, 0, 2 * M_PI));
  od::EntityId circle = Id(model::AddCircle(doc(), "0", {30, 0, 0}, 2));
  Answer({Handle(ellipse)});
  ClearOut();
  ASSERT_TRUE(session_.Execute("BREAK"));
  EXPECT_EQ(out(), "Select object: " + Handle(ellipse) +
                       "\nCannot break this object (ELLIPSE): lines, arcs, circles, lightweight "
                       "polylines, 3D polylines and splines can be broken.\n");
  const std::string saved = Saved("before.dxf");
  Answer({Handle(circle), "32,0", "30,2"});
  ASSERT_TRUE(session_.Execute("BREAK"));
  EXPECT_EQ(db().EntityType(circle), "ARC");
  ExpectUndoRestores(saved, "BREAK");
  EXPECT_EQ(db().EntityType(circle), "CIRCLE");
}

}  // namespace
}  // namespace veltor::commands
