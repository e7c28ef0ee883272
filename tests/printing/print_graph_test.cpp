// The graph page as numbers: geometry on two page sizes, line widths and colours, the
// places that differ from the screen, the statistics and the annotation, the wrapping
// of the description, and every road to the ending.
#include "printing/print_graph.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "graph/zoom.h"
#include "printing/recording_printer.h"

namespace quillet {
namespace {

using testing::PrintApp;
using testing::RecordingPrinter;

const int kDarkRed = Rgb(128, 0, 0);

// Ten samples at 20.0 a minute apart: axis 15 to 26 in 11 steps, labels every two
// minutes over ten grid intervals.
void FillFlat(PrintApp& t, const std::string& title = "Cellar") {
  t.FillMinutes(std::vector<double>(10, 20.0));
  t.s().record.LoggerNumber = 42;
  t.s().record.RecordTitle = title;
  t.s().record.RecordUnitText = "degC";
  t.s().record.RecordIdent = "North wall";
  t.s().record.RecordLocation = "Cellar 2";
  t.s().record.RecordRemarks = "Door left open at noon, closed ten minutes later.";
  t.Draw();
}

TEST(PrintGraph, ThePageIsLaidOutInThePrintersProportionsOnAnyPageSize) {
  struct Page {
    double w, h;
  };
  for (const Page page : {Page{1000, 2000}, Page{2000, 1000}}) {
    SCOPED_TRACE(std::to_string(page.w) + "x" + std::to_string(page.h));
    PrintApp t(page.w, page.h);
    FillFlat(t);
    t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
    t.Run(PrintGraph);
    const RecordingPrinter& p = t.printer;
    const double left = 0.2 * page.w, width = 0.7 * page.w, top = 0.1 * page.h, height = 0.6 * width;
    const double b = top + height, rt = left + width, runOn = 0.025 * height;

    const auto lines = p.Lines(kDefaultColor);
    ASSERT_EQ(lines.size(), 4u + 9u + 10u);
    const double frame[4][4] = {{left, top, left, b + runOn}, {left, b, rt, b}, {rt, b + runOn, rt, top},
                                {rt, top, left, top}};
    for (int i = 0; i < 4; ++i) {
      EXPECT_NEAR(lines[i].x1, frame[i][0], 1e-9);
      EXPECT_NEAR(lines[i].y1, frame[i][1], 1e-9);
      EXPECT_NEAR(lines[i].x2, frame[i][2], 1e-9);
      EXPECT_NEAR(lines[i].y2, frame[i][3], 1e-9);
      EXPECT_EQ(lines[i].width, 4);
    }
    for (std::size_t i = 4; i < lines.size(); ++i) EXPECT_EQ(lines[i].width, 1) << "grid line " << i;
    EXPECT_NEAR(lines[4].y2, b, 1e-9);  // a grid line between two labels stops at the edge
    EXPECT_NEAR(lines[5].x1, left + 2 * width / 10, 1e-9);
    EXPECT_NEAR(lines[5].y2, b + runOn, 1e-9);
    EXPECT_NEAR(lines[13].y1, b - height / 11, 1e-9);

    const auto trace = p.Lines(kDarkRed);
    ASSERT_EQ(trace.size(), 9u);
    EXPECT_EQ(trace[0].width, 4);
    EXPECT_NEAR(trace[0].x1, left, 1e-9);
    EXPECT_NEAR(trace[0].y1, b - height * 5 / 11, 1e-9);
    EXPECT_EQ(p.width, 1);  // thin again at the end

    const auto texts = p.Texts();
    ASSERT_EQ(texts.size(), 6u + 12u + 1u + 6u);
    EXPECT_NEAR(texts[0].x1, left - 0.04 * width, 1e-9);  // time labels: 0.04 plot widths left
    EXPECT_NEAR(texts[0].y1, b + 0.06 * height, 1e-9);
    EXPECT_EQ(texts[0].text, "12:00");
    EXPECT_EQ(texts[0].font, "Arial 10");
    EXPECT_NEAR(texts[6].x1, 0.72 * left, 1e-9);  // value labels at 0.72 plot left
    EXPECT_NEAR(texts[6].y1, b - 0.02 * height, 1e-9);
    EXPECT_EQ(texts[6].text, "15");
    EXPECT_NEAR(texts[18].x1, 0.45 * left, 1e-9);  // the unit
    EXPECT_NEAR(texts[18].y1, 0.5 * height + top, 1e-9);
    EXPECT_EQ(texts[18].text, "degC");
    const double c = left + 0.5 * width;
    const double stats[6][2] = {{left, b + 0.065 * page.h}, {c, b + 0.065 * page.h}, {left, b + 0.085 * page.h},
                                {c, b + 0.085 * page.h},    {left, b + 0.105 * page.h}, {c, b + 0.105 * page.h}};
    for (int i = 0; i < 6; ++i) {
      EXPECT_NEAR(texts[19 + i].x1, stats[i][0], 1e-9) << i;
      EXPECT_NEAR(texts[19 + i].y1, stats[i][1], 1e-9) << i;
    }

    const auto title = p.TextLines();
    ASSERT_EQ(title.size(), 1u);
    EXPECT_EQ(title[0].text, "Cellar");
    EXPECT_EQ(title[0].font, "Arial 14 bold");
    EXPECT_NEAR(title[0].x1, left, 1e-9);
    EXPECT_NEAR(title[0].y1, 0.6 * top, 1e-9);
    EXPECT_EQ(p.endDocs, 1);
  }
}

TEST(PrintGraph, NoPrintsTheStatisticsBlockAndEndsThere) {
  PrintApp t;
  FillFlat(t);
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::No; };
  t.Run(PrintGraph);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en82");
  EXPECT_EQ(t.ui.messages[0].title, "en150");
  EXPECT_EQ(t.ui.messages[0].buttons, MsgButtons::YesNoCancel);
  EXPECT_EQ(t.ui.messages[0].icon, MsgIcon::Question);
  EXPECT_EQ(t.printer.titles, std::vector<std::string>{"en83"});
  std::vector<std::string> block;
  for (const auto& c : t.printer.calls) {
    if (c.op != "line") block.push_back(c.text);
  }
  // The last seven calls: the title and the block, each string and its value run together.
  ASSERT_GE(block.size(), 7u);
  EXPECT_EQ(std::vector<std::string>(block.end() - 7, block.end()),
            (std::vector<std::string>{"Cellar", "en5821/11/26 12:00:00", "en14520.0", "en14642", "en14720.0",
                                      "en14910", "en14820.0"}));
  EXPECT_EQ(t.printer.endDocs, 1);
}

TEST(PrintGraph, YesAddsIdentLocationAndTheWrappedDescription) {
  PrintApp t;
  FillFlat(t);
  t.s().record.RecordRemarks =
      "The probe sat on the north wall of the cellar, behind the racks, out of the draught.";
  t.Run(PrintGraph);  // the first button: Yes
  const double left = 200, b = 200 + 420, c = 550;
  const auto texts = t.printer.Texts();
  ASSERT_EQ(texts.size(), 27u);
  EXPECT_EQ(texts[25].text, "North wall");
  EXPECT_NEAR(texts[25].x1, left, 1e-9);
  EXPECT_NEAR(texts[25].y1, b + 0.15 * 2000, 1e-9);
  EXPECT_EQ(texts[26].text, "Cellar 2");
  EXPECT_NEAR(texts[26].x1, c, 1e-9);
  const auto lines = t.printer.TextLines();
  ASSERT_EQ(lines.size(), 3u);  // the title, then two lines of description
  EXPECT_EQ(lines[1].text, "The probe sat on the north wall of the cellar, ");
  EXPECT_EQ(lines[2].text, "behind the racks, out of the draught");
  for (int i = 1; i <= 2; ++i) {
    EXPECT_NEAR(lines[i].x1, left, 1e-9);
    EXPECT_NEAR(lines[i].y1, b + 0.17 * 2000 + 200 * (i - 1), 1e-9);
    EXPECT_EQ(lines[i].font, "Arial 10");
  }
  EXPECT_EQ(t.printer.endDocs, 1);
}

TEST(PrintGraph, AnEmptyTitleIsPrintedEmptyAndNothingElseMoves) {
  PrintApp titled, untitled;
  FillFlat(titled);
  FillFlat(untitled, "");
  titled.Run(PrintGraph);
  untitled.Run(PrintGraph);
  const auto& a = titled.printer.calls;
  const auto& b = untitled.printer.calls;
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].x1, b[i].x1);
    EXPECT_EQ(a[i].y1, b[i].y1);
    EXPECT_EQ(a[i].text == "Cellar" ? "" : a[i].text, b[i].text);
  }
}

