// The language table, its dialog and the captions it writes.
#include <gtest/gtest.h>

#include "log1/language.h"
#include "log1/startup.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

using testing::TestApp;

TEST(Language, TwoLanguagesShowTwoOptionsAndTheRestStayHidden) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 2, 1200, 0, 0);
  t.Start();
  OpenLangfrm(*t.app);
  const LangfrmView& d = t.app->v.langfrm;
  EXPECT_TRUE(d.Option1.visible);
  EXPECT_TRUE(d.Option2.visible);
  EXPECT_EQ(d.Option1.caption, "English");
  EXPECT_EQ(d.Option2.caption, "Deutsch");
  for (int i = 3; i <= 8; ++i) EXPECT_FALSE(t.app->v.langfrm.Option(i).visible) << i;
  EXPECT_TRUE(d.Option2.checked);
  EXPECT_FALSE(d.Option1.checked);
  EXPECT_TRUE(d.Command2.visible);
  EXPECT_EQ(d.caption, "de141");
  EXPECT_EQ(d.Command1.caption, "de120");
}

TEST(Language, OneLanguageInTheFileShowsAllEightOptions) {
  TestApp t;
  t.WriteFile("loglang.txt", "\"1\",\"3\"\n\"Only\"\n\"help.html\"\n\"a\"\n\"b\"\n\"c\"\n", true);
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  OpenLangfrm(*t.app);
  for (int i = 1; i <= 8; ++i) EXPECT_TRUE(t.app->v.langfrm.Option(i).visible) << i;
  EXPECT_EQ(t.app->v.langfrm.Option2.caption, "");
}

TEST(Language, FirstStartWithNoSettingsAsksBeforeTheWindowWithOkOnly) {
  TestApp t;
  t.WriteTwoLanguageFile();
  bool cancelVisible = true, stayedOpenWithoutChoice = false, windowShownBefore = true;
  t.ui.onModal = [&](DialogId d) {
    if (d != DialogId::langfrm) return;
    windowShownBefore = t.app->v.log1.shown;
    cancelVisible = t.app->v.langfrm.Command2.visible;
    EXPECT_EQ(t.app->v.langfrm.Command1.caption, "OK");  // language 0's one string
    LangfrmOk(*t.app);
    stayedOpenWithoutChoice = t.app->v.langfrm.visible;
    LangfrmChoose(*t.app, 2);
    LangfrmOk(*t.app);
  };
  t.Start();
  EXPECT_FALSE(cancelVisible);
  EXPECT_TRUE(stayedOpenWithoutChoice);
  EXPECT_FALSE(windowShownBefore);
  EXPECT_EQ(t.app->s.settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(t.app->v.log1.mnuFile.caption, "de20");
  EXPECT_EQ(t.app->s.lang.CurrentHelpFile, "help/de.html");
}

TEST(Language, CancelGoesBackToTheLanguageBefore) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  t.ui.onModal = [&](DialogId) {
    LangfrmChoose(*t.app, 2);
    LangfrmCancel(*t.app);
  };
  Dispatch(*t.app, [&] { MnuLang(*t.app); });
  EXPECT_EQ(t.app->s.settings.LanguageIndex.Value(), 1);
  EXPECT_EQ(t.app->v.log1.mnuFile.caption, "en20");
}

TEST(Language, ChangingTheLanguageRecaptionsTheMenusAndDialogsAtOnce) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  t.app->s.link.LoggerSeen = 1;
  t.app->s.logger.LoggerSerial = 4242;
  t.ui.onModal = [&](DialogId) {
    LangfrmChoose(*t.app, 2);
    LangfrmOk(*t.app);
  };
  Dispatch(*t.app, [&] { MnuLang(*t.app); });
  const Log1View& w = t.app->v.log1;
  EXPECT_EQ(w.mnuSetTime.caption, "de31");
  EXPECT_EQ(w.mnuHelpAbout.caption, "de44");
  EXPECT_EQ(w.Command1.caption, "de51");
  EXPECT_EQ(w.Label24.caption, "de19");
  EXPECT_EQ(t.app->v.frmPort.Label1.caption, "de91");
  EXPECT_EQ(t.app->v.frmPort.Option5.caption, "de142");
  EXPECT_EQ(t.app->v.about2.caption, "de44");
  EXPECT_EQ(w.Frame1.caption, "de151 4242de152");
}

