// The Qt port layer and the link logic against quillet-sim over a real pseudo-terminal.
#include <gtest/gtest.h>

#include "ui/window_program.h"

namespace quillet {
namespace {

using testing::EmulatorProcess;
using testing::WindowProgram;

struct LinkedProgram : WindowProgram {
  LinkedProgram() : WindowProgram(SettingsText(1, 1, 1200), true) {}
  QString Link() const { return dir.path() + "/tty"; }
  void StartProgram() {
    Dispatch(*app, [this] { quillet::StartProgram(*app); });
  }
};

TEST(SerialEndToEnd, ATemperatureLoggerIsFoundAndItsLiveValueShows) {
  LinkedProgram p;
  EmulatorProcess sim(p.Link(), {"--model", "17", "--baud", "1200", "--serial", "777", "--elapsed", "2h"});
  p.StartProgram();
  ASSERT_TRUE(p.app->port.PortOpen());
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 6000));
  EXPECT_EQ(p.w().Label13.caption, "COM 1");
  // The header follows by itself and names the logger; the next reading has its unit.
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.HeaderRead == 1; }, 4000));
  EXPECT_EQ(p.s().logger.LoggerSerial.Value(), 777);
  EXPECT_EQ(p.s().logger.ModelCode.Value(), 17);
  EXPECT_EQ(p.w().Label34.caption, "Temperature");
  ASSERT_TRUE(p.RunUntil([&] { return p.w().Label19.visible; }, 5000));
  EXPECT_EQ(p.w().Label21.caption, "degC");
  EXPECT_FALSE(p.w().Label19.caption.empty());
}

TEST(SerialEndToEnd, ALoggerAtFourThousandEightHundredIsFoundFromTwelveHundred) {
  LinkedProgram p;
  EmulatorProcess sim(p.Link(), {"--model", "18", "--baud", "4800"});
  p.StartProgram();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 10000));
  EXPECT_EQ(p.s().settings.BaudRate.Value(), 4800);
  EXPECT_EQ(p.s().link.BaudConfirmed.Value(), 1);
}

TEST(SerialEndToEnd, AStoppedEmulatorIsNoticedAndARestartedOneFoundAgain) {
  LinkedProgram p;
  auto sim = std::make_unique<EmulatorProcess>(p.Link(), QStringList{"--model", "17", "--baud", "1200"});
  p.StartProgram();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.HeaderRead == 1; }, 8000));
  sim.reset();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 0; }, 8000));
  // Started again, as a logger plugged back in: found with no action from the user.
  sim = std::make_unique<EmulatorProcess>(p.Link(), QStringList{"--model", "17", "--baud", "1200"});
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 12000));
}

}  // namespace
}  // namespace quillet
