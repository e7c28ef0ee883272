// Describe, SaveOpt and the graph on the clipboard in the window program: offscreen, and
// once under a real X server read back by another program.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QEventLoop>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStandardPaths>

#include "log1/language.h"
#include "ui/dialogs.h"
#include "ui/window_program.h"

namespace quillet {
namespace {

using testing::WhenModal;

// The window with the shipped language file in English and a complete record of three
// samples, 1.5, 2.5 and 3.5, saved and not zoomed.
struct WindowWithRecord : testing::WindowProgram {
  WindowWithRecord() : WindowProgram() {
    Dispatch(*app, [this] {
      LoadLanguageTable(*app);
      app->s.settings.LanguageIndex = 1;
      ApplyLanguage(*app);
    });
    SampleRecord& r = app->s.record;
    r.RecordModelCode = 22;
    r.FullSampleCount = r.RecordSampleCount = 3;
    for (int i = 1; i <= 3; ++i) {
      r.FullTimes[i] = r.ShownTimes[i] = 46347 + i / 24.0;
      r.FullValues[i] = r.ShownValues[i] = i + 0.5;
    }
    r.RecordSaved = 1;
    r.RecordTitle = "Shed";
    r.RecordRangeFactor = 1;
    r.LoggerNumber = 7;
    app->s.link.DownloadPercent = 100;
    w().Command3.enabled = w().mnuGClip.enabled = true;
    window.Refresh();
    window.show();
  }
  QAction* Menu(const char* name) { return Action(name); }
};

TEST(DescribeWindow, TypedTextsAreStoredAtOkAndTheFieldsShowTheRecordAgainAfterCancel) {
  WindowWithRecord p;
  QString title, shownTitle;
  {
    WhenModal user("Describe", [&](QWidget* w) {
      title = w->windowTitle();
      auto* name = w->findChild<QLineEdit*>("Text1");
      shownTitle = name->text();
      name->selectAll();
      name->insert("Cold \"room\"");  // as typed: the edit reports it as the user's
      w->findChild<QPlainTextEdit*>("Text3")->insertPlainText("door open\nfan off");
      w->findChild<QPushButton*>("Command1")->click();
    });
    p.window.findChild<QPushButton*>("Command3")->click();
    EXPECT_TRUE(user.done);
  }
  EXPECT_EQ(title, "Graph Description:");
  EXPECT_EQ(shownTitle, "Shed");
  EXPECT_EQ(p.app->s.record.RecordTitle, "Cold  room ");
  EXPECT_EQ(p.app->s.record.RecordRemarks, "door open\r\nfan off");
  EXPECT_EQ(p.app->s.record.RecordSaved.Value(), 0);
  EXPECT_TRUE(p.Menu("mnuSaveTXT")->isEnabled());
  EXPECT_FALSE(p.window.Dialog(DialogId::Describe)->isVisible());

  // Edits cancelled with Escape are gone when the form opens next.
  QString titleAgain, remarksAgain;
  {
    WhenModal user("Describe", [&](QWidget* w) {
      w->findChild<QLineEdit*>("Text1")->insert(" lost");
      QTimer::singleShot(0, w, [w] { static_cast<QDialog*>(w)->reject(); });
    });
    p.window.findChild<QPushButton*>("Command3")->click();
  }
  EXPECT_EQ(p.app->s.record.RecordTitle, "Cold  room ");
  {
    WhenModal user("Describe", [&](QWidget* w) {
      titleAgain = w->findChild<QLineEdit*>("Text1")->text();
      remarksAgain = w->findChild<QPlainTextEdit*>("Text3")->toPlainText();
      w->findChild<QPushButton*>("Command2")->click();
    });
    p.window.findChild<QPushButton*>("Command3")->click();
  }
  EXPECT_EQ(titleAgain, "Cold  room ");
  EXPECT_EQ(remarksAgain, "door open\nfan off");
}

TEST(SaveOptWindow, DisplayedGraphOnlyThenTheSaveDialogWritesTheShownSamplesUnderATxtName) {
  WindowWithRecord p;
  SampleRecord& r = p.app->s.record;
  r.RecordSampleCount = 2;  // zoomed in on the last two samples
  r.ShownValues[1] = 2.5;
  r.ShownValues[2] = 3.5;
  r.ShownTimes[1] = r.FullTimes[2];
  r.ShownTimes[2] = r.FullTimes[3];
  r.RecordSaved = 0;
  p.app->s.graph.GraphZoomed = 1;
  p.app->v.log1.mnuSaveTXT.enabled = true;
  p.window.Refresh();

  QString caption;
  bool entireEnabled = false;
  QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
  QStringList filters;
  WhenModal options("SaveOpt", [&](QWidget* w) {
    caption = w->windowTitle();
    entireEnabled = w->findChild<QPushButton*>("Command1")->isEnabled();
    w->findChild<QPushButton*>("Command2")->click();
  });
  const QString chosen = p.dir.path() + "/shed";
  QTimer files;
  QObject::connect(&files, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    mode = dialog->acceptMode();
    filters = dialog->nameFilters();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(chosen);
    static_cast<QDialog*>(dialog)->accept();
  });
  files.start(30);
  p.Menu("mnuSaveTXT")->trigger();
  files.stop();