TEST(Language, AShortFileKeepsWhatWasReadAndSkipsTheSettings) {
  TestApp t;
  t.WriteFile("loglang.txt", "\"2\",\"200\"\n\"English\",\"Deutsch\"\n\"h1\",\"h2\"\n\"en1\",\"de1\"\n\"en2\"\n", true);
  t.WriteSettings(3, 2, 4800, 1, 1);
  t.Start();
  EXPECT_EQ(t.app->s.lang.LanguageTable[2][1], "de1");
  EXPECT_EQ(t.app->s.lang.LanguageTable[1][2], "en2");
  // The settings file was never read: port 1, no language, and the dialog asked.
  EXPECT_EQ(t.app->s.settings.ComPort, 1);
  EXPECT_EQ(t.ui.modals.front(), DialogId::langfrm);
  EXPECT_TRUE(t.ui.messages.empty());
  // Captions with no cell in the table come out empty.
  EXPECT_EQ(t.app->v.log1.mnuFile.caption, "");
}

TEST(Language, AMissingFileLeavesTheBuiltInCaptions) {
  TestApp t;
  t.WriteSettings(2, 1, 1200, 0, 0);
  t.Start();
  EXPECT_EQ(t.app->s.settings.ComPort, 1);
  EXPECT_TRUE(t.ui.messages.empty());
  EXPECT_EQ(t.app->v.frmPort.caption, "");  // the table has no language: empty cells
}

TEST(Language, ALanguageIndexOfNineFaultsAtItsFirstLookupAndEndsTheStart) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 9, 1200, 0, 0);
  Dispatch(*t.app, [&] {
    try {
      StartProgram(*t.app);
    } catch (const Fault& f) {
      throw f.Fatal();
    }
  });
  ASSERT_EQ(t.ui.fatal.size(), 1u);
  EXPECT_EQ(t.ui.fatal[0].first, 9);
  EXPECT_TRUE(t.ui.ended);
}

TEST(Language, HelpOpensTheSelectedLanguagesFileAtItsContentsOrSearch) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 2, 1200, 0, 0);
  t.Start();
  MnuHelpCont(*t.app);
  MnuHelpIndex(*t.app);
  ASSERT_EQ(t.ui.help.size(), 2u);
  EXPECT_EQ(t.ui.help[0].first, "help/de.html");
  EXPECT_EQ(t.ui.help[0].second, HelpCommand::Contents);
  EXPECT_EQ(t.ui.help[1].second, HelpCommand::KeywordSearch);
}

TEST(Editions, EachEditionFillsTheAboutBoxAndTheWindowTitle) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 2, 1200, 0, 0);
  t.Start();
  State& s = t.app->s;
  About2View& a = t.app->v.about2;
  s.settings.EditionFlag = 1;
  OpenAbout2(*t.app);
  EXPECT_EQ(a.Label1.caption, "en1");  // language 1 whatever is selected
  EXPECT_EQ(a.Label3.caption, "en4");
  EXPECT_EQ(a.Label2.caption, "Version 6.20");
  EXPECT_EQ(a.Label9.caption, "Vorrel Meters, Inc.");
  EXPECT_EQ(a.Command1.caption, "de120");
  EXPECT_EQ(t.app->v.log1.caption, "Quillet\u00ae Software");
  s.settings.EditionFlag = 2;
  OpenAbout2(*t.app);
  EXPECT_EQ(a.Label1.caption, "de1");
  EXPECT_EQ(a.Label11.caption, "de9");
  EXPECT_EQ(a.Label2.caption, "Version 6.20EU");
  EXPECT_EQ(a.Label9.caption, "de11");
  EXPECT_EQ(t.app->v.log1.caption, "de1");
  EXPECT_EQ(t.app->v.log1.Label8.caption, "de68");
  s.settings.EditionFlag = 3;
  OpenAbout2(*t.app);
  EXPECT_EQ(a.Label1.caption, "Brindlet Software");
  EXPECT_EQ(a.Label10.caption, "Halvane Systems, Inc.");
  EXPECT_EQ(t.app->v.log1.Label28.caption, "");
  s.settings.EditionFlag = 4;
  OpenAbout2(*t.app);
  EXPECT_EQ(t.app->v.log1.caption, "Datalogger Software");
  EXPECT_EQ(t.app->v.log1.Label8.caption, "ZQ-KT Datalogger");
  EXPECT_EQ(t.app->v.log1.Label28.caption, "ZQ-KT");
}

