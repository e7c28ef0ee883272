// logger1.ini: read back by position, only the tail of each settings line counts.
#include <gtest/gtest.h>

#include <sstream>

#include "core/settings_file.h"
#include "log1/startup.h"
#include "support/fake_platform.h"
#include "support/settings_text.h"

namespace quillet {
namespace {

using testing::StartedApp;
using testing::TestApp;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

void StartWith(TestApp& t, const std::string& ini) {
  t.WriteTwoLanguageFile();
  if (!ini.empty()) t.WriteFile("logger1.ini", ini);
  t.Start();
}

TEST(SettingsFile, FirstRunWithNoFileSavesAFullFileOfEightyOneLines) {
  TestApp t;
  StartWith(t, "");
  ASSERT_TRUE(EndProgram(*t.app));
  const auto lines = Lines(t.ReadFile("logger1.ini"));
  ASSERT_EQ(lines.size(), 81u);
  EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 8),
            (std::vector<std::string>{"\"[PORT etc]\"", "\"comm port =  1\"", "\"language =  1\"",
                                      "\"baud =  1200\"", "\"Fahrenheit =  0\"", "\"US Date Format =  0\"",
                                      "\"[probe data]\"", ",,\"\",\"\""}));
  EXPECT_EQ(lines[18], ",,,,,,,");  // scale row 0, table line, all cells empty
  // Unit rows 30 and 31 are the program's own, installed at every start.
  EXPECT_EQ(lines[80], "\"\",\"\",\"\",\"\",\"\",\"V rms\",\"A rms\",\"\"");
}

TEST(SettingsFile, AFullFilePassesThroughAReadAndWriteUnchanged) {
  std::ostringstream f;
  f << "\"[PORT etc]\"\n\"comm port =  3\"\n\"language =  2\"\n\"baud =  4800\"\n\"Fahrenheit =  1\"\n"
       "\"US Date Format =  1\"\n\"[probe data]\"\n";
  for (int i = 1; i <= 11; ++i) f << 1000 + i << "," << 0.5 * i << ",\"A, rms\",\"Probe " << i << "\"\n";
  for (int i = 0; i <= 30; ++i) {
    f << i << ",\"\",1.25," << 100 + i << ",,-" << i + 1 << ",7,\"\"\n";  // table line with carry columns
    f << ",2.5,\"\",3," << i * 0.125 << ",,\"\"," << i << "\n";           // slope line
  }
  f << "\"mV, peak\",\"u21\",\"u22\",\"u23\",\"mA\",\"file30\",\"file31\",\"psi\"\n";
  TestApp t;
  StartWith(t, f.str());
  const State& s = t.s();
  EXPECT_EQ(std::tuple(s.settings.ComPort, s.settings.LanguageIndex.Value(), t.transport.baud,
                       s.settings.UseFahrenheit.Value(), s.probes.ProbeUnit[4], s.UnitByModel[20]),
            std::tuple(3, 2.0, 4800, 1.0, "A, rms", "mV, peak"));
  EXPECT_TRUE(s.scales.ScaleEntry10v[20].IsNumber());
  ASSERT_TRUE(EndProgram(*t.app));
  std::string expected = f.str();
  expected.replace(expected.find("\"file30\",\"file31\""), 17, "\"V rms\",\"A rms\"");
  EXPECT_EQ(t.ReadFile("logger1.ini"), expected);
}

TEST(SettingsFile, OnlyTheTailOfEachSettingsLineCountsAndOnlyInAFileReadWhole) {
  std::string text = testing::SettingsFileText({});
  for (auto [from, to] : {std::pair{"[PORT etc]", "whatever"},
                          {"comm port =  1", "COM3"},
                          {"language =  1", "x2"},
                          {"baud =  1200", "speed4800"},
                          {"Fahrenheit =  0", "F=1"},
                          {"US Date Format =  0", "0"}})
    text.replace(text.find(from), std::string(from).size(), to);
  TestApp t;
  StartWith(t, text);
  const auto& set = t.s().settings;
  EXPECT_EQ(std::tuple(set.ComPort, set.LanguageIndex.Value(), set.BaudRate.Value(), set.UseFahrenheit.Value()),
            std::tuple(3, 2.0, 4800.0, 1.0));

  TestApp cut;  // one probe entry, then the file ends
  const std::string full =
      testing::SettingsFileText({3, 2, 4800, 1, 1, {{1, {"4321", "2", "A rms", "Clamp"}}}, ""});
  StartWith(cut, full.substr(0, full.find("Clamp") + 7));
  EXPECT_EQ(cut.s().probes.ProbeSerial[1].Value(), 4321);
  EXPECT_EQ(cut.s().probes.ProbeLabel[1], "Clamp");
  EXPECT_EQ(std::tuple(cut.s().settings.ComPort, cut.s().settings.BaudRate.Value()), std::tuple(1, 1200.0));
  EXPECT_TRUE(cut.app->port.PortOpen());
  EXPECT_EQ(cut.ui.modals.front(), DialogId::langfrm);  // no language known
  EXPECT_TRUE(cut.ui.messages.empty());                 // a short file is not reported
}

TEST(SettingsFile, PortAndSpeedFromTheFileReachThePortAndAreSavedBack) {
  const struct {
    int port, baud, wantPort;
    const char* wantLine;
  } cases[] = {{0, 1200, 1, "1200,N,8,2"},  // port 0 after "No Logger" falls back to port 1
               {2, 4800, 2, "4800,N,8,2"},
               {1, 9600, 1, "1200,N,8,2"}};  // an odd speed is kept, the port runs at 1200
  for (const auto& c : cases) {
    SCOPED_TRACE(c.port);
    StartedApp t(c.port, 1, c.baud, 1);
    EXPECT_EQ(t.app->port.CommPortNumber, c.wantPort);
    EXPECT_TRUE(t.app->port.PortOpen() && t.ui.messages.empty());
    EXPECT_EQ(t.app->port.Settings(), c.wantLine);
    ASSERT_TRUE(EndProgram(*t.app));
    const auto lines = Lines(t.ReadFile("logger1.ini"));
    EXPECT_EQ(lines[1], "\"comm port =  " + std::to_string(c.wantPort) + "\"");
    EXPECT_EQ(lines[3], "\"baud =  " + std::to_string(c.baud) + "\"");
    EXPECT_EQ(lines[5], "\"US Date Format =  1\"");
  }
}

TEST(SettingsFile, AFailedWriteLeavesTheOldFileAndTellsTheUser) {
  StartedApp t(2);
  const std::string before = t.ReadFile("logger1.ini");
  t.app->p.places.currentDir = t.dir + "/missing-folder";
  EXPECT_TRUE(EndProgram(*t.app));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_NE(t.ui.messages[0].text.find("could not be saved"), std::string::npos);
  EXPECT_EQ(t.ReadFile("logger1.ini"), before);
}

}  // namespace
}  // namespace quillet
