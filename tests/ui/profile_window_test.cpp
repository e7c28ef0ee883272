// The six profile dialogs under the offscreen platform, their print to PDF, and the
// profile commands of quillet-cli from file to decoded record.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

#include "hub/app.h"
#include "log1/hooks.h"
#include "ui/main_window.h"
#include "ui/profile_dialog.h"
#include "ui/qt_platform.h"
#include "ui/serial_transport.h"

namespace quillet {
namespace {

struct Window {
  explicit Window(const QTemporaryDir& dir)
      : platform{window, clock, timers, poster, transport, FilePlaces{QUILLET_BIN_DIR, dir.path().toStdString()}},
        app(platform, Log1Hooks()) {
    window.Attach(app);
  }
  QtClock clock;
  QtTimers timers;
  QtPoster poster;
  SerialTransport transport;
  MainWindow window;
  Platform platform;
  App app;
};

QStringList VisibleTexts(QWidget* w, const char* prefix, int upTo) {
  QStringList out;
  for (int n = 1; n <= upTo; ++n) {
    QWidget* c = w->findChild<QWidget*>(QString("%1%2").arg(prefix).arg(n));
    if (!c || !c->isVisible()) continue;
    if (auto* l = qobject_cast<QLabel*>(c)) out << l->text();
    if (auto* b = qobject_cast<QPushButton*>(c)) out << b->text();
  }
  return out;
}

QStringList Range(int first, int step, int n) {
  QStringList out;
  for (int i = 0; i < n; ++i) out << QString::number(first + step * i);
  return out;
}

TEST(ProfileWindow, EachDialogOpensWithItsCaptionRowsAndButtons) {
  QTemporaryDir dir;
  Window t(dir);
  struct Case {
    DialogId id;
    QString title;
    QStringList rows, buttons;
  } cases[] = {
      {DialogId::custom, "Custom Scale", Range(0, 10, 11), {"OK", "Cancel", "Clear All"}},
      {DialogId::input100mv, "100 mV", Range(0, 10, 11), {"OK", "Cancel", "Clear All"}},
      {DialogId::input10v, "10 Volt", Range(0, 1, 11), {"OK", "Cancel", "Clear All"}},
      {DialogId::input420, "4 to 20 ma", Range(4, 1, 17), {"OK", "Cancel", "Clear All"}},
      {DialogId::inputbipo100mv, "bipolar 100 milivolt", Range(-100, 20, 11), {"OK", "Cancel", "Clear All"}},
      {DialogId::inputbipo10mv, "bipolar 10 milivolt", Range(-10, 2, 11), {"OK", "Cancel", "Clear All"}},
  };
  for (const Case& c : cases) {
    QString title;
    QStringList rows, buttons;
    bool saveShown = false;
    QTimer::singleShot(50, [&] {
      QWidget* w = QApplication::activeModalWidget();
      ASSERT_NE(w, nullptr);
      title = w->windowTitle();
      rows = VisibleTexts(w, "Label", 17);
      buttons = VisibleTexts(w, "Command", 4);
      saveShown = w->findChild<QAction*>("mnuSave1")->isVisible();
      w->findChild<QPushButton*>("Command2")->click();
    });
    Dispatch(t.app, [&] { ShowModal(t.app, c.id); });
    EXPECT_EQ(title, c.title);
    EXPECT_EQ(rows, c.rows) << c.title.toStdString();
    EXPECT_EQ(buttons, c.buttons) << c.title.toStdString();
    EXPECT_EQ(saveShown, c.id != DialogId::inputbipo100mv && c.id != DialogId::inputbipo10mv);
    EXPECT_FALSE(t.window.Dialog(c.id)->isVisible());
  }
}

TEST(ProfileWindow, TheScalingEntriesOpenTheirDialogsForProfileEntryAndPrintItOnOnePage) {
  QTemporaryDir dir;
  Window t(dir);
  const struct {
    const char* entry;
    DialogId id;
  } entries[] = {{"mnu420sca", DialogId::input420}, {"mnu100sca", DialogId::input100mv}, {"mnu10sca", DialogId::input10v}};
  for (const auto& e : entries) {
    t.window.findChild<QAction*>(e.entry)->trigger();
    ShellDialog* d = t.window.Dialog(e.id);
    ASSERT_TRUE(d->isVisible()) << e.entry;
    EXPECT_FALSE(d->isModal());
    EXPECT_EQ(VisibleTexts(d, "Command", 4), (QStringList{"Close", "Clear All"}));
    EXPECT_EQ(d->findChild<QLabel*>("Label26")->text(), "PROFILE ENTRY");
    EXPECT_TRUE(d->findChild<QLabel*>("Label27")->isVisible());

    const QString pdf = dir.path() + "/" + e.entry + ".pdf";
    qputenv("QUILLET_PRINT_PDF", pdf.toUtf8());
    d->findChild<QAction*>("mnuPrint")->trigger();
    qunsetenv("QUILLET_PRINT_PDF");
    QFile f(pdf);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << e.entry;
    const QString bytes = QString::fromLatin1(f.readAll());
    EXPECT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_EQ(bytes.count(QRegularExpression("/Type\\s*/Page[^s]")), 1) << e.entry;

    d->findChild<QPushButton*>("Command3")->click();
    EXPECT_FALSE(d->isVisible());
    EXPECT_EQ(t.app.s.profiles.ProfileEntryOnly, 0);
  }
}

struct CliRun {
  int exitCode = -1;
  QString out, err;
};

CliRun RunCli(const QStringList& args) {
  QProcess cli;
  cli.start(QUILLET_BIN_DIR "/quillet-cli", args);
  CliRun r;
  if (!cli.waitForFinished(60000)) return r;
  r.exitCode = cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1;
  r.out = QString::fromUtf8(cli.readAllStandardOutput());
  r.err = QString::fromUtf8(cli.readAllStandardError());
  return r;
}

void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}

TEST(ProfileCli, WrittenShownAndDecodedThroughTheTypedPoints) {
  QTemporaryDir dir;
  const QString p = dir.path() + "/sensor";
  CliRun w = RunCli({"profile", "write", "--family", "custom", "--unit", "bar", "--entry", "2=5", "--entry", "4=15",
                     "--out", p});
  ASSERT_EQ(w.exitCode, 0) << w.err.toStdString();
  EXPECT_EQ(RunCli({"profile", "write", "--family", "custom", "--unit", "bar", "--entry", "2=5", "--entry", "4=15",
                    "--out", p}).exitCode, 1);  // kept without --replace

  const CliRun s = RunCli({"profile", "show", p + ".cus"});
  ASSERT_EQ(s.exitCode, 0) << s.err.toStdString();
  const QStringList lines = s.out.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 16);
  EXPECT_EQ(lines.mid(0, 4), (QStringList{"family\tcustom", "unit\tbar", "points\t2", "invalid\t0"}));
  EXPECT_EQ(lines[4], "knot\t0\t\t-5\t5");
  EXPECT_EQ(lines[6], "knot\t2\t5\t5\t5");
  EXPECT_EQ(lines[15], "preview\t-5.\t45.");

