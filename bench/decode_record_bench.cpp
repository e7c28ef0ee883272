// Unfolding a full record: 16384 samples of a thinned memory, through the conversion.
#include <benchmark/benchmark.h>

#include <random>

#include "log1/hooks.h"
#include "hub/app.h"
#include "core/offline_platform.h"
#include "measure/record_decoding.h"

namespace quillet {
namespace {

struct Bench {
  SilentUser ui;
  FixedClock clock{46000.5};
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  Platform platform{ui, clock, timers, poster, transport, FilePlaces{}};
  App app{platform, Log1Hooks()};

  // A one-byte logger whose 16384-slot memory has been halved five times, so every
  // sample's slot comes from the thinning formula; the value stands for the model.
  Bench(double model, double format) {
    State& s = app.s;
    SampleRecord& r = s.record;
    s.logger.ModelCode = model;
    s.logger.RecordReplyFormat = format;
    s.logger.RangeFactor = 1;
    r.RecordMemorySize = 16384 / format;
    r.RecordHalfFills = 5;
    r.RecordFillPosition = r.RecordMemorySize.Value() / 2 - 1;
    r.RecordStoredSamples = r.RecordFillPosition.Value() + r.RecordMemorySize.Value() / 2 + 1;
    r.FullSampleCount = r.RecordStoredSamples;
    r.RecordLastTime = 46000.5;
    r.RecordInterval = 16.0 / 98304;
    r.RecordScaleByte = 1;
    for (int i = 1; i <= 5; ++i) r.RecordRangeMarks[i] = 0;
    r.RecordRangeMarks[1] = 9000;  // one range step in the middle of the record
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> byte(10, 50);
    r.BlockData.clear();
    for (int i = 0; i < 16384; ++i) r.BlockData.push_back(static_cast<char>(byte(rng)));
    r.BlockData += "  ";
  }
};

void BM_DecodeRecord(benchmark::State& state, double model, double format) {
  Bench b(model, format);
  for (auto _ : state) {
    DecodeRecord(b.app);
    benchmark::DoNotOptimize(b.app.s.record.FullValues[1]);
  }
  state.counters["samples"] = b.app.s.record.RecordSampleCount.Value();
}
BENCHMARK_CAPTURE(BM_DecodeRecord, temperature_17, 17, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_DecodeRecord, range_form_18, 18, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_DecodeRecord, two_byte_64, 64, 2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillet
