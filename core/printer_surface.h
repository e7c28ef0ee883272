#pragma once
// The printer: the system's printer dialog and the page the printouts draw on.
//
// Printer units are the printer's own device pixels at its resolution (a PDF is written
// at 600 to the inch), with (0, 0) at the top left corner of the printable area and y
// growing downward. Width and Height give the printable area in those units. Font sizes
// are points; a line width of n is n device pixels.
#include <string>

namespace quillet {

// The printer refused or lost the job (the printer vanished, the spooler failed, the
// file could not be written).
constexpr int kFaultPrinter = 482;

class PrinterSurface {
 public:
  virtual ~PrinterSurface() = default;

  // Shows the system's printer dialog with the given title: no selection button, no page
  // numbers, no print-to-file box. OK starts a job on the printer chosen there. Cancel is
  // fault 32755; a printer that cannot take the job is fault 482. A job that an earlier
  // printout left open is sent first.
  virtual void ShowPrinterDialog(const std::string& title) = 0;

  // The printable area of the page, in printer units.
  virtual double Width() const = 0;
  virtual double Height() const = 0;
  // Applies to the text written after it; size in points.
  virtual void SetFont(const std::string& name, double size, bool bold) = 0;
  // Applies to the lines drawn after it, in device pixels.
  virtual void SetLineWidth(int width) = 0;
  // colour as the logic keeps it (blue, green, red from the high byte); -1 is black.
  virtual void Line(double x1, double y1, double x2, double y2, int colour) = 0;
  // Writes the text with its top left corner at (x, y).
  virtual void TextAt(double x, double y, const std::string& text) = 0;
  // The present position, where TextLine writes.
  virtual void MoveTo(double x, double y) = 0;
  virtual double CurrentY() const = 0;
  // Writes the text at the present position, then moves to the left edge of the next
  // text line of the present font.
  virtual void TextLine(const std::string& text) = 0;
  // Ends the page; the next output goes on a fresh one, at (0, 0). A page break with
  // nothing drawn after it makes no blank page.
  virtual void NewPage() = 0;
  // Sends the job.
  virtual void EndDoc() = 0;
};

}  // namespace quillet
