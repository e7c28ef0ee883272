#pragma once
// Picture1: the graph surface of the main window. It shows the picture the last drawing
// painted, at the widget's size, with the zoom rectangle as an overlay above it, and
// hands mouse events to the logic in surface units. Before the first drawing it shows
// the start screen.
#include <QFrame>
#include <QImage>
#include <functional>

#include "hub/view_model.h"

namespace quillet {
struct App;
class DrawSurface;

class GraphView : public QFrame {
  Q_OBJECT
 public:
  explicit GraphView(QWidget* parent = nullptr);
  void Attach(App& app) { app_ = &app; }
  // Where the start screen's pictures and labels go.
  QWidget* StartScreen() const { return start_; }

  // Paints a new picture at the widget's present size.
  void Paint(const std::function<void(class DrawSurface&)>& draw);
  bool HasPicture() const { return !picture_.isNull(); }
  const QImage& Picture() const { return picture_; }
  // Repaints when the zoom rectangle changed since the last look.
  void SyncOverlay();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void Run(const std::function<void(App&, double x, double y)>& handler, const QPointF& at);

  App* app_ = nullptr;
  QWidget* start_ = nullptr;
  QImage picture_;
  bool overlayShown_ = false;
  quillet::Box overlay_;  // QFrame has a Box of its own
};

}  // namespace quillet
