#include "link/timeset.h"

#include <string>

#include "hub/app.h"
#include "core/date_time.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "core/text_file.h"
#include "link/download.h"
#include "link/link_supervision.h"

namespace quillet {

namespace {

// Positions of the parts in ClockParts, which is also the order of the six controls.
constexpr int kMonth = 1, kDay = 2, kYear = 3, kHour = 4, kMinute = 5, kSecond = 6;

constexpr int kTimesetTickMs = 1000;
constexpr int kFirstMonthName = 102;  // language strings 102..113: January .. December

// Ctrl+W: the one character that unlocks the calibration buttons, and only on the
// models whose firmware takes "H" and "L".
constexpr int kCalibrationKey = 23;
bool TakesCalibration(double modelCode) { return modelCode == 64 || modelCode == 65 || modelCode == 66; }

std::int16_t& Part(App& app, int n) { return app.s.clock.ClockParts[n]; }

void SetPart(App& app, int n, int value) { Part(app, n) = ToInt16(value); }

// Every fourth year is a leap year here; the century rule is deliberately not applied.
void BuildDaysInMonth(App& app) {
  FrmTimesetView& d = app.v.frmTimeset;
  const int days[] = {31, 0, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int m = 1; m <= 12; ++m) d.DaysInMonth[m] = days[m - 1];
  d.DaysInMonth[2] = Part(app, kYear) % 4 == 0 ? 29 : 28;
}

void WriteParts(App& app) {
  for (int n = 1; n <= 6; ++n) app.v.frmTimeset.Text(n).caption = std::to_string(Part(app, n));
}

// Str of a 16-bit part: a blank in the place of the sign.
std::string PartText(int value) { return StrOfNumber(Number(value)); }

void SendCalibration(App& app, char letter) {
  // No reply is awaited: whatever the logger answers goes at the next flush.
  app.port.Input();
  app.port.Output(std::string{'\0', letter});
}

}  // namespace

void OpenFrmTimeset(App& app) {
  FrmTimesetView& d = app.v.frmTimeset;
  const DateParts now = SplitDateTime(Now(app) - app.s.clock.ClockOffset);
  SetPart(app, kMonth, now.month);
  SetPart(app, kDay, now.day);
  SetPart(app, kYear, now.year);
  SetPart(app, kHour, now.hour);
  SetPart(app, kMinute, now.minute);
  SetPart(app, kSecond, now.second);
  BuildDaysInMonth(app);
  for (int m = 1; m <= 12; ++m) d.MonthNames[m] = LanguageText(app, kFirstMonthName + m - 1);
  WriteParts(app);
  d.Label7.caption.clear();
  d.Label8.caption.clear();
  if (d.timerInterval == 0) {
    // The dialog is created once and never destroyed, so its timer runs for the life of
    // the window; a tick while the dialog is hidden does nothing.
    app.p.timers.StartTimer("frmTimeset.Timer1", kTimesetTickMs,
                            [&app] { Dispatch(app, [&app] { OnTimesetTick(app); }); });
  }
  d.timerInterval = kTimesetTickMs;
  d.visible = true;
}

void TimesetUpClick(App& app, int upDown) {
  const int v = Part(app, upDown) + 1;
  switch (upDown) {
    case kMonth:
      SetPart(app, kMonth, v > 12 ? 1 : v);
      break;
    case kDay:
      SetPart(app, kDay, v > app.v.frmTimeset.DaysInMonth[Part(app, kMonth)] ? 1 : v);
      break;
    case kYear:
      SetPart(app, kYear, v);
      break;
    case kHour:
      SetPart(app, kHour, v > 23 ? 0 : v);
      break;
    case kMinute:
    case kSecond:
      SetPart(app, upDown, v > 59 ? 0 : v);
      break;
    default:
      throw Fault(kFaultSubscript, "no such up-down control");
  }
  app.v.frmTimeset.Text(upDown).caption = std::to_string(Part(app, upDown));
}

void TimesetDownClick(App& app, int upDown) {
  const int v = Part(app, upDown) - 1;
  switch (upDown) {
    case kMonth:
      SetPart(app, kMonth, v < 1 ? 12 : v);
      break;
    case kDay:
      SetPart(app, kDay, v < 1 ? app.v.frmTimeset.DaysInMonth[Part(app, kMonth)] : v);
      break;
    case kYear:
      SetPart(app, kYear, v);
      break;
    case kHour:
      SetPart(app, kHour, v < 0 ? 23 : v);
      break;
    case kMinute:
    case kSecond:
      SetPart(app, upDown, v < 0 ? 59 : v);
      break;
    default:
      throw Fault(kFaultSubscript, "no such up-down control");
  }
  app.v.frmTimeset.Text(upDown).caption = std::to_string(Part(app, upDown));
}

void TimesetTyped(App& app, int part, int value) {
  int lo = 0, hi = 59;
  switch (part) {
    case kMonth: lo = 1; hi = 12; break;
    case kDay: lo = 1; hi = app.v.frmTimeset.DaysInMonth[Part(app, kMonth)]; break;
    case kYear: lo = 1980; hi = 2099; break;
    case kHour: hi = 23; break;
    case kMinute:
    case kSecond: break;
    default: throw Fault(kFaultSubscript, "no such up-down control");
  }
  if (value >= lo && value <= hi) {
    SetPart(app, part, value);
    if (part == kYear || part == kMonth) {
      BuildDaysInMonth(app);
      // A day past the end of the new month becomes its last day.
      if (Part(app, kDay) > app.v.frmTimeset.DaysInMonth[Part(app, kMonth)]) {
        SetPart(app, kDay, app.v.frmTimeset.DaysInMonth[Part(app, kMonth)]);
      }
    }
  }
  WriteParts(app);
}

void OnTimesetTick(App& app) {
  FrmTimesetView& d = app.v.frmTimeset;
  if (!d.visible) return;
  int month = Part(app, kMonth), day = Part(app, kDay), year = Part(app, kYear);
  int hour = Part(app, kHour), minute = Part(app, kMinute), second = Part(app, kSecond) + 1;
  if (second == 60) {
    second = 0;
    ++minute;
  }
  if (minute == 60) {
    minute = 0;
    ++hour;
  }
  if (hour == 24) {
    hour = 0;
    ++day;
  }
  if (day == d.DaysInMonth[month] + 1) {
    day = 1;
    ++month;
  }
  if (month == 13) {
    month = 1;
    ++year;
  }
  // A month stepped by hand may leave the day too high for it.
  if (day > d.DaysInMonth[month]) day = d.DaysInMonth[month];
  SetPart(app, kMonth, month);
  SetPart(app, kDay, day);
  SetPart(app, kYear, year);
  SetPart(app, kHour, hour);
  SetPart(app, kMinute, minute);
  SetPart(app, kSecond, second);
  WriteParts(app);
  const std::string& name = d.MonthNames[month];
  if (app.s.settings.UsDateFormat == 1) {
    d.Label7.caption = name + " " + PartText(day) + ", " + PartText(year);
  } else {
    d.Label7.caption = PartText(day) + " " + name + " " + PartText(year);
  }
  d.Label8.caption =
      FormatNumber(hour, "00") + ":" + FormatNumber(minute, "00") + ":" + FormatNumber(second, "00");
}

void SetClock(App& app) {
  const DateTime set = MakeDateTime(DateParts{Part(app, kYear), Part(app, kMonth), Part(app, kDay),
                                              Part(app, kHour), Part(app, kMinute), Part(app, kSecond)});
  // Only the year is unbounded; outside the platform's date range it is a fault here.
  SplitDateTime(set);
  app.s.clock.ClockOffset = Now(app) - set;
  app.s.link.DownloadRefused = 0;
  app.s.link.TimeSetDone = 1;
  app.v.frmTimeset.visible = false;
}

void TimesetCancel(App& app) {
  LinkState& L = app.s.link;
  // Cancel on the way to a download stops the download; from the menu it changes nothing.
  if (L.SetTimeFromMenu != 1) L.DownloadRefused = 1;
  L.SetTimeFromMenu = 0;
  app.v.frmTimeset.visible = false;
}

void HideTimesetDialog(App& app) { app.v.frmTimeset.visible = false; }

void MnuSetTime(App& app) {
  LinkState& L = app.s.link;
  if (L.LinkMode == kModeHeader || L.LinkMode == kModeBlock) return;
  L.SetTimeFromMenu = 1;
  ShowModal(app, DialogId::frmTimeset);
  // The new offset moves the shown first and last sample times.
  if (L.LinkOff != 1) PresentRecordTiming(app);
}

// A disabled button raises no click.
void Command5Click(App& app) {
  if (app.v.log1.Command5.enabled) SendCalibration(app, 'H');
}

void Command6Click(App& app) {
  if (app.v.log1.Command6.enabled) SendCalibration(app, 'L');
}

void Log1KeyPress(App& app, int keyAscii) {
  if (keyAscii != kCalibrationKey || !TakesCalibration(app.s.logger.ModelCode.Value())) return;
  app.v.log1.Command5.enabled = true;
  app.v.log1.Command6.enabled = true;
}

}  // namespace quillet
