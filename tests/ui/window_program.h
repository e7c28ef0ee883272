#pragma once
// The window program under the offscreen platform, for the window tests: the shipped
// language and help files beside it, its settings in a fresh folder.
#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "hub/app.h"
#include "link/link_supervision.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {

// A window program with the shipped language and help files and a settings file in a
// fresh folder; COM 1 points at a device that does not exist unless told otherwise.
struct WindowProgram {
  explicit WindowProgram(const QString& settings = QString()) {
    if (!settings.isEmpty()) {
      QFile f(dir.path() + "/logger1.ini");
      f.open(QIODevice::WriteOnly);
      f.write(settings.toUtf8());
    }
    qputenv("QUILLET_COM1", QByteArray(QUILLET_BIN_DIR "/no-such-device"));
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
  QTemporaryDir dir;
  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  MainWindow window;
  std::unique_ptr<Platform> platform;
  std::unique_ptr<App> app;
};

inline QString SettingsText(int port, int language, int baud) {
  QString s = QString("\"[PORT etc]\"\n\"comm port =  %1\"\n\"language =  %2\"\n\"baud =  %3\"\n"
                      "\"Fahrenheit =  0\"\n\"US Date Format =  1\"\n\"[probe data]\"\n")
                  .arg(port)
                  .arg(language)
                  .arg(baud);
  for (int i = 1; i <= 11; ++i) s += ",,\"\",\"\"\n";
  for (int i = 0; i <= 61; ++i) s += ",,,,,,,\n";
  s += "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\n";
  return s;
}

// Cancels (or closes) every modal window that comes up while it lives.
struct DismissModals {
  DismissModals() {
    QObject::connect(&timer, &QTimer::timeout, [] {
      if (QWidget* w = QApplication::activeModalWidget()) {
        if (auto* cancel = w->findChild<QPushButton*>("Command2")) {
          cancel->click();
        } else {
          w->close();
        }
      }
    });
    timer.start(30);
  }
  QTimer timer;
};

}  // namespace quillet
