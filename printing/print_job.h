#pragma once
// What the two printouts share: the busy state around a job, the printing notice, and
// the printer seen as a drawing surface so the graph's own drawing pieces draw on it.
#include <string>

#include "core/printer_surface.h"
#include "graph/draw_surface.h"

namespace quillet {

struct App;

// Hourglass; the six command menus disabled; the function and scale menus hidden.
void BeginPrintBusy(App& app);
// The printer of the platform, after its dialog under the given title: Cancel is fault
// 32755, no printer at all fault 482.
PrinterSurface& ChoosePrinter(App& app, const std::string& title);
// Label15 says the job is printing.
void ShowPrintingNotice(App& app);
// The ending of every printout, reached normally and on any failure: the notice goes,
// the pointer and the six menus come back. The function and scale menus stay hidden
// until the next drawing of the graph.
void EndPrintBusy(App& app);

// The printer under the drawing-surface interface (Clear does nothing: a page starts
// blank).
class PrinterDrawing : public DrawSurface {
 public:
  explicit PrinterDrawing(PrinterSurface& printer) : p_(printer) {}
  void Clear() override {}
  double Width() const override { return p_.Width(); }
  double Height() const override { return p_.Height(); }
  void SetFont(const std::string& name, double size, bool bold) override { p_.SetFont(name, size, bold); }
  void Line(double x1, double y1, double x2, double y2, int colour) override { p_.Line(x1, y1, x2, y2, colour); }
  void TextAt(double x, double y, const std::string& text) override { p_.TextAt(x, y, text); }

 private:
  PrinterSurface& p_;
};

}  // namespace quillet
