#include "link/link_supervision.h"

#include <string>

#include "hub/app.h"
#include "core/fault.h"
#include "link/download.h"
#include "link/live_reading.h"
#include "link/timeset.h"

namespace quillet {

namespace {

Control& PortOption(App& app, int n) {
  FrmPortView& d = app.v.frmPort;
  Control* o[] = {&d.Option1, &d.Option2, &d.Option3, &d.Option4, &d.Option5};
  return *o[n - 1];
}

}  // namespace

const char* SettingsFor(double baud) { return baud == 4800 ? "4800,N,8,2" : "1200,N,8,2"; }

void SendCommand(App& app, char letter) {
  if (letter == 'D') app.s.link.LiveRequestAt = Now(app);
  app.port.SetRThreshold(1);
  app.port.Input();  // stale bytes of an earlier exchange go here
  app.port.Output(std::string{'\0', letter});
}

void OnHeaderTick(App& app) {
  LinkState& L = app.s.link;
  if (L.LinkOff == 1 || L.LinkMode != kModeHeader || L.HeaderPhase == 1 || L.PortChosen == 0) return;
  // A download takes the link from a live reading at any moment: while the reply of the
  // last "D" may still be on its way, the "R" waits a tick, or that reply's 0x04 would be
  // read as the header's and the header would come out shifted by two bytes.
  const double sinceLive = (Now(app) - L.LiveRequestAt) * 86400.0;
  if (L.LiveRequestAt >= 0 && sinceLive >= 0 && sinceLive < kLiveReplyWindowSeconds) return;
  app.port.SetRThreshold(1);
  L.HeaderRetries = static_cast<std::int16_t>(L.HeaderRetries + 1);
  if (L.HeaderRetries < kHeaderRequestLimit) {
    SendCommand(app, 'R');
    return;
  }
  app.port.SetPortOpen(false);
  app.p.ui.Beep();
  const std::string text =
      LanguageText(app, 86) + "\n" + LanguageText(app, 87) + "\n" + LanguageText(app, 158);
  MessageBox(app, text, LanguageText(app, 159), MsgButtons::Ok, MsgIcon::Exclamation);
  HideTimesetDialog(app);
  L.HeaderRetries = 0;
  L.PortChosen = 0;
  L.LinkMode = kModeIdle;
  ShowModal(app, DialogId::frmPort);
}

void SwitchSpeed(App& app) {
  LinkState& L = app.s.link;
  app.s.settings.BaudRate = app.s.settings.BaudRate == 4800 ? 1200 : 4800;
  app.v.log1.Label35.visible = true;
  L.BaudJustSwitched = 1;
  app.port.SetSettings(SettingsFor(app.s.settings.BaudRate));
  L.BaudConfirmed = 0;
  app.s.panel.PanelTitled = 0;
  L.HeaderPhase = 0;
  L.LivePhase = 0;
  L.LinkMode = kModeIdle;
  L.ModeTicks = 0;
}

void OnWatchdogTick(App& app) {
  LinkState& L = app.s.link;
  if (L.BaudJustSwitched == 1) app.v.log1.Label35.visible = false;
  L.BaudJustSwitched = 0;
  if (L.LinkOff == 1) return;
  if (L.LinkModeSeen.Value() != L.LinkMode.Value()) {  // the empty number compares as 0
    L.LinkModeSeen = L.LinkMode;
    L.ModeTicks = 0;
    return;
  }
  L.ModeTicks = L.ModeTicks + 1;
  switch (static_cast<int>(L.LinkMode.Value())) {
    case kModeIdle:
      L.ModeTicks = 0;
      break;
    case kModeHeader:
      if (L.ModeTicks >= 3) {
        L.ModeTicks = 0;
        app.v.log1.Label15.visible = false;
        // A header cut short (a byte lost, the logger pulled mid-reply) never reaches its
        // 22 bytes; without this the phase would stay 1 and no "R" would ever be sent again.
        L.HeaderPhase = 0;
        L.LinkMode = kModeLive;
        // During a download its tick takes the link back within a second, so the live
        // poll never runs long enough to give up the speed: a logger switched to the other
        // speed would be asked for its header at the wrong one until the twenty requests
        // run out. Here the header's own silence judges the speed.
        if (L.DownloadActive == 1) {
          L.LoggerSeen = 0;
          SwitchSpeed(app);
        }
      }
      break;
    case kModeBlock:
      if (L.ModeTicks >= 3 && (L.DownloadPercent == 0 || L.ModeTicks >= L.BlockTimeLimit + 5)) {
        L.LivePhase = 0;
        L.HeaderPhase = 0;
        L.BlockPhase = 0;
        L.HeaderRead = 0;
        L.ModeTicks = 0;
        L.SkipSavePrompt = 1;
        RestartDownload(app);
      }
      break;
    case kModeLive:
      if (L.ModeTicks >= 2) {
        L.LoggerSeen = 0;
        // A reading cut short after its 0x04 would otherwise stop every further "D".
        L.LivePhase = 0;
        if (!(L.BaudConfirmed == 1 && L.ModeTicks < 10)) SwitchSpeed(app);
      }
      break;
    default:
      break;
  }
}

void OnSerialEvent(App& app) {
  if (app.port.CommEvent != 2) return;
  switch (static_cast<int>(app.s.link.LinkMode.Value())) {
    case kModeHeader: HeaderReplyEvent(app); break;
    case kModeBlock: BlockReplyEvent(app); break;
    case kModeLive:
      LiveReplyEvent(app);
      // The reading is in: nothing of it is left on the wire.
      if (app.s.link.LinkMode != kModeLive) app.s.link.LiveRequestAt = -1;
      break;
    default: break;  // idle: the bytes stay until the next request flushes them
  }
}

void OpenPortAtStart(App& app) {
  app.port.CommPortNumber = app.s.settings.ComPort;
  if (app.s.settings.ComPort < 1 || app.s.settings.ComPort > 16) throw Fault(8002, "Invalid port number");
  app.s.link.PortChosen = 1;
  app.s.link.LivePollEnabled = 1;
  if (!app.port.PortOpen()) app.port.SetPortOpen(true);
  app.s.link.LinkMode = kModeIdle;
  app.s.link.LinkOff = 0;
}

void UseDefaultPort(App& app) {
  try {
    app.s.settings.ComPort = 1;
    app.port.CommPortNumber = 1;
    app.s.link.PortChosen = 1;
    app.s.link.LinkMode = kModeIdle;
    app.s.link.LivePollEnabled = 1;
    app.s.link.LinkOff = 0;
    if (!app.port.PortOpen()) app.port.SetPortOpen(true);
  } catch (const Fault&) {
    app.s.link.PortChosen = 0;
    MessageBox(app, LanguageText(app, 59), LanguageText(app, 54), MsgButtons::Ok, MsgIcon::Information);
    ShowModal(app, DialogId::frmPort);
  }
}

void HandleStartupFault(App& app, int faultNumber) {
  if (faultNumber != kFaultDeviceUnavailable) {
    app.s.settings.ComPort = 1;
    UseDefaultPort(app);
    return;
  }
  app.s.link.PortChosen = 0;
  MessageBox(app, LanguageText(app, 59), LanguageText(app, 54), MsgButtons::Ok, MsgIcon::Information);
  ShowModal(app, DialogId::frmPort);
}

void OpenFrmPort(App& app) {
  FrmPortView& d = app.v.frmPort;
  for (int n = 1; n <= 4; ++n) {
    PortOption(app, n).caption = "COM " + std::to_string(n);
    PortOption(app, n).checked = app.s.settings.ComPort == n;
  }
  d.Option5.checked = app.s.settings.ComPort == 0;
  d.visible = true;
}

void FrmPortChoose(App& app, int option) {
  for (int n = 1; n <= 5; ++n) PortOption(app, n).checked = (n == option);
}

void ChoosePort(App& app) {
  FrmPortView& d = app.v.frmPort;
  LinkState& L = app.s.link;
  int n = 0;
  try {
    if (app.port.PortOpen()) app.port.SetPortOpen(false);
    for (int i = 1; i <= 4; ++i) {
      if (PortOption(app, i).checked) {
        n = i;
        break;
      }
    }
    if (n != 0) {
      app.port.CommPortNumber = n;
      L.PortChosen = 1;
      app.s.settings.ComPort = static_cast<std::int16_t>(n);
      L.LinkMode = kModeHeader;
      if (!app.port.PortOpen()) app.port.SetPortOpen(true);
      L.LinkOff = 0;
      d.visible = false;
    } else {
      if (app.port.PortOpen()) app.port.SetPortOpen(false);
      L.LinkOff = 1;
      L.PortChosen = 0;
      app.s.logger.ModelCode = 0;
      d.visible = false;
    }
  } catch (const Fault& f) {
    if (f.number() == kFaultPermissionDenied) L.LinkMode = kModeHeader;
    if (f.number() != kFaultDeviceUnavailable) {
      d.visible = false;
      return;
    }
    // The warning joins "COM " and the port number by numeric addition, which is itself
    // a type mismatch that nothing catches: an unavailable port ends the program here.
    throw Fault(kFaultTypeMismatch, "\"COM \" + " + std::to_string(n)).Fatal("COM " + std::to_string(n) + " is not available");
  }
}

void FrmPortCancel(App& app) { app.v.frmPort.visible = false; }

void MnuPort(App& app) {
  if (app.s.link.PortChosen == 1 && app.s.link.LoggerSeen == 1) return;
  ShowModal(app, DialogId::frmPort);
}

void Command1Click(App& app) {
  if (app.s.link.LoggerSeen != 0 && app.s.link.LinkMode != kModeBlock) {
    app.p.ui.Beep();
    app.s.link.LinkMode = kModeHeader;
  }
}

}  // namespace quillet
