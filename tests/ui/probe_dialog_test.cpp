// The probe dialog Func1 under the offscreen platform, filled from the shipped probes.dat.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include "measure/probe_table.h"
#include "ui/dialogs.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

TEST(ProbeDialog, Func1ShowsTheFirstGroupOfTheShippedFileAndTakesTheChoice) {
  testing::WindowProgram p;
  App& app = *p.app;
  MainWindow& window = p.window;
  app.s.logger.LoggerSerial = 12;
  Dispatch(app, [&app] { LoadProbeTable(app); });
  ASSERT_FALSE(app.ended);
  auto* func01 = window.findChild<QAction*>("func01");
  ASSERT_NE(func01, nullptr);
  EXPECT_EQ(func01->text(), "AC Current Probes");
  EXPECT_TRUE(func01->isVisible());
  EXPECT_FALSE(window.findChild<QAction*>("func03")->isVisible());

  QString title;
  QStringList shown;
  QStringList sections;
  bool hiddenFuture = true;
  QTimer::singleShot(50, [&] {
    QWidget* w = QApplication::activeModalWidget();
    ASSERT_NE(w, nullptr);
    ASSERT_EQ(w->objectName(), "Func1");
    title = w->windowTitle();
    for (int n = 1; n <= 30; ++n) {
      auto* option = w->findChild<QRadioButton*>(QString("Option%1").arg(n));
      if (option->isVisible()) {
        shown << option->text();
      } else if (option->text() != "Future") {
        hiddenFuture = false;
      }
    }
    for (int s = 1; s <= 3; ++s) sections << w->findChild<QGroupBox*>(QString("Frame%1").arg(s))->title();
    w->findChild<QPushButton*>("Command1")->click();  // nothing chosen: stays open
    EXPECT_TRUE(w->isVisible());
    w->findChild<QRadioButton*>("Option12")->click();
    w->findChild<QPushButton*>("Command1")->click();
  });
  func01->trigger();

  EXPECT_EQ(title, "AC Current Probes");
  EXPECT_EQ(shown, (QStringList{"CT-20  20A", "CT-50  50A", "CT-100  100A", "CT-200  200A", "CT-300  300A",
                                "CT-500  500A", "CT-1000  1000A", "CT-2000  2000A", "CT-3000  3000A",
                                "FX-600  600A", "FX-1500  1500A", "FX-3000  3000A", "FX-6000  6000A"}));
  EXPECT_TRUE(hiddenFuture);
  EXPECT_EQ(sections, (QStringList{"Clamp-on, 0 to 200 A", "Clamp-on, 200 to 3000 A", "Flexible coils"}));
  EXPECT_FALSE(window.Dialog(DialogId::Func1)->isVisible());
  EXPECT_EQ(app.s.logger.LiveUnitText, "A rms");
  EXPECT_DOUBLE_EQ(app.s.logger.RangeFactor.Value(), 0.4);
  EXPECT_EQ(window.findChild<QLabel*>("Label34")->text(), "CT-500  500A");
  EXPECT_EQ(app.s.probes.ProbeLabel[11], "CT-500  500A");
}

}  // namespace
}  // namespace quillet
