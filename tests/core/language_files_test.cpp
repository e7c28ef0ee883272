// The shipped language file and help guides, and what a change of language does to the
// texts already on screen.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "core/fault.h"
#include "core/language_table.h"
#include "log1/language.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

// Rows that no caption or message of the program uses, and 152, the text behind the
// serial number in the panel's title, which is empty on purpose.
bool UsedRow(int n) {
  static const std::set<int> unused = {2,  10, 52,  60,  61,  69,  70,  75,  78,  80,  81,  85,  88, 93, 114,
                                       115, 125, 128, 129, 130, 131, 133, 134, 135, 136, 137, 138, 139, 140, 152};
  return n <= 159 && unused.count(n) == 0;
}

TEST(ShippedLanguageFile, HoldsEightLanguagesOfTwoHundredStringsWithEveryUsedRowAndItsMnemonics) {
  LanguageData L;
  ReadLanguageFile(QUILLET_DATA_DIR "/loglang.txt", L);
  ASSERT_EQ(L.LanguageCount, 8);
  const char* names[] = {"English", "Deutsch", "Français", "Español", "Italiano", "Português", "Nederlands", "Polski"};
  for (int i = 1; i <= 8; ++i) {
    SCOPED_TRACE(names[i - 1]);
    EXPECT_EQ(L.LanguageName[i], names[i - 1]);
    EXPECT_TRUE(std::filesystem::exists(std::string(QUILLET_DATA_DIR "/") + L.LanguageHelpFile[i]))
        << L.LanguageHelpFile[i];
    for (int n = 1; n <= kStrings; ++n) {
      const std::string& english = L.LanguageTable[1][n];
      const std::string& cell = L.LanguageTable[i][n];
      if (UsedRow(n)) {
        EXPECT_FALSE(cell.empty()) << "row " << n;
      }
      EXPECT_EQ(std::count(cell.begin(), cell.end(), '&'), std::count(english.begin(), english.end(), '&'))
          << "row " << n << ": " << cell;
    }
  }
}

TEST(LanguageChange, TextsThatHandlersLeftOnScreenComeInTheNewLanguageAtOnce) {
  testing::StartedApp t;
  auto choose = [&t](int option) {
    t.ui.onModal = [&t, option](DialogId) {
      LangfrmChoose(*t.app, option);
      LangfrmOk(*t.app);
    };
    t.Do(MnuLang);
  };
  Log1View& w = t.w();
  w.Label16.caption = "en62";  // "Data saved"
  w.Label6.caption = "en63";   // "samples/hour"
  w.Label19.caption = "21.5";  // a value is no language row
  choose(2);
  EXPECT_EQ(w.Label16.caption + "|" + w.Label6.caption + "|" + w.Label19.caption, "de62|de63|21.5");
  choose(1);
  EXPECT_EQ(w.Label6.caption, "en63");
}

// Counts beyond the table are a fault of the reading where the first field without a cell
// would go: what was read before stays, and the reading never runs on.
TEST(LanguageFileCounts, BeyondTheTableFaultAtTheFirstFieldWithoutACell) {
  // The counts, then LanguageCount, LanguageName[1] and LanguageTable[1][200] after the reading.
  for (auto [counts, count, name, string200] :
       {std::tuple{"\"1\",\"1e300\"", 1, "L1", "s200"}, {"\"9\",\"1\"", 9, "L1", ""}}) {
    SCOPED_TRACE(counts);
    TestApp t;
    std::string file = std::string(counts) + "\n\"L1\"\n\"help.html\"\n";
    for (int n = 1; n <= 205; ++n) file += "\"s" + std::to_string(n) + "\"\n";
    t.WriteFile("loglang.txt", file);
    LanguageData L;
    EXPECT_EQ(testing::FaultOf([&] { ReadLanguageFile(t.dir + "/loglang.txt", L); }), kFaultSubscript);
    EXPECT_EQ(std::tuple(L.LanguageCount, L.LanguageName[1], L.LanguageTable[1][200]),
              std::tuple(count, name, string200));
  }
}

}  // namespace
}  // namespace quillet
