#include "cli/offscreen_gui.h"

#include <cstdio>

namespace quillet {

std::unique_ptr<QGuiApplication> StartOffscreenGui() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& msg) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "quillet-cli: %s\n", qPrintable(msg));
  });
  // The application keeps references to these for its whole life.
  static int argc = 1;
  static char name[] = "quillet-cli";
  static char* argv[] = {name, nullptr};
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace quillet