TEST(DateStyle, StartUpSaysEurButALaterClickSaysEUR) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  EXPECT_EQ(t.app->s.fmt.DateStyle, "Eur");
  EXPECT_EQ(t.app->s.fmt.FmtHour, "   hh");
  EXPECT_TRUE(t.app->v.log1.mnuEur.checked);
  MnuUsa(*t.app);
  EXPECT_EQ(t.app->s.fmt.DateStyle, "US");
  EXPECT_EQ(t.app->s.settings.UsDateFormat.Value(), 1);
  EXPECT_TRUE(t.app->v.log1.mnuUsa.checked);
  EXPECT_FALSE(t.app->v.log1.mnuEur.checked);
  MnuEur(*t.app);
  EXPECT_EQ(t.app->s.fmt.DateStyle, "EUR");
  EXPECT_EQ(t.app->s.fmt.FmtStampLong, "dd/mm/yy hh:mm:ss");
}

TEST(StartProgram, StartsTheNineTimersWithTheirIntervals) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  const std::map<std::string, int> expected = {{"Timer1", 200}, {"Timer2", 200}, {"Timer3", 1000},
                                               {"Timer4", 900}, {"Timer5", 2000}, {"Timer6", 200},
                                               {"Timer8", 1000}, {"Timer10", 100}, {"Timer9", 100}};
  EXPECT_EQ(t.timers.intervals, expected);
  const Log1View& w = t.app->v.log1;
  EXPECT_FALSE(w.mnuFunc.visible);
  EXPECT_FALSE(w.mnuScale.visible);
  EXPECT_FALSE(w.Command2.enabled);
  EXPECT_FALSE(w.mnuGClip.enabled);
  EXPECT_FALSE(w.Frame2.visible);
  EXPECT_EQ(t.app->s.logger.ModelCode.Value(), 1);
  EXPECT_EQ(t.app->s.logger.RangeFactor.Value(), 1);
  EXPECT_EQ(t.app->port.InBufferSize, 32766);
  EXPECT_FALSE(t.app->port.RTSEnable);
  EXPECT_TRUE(w.mnudegC.checked);
}

TEST(StartProgram, ThePanelClockRunsWithAndWithoutALogger) {
  TestApp t(46347.5);  // 12:00:00
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 1);
  t.Start();
  t.Run(1000);
  EXPECT_EQ(t.app->v.log1.Label1.caption, "12:00:01 pm");
  EXPECT_EQ(t.app->v.log1.Frame1.caption, "en90");
}

TEST(EndProgram, AsksOnceForAnUnsavedRecordAndStaysOnCancel) {
  TestApp t;
  t.WriteTwoLanguageFile();
  t.WriteSettings(1, 1, 1200, 0, 0);
  t.Start();
  EXPECT_TRUE(EndProgram(*t.app));
  EXPECT_TRUE(t.ui.messages.empty());  // no record: nothing to ask
  t.app->s.link.DownloadPercent = 100;
  t.app->s.record.RecordSaved = 0;
  std::remove((t.dir + "/logger1.ini").c_str());
  t.ui.answer = [](const MessageRequest&) { return MsgAnswer::Cancel; };
  EXPECT_FALSE(EndProgram(*t.app));
  ASSERT_EQ(t.ui.messages.size(), 1u);
  EXPECT_EQ(t.ui.messages[0].text, "en143");
  EXPECT_EQ(t.ui.messages[0].title, "en74");
  EXPECT_EQ(t.ui.messages[0].defaultButton, 2);
  EXPECT_FALSE(t.FileExists("logger1.ini"));  // nothing written on Cancel
  t.app->s.record.RecordSaved = 1;
  EXPECT_TRUE(EndProgram(*t.app));
  EXPECT_TRUE(t.FileExists("logger1.ini"));
}

}  // namespace
}  // namespace quillet