  EXPECT_TRUE(options.done);
  EXPECT_EQ(caption, "Save Options");
  EXPECT_TRUE(entireEnabled);
  EXPECT_EQ(mode, QFileDialog::AcceptSave);
  EXPECT_EQ(filters, QStringList{"txt files (*.txt)"});
  QFile saved(chosen + ".txt");
  ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
  const QStringList lines = QString::fromUtf8(saved.readAll()).split("\r\n", Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 15);
  EXPECT_EQ(lines[2], "2");
  EXPECT_TRUE(lines[13].endsWith("\t2.5"));
  EXPECT_TRUE(lines[14].endsWith("\t3.5"));
  EXPECT_EQ(p.app->s.files.DisplayedSaved, 1);
}

TEST(ClipboardWindow, GraphToClipboardPutsThePictureOfTheGraphSurfaceThere) {
  WindowWithRecord p;
  QGuiApplication::clipboard()->setText("before");
  p.Menu("mnuGClip")->trigger();
  const QImage image = QGuiApplication::clipboard()->image();
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.size(), p.window.findChild<QWidget*>("Picture1")->contentsRect().size());
  // The graph itself, not an empty surface: the frame and trace leave dark pixels.
  int dark = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) dark += qGray(image.pixel(x, y)) < 128;
  }
  EXPECT_GT(dark, 500);
}

// Under Xvfb the program owns the X clipboard while xclip, another process, reads it as
// PNG. The test runs itself again under xvfb-run for that part.
TEST(ClipboardWindow, AnotherProgramReadsTheGraphFromTheXClipboardAsPng) {
  if (!qEnvironmentVariableIsSet("QUILLET_XVFB_CHILD")) {
    const QString xvfbRun = QStandardPaths::findExecutable("xvfb-run");
    const QString xclip = QStandardPaths::findExecutable("xclip");
    if (xvfbRun.isEmpty() || xclip.isEmpty())
      GTEST_SKIP() << "needs xvfb-run and xclip (scripts/install-deps.sh)";
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QUILLET_XVFB_CHILD", "1");
    env.insert("QT_QPA_PLATFORM", "xcb");
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(xvfbRun,
                {"-a", QCoreApplication::applicationFilePath(),
                 "--gtest_filter=ClipboardWindow.AnotherProgramReadsTheGraphFromTheXClipboardAsPng"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QString out = QString::fromUtf8(child.readAll());
    EXPECT_EQ(child.exitCode(), 0) << out.toStdString();
    EXPECT_TRUE(out.contains("[  PASSED  ] 1 test")) << out.toStdString();
    return;
  }
  ASSERT_EQ(QGuiApplication::platformName(), "xcb");
  WindowWithRecord p;
  p.Menu("mnuGClip")->trigger();
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
  const QImage image = QImage::fromData(png, "PNG");
  EXPECT_EQ(image.size(), p.window.findChild<QWidget*>("Picture1")->contentsRect().size());
}

}  // namespace
}  // namespace quillet
