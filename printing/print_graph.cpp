#include "printing/print_graph.h"

#include <vector>

#include "core/fault.h"
#include "core/formatting.h"
#include "graph/draw_graph.h"
#include "graph/scales.h"
#include "hub/app.h"
#include "printing/print_job.h"

namespace quillet {

namespace {

const char* const kNoGraph = "No Graph to Print.  Download First";
constexpr int kRowSorry = 54;
constexpr int kRowStart = 58;
constexpr int kRowAskAnnotation = 82;
constexpr int kRowDialogTitle = 83;
constexpr int kRowMax = 145, kRowLoggerNo = 146, kRowMin = 147, kRowAvg = 148, kRowPoints = 149;
constexpr int kRowQuestionTitle = 150;

// Slots of the printer's fonts among the six installed sizes.
constexpr int kPrintAxisFont = 1;
constexpr int kPrintTitleFont = 3;

constexpr int kThinLine = 1, kThickLine = 4;
constexpr int kTraceColour = Rgb(128, 0, 0);

constexpr long kWrapWidth = 50;

// Where each character of a UTF-8 text begins, and one past the end: positions count
// characters, not bytes.
std::vector<std::size_t> CharacterStarts(const std::string& text) {
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) starts.push_back(i);
  }
  starts.push_back(text.size());
  return starts;
}

void PrintPage(App& app, PrinterSurface& printer, bool annotate) {
  const State& s = app.s;
  const SampleRecord& r = s.record;
  const GraphState& g = s.graph;
  PrinterDrawing page(printer);

  printer.SetFont(s.fonts.FontName1, s.fonts.FontSizes[kPrintAxisFont], false);
  const double W = printer.Width(), H = printer.Height();
  const double printLeft = 0.2 * W, printWidth = 0.7 * W;
  const double printTop = 0.1 * H, printHeight = 0.6 * printWidth;
  const PlotBox box{printLeft, printTop, printWidth, printHeight};
  const double b = box.Bottom();

  printer.SetLineWidth(kThickLine);
  DrawFrame(page, box, 0.025 * printHeight);
  printer.SetLineWidth(kThinLine);

  const long n = static_cast<long>(r.RecordSampleCount.Value());
  if (n < 1 || n > kMaxSamples) throw Fault(kFaultSubscript);
  const TimeAxis axis = CountTimeAxis(g.AxisTimeStart, r.ShownTimes[n], g.TimeTickDays);
  const int gridIntervals = axis.ticks * g.MinorPerMajor;
  if (gridIntervals == 0 || g.YTickCount == 0) throw Fault(kFaultDivisionByZero);

  DrawVerticalGrid(page, box, gridIntervals, g.MinorPerMajor, 0.025 * printHeight);
  DrawTimeLabels(page, box, gridIntervals, g.MinorPerMajor, g.AxisTimeStart, g.TimeTickDays, g.TimeLabelFormat,
                 0.04 * printWidth, nullptr);
  DrawHorizontalGrid(page, box, g.YTickCount);
  DrawValueLabels(page, box, 0.72 * printLeft, g.YTickCount, g.YAxisBottom, g.YTickStep, g.YLabelFormat, nullptr);
  printer.TextAt(0.45 * printLeft, 0.5 * printHeight + printTop, r.RecordUnitText);

  printer.SetLineWidth(kThickLine);
  DrawTrace(page, box, r.ShownTimes, r.ShownValues, n, TraceAxes{g.AxisTimeStart, axis.end, g.YAxisBottom, g.YAxisTop},
            kTraceColour);
  printer.SetLineWidth(kThinLine);

  printer.SetFont(s.fonts.FontName1, s.fonts.FontSizes[kPrintTitleFont], true);
  printer.MoveTo(printLeft, 0.6 * printTop);
  printer.TextLine(r.RecordTitle);

  printer.SetFont(s.fonts.FontName1, s.fonts.FontSizes[kPrintAxisFont], false);
  const double c = printLeft + 0.5 * printWidth;
  auto t = [&app](int row) { return LanguageText(app, row); };
  printer.TextAt(printLeft, b + 0.065 * H, t(kRowStart) + FormatDateTime(r.ShownTimes[1], s.fmt.FmtStamp));
  printer.TextAt(c, b + 0.065 * H, t(kRowMax) + FormatNumber(r.ShownMax, g.ReadoutFormat));
  printer.TextAt(printLeft, b + 0.085 * H, t(kRowLoggerNo) + FormatNumber(r.LoggerNumber, "######"));
  printer.TextAt(c, b + 0.085 * H, t(kRowMin) + FormatNumber(r.ShownMin, g.ReadoutFormat));
  printer.TextAt(printLeft, b + 0.105 * H, t(kRowPoints) + FormatNumber(r.RecordSampleCount, "######"));
  printer.TextAt(c, b + 0.105 * H, t(kRowAvg) + FormatNumber(r.ShownAvg, g.ReadoutFormat));

  if (annotate) {
    printer.TextAt(printLeft, b + 0.15 * H, r.RecordIdent);
    printer.TextAt(c, b + 0.15 * H, r.RecordLocation);
    printer.MoveTo(printLeft, b + 0.17 * H);
    WrapDescription(printer, r.RecordRemarks, printLeft);
  }
  printer.EndDoc();
}

}  // namespace

void WrapDescription(PrinterSurface& printer, const std::string& text, double left) {
  const std::vector<std::size_t> at = CharacterStarts(text);
  const long length = static_cast<long>(at.size()) - 1;
  long skip = 0;
  for (long line = 1;; ++line) {
    const long start = 1 + kWrapWidth * (line - 1) - skip;
    long stop = kWrapWidth * line;
    if (start >= length) return;
    if (stop > length) stop = length;
    // The stop - start characters from start on, as byte offsets.
    std::size_t from = at[start - 1];
    std::size_t to = at[stop - 1];
    if (stop != length) {
      skip = 1;
      while (to == from || text[to - 1] != ' ') {
        if (to == from) throw Fault(kFaultIllegalCall, "a stretch of the description without a blank is too long");
        ++skip;
        do {
          --to;
        } while (to > from && (static_cast<unsigned char>(text[to]) & 0xC0) == 0x80);
      }
    }
    printer.MoveTo(left, printer.CurrentY());
    printer.TextLine(text.substr(from, to - from));
  }
}

void PrintGraph(App& app) {
  if (app.s.link.DownloadPercent.Value() != 100) {
    MessageBox(app, kNoGraph, LanguageText(app, kRowSorry), MsgButtons::Ok, MsgIcon::Information);
    return;
  }
  const MsgAnswer answer = MessageBox(app, LanguageText(app, kRowAskAnnotation), LanguageText(app, kRowQuestionTitle),
                                      MsgButtons::YesNoCancel, MsgIcon::Question);
  if (answer == MsgAnswer::Cancel) return;
  app.s.printing.PrintFault = 0;
  BeginPrintBusy(app);
  try {
    PrinterSurface& printer = ChoosePrinter(app, LanguageText(app, kRowDialogTitle));
    ShowPrintingNotice(app);
    PrintPage(app, printer, answer == MsgAnswer::Yes);
  } catch (const Fault& f) {
    app.s.printing.PrintFault = f.number();
  }
  EndPrintBusy(app);
}

}  // namespace quillet