TEST(PrintGraph, AZoomedGraphPrintsTheZoomedPartOnTheAxesOfTheScreen) {
  PrintApp t;
  std::vector<double> values;
  for (int i = 0; i <= 100; ++i) values.push_back(i % 2 ? 90.0 : 10.0);
  t.FillMinutes(values);
  t.Draw();
  // Minutes 20 to 60, values 30 to 80: every segment runs out at the top and the bottom.
  const GraphState& g = t.g();
  auto x = [&g](double minute) {
    return 150 + (testing::kNoon + minute / 1440 - g.AxisTimeStart) / (g.AxisTimeEnd - g.AxisTimeStart) * 750;
  };
  auto y = [&g](double v) { return 850 - (v - g.YAxisBottom) / (g.YAxisTop - g.YAxisBottom) * 700; };
  const double x1 = x(20), y1 = y(30), x2 = x(60), y2 = y(80);
  Dispatch(*t.app, [&] {
    GraphMouseDown(*t.app, x1, y1);
    GraphMouseMove(*t.app, 1, x2, y2);
    GraphMouseUp(*t.app, x2, y2);
  });
  t.Draw();
  ASSERT_EQ(t.g().GraphZoomed, 1);
  ASSERT_EQ(t.s().record.RecordSampleCount, 41);
  t.Run(PrintGraph);
  std::vector<std::string> timeLabels, valueLabels;
  const auto texts = t.printer.Texts();
  const std::size_t nTime = t.g().timeLabels.size(), nValue = t.g().valueLabels.size();
  ASSERT_GE(texts.size(), nTime + nValue);
  for (std::size_t i = 0; i < nTime; ++i) timeLabels.push_back(texts[i].text);
  for (std::size_t i = 0; i < nValue; ++i) valueLabels.push_back(texts[nTime + i].text);
  EXPECT_EQ(timeLabels, t.g().timeLabels);
  EXPECT_EQ(valueLabels, t.g().valueLabels);
  const auto trace = t.printer.Lines(kDarkRed);
  EXPECT_EQ(trace.size(), t.surface.LinesIn(Rgb(255, 0, 0)).size());
  ASSERT_EQ(trace.size(), 40u);
  const double top = 200, bottom = 620;
  for (const auto& seg : trace) {
    EXPECT_TRUE((seg.y1 == top && seg.y2 == bottom) || (seg.y1 == bottom && seg.y2 == top));
  }
}

