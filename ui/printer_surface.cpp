#include "ui/printer_surface.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/fault.h"
#include "core/file_commit.h"
#include "ui/painter_surface.h"

namespace quillet {

namespace {
constexpr int kPdfResolution = 600;
}

QtPrinterSurface::QtPrinterSurface() : printer_(std::make_unique<QPrinter>(QPrinter::HighResolution)) {}

QtPrinterSurface::QtPrinterSurface(QWidget* dialogParent) : QtPrinterSurface() { dialogParent_ = dialogParent; }

std::unique_ptr<QtPrinterSurface> QtPrinterSurface::ToPdf(const QString& path, const QPageSize& paper) {
  std::unique_ptr<QtPrinterSurface> p(new QtPrinterSurface());
  p->pdfPath_ = path;
  QPrinter& q = *p->printer_;
  q.setOutputFormat(QPrinter::PdfFormat);
  q.setResolution(kPdfResolution);
  q.setPageSize(paper);
  q.setFullPage(true);
  return p;
}

std::unique_ptr<QtPrinterSurface> QtPrinterSurface::ToPrinter(const QString& name,
                                                              const std::optional<QPageSize>& paper) {
  if (!QPrinterInfo::availablePrinterNames().contains(name)) return nullptr;
  std::unique_ptr<QtPrinterSurface> p(new QtPrinterSurface());
  p->printer_->setPrinterName(name);
  if (paper) p->printer_->setPageSize(*paper);
  return p;
}

QtPrinterSurface::~QtPrinterSurface() {
  try {
    Close();
  } catch (const Fault&) {
    std::fprintf(stderr, "quillet: the printer failed; the last job was not printed\n");
  }
}

void QtPrinterSurface::Close() {
  if (open_) Send();
}

void QtPrinterSurface::Abandon() {
  open_ = false;
  pages_.clear();
}

void QtPrinterSurface::ShowPrinterDialog(const std::string& title) {
  Close();
  if (dialogParent_) {
    QPrintDialog dialog(printer_.get(), dialogParent_);
    dialog.setWindowTitle(QString::fromStdString(title));
    // No selection, no page numbers, no print-to-file box.
    dialog.setOptions(QAbstractPrintDialog::PrintShowPageSize | QAbstractPrintDialog::PrintCollateCopies);
    if (dialog.exec() != QDialog::Accepted) throw Fault(kFaultCancel);
  }
  if (!printer_->isValid()) throw Fault(kFaultPrinter, "the printer cannot be used");
  Begin();
}

void QtPrinterSurface::Begin() {
  open_ = true;
  pageBreak_ = false;
  pages_.assign(1, {});
  fonts_.clear();
  pens_.clear();
  font_ = pen_ = -1;
  colour_ = -1;
  width_ = 1;
  x_ = y_ = 0;
  SetFont("Arial", 10, false);
}

double QtPrinterSurface::Width() const {
  return printer_->pageLayout().paintRectPixels(printer_->resolution()).width();
}

double QtPrinterSurface::Height() const {
  return printer_->pageLayout().paintRectPixels(printer_->resolution()).height();
}

void QtPrinterSurface::SetFont(const std::string& name, double size, bool bold) {
  QFont f(QString::fromStdString(name));
  f.setPixelSize(std::max(1, static_cast<int>(std::lround(size * printer_->resolution() / 72.0))));
  f.setBold(bold);
  const QFontMetricsF m(f);
  ascent_ = m.ascent();
  lineHeight_ = m.height();
  blank_ = m.horizontalAdvance(QLatin1Char(' '));
  for (std::size_t i = 0; i < fonts_.size(); ++i) {
    if (fonts_[i] == f) {
      font_ = static_cast<int>(i);
      return;
    }
  }
  fonts_.push_back(f);
  font_ = static_cast<int>(fonts_.size()) - 1;
}

void QtPrinterSurface::SetLineWidth(int width) {
  width_ = width;
  pen_ = -1;
}

std::vector<QtPrinterSurface::Op>& QtPrinterSurface::Page() {
  if (!open_) throw Fault(kFaultPrinter, "no print job");
  if (pageBreak_) {
    pages_.emplace_back();
    pageBreak_ = false;
  }
  return pages_.back();
}

void QtPrinterSurface::Line(double x1, double y1, double x2, double y2, int colour) {
  std::vector<Op>& page = Page();
  if (pen_ < 0 || colour != colour_) {
    colour_ = colour;
    pens_.push_back({colour, width_});
    pen_ = static_cast<int>(pens_.size()) - 1;
  }
  page.push_back({false, pen_, x1, y1, x2, y2, {}});
}

void QtPrinterSurface::TextAt(double x, double y, const std::string& text) { Write(x, y, text); }

// Blanks at either end of a text are left out of the drawn text, the leading ones as
// their width: the page looks the same, and a table row of long blank runs costs less.
void QtPrinterSurface::Write(double x, double y, const std::string& text) {
  std::vector<Op>& page = Page();
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return;
  const std::size_t last = text.find_last_not_of(' ');
  page.push_back({true, font_, x + first * blank_, y + ascent_, 0, 0,
                  QString::fromUtf8(text.data() + first, static_cast<qsizetype>(last + 1 - first))});
}

void QtPrinterSurface::MoveTo(double x, double y) {
  x_ = x;
  y_ = y;
}

void QtPrinterSurface::TextLine(const std::string& text) {
  Write(x_, y_, text);
  x_ = 0;
  y_ += lineHeight_;
}

void QtPrinterSurface::NewPage() {
  Page();
  pageBreak_ = true;
  x_ = y_ = 0;
}

void QtPrinterSurface::EndDoc() {
  if (!open_) throw Fault(kFaultPrinter, "no print job");
  Send();
}

void QtPrinterSurface::Send() {
  open_ = false;
  std::vector<std::vector<Op>> pages;
  pages.swap(pages_);
  // A PDF goes to the temporary file beside its target and is put in place whole.
  const QString part = pdfPath_.isEmpty()
                           ? QString()
                           : QString::fromStdString(TemporaryFileFor(CommitTarget(pdfPath_.toStdString())));
  if (!part.isEmpty()) printer_->setOutputFileName(part);
  bool ok = true;
  {
    QPainter painter;
    if (!painter.begin(printer_.get())) throw Fault(kFaultPrinter, "the printer does not take the job");
    painter.setRenderHint(QPainter::Antialiasing, false);
    std::vector<QLineF> batch;
    int batchPen = -1;
    auto flush = [&] {
      if (batch.empty()) return;
      QPen pen(SurfaceColour(pens_[batchPen].colour));
      pen.setWidthF(pens_[batchPen].width);
      pen.setCapStyle(Qt::FlatCap);
      painter.setPen(pen);
      painter.drawLines(batch.data(), static_cast<int>(batch.size()));
      batch.clear();
    };
    for (std::size_t i = 0; i < pages.size() && ok; ++i) {
      if (i > 0 && !printer_->newPage()) ok = false;
      int font = -1;
      for (const Op& op : pages[i]) {
        if (!op.text) {
          if (op.style != batchPen) flush();
          batchPen = op.style;
          batch.emplace_back(op.x1, op.y1, op.x2, op.y2);
          continue;
        }
        flush();
        if (op.style != font) {
          font = op.style;
          painter.setFont(fonts_[font]);
          painter.setPen(Qt::black);
        }
        painter.drawText(QPointF(op.x1, op.y1), op.words);
      }
      flush();
    }
    if (!painter.end()) ok = false;
  }
  if (printer_->printerState() == QPrinter::Error) ok = false;
  if (!part.isEmpty()) {
    if (ok) {
      try {
        CommitWrittenTemporary(pdfPath_.toStdString());
        return;
      } catch (const Fault& f) {
        throw Fault(kFaultPrinter, "cannot write " + pdfPath_.toStdString() + ": " + FaultDescription(f.number()));
      }
    }
    QFile::remove(part);
    throw Fault(kFaultPrinter, "cannot write " + pdfPath_.toStdString());
  }
  if (!ok) throw Fault(kFaultPrinter, "the printer failed");
}

}  // namespace quillet
