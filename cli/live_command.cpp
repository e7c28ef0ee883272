// quillet-cli live: the window program's live reading, one line per reading.
#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <map>
#include <string>

#include "cli/cli_commands.h"
#include "cli/headless_ui.h"
#include "core/app.h"
#include "core/formatting.h"
#include "core/startup.h"
#include "link/link_supervision.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {

int RunLive(const std::map<std::string, std::string>& opts) {
  int argc = 1;
  char name[] = "quillet-cli";
  char* argv[] = {name, nullptr};
  QCoreApplication qapp(argc, argv);

  const std::string device = opts.count("--port") ? opts.at("--port") : "";
  if (device.empty()) {
    std::fprintf(stderr, "quillet-cli: live needs --port DEVICE\n");
    return 2;
  }
  long count = 0;
  if (opts.count("--count")) count = std::strtol(opts.at("--count").c_str(), nullptr, 10);
  std::string baud = opts.count("--baud") ? opts.at("--baud") : "";
  if (!baud.empty() && baud != "1200" && baud != "4800") {
    std::fprintf(stderr, "quillet-cli: --baud must be 1200 or 4800\n");
    return 2;
  }
  // COM 1 is the device named on the command line.
  qputenv("QUILLET_COM1", QByteArray::fromStdString(device));

  HeadlessUi ui;
  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  FilePlaces places{QCoreApplication::applicationDirPath().toStdString(), "."};
  places.settingsFile = opts.count("--settings") ? opts.at("--settings") : "/nonexistent/quillet-cli/logger1.ini";
  if (opts.count("--probes")) places.probesFile = opts.at("--probes");
  Platform platform{ui, clock, timers, poster, transport, places};
  App app(platform);
  ui.app = &app;
  app.port.onComm = [&app] { OnSerialEvent(app); };

  long shown = 0;
  app.onLiveReadingShown = [&] {
    const Log1View& w = app.v.log1;
    const bool overload = w.Label19.caption == "OL";
    if (!w.Label19.visible && !overload) return;  // nothing on screen: no unit known yet
    const std::string when = FormatDateTime(Now(app) - app.s.clock.ClockOffset, "yyyy-mm-dd hh:mm:ss");
    std::printf("%s %s\t%s\n", when.c_str(), w.Label19.caption.c_str(), overload ? "" : w.Label21.caption.c_str());
    std::fflush(stdout);
    if (count > 0 && ++shown >= count) QCoreApplication::exit(0);
  };

  Dispatch(app, [&app] { StartProgram(app); });
  if (app.ended) return app.exitCode == 0 ? 1 : app.exitCode;
  if (!app.port.PortOpen()) {
    std::fprintf(stderr, "quillet-cli: cannot open %s\n", device.c_str());
    return 1;
  }
  // A speed given here comes before the one the settings remember.
  if (!baud.empty()) {
    Dispatch(app, [&app, &baud] {
      app.s.settings.BaudRate = std::stod(baud);
      app.port.SetSettings(SettingsFor(app.s.settings.BaudRate));
    });
  }
  return QCoreApplication::exec();
}

}  // namespace quillet
