// Printing through Qt: quillet-cli print to PDF files read back with pdftotext and
// pdftoppm, its refusals, and the print commands in the window program, offscreen.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QPrintDialog>
#include <QProcess>
#include <QRegularExpression>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include "hub/app.h"
#include "log1/hooks.h"
#include "log1/language.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {
namespace {

struct CliRun {
  int exitCode = -1;
  QString err;
};

CliRun Cli(const QStringList& args) {
  QProcess cli;
  cli.start(QUILLET_BIN_DIR "/quillet-cli", QStringList{"print"} << args);
  CliRun r;
  if (!cli.waitForFinished(60000)) return r;
  r.exitCode = cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1;
  r.err = QString::fromUtf8(cli.readAllStandardError());
  return r;
}

// Standard output of a poppler tool, or a null string when it is not installed.
QString Tool(const QString& program, const QStringList& args) {
  QProcess p;
  p.start(program, args);
  if (!p.waitForFinished(30000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) return {};
  const QString out = QString::fromUtf8(p.readAllStandardOutput());
  return out.isNull() ? QString("") : out;
}

int Pages(const QString& pdf) {
  const QString info = Tool("pdfinfo", {pdf});
  for (const QString& line : info.split('\n')) {
    if (line.startsWith("Pages:")) return line.section(':', 1).trimmed().toInt();
  }
  return -1;
}

// A record file of n samples a minute apart from 10:00 on 21 Nov 2026, valued 20 + i / 10.
QString WriteRecord(const QTemporaryDir& dir, const QString& name, int n, const QByteArray& remarks = "Door open") {
  const QString path = dir.path() + "/" + name;
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly)) return {};
  QByteArray text = "\"loggerfile\"\r\n\"rev02\"\r\n" + QByteArray::number(n) + "\r\n";
  text += "\"Cold store\"\r\n\"Bay 4\"\r\n\"" + remarks + "\"\r\n\"\"\r\n\"Hall B\"\r\n\"\"\r\n\"\"\r\n";
  text += "1\r\n77\r\n\"degC\"\r\n";
  for (int i = 0; i < n; ++i) {
    text += QByteArray::number(46347.0 + 10.0 / 24 + i / 1440.0, 'f', 8) + "\t" +
            QByteArray::number(20 + i / 10.0, 'f', 1) + "\r\n";
  }
  f.write(text);
  return path;
}

