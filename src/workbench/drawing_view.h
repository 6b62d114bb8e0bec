// The drawing: a widget that paints a DisplayList with QPainter, culled by its R-tree, and
// turns the mouse into view changes (pan, zoom) and selections (pick, window, crossing).
//
// Mouse: middle drag pans; the wheel zooms about the cursor; a left click picks; a left drag
// to the right selects a window (entities wholly inside), to the left a crossing (entities
// that meet it). What a selection means is the owner's business: the view only reports it.
#pragma once

#include <QPixmap>
#include <QPoint>
#include <QWidget>
#include <unordered_set>

#include "drawing/geometry/extents.h"
#include "drawing/geometry/vec.h"
#include "od/ids.h"
#include "workbench/display_list.h"

class QPainter;

namespace veltor::workbench {

class DrawingView : public QWidget {
  Q_OBJECT

 public:
  explicit DrawingView(QWidget* parent = nullptr);

  // Shows `list` (kept by the caller, which must outlive the view or call SetList again).
  // With `fit`, zooms to its extents.
  void SetList(const DisplayList* list, bool fit);
  const DisplayList* list() const { return list_; }
  // The entities drawn highlighted (the pickfirst set).
  void SetHighlighted(const od::EntityList& ids);

  void ZoomExtents();
  // The next left drag zooms to its window instead of selecting.
  void StartZoomWindow() { zoom_window_next_ = true; }
  // Shows the world box `box` whole, centred.
  void ZoomTo(const geom::Extents& box);

  // View mapping: widget pixels <-> world XY.
  geom::Vec2 ToWorld(QPointF pixel) const;
  QPointF ToPixel(geom::Vec2 world) const;
  double scale() const { return scale_; }  // pixels per drawing unit
  geom::Vec2 center() const { return center_; }  // the world point at the widget's centre
  // Puts `center` at the widget's centre at `scale` pixels per drawing unit.
  void SetView(geom::Vec2 center, double scale);

  // How close (in pixels) a click must come to an entity to pick it.
  static constexpr double kPickPixels = 5.0;

 signals:
  // A click at `world`; `picked` is the entity under it or kNullId.
  void Clicked(geom::Vec2 world, od::EntityId picked, bool shift);
  // A window (crossing: right to left) dragged from `first` to `second`.
  void WindowDragged(geom::Vec2 first, geom::Vec2 second, bool crossing, bool shift);
  // Escape pressed in the view.
  void EscapePressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Draws the visible part of the list (culled by its R-tree) with the current view.
  void Render(QPainter& painter);
  void PaintItem(QPainter& painter, const DisplayItem& item, bool highlighted);
  // The view or the content changed: render again at the next paint.
  void Invalidate();
  void EndDrag(QPoint at, bool shift);

  const DisplayList* list_ = nullptr;
  std::unordered_set<od::EntityId> highlighted_;
  geom::Vec2 center_{0, 0};  // world point at the widget's centre
  double scale_ = 1.0;
  bool fit_pending_ = false;
  uint32_t pen_rgb_ = 0;
  QPixmap cache_;        // the drawing as last rendered
  bool dirty_ = true;    // cache_ must be rendered again
  QPoint pan_offset_;    // how far cache_ has been dragged since it was rendered  // the colour of the painter's pen while painting (see PaintItem)
  // Mouse state.
  bool panning_ = false;
  bool dragging_ = false;
  bool zoom_window_next_ = false;
  QPoint press_at_;
  QPoint last_at_;
};

}  // namespace veltor::workbench
