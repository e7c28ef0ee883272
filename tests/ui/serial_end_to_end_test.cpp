// The Qt port layer and the link logic against quillet-sim over a real pseudo-terminal.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "log1/hooks.h"
#include "hub/app.h"
#include "log1/startup.h"
#include "link/link_supervision.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {
namespace {

class Emulator {
 public:
  Emulator(const QString& link, const QStringList& args) {
    process_.setProgram(QUILLET_BIN_DIR "/quillet-sim");
    process_.setArguments(args + QStringList{"--link", link});
    process_.start();
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(link) && t.elapsed() < 5000) QThread::msleep(20);
  }
  ~Emulator() {
    process_.terminate();
    process_.waitForFinished(3000);
  }

 private:
  QProcess process_;
};

struct LinkedProgram {
  explicit LinkedProgram(int baud) {
    QFile f(dir.path() + "/logger1.ini");
    f.open(QIODevice::WriteOnly);
    QString s = QString("\"[PORT etc]\"\n\"comm port =  1\"\n\"language =  1\"\n\"baud =  %1\"\n\"Fahrenheit =  0\"\n"
                        "\"US Date Format =  1\"\n\"[probe data]\"\n").arg(baud);
    for (int i = 1; i <= 11; ++i) s += ",,\"\",\"\"\n";
    for (int i = 0; i <= 61; ++i) s += ",,,,,,,\n";
    s += "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\n";
    f.write(s.toUtf8());
    f.close();
    qputenv("QUILLET_COM1", (dir.path() + "/tty").toUtf8());
    platform = std::make_unique<Platform>(Platform{window, clock, timers, poster, transport,
                                                   FilePlaces{QUILLET_BIN_DIR, dir.path().toStdString()}});
    app = std::make_unique<App>(*platform, Log1Hooks());
    app->port.onComm = [a = app.get()] { OnSerialEvent(*a); };
    window.Attach(*app);
  }
  // Runs the event loop until the condition holds or the time is up.
  bool RunUntil(const std::function<bool()>& done, int ms) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
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

TEST(SerialEndToEnd, ATemperatureLoggerIsFoundAndItsLiveValueShows) {
  LinkedProgram p(1200);
  Emulator sim(p.dir.path() + "/tty", {"--model", "17", "--baud", "1200", "--serial", "777", "--elapsed", "2h"});
  Dispatch(*p.app, [&] { StartProgram(*p.app); });
  ASSERT_TRUE(p.app->port.PortOpen());
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.LoggerSeen == 1; }, 6000));
  EXPECT_EQ(p.app->v.log1.Label13.caption, "COM 1");
  // The header follows by itself and names the logger; the next reading has its unit.
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.HeaderRead == 1; }, 4000));
  EXPECT_EQ(p.app->s.logger.LoggerSerial.Value(), 777);
  EXPECT_EQ(p.app->s.logger.ModelCode.Value(), 17);
  EXPECT_EQ(p.app->v.log1.Label34.caption, "Temperature");
  ASSERT_TRUE(p.RunUntil([&] { return p.app->v.log1.Label19.visible; }, 5000));
  EXPECT_EQ(p.app->v.log1.Label21.caption, "degC");
  EXPECT_FALSE(p.app->v.log1.Label19.caption.empty());
}

TEST(SerialEndToEnd, ALoggerAtFourThousandEightHundredIsFoundFromTwelveHundred) {
  LinkedProgram p(1200);
  Emulator sim(p.dir.path() + "/tty", {"--model", "18", "--baud", "4800"});
  Dispatch(*p.app, [&] { StartProgram(*p.app); });
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.LoggerSeen == 1; }, 10000));
  EXPECT_EQ(p.app->s.settings.BaudRate.Value(), 4800);
  EXPECT_EQ(p.app->s.link.BaudConfirmed.Value(), 1);
}

TEST(SerialEndToEnd, AStoppedEmulatorIsNoticedAndARestartedOneFoundAgain) {
  LinkedProgram p(1200);
  const QString link = p.dir.path() + "/tty";
  auto sim = std::make_unique<Emulator>(link, QStringList{"--model", "17", "--baud", "1200"});
  Dispatch(*p.app, [&] { StartProgram(*p.app); });
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.HeaderRead == 1; }, 8000));
  sim.reset();
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.LoggerSeen == 0; }, 8000));
  // Started again, as a logger plugged back in: found with no action from the user.
  sim = std::make_unique<Emulator>(link, QStringList{"--model", "17", "--baud", "1200"});
  ASSERT_TRUE(p.RunUntil([&] { return p.app->s.link.LoggerSeen == 1; }, 12000));
}

}  // namespace
}  // namespace quillet
