// quillet-cli render, print and profile: the pictures, pages and files they write, read
// back (pages with pdftotext, pdfinfo and pdftoppm), and their refusals.
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

#include "ui/test_files.h"

namespace quillet::testing {
namespace {

// Standard output of a poppler tool, or a null string when it is not installed.
QString Tool(const QString& program, const QStringList& args) {
  QProcess p;
  p.start(program, args);
  if (!p.waitForFinished(30000) || p.exitCode() != 0) return {};
  return QString::fromUtf8(p.readAllStandardOutput() + "\n");
}

const QString kReference = QUILLET_TEST_DATA_DIR "/reference_record.txt";

TEST(CliRender, ReportsTheScaleOfDataFromMinus3To7AndDrawsItsLabels) {
  QTemporaryDir dir;
  std::vector<double> values;
  for (int i = 0; i <= 60; ++i) values.push_back(-3 + 10.0 * i / 60);
  const CliRun r = RunCli(
      {"render", WriteRecord(dir.path() + "/ramp.txt", values), "--out", dir.path() + "/ramp.png", "--axes"});
  EXPECT_TRUE(r.exitCode == 0 && r.err.isEmpty()) << r.err.toStdString();
  const QStringList out = r.out.split('\n');
  // An hour of data from 10:00: a time label every quarter hour, the first at the axis start.
  for (const char* line : {"YShownMin=-3", "YShownMax=7", "YAxisBottom=-3", "YAxisTop=8", "ShownAvg=2",
                           "TimeTickSeconds=900", "value_label=-3", "time_label=10:00"})
    EXPECT_TRUE(out.contains(line)) << line;
  EXPECT_EQ(out.filter("value_label=").value(0), "value_label=-3");
  EXPECT_EQ("YTickCount=" + QString::number(out.filter("value_label=").size() - 1),
            out.filter("YTickCount=").value(0));
  EXPECT_EQ(QImage(dir.path() + "/ramp.png").size(), QSize(1200, 600));
}

TEST(CliRender, ThePictureOfTheReferenceRecordMatchesTheCheckedInOneAndItsPdfHasTheLabelsAsText) {
  QTemporaryDir dir;
  const QString png = dir.path() + "/graph.png", pdf = dir.path() + "/graph.pdf";
  ASSERT_EQ(RunCli({"render", kReference, "--out", png, "--size", "800x400"}).exitCode, 0);
  // Small differences in text smoothing are allowed; a moved line or label is not.
  EXPECT_LE(PixelsDiffering(png, QUILLET_TEST_DATA_DIR "/reference_graph.png"), 800 * 400 / 1000)
      << "the picture changed; if that is meant, run scripts/update-reference-picture.sh";
  ASSERT_EQ(RunCli({"render", kReference, "--out", pdf}).exitCode, 0);
  const QString words = Tool("pdftotext", {pdf, "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_TRUE(words.contains("Greenhouse 2") && words.contains("degC") && words.contains("7:30"))
      << words.toStdString();
}

TEST(CliPrint, TheGraphPageReadsBackWithItsStatisticsAndAnnotationAndLooksAsItDid) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/graph.pdf";
  ASSERT_EQ(RunCli({"print", "graph", kReference, "--out", out, "--annotate"}).exitCode, 0);
  const QString words = Tool("pdftotext", {"-layout", out, "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  for (const char* w : {"Greenhouse 2", "degC", "Points: 300", "Logger No: 1234", "Max: 27.7", "Min: 15.1",
                        "North bench", "Shed", "Sine with a step at noo"})
    EXPECT_TRUE(words.contains(w)) << w << " in\n" << words.toStdString();
  EXPECT_FALSE(words.contains("at noon"));  // the last character of a description is not printed
  // Drawn by pdftoppm at 40 dpi.
  ASSERT_FALSE(Tool("pdftoppm", {"-png", "-r", "40", "-singlefile", out, dir.path() + "/page"}).isNull());
  const QImage page(dir.path() + "/page.png");
  EXPECT_LE(PixelsDiffering(dir.path() + "/page.png", QUILLET_TEST_DATA_DIR "/reference_print_graph.png"),
            page.width() * page.height() / 500)
      << "the page changed; if that is meant, run scripts/update-print-reference.sh";
}

TEST(CliPrint, TheDataTableIsOneTextLinePerRowOnPagesOfFiveHundred) {
  QTemporaryDir dir;
  std::vector<double> values;
  for (int i = 0; i < 600; ++i) values.push_back(20 + i / 10.0);
  const QString six = dir.path() + "/six.pdf", five = dir.path() + "/five.pdf";
  const QByteArrayList description{"Cold store", "", "", "", "", "", ""};
  WriteRecord(dir.path() + "/six.txt", values, "degC", description);
  WriteRecord(dir.path() + "/five.txt", {values.begin(), values.begin() + 500}, "degC", description);
  ASSERT_EQ(RunCli({"print", "data", dir.path() + "/six.txt", "--out", six, "--paper", "Letter"}).exitCode,
            0);
  // A table that fills its last page exactly is sent when the printer closes.
  ASSERT_EQ(RunCli({"print", "data", dir.path() + "/five.txt", "--out", five}).exitCode, 0);
  const QString words = Tool("pdftotext", {"-layout", six, "-"}), info = Tool("pdfinfo", {six});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_TRUE(info.contains(QRegularExpression("Pages: +2\n")) && info.contains("612 x 792 pts (letter)"));
  EXPECT_TRUE(Tool("pdfinfo", {five}).contains(QRegularExpression("Pages: +1\n")));
  EXPECT_TRUE(words.contains(QRegularExpression("Cold store +page +2"))) << words.toStdString();
  // Row 1: samples 1, 101, 201, 301 and 401 side by side (pdftotext closes up the blanks).
  const QString row1 = words.split('\n').filter("21/11/26 10:00:00").value(0).simplified();
  EXPECT_TRUE(row1.startsWith("21/11/26 10:00:00 20.0 degC 21/11/26 11:40:00 30.0 degC") &&
              row1.endsWith("21/11/26 16:40:00 60.0 degC"))
      << row1.toStdString();
  EXPECT_TRUE(
      words.contains(QRegularExpression("21/11/26 19:59:00 +79.9 degC")));  // sample 600, alone on page 2
}

TEST(CliOutput, RenderAndPrintRefuseWhatTheyCannotDoWithOneLineAndNoFile) {
  QTemporaryDir dir;
  const QString png = dir.path() + "/x.png", pdf = dir.path() + "/x.pdf", none = dir.path() + "/missing.txt";
  const QString notes = dir.path() + "/notes.txt", tiny = WriteRecord(dir.path() + "/tiny.txt", {1, 2});
  WriteFile(notes, "shopping list\r\n");
  const QString run = WriteRecord(dir.path() + "/run.txt", {1, 2, 3}, "V",
                                  {"", "", "see " + QByteArray(120, 'x'), "", "", "", ""});
  const QStringList cases[] = {
      {"render", none, "--out", png},
      {"render", notes, "--out", png},
      {"render", tiny, "--out", png},
      {"render", tiny, "--out", dir.path() + "/x.gif"},
      {"render", kReference, "--out", png, "--size", "big"},
      {"print", "graph", none, "--out", pdf},
      {"print", "data", notes, "--out", pdf},
      {"print", "graph", run, "--printer", "No Such Printer 42"},
      {"print", "graph", run, "--out", pdf, "--annotate"},
      {"print", "data", run, "--out", pdf, "--paper", "A3"},
      {"print", "data", run, "--out", pdf, "--printer", "x"},
      {"print", "data", run, "--out", pdf, "--annotate"},
      {"print", "poster", run, "--out", pdf},
  };
  for (const QStringList& args : cases) {
    SCOPED_TRACE(args.join(' ').toStdString());
    ExpectRefusal(RunCli(args), png);
    EXPECT_EQ(QDir(dir.path()).entryList({"x.*", "*.pdf*"}, QDir::Files), QStringList{});
  }
  // Without --annotate the long run is never printed.
  EXPECT_EQ(RunCli({"print", "graph", run, "--out", pdf}).exitCode, 0);
}

TEST(ProfileCli, WrittenShownAndDecodedThroughTheTypedPoints) {
  QTemporaryDir dir;
  const QString p = dir.path() + "/sensor", rec = dir.path() + "/rec.txt";
  const QStringList write{"profile", "write", "--family", "custom", "--unit", "bar",
                          "--entry", "2=5",   "--entry",  "4=15",   "--out",  p};
  EXPECT_EQ(RunCli(write).exitCode, 0);
  EXPECT_EQ(RunCli(write).exitCode, 1);  // kept without --replace
  const QStringList lines = RunCli({"profile", "show", p + ".cus"}).out.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 16);
  EXPECT_EQ(lines.mid(0, 5) << lines[6] << lines[15],
            (QStringList{"family\tcustom", "unit\tbar", "points\t2", "invalid\t0", "knot\t0\t\t-5\t5",
                         "knot\t2\t5\t5\t5", "preview\t-5.\t45."}));
  // A model 32 header (plain range byte 1) and a block of counts 0, 7, 14, ...: the
  // profile maps a count N to N / 40 - 5.
  QByteArray block;
  for (int i = 0; i < 100; ++i) block.append(char(i * 7 % 256));
  WriteFile(dir.path() + "/h.bin", LoggerHeader(32, 100, 99, 0, 1));
  WriteFile(dir.path() + "/b.bin", block);
  auto decode = [&](const QString& profile) {
    return RunCli({"decode", "--header", dir.path() + "/h.bin", "--block", dir.path() + "/b.bin", "--now",
                   "2026-11-21 12:00:00", "--profile", profile, "--out", rec});
  };
  EXPECT_EQ(decode(p + ".cus").exitCode, 0);
  const QStringList recLines = FileLines(rec);
  ASSERT_EQ(recLines.size(), 113);
  EXPECT_EQ(recLines[12], "\"bar\"");
  for (int i = 0; i < 100; ++i)
    EXPECT_NEAR(recLines[13 + i].section('\t', 1).toDouble(), (i * 7 % 256) / 40.0 - 5, 1e-9) << i;
  QFile::remove(rec);
  WriteFile(dir.path() + "/flat.cus",
            "\"customfile\",\"rev01\",\"u\"\r\n\"1\"\r\n\"1\"\r\n" + QByteArray("\"\"\r\n").repeated(9));
  WriteFile(dir.path() + "/short.cus", "\"customfile\",\"rev01\",\"u\"\r\n\"1\"\r\n");
  for (const char* bad : {"/flat.cus", "/short.cus", "/none.cus"})
    ExpectRefusal(decode(dir.path() + bad), rec);
  ExpectRefusal(RunCli({"profile", "show", p + ".cus", "--family", "100mv"}), rec,
                "Not a valid 0-10 V profile");
  ExpectRefusal(RunCli({"profile", "write", "--family", "420", "--unit", "", "--entry", "5=--3", "--out", p}),
                p + ".420", "knot 5");
  const CliRun few =
      RunCli({"profile", "write", "--family", "420", "--unit", "", "--entry", "5=3", "--out", p});
  EXPECT_TRUE(few.err.contains("No data to save.  Enter some values.")) << few.err.toStdString();
  EXPECT_FALSE(QFile::exists(p + ".420"));
}

}  // namespace
}  // namespace quillet::testing
