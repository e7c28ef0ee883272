#include "link/download.h"

#include <cmath>
#include <memory>

#include "hub/app.h"
#include "core/fault.h"
#include "core/formatting.h"
#include "core/int16.h"
#include "core/text_file.h"
#include "link/link_supervision.h"
#include "measure/model_table.h"
#include "measure/probe_table.h"
#include "measure/record_decoding.h"
#include "measure/temperature_unit.h"

namespace quillet {

namespace {

constexpr int kHeaderStatusColor = 0xC0C000;  // blue, green, red from the high byte

// A layout 2 logger sends a few bytes beyond the 22; this is how long we let them come
// in before they are thrown away. At 1200 bit/s a byte takes 9.2 ms.
constexpr double kLayout2TrailSeconds = 0.08;

void EnableLinkMenus(Log1View& w, bool on) {
  for (Control* c : {&w.mnuFile, &w.mnuSetTime, &w.mnuDownload, &w.mnuDate, &w.mnuHelp, &w.mnuPort}) c->enabled = on;
}

// The block has been taken off the line and the link is idle again (FinishBlock did that
// before the unfolding faulted); what was on screen is put back as it was.
void KeepRecordAfterOversizedBlock(App& app, const SampleRecord& kept) {
  State& s = app.s;
  Log1View& w = app.v.log1;
  s.record = kept;
  s.link.DownloadPercent = kept.FullSampleCount >= 1 ? 100 : 0;
  w.Label40.caption = GeneralNumber(kept.RecordSampleCount);
  w.Label15.visible = false;
  w.busy = false;
  EnableLinkMenus(w, true);
  // The drawing gives back the record's own menus, or says there is nothing to draw.
  RedrawRecordGraph(app);
}

}  // namespace

void StartDownload(App& app) {
  State& s = app.s;
  LinkState& L = s.link;
  if (L.LinkOff == 1) return;
  if (L.LoggerSeen != 1) {
    // A download without a logger leads to the port dialog.
    L.LinkOff = 1;
    L.LinkMode = kModeIdle;
    app.port.SetPortOpen(false);
    ShowModal(app, DialogId::frmPort);
    return;
  }
  if (s.measure.ProbeUnset == 1 && s.logger.ModelCode == 16) {
    MessageBox(app, LanguageText(app, 71), LanguageText(app, 72), MsgButtons::Ok, MsgIcon::Stop);
    return;
  }
  if (!(s.record.RecordSaved == 1 || L.DownloadPercent == 0 || L.SkipSavePrompt == 1)) {
    app.p.ui.Beep();
    if (MessageBox(app, LanguageText(app, 73), LanguageText(app, 74), MsgButtons::OkCancel, MsgIcon::Stop) !=
        MsgAnswer::Ok) {
      return;
    }
  }
  L.SkipSavePrompt = 0;
  if (L.TimeSetDone == 0) ShowModal(app, DialogId::frmTimeset);
  L.BlockPhase = 0;
  L.LinkMode = kModeIdle;
  L.HeaderRead = 0;
  L.DownloadActive = L.DownloadRefused == 1 ? 0 : 1;
  if (L.DownloadActive == 1) s.record.RecordFromFile = 0;
  L.DownloadRefused = 0;
  app.v.log1.Command2.enabled = false;
}

void RestartDownload(App& app) { StartDownload(app); }

void OnDownloadTick(App& app) {
  LinkState& L = app.s.link;
  if (L.LinkOff != 1 && L.DownloadActive != 0) L.LinkMode = L.HeaderRead != 1 ? kModeHeader : kModeBlock;
}

void OnBlockTick(App& app) {
  const LinkState& L = app.s.link;
  if (L.LinkOff == 1 || L.LinkMode != kModeBlock || L.DownloadActive == 0 || L.PortChosen == 0 || L.BlockPhase == 1) {
    return;
  }
  SendCommand(app, 'T');
}

void OnProgressTick(App& app) {
  State& s = app.s;
  if (s.link.LinkOff == 1 || s.link.BlockPhase == 0 || s.logger.BlockBytes == 0 || s.record.RecordFromFile == 1) return;
  s.link.DownloadPercent = app.port.InBufferCount() * 100.0 / s.logger.BlockBytes;
  Log1View& w = app.v.log1;
  w.ProgressBar1.value = s.link.DownloadPercent;
  w.ProgressBar1.visible = true;
  w.Label14.caption = GeneralNumber(Int(s.link.DownloadPercent));
  w.Label14.visible = true;
}

void HeaderReplyEvent(App& app) {
  LinkState& L = app.s.link;
  Log1View& w = app.v.log1;
  if (L.HeaderPhase == 0) {
    const std::string got = app.port.Input();
    if (!got.empty() && got[0] == kAck) {
      L.HeaderPhase = 1;
      app.port.SetRThreshold(kHeaderBytes);
      w.Label15.foreColor = kHeaderStatusColor;
      w.Label15.caption = LanguageText(app, 65);
      w.Label15.visible = true;
      app.p.ui.Refresh();
    }
    return;
  }
  L.HeaderPhase = 0;
  const std::string reply = app.port.Input();
  if (reply.size() < static_cast<std::size_t>(kHeaderBytes)) return;
  if (app.onHeaderReply) app.onHeaderReply(reply);
  try {
    DecodeHeader(app, reply);
  } catch (const Fault& f) {
    throw f.Fatal("the logger's header could not be decoded");  // nothing catches it
  }
}

void BlockReplyEvent(App& app) {
  LinkState& L = app.s.link;
  State& s = app.s;
  Log1View& w = app.v.log1;
  if (L.BlockPhase != 0) {
    // A logger that reports more samples than a record holds faults in the unfolding.
    // That ends this action only: the record on screen stays, and the menus come back.
    const auto kept = std::make_unique<SampleRecord>(s.record);
    try {
      FinishBlock(app);
    } catch (const Fault& f) {
      if (s.logger.StoredSamples <= kMaxSamples) throw f.Fatal("the logger's memory could not be decoded");
      KeepRecordAfterOversizedBlock(app, *kept);
      throw;
    }
    return;
  }
  const std::string got = app.port.Input();
  if (got.empty() || got[0] != kAck) return;
  if (s.logger.BlockBytes > kReceiveBufferLimit) s.logger.BlockBytes = kReceiveBufferLimit;
  app.port.SetRThreshold(static_cast<int>(s.logger.BlockBytes.Value()));
  app.port.Input();
  w.Label15.foreColor = w.Label16.foreColor = kYellow;
  w.Label15.caption = LanguageText(app, 66);
  w.Label16.caption = LanguageText(app, 67);
  w.Label15.visible = w.Label16.visible = w.Label17.visible = true;
  L.HeaderRetries = 0;
  s.record.RecordSaved = 0;
  w.mnuSaveTXT.enabled = true;
  w.busy = true;
  EnableLinkMenus(w, false);
  w.mnuFunc.visible = false;
  w.mnuScale.visible = false;
  L.BlockPhase = 1;
  if (app.onBlockStarted) app.onBlockStarted();
}

void DecodeHeader(App& app, const std::string& reply) {
  State& s = app.s;
  LoggerFields& G = s.logger;
  Log1View& w = app.v.log1;
  auto pos = [&reply](int i) -> double { return static_cast<unsigned char>(reply.at(static_cast<std::size_t>(i - 1))); };

  double m = pos(1);
  if (m > 5) m = 0;
  G.ReplyFormat = Int(pos(17) / 64) + 1;
  G.RecordReplyFormat = G.ReplyFormat;
  G.MemorySize = std::pow(2.0, m) * 2048 / G.RecordReplyFormat;
  double c0 = 0, c1 = 0, c2 = 0, c3 = 0, status = 0, w0 = 0, w1 = 0, w2 = 0;
  const bool layout1 = G.ReplyFormat == 1, layout2 = G.ReplyFormat == 2;
  if (!layout1 && !layout2) return;  // no such layout: everything else keeps its value
  if (layout1) {
    for (int i = 1; i <= 8; ++i) G.RangeMarkBytes[i] = pos(3 + i);  // positions 4..11
    c0 = pos(12); c1 = pos(13); c2 = pos(14); c3 = pos(15);
    status = pos(16);
    G.ModelCode = pos(17);
    w0 = pos(18); w1 = pos(19); w2 = 0;
    G.ScaleByte = pos(22);
  } else {
    c0 = pos(11); c1 = pos(12); c2 = pos(13); c3 = pos(14);
    status = pos(15);
    G.ModelCode = pos(17);
    w0 = pos(18); w1 = pos(19); w2 = pos(20);
    // A layout 2 logger has no range byte: its two-byte counts are always taken at 1, the
    // value every one of its live readings gives. Setting it here too means a download
    // asked for before the next live reading does not decode with an unset (or an earlier
    // logger's) range input.
    G.ScaleByte = 1;
    // The rest of a layout 2 header is thrown away once it has had time to arrive.
    app.p.transport.Settle(kLayout2TrailSeconds);
    app.port.Input();
  }
  G.LoggerSerial = pos(2) + 256 * pos(3);
  for (int j = 7; j >= 0; --j) {
    const double bit = std::pow(2.0, j);
    s.logger.StatusBits[j] = status - bit >= 0 ? 1 : 0;
    status -= s.logger.StatusBits[j] * bit;
  }
  c3 = c3 - 16 * Int(c3 / 16);
  G.ElapsedDays = c0 / kTicksPerDay + c1 / 384 + c2 * 2 / 3 + c3 * 512 / 3;
  G.TotalSamples = G.ElapsedDays == 0 ? 0 : w0 + 256 * w1 + 65536 * w2;
  double halfFills = Int((w1 + 256 * w2) / (G.MemorySize / 512));
  if (halfFills > 100 || G.ElapsedDays == 0) halfFills = 0;
  G.HalfFills = halfFills;
  G.FillPosition = G.TotalSamples - G.HalfFills * G.MemorySize / 2;
  G.StoredSamples = G.HalfFills == 0 ? G.FillPosition + 1 : G.FillPosition + G.MemorySize / 2 + 1;
  G.BlockBytes = G.RecordReplyFormat * G.StoredSamples;
  w.mnuFunc.visible = true;
  ShowTemperatureUnitChecks(app);

  if (G.ModelCode == 16) {
    LoadProbeTable(app);
  } else if (const ModelInfo* info = FindModel(G.ModelCode)) {
    w.Label34.caption = ModelLabel(*info, s.settings.EditionFlag);
    switch (info->unitSource) {
      case UnitSource::Temperature: G.LiveUnitText = s.TempUnitNames.at(s.settings.UseFahrenheit.Value()); break;
      case UnitSource::Fixed: G.LiveUnitText = info->unit; break;
      case UnitSource::ByModel: G.LiveUnitText = s.UnitByModel.at(G.ModelCode); break;
      case UnitSource::Probe: break;
    }
    if (info->rangeFactor) G.RangeFactor = *info->rangeFactor;
  }
  if (G.ModelCode >= 17) w.Label34.visible = true;
  ShowModelMenus(app);
  if (s.logger.StatusBits[4] == 1 && G.ModelCode == 17) {
    MessageBox(app, "More than four re-scalings.\rEarly data may be inaccurate.", "Be Careful", MsgButtons::Ok,
               MsgIcon::Information);
  }
  if (HeaderRangeFormModel(G.ModelCode)) G.ScaleByte = RangeForm(G.ScaleByte);
  for (int i = 1; i <= 4; ++i) {
    double mark = G.RangeMarkBytes[2 * i - 1] + 256 * G.RangeMarkBytes[2 * i];
    if (mark == 65535) mark = 0;
    G.RangeMarks[i] = mark;
  }
  G.RangeMarks[5] = 0;
  if (G.HalfFills > 1) G.BlockBytes = G.RecordReplyFormat * G.MemorySize;
  // The time a block is given; no block is longer than the receive buffer, so a header
  // that announces more (a garbled one) does not make the link wait for the rest.
  const double blockLimitBytes = G.BlockBytes > kReceiveBufferLimit ? kReceiveBufferLimit : G.BlockBytes.Value();
  s.link.BlockTimeLimit = blockLimitBytes / s.settings.BaudRate * 14;
  LinkState& L = s.link;
  L.LinkMode = kModeIdle;
  L.HeaderRead = 1;
  L.HeaderRetries = 0;
  L.LivePollEnabled = 1;
  L.LoggerSeen = 1;
  L.BaudConfirmed = 1;
  w.Label13.caption = "COM " + std::to_string(s.settings.ComPort);
  w.Label13.visible = true;
  app.p.ui.Refresh();
  s.panel.OtherLoggerNotice = 0;
  PresentRecordTiming(app);
}

void PresentRecordTiming(App& app) {
  State& s = app.s;
  LoggerFields& G = s.logger;
  Log1View& w = app.v.log1;
  if (s.record.RecordFromFile == 1) w.Label15.visible = false;
  G.FirstSampleTime = (Now(app) - s.clock.ClockOffset) - G.ElapsedDays;
  const double n = G.HalfFills == 0 ? 1 : std::pow(2.0, G.HalfFills - 1);
  G.SampleInterval = n / kTicksPerDay;
  G.LastSampleTime = G.FirstSampleTime + G.SampleInterval * (G.StoredSamples - 1);
  const double r = 4096 / n;
  const double rate = r > 1 ? r : r * 24;
  const int rateString = r > 1 ? 63 : 64;
  w.Label15.visible = false;
  w.busy = false;
  EnableLinkMenus(w, true);
  w.Label2.caption = FormatDateTime(G.FirstSampleTime, s.fmt.FmtStampLong);
  w.Label3.caption = FormatDateTime(G.LastSampleTime, s.fmt.FmtStampLong);
  w.Label4.caption = FormatNumber(rate, "#,###");
  w.Label6.caption = LanguageText(app, rateString);
  for (Control* c : {&w.Label2, &w.Label3, &w.Label4, &w.Label5, &w.Label6, &w.Label11}) c->visible = true;
  w.Frame1.caption = LanguageText(app, 151) + StrOfNumber(s.panel.PanelSerial) + LanguageText(app, 152);
  app.p.ui.Refresh();
}

void FinishBlock(App& app) {
  State& s = app.s;
  LinkState& L = s.link;
  LoggerFields& G = s.logger;
  SampleRecord& r = s.record;
  Log1View& w = app.v.log1;
  w.Label14.caption = "100";
  L.DownloadPercent = 100;
  w.ProgressBar1.value = 100;
  w.Command3.enabled = true;
  app.p.ui.Refresh();
  r.BlockData = app.port.Input() + "  ";
  w.Label26.caption = std::to_string(r.BlockData.size());
  r.RecordFromFile = 0;
  L.DownloadActive = 0;
  L.BlockPhase = 0;
  L.HeaderRead = 0;
  L.LinkMode = kModeIdle;
  L.HeaderRetries = 0;
  r.RecordLastTime = G.LastSampleTime;
  r.RecordStoredSamples = G.StoredSamples;
  r.RecordFillPosition = G.FillPosition;
  r.RecordHalfFills = G.HalfFills;
  r.RecordMemorySize = G.MemorySize;
  for (int i = 1; i <= 5; ++i) r.RecordRangeMarks[i] = G.RangeMarks[i];
  r.RecordScaleByte = G.ScaleByte;
  r.RecordSampleCount = G.StoredSamples;
  r.FullSampleCount = G.StoredSamples;
  r.LoggerNumber = G.LoggerSerial;
  r.RecordInterval = G.SampleInterval;
  for (std::string* t : {&r.RecordTitle, &r.RecordIdent, &r.RecordRemarks, &r.RecordText4, &r.RecordLocation,
                         &r.RecordText6, &r.RecordStats}) {
    t->clear();
  }
  DecodeRecord(app);
  w.Label40.caption = GeneralNumber(r.RecordSampleCount);
  w.Label40.visible = true;
  app.p.ui.Refresh();
  r.RecordModelCode = G.ModelCode;
  r.RecordRangeFactor = G.RangeFactor;
  r.RecordUnitText = G.LiveUnitText;
  const int n = static_cast<int>(r.RecordSampleCount.Value());
  double sum = 0;
  r.FullMin = r.FullValues.at(1);
  r.FullMax = r.FullValues.at(1);
  for (int i = 1; i <= n; ++i) {
    const double v = r.FullValues[i];
    if (v < r.FullMin) r.FullMin = v;
    if (v > r.FullMax) r.FullMax = v;
    sum += v;
  }
  r.FullAvg = Divide(sum, n);
  RedrawRecordGraph(app);
  for (Control* c : {&w.mnuSaveTXT, &w.mnuPGraph, &w.mnuPData, &w.mnuGClip}) c->enabled = true;
  if (app.onRecordComplete) app.onRecordComplete();
}

}  // namespace quillet