// The views a user sees while the dialog is up and after the printout.
struct Seen {
  bool busy, fileEnabled, funcVisible, scaleVisible, noticeVisible;
};
Seen Look(const Log1View& w) {
  return {w.busy, w.mnuFile.enabled, w.mnuFunc.visible, w.mnuScale.visible, w.Label15.visible};
}

TEST(PrintGraph, EveryRoadEndsWithTheMenusBackAndTheFunctionMenusHidden) {
  struct Road {
    const char* name;
    int dialogFault;
    long failAtCall;
    std::string remarks;
    int fault, endDocs;
    std::size_t calls;
  };
  const std::string run(120, 'x');
  const Road roads[] = {
      {"printed", 0, 0, "short", 0, 1, 61},
      {"cancel in the printer dialog", kFaultCancel, 0, "short", kFaultCancel, 0, 0},
      {"the printer fails mid-page", 0, 10, "short", kFaultPrinter, 0, 9},
      {"a long run in the description", 0, 0, "ok " + run, kFaultIllegalCall, 0, 61},
  };
  for (const Road& road : roads) {
    SCOPED_TRACE(road.name);
    PrintApp t;
    FillFlat(t);
    t.s().logger.ModelCode = 16;  // a model with the function menu
    t.Draw();
    t.w().mnuScale.visible = true;
    ASSERT_TRUE(t.w().mnuFunc.visible && t.w().mnuScale.visible);
    t.s().record.RecordRemarks = road.remarks;
    t.printer.dialogFault = road.dialogFault;
    t.printer.failAtCall = road.failAtCall;
    std::vector<Seen> atDialog;
    std::string notice;
    int noticeColour = 0;
    t.printer.spy = [&](const std::string& op) {
      if (op == "dialog") atDialog.push_back(Look(t.w()));
      if (op != "dialog" && notice.empty()) {
        notice = t.w().Label15.caption;
        noticeColour = t.w().Label15.foreColor;
      }
    };
    t.Run(PrintGraph);
    ASSERT_EQ(atDialog.size(), 1u);
    EXPECT_TRUE(atDialog[0].busy);
    EXPECT_FALSE(atDialog[0].fileEnabled || atDialog[0].funcVisible || atDialog[0].scaleVisible);
    if (road.calls > 0) {
      EXPECT_EQ(notice, "en84");
      EXPECT_EQ(noticeColour, Rgb(0, 192, 192));
    }
    EXPECT_EQ(t.s().printing.PrintFault, road.fault);
    EXPECT_EQ(t.printer.endDocs, road.endDocs);
    EXPECT_EQ(t.printer.calls.size(), road.calls);
    const Seen after = Look(t.w());
    EXPECT_FALSE(after.busy || after.noticeVisible || after.funcVisible || after.scaleVisible);
    EXPECT_TRUE(after.fileEnabled && t.w().mnuPort.enabled && t.w().mnuHelp.enabled);
  }
}

