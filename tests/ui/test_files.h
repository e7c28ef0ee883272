#pragma once
// What the command-line and window tests write and read back: logger dumps, record files,
// pictures, the emulator in a test's folder, and the one-line refusal of a command.
#include <gtest/gtest.h>

#include <QImage>
#include <vector>

#include "ui/window_program.h"

namespace quillet::testing {

inline void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << path.toStdString();
  f.write(bytes);
}

inline QStringList FileLines(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()).split("\r\n", Qt::SkipEmptyParts)
                                     : QStringList();
}

// A one-byte logger's header: memory code, serial 1337, no marks, the tick count, the model,
// the sample counter and the range byte.
inline QByteArray LoggerHeader(int model, int ticks, int samples, int memoryCode = 0, int range = 0) {
  QByteArray h(22, '\0');
  h[0] = char(memoryCode), h[1] = char(0x39), h[2] = char(0x05), h[16] = char(model), h[21] = char(range);
  for (int i = 3; i <= 10; ++i) h[i] = char(0xFF);
  for (int i = 0; i < 4; ++i) h[11 + i] = char((ticks >> (8 * i)) & 0xFF);
  h[17] = char(samples & 0xFF), h[18] = char((samples >> 8) & 0xFF);
  return h;
}

// A record file of logger 77: the values one a minute from 10:00 on 21 Nov 2026, under the
// seven description lines given.
inline QString WriteRecord(const QString& path, const std::vector<double>& values,
                           const QByteArray& unit = "V",
                           const QByteArrayList& description = QByteArrayList(7)) {
  QByteArray text = "\"loggerfile\"\r\n\"rev02\"\r\n" + QByteArray::number(int(values.size())) + "\r\n";
  for (const QByteArray& line : description) text += "\"" + line + "\"\r\n";
  text += "1\r\n77\r\n\"" + unit + "\"\r\n";
  for (std::size_t i = 0; i < values.size(); ++i)
    text += QByteArray::number(46347.0 + 10.0 / 24 + i / 1440.0, 'f', 8) + "\t" +
            QByteArray::number(values[i]) + "\r\n";
  WriteFile(path, text);
  return path;
}

// Pixels of two pictures of one size whose colours differ by more than text smoothing does.
inline long PixelsDiffering(const QString& gotPath, const QString& wantPath) {
  const QImage got = QImage(gotPath).convertToFormat(QImage::Format_RGB32);
  const QImage want = QImage(wantPath).convertToFormat(QImage::Format_RGB32);
  if (got.size() != want.size()) return got.width() * got.height() + 1;
  long differing = 0;
  for (int y = 0; y < got.height(); ++y) {
    for (int x = 0; x < got.width(); ++x) {
      const QRgb a = got.pixel(x, y), b = want.pixel(x, y);
      differing += std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                             std::abs(qBlue(a) - qBlue(b))}) > 64;
    }
  }
  return differing;
}

// The emulator on the pseudo-terminal link "tty" in the test's folder.
struct Sim {
  Sim(const QTemporaryDir& dir, const QStringList& args) : link(dir.path() + "/tty"), process(link, args) {}
  QString link;
  EmulatorProcess process;
};

// How a command refuses: a line on standard error (after the progress lines, if any), a
// non-zero exit, and no file.
inline void ExpectRefusal(const CliRun& r, const QString& file, const QString& words = "",
                          bool progress = false) {
  EXPECT_NE(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(progress || r.err.count('\n') == 1) << r.err.toStdString();
  EXPECT_TRUE(r.err.section('\n', -2).contains(words)) << r.err.toStdString();
  EXPECT_FALSE(QFile::exists(file)) << file.toStdString();
}

}  // namespace quillet::testing
