// Quillet: the window program.
#include <QApplication>
#include <QDir>

#include "core/app.h"
#include "core/fault.h"
#include "core/startup.h"
#include "link/link_supervision.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

int main(int argc, char** argv) {
  QApplication qapp(argc, argv);
  QApplication::setApplicationName("Quillet");
  using namespace quillet;

  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  MainWindow window;
  Platform platform{window, clock, timers, poster, transport,
                    FilePlaces{QCoreApplication::applicationDirPath().toStdString(), QDir::currentPath().toStdString()}};
  App app(platform);
  app.port.onComm = [&app] { OnSerialEvent(app); };
  window.Attach(app);

  // A fault that nobody handles while the main window loads ends the program.
  Dispatch(app, [&app] {
    try {
      StartProgram(app);
    } catch (const Fault& f) {
      throw f.Fatal();
    }
  });
  if (app.ended) return app.exitCode;
  window.Refresh();
  window.show();
  return QApplication::exec();
}
