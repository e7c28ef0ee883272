// How quillet-cli commands end when their input is bad or the logger does not answer:
// one road for each, a line in words on standard error, a non-zero exit (never a signal),
// and no file; and the time limits of live and download.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "ui/window_program.h"

namespace {

using quillet::testing::CliRun;
using quillet::testing::RunCli;

// The emulator on a pseudo-terminal in the test's folder.
struct Sim {
  Sim(const QTemporaryDir& dir, const QStringList& args) : link(dir.path() + "/tty"), process(link, args) {}
  const QString& device() const { return link; }
  QString link;
  quillet::testing::EmulatorProcess process;
};

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

// A one-byte logger's header: memory code 0, serial 1337, no marks, the tick count, the
// model and the sample counter.
QByteArray Header(int model, int ticks, int samples) {
  QByteArray h(22, '\0');
  h[1] = static_cast<char>(0x39);
  h[2] = static_cast<char>(0x05);
  for (int i = 3; i <= 10; ++i) h[i] = static_cast<char>(0xFF);
  h[11] = static_cast<char>(ticks & 0xFF);
  h[12] = static_cast<char>((ticks >> 8) & 0xFF);
  h[13] = static_cast<char>((ticks >> 16) & 0xFF);
  h[14] = static_cast<char>((ticks >> 24) & 0xFF);
  h[16] = static_cast<char>(model);
  h[17] = static_cast<char>(samples & 0xFF);
  h[18] = static_cast<char>((samples >> 8) & 0xFF);
  return h;
}

QByteArray ShippedProbes() {
  QFile f(QUILLET_DATA_DIR "/probes.dat");
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

TEST(CliEnding, DecodeEndsEveryFaultWithALineANonZeroExitAndNoFile) {
  struct Case {
    const char* name;
    QByteArray header;
    QByteArray probes;  // empty: no probes file at all
    const char* now;
    int exitCode;          // 0: the record is written
    const char* expected;  // in standard error
  };
  QByteArray cut = ShippedProbes();
  cut.truncate(cut.size() / 3);
  QByteArray badFactor = ShippedProbes();
  badFactor.replace("\"A rms\",10", "\"A rms\",ten");
  const Case cases[] = {
      {"no probes file", Header(16, 9830, 9), {}, "2026-11-21 12:00:00", 1, "Probes.dat is missing."},
      {"a cut probes file", Header(16, 9830, 9), cut, "2026-11-21 12:00:00", 1, "Probes.dat is missing."},
      {"a factor that is no number", Header(16, 9830, 9), badFactor, "2026-11-21 12:00:00", 0,
       "has a probe factor that is not a number"},
      {"a header whose start lies before the calendar", Header(17, 0x0FFFFFFF, 9), ShippedProbes(),
       "0100-01-02 00:00:00", 1, "the logger's header in "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QTemporaryDir dir;
    const QString h = dir.path() + "/h.bin", b = dir.path() + "/b.bin", p = dir.path() + "/probes.dat",
                  rec = dir.path() + "/rec.txt";
    WriteFile(h, c.header);
    WriteFile(b, QByteArray(12, '\x50'));
    if (!c.probes.isEmpty()) WriteFile(p, c.probes);
    const CliRun r = RunCli({"decode", "--header", h, "--block", b, "--now", c.now, "--probes", p, "--out", rec});
    EXPECT_EQ(r.exitCode, c.exitCode) << r.err.toStdString();
    EXPECT_TRUE(r.err.contains(c.expected)) << r.err.toStdString();
    EXPECT_EQ(QFile::exists(rec), c.exitCode == 0);
    if (c.exitCode != 0) {
      EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
      // A fault's bare name never stands alone: the line says what was being done.
      for (const char* bare : {"Overflow\n", "Division by zero\n", "Subscript out of range\n"}) {
        EXPECT_FALSE(r.err.startsWith(QString("quillet-cli: ") + bare)) << r.err.toStdString();
      }
    }
  }
}

TEST(CliEnding, LiveTimeoutEndsWithOneLine) {
  {
    QTemporaryDir dir;
    Sim silent(dir, {"--silent-after", "0s", "--silent-for", "1h"});
    const CliRun r = RunCli({"live", "--port", silent.device(), "--timeout", "2"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains("live: no reading came from " + silent.device() + " within 2 s")) << r.err.toStdString();
    EXPECT_LT(r.seconds, 6);
  }
  QTemporaryDir dir;
  Sim logger(dir, {"--model", "18", "--baud", "4800", "--signal", "steady", "--level", "12.5"});
  const CliRun r = RunCli({"live", "--port", logger.device(), "--baud", "4800", "--timeout", "10"});
  EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.err.contains("live: stopped after 10 s")) << r.err.toStdString();
  EXPECT_TRUE(r.out.contains("12.50\tV rms")) << r.out.toStdString();
  const CliRun many = RunCli({"live", "--port", logger.device(), "--baud", "4800", "--timeout", "10", "--count", "1000"});
  EXPECT_EQ(many.exitCode, 1);
  EXPECT_TRUE(many.err.contains(" of 1000 readings came from ")) << many.err.toStdString();
}

TEST(CliEnding, DownloadTimeoutLimitsTheWholeCommandEvenWhenTheLoggerGoesMidBlock) {
  QTemporaryDir dir;
  // A block of about 30 s at 1200 bit/s; the logger falls silent 8 s after its start.
  Sim vanishing(dir, {"--model", "17", "--baud", "1200", "--elapsed", "30h", "--silent-after", "8s",
                      "--silent-for", "1h"});
  const QString rec = dir.path() + "/rec.txt";
  const CliRun r = RunCli({"download", "--port", vanishing.device(), "--out", rec, "--timeout", "12"});
  EXPECT_NE(r.exitCode, 0);
  EXPECT_TRUE(r.err.contains("did not complete within")) << r.err.toStdString();
  EXPECT_LT(r.seconds, 16);
  EXPECT_FALSE(QFile::exists(rec));
}

}  // namespace
