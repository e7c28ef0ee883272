#pragma once
// Shared set-up of the window and end-to-end tests: the window program on the Qt platform
// with its files in a fresh folder, a user who answers modal windows, the emulator as a
// process on a pseudo-terminal, and runs of quillet-cli.
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <functional>
#include <memory>

#include "hub/app.h"
#include "link/link_supervision.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "support/settings_text.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {

// logger1.ini with the given port, language and speed, degrees Celsius and US dates.
inline QString SettingsText(int port, int language, int baud) {
  return QString::fromStdString(testing::SettingsFileText({port, language, baud, 0, 1, {}, ""}));
}

namespace testing {

// quillet-sim on a pseudo-terminal reachable through `link`, for as long as it lives.
class EmulatorProcess {
 public:
  EmulatorProcess(const QString& link, QStringList args) {
    process_.start(QUILLET_BIN_DIR "/quillet-sim", args << "--link" << link);
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(link) && t.elapsed() < 5000) QThread::msleep(20);
  }
  ~EmulatorProcess() {
    process_.terminate();
    process_.waitForFinished(3000);
  }

 private:
  QProcess process_;
};

struct CliRun {
  int exitCode = -1;  // -1: killed by a signal or timed out
  QString out, err;
  double seconds = 0;
};

inline CliRun RunCli(const QStringList& args, int timeoutMs = 60000) {
  QProcess cli;
  QElapsedTimer t;
  t.start();
  cli.start(QUILLET_BIN_DIR "/quillet-cli", args);
  CliRun r;
  if (!cli.waitForFinished(timeoutMs)) {
    cli.kill();
    cli.waitForFinished();
    r.err = "timed out";
    return r;
  }
  r.seconds = t.elapsed() / 1000.0;
  r.exitCode = cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1;
  r.out = QString::fromUtf8(cli.readAllStandardOutput());
  r.err = QString::fromUtf8(cli.readAllStandardError());
  return r;
}

// Cancels a modal window by its Cancel button, or closes it.
inline void Dismiss(QWidget* w) {
  if (auto* cancel = w->findChild<QPushButton*>("Command2")) {
    cancel->click();
  } else {
    w->close();
  }
}

// Runs fn on the modal window of the given name once it is up ("" any, every time),
// polling while the window program waits in it.
struct WhenModal {
  WhenModal(const QString& name, std::function<void(QWidget*)> fn) {
    QObject::connect(&timer, &QTimer::timeout, [this, name, fn] {
      QWidget* w = QApplication::activeModalWidget();
      if (!w || (!name.isEmpty() && (w->objectName() != name || done))) return;
      done = true;
      fn(w);
    });
    timer.start(30);
  }
  QTimer timer;
  bool done = false;
};

// Cancels (or closes) every modal window that comes up while it lives.
struct DismissModals : WhenModal {
  DismissModals() : WhenModal("", Dismiss) {}
};

// A window program with the shipped language and help files and the settings file given
// (none when empty) in a fresh folder. COM 1 is a device that does not exist, or with
// `linked` the pseudo-terminal link "tty" in that folder.
struct WindowProgram {
  explicit WindowProgram(const QString& settings = QString(), bool linked = false) {
    if (!settings.isEmpty()) {
      QFile f(dir.path() + "/logger1.ini");
      f.open(QIODevice::WriteOnly);
      f.write(settings.toUtf8());
    }
    qputenv("QUILLET_COM1", linked ? (dir.path() + "/tty").toUtf8() : QByteArray(QUILLET_BIN_DIR "/no-such-device"));
    platform = std::make_unique<Platform>(Platform{window, clock, timers, poster, transport,
                                                   FilePlaces{QUILLET_BIN_DIR, dir.path().toStdString()}});
    app = std::make_unique<App>(*platform, Log1Hooks());
    app->port.onComm = [a = app.get()] { OnSerialEvent(*a); };
    window.Attach(*app);
  }
  void Start() {
    Dispatch(*app, [this] { StartProgram(*app); });
    window.Refresh();
    window.show();
  }
  // Starts with the missing device's message and the port dialog answered with Cancel.
  void StartDismissing() {
    DismissModals dismiss;
    Start();
  }
  // Runs the event loop until the condition holds or the time is up.
  bool RunUntil(const std::function<bool()>& done, int ms) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
  }
  QAction* Action(const char* name) { return window.findChild<QAction*>(name); }
  template <class W>
  W* Find(const char* name) {
    return window.findChild<W*>(name);
  }
  State& s() { return app->s; }
  Log1View& w() { return app->v.log1; }

  QTemporaryDir dir;
  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  MainWindow window;
  std::unique_ptr<Platform> platform;
  std::unique_ptr<App> app;
};

}  // namespace testing

using testing::DismissModals;
using testing::WindowProgram;

}  // namespace quillet
