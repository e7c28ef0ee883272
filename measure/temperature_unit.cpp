#include "measure/temperature_unit.h"

#include "hub/app.h"
#include "measure/record_decoding.h"

namespace quillet {

void ShowTemperatureUnitChecks(App& app) {
  app.v.log1.mnudegF.checked = app.s.settings.UseFahrenheit == 1;
  app.v.log1.mnudegC.checked = !app.s.settings.UseFahrenheit.IsEmpty() && app.s.settings.UseFahrenheit == 0;
}

void SetTemperatureUnit(App& app, int unit) {
  State& s = app.s;
  if (s.link.LinkMode == kModeBlock) return;
  if (!s.settings.UseFahrenheit.IsEmpty() && s.settings.UseFahrenheit == unit) return;
  s.settings.UseFahrenheit = unit;
  s.logger.LiveUnitText = s.TempUnitNames[unit];
  ShowTemperatureUnitChecks(app);
  if (s.record.RecordFromFile != 1 && s.link.DownloadPercent >= 100 && s.panel.OtherLoggerNotice != 1) {
    s.record.RecordUnitText = s.logger.LiveUnitText;
    s.record.RecordModelCode = s.logger.ModelCode;
    DecodeRecord(app);
    RedrawRecordGraph(app);
  }
}

}  // namespace quillet
