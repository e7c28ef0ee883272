// Printouts as numbers (a reference page holds the layout): the data table's lines, the graph
// page's statistics and annotation, the wrapping of the description, and every road to the end.
#include <gtest/gtest.h>

#include "graph/annotation.h"
#include "printing/print_data.h"
#include "printing/print_graph.h"
#include "printing/recording_printer.h"

namespace quillet {
namespace {

using testing::ExpectNear;
using testing::PrintApp;
using Strings = std::vector<std::string>;
const int kDarkRed = Rgb(128, 0, 0);

// n samples a minute apart from noon valued by their number, printed as plain numbers.
void FillNumbered(PrintApp& t, int n) {
  std::vector<double> values;
  for (int i = 1; i <= n; ++i) values.push_back(i);
  t.FillMinutes(values);
  t.s().record.RecordUnitText = "degC";
  t.s().record.RecordTitle = "Cellar";
  t.s().record.RecordModelCode = 12;
}

// Ten samples at 20.0 a minute apart, drawn: axis 15 to 26 in 11 steps, labels every two
// minutes over ten grid intervals.
void FillFlat(PrintApp& t) {
  t.FillMinutes(std::vector<double>(10, 20.0));
  SampleRecord& r = t.s().record;
  r.LoggerNumber = 42;
  r.RecordTitle = "Cellar";
  r.RecordUnitText = "degC";
  r.RecordIdent = "North wall";
  r.RecordLocation = "Cellar 2";
  r.RecordRemarks = "The probe sat on the north wall of the cellar, behind the racks, out of the draught.";
  t.Draw();
}

TEST(PrintData, TheHeadingAndARowAreWrittenAsOneLineEachInTheRecordsNumberFormat) {
  PrintApp t;
  FillNumbered(t, 150);
  t.s().record.RecordModelCode = 28;
  t.Do(PrintData);
  EXPECT_TRUE(t.ui.modals.empty());  // an unzoomed graph never asks
  const auto lines = t.printer.Only("textline");
  ASSERT_EQ(lines.size(), 102u);
  EXPECT_EQ(lines[0].text, std::string(11, ' ') + "Cellar" + std::string(187, ' ') + "page  1 ");
  EXPECT_EQ(lines[2].text,
            std::string(33, ' ') + "21/11/26 12:00:00  1.00 degC     21/11/26 13:40:00  101.00 degC     ");
  EXPECT_EQ(lines[52].text, std::string(33, ' ') + "21/11/26 12:50:00  51.00 degC     ");
  // An empty line of six points under the heading.
  EXPECT_EQ(std::tuple(lines[1].text, lines[0].x1, lines[1].y1, lines[2].font),
            std::tuple("", 0, 120, "arial 6"));
  // A table longer than a page: five full columns, a new page, and the rest on page 2.
  PrintApp longer;
  FillNumbered(longer, 550);
  longer.Do(PrintData);
  const auto all = longer.printer.Only("textline");
  ASSERT_EQ(all.size(), 102u + 52u);
  EXPECT_NE(all[2].text.find("  401 degC"), std::string::npos) << all[2].text;
  EXPECT_NE(all[102].text.find("page  2 "), std::string::npos);
  EXPECT_EQ(all[102].y1, 0);  // the new page starts at its top
  EXPECT_EQ(all.back().text, std::string(33, ' ') + "21/11/26 21:09:00  550 degC     ");
  EXPECT_EQ(longer.printer.endDocs, 1);
  // The number format of each model: the codes without one print plain numbers.
  for (double code : {1.0, 11.0, 30.0}) EXPECT_EQ(DataValueFormat(code), "##0.0") << code;
  for (double code : {0.0, 7.5, 12.0}) EXPECT_EQ(DataValueFormat(code), "") << code;
  EXPECT_EQ(DataValueFormat(28) + "|" + DataValueFormat(31), "#0.00|###0.0");
}

TEST(PrintData, OnAZoomedGraphPrintOptChoosesTheWholeRecordOrTheShownPart) {
  for (auto [button, rows, first] : {std::tuple{&PrintOptEntireRecord, 100u, "12:00:00  1 degC"},
                                     {&PrintOptDisplayedOnly, 50u, "13:40:00  101 degC     \n"},
                                     {&PrintOptCancel, 0u, ""}}) {
    PrintApp t;  // 300 samples zoomed to samples 101 to 150
    FillNumbered(t, 300);
    SampleRecord& r = t.s().record;
    r.RecordSampleCount = 50;
    for (long i = 1; i <= 50; ++i)
      r.ShownTimes[i] = r.FullTimes[i + 100], r.ShownValues[i] = r.FullValues[i + 100];
    t.g().GraphZoomed = 1;
    t.ui.onModal = [&t, button = button](DialogId) {
      EXPECT_TRUE(t.app->v.PrintOpt.visible);
      button(*t.app);
      EXPECT_FALSE(t.app->v.PrintOpt.visible);
    };
    t.Do(PrintData);
    EXPECT_EQ(t.ui.modals, std::vector<DialogId>{DialogId::PrintOpt});
    const auto lines = t.printer.Only("textline");
    ASSERT_EQ(lines.size(), rows ? rows + 2 : 0u);
    if (rows) {
      EXPECT_NE((lines[2].text + "\n").find(first), std::string::npos) << lines[2].text;
    }
  }
}

TEST(PrintGraph, YesAddsIdentLocationAndTheDescriptionToTheStatisticsWhereNoLeavesThemOut) {
  for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
    PrintApp t;
    FillFlat(t);
    t.ui.answer = [answer](const MessageRequest&) { return answer; };
    t.Do(PrintGraph);
    const auto& p = t.printer;
    EXPECT_EQ(p.titles, Strings{"en83"});
    // A thick frame, thin grid lines and a thick dark red trace; thin again at the end.
    std::vector<int> widths;
    for (const auto& l : p.Only("line", kDefaultColor)) widths.push_back(l.width);
    EXPECT_EQ(widths,
              (std::vector<int>{4, 4, 4, 4, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
    const auto trace = p.Only("line", kDarkRed);
    EXPECT_EQ(trace.size() * 100 + trace.at(0).width * 10 + p.width, 941u);
    // Six labels of time, twelve of value, the unit and six statistics; with Yes the ident,
    // the location, and the description in two lines under the title.
    const auto texts = p.Only("text"), lines = p.Only("textline");
    const bool yes = answer == MsgAnswer::Yes;
    EXPECT_EQ(std::tuple(texts.size(), lines.size(), texts.at(24).text),
              std::tuple(yes ? 27u : 25u, yes ? 3u : 1u, "en14820.0"));
    if (yes) {
      EXPECT_EQ(texts[25].text + "|" + texts[26].text + "|" + lines[2].text,
                "North wall|Cellar 2|behind the racks, out of the draught");
    }
    EXPECT_EQ(p.endDocs, 1);
  }
}

TEST(PrintGraph, AZoomedGraphPrintsTheZoomedPartOnTheAxesOfTheScreen) {
  PrintApp t;
  std::vector<double> values;
  for (int i = 0; i <= 100; ++i) values.push_back(i % 2 ? 90.0 : 10.0);
  t.FillMinutes(values);
  t.Draw();
  // Minutes 20 to 60, values 30 to 80: every segment runs out at the top and the bottom.
  t.DragMinutes(20, 30, 60, 80);
  t.Draw();
  ASSERT_EQ(t.s().record.RecordSampleCount, 41);
  t.Do(PrintGraph);
  Strings labels = t.g().timeLabels, printed;  // the time labels, then the value labels
  labels.insert(labels.end(), t.g().valueLabels.begin(), t.g().valueLabels.end());
  for (const auto& text : t.printer.Only("text")) printed.push_back(text.text);
  printed.resize(labels.size());
  EXPECT_EQ(printed, labels);
  const auto trace = t.printer.Only("line", kDarkRed);
  ASSERT_EQ(trace.size(), 40u);
  for (const auto& seg : trace)
    EXPECT_EQ(std::min(seg.y1, seg.y2) * 1000 + std::max(seg.y1, seg.y2), 200 * 1000 + 620);
}

TEST(Printing, WithoutACompleteRecordOrWithCancelAtTheQuestionNothingIsPrintedOrCopied) {
  const auto info = MsgIcon::Information;
  for (auto [command, percent, text, icon] :
       {std::tuple{&PrintGraph, 50, "No Graph to Print.  Download First|en54", info},
        {&PrintData, 99, "No Data to Print.  Open or Download First|en54", info},
        {&PrintGraph, 100, "en82|en150", MsgIcon::Question},
        {&CopyGraphToClipboard, 40, "No Graph to Copy.  Download First|en54", info}}) {
    PrintApp t;
    FillFlat(t);
    t.s().link.DownloadPercent = percent;
    t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
    t.Do(command);
    ASSERT_EQ(t.ui.messages.size(), 1u);
    EXPECT_EQ(std::tuple(t.ui.messages[0].text + "|" + t.ui.messages[0].title, t.ui.messages[0].icon),
              std::tuple(text, icon));
    EXPECT_TRUE(t.printer.titles.empty() && t.printer.calls.empty() && t.w().mnuFile.enabled &&
                t.ui.clipboardCopies == 0);
  }
}

TEST(Printing, EveryRoadEndsWithTheMenusBackAndTheFunctionMenusHidden) {
  struct Road {
    const char* name;
    void (*command)(App&);
    int dialogFault, failAtCall;
    std::string remarks;
    int fault, endDocs;
    std::size_t calls;
  };
  const Road roads[] = {
      {"graph printed", PrintGraph, 0, 0, "short", 0, 1, 61},
      {"graph, the printer fails mid-page", PrintGraph, 0, 10, "short", kFaultPrinter, 0, 9},
      {"graph, a long run in the description", PrintGraph, 0, 0, "ok " + std::string(120, 'x'),
       kFaultIllegalCall, 0, 61},
      {"graph, no printer on the system", PrintGraph, -1, 0, "short", kFaultPrinter, 0, 0},
      {"data printed", PrintData, 0, 0, "", 0, 1, 12},
      {"data, the printer fails mid-page", PrintData, 0, 5, "", kFaultPrinter, 0, 4},
  };
  for (const Road& road : roads) {
    SCOPED_TRACE(road.name);
    PrintApp t;
    FillFlat(t);
    t.s().logger.ModelCode = 16;  // a model with the function menu
    t.Draw();
    t.w().mnuScale.visible = true;
    t.s().record.RecordRemarks = road.remarks;
    if (road.dialogFault < 0) t.platform->printer = nullptr;
    t.printer.dialogFault = std::max(road.dialogFault, 0);
    t.printer.failAtCall = road.failAtCall;
    bool busyAtDialog = false;
    std::string notice;
    t.printer.spy = [&](const std::string& op) {
      const Log1View& w = t.w();
      if (op == "dialog")
        busyAtDialog = w.busy && !w.mnuFile.enabled && !w.mnuFunc.visible && !w.mnuScale.visible;
      if (op != "dialog" && notice.empty()) notice = w.Label15.caption + std::to_string(w.Label15.foreColor);
    };
    t.Do(road.command);
    EXPECT_EQ(busyAtDialog, road.dialogFault >= 0);
    EXPECT_EQ(notice, road.calls ? "en84" + std::to_string(Rgb(0, 192, 192)) : "");
    EXPECT_EQ(std::tuple(t.s().printing.PrintFault, t.printer.endDocs, t.printer.calls.size()),
              std::tuple(road.fault, road.endDocs, road.calls));
    const Log1View& w = t.w();
    EXPECT_FALSE(w.busy || w.Label15.visible || w.mnuFunc.visible || w.mnuScale.visible);
    EXPECT_TRUE(w.mnuFile.enabled && w.mnuPort.enabled && w.mnuDownload.enabled);
  }
}

TEST(WrapDescription, BreaksOnBlanksWithRightEndsOnTheGridOfFifty) {
  std::string s120;
  for (int i = 0; i < 24; ++i) s120 += "abcd ";
  s120 = s120.substr(0, 119) + "Z";
  const std::string a44(44, 'a'), b10(10, 'b'), a48(48, 'a'), a49(49, 'a');
  const struct {
    std::string text;
    Strings lines;
    int fault;
  } cases[] = {
      // The last line stops one character short: the Z is never printed.
      {s120, {s120.substr(0, 45), s120.substr(45, 50), s120.substr(95, 24)}, 0},
      {"x", {}, 0},
      // Trailing blanks stay on each line; the last character is lost even when a blank.
      {a44 + "      " + b10, {a44 + "     ", " " + std::string(9, 'b')}, 0},
      {"hello world   ", {"hello world  "}, 0},
      {"caf\xc3\xa9 au lait", {"caf\xc3\xa9 au lai"}, 0},  // multi-byte characters count once
      // 48 characters without a blank still break; 49 cannot.
      {a48 + " " + b10 + " " + std::string(50, 'c'), {a48 + " ", b10 + " ", std::string(49, 'c')}, 0},
      {a49 + " " + b10, {}, kFaultIllegalCall},
      {"hello " + std::string(100, 'b'), {"hello "}, kFaultIllegalCall},
  };
  for (const auto& c : cases) {
    testing::RecordingPrinter p;
    p.MoveTo(0, 1000);
    EXPECT_EQ(testing::FaultOf([&] { WrapDescription(p, c.text, 70); }), c.fault) << c.text;
    Strings out;
    for (const auto& l : p.Only("textline")) {
      ExpectNear({l.x1, l.y1}, {70, 1000 + 200.0 * out.size()});
      out.push_back(l.text);
    }
    EXPECT_EQ(out, c.lines) << c.text;
  }
}

}  // namespace
}  // namespace quillet
