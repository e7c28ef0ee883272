// quillet-cli print: a record file's graph page or data table, as the window prints them,
// to a PDF file or a system printer.
#include <QGuiApplication>
#include <QPageSize>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/offscreen_gui.h"
#include "cli/headless_ui.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "core/offline_platform.h"
#include "graph/draw_graph.h"
#include "hub/app.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "printing/print_data.h"
#include "printing/print_graph.h"
#include "storage/record_file.h"
#include "ui/printer_surface.h"

namespace quillet {

namespace {

// The window's graph surface, drawn on by nobody: the printout needs only the scales the
// drawing leaves.
class UnseenSurface : public DrawSurface {
 public:
  void Clear() override {}
  double Width() const override { return 8835; }
  double Height() const override { return 4215; }
  void SetFont(const std::string&, double, bool) override {}
  void Line(double, double, double, double, int) override {}
  void TextAt(double, double, const std::string&) override {}
};

// The annotation question is answered from the options; anything else said is kept for
// the one line of the error.
class PrintUi : public HeadlessUi {
 public:
  MsgAnswer Message(const MessageRequest& r) override {
    if (r.buttons == MsgButtons::YesNoCancel) return annotate ? MsgAnswer::Yes : MsgAnswer::No;
    return HeadlessUi::Message(r);
  }
  bool annotate = false;
};

bool EndsWithPdf(const std::string& s) {
  if (s.size() < 4) return false;
  std::string tail = s.substr(s.size() - 4);
  for (char& c : tail) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return tail == ".pdf";
}

std::optional<QPageSize> PaperOption(const Options& opts) {
  const std::string* paper = Find(opts, "--paper");
  if (!paper) return std::nullopt;
  if (*paper == "A4") return QPageSize(QPageSize::A4);
  if (*paper == "Letter") return QPageSize(QPageSize::Letter);
  throw CommandError{Say(CliText::PrintPaper, {*paper}), 2};
}

// Why the graph page (or the data table) of the record could not be printed.
std::string Why(int fault, bool graph, const std::string& record) {
  switch (fault) {
    case kFaultIllegalCall:
      return Say(graph ? CliText::DescriptionTooLongGraph : CliText::DescriptionTooLongData, {record});
    case kFaultPrinter: return Say(graph ? CliText::PrinterFailedGraph : CliText::PrinterFailedData, {record});
    default: return Say(graph ? CliText::CannotPrintGraph : CliText::CannotPrintData, {record, FaultWords(fault)});
  }
}

}  // namespace

int RunPrint(const Options& opts) {
  const std::string* positional = Find(opts, "");
  const std::string args = positional ? *positional : "";
  const std::size_t split = args.find('\n');
  const std::string kind = args.substr(0, split);
  const std::string record = split == std::string::npos ? "" : args.substr(split + 1);
  if ((kind != "graph" && kind != "data") || record.empty() || record.find('\n') != std::string::npos) {
    throw CommandError{Say(CliText::PrintKindAndRecord), 2};
  }
  const bool annotate = Find(opts, "--annotate") != nullptr;
  if (annotate && kind != "graph") throw CommandError{Say(CliText::PrintAnnotateGraphOnly), 2};
  const std::string* out = Find(opts, "--out");
  const std::string* printerName = Find(opts, "--printer");
  if ((out == nullptr) == (printerName == nullptr)) throw CommandError{Say(CliText::PrintOutOrPrinter), 2};
  if (out && !EndsWithPdf(*out)) throw CommandError{Say(CliText::PrintOutPdf), 2};
  const std::optional<QPageSize> paper = PaperOption(opts);

  const auto qapp = StartOffscreenGui();

  std::unique_ptr<QtPrinterSurface> printer;
  if (out) {
    printer = QtPrinterSurface::ToPdf(QString::fromStdString(*out), paper.value_or(QPageSize(QPageSize::A4)));
  } else {
    printer = QtPrinterSurface::ToPrinter(QString::fromStdString(*printerName), paper);
    if (!printer) throw CommandError{Say(CliText::NoSuchPrinter, {*printerName})};
  }

  PrintUi ui;
  ui.printMessages = false;
  ui.annotate = annotate;
  FixedClock clock(0);
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  const FilePlaces places = CommandPlaces(opts);
  Platform platform{ui, clock, timers, poster, transport, places};
  platform.printer = printer.get();
  App app(platform, Log1Hooks());
  ui.app = &app;

  StartCommandApp(app);
  const int before = ui.messageCount;
  Dispatch(app, [&app, &record] {
    app.s.files.OpenFileName = record;
    ReadRecordFile(app, record);
  });
  if (ui.messageCount != before || app.s.record.RecordFromFile != 1) {
    throw CommandError{
        Say(CliText::CannotReadWhy, {record, ui.lastMessage.empty() ? Say(CliText::NotARecordFile) : ui.lastMessage})};
  }
  UnseenSurface unseen;
  Dispatch(app, [&app, &unseen] { DrawGraph(app, unseen); });

  const int said = ui.messageCount;
  Dispatch(app, [&app, &kind] { kind == "graph" ? PrintGraph(app) : PrintData(app); });
  const bool graph = kind == "graph";
  if (ui.messageCount != said) {
    printer->Abandon();
    throw CommandError{Say(graph ? CliText::CannotPrintGraph : CliText::CannotPrintData, {record, ui.lastMessage})};
  }
  if (const int fault = app.s.printing.PrintFault) {
    printer->Abandon();
    throw CommandError{Why(fault, graph, record)};
  }
  try {
    printer->Close();  // a table that fills its last page leaves the job open
  } catch (const Fault&) {
    throw CommandError{Why(kFaultPrinter, graph, record)};
  }
  return 0;
}

}  // namespace quillet