TEST(CliPrint, TheGraphPageReadsBackWithItsStatisticsAndAnnotation) {
  QTemporaryDir dir;
  const QString rec = WriteRecord(dir, "rec.txt", 120), out = dir.path() + "/graph.pdf";
  const CliRun r = Cli({"graph", rec, "--out", out, "--annotate"});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  const QString words = Tool("pdftotext", {"-layout", out, "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_EQ(Pages(out), 1);
  for (const char* w : {"Cold store", "degC", "Points: 120", "Logger No: 77", "Max: 31.9", "Min: 20.0", "Bay 4",
                        "Hall B", "Door ope"}) {
    EXPECT_TRUE(words.contains(w)) << w << " in\n" << words.toStdString();
  }
  EXPECT_FALSE(words.contains("Door open"));  // the last character of a description is not printed
}

TEST(CliPrint, TheDataTableIsOneTextLinePerRowOnPagesOfFiveHundred) {
  QTemporaryDir dir;
  const QString six = WriteRecord(dir, "six.txt", 600), five = WriteRecord(dir, "five.txt", 500);
  const QString outSix = dir.path() + "/six.pdf", outFive = dir.path() + "/five.pdf";
  ASSERT_EQ(Cli({"data", six, "--out", outSix, "--paper", "Letter"}).exitCode, 0);
  // A table that fills its last page exactly is sent when the printer closes.
  ASSERT_EQ(Cli({"data", five, "--out", outFive}).exitCode, 0);
  const QString words = Tool("pdftotext", {"-layout", outSix, "-"});
  if (words.isNull()) GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  EXPECT_EQ(Pages(outSix), 2);
  EXPECT_EQ(Pages(outFive), 1);
  EXPECT_TRUE(Tool("pdfinfo", {outSix}).contains("612 x 792 pts (letter)"));
  EXPECT_TRUE(words.contains(QRegularExpression("Cold store +page +2"))) << words.toStdString();
  // Row 1: samples 1, 101, 201, 301 and 401 side by side (pdftotext closes up the blanks).
  const QString row1 = words.split('\n').filter("21/11/26 10:00:00").value(0).simplified();
  EXPECT_TRUE(row1.startsWith("21/11/26 10:00:00 20.0 degC 21/11/26 11:40:00 30.0 degC")) << row1.toStdString();
  EXPECT_TRUE(row1.endsWith("21/11/26 16:40:00 60.0 degC")) << row1.toStdString();
  EXPECT_TRUE(words.contains(QRegularExpression("21/11/26 19:59:00 +79.9 degC")));  // sample 600, alone on page 2
}

TEST(CliPrint, RefusesWithOneLineAndWritesNoFile) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/x.pdf";
  const QString rec = WriteRecord(dir, "rec.txt", 50);
  const QString run = WriteRecord(dir, "run.txt", 50, "see " + QByteArray(120, 'x'));
  QFile notes(dir.path() + "/notes.txt");
  ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
  notes.write("shopping list\r\n");
  notes.close();
  const QStringList cases[] = {
      {"graph", dir.path() + "/missing.txt", "--out", out},
      {"data", notes.fileName(), "--out", out},
      {"graph", rec, "--printer", "No Such Printer 42"},
      {"graph", run, "--out", out, "--annotate"},
      {"data", rec, "--out", out, "--paper", "A3"},
      {"data", rec, "--out", out, "--printer", "x"},
      {"data", rec, "--out", out, "--annotate"},
      {"poster", rec, "--out", out},
  };
  for (const QStringList& args : cases) {
    const CliRun r = Cli(args);
    EXPECT_NE(r.exitCode, 0) << args.join(' ').toStdString();
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
    EXPECT_EQ(QDir(dir.path()).entryList({"*.pdf*"}, QDir::Files), QStringList{}) << args.join(' ').toStdString();
  }
  // Without --annotate the long run is never printed.
  EXPECT_EQ(Cli({"graph", run, "--out", out}).exitCode, 0);
}

// The graph page of the reference record, drawn by pdftoppm at 40 dpi.
TEST(CliPrint, TheGraphPageLooksAsItDid) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/graph.pdf";
  const CliRun r = Cli({"graph", QUILLET_TEST_DATA_DIR "/reference_record.txt", "--out", out, "--annotate"});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  if (Tool("pdftoppm", {"-png", "-r", "40", "-singlefile", out, dir.path() + "/page"}).isNull()) {
    GTEST_SKIP() << "pdftoppm (poppler-utils) is needed";
  }
  const QImage got = QImage(dir.path() + "/page.png").convertToFormat(QImage::Format_RGB32);
  const QImage want = QImage(QUILLET_TEST_DATA_DIR "/reference_print_graph.png").convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(got.size(), want.size());
  long differing = 0;
  for (int y = 0; y < got.height(); ++y) {
    for (int x = 0; x < got.width(); ++x) {
      const QRgb a = got.pixel(x, y), b = want.pixel(x, y);
      differing += std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))}) > 64;
    }
  }
  EXPECT_LE(differing, got.width() * got.height() / 500)
      << "the page changed; if that is meant, run scripts/update-print-reference.sh";
}

