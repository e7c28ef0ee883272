// Comma-separated files, and logger1.ini read back by position.
#include "core/settings_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "core/fault.h"
#include "core/text_file.h"
#include "log1/startup.h"
#include "support/fake_platform.h"
#include "support/settings_text.h"

namespace quillet {
namespace {

using testing::FaultOf;

TEST(TextFile, FieldsSplitOnCommasAndLineEndsKeepNumberEmptyTextAndNothingApartBothWays) {
  auto r = TextReader::FromText("  12 , abc ,\"x, y\"\r\n\"q\"  junk ,last\n1.5,\"\",,\"mV, peak\",\n");
  EXPECT_EQ(r.ReadNumber(), 12);
  for (const char* field : {"abc", "x, y", "q", "last"}) EXPECT_EQ(r.ReadText(), field);
  Cell a = r.ReadCell(), b = r.ReadCell(), c = r.ReadCell(), d = r.ReadCell();
  EXPECT_TRUE(a.IsNumber() && a.Number() == 1.5 && c.IsNothing() && c.EqualsEmptyText());
  EXPECT_EQ(b.kind(), Cell::Kind::EmptyText);
  EXPECT_EQ(d.Text(), "mV, peak");
  EXPECT_EQ(r.ReadNumber(), 0);  // an empty field
  EXPECT_TRUE(r.AtEnd());
  EXPECT_EQ(FaultOf([&] { r.ReadText(); }), kFaultInputPastEnd);
  EXPECT_EQ(FaultOf([] { TextReader::FromText("abc\n").ReadNumber(); }), kFaultTypeMismatch);
  EXPECT_EQ(FaultOf([] { TextReader::Open("/nonexistent/dir/none.txt"); }), kFaultFileNotFound);
  TextWriter w;
  w.Text("a"), w.Num(0.5), w.Num(Number()), w.Put(Cell::OfEmptyText()), w.Put(Cell()), w.Num(-1200);
  w.EndLine();
  EXPECT_EQ(w.content(), "\"a\",0.5,,\"\",,-1200\n");
  EXPECT_EQ(StrOfNumber(4800) + StrOfNumber(-3), " 4800-3");  // a blank in place of the plus sign
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
  testing::TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteFile("logger1.ini", f.str());
  t.Start();
  const State& s = t.s();
  EXPECT_EQ(std::tuple(s.settings.ComPort, s.settings.LanguageIndex.Value(), t.transport.baud,
                       s.settings.UseFahrenheit.Value(), s.probes.ProbeUnit[4], s.UnitByModel[20]),
            std::tuple(3, 2.0, 4800, 1.0, "A, rms", "mV, peak"));
  ASSERT_TRUE(EndProgram(*t.app));
  std::string expected = f.str();  // unit rows 30 and 31 are the program's own
  expected.replace(expected.find("\"file30\",\"file31\""), 17, "\"V rms\",\"A rms\"");
  EXPECT_EQ(t.ReadFile("logger1.ini"), expected);
}

TEST(SettingsFile, OnlyTheTailOfEachSettingsLineCountsAndPortAndSpeedReachThePort) {
  auto lines = [](std::string s) {  // "a|b" as the lines "a" and "b"
    for (std::size_t at; (at = s.find('|')) != std::string::npos;) s.replace(at, 1, "\"\n\"");
    return "\"" + s + "\"\n";
  };
  const std::string none = testing::SettingsFileText({}), rest = none.substr(none.find("\"[probe data]\""));
  // The settings lines as written, then the port taken, the line it runs and the lines saved.
  using Case = std::tuple<const char*, int, const char*, const char*>;
  for (auto [written, port, line, saved] : std::vector<Case>{
           {"whatever|COM3|x2|speed4800|F=1|0", 3, "4800,N,8,2",
            "[PORT etc]|comm port =  3|language =  2|baud =  4800|Fahrenheit =  1|US Date Format =  0"},
           // Port 0 after "No Logger" falls back to port 1; an odd speed is kept but not run.
           {"|comm port =  0|language =  1|baud =  9600|Fahrenheit =  0|US Date Format =  1", 1, "1200,N,8,2",
            "[PORT etc]|comm port =  1|language =  1|baud =  9600|Fahrenheit =  0|US Date Format =  1"}}) {
    testing::TestApp t;
    t.WriteTwoLanguageFile();
    t.WriteFile("logger1.ini", lines(written) + rest);
    t.Start();
    EXPECT_EQ(t.app->port.CommPortNumber, port);
    EXPECT_EQ(t.app->port.Settings(), line);
    EXPECT_TRUE(t.app->port.PortOpen() && t.ui.messages.empty());
    ASSERT_TRUE(EndProgram(*t.app));
    EXPECT_EQ(t.ReadFile("logger1.ini").substr(0, lines(saved).size()), lines(saved));
  }
}

TEST(SettingsFile, AFailedWriteLeavesTheOldFileAndTellsTheUser) {
  testing::StartedApp t(2);
  const std::string before = t.ReadFile("logger1.ini");
  t.app->p.places.currentDir = t.dir + "/missing-folder";
  EXPECT_TRUE(EndProgram(*t.app));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_NE(t.ui.messages[0].text.find("could not be saved"), std::string::npos);
  EXPECT_EQ(t.ReadFile("logger1.ini"), before);
}

}  // namespace
}  // namespace quillet
