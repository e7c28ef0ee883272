#pragma once
// The window program's link logic without a window, on a real serial device: the same
// start-up, timers and receive events, with the headless user answering for the dialogs.
#include <memory>
#include <string>

#include "cli/cli_support.h"
#include "cli/headless_ui.h"
#include "hub/app.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {

class LinkSession {
 public:
  // Needs a QCoreApplication. Throws CommandError when the device cannot be used.
  LinkSession(const std::string& device, const Options& opts);
  App& app() { return *app_; }

 private:
  HeadlessUi ui_;
  QtClock clock_;
  QtTimers timers_;
  QtPoster poster_;
  SerialTransport transport_;
  std::unique_ptr<Platform> platform_;
  std::unique_ptr<App> app_;
};

}  // namespace quillet