  // A model 32 header (plain range byte 1) and a block of counts 0, 7, 14, ...: the
  // profile maps a count N to N / 40 - 5.
  QByteArray h(22, '\0');
  h[0] = 0;
  for (int i = 3; i <= 10; ++i) h[i] = static_cast<char>(0xFF);
  h[11] = 100;
  h[16] = 32;
  h[17] = 99;
  h[21] = 1;
  QByteArray b;
  for (int i = 0; i < 100; ++i) b.append(static_cast<char>(i * 7 % 256));
  WriteFile(dir.path() + "/h.bin", h);
  WriteFile(dir.path() + "/b.bin", b);
  const QString rec = dir.path() + "/rec.txt";
  auto decode = [&](const QString& profile) {
    return RunCli({"decode", "--header", dir.path() + "/h.bin", "--block", dir.path() + "/b.bin", "--now",
                   "2026-11-21 12:00:00", "--profile", profile, "--out", rec});
  };
  const CliRun d = decode(p + ".cus");
  ASSERT_EQ(d.exitCode, 0) << d.err.toStdString();
  QFile f(rec);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  const QStringList recLines = QString::fromLatin1(f.readAll()).split("\r\n", Qt::SkipEmptyParts);
  ASSERT_EQ(recLines.size(), 113);
  EXPECT_EQ(recLines[12], "\"bar\"");
  for (int i = 0; i < 100; ++i) {
    EXPECT_NEAR(recLines[13 + i].section('\t', 1).toDouble(), (i * 7 % 256) / 40.0 - 5, 1e-9) << i;
  }

  // Refusals: one line, a non-zero exit, no record.
  f.remove();
  WriteFile(dir.path() + "/flat.cus", "\"customfile\",\"rev01\",\"u\"\r\n\"1\"\r\n\"1\"\r\n" + QByteArray(9 * 4, '\0').replace(QByteArray(4, '\0'), "\"\"\r\n"));
  WriteFile(dir.path() + "/short.cus", "\"customfile\",\"rev01\",\"u\"\r\n\"1\"\r\n");
  for (const QString& bad : {dir.path() + "/flat.cus", dir.path() + "/short.cus", dir.path() + "/none.cus"}) {
    const CliRun r = decode(bad);
    EXPECT_NE(r.exitCode, 0) << bad.toStdString();
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(rec));
  }
  const CliRun wrong = RunCli({"profile", "show", p + ".cus", "--family", "100mv"});
  EXPECT_NE(wrong.exitCode, 0);
  EXPECT_TRUE(wrong.err.contains("Not a valid 0-10 V profile")) << wrong.err.toStdString();
  const CliRun rejected = RunCli({"profile", "write", "--family", "420", "--unit", "", "--entry", "5=--3", "--out", p});
  EXPECT_NE(rejected.exitCode, 0);
  EXPECT_TRUE(rejected.err.contains("knot 5")) << rejected.err.toStdString();
  const CliRun few = RunCli({"profile", "write", "--family", "420", "--unit", "", "--entry", "5=3", "--out", p});
  EXPECT_TRUE(few.err.contains("No data to save.  Enter some values.")) << few.err.toStdString();
  EXPECT_FALSE(QFile::exists(p + ".420"));
}

}  // namespace
}  // namespace quillet
