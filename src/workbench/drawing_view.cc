#include "workbench/drawing_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "drawing/geometry/text_box.h"

namespace veltor::workbench {

namespace {

const QColor kBackground(0x21, 0x28, 0x30);
const QColor kHighlight(0x4F, 0xC3, 0xF7);
// A drag shorter than this (pixels) is a click.
constexpr int kDragStart = 4;
// Texts smaller than this on screen (pixels) are not drawn: they could not be read.
constexpr double kSmallestText = 3.0;
// Letters larger than this are not drawn either: the font engine would render huge glyphs.
constexpr double kLargestText = 4000.0;

QColor ColorOf(uint32_t rgb) { return QColor::fromRgb(rgb); }

// Pen keys beside the 24-bit colours: none set yet, and the highlight's dashed pen.
constexpr uint32_t kNoPen = 0xFF000000;
constexpr uint32_t kHighlightPen = 0xFE000000;

}  // namespace

DrawingView::DrawingView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(false);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(200, 150);
}

void DrawingView::SetList(const DisplayList* list, bool fit) {
  list_ = list;
  if (fit) {
    if (width() > 0 && height() > 0 && isVisible()) ZoomExtents();
    else fit_pending_ = true;
  }
  Invalidate();
}

void DrawingView::SetHighlighted(const od::EntityList& ids) {
  highlighted_ = std::unordered_set<od::EntityId>(ids.begin(), ids.end());
  Invalidate();
}

void DrawingView::ZoomExtents() {
  fit_pending_ = false;
  if (list_) ZoomTo(list_->extents());
}

void DrawingView::ZoomTo(const geom::Extents& box) {
  if (!box.valid()) return;
  const double dx = box.max().x - box.min().x, dy = box.max().y - box.min().y;
  const double w = std::max(1, width()), h = std::max(1, height());
  if (dx > 0 || dy > 0) {
    const double sx = dx > 0 ? w / dx : 1e300, sy = dy > 0 ? h / dy : 1e300;
    scale_ = std::min(sx, sy) * 0.95;
  }
  center_ = {(box.min().x + box.max().x) / 2, (box.min().y + box.max().y) / 2};
  Invalidate();
}

void DrawingView::SetView(geom::Vec2 center, double scale) {
  if (!(scale > 0)) return;
  center_ = center;
  scale_ = scale;
  fit_pending_ = false;
  Invalidate();
}

geom::Vec2 DrawingView::ToWorld(QPointF pixel) const {
  return {center_.x + (pixel.x() - width() / 2.0) / scale_,
          center_.y - (pixel.y() - height() / 2.0) / scale_};
}

QPointF DrawingView::ToPixel(geom::Vec2 world) const {
  return {(world.x - center_.x) * scale_ + width() / 2.0,
          height() / 2.0 - (world.y - center_.y) * scale_};
}

void DrawingView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (fit_pending_) ZoomExtents();
  Invalidate();
}

void DrawingView::Invalidate() {
  dirty_ = true;
  update();
}

void DrawingView::Render(QPainter& painter) {
  painter.fillRect(rect(), kBackground);
  if (!list_) return;
  const geom::Vec2 a = ToWorld(QPointF(0, height())), b = ToWorld(QPointF(width(), 0));
  const geom::Extents window({a.x, a.y, 0}, {b.x, b.y, 0});
  const std::vector<size_t> visible = list_->Visible(window);
  std::vector<const DisplayItem*> highlighted;
  // Entities smaller than a pixel are gathered by colour and drawn as dots in one call each.
  std::unordered_map<uint32_t, QPolygonF> dots;
  pen_rgb_ = kNoPen;
  for (size_t index : visible) {
    const DisplayItem& item = list_->items()[index];
    if (highlighted_.count(item.id)) {
      highlighted.push_back(&item);
      continue;
    }
    const double w = (item.box.max().x - item.box.min().x) * scale_;
    const double h = (item.box.max().y - item.box.min().y) * scale_;
    if (w < 1.0 && h < 1.0) {
      dots[item.shapes.front().rgb].append(ToPixel({item.box.min().x, item.box.min().y}));
      continue;
    }
    PaintItem(painter, item, false);
  }
  for (const auto& [rgb, points] : dots) {
    painter.setPen(ColorOf(rgb));
    painter.drawPoints(points);
  }
  pen_rgb_ = kNoPen;
  // The selection is drawn last, over what it may share pixels with.
  for (const DisplayItem* item : highlighted) PaintItem(painter, *item, true);
}

void DrawingView::paintEvent(QPaintEvent*) {
  // The drawing is rendered into a picture once per change of view or content; panning and
  // the selection band only move or overlay that picture.
  const qreal ratio = devicePixelRatioF();
  if (dirty_ || cache_.size() != size() * ratio) {
    cache_ = QPixmap(size() * ratio);
    cache_.setDevicePixelRatio(ratio);
    QPainter render(&cache_);
    Render(render);
    dirty_ = false;
    pan_offset_ = QPoint();
  }
  QPainter painter(this);
  if (!pan_offset_.isNull()) painter.fillRect(rect(), kBackground);
  painter.drawPixmap(pan_offset_, cache_);
  if (dragging_) {
    const QRect band = QRect(press_at_, last_at_).normalized();
    const bool crossing = last_at_.x() < press_at_.x() && !zoom_window_next_;
    QPen pen(crossing ? QColor(0x66, 0xDD, 0x66) : QColor(0x66, 0x99, 0xFF));
    pen.setStyle(crossing ? Qt::DashLine : Qt::SolidLine);
    painter.setPen(pen);
    QColor fill = pen.color();
    fill.setAlpha(40);
    painter.setBrush(fill);
    painter.drawRect(band);
  }
}

