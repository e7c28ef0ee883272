#include "link/live_reading.h"

#include "hub/app.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "link/link_supervision.h"
#include "measure/conversion.h"
#include "measure/model_table.h"

namespace quillet {

void OnLiveIntervalTick(App& app) {
  const LinkState& L = app.s.link;
  if (L.PollPaused != 1 && L.LinkOff != 1 && L.LinkMode == kModeIdle) app.s.link.LinkMode = kModeLive;
}

void OnLiveTick(App& app) {
  const LinkState& L = app.s.link;
  if (L.LinkOff == 1 || L.LivePollEnabled == 0 || L.PortChosen != 1 || L.LinkMode != kModeLive ||
      L.LivePhase == 1 || L.BlockPhase == 1) {
    return;
  }
  SendCommand(app, 'D');
}

void LiveReplyEvent(App& app) {
  LinkState& L = app.s.link;
  if (L.LivePhase == 0) {
    const std::string got = app.port.Input();  // everything waiting; only the first byte counts
    if (!got.empty() && got[0] == kAck) {
      L.LivePhase = 1;
      app.port.SetRThreshold(2);
    }
    return;
  }
  L.LivePhase = 0;
  ShowLiveReading(app, app.port.Input());
}

void ShowLiveReading(App& app, const std::string& reply) {
  LoggerFields& G = app.s.logger;
  LinkState& L = app.s.link;
  Log1View& w = app.v.log1;
  const double b1 = reply.size() > 0 ? static_cast<unsigned char>(reply[0]) : 0;
  const double b2 = reply.size() > 1 ? static_cast<unsigned char>(reply[1]) : 0;
  if (G.ReplyFormat == 1) {
    G.RawValue = b1;
    G.ScaleByte = b2;
    if (LiveRangeFormModel(G.ModelCode)) G.ScaleByte = RangeForm(G.ScaleByte);
  } else if (G.ReplyFormat == 2) {
    // A little-endian count with four fraction bits and an offset of 2048.
    G.RawValue = b2 * 16 + b1 / 16 - 2048;
    G.ScaleByte = 1;
    G.LiveUnitText = app.s.TempUnitNames.at(app.s.settings.UseFahrenheit.Value());
  }
  Number value;
  try {
    value = ConvertRawToValue(G.RawValue, G.ModelCode, G.ScaleByte,
                              ConversionInputs{G.RangeFactor, app.s.settings.UseFahrenheit, &app.s.scales});
  } catch (const Fault& f) {
    throw f.Fatal("the logger's live reading could not be converted");  // nothing catches it
  }
  w.Label19.caption = FormatNumber(value, "###0.00");
  w.Label21.caption = G.LiveUnitText;
  const bool overload = !G.RawValue.IsEmpty() && G.RawValue.Value() == 255;
  if (overload) w.Label19.caption = "OL";
  w.Label21.visible = !overload;
  w.Label19.visible = !w.Label21.caption.empty();
  app.p.ui.Refresh();
  if (app.onLiveReadingShown) app.onLiveReadingShown();
  L.LinkMode = kModeIdle;
  L.HeaderRetries = 0;
  if (L.LoggerSeen == 1) return;
  // The first reading after a loss: the logger is here, at this speed.
  L.LoggerSeen = 1;
  L.BaudConfirmed = 1;
  w.Label13.caption = "COM " + std::to_string(app.s.settings.ComPort);
  w.Label13.visible = true;
  app.p.ui.Refresh();
  L.LinkMode = kModeHeader;
}

}  // namespace quillet
