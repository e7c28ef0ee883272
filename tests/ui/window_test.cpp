// The window program under the offscreen platform, and once under a real X server: menus
// and captions in the chosen language, each dialog as the user meets it, the files and
// pictures its commands write, the PNG writer behind them, and the link to the emulator
// over a real pseudo-terminal.
#include <QClipboard>
#include <QFileDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTest>
#include <random>

#include "log1/language.h"
#include "measure/probe_table.h"
#include "ui/dialogs.h"
#include "ui/graph_view.h"
#include "ui/png_encoder.h"
#include "ui/test_files.h"

namespace quillet::testing {
namespace {

void Click(QWidget* w, const char* name) { w->findChild<QAbstractButton*>(name)->click(); }

// The text of a label, button or field.
QString Text(QWidget* w, const char* name) {
  QWidget* c = w->findChild<QWidget*>(name);
  if (auto* l = qobject_cast<QLabel*>(c)) return l->text();
  if (auto* b = qobject_cast<QAbstractButton*>(c)) return b->text();
  if (auto* e = qobject_cast<QLineEdit*>(c)) return e->text();
  return qobject_cast<QPlainTextEdit*>(c)->toPlainText();
}

// Texts of the visible controls prefix1 ... prefixN.
QStringList Shown(QWidget* w, const char* prefix, int n) {
  QStringList out;
  for (int i = 1; i <= n; ++i) {
    const QString name = prefix + QString::number(i);
    if (auto* c = w->findChild<QWidget*>(name); c && c->isVisible()) out << Text(w, name.toLatin1());
  }
  return out;
}

void ExpectFixedAndCentred(QWidget* d, QWidget* over) {
  const Qt::WindowFlags f = d->windowFlags();
  EXPECT_FALSE(f.testFlag(Qt::WindowMinimizeButtonHint) || f.testFlag(Qt::WindowMaximizeButtonHint)) << d->objectName().toStdString();
  EXPECT_TRUE(f.testFlag(Qt::WindowCloseButtonHint));
  EXPECT_EQ(d->minimumSize(), d->maximumSize());
  EXPECT_LE((d->geometry().center() - over->frameGeometry().center()).manhattanLength(), 4);
}

// Started on its settings file; the unavailable device's message and the port dialog cancelled.
struct Started : WindowProgram {
  Started() : WindowProgram(SettingsText(1, 1, 1200)) { StartDismissing(); }
};

// In English with a complete, saved, unzoomed record "Shed": 1.5, 2.5 and 3.5, an hour apart.
struct WithRecord : WindowProgram {
  WithRecord() {
    Dispatch(*app, [this] {
      LoadLanguageTable(*app);
      app->s.settings.LanguageIndex = 1;
      ApplyLanguage(*app);
    });
    SampleRecord& r = app->s.record;
    r.FullSampleCount = r.RecordSampleCount = 3;
    for (int i = 1; i <= 3; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46347 + i / 24.0;
      r.FullValues[i] = r.ShownValues[i] = i + 0.5;
    }
    r.RecordSaved = r.RecordRangeFactor = 1;
    r.RecordModelCode = 22;
    r.LoggerNumber = 7;
    r.RecordTitle = "Shed";
    s().link.DownloadPercent = 100;
    w().Command3.enabled = w().mnuGClip.enabled = w().mnuPData.enabled = true;
    window.Refresh();
    window.show();
  }
};

TEST(MainWindow, StartsWithEveryMenuCaptionedInTheChosenLanguageAndRecaptionsAtOnceOnAChange) {
  Started p;
  p.window.resize(1000, 700);
  p.window.move(100, 80);
  QStringList top;
  for (QAction* a : p.window.menuBar()->actions())
    if (a->isVisible()) top << a->text();
  EXPECT_EQ(top, (QStringList{"&File", "&Time Set", "&Download", "&Port", "Date Fr&mt", "&Help"}));
  for (const char* name : {"mnuSaveTXT", "mnuOpen", "mnuPGraph", "mnuPData", "mnuGClip", "mnu420sca", "mnu100sca",
                           "mnu10sca", "mnuLang", "mnuExit", "mnudegF", "mnudegC", "mnuUsa", "mnuEur", "mnuHelpCont",
                           "mnuHelpIndex", "mnuHelpAbout"})
    ASSERT_FALSE(p.Action(name) == nullptr || p.Action(name)->text().isEmpty()) << name;
  EXPECT_EQ(p.Action("mnuSaveTXT")->text(), "Save As .TXT");
  EXPECT_TRUE(!p.Action("mnuSaveTXT")->isEnabled() && p.Action("mnuUsa")->isChecked());
  EXPECT_EQ(p.Find<QGroupBox>("Frame2")->title(), "Displayed Graph");
  EXPECT_EQ(p.window.windowTitle(), QString::fromUtf8("Quillet\u00ae Software"));
  WhenModal port("frmPort", [&](QWidget* d) { ExpectFixedAndCentred(d, &p.window), Dismiss(d); });
  p.Action("mnuPort")->trigger();
  WhenModal lang("langfrm", [&](QWidget* d) {
    ExpectFixedAndCentred(d, &p.window);
    Click(d, "Option2"), Click(d, "Command1");
  });
  p.Action("mnuLang")->trigger();
  auto word = [&](int language, int n) { return QString::fromStdString(p.s().lang.LanguageTable[language][n]); };
  EXPECT_EQ(p.s().settings.LanguageIndex.Value(), 2);
  EXPECT_EQ(p.window.menuBar()->actions().first()->text(), word(2, 20));
  EXPECT_NE(word(2, 20), "&File");
  EXPECT_EQ(Text(p.window.Dialog(DialogId::frmPort), "Command2"), word(2, 119));
  // The about box stays in the first language, but its button follows the selection.
  QStringList about;
  WhenModal user("about2", [&](QWidget* d) {
    ExpectFixedAndCentred(d, &p.window);
    about << Text(d, "Label1") << Text(d, "Command1");
    Click(d, "Command1");
  });
  p.Action("mnuHelpAbout")->trigger();
  EXPECT_EQ(about, (QStringList{word(1, 1), word(2, 120)}));
  EXPECT_FALSE(p.app->v.about2.visible);
}

TEST(MainWindow, FirstStartWithNoSettingsAsksForALanguageWithOkAndNoCancel) {
  WindowProgram p;  // no settings file
  bool cancelShown = true, stayedOpen = false;
  WhenModal user("", [&](QWidget* w) {
    if (w->objectName() != "langfrm") return Dismiss(w);  // the port message comes first
    cancelShown = w->findChild<QPushButton*>("Command2")->isVisible();
    if (!stayedOpen) {
      Click(w, "Command1");  // no choice yet: stays open
      stayedOpen = w->isVisible();
      return;
    }
    Click(w, "Option1"), Click(w, "Command1");
  });
  p.Start();
  EXPECT_FALSE(cancelShown);
  EXPECT_TRUE(stayedOpen);
  EXPECT_EQ(p.s().settings.LanguageIndex.Value(), 1);
}

TEST(MainWindow, HelpOpensAtItsContentsOnF1AndItsSearchNarrowsTheKeywordsAndOpensTheFirstMatchOnEnter) {
  Started p;
  p.window.activateWindow();
  QTest::keyClick(&p.window, Qt::Key_F1);
  HelpWindow* help = p.window.Help();
  ASSERT_TRUE(help->isVisible());
  EXPECT_EQ(help->CurrentAnchor(), "contents");
  EXPECT_TRUE(help->CurrentFile().endsWith("quillet-en.html"));
  auto* keywords = help->findChild<QListWidget*>("helpKeywords");
  auto* search = help->findChild<QLineEdit*>("helpSearch");
  EXPECT_GT(keywords->count(), 10);
  p.Action("mnuHelpIndex")->trigger();
  search->setText("download");
  int shown = 0;
  for (int i = 0; i < keywords->count(); ++i) shown += !keywords->item(i)->isHidden();
  EXPECT_TRUE(shown >= 1 && shown < keywords->count()) << shown;
  search->setText("unzoom");
  ASSERT_NE(keywords->currentItem(), nullptr);
  EXPECT_EQ(keywords->currentItem()->text(), "Unzoom");
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(help->CurrentAnchor(), "unzoom");
  // The window is whole on a small screen's worth of room, its index column readable.
  EXPECT_TRUE(help->width() <= 960 && keywords->width() >= 200);
}

TEST(MainWindow, OpenByMenuOrCtrlOShowsTheFileDialogForTextFilesAndReadsTheChosenRecord) {
  Started p;
  QString pick = WriteRecord(p.dir.path() + "/record.txt", {20.5, 21.5}, "degC", {"Shed", "", "", "", "", "", ""});
  QStringList filters;
  bool wideOpenDialog = false;
  WhenModal user("", [&](QWidget* w) {
    auto* dialog = qobject_cast<QFileDialog*>(w);
    ASSERT_NE(dialog, nullptr);
    filters = dialog->nameFilters();
    wideOpenDialog = dialog->acceptMode() == QFileDialog::AcceptOpen && dialog->width() >= 900;
    if (pick.isEmpty()) return dialog->reject();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(pick);  // typed as a user would
    static_cast<QDialog*>(dialog)->accept();
  });
  p.Action("mnuOpen")->trigger();
  EXPECT_EQ(filters, QStringList{"txt files (*.txt)"});
  EXPECT_TRUE(wideOpenDialog);
  EXPECT_EQ(p.s().record.RecordTitle, "Shed");
  EXPECT_DOUBLE_EQ(p.s().record.FullAvg, 21);
  EXPECT_TRUE(p.Action("mnuPGraph")->isEnabled());
  pick.clear();
  p.s().record.RecordTitle = "kept";
  wideOpenDialog = false;
  p.window.activateWindow();
  QApplication::processEvents();
  QTest::keyClick(&p.window, Qt::Key_O, Qt::ControlModifier);
  EXPECT_TRUE(wideOpenDialog);
  EXPECT_EQ(p.s().record.RecordTitle, "kept");
}

TEST(MainWindow, CtrlWUnlocksCalibrationAndTheGraphAndSaveNoteKeepTheirPlaceWhileStatusLinesComeAndGo) {
  Started p;
  auto* high = p.Find<QPushButton>("Command5");
  EXPECT_FALSE(high->isEnabled());
  p.s().logger.ModelCode = 65;
  QKeyEvent ctrlW(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier, QString(QChar(23)));
  QApplication::sendEvent(&p.window, &ctrlW);
  EXPECT_TRUE(high->isEnabled() && p.Find<QPushButton>("Command6")->isEnabled());
  EXPECT_EQ(high->text(), "High Cal");
  p.window.resize(557, 300);  // too small to read the graph: the window stays larger
  QApplication::processEvents();
  EXPECT_TRUE(p.window.width() >= 860 && p.window.height() >= 600 && p.window.Graph()->height() >= 250);
  p.window.resize(1000, 700);
  QApplication::processEvents();
  const int graph = p.window.Graph()->height(), note = p.Find<QLabel>("Label16")->mapTo(&p.window, QPoint()).x();
  Log1View& w = p.w();
  for (Control* c : {&w.Label14, &w.Label16, &w.ProgressBar1}) c->visible = true;
  w.Label16.caption = "Data saved";
  for (const char* work : {"Drawing graph...", "", "Downloading data, please wait...", "x"}) {
    for (Control* c : {&w.Label25, &w.Label9, &w.Label10, &w.Label12, &w.Label15}) c->caption = "12:34", c->visible = *work;
    w.Label15.caption = work;
    p.window.Refresh();
    QApplication::processEvents();
    EXPECT_EQ(p.Find<QLabel>("Label9")->isVisible(), *work != 0);
    EXPECT_EQ(p.window.Graph()->height(), graph);
    EXPECT_EQ(p.Find<QLabel>("Label16")->mapTo(&p.window, QPoint()).x(), note) << work;
  }
}

TEST(TimesetWindow, ItsPartsStepAndTakeTypingKeysAndTheWheelWithinTheirRangesAndSetSetsTheOffset) {
  Started p;
  QString title, hourBefore, hourAfter, timeShown;
  WhenModal set("frmTimeset", [&](QWidget* d) {
    title = d->windowTitle() + " " + Text(d, "Label1");
    hourBefore = Text(d, "Text4");
    Click(d, "UpDown4Up");
    hourAfter = Text(d, "Text4");
    QTimer::singleShot(1200, [&, d] { timeShown = Text(d, "Label8"), Click(d, "Command2"); });
  });
  p.Action("mnuSetTime")->trigger();
  EXPECT_EQ(title, "Set Date and Time Month:");
  EXPECT_EQ(hourAfter.toInt(), (hourBefore.toInt() + 1) % 24);
  EXPECT_EQ(timeShown.size(), 8);  // hh:mm:ss, written by the dialog's own timer
  EXPECT_FALSE(p.window.Dialog(DialogId::frmTimeset)->isVisible());
  EXPECT_EQ(p.s().link.TimeSetDone, 1);
  // An hour ahead, less whatever part of a second the dialog's clock lagged.
  EXPECT_NEAR(p.s().clock.ClockOffset * 86400.0, hourBefore == "23" ? 82800.0 : -3600.0, 2.0);

  const auto& parts = p.s().clock.ClockParts;
  WhenModal typing("frmTimeset", [&](QWidget* d) {
    ExpectFixedAndCentred(d, &p.window);
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
    QTest::keyClick(d->findChild<QLineEdit*>("Text4"), Qt::Key_Up);
    EXPECT_EQ(parts[4], (hour + 1) % 24);
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(d->findChild<QLineEdit*>("Text4"), &wheel);
    EXPECT_EQ(parts[4], hour);
    Click(d, "Command3");
  });
  p.Action("mnuSetTime")->trigger();
  EXPECT_TRUE(typing.done);
}

TEST(ProbeDialog, Func1ShowsTheFirstGroupOfTheShippedFileAndTakesTheChoice) {
  WindowProgram p;
  p.s().logger.LoggerSerial = 12;
  Dispatch(*p.app, [&p] { LoadProbeTable(*p.app); });
  ASSERT_FALSE(p.app->ended);
  EXPECT_TRUE(p.Action("func01")->isVisible() && !p.Action("func03")->isVisible());
  EXPECT_EQ(p.Action("func01")->text(), "AC Current Probes");
  QStringList shown, hidden;
  WhenModal user("Func1", [&](QWidget* w) {
    shown = Shown(w, "Option", 30) << w->windowTitle();
    for (int n = 1; n <= 30; ++n)
      if (auto* o = w->findChild<QRadioButton*>("Option" + QString::number(n)); !o->isVisible()) hidden << o->text();
    for (const char* frame : {"Frame1", "Frame2", "Frame3"}) shown << w->findChild<QGroupBox*>(frame)->title();
    Click(w, "Command1");  // nothing chosen: stays open
    EXPECT_TRUE(w->isVisible());
    Click(w, "Option12"), Click(w, "Command1");
  });
  p.Action("func01")->trigger();
  EXPECT_EQ(shown, (QStringList{"CT-20  20A", "CT-50  50A", "CT-100  100A", "CT-200  200A", "CT-300  300A",
                                "CT-500  500A", "CT-1000  1000A", "CT-2000  2000A", "CT-3000  3000A", "FX-600  600A",
                                "FX-1500  1500A", "FX-3000  3000A", "FX-6000  6000A", "AC Current Probes",
                                "Clamp-on, 0 to 200 A", "Clamp-on, 200 to 3000 A", "Flexible coils"}));
  EXPECT_EQ(hidden.filter("Future").size(), hidden.size());
  EXPECT_FALSE(p.window.Dialog(DialogId::Func1)->isVisible());
  EXPECT_EQ(p.s().logger.LiveUnitText, "A rms");
  EXPECT_DOUBLE_EQ(p.s().logger.RangeFactor.Value(), 0.4);
  EXPECT_EQ(p.Find<QLabel>("Label34")->text(), "CT-500  500A");
  EXPECT_EQ(p.s().probes.ProbeLabel[11], "CT-500  500A");
}

TEST(ProfileWindow, EachDialogOpensWithItsCaptionRowsAndButtonsAndTheScalingEntriesPrintTheirProfileEntry) {
  WindowProgram p;
  auto range = [](int first, int step, int n) {
    QStringList out;
    for (int i = 0; i < n; ++i) out << QString::number(first + step * i);
    return out;
  };
  const struct {
    DialogId id;
    QString title;
    QStringList rows;
    bool saves;
  } cases[] = {{DialogId::custom, "Custom Scale", range(0, 10, 11), true},
               {DialogId::input100mv, "100 mV", range(0, 10, 11), true},
               {DialogId::input10v, "10 Volt", range(0, 1, 11), true},
               {DialogId::input420, "4 to 20 ma", range(4, 1, 17), true},
               {DialogId::inputbipo100mv, "bipolar 100 milivolt", range(-100, 20, 11), false},
               {DialogId::inputbipo10mv, "bipolar 10 milivolt", range(-10, 2, 11), false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.title.toStdString());
    QStringList seen;
    WhenModal user("", [&](QWidget* w) {
      seen << w->windowTitle() << Shown(w, "Label", 17) << Shown(w, "Command", 4);
      EXPECT_EQ(w->findChild<QAction*>("mnuSave1")->isVisible(), c.saves);
      Click(w, "Command2");
    });
    Dispatch(*p.app, [&] { ShowModal(*p.app, c.id); });
    EXPECT_EQ(seen, QStringList(c.title) << c.rows << "OK" << "Cancel" << "Clear All");
    EXPECT_FALSE(p.window.Dialog(c.id)->isVisible());
  }
  for (const auto& [entry, id] : {std::pair{"mnu420sca", DialogId::input420}, {"mnu100sca", DialogId::input100mv},
                                  {"mnu10sca", DialogId::input10v}}) {
    SCOPED_TRACE(entry);
    p.Action(entry)->trigger();
    ShellDialog* d = p.window.Dialog(id);
    ASSERT_TRUE(d->isVisible() && !d->isModal());
    EXPECT_EQ(Shown(d, "Command", 4) << Text(d, "Label26"), (QStringList{"Close", "Clear All", "PROFILE ENTRY"}));
    EXPECT_TRUE(d->findChild<QLabel*>("Label27")->isVisible());
    const QString pdf = p.dir.path() + "/" + entry + ".pdf";
    qputenv("QUILLET_PRINT_PDF", pdf.toUtf8());
    d->findChild<QAction*>("mnuPrint")->trigger();
    qunsetenv("QUILLET_PRINT_PDF");
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString bytes = QString::fromLatin1(f.readAll());
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_EQ(bytes.count(QRegularExpression("/Type\\s*/Page[^s]")), 1);
    Click(d, "Command3");
    EXPECT_FALSE(d->isVisible());
    EXPECT_EQ(p.s().profiles.ProfileEntryOnly, 0);
  }
}

TEST(DescribeWindow, TypedTextsAreStoredAtOkAndTheFieldsShowTheRecordAgainAfterCancel) {
  WithRecord p;
  QStringList seen;
  auto describe = [&](const std::function<void(QWidget*)>& user) {
    WhenModal modal("Describe", [&](QWidget* w) { seen << w->windowTitle() << Text(w, "Text1") << Text(w, "Text3"), user(w); });
    p.Find<QPushButton>("Command3")->click();
    EXPECT_TRUE(modal.done);
  };
  describe([](QWidget* w) {
    auto* name = w->findChild<QLineEdit*>("Text1");
    name->selectAll();
    name->insert("Cold \"room\"");  // as typed: the edit reports it as the user's
    w->findChild<QPlainTextEdit*>("Text3")->insertPlainText("door open\nfan off");
    Click(w, "Command1");
  });
  const SampleRecord& r = p.s().record;
  EXPECT_EQ(r.RecordTitle + "|" + r.RecordRemarks, "Cold  room |door open\r\nfan off");
  EXPECT_EQ(r.RecordSaved.Value(), 0);
  EXPECT_TRUE(p.Action("mnuSaveTXT")->isEnabled());
  EXPECT_FALSE(p.window.Dialog(DialogId::Describe)->isVisible());
  // Edits cancelled with Escape are gone when the form opens next.
  describe([](QWidget* w) {
    w->findChild<QLineEdit*>("Text1")->insert(" lost");
    QTimer::singleShot(0, w, [w] { static_cast<QDialog*>(w)->reject(); });
  });
  EXPECT_EQ(r.RecordTitle, "Cold  room ");
  describe([](QWidget* w) { Click(w, "Command2"); });
  EXPECT_EQ(seen, (QStringList{"Graph Description:", "Shed", "", "Graph Description:", "Cold  room ",
                               "door open\nfan off", "Graph Description:", "Cold  room ", "door open\nfan off"}));
}

TEST(SaveOptWindow, DisplayedGraphOnlyThenTheSaveDialogWritesTheShownSamplesUnderATxtName) {
  WithRecord p;
  SampleRecord& r = p.s().record;
  r.RecordSampleCount = 2;  // zoomed in on the last two samples
  for (int i = 1; i <= 2; ++i) r.ShownValues[i] = r.FullValues[i + 1], r.ShownTimes[i] = r.FullTimes[i + 1];
  r.RecordSaved = 0;
  p.s().graph.GraphZoomed = 1;
  p.w().mnuSaveTXT.enabled = true;
  p.window.Refresh();
  QStringList seen;
  WhenModal options("SaveOpt", [&](QWidget* w) {
    seen << w->windowTitle() << (w->findChild<QPushButton*>("Command1")->isEnabled() ? "entire" : "");
    Click(w, "Command2");
  });
  WhenModal files("", [&](QWidget* w) {
    auto* dialog = qobject_cast<QFileDialog*>(w);
    if (!dialog) return;
    seen << (dialog->acceptMode() == QFileDialog::AcceptSave ? "save" : "open") << dialog->nameFilters();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(p.dir.path() + "/shed");
    static_cast<QDialog*>(dialog)->accept();
  });
  p.Action("mnuSaveTXT")->trigger();
  EXPECT_EQ(seen, (QStringList{"Save Options", "entire", "save", "txt files (*.txt)"}));
  const QStringList lines = FileLines(p.dir.path() + "/shed.txt");
  ASSERT_EQ(lines.size(), 15);
  EXPECT_EQ(lines[2], "2");
  EXPECT_TRUE(lines[13].endsWith("\t2.5") && lines[14].endsWith("\t3.5"));
  EXPECT_EQ(p.s().files.DisplayedSaved, 1);
}

TEST(PrintWindow, PrintOptThenTheSystemDialogAndTheEndingWhenItIsCancelled) {
  WithRecord p;
  p.s().graph.GraphZoomed = 1;
  QStringList seen;
  bool busy = false, anyOption = true;
  WhenModal options("PrintOpt", [&](QWidget* w) {
    seen << w->windowTitle() << Shown(w, "Command", 3);
    Click(w, "Command2");
  });
  WhenModal system("", [&](QWidget* w) {
    auto* d = qobject_cast<QPrintDialog*>(w);
    if (!d) return;
    seen << d->windowTitle();
    busy = p.window.cursor().shape() == Qt::WaitCursor && !p.window.findChild<QMenu*>("mnuFile")->menuAction()->isEnabled();
    anyOption = d->testOption(QAbstractPrintDialog::PrintSelection) || d->testOption(QAbstractPrintDialog::PrintToFile) ||
                d->testOption(QAbstractPrintDialog::PrintPageRange);
    QTimer::singleShot(0, d, [d] { d->reject(); });
  });
  p.Action("mnuPData")->trigger();
  EXPECT_EQ(seen, (QStringList{"Print Options", "Entire Record", "Displayed Graph Only", "Cancel", "Print Data"}));
  EXPECT_TRUE(busy);
  EXPECT_FALSE(anyOption);
  EXPECT_EQ(p.s().printing.PrintShownOnly, 1);
  EXPECT_EQ(p.s().printing.PrintFault, 32755);
  EXPECT_NE(p.window.cursor().shape(), Qt::WaitCursor);
  EXPECT_TRUE(p.window.findChild<QMenu*>("mnuFile")->menuAction()->isEnabled());
  EXPECT_FALSE(p.window.findChild<QMenu*>("mnuFunc")->menuAction()->isVisible() || p.Find<QWidget>("Label15")->isVisible());
}

// Offscreen the clipboard holds the graph's picture. Under Xvfb the program owns the X
// clipboard while xclip, another process, reads it as PNG: the test runs itself again
// under xvfb-run for that part.
TEST(ClipboardWindow, GraphToClipboardPutsThePictureOfTheGraphWhereAnotherProgramReadsItAsPng) {
  const bool child = qEnvironmentVariableIsSet("QUILLET_XVFB_CHILD");
  WithRecord p;
  const QSize graph = p.Find<QWidget>("Picture1")->contentsRect().size();
  p.Action("mnuGClip")->trigger();
  if (child) {
    ASSERT_EQ(QGuiApplication::platformName(), "xcb");
    // The clipboard's owner must keep answering while xclip asks, so the event loop runs.
    QProcess xclip;
    QEventLoop loop;
    QObject::connect(&xclip, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(20000, &loop, &QEventLoop::quit);
    xclip.start("xclip", {"-selection", "clipboard", "-t", "image/png", "-o"});
    loop.exec();
    ASSERT_EQ(xclip.state(), QProcess::NotRunning) << "xclip did not finish";
    const QByteArray png = xclip.readAllStandardOutput();
    ASSERT_TRUE(png.startsWith("\x89PNG")) << xclip.readAllStandardError().toStdString();
    EXPECT_EQ(QImage::fromData(png, "PNG").size(), graph);
    return;
  }
  const QImage image = QGuiApplication::clipboard()->image();
  ASSERT_EQ(image.size(), graph);
  // The graph itself, not an empty surface: the frame and trace leave dark pixels.
  int dark = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 128;
  EXPECT_GT(dark, 500);
  const QString xvfbRun = QStandardPaths::findExecutable("xvfb-run");
  if (xvfbRun.isEmpty() || QStandardPaths::findExecutable("xclip").isEmpty())
    GTEST_SKIP() << "needs xvfb-run and xclip (scripts/install-deps.sh)";
  QProcess run;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("QUILLET_XVFB_CHILD", "1");
  env.insert("QT_QPA_PLATFORM", "xcb");
  run.setProcessEnvironment(env);
  run.setProcessChannelMode(QProcess::MergedChannels);
  run.start(xvfbRun, {"-a", QCoreApplication::applicationFilePath(), "--gtest_filter=" + QString(::testing::UnitTest::GetInstance()->current_test_info()->test_suite_name()) + "." + ::testing::UnitTest::GetInstance()->current_test_info()->name()});
  ASSERT_TRUE(run.waitForFinished(60000));
  const QString out = QString::fromUtf8(run.readAll());
  EXPECT_TRUE(run.exitCode() == 0 && out.contains("[  PASSED  ] 1 test")) << out.toStdString();
}

// What the PNG writer writes reads back pixel for pixel, whatever the mix of runs, repeated
// rows, stray pixels and colour counts: a palette (colour type 3) up to 256 colours, RGB (2) past.
TEST(PngEncoder, EveryPictureReadsBackExactlyInPaletteOrRgbAndAnEmptyOneGivesNothing) {
  auto graphLike = [](int greys) {
    QImage image(1200, 600, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int x = 120; x < 1200; x += 120) painter.drawLine(x, 0, x, 599);
    for (int y = 75; y < 600; y += 75) painter.drawLine(0, y, 1199, y);
    painter.setPen(Qt::red);
    for (int x = 1; x < 1200; ++x) painter.drawLine(x - 1, 300 + (x * 7) % 23, x, 300 + ((x + 1) * 7) % 23);
    // Grey blocks stand for antialiased text.
    for (int g = 0; g < greys; ++g) image.setPixel(g % 1200, 599 - g / 1200, qRgb(g % 256, g % 256, g / 256 * 40));
    return image;
  };
  std::mt19937 rng(3);
  QImage noise(97, 31, QImage::Format_RGB32), one(1, 1, QImage::Format_RGB32), wide(12000, 4, QImage::Format_RGB32),
      alpha(40, 20, QImage::Format_ARGB32);
  for (int y = 0; y < noise.height(); ++y)
    for (int x = 0; x < noise.width(); ++x) noise.setPixel(x, y, rng() & 0xFFFFFF);
  one.fill(qRgb(1, 2, 3));
  // RGB rows longer than the 32 KiB a repeat may reach back, with a few stray colours.
  wide.fill(Qt::white);
  for (int i = 0; i < 400; ++i) wide.setPixel((i * 997) % 12000, i % 4, qRgb(i % 256, i / 2, 7));
  alpha.fill(qRgba(10, 200, 30, 255));
  alpha.setPixel(3, 4, qRgba(255, 0, 0, 255));  // written without the alpha
  const struct {
    const char* name;
    QImage image;
    int colourType;  // 0: either
  } cases[] = {{"graph", graphLike(200), 3}, {"graph, 600 greys", graphLike(600), 2}, {"noise", noise, 0},
               {"one pixel", one, 0}, {"wide", wide, 2}, {"alpha", alpha, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const QByteArray png = EncodePng(c.image);
    ASSERT_GT(png.size(), 25);
    if (c.colourType) EXPECT_EQ(png.at(25), c.colourType);
    QImage back;
    ASSERT_TRUE(back.loadFromData(png, "PNG"));
    EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), c.image.convertToFormat(QImage::Format_RGB32));
  }
  EXPECT_TRUE(EncodePng(QImage()).isEmpty());
}

// The Qt port layer and the link logic against the emulator, on the link "tty" in the folder.
struct Linked : WindowProgram {
  Linked() : WindowProgram(SettingsText(1, 1, 1200), true) {}
  QString Link() const { return dir.path() + "/tty"; }
  void Start() { Dispatch(*app, [this] { StartProgram(*app); }); }
};

TEST(SerialEndToEnd, ATemperatureLoggerIsFoundAndItsLiveValueShows) {
  Linked p;
  EmulatorProcess sim(p.Link(), {"--model", "17", "--baud", "1200", "--serial", "777", "--elapsed", "2h"});
  p.Start();
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
  Linked p;
  EmulatorProcess sim(p.Link(), {"--model", "18", "--baud", "4800"});
  p.Start();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 10000));
  EXPECT_EQ(p.s().settings.BaudRate.Value(), 4800);
  EXPECT_EQ(p.s().link.BaudConfirmed.Value(), 1);
}

TEST(SerialEndToEnd, AStoppedEmulatorIsNoticedAndARestartedOneFoundAgain) {
  Linked p;
  const QStringList args{"--model", "17", "--baud", "1200"};
  auto sim = std::make_unique<EmulatorProcess>(p.Link(), args);
  p.Start();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.HeaderRead == 1; }, 8000));
  sim.reset();
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 0; }, 8000));
  // Started again, as a logger plugged back in: found with no action from the user.
  sim = std::make_unique<EmulatorProcess>(p.Link(), args);
  ASSERT_TRUE(p.RunUntil([&] { return p.s().link.LoggerSeen == 1; }, 12000));
}

}  // namespace
}  // namespace quillet::testing
