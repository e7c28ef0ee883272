// logger1.ini: read back by position, only the tail of each settings line counts.
#include <gtest/gtest.h>

#include <sstream>

#include "core/settings_file.h"
#include "log1/startup.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) out.push_back(line);
  return out;
}

TEST(SettingsFile, FirstRunWithNoFileSavesAFullFileOfEightyOneLines) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.Start();
  EXPECT_EQ(t.app->s.settings.ComPort, 1);  // the fall-back port
  ASSERT_TRUE(EndProgram(*t.app));
  const auto lines = Lines(t.ReadFile("logger1.ini"));
  ASSERT_EQ(lines.size(), 81u);
  EXPECT_EQ(lines[0], "\"[PORT etc]\"");
  EXPECT_EQ(lines[1], "\"comm port =  1\"");
  EXPECT_EQ(lines[2], "\"language =  1\"");
  EXPECT_EQ(lines[3], "\"baud =  1200\"");
  EXPECT_EQ(lines[4], "\"Fahrenheit =  0\"");
  EXPECT_EQ(lines[5], "\"US Date Format =  0\"");
  EXPECT_EQ(lines[6], "\"[probe data]\"");
  EXPECT_EQ(lines[7], ",,\"\",\"\"");      // an unused probe entry
  EXPECT_EQ(lines[18], ",,,,,,,");         // scale row 0, table line, all cells empty
  // Unit rows 30 and 31 are the program's own, installed at every start.
  EXPECT_EQ(lines[80], "\"\",\"\",\"\",\"\",\"\",\"V rms\",\"A rms\",\"\"");
  EXPECT_FALSE(t.FileExists("logger1.ini.tmp~"));
}

