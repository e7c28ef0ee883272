// The window program under the offscreen platform: start-up, captions, dialogs, help.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFile>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QTimer>

#include "log1/hooks.h"
#include "hub/app.h"
#include "log1/language.h"
#include "log1/startup.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

TEST(MainWindow, StartsWithEveryMenuCaptionedInTheChosenLanguage) {
  WindowProgram p(SettingsText(1, 1, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  QMenuBar* bar = p.window.menuBar();
  QStringList top;
  for (QAction* a : bar->actions()) {
    if (a->isVisible()) top << a->text();
  }
  EXPECT_EQ(top, (QStringList{"&File", "&Time Set", "&Download", "&Port", "Date Fr&mt", "&Help"}));
  for (const char* name : {"mnuSaveTXT", "mnuOpen", "mnuPGraph", "mnuPData", "mnuGClip", "mnu420sca", "mnu100sca",
                           "mnu10sca", "mnuLang", "mnuExit", "mnudegF", "mnudegC", "mnuUsa", "mnuEur", "mnuHelpCont",
                           "mnuHelpIndex", "mnuHelpAbout"}) {
    auto* a = p.window.findChild<QAction*>(name);
    ASSERT_NE(a, nullptr) << name;
    EXPECT_FALSE(a->text().isEmpty()) << name;
  }
  EXPECT_EQ(p.window.findChild<QAction*>("mnuSaveTXT")->text(), "Save As .TXT");
  EXPECT_FALSE(p.window.findChild<QAction*>("mnuSaveTXT")->isEnabled());
  EXPECT_TRUE(p.window.findChild<QAction*>("mnuUsa")->isChecked());
  EXPECT_EQ(p.window.findChild<QGroupBox*>("Frame2")->title(), "Displayed Graph");
  EXPECT_EQ(p.window.windowTitle(), QString::fromUtf8("Quillet\u00ae Software"));
}

TEST(MainWindow, ChangingTheLanguageRecaptionsMenusAndDialogsAtOnce) {
  WindowProgram p(SettingsText(1, 1, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  QTimer::singleShot(50, [] {
    QWidget* w = QApplication::activeModalWidget();
    ASSERT_NE(w, nullptr);
    w->findChild<QRadioButton*>("Option2")->click();
    w->findChild<QPushButton*>("Command1")->click();
  });
  p.window.findChild<QAction*>("mnuLang")->trigger();
  EXPECT_EQ(p.app->s.settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(p.window.menuBar()->actions().first()->text(), QString::fromStdString(p.app->s.lang.LanguageTable[2][20]));
  EXPECT_NE(p.window.menuBar()->actions().first()->text(), "&File");
  auto* port = p.window.Dialog(DialogId::frmPort);
  EXPECT_EQ(port->findChild<QPushButton*>("Command2")->text(),
            QString::fromStdString(p.app->s.lang.LanguageTable[2][119]));
}

TEST(MainWindow, TheAboutBoxStaysInTheFirstLanguageButItsButtonFollowsTheSelection) {
  WindowProgram p(SettingsText(1, 2, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  QString title, button;
  QTimer::singleShot(50, [&] {
    QWidget* w = QApplication::activeModalWidget();
    ASSERT_NE(w, nullptr);
    title = w->findChild<QLabel*>("Label1")->text();
    button = w->findChild<QPushButton*>("Command1")->text();
    w->findChild<QPushButton*>("Command1")->click();
  });
  p.window.findChild<QAction*>("mnuHelpAbout")->trigger();
  EXPECT_EQ(title, QString::fromStdString(p.app->s.lang.LanguageTable[1][1]));
  EXPECT_EQ(button, QString::fromStdString(p.app->s.lang.LanguageTable[2][120]));
  EXPECT_FALSE(p.app->v.about2.visible);
}

TEST(MainWindow, HelpOpensTheLanguagesFileAtItsContentsOrWithTheKeywordSearch) {
  WindowProgram p(SettingsText(1, 1, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  p.window.findChild<QAction*>("mnuHelpCont")->trigger();
  HelpWindow* help = p.window.Help();
  ASSERT_TRUE(help->isVisible());
  EXPECT_TRUE(help->CurrentFile().endsWith("quillet-en.html"));
  auto* keywords = help->findChild<QListWidget*>("helpKeywords");
  EXPECT_GT(keywords->count(), 10);
  p.window.findChild<QAction*>("mnuHelpIndex")->trigger();
  auto* search = help->findChild<QLineEdit*>("helpSearch");
  search->setText("download");
  int shown = 0;
  for (int i = 0; i < keywords->count(); ++i) shown += keywords->item(i)->isHidden() ? 0 : 1;
  EXPECT_GE(shown, 1);
  EXPECT_LT(shown, keywords->count());
}

TEST(MainWindow, OpenShowsTheFileDialogForTextFilesAndReadsTheChosenRecord) {
  WindowProgram p(SettingsText(1, 1, 1200));
  {
    DismissModals dismiss;  // the unavailable device brings a message and the port dialog
    p.Start();
  }
  const QString path = p.dir.path() + "/record.txt";
  {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("\"loggerfile\"\r\n\"rev02\"\r\n2\r\n\"Shed\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
            "\"\"\r\n1\r\n42\r\n\"degC\"\r\n46347.5\t20.5\r\n46347.75\t21.5\r\n");
  }
  // The user of the file dialog: picks the record, or cancels when there is no path.
  QString pick = path;
  QStringList filters;
  QTimer user;
  QObject::connect(&user, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    filters = dialog->nameFilters();
    if (pick.isEmpty()) {
      dialog->reject();
      return;
    }
    // Typed into the name field, as a user would; the dialog's own accept checks it.
    auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
    if (!name) {
      ADD_FAILURE() << "the file dialog has no name field";
      dialog->reject();
      return;
    }
    name->setText(pick);
    static_cast<QDialog*>(dialog)->accept();
  });
  user.start(30);
  p.window.findChild<QAction*>("mnuOpen")->trigger();
  EXPECT_EQ(filters, QStringList{"txt files (*.txt)"});
  EXPECT_EQ(p.app->s.record.RecordTitle, "Shed");
  EXPECT_DOUBLE_EQ(p.app->s.record.FullAvg, 21);
  EXPECT_TRUE(p.window.findChild<QAction*>("mnuPGraph")->isEnabled());

  // Cancel in the dialog leaves the record as it is.
  pick.clear();
  p.app->s.record.RecordTitle = "kept";
  p.window.findChild<QAction*>("mnuOpen")->trigger();
  EXPECT_EQ(p.app->s.record.RecordTitle, "kept");
}

TEST(MainWindow, FirstStartWithNoSettingsAsksForALanguageWithOkAndNoCancel) {
  WindowProgram p;
  bool cancelShown = true, stayedOpen = false;
  QTimer::singleShot(50, [&] {
    QWidget* w = QApplication::activeModalWidget();
    if (!w) return;
    if (w->objectName() != "langfrm") {  // the port message comes first
      if (auto* cancel = w->findChild<QPushButton*>("Command2")) cancel->click(); else w->close();
    }
  });
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    QWidget* w = QApplication::activeModalWidget();
    if (!w) return;
    if (w->objectName() == "langfrm") {
      cancelShown = w->findChild<QPushButton*>("Command2")->isVisible();
      if (!stayedOpen) {
        w->findChild<QPushButton*>("Command1")->click();  // no choice yet: stays open
        stayedOpen = w->isVisible();
        return;
      }
      w->findChild<QRadioButton*>("Option1")->click();
      w->findChild<QPushButton*>("Command1")->click();
    } else if (auto* cancel = w->findChild<QPushButton*>("Command2")) {
      cancel->click();
    } else {
      w->close();
    }
  });
  poll.start(40);
  p.Start();
  poll.stop();
  EXPECT_FALSE(cancelShown);
  EXPECT_TRUE(stayedOpen);
  EXPECT_EQ(p.app->s.settings.LanguageIndex.Value(), 1);
}

// Starts the program and answers the start-up's port message and dialog with Cancel.
void StartPastThePortDialog(WindowProgram& p) {
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [] {
    if (QWidget* w = QApplication::activeModalWidget()) {
      if (auto* cancel = w->findChild<QPushButton*>("Command2")) cancel->click(); else w->close();
    }
  });
  answer.start(30);
  p.Start();
  answer.stop();
}

TEST(MainWindow, TheTimeSetDialogStepsItsPartsRunsItsClockAndSetsTheOffsetAtOk) {
  WindowProgram p(SettingsText(1, 1, 1200));
  StartPastThePortDialog(p);
  QString title, monthCaption, hourBefore, hourAfter, timeShown;
  QTimer::singleShot(50, [&] {
    QWidget* w = QApplication::activeModalWidget();
    ASSERT_NE(w, nullptr);
    ASSERT_EQ(w->objectName(), "frmTimeset");
    title = w->windowTitle();
    monthCaption = w->findChild<QLabel*>("Label1")->text();
    hourBefore = w->findChild<QLineEdit*>("Text4")->text();
    w->findChild<QToolButton*>("UpDown4Up")->click();
    hourAfter = w->findChild<QLineEdit*>("Text4")->text();
    QTimer::singleShot(1200, [&, w] {
      timeShown = w->findChild<QLabel*>("Label8")->text();
      w->findChild<QPushButton*>("Command2")->click();
    });
  });
  p.window.findChild<QAction*>("mnuSetTime")->trigger();
  EXPECT_EQ(title, "Set Date and Time");
  EXPECT_EQ(monthCaption, "Month:");
  EXPECT_EQ(hourAfter.toInt(), (hourBefore.toInt() + 1) % 24);
  EXPECT_EQ(timeShown.size(), 8);  // hh:mm:ss, written by the dialog's own timer
  EXPECT_FALSE(p.window.Dialog(DialogId::frmTimeset)->isVisible());
  EXPECT_EQ(p.app->s.link.TimeSetDone, 1);
  // An hour ahead, less whatever part of a second the dialog's clock lagged.
  EXPECT_NEAR(p.app->s.clock.ClockOffset * 86400.0, hourBefore == "23" ? 82800.0 : -3600.0, 2.0);
}

TEST(MainWindow, CtrlWInTheWindowUnlocksTheCalibrationButtonsOfAModelSixtyFive) {
  WindowProgram p(SettingsText(1, 1, 1200));
  StartPastThePortDialog(p);
  auto* high = p.window.findChild<QPushButton*>("Command5");
  auto* low = p.window.findChild<QPushButton*>("Command6");
  EXPECT_FALSE(high->isEnabled());
  p.app->s.logger.ModelCode = 65;
  QKeyEvent ctrlW(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier, QString(QChar(23)));
  QApplication::sendEvent(&p.window, &ctrlW);
  EXPECT_TRUE(high->isEnabled());
  EXPECT_TRUE(low->isEnabled());
  EXPECT_EQ(high->text(), "High Cal");
}


TEST(MainWindow, TheGraphKeepsItsSizeWhileTheReadoutAndStatusLinesComeAndGo) {
  WindowProgram p(SettingsText(1, 1, 1200));
  StartPastThePortDialog(p);
  p.window.resize(1000, 700);
  QApplication::processEvents();
  const int before = p.window.Graph()->height();
  Log1View& w = p.app->v.log1;
  for (Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12, &w.Label15, &w.Label16, &w.Label14}) {
    c->caption = "12:34";
    c->visible = true;
  }
  w.ProgressBar1.visible = true;
  p.window.Refresh();
  QApplication::processEvents();
  EXPECT_TRUE(p.window.findChild<QLabel*>("Label9")->isVisible());
  EXPECT_EQ(p.window.Graph()->height(), before);
  for (Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) c->visible = false;
  p.window.Refresh();
  QApplication::processEvents();
  EXPECT_EQ(p.window.Graph()->height(), before);
}

}  // namespace
}  // namespace quillet
