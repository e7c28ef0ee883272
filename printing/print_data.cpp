#include "printing/print_data.h"

#include "core/fault.h"
#include "core/formatting.h"
#include "hub/app.h"
#include "printing/print_job.h"

namespace quillet {

namespace {

const char* const kNoData = "No Data to Print.  Open or Download First";
constexpr int kRowSorry = 54;
constexpr int kRowDialogTitle = 79;

constexpr long kRowsPerPage = 100;
constexpr long kColumns = 5;
constexpr long kPerPage = kRowsPerPage * kColumns;

const std::string kHeadingIndent(11, ' ');
const std::string kHeadingGap(187, ' ');
const std::string kRowIndent(33, ' ');
const std::string kCellGap(5, ' ');

long Count(const Number& n) {
  const double v = n.Value();
  if (!(v >= 0 && v <= kMaxSamples)) throw Fault(kFaultSubscript);
  return static_cast<long>(v);
}

void PrintPages(App& app, PrinterSurface& printer) {
  const State& s = app.s;
  const SampleRecord& r = s.record;
  const bool shown = s.printing.PrintShownOnly == 1;
  const SampleTimes& times = shown ? r.ShownTimes : r.FullTimes;
  const SampleValues& values = shown ? r.ShownValues : r.FullValues;
  const long c = Count(shown ? r.RecordSampleCount : r.FullSampleCount);
  const std::string valueFormat = DataValueFormat(r.RecordModelCode);

  printer.SetFont("arial", 6, false);
  std::string row;
  for (long pageNumber = 1;; ++pageNumber) {
    const long pageFirst = 1 + kPerPage * (pageNumber - 1);
    long pageRowLast = pageFirst + kRowsPerPage - 1;
    if (pageRowLast > c) pageRowLast = c;
    if (pageFirst > c) return;
    // A number printed in a line gets a blank on either side.
    printer.TextLine(kHeadingIndent + r.RecordTitle + kHeadingGap + "page " + " " + std::to_string(pageNumber) + " ");
    printer.TextLine("");
    for (long i = pageFirst; i <= pageRowLast; ++i) {
      row = kRowIndent;
      for (long k = 0; k < kColumns && i + kRowsPerPage * k <= c; ++k) {
        const long at = i + kRowsPerPage * k;
        row += FormatDateTime(times[at], s.fmt.FmtStampLong);
        row += "  ";
        row += FormatNumber(values[at], valueFormat);
        row += ' ';
        row += r.RecordUnitText;
        if (k < kColumns - 1) row += kCellGap;
      }
      printer.TextLine(row);
    }
    // A table that fills its last page exactly takes the page break and leaves the job
    // open: the printer sends it when it is closed.
    if (pageRowLast + (kPerPage - kRowsPerPage) > c) {
      printer.EndDoc();
    } else {
      printer.NewPage();
    }
  }
}

}  // namespace

std::string DataValueFormat(double code) {
  if ((code >= 1 && code <= 11 && code == static_cast<int>(code)) || code == 30) return "##0.0";
  if (code == 28) return "#0.00";
  if (code == 31) return "###0.0";
  return "";
}

void PrintData(App& app) {
  PrintingState& p = app.s.printing;
  p.PrintCancelled = 0;
  p.PrintShownOnly = 0;
  if (app.s.link.DownloadPercent.Value() != 100) {
    MessageBox(app, kNoData, LanguageText(app, kRowSorry), MsgButtons::Ok, MsgIcon::Information);
    return;
  }
  if (app.s.graph.GraphZoomed != 0) {
    ShowModal(app, DialogId::PrintOpt);
    if (p.PrintCancelled == 1) return;
  }
  p.PrintFault = 0;
  BeginPrintBusy(app);
  try {
    PrinterSurface& printer = ChoosePrinter(app, LanguageText(app, kRowDialogTitle));
    ShowPrintingNotice(app);
    PrintPages(app, printer);
  } catch (const Fault& f) {
    p.PrintFault = f.number();
  }
  EndPrintBusy(app);
}

void OpenPrintOpt(App& app) { app.v.PrintOpt.visible = true; }

void PrintOptEntireRecord(App& app) {
  app.s.printing.PrintShownOnly = 0;
  app.v.PrintOpt.visible = false;
}

void PrintOptDisplayedOnly(App& app) {
  app.s.printing.PrintShownOnly = 1;
  app.v.PrintOpt.visible = false;
}

void PrintOptCancel(App& app) {
  app.s.printing.PrintCancelled = 1;
  app.v.PrintOpt.visible = false;
}

}  // namespace quillet
