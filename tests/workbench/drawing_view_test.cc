// Picking and window selection in the drawing view on a drawing with known coordinates: at
// "Command: " they set the session's pickfirst set, at a selection prompt they answer it.
#include <QMouseEvent>
#include <QWheelEvent>
#include <QTabBar>

#include "drawing/model/entity.h"
#include "drawing/model/tables.h"
#include "drawing/session/object_ids.h"
#include "workbench/drawing_view.h"
#include "workbench_fixture.h"

namespace veltor::workbench {
namespace {

using od::EntityList;

class DrawingViewTest : public WorkbenchTest {
 protected:
  void SetUp() override {
    WorkbenchTest::SetUp();
    // Two horizontal lines, one above the other, and a circle away from them.
    auto doc = model::Document::NewBlank();
    lower_ = Add(*doc, "LINE", {{100, "AcDbLine"}, {10, "0"}, {20, "0"}, {30, "0"}, {11, "10"}, {21, "0"}, {31, "0"}});
    upper_ = Add(*doc, "LINE", {{100, "AcDbLine"}, {10, "0"}, {20, "20"}, {30, "0"}, {11, "10"}, {21, "20"}, {31, "0"}});
    circle_ = Add(*doc, "CIRCLE", {{100, "AcDbCircle"}, {10, "50"}, {20, "50"}, {30, "0"}, {40, "5"}});
    window().session().AddDocument(std::move(doc), "known.dxf");
    window().resize(900, 700);
    window().show();
    window().SyncWithSession();
    QApplication::processEvents();
    view().ZoomTo(geom::Extents({-10, -10, 0}, {70, 70, 0}));
    before_x_ = view().ToPixel({5, 0}).x();
  }

  od::EntityId Add(model::Document& doc, const char* type, dxf::Tags body) {
    model::RecordId id = model::AddModelSpaceEntity(doc, type, "0", std::move(body));
    return session::IdOf(doc, id);
  }

  DrawingView& view() { return window().view(); }
  EntityList Pickfirst() { return window().session().active()->pickfirst; }

  void Mouse(QEvent::Type type, geom::Vec2 world, Qt::MouseButton button, Qt::KeyboardModifiers keys) {
    const QPointF at = view().ToPixel(world);
    QMouseEvent event(type, at, view().mapToGlobal(at), button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button, keys);
    QApplication::sendEvent(&view(), &event);
  }
  void Click(geom::Vec2 world, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    Mouse(QEvent::MouseButtonPress, world, Qt::LeftButton, keys);
    Mouse(QEvent::MouseButtonRelease, world, Qt::LeftButton, keys);
  }
  void Drag(geom::Vec2 from, geom::Vec2 to) {
    Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::NoModifier);
    Mouse(QEvent::MouseMove, to, Qt::LeftButton, Qt::NoModifier);
    Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoModifier);
  }

  od::EntityId lower_ = 0, upper_ = 0, circle_ = 0;
  double before_x_ = 0;  // where (5, 0) is drawn in the view set up above
};

TEST_F(DrawingViewTest, AClickPicksTheEntityUnderItAndShiftClickTakesItBack) {
  Click({5, 0.05});
  EXPECT_EQ(Pickfirst(), EntityList{lower_});
  Click({50, 55});  // on the circle's top
  EXPECT_EQ(Pickfirst(), (EntityList{lower_, circle_}));
  Click({30, 30});  // nothing there
  EXPECT_EQ(Pickfirst(), (EntityList{lower_, circle_}));
  Click({5, 0}, Qt::ShiftModifier);
  EXPECT_EQ(Pickfirst(), EntityList{circle_});
}

TEST_F(DrawingViewTest, AWindowTakesWhatLiesInsideAndACrossingWhatItMeets) {
  // Left to right: a window around both lines and half the circle.
  Drag({-1, -1}, {52, 60});
  EXPECT_EQ(Pickfirst(), (EntityList{lower_, upper_}));
  window().driver().Escape();
  EXPECT_TRUE(Pickfirst().empty());
  // Right to left over the same box: the circle it cuts is taken too.
  Drag({52, 60}, {-1, -1});
  EXPECT_EQ(Pickfirst(), (EntityList{lower_, upper_, circle_}));
}

TEST_F(DrawingViewTest, HiddenLayersAreNeitherDrawnNorPicked) {
  auto& doc = *window().session().active()->doc;
  model::RecordId line = session::RecordOf(doc, upper_);
  model::SetTag(doc.MutableTags(line), 8, "Hidden");
  model::RecordId layer = model::AddLayer(doc, "Hidden");
  model::SetLayerOff(doc, layer, true);
  window().SyncWithSession();
  Drag({-1, -1}, {12, 22});
  EXPECT_EQ(Pickfirst(), EntityList{lower_});
}

