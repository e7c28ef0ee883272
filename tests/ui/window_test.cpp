// The window program under the offscreen platform: captions in the chosen language, the
// dialogs as the user meets them, and its link to the emulator over a pseudo-terminal.
#include <gtest/gtest.h>

#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include "measure/probe_table.h"
#include "storage/record_file.h"
#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "ui/window_program.h"

namespace quillet::testing {
namespace {

void Click(QWidget* w, const char* name) { w->findChild<QAbstractButton*>(name)->click(); }
QLineEdit* Edit(QWidget* w, const char* name) { return w->findChild<QLineEdit*>(name); }

// The texts of the visible labels, buttons and options prefix1 ... prefixN.
QStringList Shown(QWidget* w, const QString& prefix, int n) {
  QStringList out;
  for (int i = 1; i <= n; ++i) {
    auto* c = w->findChild<QWidget*>(prefix + QString::number(i));
    if (c && c->isVisible()) out << c->property("text").toString();
  }
  return out;
}

TEST(MainWindow, FirstStartAsksForALanguageWithOkAndNoCancelAndTheWindowFollowsTheChoice) {
  WindowProgram p;  // no settings file
  bool cancelShown = true, stayedOpen = false;
  QStringList about;
  WhenModal user("", [&](QWidget* w) {
    if (w->objectName() == "about2") about << Shown(w, "Label", 1) << Shown(w, "Command", 1);
    if (w->objectName() != "langfrm") return Dismiss(w);  // the missing device's message comes first
    cancelShown = w->findChild<QWidget*>("Command2")->isVisible();
    Click(w, "Command1");  // no choice yet: stays open
    stayedOpen = w->isVisible();
    Click(w, "Option2"), Click(w, "Command1");
  });
  p.Start();
  EXPECT_TRUE(!cancelShown && stayedOpen);
  const auto& word = p.s().lang.LanguageTable;
  QStringList top;
  for (QAction* a : p.window.menuBar()->actions())
    if (a->isVisible()) top << a->text();
  EXPECT_EQ(top.size(), 6);
  EXPECT_EQ(top.value(0).toStdString(), word[2][20]);
  EXPECT_NE(word[2][20], word[1][20]);
  for (QAction* a : p.window.findChildren<QAction*>())
    EXPECT_TRUE(!a->objectName().startsWith("mnu") || !a->text().isEmpty()) << a->objectName().toStdString();
  EXPECT_EQ(p.window.windowTitle(), QString::fromUtf8("Quillet\u00ae Software"));
  // The about box stays in the first language, but its button follows the choice.
  p.Action("mnuHelpAbout")->trigger();
  EXPECT_EQ(about, (QStringList{word[1][1].c_str(), word[2][120].c_str()}));
}

TEST(MainWindow, KeysOpenHelpAndARecordAndUnlockCalibrationTheGraphStaysReadableAndClockFieldsKeepInRange) {
  WindowProgram p(SettingsText());
  p.StartDismissing();
  EXPECT_TRUE(!p.Action("mnuSaveTXT")->isEnabled() && p.Action("mnuUsa")->isChecked());
  p.window.activateWindow();
  QTest::keyClick(&p.window, Qt::Key_F1);
  EXPECT_TRUE(p.window.Help()->isVisible() && p.window.Help()->CurrentFile().endsWith("quillet-en.html") &&
              p.window.Help()->CurrentAnchor() == "contents");
  QStringList seen;
  WhenModal files("", [&](QWidget* w) {  // the user types the record's name
    auto* d = qobject_cast<QFileDialog*>(w);
    seen << d->nameFilters()
         << QString::number(d->acceptMode() == QFileDialog::AcceptOpen && d->width() >= 900);
    Edit(d, "fileNameEdit")->setText(QUILLET_TEST_DATA_DIR "/reference_record.txt");
    static_cast<QDialog*>(d)->accept();
  });
  p.window.activateWindow();
  QApplication::processEvents();
  QTest::keyClick(&p.window, Qt::Key_O, Qt::ControlModifier);
  files.timer.stop();
  EXPECT_EQ(seen, (QStringList{"txt files (*.txt)", "1"}));
  EXPECT_EQ(p.s().record.RecordTitle, "Greenhouse 2");
  EXPECT_EQ(p.s().record.FullSampleCount, 300);
  auto* high = p.window.findChild<QPushButton*>("Command5");
  EXPECT_FALSE(high->isEnabled());
  p.s().logger.ModelCode = 65;
  QKeyEvent ctrlW(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier, QString(QChar(23)));
  QApplication::sendEvent(&p.window, &ctrlW);
  EXPECT_TRUE(high->isEnabled() && p.window.findChild<QPushButton*>("Command6")->isEnabled());
  EXPECT_EQ(high->text(), "High Cal");
  p.window.resize(557, 300);  // too small to read the graph: the window stays larger, the record drawn
  QApplication::processEvents();
  EXPECT_TRUE(p.window.width() >= 860 && p.window.height() >= 600 && p.window.Graph()->height() >= 250);
  const auto& parts = p.s().clock.ClockParts;
  WhenModal user("frmTimeset", [&](QWidget* d) {
    // A dialog of fixed size, centred on the window, with a close button only.
    EXPECT_EQ(d->windowFlags() & (Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
              Qt::WindowCloseButtonHint);
    EXPECT_EQ(d->minimumSize(), d->maximumSize());
    EXPECT_LE((d->geometry().center() - p.window.frameGeometry().center()).manhattanLength(), 4);
    auto type = [d](const char* field, const char* text) {
      QLineEdit* edit = Edit(d, field);
      edit->setFocus(), edit->setText(text), edit->setModified(true);
      emit edit->editingFinished();
      return edit->text();
    };
    EXPECT_EQ(type("Text3", "2032"), "2032");
    EXPECT_EQ(parts[3], 2032);
    EXPECT_EQ(type("Text4", "24"), QString::number(parts[4]));  // no hour 24: unchanged
    EXPECT_NE(parts[4], 24);
    EXPECT_EQ(type("Text1", "2"), "2");
    EXPECT_EQ(type("Text2", "30"), QString::number(parts[2]));  // no 30 February
    EXPECT_EQ(type("Text2", "29"), "29");                       // 2032 is a leap year
    type("Text3", "2031");
    EXPECT_EQ(parts[2], 28);  // and 2031 is not: the day follows the month's end
    const int hour = parts[4];
    Click(d, "UpDown4Up");
    QTest::keyClick(Edit(d, "Text4"), Qt::Key_Up);
    EXPECT_EQ(Edit(d, "Text4")->text().toInt(), (hour + 2) % 24);
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Edit(d, "Text4"), &wheel);
    EXPECT_EQ(parts[4], (hour + 1) % 24);
    Click(d, "Command3");
  });
  p.Action("mnuSetTime")->trigger();
  EXPECT_TRUE(user.done);
}

TEST(ProbeAndProfileDialogs, ShowTheRowsOfTheShippedFileOrOfTheirScaleTakeTheChoiceAndPrintTheProfileEntry) {
  WindowProgram p;
  p.s().logger.LoggerSerial = 12;
  Dispatch(*p.app, [&p] { LoadProbeTable(*p.app); });
  EXPECT_TRUE(p.Action("func01")->isVisible() && !p.Action("func03")->isVisible());
  QStringList shown;
  WhenModal probeUser("Func1", [&](QWidget* w) {
    shown << p.Action("func01")->text() << w->windowTitle() << Shown(w, "Option", 30);
    for (auto* frame : w->findChildren<QGroupBox*>()) shown << frame->title();
    for (auto* o : w->findChildren<QAbstractButton*>())  // the options not shown are the spare ones
      EXPECT_TRUE(o->isVisible() || !o->objectName().startsWith("Option") || o->text() == "Future");
    Click(w, "Command1");  // nothing chosen: stays open
    EXPECT_TRUE(w->isVisible());
    Click(w, "Option12"), Click(w, "Command1");
  });
  p.Action("func01")->trigger();
  EXPECT_EQ(shown, (QStringList{"AC Current Probes", "AC Current Probes", "CT-20  20A", "CT-50  50A",
                                "CT-100  100A", "CT-200  200A", "CT-300  300A", "CT-500  500A",
                                "CT-1000  1000A", "CT-2000  2000A", "CT-3000  3000A", "FX-600  600A",
                                "FX-1500  1500A", "FX-3000  3000A", "FX-6000  6000A", "Clamp-on, 0 to 200 A",
                                "Clamp-on, 200 to 3000 A", "Flexible coils"}));
  EXPECT_FALSE(p.window.Dialog(DialogId::Func1)->isVisible());
  EXPECT_EQ(p.s().logger.LiveUnitText + " " + p.window.findChild<QLabel*>("Label34")->text().toStdString(),
            "A rms CT-500  500A");
  EXPECT_DOUBLE_EQ(p.s().logger.RangeFactor.Value(), 0.4);
  for (auto [id, title, first, step, rows] :
       {std::tuple{DialogId::custom, "Custom Scale", 0, 10, 11},
        {DialogId::input100mv, "100 mV", 0, 10, 11},
        {DialogId::input10v, "10 Volt", 0, 1, 11},
        {DialogId::input420, "4 to 20 ma", 4, 1, 17},
        {DialogId::inputbipo100mv, "bipolar 100 milivolt", -100, 20, 11},
        {DialogId::inputbipo10mv, "bipolar 10 milivolt", -10, 2, 11}}) {
    QStringList seen, want{title};
    for (int i = 0; i < rows; ++i) want << QString::number(first + step * i);
    WhenModal user("", [&](QWidget* w) {
      const bool saves = w->findChild<QAction*>("mnuSave1")->isVisible();  // not the bipolar ones
      seen << w->windowTitle() << Shown(w, "Label", 17) << Shown(w, "Command", 4) << (saves ? "saves" : "");
      Click(w, "Command2");
    });
    Dispatch(*p.app, [&] { ShowModal(*p.app, id); });
    EXPECT_EQ(seen, (want +
                     QStringList{"OK", "Cancel", "Clear All", want[0].startsWith("bipolar") ? "" : "saves"}));
    EXPECT_FALSE(p.window.Dialog(id)->isVisible());
  }
  for (auto [entry, name] :
       {std::pair{"mnu420sca", "input420"}, {"mnu100sca", "input100mv"}, {"mnu10sca", "input10v"}}) {
    SCOPED_TRACE(entry);
    p.Action(entry)->trigger();
    auto* d = p.window.findChild<QDialog*>(name);
    ASSERT_TRUE(d->isVisible() && !d->isModal() && d->findChild<QLabel*>("Label27")->isVisible());
    EXPECT_EQ(Shown(d, "Command", 4) << d->findChild<QLabel*>("Label26")->text(),
              (QStringList{"Close", "Clear All", "PROFILE ENTRY"}));
    const QString pdf = p.dir.path() + "/" + entry + ".pdf";
    qputenv("QUILLET_PRINT_PDF", pdf.toUtf8());
    d->findChild<QAction*>("mnuPrint")->trigger();
    qunsetenv("QUILLET_PRINT_PDF");
    const QString bytes = QString::fromLatin1(FileBytes(pdf));
    EXPECT_TRUE(bytes.startsWith("%PDF") && bytes.count(QRegularExpression("/Type\\s*/Page[^s]")) == 1);
    Click(d, "Command3");
    EXPECT_FALSE(d->isVisible() || p.s().profiles.ProfileEntryOnly != 0);
  }
}

TEST(SerialEndToEnd, ATemperatureLoggerIsFoundItsLiveValueShowsAndOnceGoneAndBackItIsFoundAgain) {
  WindowProgram p(SettingsText(), true);  // COM 1: the link "tty" in its folder
  const QStringList args{"--model", "17", "--baud", "1200", "--serial", "777", "--elapsed", "2h"};
  auto sim = std::make_unique<EmulatorProcess>(p.dir.path() + "/tty", args);
  Dispatch(*p.app, [&p] { StartProgram(*p.app); });
  ASSERT_TRUE(p.app->port.PortOpen());
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 6000));
  EXPECT_EQ(p.w().Label13.caption, "COM 1");
  // The header follows by itself and names the logger; the next reading has its unit.
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.HeaderRead == 1; }, 4000));
  EXPECT_EQ(p.s().logger.LoggerSerial.Value(), 777);
  EXPECT_EQ(p.s().logger.ModelCode.Value(), 17);
  EXPECT_EQ(p.w().Label34.caption, "Temperature");
  ASSERT_TRUE(p.RunUntil([&] { return p.w().Label19.visible; }, 5000));
  EXPECT_TRUE(p.w().Label21.caption == "degC" && !p.w().Label19.caption.empty());
  sim.reset();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 0; }, 8000));
  // Started again, as a logger plugged back in: found with no action from the user.
  sim = std::make_unique<EmulatorProcess>(p.dir.path() + "/tty", args);
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 12000));
}

