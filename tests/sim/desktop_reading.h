#pragma once
// How the desktop program reads a logger's header and walks its memory, restated here in
// its own floating-point arithmetic so that the emulator's memory can be checked against
// the reader it must satisfy, without sharing any code with either.
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace quillet::sim::testing {

struct DesktopHeader {
  int bytesPerSample = 1;
  double memorySize = 0;  // M, slots
  int serial = 0;
  std::array<double, 5> marks{};  // newest first; 0 where none; entry 5 always 0
  double elapsedDays = 0;
  double totalSamples = 0;
  double halfFills = 0;
  double fillPosition = 0;
  double storedSamples = 0;
  double blockBytes = 0;
  int status = 0;
  int model = 0;
  int rangeByte = 0;
};

inline DesktopHeader ReadHeaderAsDesktop(const std::vector<std::uint8_t>& reply) {
  auto at = [&reply](int position) { return static_cast<double>(reply.at(position - 1)); };
  DesktopHeader d;
  double m = at(1);
  if (m > 5) m = 0;
  d.bytesPerSample = static_cast<int>(at(17) / 64) + 1;
  d.memorySize = std::pow(2.0, m) * 2048 / d.bytesPerSample;
  d.serial = static_cast<int>(at(2) + 256 * at(3));
  double c0, c1, c2, c3, w0, w1, w2;
  if (d.bytesPerSample == 1) {
    for (int i = 0; i < 4; ++i) {
      const double v = at(4 + 2 * i) + 256 * at(5 + 2 * i);
      d.marks[i] = v == 65535 ? 0 : v;
    }
    c0 = at(12), c1 = at(13), c2 = at(14), c3 = at(15);
    d.status = static_cast<int>(at(16));
    w0 = at(18), w1 = at(19), w2 = 0;
    d.rangeByte = static_cast<int>(at(22));
  } else {
    c0 = at(11), c1 = at(12), c2 = at(13), c3 = at(14);
    d.status = static_cast<int>(at(15));
    w0 = at(18), w1 = at(19), w2 = at(20);
  }
  d.model = static_cast<int>(at(17));
  c3 = c3 - 16 * std::floor(c3 / 16);
  d.elapsedDays = c0 / 98304 + c1 / 384 + c2 * 2 / 3 + c3 * 512 / 3;
  d.totalSamples = d.elapsedDays == 0 ? 0 : w0 + 256 * w1 + 65536 * w2;
  d.halfFills = std::floor((w1 + 256 * w2) / (d.memorySize / 512));
  if (d.halfFills > 100 || d.elapsedDays == 0) d.halfFills = 0;
  d.fillPosition = d.totalSamples - d.halfFills * d.memorySize / 2;
  d.storedSamples = d.halfFills == 0 ? d.fillPosition + 1 : d.fillPosition + d.memorySize / 2 + 1;
  d.blockBytes = d.bytesPerSample * d.storedSamples;
  if (d.halfFills > 1) d.blockBytes = d.bytesPerSample * d.memorySize;
  return d;
}

// One step of the walk from the newest sample (s = StoredSamples) to the oldest (s = 1).
struct DesktopSample {
  int s = 0;
  double count = 0;  // the logger's running count the desktop assigns to the sample
  int position = 0;  // 1-based slot it reads the sample from
  int rangeSteps = 0;
};

inline std::vector<DesktopSample> WalkAsDesktop(const DesktopHeader& d) {
  std::vector<DesktopSample> walk;
  const double M = d.memorySize;
  const double H = d.halfFills;
  double f = d.fillPosition;
  double h = H;
  int k = 0;
  for (double s = d.storedSamples; s >= 1; --s) {
    const double a = f + (M / 2) * h;
    while (k < 5 && d.marks[k] > a) ++k;
    double p = s;
    if (H > 1 && s > 1) {
      const double q = (std::pow(2.0, H - 1) * (s - 1) - 1) / (M - 1);
      p = (q - std::floor(q)) * (M - 1) + 2;
    }
    walk.push_back({static_cast<int>(s), a, static_cast<int>(std::nearbyint(p)), k});
    if (f == 0) {
      h = h - 1;
      if (h < 0) h = 0;
    }
    const double step = std::pow(2.0, (H == 0 ? 1 : H) - (h == 0 ? 1 : h));
    f = f > 0 ? f - step : M / 2 - step;
    if (f < 0) f = 0;
  }
  return walk;
}

}  // namespace quillet::sim::testing
