// The language file and table, the language dialog and the captions the program writes.
#include "log1/language.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "core/language_table.h"
#include "link/link_supervision.h"
#include "log1/startup.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::StartedApp;
using testing::TestApp;

TEST(ShippedLanguageFile, HoldsEightLanguagesOfTwoHundredStringsWithEveryUsedRowAndItsMnemonics) {
  // Rows that no caption or message uses, and 152, the text behind the serial number in
  // the panel's title, which is empty on purpose.
  const std::set<int> unused = {2,   10,  52,  60,  61,  69,  70,  75,  78,  80,  81,  85,  88,  93,  114,
                                115, 125, 128, 129, 130, 131, 133, 134, 135, 136, 137, 138, 139, 140, 152};
  LanguageData L;
  ReadLanguageFile(QUILLET_DATA_DIR "/loglang.txt", L);
  ASSERT_EQ(L.LanguageCount, 8);
  const char* names[] = {"English",  "Deutsch",   "Français",   "Español",
                         "Italiano", "Português", "Nederlands", "Polski"};
  for (int i = 1; i <= 8; ++i) {
    SCOPED_TRACE(names[i - 1]);
    EXPECT_EQ(L.LanguageName[i], names[i - 1]);
    EXPECT_TRUE(std::filesystem::exists(std::string(QUILLET_DATA_DIR "/") + L.LanguageHelpFile[i]));
    for (int n = 1; n <= kStrings; ++n) {
      const std::string &english = L.LanguageTable[1][n], &cell = L.LanguageTable[i][n];
      EXPECT_TRUE(n > 159 || unused.count(n) || !cell.empty()) << "row " << n;
      EXPECT_EQ(std::count(cell.begin(), cell.end(), '&'), std::count(english.begin(), english.end(), '&'))
          << "row " << n << ": " << cell;
    }
  }
}

TEST(Language, TheDialogOffersEachLanguageAndOkRecaptionsMenusDialogsAndTextsOnScreenWhileCancelGoesBack) {
  StartedApp t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4242;
  Log1View& w = t.w();
  w.Label16.caption = "en62";  // "Data saved", left by a handler
  w.Label19.caption = "21.5";  // a value is no language row
  for (bool ok : {false, true}) {
    t.ui.onModal = [&](DialogId) {
      LangfrmView& d = t.app->v.langfrm;
      EXPECT_EQ(d.Option1.caption + d.Option2.caption + d.caption, "EnglishDeutschen141");
      EXPECT_TRUE(d.Option1.checked && d.Option2.visible && !d.Option(3).visible && d.Command2.visible);
      LangfrmChoose(*t.app, 2), ok ? LangfrmOk(*t.app) : LangfrmCancel(*t.app);
    };
    t.Do(MnuLang);
    EXPECT_EQ(t.s().settings.LanguageIndex.Value(), ok ? 2 : 1);
    EXPECT_EQ(w.mnuFile.caption + "|" + w.Label16.caption, ok ? "de20|de62" : "en20|en62");
  }
  EXPECT_EQ(w.Label19.caption + "|" + t.app->v.frmPort.Option5.caption + "|" + w.Frame1.caption,
            "21.5|de142|de151 4242de152");
  t.Do(MnuHelpCont), t.Do(MnuHelpIndex);  // Help follows the language chosen
  EXPECT_EQ(t.ui.help,
            (std::vector<std::pair<std::string, HelpCommand>>{{"help/de.html", HelpCommand::Contents},
                                                              {"help/de.html", HelpCommand::KeywordSearch}}));
}

TEST(Language, ALanguageIndexOfNineFaultsAtItsFirstLookupAndEndsTheStart) {
  TestApp nine;
  nine.WriteTwoLanguageFile();
  nine.WriteSettings(1, 9, 1200, 0, 0);
  nine.Do([&] {
    try {
      StartProgram(*nine.app);
    } catch (const Fault& f) {
      throw f.Fatal();
    }
  });
  EXPECT_EQ(nine.ui.fatal.size() == 1 ? nine.ui.fatal[0].first : 0, kFaultSubscript);
  EXPECT_TRUE(nine.ui.ended);
}

// Before a language is chosen, the port message and the dialogs start-up opens are readable.
TEST(Language, AFirstStartOnAnUnavailablePortSaysSoInEnglishBeforeALanguageIsChosen) {
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
  EXPECT_EQ(t.ui.messages[0].title + "|" + t.ui.messages[0].text.substr(0, 44),
            "Sorry|The communications port could not be opened.");
}

TEST(Editions, EachEditionFillsTheAboutBoxAndTheWindowTitle) {
  StartedApp t(1, 2);
  const About2View& a = t.app->v.about2;
  // Edition 1 takes language 1 whatever is selected and leaves the window alone.
  for (auto [edition, texts] :
       {std::pair{1, "en1|Version 6.20|Quillet\u00ae Software|Quillet\u00ae|Quillet\u00ae"},
        {2, "de1|Version 6.20EU|de1|de68|de68"},
        {3, "Brindlet Software|Version 6.20|Brindlet Software||"},
        {4, "Datalogger Software|Version 6.20|Datalogger Software|ZQ-KT Datalogger|ZQ-KT"}}) {
    t.s().settings.EditionFlag = edition;
    OpenAbout2(*t.app);
    EXPECT_EQ(a.Label1.caption + "|" + a.Label2.caption + "|" + t.w().caption + "|" + t.w().Label8.caption +
                  "|" + t.w().Label28.caption + "|" + a.Command1.caption,
              std::string(texts) + "|de120");
  }
}

}  // namespace
}  // namespace quillet