// The window in English with a complete record of three samples.
struct PrintWindow {
  PrintWindow() {
    window.Attach(app);
    Dispatch(app, [this] {
      LoadLanguageTable(app);
      app.s.settings.LanguageIndex = 1;
      ApplyLanguage(app);
    });
    SampleRecord& r = app.s.record;
    r.FullSampleCount = r.RecordSampleCount = 3;
    for (int i = 1; i <= 3; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46347 + i / 24.0;
      r.FullValues[i] = r.ShownValues[i] = i + 0.5;
    }
    app.s.link.DownloadPercent = 100;
    app.v.log1.mnuPGraph.enabled = app.v.log1.mnuPData.enabled = true;
    window.Refresh();
    window.show();
  }
  QAction* Menu(const char* name) { return window.findChild<QAction*>(name); }
  QTemporaryDir dir;
  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  MainWindow window;
  Platform platform{window, clock, timers, poster, transport, FilePlaces{QUILLET_BIN_DIR, dir.path().toStdString()}};
  App app{platform, Log1Hooks()};
};

// Runs fn once on the modal window that test picks, polling while the program waits in it.
struct WhenModal {
  WhenModal(std::function<bool(QWidget*)> test, std::function<void(QWidget*)> fn) {
    QObject::connect(&timer, &QTimer::timeout, [this, test, fn] {
      QWidget* w = QApplication::activeModalWidget();
      if (!w || done || !test(w)) return;
      done = true;
      fn(w);
    });
    timer.start(30);
  }
  QTimer timer;
  bool done = false;
};

TEST(PrintWindow, PrintOptThenTheSystemDialogAndTheEndingWhenItIsCancelled) {
  PrintWindow p;
  EXPECT_EQ(p.Menu("mnuPGraph")->text(), "Print Graph");
  EXPECT_EQ(p.Menu("mnuPData")->text(), "Print Data");
  p.app.s.graph.GraphZoomed = 1;
  QStringList buttons;
  {
    WhenModal user([](QWidget* w) { return w->objectName() == "PrintOpt"; },
                   [&](QWidget* w) {
                     buttons << w->windowTitle();
                     for (const char* b : {"Command1", "Command2", "Command3"}) {
                       buttons << w->findChild<QPushButton*>(b)->text();
                     }
                     w->findChild<QPushButton*>("Command2")->click();
                   });
    QString title;
    bool busy = false, fileMenu = true, selection = true, toFile = true, pageRange = true;
    WhenModal printDialog([](QWidget* w) { return qobject_cast<QPrintDialog*>(w) != nullptr; },
                          [&](QWidget* w) {
                            auto* d = qobject_cast<QPrintDialog*>(w);
                            title = d->windowTitle();
                            busy = p.window.cursor().shape() == Qt::WaitCursor;
                            fileMenu = p.window.findChild<QMenu*>("mnuFile")->menuAction()->isEnabled();
                            selection = d->testOption(QAbstractPrintDialog::PrintSelection);
                            toFile = d->testOption(QAbstractPrintDialog::PrintToFile);
                            pageRange = d->testOption(QAbstractPrintDialog::PrintPageRange);
                            QTimer::singleShot(0, d, [d] { d->reject(); });
                          });
    p.Menu("mnuPData")->trigger();
    ASSERT_TRUE(user.done && printDialog.done);
    EXPECT_EQ(title, "Print Data");
    EXPECT_TRUE(busy);
    EXPECT_FALSE(fileMenu || selection || toFile || pageRange);
  }
  EXPECT_EQ(buttons, (QStringList{"Print Options", "Entire Record", "Displayed Graph Only", "Cancel"}));
  EXPECT_EQ(p.app.s.printing.PrintShownOnly, 1);
  EXPECT_EQ(p.app.s.printing.PrintFault, 32755);
  EXPECT_NE(p.window.cursor().shape(), Qt::WaitCursor);
  EXPECT_TRUE(p.window.findChild<QMenu*>("mnuFile")->menuAction()->isEnabled());
  EXPECT_FALSE(p.window.findChild<QMenu*>("mnuFunc")->menuAction()->isVisible());
  EXPECT_FALSE(p.window.findChild<QWidget*>("Label15")->isVisible());
}

}  // namespace
}  // namespace quillet