TEST(SerialEndToEnd, ALoggerAtFourThousandEightHundredIsFoundFromTwelveHundred) {
  WindowProgram p(SettingsText(), true);
  EmulatorProcess sim(p.dir.path() + "/tty", {"--model", "18", "--baud", "4800"});
  Dispatch(*p.app, [&p] { StartProgram(*p.app); });
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 10000));
  EXPECT_TRUE(p.s().settings.BaudRate.Value() == 4800 && p.s().link.BaudConfirmed.Value() == 1);
}

// The real X clipboard under Xvfb: the window owns it while xclip, another process, reads
// the graph as PNG. The test runs itself again under xvfb-run for that part.
TEST(Clipboard, AnotherProgramReadsTheGraphAsPng) {
  if (!qEnvironmentVariableIsSet("QUILLET_XVFB_CHILD")) {
    const QString xvfbRun = QStandardPaths::findExecutable("xvfb-run");
    if (xvfbRun.isEmpty() || QStandardPaths::findExecutable("xclip").isEmpty())
      GTEST_SKIP() << "needs xvfb-run and xclip (scripts/install-deps.sh)";
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QUILLET_XVFB_CHILD", "1");
    env.insert("QT_QPA_PLATFORM", "xcb");
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(xvfbRun, {"-a", QCoreApplication::applicationFilePath(), "--gtest_filter=Clipboard.*"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const std::string out = child.readAll().toStdString();
    EXPECT_TRUE(child.exitCode() == 0 && out.find("[  PASSED  ] 1 test") != std::string::npos) << out;
    return;
  }
  WindowProgram p(SettingsText());
  p.StartDismissing();
  Dispatch(*p.app, [&] { ReadRecordFile(*p.app, QUILLET_TEST_DATA_DIR "/reference_record.txt"); });
  p.window.Refresh();
  p.Action("mnuGClip")->trigger();
  QProcess xclip;  // the owner keeps answering while xclip asks: the event loop runs meanwhile
  xclip.start("xclip", {"-selection", "clipboard", "-t", "image/png", "-o"});
  ASSERT_TRUE(p.RunUntil([&] { return xclip.state() == QProcess::NotRunning; }, 20000));
  const QImage image = QImage::fromData(xclip.readAllStandardOutput(), "PNG");
  ASSERT_FALSE(image.isNull()) << xclip.readAllStandardError().toStdString();
  EXPECT_EQ(image.size(), p.window.findChild<QWidget*>("Picture1")->contentsRect().size());
  int dark = 0;  // the graph itself, not an empty surface: frame and trace leave dark pixels
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 128;
  EXPECT_GT(dark, 500);
}

}  // namespace
}  // namespace quillet::testing
