// quillet-cli live against quillet-sim over a real pseudo-terminal.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "ui/window_program.h"

namespace {

using quillet::testing::RunCli;

TEST(CliLive, PrintsOneLinePerReadingWithTheValueATabAndTheUnit) {
  QTemporaryDir dir;
  const QString link = dir.path() + "/tty";
  quillet::testing::CliRun cli;
  {
    quillet::testing::EmulatorProcess sim(
        link, {"--model", "18", "--baud", "4800", "--signal", "steady", "--level", "12.5"});
    cli = RunCli({"live", "--port", link, "--count", "2"}, 30000);
  }
  EXPECT_EQ(cli.exitCode, 0) << cli.err.toStdString();
  const QStringList lines = cli.out.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 2);
  for (const QString& line : lines) {
    // "YYYY-MM-DD hh:mm:ss 12.50<TAB>V rms"
    EXPECT_TRUE(line.contains(QRegularExpression(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \d+\.\d\d\tV rms$)")))
        << line.toStdString();
  }
}

TEST(CliLive, ADeviceThatDoesNotExistGivesOneLineAndANonZeroExit) {
  const quillet::testing::CliRun cli = RunCli({"live", "--port", "/nonexistent/tty", "--count", "1"}, 15000);
  EXPECT_NE(cli.exitCode, 0);
  EXPECT_EQ(cli.err.count('\n'), 1) << cli.err.toStdString();
  EXPECT_TRUE(cli.out.isEmpty());
}

}  // namespace
