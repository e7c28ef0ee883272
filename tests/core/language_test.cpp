// The language table, its dialog and the captions it writes; the start and end of the program.
#include "log1/language.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "link/link_supervision.h"
#include "log1/startup.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::StartedApp;
using testing::TestApp;

TEST(Language, TheDialogShowsOneOptionPerLanguageOrAllEightForAFileOfOne) {
  StartedApp t(1, 2);
  OpenLangfrm(*t.app);
  LangfrmView& d = t.app->v.langfrm;
  EXPECT_EQ(d.Option1.caption + d.Option2.caption + d.caption, "EnglishDeutschde141");
  for (int i = 1; i <= 8; ++i) EXPECT_EQ(d.Option(i).visible, i <= 2) << i;
  EXPECT_TRUE(d.Option2.checked && !d.Option1.checked && d.Command2.visible);

  TestApp one;
  one.WriteFile("loglang.txt", "\"1\",\"3\"\n\"Only\"\n\"help.html\"\n\"a\"\n\"b\"\n\"c\"\n", true);
  one.WriteSettings(1, 1, 1200, 0, 0);
  one.Start();
  OpenLangfrm(*one.app);
  for (int i = 1; i <= 8; ++i) EXPECT_TRUE(one.app->v.langfrm.Option(i).visible) << i;
}

TEST(Language, FirstStartWithNoSettingsSpeaksEnglishAndAsksBeforeTheWindowWithOkOnly) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.transport.openFaults[1] = 68;
  bool cancelVisible = true, stayedOpenWithoutChoice = false, windowShownBefore = true;
  t.ui.onModal = [&](DialogId d) {
    if (d == DialogId::frmPort) {
      EXPECT_EQ(t.app->v.frmPort.Option5.caption, "No Logger");
      FrmPortCancel(*t.app);
      return;
    }
    windowShownBefore = t.w().shown;
    cancelVisible = t.app->v.langfrm.Command2.visible;
    EXPECT_EQ(t.app->v.langfrm.caption + t.app->v.langfrm.Command1.caption, "LanguageOK");
    LangfrmOk(*t.app);
    stayedOpenWithoutChoice = t.app->v.langfrm.visible;
    LangfrmChoose(*t.app, 2);
    LangfrmOk(*t.app);
  };
  t.Start();
  ASSERT_FALSE(t.ui.messages.empty());
  EXPECT_EQ(t.ui.messages[0].title, "Sorry");
  EXPECT_EQ(t.ui.messages[0].text.rfind("The communications port could not be opened.", 0), 0u);
  EXPECT_FALSE(cancelVisible || windowShownBefore);
  EXPECT_TRUE(stayedOpenWithoutChoice);
  EXPECT_EQ(t.s().settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(t.w().mnuFile.caption, "de20");
  EXPECT_EQ(t.s().lang.CurrentHelpFile, "help/de.html");
}

TEST(Language, OkRecaptionsMenusAndDialogsAtOnceAndCancelGoesBack) {
  StartedApp t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4242;
  for (bool ok : {false, true}) {
    t.ui.onModal = [&](DialogId) {
      LangfrmChoose(*t.app, 2);
      ok ? LangfrmOk(*t.app) : LangfrmCancel(*t.app);
    };
    t.Do(MnuLang);
    EXPECT_EQ(t.s().settings.LanguageIndex.Value(), ok ? 2 : 1);
    EXPECT_EQ(t.w().mnuFile.caption, ok ? "de20" : "en20");
  }
  EXPECT_EQ(t.app->v.frmPort.Option5.caption, "de142");
  EXPECT_EQ(t.w().Frame1.caption, "de151 4242de152");
  MnuHelpCont(*t.app);
  MnuHelpIndex(*t.app);
  ASSERT_EQ(t.ui.help.size(), 2u);
  EXPECT_EQ(t.ui.help[0], std::pair(std::string("help/de.html"), HelpCommand::Contents));
  EXPECT_EQ(t.ui.help[1].second, HelpCommand::KeywordSearch);
  // The date style says "Eur" after the start, "EUR" after a click.
  EXPECT_EQ(t.s().fmt.DateStyle, "Eur");
  MnuUsa(*t.app);
  EXPECT_TRUE(t.w().mnuUsa.checked && !t.w().mnuEur.checked && t.s().settings.UsDateFormat.Value() == 1);
  MnuEur(*t.app);
  EXPECT_EQ(t.s().fmt.DateStyle + " " + t.s().fmt.FmtStampLong, "EUR dd/mm/yy hh:mm:ss");
}

