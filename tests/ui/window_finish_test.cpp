// What a new user meets in the window: dialogs that behave as dialogs, a window that
// stays readable, a status line that keeps its place, clock fields that take typing,
// and a help search that opens what it shows.
#include <gtest/gtest.h>

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QFileDialog>
#include <QTest>
#include <QWheelEvent>
#include <functional>

#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

struct StartedWindow : WindowProgram {
  StartedWindow() : WindowProgram(SettingsText(1, 1, 1200)) {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    Start();
  }
  // Triggers a menu entry whose dialog comes up modally, and runs `inside` on it.
  void WithDialog(const char* menuEntry, const std::function<void(QWidget*)>& inside) {
    bool seen = false;
    QTimer::singleShot(50, [&] {
      QWidget* w = QApplication::activeModalWidget();
      ASSERT_NE(w, nullptr) << menuEntry;
      seen = true;
      inside(w);
      if (QApplication::activeModalWidget() == w) {
        if (auto* cancel = w->findChild<QPushButton*>("Command2")) {
          cancel->click();
        } else {
          w->close();
        }
      }
    });
    window.findChild<QAction*>(menuEntry)->trigger();
    EXPECT_TRUE(seen) << menuEntry;
  }
};

TEST(WindowFinish, EveryDialogIsAFixedSizeDialogCentredOnTheWindow) {
  StartedWindow p;
  p.window.resize(1000, 700);
  p.window.move(100, 80);
  for (const char* entry : {"mnuHelpAbout", "mnuLang", "mnuPort", "mnuSetTime"}) {
    p.WithDialog(entry, [&](QWidget* d) {
      const Qt::WindowFlags f = d->windowFlags();
      EXPECT_FALSE(f.testFlag(Qt::WindowMinimizeButtonHint)) << entry;
      EXPECT_FALSE(f.testFlag(Qt::WindowMaximizeButtonHint)) << entry;
      EXPECT_TRUE(f.testFlag(Qt::WindowCloseButtonHint)) << entry;
      EXPECT_EQ(d->minimumSize(), d->maximumSize()) << entry;
      EXPECT_LE((d->geometry().center() - p.window.frameGeometry().center()).manhattanLength(), 4) << entry;
    });
  }
}

TEST(WindowFinish, TheWindowDoesNotShrinkBelowAReadableGraph) {
  StartedWindow p;
  p.window.resize(557, 300);
  QApplication::processEvents();
  EXPECT_GE(p.window.width(), 860);
  EXPECT_GE(p.window.height(), 600);
  EXPECT_GE(p.window.findChild<GraphView*>()->height(), 250);
}

TEST(WindowFinish, TheSaveNoteKeepsItsPlaceWhateverTheWorkLineShows) {
  StartedWindow p;
  Log1View& v = p.app->v.log1;
  auto* note = p.window.findChild<QLabel*>("Label16");
  v.Label16.caption = "Data saved";
  v.Label16.visible = true;
  std::vector<int> places;
  for (const char* work : {"", "Drawing graph...", "Downloading data, please wait...", "x"}) {
    v.Label15.caption = work;
    v.Label15.visible = *work != '\0';
    p.window.Refresh();
    QApplication::processEvents();
    places.push_back(note->mapTo(&p.window, QPoint(0, 0)).x());
  }
  for (int x : places) EXPECT_EQ(x, places.front());
}

TEST(WindowFinish, ClockFieldsTakeTypingTheArrowKeysAndTheWheelWithinTheirRanges) {
  StartedWindow p;
  const auto& parts = p.app->s.clock.ClockParts;
  p.WithDialog("mnuSetTime", [&](QWidget* d) {
    auto type = [d](const char* field, const char* text) {
      auto* edit = d->findChild<QLineEdit*>(field);
      edit->setFocus();
      edit->setText(text);
      edit->setModified(true);
      emit edit->editingFinished();
      return edit->text();
    };
    EXPECT_EQ(type("Text3", "2032"), "2032");
    EXPECT_EQ(parts[3], 2032);
    EXPECT_EQ(type("Text4", "24"), QString::number(parts[4]));  // no hour 24: unchanged
    EXPECT_NE(parts[4], 24);
    EXPECT_EQ(type("Text1", "2"), "2");
    EXPECT_EQ(type("Text2", "30"), QString::number(parts[2]));  // no 30 February
    EXPECT_EQ(type("Text2", "29"), "29");                        // 2032 is a leap year
    type("Text3", "2031");
    EXPECT_EQ(parts[2], 28);  // and 2031 is not: the day follows the month's end

    const int hour = parts[4];
    QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    QApplication::sendEvent(d->findChild<QLineEdit*>("Text4"), &up);
    EXPECT_EQ(parts[4], (hour + 1) % 24);
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(d->findChild<QLineEdit*>("Text4"), &wheel);
    EXPECT_EQ(parts[4], hour);
  });
}

TEST(WindowFinish, EnterInTheHelpSearchOpensTheFirstEntryThatMatches) {
  StartedWindow p;
  p.window.findChild<QAction*>("mnuHelpIndex")->trigger();
  HelpWindow* help = p.window.Help();
  auto* search = help->findChild<QLineEdit*>("helpSearch");
  auto* keywords = help->findChild<QListWidget*>("helpKeywords");
  search->setText("unzoom");
  ASSERT_NE(keywords->currentItem(), nullptr);
  EXPECT_EQ(keywords->currentItem()->text(), "Unzoom");
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(search, &enter);
  EXPECT_EQ(help->CurrentAnchor(), "unzoom");
  // The window is whole on a small screen's worth of room, its index column readable.
  EXPECT_LE(help->width(), 960);
  EXPECT_GE(keywords->width(), 200);
}

TEST(WindowFinish, TheUsualKeysOpenHelpAndTheFileDialog) {
  StartedWindow p;
  p.window.activateWindow();
  QTest::keyClick(&p.window, Qt::Key_F1);
  EXPECT_TRUE(p.window.Help()->isVisible());
  EXPECT_EQ(p.window.Help()->CurrentAnchor(), "contents");
  p.window.Help()->hide();
  p.window.activateWindow();
  bool fileDialog = false;
  QTimer::singleShot(100, [&fileDialog] {
    if (auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
      fileDialog = d->acceptMode() == QFileDialog::AcceptOpen && d->width() >= 900;
      d->reject();
    }
  });
  QTest::keyClick(&p.window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_TRUE(fileDialog);
}

}  // namespace
}  // namespace quillet
