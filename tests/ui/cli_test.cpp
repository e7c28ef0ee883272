// quillet-cli against the emulator over a pseudo-terminal and on files: the records, pictures,
// pages and profiles it writes, and how each command ends when its input is bad or the logger
// does not answer: a line in words on standard error, a non-zero exit (never a signal), no file.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QtEndian>
#include <optional>

#include "ui/window_program.h"

namespace quillet::testing {
namespace {

QStringList FileLines(const QString& path) {
  return QString(FileBytes(path)).split("\r\n", Qt::SkipEmptyParts);
}

// A one-byte logger's header: memory code, serial 1337, no marks, the tick count, the
// model, the sample counter and the range byte.
QByteArray LoggerHeader(int model, int ticks, int samples, int memoryCode = 0, int range = 0) {
  QByteArray h = QByteArray::fromHex("003905FFFFFFFFFFFFFFFF") + QByteArray(11, '\0');
  qToLittleEndian<qint32>(ticks, h.data() + 11);
  qToLittleEndian<qint16>(samples, h.data() + 17);
  h[0] = char(memoryCode), h[16] = char(model), h[21] = char(range);
  return h;
}

// The share of pixels whose colour moved further than text smoothing moves it (1: another size).
double PixelsMoved(const QString& got, const QString& want) {
  const QImage a = QImage(got).convertToFormat(QImage::Format_RGB32);
  const QImage b = QImage(want).convertToFormat(QImage::Format_RGB32);
  if (a.size() != b.size()) return 1;
  long moved = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      moved +=
          std::max({qAbs(qRed(p) - qRed(q)), qAbs(qGreen(p) - qGreen(q)), qAbs(qBlue(p) - qBlue(q))}) > 64;
    }
  return double(moved) / (a.width() * a.height());
}

// Standard output of a poppler tool, or a null string when it is not installed.
QString Tool(const QString& program, const QStringList& args) {
  QProcess p;
  p.start(program, args);
  return p.waitForFinished(30000) && !p.exitCode() ? QString(p.readAllStandardOutput() + "\n") : QString();
}

// A refusal: its words on the last line of standard error, the only line unless progress
// lines came first; a non-zero exit; and no file.
void ExpectRefusal(const CliRun& r, const QString& file, const QString& words = "", bool progress = false) {
  EXPECT_GT(r.exitCode, 0) << r.err.toStdString();  // -1: a signal or the time limit
  EXPECT_TRUE(progress || r.err.count('\n') == 1) << r.err.toStdString();
  EXPECT_TRUE(r.err.section('\n', -2).contains(words)) << r.err.toStdString();
  EXPECT_FALSE(QFile::exists(file)) << file.toStdString();
}

const QString kReference = QUILLET_TEST_DATA_DIR "/reference_record.txt";

using Cli = CliFolder;

TEST_F(Cli, DownloadAt4800WritesTheRecordAndRawBytesThatDecodeAlikeAndReportsInTheSettingsLanguage) {
  const QStringList logger =
      QString("--model 17 --baud 4800 --elapsed 3h --signal steady --level 20").split(' ');
  std::optional<EmulatorProcess> sim(std::in_place, tty, logger);
  const CliRun r = RunCli({"download", "--port", tty, "--baud", "4800", "--out", "rec.txt", "--raw", "raw"});
  EXPECT_TRUE(r.err.contains("logger #1234 (Temperature) at 4800 bit/s") && r.err.contains("downloading"))
      << r.err.toStdString();
  const QStringList lines = FileLines("rec.txt");
  ASSERT_GT(lines.size(), 13);
  EXPECT_EQ(
      lines.mid(0, 3) << lines.mid(11, 2),
      (QStringList{"\"loggerfile\"", "\"rev02\"", QString::number(lines.size() - 13), "1234", "\"degC\""}));
  // A steady 20 degC reads 19.98 throughout.
  EXPECT_EQ(lines.filter(QRegularExpression("\t19.98$")).size(), lines.size() - 13);
  // Three hours fill a memory of 2048 slots several times: the whole memory comes.
  EXPECT_EQ(QFileInfo("raw.header.bin").size() + QFileInfo("raw.block.bin").size(), 22 + 2048);
  RunCli({"decode", "--header", "raw.header.bin", "--block", "raw.block.bin", "--now", "2026-11-21 10:00:00",
          "--out", "again.txt"});
  EXPECT_EQ(FileLines("again.txt").mid(0, 13), lines.mid(0, 13));
  EXPECT_EQ(FileLines("again.txt").filter(QRegularExpression("\t19.98$")).size(), lines.size() - 13);
  // The same logger again with a settings file in German, then Polish: the lines in that language.
  sim.reset();
  sim.emplace(tty, logger);
  WriteFile("de.ini", SettingsText(2));
  WriteFile("pl.ini", SettingsText(8));
  const CliRun d =
      RunCli({"download", "--port", tty, "--baud", "4800", "--out", "de.txt", "--settings", "de.ini"});
  ASSERT_EQ(d.exitCode, 0) << d.err.toStdString();
  for (const char* line : {"quillet-cli: Logger Nr. 1234 (", ") mit 4800 bit/s, 1537 Messwerte, 2048 Byte\n",
                           "quillet-cli: Auslesen: ", "quillet-cli: Datenblock mit 2048 Byte in ",
                           "quillet-cli: de.txt geschrieben: 1537 Messwerte\n"})
    EXPECT_TRUE(d.err.contains(line)) << line << "\n" << d.err.toStdString();
  EXPECT_EQ(FileLines("de.txt").mid(0, 3), (QStringList{"\"loggerfile\"", "\"rev02\"", "1537"}));
  const CliRun live =
      RunCli({"live", "--port", tty, "--baud", "4800", "--timeout", "6", "--settings", "pl.ini"});
  EXPECT_TRUE(live.exitCode == 0 &&
              live.err.contains("quillet-cli: live: zatrzymano po 6 s, pokazane odczyty: ") &&
              live.out.contains(" 19.98\tdegC\n"))
      << (live.err + live.out).toStdString();
}

TEST_F(Cli, DownloadFindsA1200LoggerWhenStartedAt4800) {
  EmulatorProcess sim(tty, {"--model", "18", "--baud", "1200", "--elapsed", "120s", "--signal", "ramp"});
  const CliRun r = RunCli({"download", "--port", tty, "--baud", "4800", "--out", "rec.txt"});
  EXPECT_TRUE(r.exitCode == 0 && r.err.contains("at 1200 bit/s")) << r.err.toStdString();
  const QStringList lines = FileLines("rec.txt");
  EXPECT_TRUE(lines.size() > 13 && lines[2].toInt() == lines.size() - 13);
}

TEST_F(Cli, DownloadEndsWhenNoLoggerAnswersAProbeIsMissingOrTheTimeLimitPassesMidBlock) {
  const struct {
    QString sim, options, words;  // no emulator: no device
    bool progress = false;        // the block had begun coming: progress lines come first
  } cases[] = {
      {"--silent-after 0s --silent-for 1h", "--timeout 2", "no logger answered"},
      {"--model 16 --baud 1200", "", "no probe chosen"},
      // A block of about 30 s at 1200 bit/s; the logger falls silent 8 s after its start.
      {"--model 17 --baud 1200 --elapsed 30h --silent-after 8s --silent-for 1h", "--timeout 12",
       "did not complete within", true},
      {"", "", "cannot open"},
  };
  for (const auto& c : cases) {
    std::optional<EmulatorProcess> sim;
    if (!c.sim.isEmpty()) sim.emplace(tty, c.sim.split(' '));
    const CliRun r =
        RunCli(("download --port " + tty + " --out rec.txt " + c.options).split(' ', Qt::SkipEmptyParts));
    ExpectRefusal(r, "rec.txt", c.words, c.progress);
    EXPECT_LT(r.seconds, 16);
  }
}

TEST_F(Cli, LivePrintsOneLinePerReadingWithTheValueATabAndTheUnitUntilItsCountOrTimeLimit) {
  EmulatorProcess sim(tty, {"--model", "18", "--baud", "4800", "--signal", "steady", "--level", "12.5"});
  const CliRun two = RunCli({"live", "--port", tty, "--count", "2"});
  const QRegularExpression twoLines(R"(^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d 12\.50\tV rms\n){2}$)");
  EXPECT_TRUE(two.exitCode == 0 && two.out.contains(twoLines)) << (two.err + two.out).toStdString();
  const CliRun timed = RunCli({"live", "--port", tty, "--baud", "4800", "--timeout", "10"});
  EXPECT_TRUE(timed.exitCode == 0 && timed.err.contains("live: stopped after 10 s") &&
              timed.out.contains("12.50\tV rms"))
      << timed.err.toStdString();
  const CliRun many = RunCli({"live", "--port", tty, "--baud", "4800", "--timeout", "10", "--count", "1000"});
  EXPECT_TRUE(many.exitCode == 1 && many.err.contains(" of 1000 readings came from "))
      << many.err.toStdString();
}

TEST_F(Cli, LiveEndsWithOneLineWhenNoReadingComesOrTheDeviceIsMissing) {
  EmulatorProcess silent(tty, {"--silent-after", "0s", "--silent-for", "1h"});
  const CliRun r = RunCli({"live", "--port", tty, "--timeout", "2"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.err, "quillet-cli: live: no reading came from " + tty + " within 2 s\n");
  EXPECT_LT(r.seconds, 6);
  const CliRun none = RunCli({"live", "--port", "/nonexistent/tty", "--count", "1"});
  ExpectRefusal(none, "none");
  EXPECT_TRUE(none.out.isEmpty());
}

TEST_F(Cli, DecodeWritesTheRecordOrEndsEveryFaultWithALineANonZeroExitAndNoFile) {
  const QByteArray probes = FileBytes(QUILLET_DATA_DIR "/probes.dat"), ok = LoggerHeader(17, 100, 99),
                   probe = LoggerHeader(16, 9830, 9);
  const QString noon = "2026-11-21 12:00:00";
  const struct {
    QByteArray header;  // none: no header file
    int blockBytes;
    std::optional<QByteArray> probes;  // none: no --probes; empty: a file that is not there
    QString now;
    int exitCode;  // 0: the record is written
    const char* words;
  } cases[] = {
      {ok.left(21), 40, {}, noon, 1, "21 bytes"},
      // A day on the largest memory: far past 16384.
      {LoggerHeader(17, 98304, 40000, 5), 40, {}, noon, 1, "at most 16384"},
      {ok, 40, {}, noon, 1, "past the end of the block"},
      {{}, 40, {}, noon, 1, "cannot read"},
      {ok, 40, {}, "tomorrow", 2, "--now"},
      {probe, 12, QByteArray(), noon, 1, "Probes.dat is missing."},
      {probe, 12, probes.left(probes.size() / 3), noon, 1, "Probes.dat is missing."},
      {probe, 12, QByteArray(probes).replace("\"A rms\",10", "\"A rms\",ten"), noon, 0,
       "has a probe factor that is not a number"},
      {LoggerHeader(17, 0x0FFFFFFF, 9), 12, probes, "0100-01-02 00:00:00", 1, "the logger's header in "},
      {ok, 100, {}, noon, 0, ""},  // 100 samples, not yet a half fill
  };
  for (const auto& c : cases) {
    for (const char* file : {"h.bin", "probes.dat", "rec.txt"}) QFile::remove(file);
    if (!c.header.isEmpty()) WriteFile("h.bin", c.header);
    WriteFile("b.bin", QByteArray(c.blockBytes, '\x50'));
    if (c.probes && !c.probes->isEmpty()) WriteFile("probes.dat", *c.probes);
    const CliRun r = RunCli(QString("decode --header h.bin --block b.bin --out rec.txt --now").split(' ')
                            << c.now << (c.probes ? QStringList{"--probes", "probes.dat"} : QStringList{}));
    EXPECT_TRUE(r.exitCode == c.exitCode && r.err.contains(c.words)) << r.exitCode << r.err.toStdString();
    // A fault's bare name never stands alone: the line says what was being done.
    EXPECT_FALSE(r.err.contains(QRegularExpression("^quillet-cli: [A-Za-z ]+\n$"))) << r.err.toStdString();
    if (c.exitCode != 0) ExpectRefusal(r, "rec.txt", c.words);
  }
  // The last record: its samples, and the serial number from the header.
  EXPECT_EQ(FileLines("rec.txt").mid(2, 1) << FileLines("rec.txt").value(11), (QStringList{"100", "1337"}));
}

TEST_F(Cli, RenderDrawsTheReferencePictureReportsItsScaleAndWritesAPdfWithTheLabelsAsText) {
  const CliRun r = RunCli({"render", kReference, "--out", "graph.png", "--size", "800x400", "--axes"});
  EXPECT_TRUE(r.exitCode == 0 && r.err.isEmpty()) << r.err.toStdString();
  const QStringList out = r.out.split('\n'), labels = out.filter("value_label=");
  for (const char* line :
       {"YShownMin=15.11", "YShownMax=27.65", "YAxisBottom=14", "YAxisTop=28", "TimeTickSeconds=1800"})
    EXPECT_TRUE(out.contains(line)) << line;
  // The first label of each axis at its start, and one value label a tick.
  EXPECT_EQ(labels.value(0) + " " + out.filter("time_label=").value(0), "value_label=14 time_label=6:00");
  EXPECT_EQ(out.filter("YTickCount=").value(0), "YTickCount=" + QString::number(labels.size() - 1));
  // Small differences in text smoothing are allowed; a moved line or label is not.
  EXPECT_LE(PixelsMoved("graph.png", QUILLET_TEST_DATA_DIR "/reference_graph.png"), 0.001)
      << "the picture changed; if that is meant, run scripts/update-reference-picture.sh";
  ASSERT_EQ(RunCli({"render", kReference, "--out", "graph.pdf"}).exitCode, 0);
  const QString words = Tool("pdftotext", {"graph.pdf", "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_TRUE(words.contains("Greenhouse 2") && words.contains("degC") && words.contains("7:30"));
}

TEST_F(Cli, PrintedGraphPageReadsBackWithItsStatisticsAndAnnotationAndLooksAsItDid) {
  ASSERT_EQ(RunCli({"print", "graph", kReference, "--out", "graph.pdf", "--annotate"}).exitCode, 0);
  const QString words = Tool("pdftotext", {"-layout", "graph.pdf", "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  for (const char* w : {"Greenhouse 2", "degC", "Points: 300", "Logger No: 1234", "Max: 27.7", "Min: 15.1",
                        "North bench", "Shed", "Sine with a step at noo"})
    EXPECT_TRUE(words.contains(w)) << w << " in\n" << words.toStdString();
  EXPECT_FALSE(words.contains("at noon"));  // the last character of a description is not printed
  // Drawn by pdftoppm at 40 dpi.
  ASSERT_FALSE(Tool("pdftoppm", {"-png", "-r", "40", "-singlefile", "graph.pdf", "page"}).isNull());
  EXPECT_LE(PixelsMoved("page.png", QUILLET_TEST_DATA_DIR "/reference_print_graph.png"), 0.002)
      << "the page changed; if that is meant, run scripts/update-print-reference.sh";
}

TEST_F(Cli, RenderAndPrintRefuseWhatTheyCannotDoWithOneLineAndNoFileAndPrintTheRest) {
  // The reference record cut to two samples, and with a description line too long to print.
  QStringList tiny = FileLines(kReference).mid(0, 15);
  tiny[2] = "2";
  WriteFile("tiny.txt", (tiny.join("\r\n") + "\r\n").toLatin1());
  WriteFile("run.txt",
            FileBytes(kReference).replace("Sine with a step at noon", "see " + QByteArray(120, 'x')));
  WriteFile("notes.txt", "shopping list\r\n");
  QFile::copy(kReference, "ref.txt");
  for (const QString& args : QStringList{
           "render missing.txt --out x.png", "render notes.txt --out x.png", "render tiny.txt --out x.png",
           "render tiny.txt --out x.gif", "render ref.txt --out x.png --size big",
           "print graph missing.txt --out x.pdf", "print data notes.txt --out x.pdf",
           "print graph run.txt --printer NoSuchPrinter42", "print graph run.txt --out x.pdf --annotate",
           "print data run.txt --out x.pdf --paper A3", "print data run.txt --out x.pdf --printer x",
           "print data run.txt --out x.pdf --annotate", "print poster run.txt --out x.pdf"}) {
    ExpectRefusal(RunCli(args.split(' ')), "x.png");
    EXPECT_EQ(QDir().entryList({"x.*", "*.pdf*"}, QDir::Files), QStringList{}) << args.toStdString();
  }
  // Without --annotate the long line is never printed. The data table has a text line a row:
  // samples 1, 101 and 201 in the first, 100, 200 and 300 in the last.
  EXPECT_EQ(RunCli({"print", "graph", "run.txt", "--out", "x.pdf"}).exitCode, 0);
  EXPECT_EQ(RunCli(QString("print data ref.txt --out data.pdf --paper Letter").split(' ')).exitCode, 0);
  const QString words = Tool("pdftotext", {"-layout", "data.pdf", "-"}), info = Tool("pdfinfo", {"data.pdf"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_TRUE(info.contains(QRegularExpression("Pages: +1\n")) && info.contains("612 x 792 pts (letter)"));
  EXPECT_TRUE(
      words.contains(QRegularExpression("Greenhouse 2 +page 1\\s+21/11/26 06:00:00 20.0 degC +21/11/26 "
                                        "06:50:00 23.0 degC +21/11/26 07:40:00 18.2 degC\n")));
  EXPECT_TRUE(
      words.contains(QRegularExpression("\n +21/11/26 06:49:30 23.1 degC +21/11/26 07:39:30 18.2 degC +"
                                        "21/11/26 08:29:30 27.7 degC\\s*$")))
      << words.toStdString();
}

TEST_F(Cli, ProfileIsWrittenShownAndDecodedThroughTheTypedPoints) {
  auto write =
      QString("profile write --family custom --unit bar --entry 2=5 --entry 4=15 --out sensor").split(' ');
  EXPECT_EQ(RunCli(write).exitCode, 0);
  EXPECT_EQ(RunCli(write).exitCode, 1);  // kept without --replace
  const QStringList lines = RunCli({"profile", "show", "sensor.cus"}).out.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 16);
  EXPECT_EQ(lines.mid(0, 5) << lines[6] << lines[15],
            (QStringList{"family\tcustom", "unit\tbar", "points\t2", "invalid\t0", "knot\t0\t\t-5\t5",
                         "knot\t2\t5\t5\t5", "preview\t-5.\t45."}));
  // A model 32 header (plain range byte 1) and counts of 80: the profile maps a count N to N / 40 - 5.
  WriteFile("h.bin", LoggerHeader(32, 100, 99, 0, 1));
  WriteFile("b.bin", QByteArray(100, 80));
  auto decode = [](const QString& profile) {
    return RunCli(
        ("decode --header h.bin --block b.bin --out rec.txt --profile " + profile + " --now").split(' ')
        << "2026-11-21 12:00:00");
  };
  EXPECT_EQ(decode("sensor.cus").exitCode, 0);
  const QStringList rec = FileLines("rec.txt");
  EXPECT_EQ(rec.value(12) + " " + QString::number(rec.filter(QRegularExpression("\t-3$")).size()),
            "\"bar\" 100");
  QFile::remove("rec.txt");
  const QByteArray head = "\"customfile\",\"rev01\",\"u\"\r\n\"1\"\r\n";
  WriteFile("flat.cus", head + "\"1\"\r\n" + QByteArray("\"\"\r\n").repeated(9));
  WriteFile("short.cus", head);
  for (const char* bad : {"flat.cus", "short.cus", "none.cus"}) ExpectRefusal(decode(bad), "rec.txt");
  ExpectRefusal(RunCli({"profile", "show", "sensor.cus", "--family", "100mv"}), "rec.txt",
                "Not a valid 0-10 V profile");
  // An empty unit, and one entry.
  const QStringList write420 = QString("profile write --family 420 --unit  --out sensor --entry").split(' ');
  ExpectRefusal(RunCli(write420 + QStringList{"5=--3"}), "sensor.420", "knot 5");
  ExpectRefusal(RunCli(write420 + QStringList{"5=3"}), "sensor.420", "No data to save.  Enter some values.");
}

}  // namespace
}  // namespace quillet::testing
