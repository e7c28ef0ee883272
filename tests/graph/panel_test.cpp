// The panel of the connected logger as the 100 ms tick keeps it.
#include "graph/panel.h"

#include <gtest/gtest.h>

#include "graph_test_app.h"

namespace quillet {
namespace {

using testing::GraphApp;

struct Panel : GraphApp {
  void Tick() {
    Dispatch(*app, [this] { OnPanelTick(*app); });
  }
};

TEST(PanelTick, AConnectedLoggerIsNamedAndItsStoredSamplesShownWithThousands) {
  Panel t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4711;
  t.s().logger.StoredSamples = 12345;
  t.Tick();
  EXPECT_EQ(t.w().Frame1.caption, "en151 4711en152");
  EXPECT_EQ(t.w().Label22.caption, "12,345");
  EXPECT_TRUE(t.w().Label22.visible);
  t.s().logger.StoredSamples = 0;
  t.Tick();
  EXPECT_EQ(t.w().Label22.caption, "");
}

TEST(PanelTick, AGraphOfAnotherLoggerIsNotedUntilOneOfTheConnectedLoggerIsDrawn) {
  Panel t;
  t.s().link.LoggerSeen = 1;
  t.s().logger.LoggerSerial = 4711;
  t.FillMinutes({1, 2, 3});
  t.s().record.LoggerNumber = 815;  // opened from a file of another logger
  t.Draw();
  t.Tick();
  EXPECT_TRUE(t.w().Label7.visible);
  EXPECT_EQ(t.w().Label7.caption, "en89");
  EXPECT_EQ(t.s().panel.OtherLoggerNotice, 1);

  t.s().record.LoggerNumber = 4711;
  t.Draw();
  t.Tick();
  EXPECT_FALSE(t.w().Label7.visible);
  EXPECT_EQ(t.s().panel.OtherLoggerNotice, 0);
}

}  // namespace
}  // namespace quillet
