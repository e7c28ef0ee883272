#pragma once
// The printer on Qt: the system's print dialog and a QPrinter, or, without a dialog, a
// PDF file or a named printer. A job is composed in memory page by page and goes to the
// printer whole when it ends, so a printout that stops half way prints nothing, and a
// PDF file is written whole (through a temporary file beside it) or not at all.
//
// Printer units are the device pixels of the printer at its resolution (600 to the inch
// for a PDF, whose whole sheet is printable); fonts are sized from their points at that
// resolution.
#include <QFont>
#include <QPageSize>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "core/printer_surface.h"

class QPrinter;
class QWidget;

namespace quillet {

class QtPrinterSurface : public PrinterSurface {
 public:
  // The window's printer: the dialog is the system's print dialog over parent.
  explicit QtPrinterSurface(QWidget* dialogParent);
  // Without a dialog: every job is written to this PDF file.
  static std::unique_ptr<QtPrinterSurface> ToPdf(const QString& path, const QPageSize& paper);
  // Without a dialog: every job goes to the named system printer, on its own default paper
  // unless one is given. Null when the system has no printer of that name.
  static std::unique_ptr<QtPrinterSurface> ToPrinter(const QString& name, const std::optional<QPageSize>& paper);
  // Sends a job that was left open.
  ~QtPrinterSurface() override;
  QtPrinterSurface(const QtPrinterSurface&) = delete;
  QtPrinterSurface& operator=(const QtPrinterSurface&) = delete;

  // Sends a job that was left open (fault 482 when the printer fails).
  void Close();
  // Drops a job that was left open: nothing is printed or written.
  void Abandon();
  bool JobOpen() const { return open_; }
  QPrinter& Printer() { return *printer_; }

  void ShowPrinterDialog(const std::string& title) override;
  double Width() const override;
  double Height() const override;
  void SetFont(const std::string& name, double size, bool bold) override;
  void SetLineWidth(int width) override;
  void Line(double x1, double y1, double x2, double y2, int colour) override;
  void TextAt(double x, double y, const std::string& text) override;
  void MoveTo(double x, double y) override;
  double CurrentY() const override { return y_; }
  void TextLine(const std::string& text) override;
  void NewPage() override;
  void EndDoc() override;

 private:
  QtPrinterSurface();
  void Begin();
  void Send();
  void Write(double x, double y, const std::string& text);
  struct Op {
    bool text;
    int style;  // the font of a text; the pen of a line
    double x1, y1, x2, y2;
    QString words;
  };
  struct Pen {
    int colour, width;
  };
  std::vector<Op>& Page();

  QWidget* dialogParent_ = nullptr;
  std::unique_ptr<QPrinter> printer_;
  QString pdfPath_;  // empty: the printer itself
  bool open_ = false;
  bool pageBreak_ = false;
  std::vector<std::vector<Op>> pages_;
  std::vector<QFont> fonts_;
  std::vector<Pen> pens_;
  int font_ = -1, pen_ = -1;
  double ascent_ = 0, lineHeight_ = 0, blank_ = 0;
  int colour_ = -1, width_ = 1;
  double x_ = 0, y_ = 0;
};

}  // namespace quillet
