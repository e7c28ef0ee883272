// Quillet: the window program.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "core/app.h"
#include "core/fault.h"
#include "core/startup.h"
#include "link/link_supervision.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace {

// For the start-up benchmark: reports the time to the first paint of the main window and
// the resident memory then, and leaves at once (nothing is saved).
void ReportFirstPaintAndLeave(const QElapsedTimer& since) {
  long pages = 0;
  QFile statm("/proc/self/statm");
  if (statm.open(QIODevice::ReadOnly)) {
    const QList<QByteArray> fields = statm.readAll().split(' ');
    if (fields.size() > 1) pages = fields[1].toLong();
  }
  std::printf("first_paint_ms=%.1f rss_kib=%ld\n", since.nsecsElapsed() / 1e6, pages * 4);
  std::fflush(stdout);
  std::_Exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  QElapsedTimer sinceStart;
  sinceStart.start();
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
  if (qEnvironmentVariableIsSet("QUILLET_EXIT_AFTER_FIRST_PAINT")) {
    window.repaint();
    QTimer::singleShot(0, [&sinceStart] { ReportFirstPaintAndLeave(sinceStart); });
  }
  return QApplication::exec();
}