TEST(Language, AShortMissingOrBadFileKeepsWhatWasReadAndSkipsTheSettings) {
  TestApp t;
  t.WriteFile("loglang.txt",
              "\"2\",\"200\"\n\"English\",\"Deutsch\"\n\"h1\",\"h2\"\n\"en1\",\"de1\"\n\"en2\"\n", true);
  t.WriteSettings(3, 2, 4800, 1, 1);
  t.Start();
  EXPECT_EQ(t.s().lang.LanguageTable[2][1] + t.s().lang.LanguageTable[1][2], "de1en2");
  EXPECT_EQ(t.s().settings.ComPort, 1);  // the settings file was never read
  EXPECT_EQ(t.ui.modals.front(), DialogId::langfrm);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.w().mnuFile.caption, "");  // no cell in the table: empty

  TestApp none;
  none.WriteSettings(2, 1, 1200, 0, 0);
  none.Start();
  EXPECT_EQ(none.s().settings.ComPort, 1);
  EXPECT_TRUE(none.ui.messages.empty());

  TestApp nine;  // a language index of nine faults at its first lookup and ends the start
  nine.WriteTwoLanguageFile();
  nine.WriteSettings(1, 9, 1200, 0, 0);
  nine.Do([&] {
    try {
      StartProgram(*nine.app);
    } catch (const Fault& f) {
      throw f.Fatal();
    }
  });
  ASSERT_EQ(nine.ui.fatal.size(), 1u);
  EXPECT_EQ(nine.ui.fatal[0].first, 9);
  EXPECT_TRUE(nine.ui.ended);
}

TEST(Editions, EachEditionFillsTheAboutBoxAndTheWindowTitle) {
  StartedApp t(1, 2);
  const About2View& a = t.app->v.about2;
  // Edition 1 takes language 1 whatever is selected and leaves the window alone.
  for (auto [edition, texts] : {std::pair{1, "en1|Version 6.20|Quillet\u00ae Software|Quillet\u00ae|Quillet\u00ae"},
                                {2, "de1|Version 6.20EU|de1|de68|de68"},
                                {3, "Brindlet Software|Version 6.20|Brindlet Software||"},
                                {4, "Datalogger Software|Version 6.20|Datalogger Software|ZQ-KT Datalogger|ZQ-KT"}}) {
    t.s().settings.EditionFlag = edition;
    OpenAbout2(*t.app);
    EXPECT_EQ(a.Label1.caption + "|" + a.Label2.caption + "|" + t.w().caption + "|" + t.w().Label8.caption + "|" +
                  t.w().Label28.caption,
              texts);
    EXPECT_EQ(a.Command1.caption, "de120");
  }
}

TEST(StartAndEnd, TheTimersStartTheClockRunsWithoutALoggerAndAnUnsavedRecordIsAskedForOnce) {
  StartedApp t(1, 1, 1200, 1);
  const std::map<std::string, int> expected = {{"Timer1", 200},  {"Timer2", 200},  {"Timer3", 1000},
                                               {"Timer4", 900},  {"Timer5", 2000}, {"Timer6", 200},
                                               {"Timer8", 1000}, {"Timer10", 100}, {"Timer9", 100}};
  EXPECT_EQ(t.timers.intervals, expected);
  EXPECT_FALSE(t.w().mnuFunc.visible || t.w().Command2.enabled || t.w().Frame2.visible);
  EXPECT_EQ(t.app->port.InBufferSize, 32766);
  t.Run(1000);
  EXPECT_EQ(t.w().Label1.caption + "|" + t.w().Frame1.caption, "12:00:01 pm|en90");

  EXPECT_TRUE(EndProgram(*t.app));
  EXPECT_TRUE(t.ui.messages.empty());  // no record: nothing to ask
  t.s().link.DownloadPercent = 100;
  t.s().record.RecordSaved = 0;
  std::remove(t.Path("logger1.ini").c_str());
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  EXPECT_FALSE(EndProgram(*t.app));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text + t.ui.messages[0].title, "en143en74");
  EXPECT_EQ(t.ui.messages[0].defaultButton, 2);
  EXPECT_FALSE(t.FileExists("logger1.ini"));  // nothing written on Cancel
  t.s().record.RecordSaved = 1;
  EXPECT_TRUE(EndProgram(*t.app));
  EXPECT_TRUE(t.FileExists("logger1.ini"));
}

}  // namespace
}  // namespace quillet
