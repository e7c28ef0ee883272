#pragma once
// The graph surface on a QPainter: a raster image for the window, the clipboard and PNG
// files, a PDF page for vector output. Surface units are twips, 15 to a pixel at 96 dpi,
// so the drawing keeps the proportions it was laid out in at any size.
#include <QColor>
#include <QFont>
#include <QLineF>
#include <QPainter>
#include <QSize>
#include <vector>

#include "graph/draw_surface.h"

namespace quillet {

constexpr double kUnitsPerPixel = 15.0;

class PainterSurface : public DrawSurface {
 public:
  // The painter draws on a device of pixels device pixels.
  PainterSurface(QPainter& painter, QSize pixels);
  ~PainterSurface() override;
  PainterSurface(const PainterSurface&) = delete;
  PainterSurface& operator=(const PainterSurface&) = delete;

  void Clear() override;
  double Width() const override;
  double Height() const override;
  void SetFont(const std::string& name, double size, bool bold) override;
  void Line(double x1, double y1, double x2, double y2, int colour = kDefaultColor) override;
  void TextAt(double x, double y, const std::string& text) override;

  // Draws the lines gathered so far. Lines of one colour go to the painter together,
  // which is what makes a trace of thousands of segments cheap.
  void Flush();
  // Whether the drawing got as far as erasing the surface: a drawing that stopped
  // before that leaves the old picture standing.
  bool Erased() const { return erased_; }

 private:
  bool erased_ = false;
  QPainter& painter_;
  QSize pixels_;
  QFont font_;
  int ascent_ = 0;
  int batchColour_ = kDefaultColor;
  std::vector<QLineF> batch_;
};

// A colour as the logic keeps it (blue, green, red from the high byte); the default is
// the foreground, black on the white graph.
QColor SurfaceColour(int colour);

}  // namespace quillet
