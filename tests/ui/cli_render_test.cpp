// quillet-cli render: the picture, the scale report and the refusals.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <cmath>

#include "ui/window_program.h"

namespace {

using Rendered = quillet::testing::CliRun;

Rendered Render(const QStringList& args) {
  return quillet::testing::RunCli(QStringList{"render"} << args, 30000);
}

// A record file with the given values, one a minute from 10:00 on 21 Nov 2026.
QString WriteRecord(const QTemporaryDir& dir, const QString& name, const std::vector<double>& values) {
  const QString path = dir.path() + "/" + name;
  QFile f(path);
  if (!f.open(QIODevice::WriteOnly)) return {};
  QByteArray text =
      "\"loggerfile\"\r\n\"rev02\"\r\n" + QByteArray::number(static_cast<int>(values.size())) + "\r\n";
  for (int i = 0; i < 7; ++i) text += "\"\"\r\n";
  text += "1\r\n77\r\n\"V\"\r\n";
  for (std::size_t i = 0; i < values.size(); ++i) {
    text += QByteArray::number(46347.0 + 10.0 / 24 + i / 1440.0, 'f', 8) + "\t" +
            QByteArray::number(values[i]) + "\r\n";
  }
  f.write(text);
  return path;
}

QMap<QString, QString> Results(const QString& out, QStringList* timeLabels, QStringList* valueLabels) {
  QMap<QString, QString> results;
  for (const QString& line : out.split('\n', Qt::SkipEmptyParts)) {
    const QString name = line.section('=', 0, 0), value = line.section('=', 1);
    if (name == "time_label") {
      timeLabels->append(value);
    } else if (name == "value_label") {
      valueLabels->append(value);
    } else {
      results[name] = value;
    }
  }
  return results;
}

TEST(CliRender, ReportsTheScaleOfDataFromMinus3To7AndDrawsItsLabels) {
  QTemporaryDir dir;
  std::vector<double> values;
  for (int i = 0; i <= 60; ++i) values.push_back(-3 + 10.0 * i / 60);
  const QString rec = WriteRecord(dir, "ramp.txt", values);
  const Rendered r = Render({rec, "--out", dir.path() + "/ramp.png", "--axes"});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.err.isEmpty()) << r.err.toStdString();
  QStringList times, labels;
  const auto res = Results(r.out, &times, &labels);
  EXPECT_EQ(res["YShownMin"], "-3");
  EXPECT_EQ(res["YShownMax"], "7");
  EXPECT_EQ(res["YAxisBottom"], "-3");
  EXPECT_EQ(res["YAxisTop"], "8");
  EXPECT_EQ(res["ShownMin"], "-3");
  EXPECT_EQ(res["ShownMax"], "7");
  EXPECT_EQ(res["ShownAvg"], "2");
  EXPECT_EQ(labels.first(), "-3");
  EXPECT_EQ(labels.size(), res["YTickCount"].toInt() + 1);
  // An hour of data from 10:00: a label every quarter hour, the first at the axis start.
  EXPECT_EQ(res["TimeTickSeconds"], "900");
  ASSERT_FALSE(times.isEmpty());
  EXPECT_EQ(times.first(), "10:00");
  const QImage png(dir.path() + "/ramp.png");
  EXPECT_EQ(png.size(), QSize(1200, 600));
}

TEST(CliRender, ThePictureOfTheReferenceRecordMatchesTheCheckedInOne) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/graph.png";
  const Rendered r =
      Render({QUILLET_TEST_DATA_DIR "/reference_record.txt", "--out", out, "--size", "800x400"});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  const QImage got = QImage(out).convertToFormat(QImage::Format_RGB32);
  const QImage want =
      QImage(QUILLET_TEST_DATA_DIR "/reference_graph.png").convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(got.size(), want.size());
  // Small differences in text smoothing are allowed; a moved line or label is not.
  long differing = 0;
  for (int y = 0; y < got.height(); ++y) {
    for (int x = 0; x < got.width(); ++x) {
      const QRgb a = got.pixel(x, y), b = want.pixel(x, y);
      const int d = std::max(
          {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
      differing += d > 64;
    }
  }
  EXPECT_LE(differing, got.width() * got.height() / 1000)
      << "the picture changed; if that is meant, run scripts/update-reference-picture.sh";
}

TEST(CliRender, WritesAVectorPdfWithTheLabelsAsText) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/graph.pdf";
  const Rendered r = Render({QUILLET_TEST_DATA_DIR "/reference_record.txt", "--out", out});
  ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
  QFile pdf(out);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_TRUE(pdf.read(5) == "%PDF-");
  QProcess text;
  text.start("pdftotext", {out, "-"});
  if (!text.waitForFinished(10000) || text.exitCode() != 0)
    GTEST_SKIP() << "pdftotext (poppler-utils) is needed";
  const QString words = QString::fromUtf8(text.readAllStandardOutput());
  EXPECT_TRUE(words.contains("Greenhouse 2")) << words.toStdString();
  EXPECT_TRUE(words.contains("degC"));
  EXPECT_TRUE(words.contains("7:30"));
}

TEST(CliRender, RefusesWhatItCannotDrawWithOneLineAndNoPicture) {
  QTemporaryDir dir;
  const QString out = dir.path() + "/x.png";
  const QString notRecord = dir.path() + "/notes.txt";
  QFile f(notRecord);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write("shopping list\r\n");
  f.close();
  const QString tiny = WriteRecord(dir, "tiny.txt", {1, 2});
  for (const QStringList& args :
       {QStringList{dir.path() + "/missing.txt", "--out", out}, QStringList{notRecord, "--out", out},
        QStringList{tiny, "--out", out}, QStringList{tiny, "--out", dir.path() + "/x.gif"},
        QStringList{tiny, "--out", out, "--size", "big"}}) {
    const Rendered r = Render(args);
    EXPECT_NE(r.exitCode, 0) << args.join(' ').toStdString();
    EXPECT_EQ(r.err.count('\n'), 1) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(out));
  }
}

}  // namespace
