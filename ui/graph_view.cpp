#include "ui/graph_view.h"

#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "hub/app.h"
#include "graph/panel.h"
#include "graph/zoom.h"
#include "ui/painter_surface.h"

namespace quillet {

GraphView::GraphView(QWidget* parent) : QFrame(parent) {
  setObjectName("Picture1");
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  QPalette p = palette();
  p.setColor(QPalette::Window, Qt::white);
  setPalette(p);
  setMouseTracking(true);  // the readout follows the pointer with no button held
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  start_ = new QWidget(this);
  layout->addWidget(start_);
}

void GraphView::Paint(const std::function<void(DrawSurface&)>& draw) {
  const QSize size = contentsRect().size().expandedTo(QSize(1, 1));
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    PainterSurface surface(painter, size);
    draw(surface);
    if (!surface.Erased()) return;
  }
  picture_ = image;
  // The start screen gives way to the first picture for good.
  start_->hide();
  update();
}

void GraphView::SyncOverlay() {
  if (!app_) return;
  const Log1View& v = app_->v.log1;
  const quillet::Box& b = v.Shape1Box;
  const bool shown = v.Shape1.visible;
  if (shown == overlayShown_ && (!shown || (b.left == overlay_.left && b.top == overlay_.top &&
                                            b.width == overlay_.width && b.height == overlay_.height))) {
    return;
  }
  overlayShown_ = shown;
  overlay_ = b;
  update();
}

void GraphView::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  if (picture_.isNull()) return;
  QPainter painter(this);
  painter.drawImage(contentsRect().topLeft(), picture_);
  if (overlayShown_) {
    QPen pen(Qt::black, 0, Qt::DotLine);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(overlay_.left / kUnitsPerPixel, overlay_.top / kUnitsPerPixel,
                            overlay_.width / kUnitsPerPixel, overlay_.height / kUnitsPerPixel)
                         .translated(contentsRect().topLeft()));
  }
}

void GraphView::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  // A picture drawn for another size is drawn again for this one.
  if (app_ && HasPicture()) {
    App& app = *app_;
    Dispatch(app, [&app] { RedrawGraph(app); });
  }
}

void GraphView::Run(const std::function<void(App&, double, double)>& handler, const QPointF& at) {
  if (!app_) return;
  App& app = *app_;
  const QPointF p = at - contentsRect().topLeft();
  const double x = p.x() * kUnitsPerPixel, y = p.y() * kUnitsPerPixel;
  Dispatch(app, [&app, &handler, x, y] { handler(app, x, y); });
}

void GraphView::mousePressEvent(QMouseEvent* event) {
  Run([](App& app, double x, double y) { GraphMouseDown(app, x, y); }, event->position());
}

void GraphView::mouseMoveEvent(QMouseEvent* event) {
  const int buttons = static_cast<int>(event->buttons().toInt());
  Run([buttons](App& app, double x, double y) { GraphMouseMove(app, buttons, x, y); }, event->position());
}

void GraphView::mouseReleaseEvent(QMouseEvent* event) {
  Run([](App& app, double x, double y) { GraphMouseUp(app, x, y); }, event->position());
}

}  // namespace quillet
