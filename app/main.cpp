// Quillet: the window program.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "log1/hooks.h"
#include "hub/app.h"
#include "core/fault.h"
#include "log1/startup.h"
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

// QUILLET_WINDOW_GEOMETRY="WxH" or "WxH+X+Y" gives the main window a fixed size and place,
// so that scripted runs (screenshots) find every control where they expect it.
void PlaceWindowFromEnvironment(QWidget& window) {
  const QString spec = qEnvironmentVariable("QUILLET_WINDOW_GEOMETRY").trimmed();
  if (spec.isEmpty()) return;
  static const QRegularExpression form(R"(^(\d{2,5})x(\d{2,5})(?:\+(\d{1,5})\+(\d{1,5}))?$)");
  const QRegularExpressionMatch m = form.match(spec);
  if (!m.hasMatch()) {
    std::fprintf(stderr, "quillet: QUILLET_WINDOW_GEOMETRY \"%s\" is not WxH or WxH+X+Y; ignored\n",
                 qPrintable(spec));
    return;
  }
  window.resize(m.captured(1).toInt(), m.captured(2).toInt());
  if (m.hasCaptured(3)) window.move(m.captured(3).toInt(), m.captured(4).toInt());
}

// QUILLET_TRIGGER="name[@ms],..." triggers menu entries or clicks buttons by their names
// (mnuPort, mnuHelpAbout, Command3 ...) once the window shows, each after its delay from
// the start (default 500 ms, then 1 s apart): scripted runs open dialogs this way.
void TriggerFromEnvironment(QWidget& window) {
  const QStringList steps = qEnvironmentVariable("QUILLET_TRIGGER").split(',', Qt::SkipEmptyParts);
  int at = 500;
  for (const QString& step : steps) {
    const QStringList parts = step.trimmed().split('@');
    if (parts.size() > 1) at = parts[1].toInt();
    const QString name = parts[0];
    QTimer::singleShot(at, &window, [&window, name] {
      if (auto* action = window.findChild<QAction*>(name)) {
        action->trigger();
      } else if (auto* button = window.findChild<QAbstractButton*>(name)) {
        button->click();
      } else {
        std::fprintf(stderr, "quillet: QUILLET_TRIGGER names no menu entry or button \"%s\"\n", qPrintable(name));
      }
    });
    at += 1000;
  }
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
  App app(platform, Log1Hooks());
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
  PlaceWindowFromEnvironment(window);
  window.show();
  TriggerFromEnvironment(window);
  if (qEnvironmentVariableIsSet("QUILLET_EXIT_AFTER_FIRST_PAINT")) {
    window.repaint();
    QTimer::singleShot(0, [&sinceStart] { ReportFirstPaintAndLeave(sinceStart); });
  }
  return QApplication::exec();
}
