// The shipped language file and help guides, and what a change of language does to the
// texts already on screen.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include "core/fault.h"
#include "core/language_table.h"
#include "link/link_supervision.h"
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

struct TwoLanguages : TestApp {
  TwoLanguages() {
    WriteTwoLanguageFile();
    WriteSettings(1, 1, 1200, 0, 0);
    Start();
  }
  void ChooseLanguage(int option) {
    ui.onModal = [this, option](DialogId) {
      LangfrmChoose(*app, option);
      LangfrmOk(*app);
    };
    Dispatch(*app, [this] { MnuLang(*app); });
  }
};

TEST(LanguageChange, TextsThatHandlersLeftOnScreenComeInTheNewLanguageAtOnce) {
  TwoLanguages t;
  Log1View& w = t.app->v.log1;
  w.Label16.caption = "en62";  // "Data saved"
  w.Label6.caption = "en63";   // "samples/hour"
  w.Label19.caption = "21.5";  // a value is no language row
  t.ChooseLanguage(2);
  EXPECT_EQ(w.Label16.caption, "de62");
  EXPECT_EQ(w.Label6.caption, "de63");
  EXPECT_EQ(w.Label19.caption, "21.5");
  EXPECT_EQ(w.mnuFile.caption, "de20");
  t.ChooseLanguage(1);
  EXPECT_EQ(w.Label6.caption, "en63");
}

TEST(LanguageChange, AFirstStartOnAnUnavailablePortSaysSoInEnglishBeforeALanguageIsChosen) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.transport.openFaults[1] = 68;
  t.ui.onModal = [&t](DialogId d) {
    if (d == DialogId::langfrm) {
      EXPECT_EQ(t.app->v.langfrm.caption, "Language");
      LangfrmChoose(*t.app, 1);
      LangfrmOk(*t.app);
    } else if (d == DialogId::frmPort) {
      EXPECT_EQ(t.app->v.frmPort.Option5.caption, "No Logger");
      FrmPortCancel(*t.app);
    }
  };
  t.Start();
  ASSERT_FALSE(t.ui.messages.empty());
  EXPECT_EQ(t.ui.messages[0].title, "Sorry");
  EXPECT_EQ(t.ui.messages[0].text.rfind("The communications port could not be opened.", 0), 0u);
}

// Counts beyond the table are a fault of the reading where the first field without a cell
// would go: what was read before stays, and the reading never runs on.
TEST(LanguageFileCounts, BeyondTheTableFaultAtTheFirstFieldWithoutACell) {
  struct Case {
    const char* counts;
    int count;              // LanguageCount after the reading
    const char* lastName;   // LanguageName[1]
    const char* string200;  // LanguageTable[1][200]
  };
  const Case cases[] = {
      {"\"0\",\"3000000000\"", 0, "", ""},
      {"\"1\",\"3000000000\"", 1, "L1", "s200"},
      {"\"1\",\"1e300\"", 1, "L1", "s200"},
      {"\"9\",\"1\"", 9, "L1", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.counts);
    TestApp t;
    std::string file = std::string(c.counts) + "\n\"L1\"\n\"help.html\"\n";
    for (int n = 1; n <= 205; ++n) file += "\"s" + std::to_string(n) + "\"\n";
    t.WriteFile("loglang.txt", file);
    LanguageData L;
    try {
      ReadLanguageFile(t.dir + "/loglang.txt", L);
      ADD_FAILURE() << "no fault";
    } catch (const Fault& f) {
      EXPECT_EQ(f.number(), kFaultSubscript);
    }
    EXPECT_EQ(L.LanguageCount, c.count);
    EXPECT_EQ(L.LanguageName[1], c.lastName);
    EXPECT_EQ(L.LanguageTable[1][200], c.string200);
  }
}

}  // namespace
}  // namespace quillet
