#include "log1/startup.h"

#include "hub/app.h"
#include "log1/language.h"
#include "core/own_texts.h"
#include "core/settings_file.h"
#include "graph/panel.h"
#include "link/download.h"
#include "link/link_supervision.h"
#include "link/live_reading.h"
#include "measure/model_table.h"
#include "measure/temperature_unit.h"

namespace quillet {

std::string SettingsPath(const App& app) {
  if (!app.p.places.settingsFile.empty()) return app.p.places.settingsFile;
  return app.p.places.currentDir + "/" + kSettingsFileName;
}

namespace {
SettingsFields FieldsOf(App& app) {
  return SettingsFields{app.s.settings, app.s.probes, app.s.scales, app.s.UnitByModel};
}
}  // namespace

void ReadSettings(App& app) { ReadSettingsFile(SettingsPath(app), FieldsOf(app)); }
void WriteSettings(App& app) { WriteSettingsFile(SettingsPath(app), FieldsOf(app)); }

namespace {

void Nothing(App&) {}

const TimerSpec kTimers[] = {
    {"Timer1", 200, OnHeaderTick},       {"Timer2", 200, OnBlockTick},
    {"Timer3", 1000, OnProgressTick},    {"Timer4", 900, OnDownloadTick},
    {"Timer5", 2000, OnLiveIntervalTick}, {"Timer6", 200, OnLiveTick},
    {"Timer8", 1000, OnWatchdogTick},    {"Timer10", 100, OnPanelTick},
    {"Timer9", 100, Nothing},
};

void HideAndClear(Control& c) {
  c.visible = false;
  c.caption.clear();
}

}  // namespace

const TimerSpec* MainTimers(int& count) {
  count = static_cast<int>(sizeof kTimers / sizeof kTimers[0]);
  return kTimers;
}

namespace {

// The two columns of the date formats, in the order of the DateFormats fields.
struct DateFormatColumn {
  const char *stampLong, *stamp, *date, *time, *hourMinute, *hour, *style;
};
constexpr DateFormatColumn kUsFormats = {"mm/dd/yy hh:mm:ss am/pm", "m/d/yy hh:mm:ss am/pm", "m/d/yy",
                                         "hh:mm:ss am/pm", "h:mm am/pm", "h am/pm", "US"};
constexpr DateFormatColumn kEurFormats = {"dd/mm/yy hh:mm:ss", "d/m/yy hh:mm:ss", "d/m/yy", "hh:mm:ss",
                                          "h:mm", "   hh", "EUR"};

void InstallFormats(App& app, const DateFormatColumn& c) {
  app.s.fmt = DateFormats{c.stampLong, c.stamp, c.date, c.time, c.hourMinute, c.hour, c.style};
}

}  // namespace

void InstallUsFormats(App& app) { InstallFormats(app, kUsFormats); }
void InstallEurFormats(App& app) { InstallFormats(app, kEurFormats); }

void MnuUsa(App& app) {
  InstallUsFormats(app);
  if (app.v.log1.mnuUsa.checked) return;
  Command1Click(app);
  RedrawGraph(app);
  app.s.settings.UsDateFormat = 1;
  app.v.log1.mnuUsa.checked = true;
  app.v.log1.mnuEur.checked = false;
}

void MnuEur(App& app) {
  InstallEurFormats(app);
  if (app.v.log1.mnuEur.checked) return;
  Command1Click(app);
  RedrawGraph(app);
  app.s.settings.UsDateFormat = 0;
  app.v.log1.mnuEur.checked = true;
  app.v.log1.mnuUsa.checked = false;
}

void LoadLanguageAndSettings(App& app) {
  try {
    LoadLanguageTable(app);
    ReadSettings(app);
    OpenPortAtStart(app);
  } catch (const Fault& f) {
    // The settings file is closed by now; the fall-back opens a port all the same.
    HandleStartupFault(app, f.number());
  }
}

void StartProgram(App& app) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  // 1
  w.ProgressBar1.value = 0;
  w.ProgressBar1.visible = false;
  // 2
  s.settings.BaudRate = 1200;
  s.settings.EditionFlag = 1;
  // So that what start-up can show while no language is chosen (the port message, the
  // port and language dialogs) has words: English, in language 0.
  int startupRows = 0;
  const StartupRow* rows = StartupRows(startupRows);
  for (int i = 0; i < startupRows; ++i) s.lang.LanguageTable[0][rows[i].row] = rows[i].text;
  // 3
  w.Label8.caption = "Quillet\u00ae";
  w.Label28.caption = "Quillet\u00ae";
  w.caption = "Quillet\u00ae Software";
  w.Picture2.visible = true;
  w.Picture3.visible = w.Picture4.visible = w.Picture5.visible = w.Picture6.visible = false;
  // 4
  const DateParts now = SplitDateTime(Now(app));
  s.clock.ClockParts[1] = static_cast<std::int16_t>(now.month);
  s.clock.ClockParts[2] = static_cast<std::int16_t>(now.day);
  s.clock.ClockParts[3] = static_cast<std::int16_t>(now.year);
  s.clock.ClockParts[4] = static_cast<std::int16_t>(now.hour);
  s.clock.ClockParts[5] = static_cast<std::int16_t>(now.minute);
  s.clock.ClockParts[6] = static_cast<std::int16_t>(now.second);
  s.link.TimeSetDone = 0;
  // 5
  s.fonts.FontName1 = s.fonts.FontName2 = "Arial";
  const int sizes[] = {10, 8, 14, 9, 12, 8};
  for (int i = 1; i <= 6; ++i) s.fonts.FontSizes[i] = sizes[i - 1];
  InstallUsFormats(app);
  // 6
  w.mnuFunc.visible = false;
  w.mnuScale.visible = false;
  for (Control* c : {&w.Command2, &w.Command3, &w.Command5, &w.Command6, &w.mnuSaveTXT, &w.mnuPGraph,
                     &w.mnuPData, &w.mnuGClip}) {
    c->enabled = false;
  }
  // The "%" beside the percent is a sign, not a record label: hidden, but kept.
  w.Label17.visible = false;
  for (Control* c : {&w.Label19, &w.Label21, &w.Label4, &w.Label6, &w.Label14, &w.Label18,
                     &w.Label22, &w.Label26, &w.Label25, &w.Label9, &w.Label10, &w.Label12, &w.Label40,
                     &w.Label29, &w.Label30, &w.Label31}) {
    HideAndClear(*c);
  }
  // Their design texts mark the two time labels that no header has filled yet.
  w.Label2.caption = "Label2";
  w.Label3.caption = "Label3";
  w.Label2.visible = w.Label3.visible = false;
  w.Frame2.visible = false;
  for (int n = 1; n <= 30; ++n) HideAndClear(app.v.Func1.Option[n]);
  // 7
  s.logger.RangeFactor = 1;
  s.link.LivePollEnabled = 0;
  s.logger.ModelCode = 1;
  // 8
  app.port.InputLen = 0;
  app.port.InBufferSize = 32766;
  app.port.RTSEnable = false;
  // 9
  LoadLanguageAndSettings(app);
  // 10
  ShowTemperatureUnitChecks(app);
  // 11
  app.port.SetSettings(SettingsFor(s.settings.BaudRate));
  // 12
  const double li = s.settings.LanguageIndex.Value();
  if (!(li >= 1 && li <= 8)) ShowModal(app, DialogId::langfrm);
  ApplyLanguage(app);
  // 13
  if (s.settings.UsDateFormat == 1) {
    MnuUsa(app);
    s.fmt.DateStyle = "US";
  } else {
    MnuEur(app);
    s.fmt.DateStyle = "Eur";
  }
  // 14 (the help file of the selected language, set again by ApplyLanguage at each change)
  s.lang.CurrentHelpFile = s.lang.LanguageHelpFile.at(s.settings.LanguageIndex.Value());
  // 15
  int count = 0;
  const TimerSpec* timers = MainTimers(count);
  for (int i = 0; i < count; ++i) {
    auto action = timers[i].action;
    app.p.timers.StartTimer(timers[i].name, timers[i].intervalMs, [&app, action] { Dispatch(app, [&app, action] { action(app); }); });
  }
  // 16
  for (Control* c : {&w.Label1, &w.Label7, &w.Label13, &w.Label15, &w.Label16, &w.Label34, &w.Label35}) {
    HideAndClear(*c);
  }
  w.Label35.caption = "*";
  InstallUnitRows(s.UnitByModel);
  InstallTempUnitNames(s.TempUnitNames);
  w.shown = true;
}

bool EndProgram(App& app) {
  const State& s = app.s;
  if (s.record.RecordSaved != 1 && s.link.DownloadPercent != 0) {
    const MsgAnswer a = MessageBox(app, LanguageText(app, 143), LanguageText(app, 74), MsgButtons::OkCancel,
                                   MsgIcon::Stop, 2);
    if (a != MsgAnswer::Ok) return false;
  }
  try {
    WriteSettings(app);
  } catch (const Fault& f) {
    // Nothing is lost but this run's settings; the old file stays as it was.
    std::string text = OwnTextIn(app.s.settings.LanguageIndex.Value(), OwnText::SettingsNotSaved);
    text.replace(text.find("%1"), 2, SettingsPath(app));
    MessageBox(app, text + "\n\n" + f.what(), "Quillet", MsgButtons::Ok, MsgIcon::Exclamation);
  }
  return true;
}

void ArrangeMainWindow(App& app) {
  if (app.s.link.DownloadPercent == 100) RedrawGraph(app);
}

}  // namespace quillet
