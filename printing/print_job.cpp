#include "printing/print_job.h"

#include "core/fault.h"
#include "graph/draw_graph.h"
#include "hub/app.h"

namespace quillet {

namespace {
constexpr int kPrintingText = 84;
constexpr int kPrintingColour = Rgb(0, 192, 192);
}  // namespace

void BeginPrintBusy(App& app) {
  Log1View& w = app.v.log1;
  w.busy = true;
  EnableCommandMenus(w, false);
  w.mnuFunc.visible = false;
  w.mnuScale.visible = false;
}

PrinterSurface& ChoosePrinter(App& app, const std::string& title) {
  app.p.ui.Refresh();
  if (!app.p.printer) throw Fault(kFaultPrinter, "no printer on this system");
  app.p.printer->ShowPrinterDialog(title);
  return *app.p.printer;
}

void ShowPrintingNotice(App& app) {
  Log1View& w = app.v.log1;
  w.busy = true;
  w.Label15.foreColor = kPrintingColour;
  w.Label15.caption = LanguageText(app, kPrintingText);
  w.Label15.visible = true;
  app.p.ui.Refresh();
}

void EndPrintBusy(App& app) {
  Log1View& w = app.v.log1;
  w.Label15.visible = false;
  w.busy = false;
  EnableCommandMenus(w, true);
}

}  // namespace quillet
