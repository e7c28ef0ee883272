// The window program under the offscreen platform: start-up, captions, dialogs, help.
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QRadioButton>
#include <QToolButton>

#include "link/timeset.h"
#include "log1/language.h"
#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

using testing::WindowProgram;

QString Word(WindowProgram& p, int language, int n) {
  return QString::fromStdString(p.s().lang.LanguageTable[language][n]);
}

TEST(MainWindow, StartsWithEveryMenuCaptionedInTheChosenLanguageAndRecaptionsAtOnceOnAChange) {
  WindowProgram p(SettingsText(1, 1, 1200));
  p.StartDismissing();  // the unavailable device brings a message and the port dialog
  QStringList top;
  for (QAction* a : p.window.menuBar()->actions())
    if (a->isVisible()) top << a->text();
  EXPECT_EQ(top, (QStringList{"&File", "&Time Set", "&Download", "&Port", "Date Fr&mt", "&Help"}));
  for (const char* name : {"mnuSaveTXT", "mnuOpen", "mnuPGraph", "mnuPData", "mnuGClip", "mnu420sca",
                           "mnu100sca", "mnu10sca", "mnuLang", "mnuExit", "mnudegF", "mnudegC", "mnuUsa",
                           "mnuEur", "mnuHelpCont", "mnuHelpIndex", "mnuHelpAbout"}) {
    ASSERT_NE(p.Action(name), nullptr) << name;
    EXPECT_FALSE(p.Action(name)->text().isEmpty()) << name;
  }
  EXPECT_EQ(p.Action("mnuSaveTXT")->text(), "Save As .TXT");
  EXPECT_FALSE(p.Action("mnuSaveTXT")->isEnabled());
  EXPECT_TRUE(p.Action("mnuUsa")->isChecked());
  EXPECT_EQ(p.Find<QGroupBox>("Frame2")->title(), "Displayed Graph");
  EXPECT_EQ(p.window.windowTitle(), QString::fromUtf8("Quillet\u00ae Software"));

  testing::WhenModal user("langfrm", [](QWidget* w) {
    w->findChild<QRadioButton*>("Option2")->click();
    w->findChild<QPushButton*>("Command1")->click();
  });
  p.Action("mnuLang")->trigger();
  EXPECT_EQ(p.s().settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(p.window.menuBar()->actions().first()->text(), Word(p, 2, 20));
  EXPECT_NE(p.window.menuBar()->actions().first()->text(), "&File");
  EXPECT_EQ(p.window.Dialog(DialogId::frmPort)->findChild<QPushButton*>("Command2")->text(), Word(p, 2, 119));
  // The about box stays in the first language, but its button follows the selection.
  QString title, button;
  testing::WhenModal about("about2", [&](QWidget* w) {
    title = w->findChild<QLabel*>("Label1")->text();
    button = w->findChild<QPushButton*>("Command1")->text();
    w->findChild<QPushButton*>("Command1")->click();
  });
  p.Action("mnuHelpAbout")->trigger();
  EXPECT_EQ(title, Word(p, 1, 1));
  EXPECT_EQ(button, Word(p, 2, 120));
  EXPECT_FALSE(p.app->v.about2.visible);
}

TEST(MainWindow, HelpOpensTheLanguagesFileAtItsContentsOrWithTheKeywordSearch) {
  WindowProgram p(SettingsText(1, 1, 1200));
  p.StartDismissing();
  p.Action("mnuHelpCont")->trigger();
  HelpWindow* help = p.window.Help();
  ASSERT_TRUE(help->isVisible());
  EXPECT_TRUE(help->CurrentFile().endsWith("quillet-en.html"));
  auto* keywords = help->findChild<QListWidget*>("helpKeywords");
  EXPECT_GT(keywords->count(), 10);
  p.Action("mnuHelpIndex")->trigger();
  help->findChild<QLineEdit*>("helpSearch")->setText("download");
  int shown = 0;
  for (int i = 0; i < keywords->count(); ++i) shown += keywords->item(i)->isHidden() ? 0 : 1;
  EXPECT_GE(shown, 1);
  EXPECT_LT(shown, keywords->count());
}

TEST(MainWindow, OpenShowsTheFileDialogForTextFilesAndReadsTheChosenRecord) {
  WindowProgram p(SettingsText(1, 1, 1200));
  p.StartDismissing();
  const QString path = p.dir.path() + "/record.txt";
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(
      "\"loggerfile\"\r\n\"rev02\"\r\n2\r\n\"Shed\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
      "\"\"\r\n1\r\n42\r\n\"degC\"\r\n46347.5\t20.5\r\n46347.75\t21.5\r\n");
  f.close();
  // The user of the file dialog types the record's path as a user would, or cancels.
  QString pick = path;
  QStringList filters;
  testing::WhenModal user("", [&](QWidget* w) {
    auto* dialog = qobject_cast<QFileDialog*>(w);
    ASSERT_NE(dialog, nullptr);
    filters = dialog->nameFilters();
    if (pick.isEmpty()) return dialog->reject();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(pick);
    static_cast<QDialog*>(dialog)->accept();
  });
  p.Action("mnuOpen")->trigger();
  EXPECT_EQ(filters, QStringList{"txt files (*.txt)"});
  EXPECT_EQ(p.s().record.RecordTitle, "Shed");
  EXPECT_DOUBLE_EQ(p.s().record.FullAvg, 21);
  EXPECT_TRUE(p.Action("mnuPGraph")->isEnabled());
  pick.clear();
  p.s().record.RecordTitle = "kept";
  p.Action("mnuOpen")->trigger();
  EXPECT_EQ(p.s().record.RecordTitle, "kept");
}

TEST(MainWindow, FirstStartWithNoSettingsAsksForALanguageWithOkAndNoCancel) {
  WindowProgram p;  // no settings file
  bool cancelShown = true, stayedOpen = false;
  testing::WhenModal user("", [&](QWidget* w) {
    if (w->objectName() != "langfrm") return testing::Dismiss(w);  // the port message comes first
    cancelShown = w->findChild<QPushButton*>("Command2")->isVisible();
    if (!stayedOpen) {
      w->findChild<QPushButton*>("Command1")->click();  // no choice yet: stays open
      stayedOpen = w->isVisible();
      return;
    }
    w->findChild<QRadioButton*>("Option1")->click();
    w->findChild<QPushButton*>("Command1")->click();
  });
  p.Start();
  EXPECT_FALSE(cancelShown);
  EXPECT_TRUE(stayedOpen);
  EXPECT_EQ(p.s().settings.LanguageIndex.Value(), 1);
}

TEST(MainWindow, TheTimeSetDialogStepsItsPartsRunsItsClockAndSetsTheOffsetAtOk) {
  WindowProgram p(SettingsText(1, 1, 1200));
  p.StartDismissing();
  QString title, monthCaption, hourBefore, hourAfter, timeShown;
  testing::WhenModal user("frmTimeset", [&](QWidget* w) {
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
  p.Action("mnuSetTime")->trigger();
  EXPECT_EQ(title, "Set Date and Time");
  EXPECT_EQ(monthCaption, "Month:");
  EXPECT_EQ(hourAfter.toInt(), (hourBefore.toInt() + 1) % 24);
  EXPECT_EQ(timeShown.size(), 8);  // hh:mm:ss, written by the dialog's own timer
  EXPECT_FALSE(p.window.Dialog(DialogId::frmTimeset)->isVisible());
  EXPECT_EQ(p.s().link.TimeSetDone, 1);
  // An hour ahead, less whatever part of a second the dialog's clock lagged.
  EXPECT_NEAR(p.s().clock.ClockOffset * 86400.0, hourBefore == "23" ? 82800.0 : -3600.0, 2.0);
}

TEST(MainWindow, CtrlWUnlocksTheCalibrationButtonsAndTheGraphKeepsItsSizeWhileStatusLinesComeAndGo) {
  WindowProgram p(SettingsText(1, 1, 1200));
  p.StartDismissing();
  auto* high = p.Find<QPushButton>("Command5");
  EXPECT_FALSE(high->isEnabled());
  p.s().logger.ModelCode = 65;
  QKeyEvent ctrlW(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier, QString(QChar(23)));
  QApplication::sendEvent(&p.window, &ctrlW);
  EXPECT_TRUE(high->isEnabled() && p.Find<QPushButton>("Command6")->isEnabled());
  EXPECT_EQ(high->text(), "High Cal");

  p.window.resize(1000, 700);
  QApplication::processEvents();
  const int before = p.window.Graph()->height();
  Log1View& w = p.w();
  for (Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12, &w.Label15, &w.Label16, &w.Label14}) {
    c->caption = "12:34";
    c->visible = true;
  }
  w.ProgressBar1.visible = true;
  for (bool shown : {true, false}) {
    for (Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12}) c->visible = shown;
    p.window.Refresh();
    QApplication::processEvents();
    EXPECT_EQ(p.Find<QLabel>("Label9")->isVisible(), shown);
    EXPECT_EQ(p.window.Graph()->height(), before);
  }
}

}  // namespace
}  // namespace quillet
