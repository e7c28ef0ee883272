// quillet-cli against the emulator over a pseudo-terminal, and decode from a logger's
// bytes: the records written, and how each command ends when its input is bad or the
// logger does not answer.
#include <QFileInfo>
#include <QRegularExpression>
#include <optional>

#include "ui/test_files.h"

namespace quillet::testing {
namespace {

TEST(CliDownload, At4800WritesTheRecordAndTheRawBytesWhichDecodeToTheSameValues) {
  QTemporaryDir dir;
  Sim sim(dir, {"--model", "17", "--baud", "4800", "--elapsed", "3h", "--signal", "steady", "--level", "20"});
  const QString rec = dir.path() + "/rec.txt", raw = dir.path() + "/raw", again = dir.path() + "/again.txt";
  const CliRun r = RunCli({"download", "--port", sim.link, "--baud", "4800", "--out", rec, "--raw", raw});
  EXPECT_TRUE(r.err.contains("logger #1234 (Temperature) at 4800 bit/s") && r.err.contains("downloading"))
      << r.err.toStdString();
  const QStringList lines = FileLines(rec);
  ASSERT_GT(lines.size(), 13);
  EXPECT_EQ(
      lines.mid(0, 3) << lines.mid(11, 2),
      (QStringList{"\"loggerfile\"", "\"rev02\"", QString::number(lines.size() - 13), "1234", "\"degC\""}));
  // A steady 20 degC reads 19.98 throughout.
  EXPECT_EQ(lines.filter(QRegularExpression("\t19.98$")).size(), lines.size() - 13);
  // Three hours fill a memory of 2048 slots several times: the whole memory comes.
  EXPECT_EQ(QFileInfo(raw + ".header.bin").size(), 22);
  EXPECT_EQ(QFileInfo(raw + ".block.bin").size(), 2048);
  const CliRun d = RunCli({"decode", "--header", raw + ".header.bin", "--block", raw + ".block.bin", "--now",
                           "2026-11-21 10:00:00", "--out", again});
  EXPECT_EQ(FileLines(again).mid(0, 13), lines.mid(0, 13)) << d.err.toStdString();
  EXPECT_EQ(FileLines(again).filter(QRegularExpression("\t19.98$")).size(), lines.size() - 13);
}

TEST(CliDownload, FindsA1200LoggerWhenStartedAt4800) {
  QTemporaryDir dir;
  Sim sim(dir, {"--model", "18", "--baud", "1200", "--elapsed", "120s", "--signal", "ramp"});
  const CliRun r =
      RunCli({"download", "--port", sim.link, "--baud", "4800", "--out", dir.path() + "/rec.txt"});
  EXPECT_TRUE(r.exitCode == 0 && r.err.contains("at 1200 bit/s")) << r.err.toStdString();
  const QStringList lines = FileLines(dir.path() + "/rec.txt");
  EXPECT_TRUE(lines.size() > 13 && lines[2].toInt() == lines.size() - 13);
}

TEST(CliDownload, EndsWhenNoLoggerAnswersAProbeIsMissingOrTheTimeLimitPassesMidBlock) {
  const struct {
    QStringList sim;  // empty: no emulator, and no device
    QStringList options;
    const char* words;
    bool progress = false;  // the block had begun coming: progress lines come first
  } cases[] = {
      {{"--silent-after", "0s", "--silent-for", "1h"}, {"--timeout", "2"}, "no logger answered"},
      {{"--model", "16", "--baud", "1200"}, {}, "no probe chosen"},
      // A block of about 30 s at 1200 bit/s; the logger falls silent 8 s after its start.
      {{"--model", "17", "--baud", "1200", "--elapsed", "30h", "--silent-after", "8s", "--silent-for", "1h"},
       {"--timeout", "12"},
       "did not complete within",
       true},
      {{}, {}, "cannot open"},
  };
  for (const auto& c : cases) {
    QTemporaryDir dir;
    std::optional<Sim> sim;
    if (!c.sim.isEmpty()) sim.emplace(dir, c.sim);
    const QString rec = dir.path() + "/rec.txt";
    const CliRun r = RunCli(QStringList{"download", "--port", dir.path() + "/tty", "--out", rec} + c.options);
    ExpectRefusal(r, rec, c.words, c.progress);
    EXPECT_LT(r.seconds, 16);
  }
}

TEST(CliLive, PrintsOneLinePerReadingWithTheValueATabAndTheUnitUntilItsCountOrTimeLimit) {
  QTemporaryDir dir;
  Sim sim(dir, {"--model", "18", "--baud", "4800", "--signal", "steady", "--level", "12.5"});
  const CliRun two = RunCli({"live", "--port", sim.link, "--count", "2"});
  EXPECT_EQ(two.exitCode, 0) << two.err.toStdString();
  const QRegularExpression line(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d 12\.50\tV rms$)");
  EXPECT_EQ(two.out.split('\n', Qt::SkipEmptyParts).filter(line).size(), 2) << two.out.toStdString();
  EXPECT_EQ(two.out.count('\n'), 2);
  const CliRun timed = RunCli({"live", "--port", sim.link, "--baud", "4800", "--timeout", "10"});
  EXPECT_EQ(timed.exitCode, 0) << timed.err.toStdString();
  EXPECT_TRUE(timed.err.contains("live: stopped after 10 s") && timed.out.contains("12.50\tV rms"));
  const CliRun many =
      RunCli({"live", "--port", sim.link, "--baud", "4800", "--timeout", "10", "--count", "1000"});
  EXPECT_EQ(many.exitCode, 1);
  EXPECT_TRUE(many.err.contains(" of 1000 readings came from ")) << many.err.toStdString();
}

TEST(CliLive, EndsWithOneLineWhenNoReadingComesOrTheDeviceIsMissing) {
  QTemporaryDir dir;
  Sim silent(dir, {"--silent-after", "0s", "--silent-for", "1h"});
  const CliRun r = RunCli({"live", "--port", silent.link, "--timeout", "2"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.err, "quillet-cli: live: no reading came from " + silent.link + " within 2 s\n");
  EXPECT_LT(r.seconds, 6);
  const CliRun none = RunCli({"live", "--port", "/nonexistent/tty", "--count", "1"});
  ExpectRefusal(none, dir.path() + "/none");
  EXPECT_TRUE(none.out.isEmpty());
}

TEST(CliDecode, WritesTheRecordOrEndsEveryFaultWithALineANonZeroExitAndNoFile) {
  QFile shipped(QUILLET_DATA_DIR "/probes.dat");
  ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
  const QByteArray probes = shipped.readAll(), ok = LoggerHeader(17, 100, 99),
                   probe = LoggerHeader(16, 9830, 9);
  const char* noon = "2026-11-21 12:00:00";
  const struct {
    const char* name;
    QByteArray header;
    int blockBytes;
    std::optional<QByteArray> probes;  // none: no --probes; empty: a file that is not there
    const char* now;
    int exitCode;  // 0: the record is written, of this many samples
    const char* words;
    const char* samples = nullptr;
  } cases[] = {
      {"a header a byte short", ok.left(21), 40, {}, noon, 1, "21 bytes"},
      // A day on the largest memory: far past 16384.
      {"more samples than a record holds",
       LoggerHeader(17, 98304, 40000, 5),
       40,
       {},
       noon,
       1,
       "at most 16384"},
      {"a block shorter than its samples", ok, 40, {}, noon, 1, "past the end of the block"},
      {"no header file", {}, 40, {}, noon, 1, "cannot read"},
      {"a time that is no time", ok, 40, {}, "tomorrow", 2, "--now"},
      {"no probes file", probe, 12, QByteArray(), noon, 1, "Probes.dat is missing."},
      {"a cut probes file", probe, 12, probes.left(probes.size() / 3), noon, 1, "Probes.dat is missing."},
      {"a factor that is no number", probe, 12, QByteArray(probes).replace("\"A rms\",10", "\"A rms\",ten"),
       noon, 0, "has a probe factor that is not a number", "10"},
      {"a header whose start lies before the calendar", LoggerHeader(17, 0x0FFFFFFF, 9), 12, probes,
       "0100-01-02 00:00:00", 1, "the logger's header in "},
      {"100 samples, not yet a half fill", ok, 100, {}, noon, 0, "", "100"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    QTemporaryDir dir;
    const QString h = dir.path() + "/h.bin", b = dir.path() + "/b.bin", p = dir.path() + "/probes.dat",
                  rec = dir.path() + "/rec.txt";
    if (!c.header.isEmpty()) WriteFile(h, c.header);
    WriteFile(b, QByteArray(c.blockBytes, '\x50'));
    if (c.probes && !c.probes->isEmpty()) WriteFile(p, *c.probes);
    const CliRun r = RunCli(QStringList{"decode", "--header", h, "--block", b, "--now", c.now, "--out", rec} +
                            (c.probes ? QStringList{"--probes", p} : QStringList{}));
    EXPECT_EQ(r.exitCode, c.exitCode) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(c.words)) << r.err.toStdString();
    // A fault's bare name never stands alone: the line says what was being done.
    EXPECT_FALSE(r.err.contains(QRegularExpression("^quillet-cli: [A-Za-z ]+\n$"))) << r.err.toStdString();
    if (c.exitCode != 0) ExpectRefusal(r, rec, c.words);
    // The serial number comes from the header.
    if (c.samples)
      EXPECT_EQ(FileLines(rec).mid(2, 1) << FileLines(rec).value(11), (QStringList{c.samples, "1337"}));
  }
}

}  // namespace
}  // namespace quillet::testing
