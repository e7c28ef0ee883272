// The PNG writer: what it writes must read back pixel for pixel, whatever the mix of runs,
// repeated rows, stray pixels and colour counts.
#include "ui/png_encoder.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <random>

namespace quillet {
namespace {

// The colour type byte of the header: 3 palette, 2 RGB.
int ColourType(const QByteArray& png) { return static_cast<unsigned char>(png.at(25)); }

void ExpectReadsBack(const QImage& image) {
  const QByteArray png = EncodePng(image);
  ASSERT_FALSE(png.isEmpty());
  QImage back;
  ASSERT_TRUE(back.loadFromData(png, "PNG"));
  ASSERT_EQ(back.size(), image.size());
  const QImage a = image.convertToFormat(QImage::Format_RGB32);
  const QImage b = back.convertToFormat(QImage::Format_RGB32);
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      ASSERT_EQ(a.pixel(x, y), b.pixel(x, y)) << "at " << x << "," << y;
    }
  }
}

QImage GraphLike(int w, int h, int greys) {
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter p(&image);
  p.setPen(Qt::black);
  for (int x = w / 10; x < w; x += w / 10) p.drawLine(x, 0, x, h - 1);
  for (int y = h / 8; y < h; y += h / 8) p.drawLine(0, y, w - 1, y);
  p.setPen(Qt::red);
  for (int x = 1; x < w; ++x) p.drawLine(x - 1, h / 2 + (x * 7) % 23, x, h / 2 + ((x + 1) * 7) % 23);
  // Grey blocks stand for antialiased text.
  for (int g = 0; g < greys; ++g) image.setPixel(g % w, h - 1 - (g / w) % h, qRgb(g % 256, g % 256, g / 256 * 40));
  return image;
}

TEST(PngEncoder, AGraphOfFewColoursIsAPaletteImageThatReadsBackExactly) {
  const QImage image = GraphLike(1200, 600, 200);
  EXPECT_EQ(ColourType(EncodePng(image)), 3);
  ExpectReadsBack(image);
}

TEST(PngEncoder, MoreThan256ColoursGoOutAsRgbAndReadBackExactly) {
  const QImage image = GraphLike(1200, 600, 600);
  EXPECT_EQ(ColourType(EncodePng(image)), 2);
  ExpectReadsBack(image);
}

TEST(PngEncoder, NoiseTinyPicturesAndRowsWiderThanTheWindowReadBackExactly) {
  std::mt19937 rng(3);
  QImage noise(97, 31, QImage::Format_RGB32);
  for (int y = 0; y < noise.height(); ++y)
    for (int x = 0; x < noise.width(); ++x) noise.setPixel(x, y, rng() & 0xFFFFFF);
  ExpectReadsBack(noise);

  QImage one(1, 1, QImage::Format_RGB32);
  one.fill(qRgb(1, 2, 3));
  ExpectReadsBack(one);

  // RGB rows longer than the 32 KiB a repeat may reach back, with a few stray colours.
  QImage wide(12000, 4, QImage::Format_RGB32);
  wide.fill(Qt::white);
  for (int i = 0; i < 400; ++i) wide.setPixel((i * 997) % 12000, i % 4, qRgb(i % 256, i / 2, 7));
  EXPECT_EQ(ColourType(EncodePng(wide)), 2);
  ExpectReadsBack(wide);
}

TEST(PngEncoder, AnImageWithAlphaIsWrittenWithoutIt) {
  QImage image(40, 20, QImage::Format_ARGB32);
  image.fill(qRgba(10, 200, 30, 255));
  image.setPixel(3, 4, qRgba(255, 0, 0, 255));
  ExpectReadsBack(image);
}

TEST(PngEncoder, AnEmptyImageGivesNothing) { EXPECT_TRUE(EncodePng(QImage()).isEmpty()); }

}  // namespace
}  // namespace quillet
