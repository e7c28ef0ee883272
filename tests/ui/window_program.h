#pragma once
// Shared set-up of the window and end-to-end tests: the window program on the Qt platform
// with its files in a fresh folder, a user who answers modal windows, the emulator as a
// process on a pseudo-terminal, and runs of quillet-cli in a fresh folder.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
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

namespace testing {

// logger1.ini with COM 1 at 1200 bit/s, the given language, degrees Celsius and US dates.
inline QByteArray SettingsText(int language = 1) {
  return QByteArray::fromStdString(SettingsFileText({1, language, 1200, 0, 1, {}, ""}));
}

inline void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << path.toStdString();
  f.write(bytes);
}

inline QByteArray FileBytes(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// quillet-sim on a pseudo-terminal reachable through `link`, for as long as it lives.
struct EmulatorProcess {
  EmulatorProcess(const QString& link, QStringList args) {
    process.start(QUILLET_BIN_DIR "/quillet-sim", args << "--link" << link);
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(link) && t.elapsed() < 5000) QThread::msleep(20);
  }
  ~EmulatorProcess() {
    process.terminate();
    process.waitForFinished(3000);
  }
  QProcess process;
};

struct CliRun {
  int exitCode = -1;  // -1: killed by a signal or timed out
  QString out, err;
  double seconds = 0;
};

// A run of quillet-cli, killed after a minute.
inline CliRun RunCli(const QStringList& args) {
  QProcess cli;
  QElapsedTimer t;
  t.start();
  cli.start(QUILLET_BIN_DIR "/quillet-cli", args);
  if (!cli.waitForFinished(60000)) return {-1, "", "timed out"};
  return {cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1,
          QString::fromUtf8(cli.readAllStandardOutput()), QString::fromUtf8(cli.readAllStandardError()),
          t.elapsed() / 1000.0};
}

// Each command-line test runs in a fresh folder, where the emulator's link is "tty".
struct CliFolder : ::testing::Test {
  void SetUp() override { QDir::setCurrent(dir.path()); }
  void TearDown() override { QDir::setCurrent(QDir::tempPath()); }
  QTemporaryDir dir;
  const QString tty = dir.path() + "/tty";
};

// Cancels a modal window by its Cancel button, or closes it.
inline void Dismiss(QWidget* w) {
  auto* cancel = w->findChild<QPushButton*>("Command2");
  cancel ? cancel->click() : void(w->close());
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

// A window program with the shipped language and help files and the settings file given
// (none when empty) in a fresh folder. COM 1 is a device that does not exist, or with
// `linked` the pseudo-terminal link "tty" in that folder.
struct WindowProgram {
  explicit WindowProgram(const QByteArray& settings = {}, bool linked = false) {
    if (!settings.isEmpty()) WriteFile(dir.path() + "/logger1.ini", settings);
    qputenv("QUILLET_COM1",
            linked ? (dir.path() + "/tty").toUtf8() : QByteArray(QUILLET_BIN_DIR "/no-such-device"));
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
    WhenModal dismiss("", Dismiss);
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

using testing::SettingsText;
using testing::WindowProgram;

}  // namespace quillet
