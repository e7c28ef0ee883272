// The data table as numbers: rows, cells, pages and the end of the job for the sample
// counts around the page and column sizes, the value formats, the heading, PrintOpt on a
// zoomed graph, and the roads that print nothing.
#include "printing/print_data.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "printing/recording_printer.h"

namespace quillet {
namespace {

using testing::PrintApp;

int Cells(const std::string& row) {
  int n = 0;
  for (std::size_t at = row.find(" degC"); at != std::string::npos; at = row.find(" degC", at + 1)) ++n;
  return n;
}

// n samples a minute apart from noon, valued by their number.
void FillNumbered(PrintApp& t, int n) {
  std::vector<double> values;
  for (int i = 1; i <= n; ++i) values.push_back(i);
  t.FillMinutes(values);
  t.s().record.RecordUnitText = "degC";
  t.s().record.RecordTitle = "Cellar";
  t.s().record.RecordModelCode = 12;  // plain numbers
}

TEST(PrintData, FiveHundredSamplesToAPageInFiveColumnsOfAHundredRows) {
  struct Case {
    int samples;
    int pages;           // pages with output
    int lastPageRows;    // rows under the heading on the last page with output
    int firstRowCells;
    int endDocs;         // a table that fills its last page exactly leaves the job open
    int pageAtEnd;       // the page the printer stands on at the end
  };
  const Case cases[] = {
      {100, 1, 100, 1, 1, 1}, {101, 1, 100, 2, 1, 1}, {500, 1, 100, 5, 0, 2},
      {501, 2, 1, 5, 1, 2},   {1000, 2, 100, 5, 0, 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.samples);
    PrintApp t;
    FillNumbered(t, c.samples);
    t.Run(PrintData);
    EXPECT_EQ(t.printer.titles, std::vector<std::string>{"en79"});
    EXPECT_EQ(t.printer.endDocs, c.endDocs);
    EXPECT_EQ(t.printer.page, c.pageAtEnd);
    const auto lines = t.printer.TextLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().page, c.pages);
    int lastRows = 0;
    for (const auto& l : lines) {
      if (l.page == c.pages) ++lastRows;
      EXPECT_EQ(l.font, "arial 6");
    }
    EXPECT_EQ(lastRows - 2, c.lastPageRows);  // less the heading and the empty line
    EXPECT_EQ(Cells(lines[2].text), c.firstRowCells);
    // Every other row of the first page: one cell per full column under it.
    if (c.samples == 101) {
      EXPECT_EQ(Cells(lines[3].text), 1);
    }
    if (c.samples == 501) {
      EXPECT_EQ(Cells(lines.back().text), 1);
    }
    EXPECT_EQ(t.s().printing.PrintFault, 0);
    EXPECT_FALSE(t.w().busy);
  }
}

TEST(PrintData, TheHeadingAndARowAreWrittenAsOneLineEach) {
  PrintApp t;
  FillNumbered(t, 150);
  t.s().record.RecordModelCode = 28;
  t.Run(PrintData);
  const auto lines = t.printer.TextLines();
  ASSERT_EQ(lines.size(), 102u);
  EXPECT_EQ(lines[0].text, std::string(11, ' ') + "Cellar" + std::string(187, ' ') + "page  1 ");
  EXPECT_EQ(lines[1].text, "");
  EXPECT_EQ(lines[2].text, std::string(33, ' ') + "21/11/26 12:00:00  1.00 degC     " +
                               "21/11/26 13:40:00  101.00 degC     ");
  EXPECT_EQ(lines[52].text, std::string(33, ' ') + "21/11/26 12:50:00  51.00 degC     ");
  EXPECT_DOUBLE_EQ(lines[0].x1, 0);
  EXPECT_DOUBLE_EQ(lines[1].y1, 120);  // one line of six points further down
}

TEST(PrintData, TheValueFormatFollowsTheRecordsModelCode) {
  struct Case {
    double code;
    const char* cell;
  };
  const Case cases[] = {{1, "3.1"},   {7, "3.1"},   {11, "3.1"},     {30, "3.1"},     {28, "3.14"},
                        {31, "3.1"},  {0, "3.14159"}, {12, "3.14159"}, {29, "3.14159"}, {32, "3.14159"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code);
    PrintApp t;
    t.FillMinutes({3.14159, 3.14159, 3.14159});
    t.s().record.RecordUnitText = "V";
    t.s().record.RecordModelCode = c.code;
    t.Run(PrintData);
    const auto lines = t.printer.TextLines();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[2].text, std::string(33, ' ') + "21/11/26 12:00:00  " + c.cell + " V     ");
  }
}