void DrawingView::PaintItem(QPainter& painter, const DisplayItem& item, bool highlighted) {
  painter.setBrush(Qt::NoBrush);
  QPolygonF polygon;
  for (const Shape& shape : item.shapes) {
    // Pens change only where the colour does (most neighbours share a layer's colour).
    const uint32_t rgb = highlighted ? kHighlightPen : shape.rgb;
    if (rgb != pen_rgb_) {
      QPen pen(highlighted ? kHighlight : ColorOf(shape.rgb));
      if (highlighted) {
        pen.setWidth(2);
        pen.setStyle(Qt::DashLine);
      }
      painter.setPen(pen);
      pen_rgb_ = rgb;
    }
    switch (shape.kind) {
      case Shape::Kind::kPath: {
        polygon.clear();
        polygon.reserve(static_cast<int>(shape.points.size()));
        // Points within half a pixel of the last one drawn add nothing to the picture.
        for (size_t i = 0; i < shape.points.size(); ++i) {
          const QPointF p = ToPixel(shape.points[i]);
          if (!polygon.isEmpty() && i + 1 < shape.points.size()) {
            const QPointF d = p - polygon.back();
            if (std::abs(d.x()) < 0.5 && std::abs(d.y()) < 0.5) continue;
          }
          polygon.append(p);
        }
        if (shape.closed) painter.drawPolygon(polygon);
        else painter.drawPolyline(polygon);
        break;
      }
      case Shape::Kind::kPoint: {
        const QPointF p = ToPixel(shape.points.front());
        painter.drawLine(p + QPointF(-3, 0), p + QPointF(3, 0));
        painter.drawLine(p + QPointF(0, -3), p + QPointF(0, 3));
        break;
      }
      case Shape::Kind::kText: {
        const double pixels = shape.height * scale_;
        if (!(pixels >= kSmallestText && pixels <= kLargestText) || shape.points.empty()) break;
        painter.save();
        pen_rgb_ = kNoPen;
        painter.translate(ToPixel(shape.points.front()));
        painter.rotate(-shape.rotation * 180.0 / M_PI);
        QFont font = painter.font();
        // Qt's pixel size is the font's full height; capitals reach about 0.7 of it.
        font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels / 0.7))));
        painter.setFont(font);
        double y = 0;
        size_t start = 0;
        for (;;) {
          size_t end = shape.text.find('\n', start);
          const std::string line = shape.text.substr(start, end == std::string::npos ? end : end - start);
          painter.drawText(QPointF(0, y), QString::fromStdString(line));
          if (end == std::string::npos) break;
          start = end + 1;
          y += geom::kDefaultLineSpacing * pixels;
        }
        painter.restore();
        break;
      }
    }
  }
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
  setFocus();
  if (event->button() == Qt::MiddleButton) {
    panning_ = true;
    last_at_ = event->pos();
    setCursor(Qt::ClosedHandCursor);
  } else if (event->button() == Qt::LeftButton) {
    press_at_ = last_at_ = event->pos();
    dragging_ = false;
  }
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
  if (panning_) {
    const QPoint delta = event->pos() - last_at_;
    center_.x -= delta.x() / scale_;
    center_.y += delta.y() / scale_;
    pan_offset_ += delta;
    last_at_ = event->pos();
    update();
    return;
  }
  if (event->buttons() & Qt::LeftButton) {
    last_at_ = event->pos();
    if ((last_at_ - press_at_).manhattanLength() >= kDragStart) dragging_ = true;
    if (dragging_) update();
  }
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    panning_ = false;
    unsetCursor();
    Invalidate();
    return;
  }
  if (event->button() != Qt::LeftButton) return;
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  if (dragging_) {
    last_at_ = event->pos();
    EndDrag(event->pos(), shift);
    return;
  }
  const geom::Vec2 world = ToWorld(event->pos());
  const od::EntityId picked = list_ ? list_->Pick(world, kPickPixels / scale_) : od::kNullId;
  emit Clicked(world, picked, shift);
}

void DrawingView::EndDrag(QPoint at, bool shift) {
  dragging_ = false;
  update();
  const geom::Vec2 first = ToWorld(press_at_), second = ToWorld(at);
  if (zoom_window_next_) {
    zoom_window_next_ = false;
    ZoomTo(geom::Extents({first.x, first.y, 0}, {second.x, second.y, 0}));
    return;
  }
  emit WindowDragged(first, second, at.x() < press_at_.x(), shift);
}

void DrawingView::wheelEvent(QWheelEvent* event) {
  const double steps = event->angleDelta().y() / 120.0;
  if (steps == 0) return;
  const QPointF at = event->position();
  const geom::Vec2 anchor = ToWorld(at);
  scale_ = std::clamp(scale_ * std::pow(1.25, steps), 1e-12, 1e12);
  // Keep the world point under the cursor where it is.
  center_ = {anchor.x - (at.x() - width() / 2.0) / scale_,
             anchor.y + (at.y() - height() / 2.0) / scale_};
  Invalidate();
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    dragging_ = false;
    zoom_window_next_ = false;
    update();
    emit EscapePressed();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace veltor::workbench
