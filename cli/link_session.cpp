#include "cli/link_session.h"

#include <QByteArray>

#include "cli/cli_texts.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "link/link_supervision.h"

namespace quillet {

LinkSession::LinkSession(const std::string& device, const Options& opts) {
  CheckDevice(device);
  ui_.where = device;
  const std::string baud = BaudOption(opts);
  // COM 1 is the device named on the command line.
  qputenv("QUILLET_COM1", QByteArray::fromStdString(device));
  const FilePlaces places = CommandPlaces(opts);
  platform_ = std::make_unique<Platform>(Platform{ui_, clock_, timers_, poster_, transport_, places});
  app_ = std::make_unique<App>(*platform_, Log1Hooks());
  App& app = *app_;
  ui_.app = &app;
  app.port.onComm = [&app] { OnSerialEvent(app); };

  StartCommandApp(app);
  if (!app.port.PortOpen()) throw CommandError{Say(CliText::CannotOpen, {device})};
  // A speed given here comes before the one the settings remember.
  if (!baud.empty()) {
    Dispatch(app, [&app, &baud] {
      app.s.settings.BaudRate = std::stod(baud);
      app.port.SetSettings(SettingsFor(app.s.settings.BaudRate));
    });
  }
}

}  // namespace quillet