TEST_F(DrawingViewTest, AtASelectionPromptTheViewAnswersWithTheSelectionSyntax) {
  Later([&] {
    Drag({-1, -1}, {12, 1});  // a window around the lower line
    Later([&] {
      Click({50, 45});  // the circle's bottom
      Later([&] { window().driver().Type(""); });
    });
  });
  window().driver().Type("SELECT");
  const std::string history = History();
  // The corners are where the pixels fall, to a tenth of a pixel: "-0.96,-1.05".
  const size_t window_at = history.find("Select objects: W\nSpecify first corner: -");
  ASSERT_NE(window_at, std::string::npos) << history;
  const size_t found = history.find("\n1 found\n", window_at);
  ASSERT_NE(found, std::string::npos) << history;
  EXPECT_NE(history.substr(window_at, found - window_at).find("Specify opposite corner: 1"), std::string::npos)
      << history;
  EXPECT_NE(history.find("Select objects: " + dxf::FormatHandle(circle_) + "\n1 found, 2 total"),
            std::string::npos)
      << history;
  EXPECT_EQ(Pickfirst(), (EntityList{lower_, circle_}));
}

TEST_F(DrawingViewTest, TheWheelZoomsAboutTheCursorAndAZoomWindowFillsTheView) {
  const geom::Vec2 anchor{50, 45};
  const QPointF at = view().ToPixel(anchor);
  const double before = view().scale();
  QWheelEvent wheel(at, view().mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view(), &wheel);
  EXPECT_GT(view().scale(), before);
  const geom::Vec2 still = view().ToWorld(at);
  EXPECT_NEAR(still.x, anchor.x, 1e-9);
  EXPECT_NEAR(still.y, anchor.y, 1e-9);

  view().StartZoomWindow();
  Drag({40, 40}, {60, 60});
  // The window now fills the view along its tighter side, centred (to the pixel the mouse
  // was on); nothing was selected.
  const geom::Vec2 center = view().ToWorld(QPointF(view().width() / 2.0, view().height() / 2.0));
  EXPECT_NEAR(center.x, 50, 0.2);
  EXPECT_NEAR(center.y, 50, 0.2);
  EXPECT_NEAR(view().scale() * 20, std::min(view().width(), view().height()) * 0.95, 15.0);
  EXPECT_TRUE(Pickfirst().empty());

  view().ZoomExtents();
  EXPECT_NEAR(view().ToWorld(QPointF(view().width() / 2.0, view().height() / 2.0)).x, 27.5, 1e-6);
}

struct ActivationLog : od::Reactor {
  void DocumentActivated(const std::string& name) override { names.push_back(name); }
  std::vector<std::string> names;
};

TEST_F(DrawingViewTest, TabsFollowTheSessionsDrawingsAndSwitchTheActiveOne) {
  ASSERT_TRUE(window().OpenDrawing(VELTOR_SOURCE_DIR "/tests/data/small.dxf").ok());
  QTabBar& tabs = window().tabs();
  ASSERT_EQ(tabs.count(), 2);
  EXPECT_EQ(tabs.currentIndex(), 1);
  EXPECT_EQ(window().session().active()->name, "small.dxf");
  ActivationLog log;
  window().session().AddReactor(&log);
  const double small_scale = view().scale();
  tabs.setCurrentIndex(0);
  // Each drawing comes back as it was left.
  EXPECT_NE(view().scale(), small_scale);
  EXPECT_NEAR(view().ToPixel({5, 0}).x(), before_x_, 1e-9);
  window().session().RemoveReactor(&log);
  EXPECT_EQ(log.names, std::vector<std::string>{"known.dxf"});
  EXPECT_EQ(window().session().active()->name, "known.dxf");

  // While a command waits for an answer the drawing it works on stays the active one.
  std::string active_while_waiting;
  int tab_while_waiting = -1;
  Later([&] {
    tabs.setCurrentIndex(1);
    active_while_waiting = window().session().active()->name;
    tab_while_waiting = tabs.currentIndex();
    window().driver().Type("");
  });
  window().driver().Type("SELECT");
  EXPECT_EQ(active_while_waiting, "known.dxf");
  EXPECT_EQ(tab_while_waiting, 0);
  Click({5, 0});
  EXPECT_EQ(Pickfirst(), EntityList{lower_});
}

}  // namespace
}  // namespace veltor::workbench
