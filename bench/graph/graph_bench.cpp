// Drawing a full record's graph: 16384 samples into a 1200 by 600 picture, through the
// painter as the window and the render command do, and through a surface that drops every
// call, which leaves the scale picking, the labels and the trace arithmetic.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <random>

#include "log1/hooks.h"
#include "hub/app.h"
#include "core/offline_platform.h"
#include "log1/startup.h"
#include "graph/draw_graph.h"
#include "ui/painter_surface.h"
#include "ui/png_encoder.h"

namespace quillet {
namespace {

constexpr int kSamples = 16384;
constexpr int kWidth = 1200, kHeight = 600;

class DiscardingSurface : public DrawSurface {
 public:
  void Clear() override {}
  double Width() const override { return kWidth * kUnitsPerPixel; }
  double Height() const override { return kHeight * kUnitsPerPixel; }
  void SetFont(const std::string&, double, bool) override {}
  void Line(double x1, double y1, double x2, double y2, int) override {
    sum += x1 + y1 + x2 + y2;
    ++lines;
  }
  void TextAt(double, double, const std::string& text) override { sum += static_cast<double>(text.size()); }
  double sum = 0;
  long lines = 0;
};

// A cellar thermometer read every minute for eleven days: a daily swing, a slow drift,
// sensor noise at the logger's resolution and a door left open for an hour.
struct Bench {
  SilentUser ui;
  FixedClock clock{46000.5};
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  Platform platform{ui, clock, timers, poster, transport, FilePlaces{}};
  App app{platform, Log1Hooks()};

  Bench() {
    State& s = app.s;
    s.settings.LanguageIndex = 1;
    s.lang.LanguageTable[1][57] = "Drawing...";
    s.lang.LanguageTable[1][58] = "Recorded: ";
    s.fonts.FontName1 = s.fonts.FontName2 = "Arial";
    const int sizes[] = {10, 8, 14, 9, 12, 8};
    for (int i = 1; i <= 6; ++i) s.fonts.FontSizes[i] = sizes[i - 1];
    InstallUsFormats(app);

    SampleRecord& r = s.record;
    r.RecordTitle = "Cellar, north wall";
    r.RecordUnitText = "degC";
    r.LoggerNumber = 4711;
    r.RecordModelCode = 2;
    r.RecordFromFile = 1;
    std::mt19937 rng(11);
    std::normal_distribution<double> noise(0, 0.08);
    const double start = 46000.25, minute = 1.0 / 1440;
    for (long i = 1; i <= kSamples; ++i) {
      const double t = start + (i - 1) * minute;
      double v = 12 + 2.5 * std::sin(2 * M_PI * (t - start)) + 0.15 * (t - start) + noise(rng);
      if (i > 6000 && i <= 6060) v += 4 * (1 - std::exp(-(i - 6000) / 12.0));
      v = std::round(v * 100) / 100;
      r.FullTimes[i] = r.ShownTimes[i] = t;
      r.FullValues[i] = r.ShownValues[i] = v;
    }
    r.FullSampleCount = r.RecordSampleCount = kSamples;
  }
};

void DrawInto(App& app, QImage& image) {
  QPainter painter(&image);
  PainterSurface surface(painter, image.size());
  DrawGraph(app, surface);
}

void BM_DrawGraphIntoImage(benchmark::State& state) {
  Bench b;
  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  for (auto _ : state) {
    DrawInto(b.app, image);
    benchmark::DoNotOptimize(image.constBits());
  }
  state.counters["samples"] = kSamples;
}
BENCHMARK(BM_DrawGraphIntoImage)->Unit(benchmark::kMillisecond);

void BM_DrawGraphDiscardingCalls(benchmark::State& state) {
  Bench b;
  DiscardingSurface surface;
  for (auto _ : state) {
    DrawGraph(b.app, surface);
    benchmark::DoNotOptimize(surface.sum);
  }
  state.counters["lines"] = static_cast<double>(surface.lines) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_DrawGraphDiscardingCalls)->Unit(benchmark::kMillisecond);

void BM_EncodeGraphPng(benchmark::State& state) {
  Bench b;
  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  DrawInto(b.app, image);
  qint64 bytes = 0;
  for (auto _ : state) {
    const QByteArray png = EncodePng(image);
    bytes = png.size();
    benchmark::DoNotOptimize(png.constData());
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_EncodeGraphPng)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillet

// Text on an image needs a GUI application, and that needs a platform: offscreen unless
// the caller chose one.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  int qtArgc = 1;
  QGuiApplication app(qtArgc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
