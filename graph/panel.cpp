#include "graph/panel.h"

#include "hub/app.h"
#include "core/formatting.h"
#include "core/text_file.h"
#include "graph/draw_graph.h"

namespace quillet {

void OnPanelTick(App& app) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  if (s.link.LoggerSeen == 0) {
    const std::string& noLogger = LanguageText(app, 90);
    if (w.Frame1.caption != noLogger) w.Frame1.caption = noLogger;
    w.Label22.visible = w.Label23.visible = w.Label7.visible = false;
    s.panel.OtherLoggerNotice = 0;
    for (Control* c : {&w.Label2, &w.Label3, &w.Label4, &w.Label5, &w.Label6, &w.Label11, &w.Label13, &w.Label34,
                       &w.Label19, &w.Label21}) {
      c->visible = false;
    }
  } else if (s.link.LoggerSeen == 1) {
    if (s.panel.PanelTitled != 1 || s.logger.LoggerSerial.Value() != s.panel.PanelSerial.Value()) {
      s.panel.PanelSerial = s.logger.LoggerSerial;
      w.Frame1.caption = LanguageText(app, 151) + " " + GeneralNumber(s.panel.PanelSerial) + LanguageText(app, 152);
      s.panel.PanelTitled = 1;
    }
    w.Label22.caption = FormatNumber(s.logger.StoredSamples, "#,###");
    w.Label22.visible = w.Label23.visible = true;
    if (w.Label2.caption != "Label2") w.Label2.visible = true;
    if (w.Label3.caption != "Label3") w.Label3.visible = true;
    w.Label4.visible = w.Label5.visible = w.Label6.visible = w.Label11.visible = true;
    if (s.panel.GraphLoggerNumber.Value() != s.panel.PanelSerial.Value() && s.link.DownloadPercent == 100) {
      w.Label7.caption = LanguageText(app, 89);
      s.panel.OtherLoggerNotice = 1;
      w.Label7.visible = true;
    } else {
      w.Label7.visible = false;
      s.panel.OtherLoggerNotice = 0;
    }
  }
  w.Label1.caption = FormatDateTime(Now(app) - s.clock.ClockOffset, s.fmt.FmtTime);
  w.Label1.visible = true;
}

void RedrawGraph(App& app) {
  app.p.ui.PaintGraph([&app](DrawSurface& surface) { DrawGraph(app, surface); });
}

}  // namespace quillet
