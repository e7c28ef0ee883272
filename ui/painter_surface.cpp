#include "ui/painter_surface.h"

#include <QFontMetrics>
#include <cmath>

namespace quillet {

QColor SurfaceColour(int colour) {
  if (colour == kDefaultColor) return Qt::black;
  return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

PainterSurface::PainterSurface(QPainter& painter, QSize pixels) : painter_(painter), pixels_(pixels) {
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
  batch_.reserve(1024);
}

PainterSurface::~PainterSurface() { Flush(); }

void PainterSurface::Clear() {
  batch_.clear();
  erased_ = true;
  painter_.fillRect(QRect(QPoint(0, 0), pixels_), Qt::white);
}

double PainterSurface::Width() const { return pixels_.width() * kUnitsPerPixel; }
double PainterSurface::Height() const { return pixels_.height() * kUnitsPerPixel; }

void PainterSurface::SetFont(const std::string& name, double size, bool bold) {
  font_ = QFont(QString::fromStdString(name));
  // Points at 96 dpi, whatever resolution the device claims.
  font_.setPixelSize(std::max(1, static_cast<int>(std::lround(size * 96.0 / 72.0))));
  font_.setBold(bold);
  ascent_ = QFontMetrics(font_).ascent();
}

void PainterSurface::Line(double x1, double y1, double x2, double y2, int colour) {
  if (colour != batchColour_) {
    Flush();
    batchColour_ = colour;
  }
  batch_.emplace_back(x1 / kUnitsPerPixel, y1 / kUnitsPerPixel, x2 / kUnitsPerPixel, y2 / kUnitsPerPixel);
}

void PainterSurface::TextAt(double x, double y, const std::string& text) {
  Flush();
  painter_.setFont(font_);
  painter_.setPen(Qt::black);
  painter_.drawText(QPointF(x / kUnitsPerPixel, y / kUnitsPerPixel + ascent_), QString::fromStdString(text));
}

void PainterSurface::Flush() {
  if (batch_.empty()) return;
  painter_.setPen(QPen(SurfaceColour(batchColour_), 0));
  painter_.drawLines(batch_.data(), static_cast<int>(batch_.size()));
  batch_.clear();
}

}  // namespace quillet