TEST(PrintGraph, WithoutARecordOrWithCancelAtTheQuestionNothingIsPrinted) {
  PrintApp none, cancelled;
  FillFlat(cancelled);
  none.s().link.DownloadPercent = 50;
  cancelled.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  none.Run(PrintGraph);
  cancelled.Run(PrintGraph);
  ASSERT_EQ(none.ui.messages.size(), 1u);
  EXPECT_EQ(none.ui.messages[0].text, "No Graph to Print.  Download First");
  EXPECT_EQ(none.ui.messages[0].title, "en54");
  EXPECT_EQ(none.ui.messages[0].icon, MsgIcon::Information);
  for (PrintApp* t : {&none, &cancelled}) {
    EXPECT_TRUE(t->printer.titles.empty());
    EXPECT_TRUE(t->printer.calls.empty());
    EXPECT_TRUE(t->w().mnuFile.enabled);
  }
}

TEST(PrintGraph, WithNoPrinterOnTheSystemThePrintoutEndsAtOnce) {
  PrintApp t;
  FillFlat(t);
  t.platform->printer = nullptr;
  t.Run(PrintGraph);
  EXPECT_EQ(t.s().printing.PrintFault, kFaultPrinter);
  EXPECT_FALSE(t.w().busy);
}

std::vector<std::string> Wrap(const std::string& text, int* fault = nullptr) {
  RecordingPrinter p;
  p.MoveTo(0, 1000);
  try {
    WrapDescription(p, text, 70);
  } catch (const Fault& f) {
    if (fault) *fault = f.number();
  }
  std::vector<std::string> out;
  for (const auto& c : p.TextLines()) {
    EXPECT_EQ(c.x1, 70);
    EXPECT_EQ(c.y1, 1000 + 200 * static_cast<double>(out.size()));
    out.push_back(c.text);
  }
  return out;
}

TEST(WrapDescription, BreaksOnBlanksWithRightEndsOnTheGridOfFifty) {
  std::string s120;
  for (int i = 0; i < 24; ++i) s120 += "abcd ";
  s120 = s120.substr(0, 119) + "Z";
  ASSERT_EQ(s120.size(), 120u);
  const std::string a44(44, 'a'), b10(10, 'b'), a48(48, 'a'), a49(49, 'a');
  struct Case {
    std::string text;
    std::vector<std::string> lines;
    int fault;
  };
  const Case cases[] = {
      // The last line stops one character short: the Z is never printed.
      {s120, {s120.substr(0, 45), s120.substr(45, 50), s120.substr(95, 24)}, 0},
      {"x", {}, 0},
      {"", {}, 0},
      // Trailing blanks stay on each line; the last character is lost even when a blank.
      {a44 + "      " + b10, {a44 + "     ", " " + std::string(9, 'b')}, 0},
      {"hello world   ", {"hello world  "}, 0},
      // Multi-byte characters count once.
      {"caf\xc3\xa9 au lait", {"caf\xc3\xa9 au lai"}, 0},
      // 48 characters without a blank still break; 49 cannot.
      {a48 + " " + b10 + " " + std::string(50, 'c'), {a48 + " ", b10 + " ", std::string(49, 'c')}, 0},
      {a49 + " " + b10, {}, kFaultIllegalCall},
      {"hello " + std::string(100, 'b'), {"hello "}, kFaultIllegalCall},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    int fault = 0;
    EXPECT_EQ(Wrap(c.text, &fault), c.lines);
    EXPECT_EQ(fault, c.fault);
  }
}

}  // namespace
}  // namespace quillet