// A record of 300 samples zoomed to samples 101 to 150; the user's button in PrintOpt.
struct ZoomedApp : PrintApp {
  explicit ZoomedApp(void (*button)(App&)) {
    FillNumbered(*this, 300);
    SampleRecord& r = s().record;
    r.RecordSampleCount = 50;
    for (long i = 1; i <= 50; ++i) {
      r.ShownTimes[i] = r.FullTimes[i + 100];
      r.ShownValues[i] = r.FullValues[i + 100];
    }
    g().GraphZoomed = 1;
    ui.onModal = [this, button](DialogId id) {
      modals.push_back(id);
      shownCaptions = {app->v.PrintOpt.caption, app->v.PrintOpt.Command1.caption, app->v.PrintOpt.Command2.caption,
                       app->v.PrintOpt.Command3.caption};
      EXPECT_TRUE(app->v.PrintOpt.visible);
      button(*app);
      EXPECT_FALSE(app->v.PrintOpt.visible);
    };
  }
  std::vector<DialogId> modals;
  std::vector<std::string> shownCaptions;
};

TEST(PrintData, OnAZoomedGraphPrintOptChoosesTheWholeRecordOrTheShownPart) {
  ZoomedApp whole(PrintOptEntireRecord), shown(PrintOptDisplayedOnly), cancelled(PrintOptCancel);
  for (ZoomedApp* t : {&whole, &shown, &cancelled}) {
    t->Run(PrintData);
    EXPECT_EQ(t->modals, std::vector<DialogId>{DialogId::PrintOpt});
    EXPECT_EQ(t->shownCaptions,
              (std::vector<std::string>{"Print Options", "Entire Record", "Displayed Graph Only", "Cancel"}));
  }
  const auto w = whole.printer.TextLines();
  ASSERT_EQ(w.size(), 102u);
  EXPECT_EQ(Cells(w[2].text), 3);
  EXPECT_NE(w[2].text.find("12:00:00  1 degC"), std::string::npos);
  const auto s = shown.printer.TextLines();
  ASSERT_EQ(s.size(), 52u);
  EXPECT_EQ(s[2].text, std::string(33, ' ') + "21/11/26 13:40:00  101 degC     ");
  EXPECT_TRUE(cancelled.printer.titles.empty());
  EXPECT_TRUE(cancelled.printer.calls.empty());
  EXPECT_FALSE(cancelled.w().busy);
  EXPECT_TRUE(cancelled.w().mnuFile.enabled);
}

TEST(PrintData, AnUnzoomedGraphNeverAsksAndPrintsTheWholeRecord) {
  PrintApp t;
  FillNumbered(t, 120);
  t.Run(PrintData);
  EXPECT_TRUE(t.ui.modals.empty());
  EXPECT_EQ(t.printer.TextLines().size(), 102u);
}

TEST(PrintData, CancelInThePrinterDialogOrAFailingPrinterGoesToTheEnding) {
  struct Road {
    int dialogFault;
    long failAtCall;
    std::size_t calls;
  };
  for (const Road road : {Road{kFaultCancel, 0, 0}, Road{kFaultPrinter, 0, 0}, Road{0, 40, 39}}) {
    SCOPED_TRACE(road.dialogFault);
    PrintApp t;
    FillNumbered(t, 600);
    t.s().logger.ModelCode = 16;
    t.Draw();
    bool busyAtDialog = false;
    t.printer.spy = [&](const std::string& op) {
      if (op == "dialog") busyAtDialog = t.w().busy && !t.w().mnuDownload.enabled && !t.w().mnuFunc.visible;
    };
    t.printer.dialogFault = road.dialogFault;
    t.printer.failAtCall = road.failAtCall;
    t.Run(PrintData);
    EXPECT_TRUE(busyAtDialog);
    EXPECT_EQ(t.printer.calls.size(), road.calls);
    EXPECT_EQ(t.printer.endDocs, 0);
    EXPECT_EQ(t.s().printing.PrintFault, road.dialogFault ? road.dialogFault : kFaultPrinter);
    EXPECT_FALSE(t.w().busy || t.w().Label15.visible || t.w().mnuFunc.visible);
    EXPECT_TRUE(t.w().mnuDownload.enabled && t.w().mnuDate.enabled && t.w().mnuSetTime.enabled);
  }
}

TEST(PrintData, WithoutACompleteRecordOnlyTheBoxIsShown) {
  PrintApp t;
  FillNumbered(t, 120);
  t.s().link.DownloadPercent = 99;
  t.Run(PrintData);
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "No Data to Print.  Open or Download First");
  EXPECT_EQ(t.ui.messages[0].title, "en54");
  EXPECT_TRUE(t.printer.titles.empty());
  EXPECT_TRUE(t.w().mnuFile.enabled);
}

}  // namespace
}  // namespace quillet