TEST(SettingsFile, AFullFilePassesThroughAReadAndWriteUnchanged) {
  std::ostringstream f;
  f << "\"[PORT etc]\"\n\"comm port =  3\"\n\"language =  2\"\n\"baud =  4800\"\n\"Fahrenheit =  1\"\n"
       "\"US Date Format =  1\"\n\"[probe data]\"\n";
  for (int i = 1; i <= 11; ++i) f << 1000 + i << "," << 0.5 * i << ",\"A, rms\",\"Probe " << i << "\"\n";
  for (int i = 0; i <= 30; ++i) {
    f << i << ",\"\",1.25," << 100 + i << ",,-" << i + 1 << ",7,\"\"\n";   // table line with carry columns
    f << ",2.5,\"\",3," << i * 0.125 << ",,\"\"," << i << "\n";       // slope line
  }
  f << "\"mV, peak\",\"u21\",\"u22\",\"u23\",\"mA\",\"file30\",\"file31\",\"psi\"\n";
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteFile("logger1.ini", f.str());
  t.transport.openFaults[3] = 0;  // port 3 opens
  t.transport.openFaults.erase(3);
  t.Start();
  const State& s = t.app->s;
  EXPECT_EQ(s.settings.ComPort, 3);
  EXPECT_EQ(s.settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(s.settings.BaudRate.Value(), 4800);
  EXPECT_EQ(t.transport.baud, 4800);
  EXPECT_EQ(s.settings.UseFahrenheit.Value(), 1);
  EXPECT_EQ(s.probes.ProbeUnit[4], "A, rms");
  EXPECT_EQ(s.UnitByModel[20], "mV, peak");
  EXPECT_EQ(s.UnitByModel[32], "psi");
  // Rows 30 and 31 are installed at start-up over what the file said.
  EXPECT_EQ(s.UnitByModel[30], "V rms");
  EXPECT_EQ(s.UnitByModel[31], "A rms");
  EXPECT_TRUE(s.scales.ScaleEntry10v[20].IsNumber());
  EXPECT_TRUE(s.scales.ScaleEntry10v[21 - 1].IsNumber());
  ASSERT_TRUE(EndProgram(*t.app));
  const std::string written = t.ReadFile("logger1.ini");
  // Everything but the two unit rows the program installs comes back as it was.
  std::string expected = f.str();
  expected.replace(expected.find("\"file30\",\"file31\""), 17, "\"V rms\",\"A rms\"");
  EXPECT_EQ(written, expected);
}

TEST(SettingsFile, OnlyTheTailOfEachSettingsLineCounts) {
  TestApp t;
  t.WriteTwoLanguageFile();
  std::ostringstream f;
  f << "\"whatever\"\n\"COM3\"\n\"x2\"\n\"speed4800\"\n\"F=1\"\n\"0\"\n\"title\"\n";
  for (int i = 1; i <= 11; ++i) f << ",,\"\",\"\"\n";
  for (int i = 0; i <= 61; ++i) f << ",,,,,,,\n";
  f << "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\n";
  t.WriteFile("logger1.ini", f.str());
  t.Start();
  EXPECT_EQ(t.app->s.settings.ComPort, 3);
  EXPECT_EQ(t.app->s.settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 4800);
  EXPECT_EQ(t.app->s.settings.UseFahrenheit.Value(), 1);
  EXPECT_EQ(t.app->s.settings.UsDateFormat.Value(), 0);
}

TEST(SettingsFile, AShortFileKeepsTheRowsReadAndFallsBackToPortOne) {
  TestApp t;
  t.WriteTwoLanguageFile();
  std::ostringstream f;
  f << "\"[PORT etc]\"\n\"comm port =  3\"\n\"language =  2\"\n\"baud =  4800\"\n\"Fahrenheit =  1\"\n"
       "\"US Date Format =  1\"\n\"[probe data]\"\n";
  f << "4321,2,\"A rms\",\"Clamp 200A\"\n";  // one probe entry, then the file ends
  t.WriteFile("logger1.ini", f.str());
  t.Start();
  const State& s = t.app->s;
  EXPECT_EQ(s.probes.ProbeSerial[1].Value(), 4321);
  EXPECT_EQ(s.probes.ProbeLabel[1], "Clamp 200A");
  // The settings lines take effect only for a file read whole.
  EXPECT_EQ(s.settings.ComPort, 1);
  EXPECT_EQ(s.settings.BaudRate.Value(), 1200);
  EXPECT_TRUE(t.app->port.PortOpen());
  EXPECT_EQ(t.ui.modals.front(), DialogId::langfrm);  // no language known
  EXPECT_TRUE(t.ui.messages.empty());                  // a short file is not reported
}

TEST(SettingsFile, ComPortZeroAfterNoLoggerFallsBackToPortOne) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(0, 1, 1200, 0, 0);
  t.Start();
  EXPECT_EQ(t.app->s.settings.ComPort, 1);
  EXPECT_EQ(t.app->port.CommPortNumber, 1);
  EXPECT_TRUE(t.app->port.PortOpen());
  EXPECT_EQ(t.app->s.link.PortChosen.Value(), 1);
  EXPECT_TRUE(t.ui.messages.empty());
}

TEST(SettingsFile, ASpeedOfFourThousandEightHundredIsSetOnThePortAndSavedBack) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(2, 1, 4800, 0, 1);
  t.Start();
  EXPECT_EQ(t.transport.baud, 4800);
  EXPECT_EQ(t.transport.stopBits, 2);
  EXPECT_EQ(t.app->port.Settings(), "4800,N,8,2");
  ASSERT_TRUE(EndProgram(*t.app));
  const auto lines = Lines(t.ReadFile("logger1.ini"));
  EXPECT_EQ(lines[1], "\"comm port =  2\"");
  EXPECT_EQ(lines[3], "\"baud =  4800\"");
  EXPECT_EQ(lines[5], "\"US Date Format =  1\"");
}

TEST(SettingsFile, AnOddSpeedIsKeptButThePortRunsAtTwelveHundred) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 9600, 0, 0);
  t.Start();
  EXPECT_EQ(t.app->s.settings.BaudRate.Value(), 9600);
  EXPECT_EQ(t.app->port.Settings(), "1200,N,8,2");
}

TEST(SettingsFile, AFailedWriteLeavesTheOldFileAndTellsTheUser) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(2, 1, 1200, 0, 0);
  t.Start();
  const std::string before = t.ReadFile("logger1.ini");
  t.app->p.places.currentDir = t.dir + "/missing-folder";
  EXPECT_TRUE(EndProgram(*t.app));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_NE(t.ui.messages[0].text.find("could not be saved"), std::string::npos);
  EXPECT_EQ(t.ReadFile("logger1.ini"), before);
}

}  // namespace
}  // namespace quillet
