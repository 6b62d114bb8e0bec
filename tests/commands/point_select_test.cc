// VELTOR_PSEL: closed contours around a point, the LUPREC closing tolerance, the even-odd
// rule at vertices, and the spatial index giving what a full walk gives.
#include <gtest/gtest.h>

#include "../drawing/dxf/test_files.h"
#include "../session/session_fixture.h"
#include "commands/select/point_select.h"
#include "drawing/model/document.h"

namespace veltor::commands {
namespace {

using od::Point3;

TEST(InsideRing, EvenOddWithCareAtVertices) {
  std::vector<Point3> square{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
  EXPECT_TRUE(InsideRing(square, {5, 5, 0}));
  EXPECT_FALSE(InsideRing(square, {15, 5, 0}));
  EXPECT_TRUE(InsideRing(square, {10, 5, 0}));  // on an edge
  EXPECT_TRUE(InsideRing(square, {0, 0, 0}));   // on a vertex
  // A ray to +X from (5,5) passes exactly through the vertex (10,5) of this diamond-notched
  // ring; it must count once.
  std::vector<Point3> notched{{0, 0, 0}, {10, 0, 0}, {12, 5, 0}, {10, 10, 0}, {0, 10, 0}};
  std::vector<Point3> through{{0, 0, 0}, {8, 0, 0}, {10, 5, 0}, {8, 10, 0}, {0, 10, 0}};
  EXPECT_TRUE(InsideRing(notched, {5, 5, 0}));
  EXPECT_TRUE(InsideRing(through, {5, 5, 0}));
  EXPECT_FALSE(InsideRing(through, {11, 5, 0}));
  // A ray along a horizontal edge.
  std::vector<Point3> step{{0, 0, 0}, {10, 0, 0}, {10, 5, 0}, {20, 5, 0}, {20, 10, 0}, {0, 10, 0}};
  EXPECT_TRUE(InsideRing(step, {5, 5, 0}));
  EXPECT_FALSE(InsideRing(step, {15, 2, 0}));
}

class PointSelectTest : public testing::SessionFixture {
 protected:
  od::EntityId Poly(std::vector<model::Vertex2> v, bool closed) {
    return session::IdOf(doc(), model::AddLwPolyline(doc(), "0", v, closed));
  }
};

TEST_F(PointSelectTest, ClosedByFlagOrByEndsWithinTheTolerance) {
  od::EntityId flagged = Poly({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
  od::EntityId nearly = Poly({{-1, -1}, {11, -1}, {11, 11}, {-1, 11}, {-1, -1.00005}}, false);
  od::EntityId open = Poly({{-2, -2}, {12, -2}, {12, 12}, {-2, 12}, {-2, -2.001}}, false);
  od::EntityId outside = Poly({{20, 20}, {30, 20}, {30, 30}}, true);
  (void)open;
  (void)outside;
  double tolerance = 0.0001;  // LUPREC 4
  EXPECT_EQ(ContoursAround(db(), {5, 5, 0}, tolerance), (od::EntityList{flagged, nearly}));
  EXPECT_EQ(ContoursAround(db(), {5, 5, 0}, tolerance, false), (od::EntityList{flagged, nearly}));
}

TEST_F(PointSelectTest, BulgesAndSplinesAreFollowed) {
  // A half-disc: the closing segment from (10,0) back to (0,0) has a bulge of 1 (a
  // counter-clockwise half circle), so it bows to y > 0.
  od::EntityId disc = Poly({{0, 0, 0}, {10, 0, 1}}, true);
  auto spline = model::AddSpline(doc(), "0", {{0, 20, 0}, {10, 20, 0}, {10, 30, 0}, {0, 30, 0}, {0, 20, 0}}, 1);
  EXPECT_EQ(ContoursAround(db(), {5, 4.9, 0}, 1e-4), (od::EntityList{disc}));
  EXPECT_TRUE(ContoursAround(db(), {9.5, 4, 0}, 1e-4).empty());  // inside the box, outside the arc
  EXPECT_TRUE(ContoursAround(db(), {5, -1, 0}, 1e-4).empty());
  EXPECT_EQ(ContoursAround(db(), {5, 25, 0}, 1e-4), (od::EntityList{session::IdOf(doc(), spline)}));
}

TEST_F(PointSelectTest, CommandMakesThePickfirstAndPrintsNothing) {
  od::EntityId square = Poly({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
  session_.LoadModule([](int, void*) { return 0; });
  Answer({"5,5"});
  EXPECT_TRUE(od::RunCommand(session_, "VELTOR_PSEL", PointSelect));
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{square});
  EXPECT_EQ(out(), "Specify point: 5,5\n");
  Answer({});
  EXPECT_FALSE(od::RunCommand(session_, "VELTOR_PSEL", PointSelect));  // cancelled: nothing changes
  EXPECT_EQ(sdoc().pickfirst, od::EntityList{square});
}

// On real drawings the index and the full walk agree at every probe point.
TEST(PointSelectCorpus, IndexAgreesWithTheFullWalk) {
  VELTOR_NEEDS_CORPUS();
  size_t found = 0;
  for (const char* name : {"gdal__LWPOLYLINE-OCS.dxf", "ezdxf__POLI-ALL210_12.dxf", "dxfparser__polylines.dxf",
                           "gdal__spline_weight.dxf"}) {
    std::string path = testing::CorpusFile(name);
    auto doc = model::Document::Open(path);
    if (!doc.ok()) GTEST_SKIP() << path << ": " << doc.message();
    session::Session s([](std::string_view) {});
    s.AddDocument(std::move(doc).value(), name);
    od::Database& db = *s.WorkingDatabase();
    for (od::EntityId id : db.ModelSpaceEntities()) {
      auto box = db.GeomExtents(id);
      if (!box) continue;
      Point3 centre{(box->min.x + box->max.x) / 2, (box->min.y + box->max.y) / 2, 0};
      od::EntityList indexed = ContoursAround(db, centre, 1e-4, true);
      EXPECT_EQ(indexed, ContoursAround(db, centre, 1e-4, false)) << name;
      found += indexed.size();
    }
  }
  EXPECT_GT(found, 0u) << "no contour found around any entity's centre";
}

}  // namespace
}  // namespace veltor::commands
