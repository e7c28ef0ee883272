// quillet-cli download and decode: the record files they write, and their refusals.
#include <gtest/gtest.h>

#include "ui/window_program.h"

namespace {

using quillet::testing::CliRun;
using quillet::testing::RunCli;

// A logger emulator on a pseudo-terminal, reachable through a link in dir.
struct Sim : quillet::testing::EmulatorProcess {
  Sim(const QTemporaryDir& dir, const QStringList& args)
      : EmulatorProcess(dir.path() + "/tty", args), link(dir.path() + "/tty") {}
  const QString& device() const { return link; }
  QString link;
};

QStringList Lines(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return QString::fromLatin1(f.readAll()).split("\r\n", Qt::SkipEmptyParts);
}

QStringList ValueColumn(const QStringList& lines) {
  QStringList values;
  for (const QString& line : lines.mid(13)) values << line.section('\t', 1);
  return values;
}

TEST(CliDownload, At4800WritesTheRecordAndTheRawBytesWhichDecodeToTheSameValues) {
  QTemporaryDir dir;
  Sim sim(dir, {"--model", "17", "--baud", "4800", "--elapsed", "3h", "--signal", "steady", "--level", "20"});
  const QString rec = dir.path() + "/rec.txt", raw = dir.path() + "/raw";
  const CliRun r = RunCli({"download", "--port", sim.device(), "--baud", "4800", "--out", rec, "--raw", raw});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.err.contains("logger #1234 (Temperature) at 4800 bit/s")) << r.err.toStdString();
  EXPECT_TRUE(r.err.contains("downloading")) << r.err.toStdString();

  const QStringList lines = Lines(rec);
  ASSERT_GT(lines.size(), 13);
  EXPECT_EQ(lines[0], "\"loggerfile\"");
  EXPECT_EQ(lines[1], "\"rev02\"");
  EXPECT_EQ(lines[2].toInt(), lines.size() - 13);
  EXPECT_EQ(lines[11], "1234");
  EXPECT_EQ(lines[12], "\"degC\"");
  const QStringList values = ValueColumn(lines);
  EXPECT_EQ(values.count("19.98"), values.size()) << "a steady 20 degC reads 19.98 throughout";

  // Three hours fill a memory of 2048 slots several times: the whole memory comes.
  QFile header(raw + ".header.bin"), block(raw + ".block.bin");
  ASSERT_TRUE(header.open(QIODevice::ReadOnly) && block.open(QIODevice::ReadOnly));
  EXPECT_EQ(header.size(), 22);
  EXPECT_EQ(block.size(), 2048);

  const QString again = dir.path() + "/again.txt";
  const CliRun d = RunCli({"decode", "--header", raw + ".header.bin", "--block", raw + ".block.bin", "--now",
                           "2026-11-21 10:00:00", "--out", again});
  ASSERT_EQ(d.exitCode, 0) << d.err.toStdString();
  const QStringList decoded = Lines(again);
  EXPECT_EQ(decoded.mid(0, 13), lines.mid(0, 13));
  EXPECT_EQ(ValueColumn(decoded), values);
}

TEST(CliDownload, FindsA1200LoggerWhenStartedAt4800) {
  QTemporaryDir dir;
  Sim sim(dir, {"--model", "18", "--baud", "1200", "--elapsed", "120s", "--signal", "ramp"});
  const QString rec = dir.path() + "/rec.txt";
  const CliRun r = RunCli({"download", "--port", sim.device(), "--baud", "4800", "--out", rec});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.err.contains("at 1200 bit/s")) << r.err.toStdString();
  const QStringList lines = Lines(rec);
  ASSERT_GT(lines.size(), 13);
  EXPECT_EQ(lines[2].toInt(), lines.size() - 13);
}

// Each refusal: one line on standard error, a non-zero exit, and no record file.
void ExpectRefusal(const CliRun& r, const QString& rec, const QString& words) {
  EXPECT_NE(r.exitCode, 0);
  EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
  EXPECT_TRUE(r.err.contains(words)) << r.err.toStdString();
  EXPECT_FALSE(QFile::exists(rec));
}

TEST(CliDownload, RefusesWhenNoLoggerAnswersOrAProbeIsMissing) {
  QTemporaryDir dir;
  const QString rec = dir.path() + "/rec.txt";
  {
    Sim silent(dir, {"--silent-after", "0s", "--silent-for", "1h"});
    ExpectRefusal(RunCli({"download", "--port", silent.device(), "--out", rec, "--timeout", "2"}), rec,
                  "no logger answered");
  }
  {
    Sim probe(dir, {"--model", "16", "--baud", "1200"});
    ExpectRefusal(RunCli({"download", "--port", probe.device(), "--out", rec}), rec, "no probe chosen");
  }
  ExpectRefusal(RunCli({"download", "--port", dir.path() + "/none", "--out", rec}), rec, "cannot open");
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

// Header of a one-byte logger: memory code, serial, marks, tick counter, status, model,
// sample counter, range byte.
QByteArray Header(int memoryCode, int ticks, int samples, int model = 17) {
  QByteArray h(22, '\0');
  h[0] = static_cast<char>(memoryCode);
  h[1] = static_cast<char>(0x39);
  h[2] = static_cast<char>(0x05);
  for (int i = 3; i <= 10; ++i) h[i] = static_cast<char>(0xFF);
  h[11] = static_cast<char>(ticks & 0xFF);
  h[12] = static_cast<char>((ticks >> 8) & 0xFF);
  h[13] = static_cast<char>((ticks >> 16) & 0xFF);
  h[16] = static_cast<char>(model);
  h[17] = static_cast<char>(samples & 0xFF);
  h[18] = static_cast<char>((samples >> 8) & 0xFF);
  return h;
}

TEST(CliDecode, RefusesBadInputWithOneLineAndNoFile) {
  QTemporaryDir dir;
  const QString rec = dir.path() + "/rec.txt";
  const QString h = dir.path() + "/h.bin", b = dir.path() + "/b.bin", shortH = dir.path() + "/short.bin",
                big = dir.path() + "/big.bin";
  WriteFile(h, Header(0, 100, 99));  // 100 samples, not yet a half fill
  WriteFile(b, QByteArray(40, '\x50'));
  WriteFile(shortH, Header(0, 100, 99).left(21));
  WriteFile(big, Header(5, 98304, 40000));  // a day on the largest memory: far past 16384
  auto decode = [&](const QString& header, const QString& block) {
    return RunCli(
        {"decode", "--header", header, "--block", block, "--now", "2026-11-21 12:00:00", "--out", rec});
  };
  ExpectRefusal(decode(shortH, b), rec, "21 bytes");
  ExpectRefusal(decode(big, b), rec, "at most 16384");
  ExpectRefusal(decode(h, b), rec, "past the end of the block");
  ExpectRefusal(decode(dir.path() + "/missing.bin", b), rec, "cannot read");
  ExpectRefusal(RunCli({"decode", "--header", h, "--block", b, "--now", "tomorrow", "--out", rec}), rec,
                "--now");

  WriteFile(b, QByteArray(100, '\x50'));
  const CliRun ok = decode(h, b);
  ASSERT_EQ(ok.exitCode, 0) << ok.err.toStdString();
  const QStringList lines = Lines(rec);
  EXPECT_EQ(lines[2], "100");
  EXPECT_EQ(lines[11], "1337");
}

}  // namespace
