#include "log1/language.h"

#include "hub/app.h"
#include "core/formatting.h"
#include "core/language_table.h"
#include "core/text_file.h"
#include "profiles/profile_dialog.h"

namespace quillet {

namespace {

const char* const kVersion = "Version 6.20";
const char* const kCompany = "Vorrel Meters, Inc.";
const char* const kLegalNotice =
    "This program is protected by copyright law. Unauthorized copying or distribution of this "
    "program, or any part of it, is not permitted.";

// The editions whose about box and window title are fixed texts, not language strings.
struct EditionTexts {
  const char *title, *company, *street, *town, *phone, *fax, *productLabel, *productShort;
};
const EditionTexts kFixedEditions[] = {
    {"Brindlet Software", "Halvane Systems, Inc.", "400 Quarry Road", "Millbeck, OR 97000",
     "Telephone (555) 010-4400", "Fax (555) 010-4401", "", ""},
    {"Datalogger Software", "Tarrow Engineering, Inc.", "18 Foundry Lane", "Easton Vale, PA 19000",
     "Telephone (555) 010-7700", "Fax (555) 010-7701", "ZQ-KT Datalogger", "ZQ-KT"},
};

bool LanguageChosen(const App& app) {
  const Number& li = app.s.settings.LanguageIndex;
  return li.Value() >= 1 && li.Value() <= 8;
}

}  // namespace

void LoadLanguageTable(App& app) {
  ReadLanguageFile(app.p.places.programDir + "/loglang.txt", app.s.lang);
}

void ApplyLanguage(App& app) {
  auto t = [&app](int n) { return LanguageText(app, n); };
  Log1View& w = app.v.log1;
  w.Label5.caption = t(17);
  w.Label11.caption = t(18);
  w.Label23.caption = t(19);
  w.Label24.caption = t(19);
  w.mnuFile.caption = t(20);
  w.mnuSaveTXT.caption = t(21);
  w.mnuOpen.caption = t(22);
  w.mnuPGraph.caption = t(23);
  w.mnuPData.caption = t(24);
  w.mnuGClip.caption = t(25);
  w.mnuScaling.caption = t(26);
  w.mnu420sca.caption = t(27);
  w.mnu100sca.caption = t(28);
  w.mnu10sca.caption = t(29);
  w.mnuExit.caption = t(30);
  w.mnuSetTime.caption = t(31);
  w.mnuDownload.caption = t(32);
  w.mnuPort.caption = t(33);
  w.mnuFunc.caption = t(34);
  w.mnudegF.caption = t(35);
  w.mnudegC.caption = t(36);
  w.mnuScale.caption = t(37);
  w.mnuDate.caption = t(38);
  w.mnuUsa.caption = t(39);
  w.mnuEur.caption = t(40);
  w.mnuHelp.caption = t(41);
  w.mnuHelpCont.caption = t(42);
  w.mnuHelpIndex.caption = t(43);
  w.mnuHelpAbout.caption = t(44);
  w.Frame2.caption = t(45);
  w.Label33.caption = t(46);
  w.Label32.caption = t(47);
  w.Label27.caption = t(48);
  w.Command2.caption = t(49);
  w.Command3.caption = t(50);
  w.Command1.caption = t(51);
  w.mnuLang.caption = t(141);

  FrmPortView& port = app.v.frmPort;
  port.Label1.caption = t(91);
  port.caption = t(92);
  port.Option5.caption = t(142);
  port.Command1.caption = t(120);
  port.Command2.caption = t(119);

  LangfrmView& lang = app.v.langfrm;
  lang.caption = t(141);
  lang.Command1.caption = t(120);
  lang.Command2.caption = t(119);

  FrmTimesetView& timeset = app.v.frmTimeset;
  timeset.Label9.caption = t(94);
  timeset.caption = t(95);
  for (int i = 1; i <= 6; ++i) timeset.Caption(i).caption = t(95 + i);
  timeset.Command2.caption = t(120);
  timeset.Command3.caption = t(119);

  DescribeView& describe = app.v.Describe;
  describe.Label1.caption = t(12);
  describe.caption = t(13);
  describe.Label9.caption = t(13);
  describe.Label2.caption = t(14);
  describe.Label3.caption = t(15);
  describe.Label4.caption = t(16);
  describe.Command1.caption = t(120);
  describe.Command2.caption = t(119);

  SaveOptView& saveOpt = app.v.SaveOpt;
  saveOpt.caption = t(121);
  saveOpt.Command1.caption = t(117);
  saveOpt.Command2.caption = t(118);
  saveOpt.Command3.caption = t(119);

  app.v.about2.caption = t(44);
  app.v.about2.Command1.caption = t(120);
  FillEditionTexts(app);
  ApplyProfileLanguage(app);

  app.s.lang.CurrentHelpFile = app.s.lang.LanguageHelpFile.at(app.s.settings.LanguageIndex.Value());
  if (app.s.link.LoggerSeen == 1) {
    app.s.panel.PanelSerial = app.s.logger.LoggerSerial;
    w.Frame1.caption = t(151) + StrOfNumber(app.s.panel.PanelSerial) + t(152);
  }
}

void OpenLangfrm(App& app) {
  LangfrmView& d = app.v.langfrm;
  const LanguageData& L = app.s.lang;
  d.oldIndex = app.s.settings.LanguageIndex.Value();
  d.oldIndexEmpty = app.s.settings.LanguageIndex.IsEmpty();
  d.caption = LanguageText(app, 141);
  for (int i = 1; i <= 8; ++i) d.Option(i).visible = false;
  // Options 1 and 2 always show; then one more per language, stopping after option k
  // when the count is k (2..7). Any other count shows all eight.
  for (int k = 1; k <= 8; ++k) {
    d.Option(k).caption = L.LanguageName[k];
    d.Option(k).visible = true;
    if (k >= 2 && k <= 7 && L.LanguageCount == k) break;
  }
  for (int i = 1; i <= 8; ++i) d.Option(i).checked = app.s.settings.LanguageIndex.Value() == i;
  d.Command1.caption = LanguageText(app, 120);
  d.Command2.caption = LanguageText(app, 119);
  d.Command2.visible = LanguageChosen(app);
  d.visible = true;
}

void LangfrmChoose(App& app, int option) {
  for (int i = 1; i <= 8; ++i) app.v.langfrm.Option(i).checked = (i == option);
}

void LangfrmOk(App& app) {
  LangfrmView& d = app.v.langfrm;
  for (int i = 1; i <= 8; ++i) {
    if (d.Option(i).checked && d.Option(i).visible) app.s.settings.LanguageIndex = i;
  }
  if (LanguageChosen(app)) d.visible = false;
}

void LangfrmCancel(App& app) {
  LangfrmView& d = app.v.langfrm;
  app.s.settings.LanguageIndex = d.oldIndexEmpty ? Number() : Number(d.oldIndex);
  d.visible = false;
}

void FillEditionTexts(App& app) {
  About2View& a = app.v.about2;
  Log1View& w = app.v.log1;
  const int edition = app.s.settings.EditionFlag;
  auto lang1 = [&app](int n) -> std::string { return app.s.lang.LanguageTable[1][n]; };
  auto selected = [&app](int n) -> std::string { return LanguageText(app, n); };
  a.Label8.caption = kLegalNotice;
  if (edition == 1 || edition == 2) {
    auto src = edition == 1 ? std::function<std::string(int)>(lang1) : std::function<std::string(int)>(selected);
    a.Label1.caption = src(1);
    a.Label10.caption = src(3);
    a.Label3.caption = src(4);
    a.Label4.caption = src(5);
    a.Label5.caption = src(6);
    a.Label6.caption = src(7);
    a.Label7.caption = src(8);
    if (edition == 1) {
      a.Label2.caption = kVersion;
      a.Label9.caption = kCompany;
    } else {
      a.Label11.caption = selected(9);
      a.Label2.caption = "Version 6.20EU";
      a.Label9.caption = selected(11);
      w.caption = selected(1);
      w.Label8.caption = selected(68);
      w.Label28.caption = selected(68);
    }
  } else if (edition == 3 || edition == 4) {
    const EditionTexts& e = kFixedEditions[edition - 3];
    a.Label1.caption = e.title;
    a.Label10.caption = e.company;
    a.Label3.caption = e.company;
    a.Label4.caption = e.street;
    a.Label5.caption = e.town;
    a.Label6.caption = e.phone;
    a.Label7.caption = e.fax;
    a.Label2.caption = kVersion;
    a.Label9.caption = kCompany;
    w.caption = e.title;
    w.Label8.caption = e.productLabel;
    w.Label28.caption = e.productShort;
  }
}

void OpenAbout2(App& app) {
  FillEditionTexts(app);
  app.v.about2.caption = LanguageText(app, 44);
  app.v.about2.Command1.caption = LanguageText(app, 120);
  app.v.about2.visible = true;
}

void About2Close(App& app) { app.v.about2.visible = false; }

namespace {

// Texts that handlers built from language rows (a status line, the sample rate, a
// readout) stay on screen until their next event. A change of language puts each into
// the new language at once: a caption is taken for the row whose text it shows.
void RecaptionShownTexts(App& app, int oldIndex, int newIndex) {
  const auto& was = app.s.lang.LanguageTable.at(oldIndex);
  const auto& now = app.s.lang.LanguageTable.at(newIndex);
  app.v.log1.ForEach([&](const char*, Control& c) {
    if (c.caption.empty()) return;
    for (int n = 1; n <= kStrings; ++n) {
      if (was[n] == c.caption) {
        c.caption = now[n];
        return;
      }
    }
  });
}

bool ValidIndex(const Number& index) { return index.Value() >= 1 && index.Value() <= kLanguages; }

}  // namespace

void MnuLang(App& app) {
  const Number before = app.s.settings.LanguageIndex;
  ShowModal(app, DialogId::langfrm);
  const Number& after = app.s.settings.LanguageIndex;
  const bool changed = ValidIndex(before) && ValidIndex(after) && before.Value() != after.Value();
  // First what handlers left on screen, then the captions of the table over it.
  if (changed) RecaptionShownTexts(app, static_cast<int>(before.Value()), static_cast<int>(after.Value()));
  ApplyLanguage(app);
  // The graph's own texts (the start time under it) are drawn anew.
  if (changed && app.s.record.RecordSampleCount > 2) RedrawRecordGraph(app);
}

void MnuHelpCont(App& app) { app.p.ui.ShowHelp(app.s.lang.CurrentHelpFile, HelpCommand::Contents); }
void MnuHelpIndex(App& app) { app.p.ui.ShowHelp(app.s.lang.CurrentHelpFile, HelpCommand::KeywordSearch); }
void MnuHelpAbout(App& app) { ShowModal(app, DialogId::about2); }

}  // namespace quillet
