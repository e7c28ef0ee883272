// quillet-cli live against quillet-sim over a real pseudo-terminal.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

namespace {

TEST(CliLive, PrintsOneLinePerReadingWithTheValueATabAndTheUnit) {
  QTemporaryDir dir;
  const QString link = dir.path() + "/tty";
  QProcess sim;
  sim.start(QUILLET_BIN_DIR "/quillet-sim", {"--model", "18", "--baud", "4800", "--signal", "steady", "--level",
                                              "12.5", "--link", link});
  QElapsedTimer t;
  t.start();
  while (!QFile::exists(link) && t.elapsed() < 5000) QThread::msleep(20);
  QProcess cli;
  cli.start(QUILLET_BIN_DIR "/quillet-cli", {"live", "--port", link, "--count", "2"});
  ASSERT_TRUE(cli.waitForFinished(30000));
  sim.terminate();
  sim.waitForFinished(3000);
  EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
  const QStringList lines = QString::fromUtf8(cli.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 2);
  for (const QString& line : lines) {
    // "YYYY-MM-DD hh:mm:ss 12.50<TAB>V rms"
    EXPECT_TRUE(line.contains(QRegularExpression(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \d+\.\d\d\tV rms$)")))
        << line.toStdString();
  }
}

TEST(CliLive, ADeviceThatDoesNotExistGivesOneLineAndANonZeroExit) {
  QProcess cli;
  cli.start(QUILLET_BIN_DIR "/quillet-cli", {"live", "--port", "/nonexistent/tty", "--count", "1"});
  ASSERT_TRUE(cli.waitForFinished(15000));
  EXPECT_NE(cli.exitCode(), 0);
  const QString err = QString::fromUtf8(cli.readAllStandardError());
  EXPECT_EQ(err.count('\n'), 1) << err.toStdString();
  EXPECT_TRUE(cli.readAllStandardOutput().isEmpty());
}

}  // namespace
