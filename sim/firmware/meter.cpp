#include "sim/firmware/meter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

namespace quillet::sim {
namespace {

// The thermistor logger's divider network and its sensor's Steinhart-Hart constants.
constexpr double kR1 = 5100.0;
constexpr double kR2 = 335671.0;
constexpr double kR3 = 10500.0;
constexpr double kSteinhartA = 0.001129241;
constexpr double kSteinhartB = 0.0002341077;
constexpr double kSteinhartC = 8.775468e-8;
constexpr double kKelvinOffset = 273.16;

constexpr int kTopCount = 255;             // a one-byte count of 255 reads as overload
constexpr int kTopCode = 3;                // range codes 0..3: scale 1, 1/2, 1/4, 1/8
constexpr int kDividerCount = 8;           // thermistor dividers 1, 2, 4, ..., 128
constexpr int kDefaultDivider = 16;        // room temperature mid-scale; steps near 41, 73 and 137 degC
constexpr double kTwoByteOffset = 2048.0;  // two-byte counts: offset 2048 ...
constexpr double kTwoByteFraction = 16.0;  // ... and four fraction bits

struct ModelRow {
  int code;
  CountForm form;
  double countsPerUnit;
  double offset;
};

// Models with a known meaning. Range-form models count `countsPerUnit` per unit at code 0;
// model 16's count also scales with the probe's factor (applied in LookUpModel).
constexpr ModelRow kModels[] = {
    {16, CountForm::RangeCode, 2.0, 0.0},   // current, probe factor F: 2F counts per ampere
    {17, CountForm::Divider, 0.0, 0.0},     // thermistor, degrees Celsius
    {18, CountForm::RangeCode, 4.0, 0.0},   // voltage
    {19, CountForm::RangeCode, 2.0, 0.0},   // voltage
    {20, CountForm::RangeCode, 20.0, 0.0},  // 0..100 mV input
    {21, CountForm::Offset, 1.0 / 3.2, 100.0}, {22, CountForm::RangeCode, 200.0, 0.0},  // 0..10 V input
    {23, CountForm::Offset, 1.0 / 0.32, 10.0}, {24, CountForm::RangeCode, 8.0, 0.0},    // current clamps
    {25, CountForm::RangeCode, 0.8, 0.0},      {26, CountForm::RangeCode, 4.0, 0.0},
    {27, CountForm::RangeCode, 0.4, 0.0},      {28, CountForm::RangeCode, 80.0, 0.0},  // voltage
    {29, CountForm::RangeCode, 80.0, 0.0},                                             // 4..20 mA input
    {30, CountForm::RangeCode, 8.0, 0.0},                                              // voltage
    {31, CountForm::RangeCode, 2.0, 0.0},                                              // current
    {32, CountForm::PlainLinear, 20.0, 0.0},  // custom input, like the 100 mV one but a plain byte
};

constexpr int kFirstTwoByteModel = 64;

std::uint16_t RoundClamp(double x, int lo, int hi) {
  if (std::isnan(x) || x <= lo) return static_cast<std::uint16_t>(lo);
  if (x >= hi) return static_cast<std::uint16_t>(hi);
  return static_cast<std::uint16_t>(std::min<double>(hi, std::floor(x + 0.5)));
}

bool IsPowerOfTwo(int x) { return x > 0 && (x & (x - 1)) == 0; }

int Log2(int powerOfTwo) {
  int j = 0;
  while ((1 << j) < powerOfTwo) ++j;
  return j;
}

}  // namespace

ModelInfo LookUpModel(int modelCode, double probeFactor) {
  for (const ModelRow& row : kModels) {
    if (row.code != modelCode) continue;
    ModelInfo info{row.form, row.countsPerUnit, row.offset};
    if (modelCode == 16) info.countsPerUnit *= probeFactor;
    return info;
  }
  if (modelCode >= kFirstTwoByteModel) return {CountForm::TwoByte, 1.0, 0.0};
  return {CountForm::RawCount, 1.0, 0.0};
}

double ThermistorCelsius(double count, double divider) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double x = divider * 3.008 / (count * 5.0 + 3.0);
  const double rp = 1.0 / (1.0 / kR1 + 1.0 / kR2);
  const double rx = (rp * x - kR1 * kR3 / 1e6) / ((kR3 + kR1) / 1e6 + x);
  if (!(rx > 0.0)) return nan;
  const double rt = 1.0 / (1.0 / rx - 1.0 / kR1);
  if (!(rt > 0.0) || !std::isfinite(rt)) return nan;
  const double l = std::log(rt);
  return 1.0 / (kSteinhartA + kSteinhartB * l + kSteinhartC * l * l * l) - kKelvinOffset;
}

Meter::Meter(int modelCode, int startRange, double probeFactor) : info_(LookUpModel(modelCode, probeFactor)) {
  switch (info_.form) {
    case CountForm::RangeCode:
      startRange_ = startRange < 0 ? 0 : startRange;
      if (startRange_ > kTopCode)
        throw std::invalid_argument("range code " + std::to_string(startRange) + " is not 0..3");
      break;
    case CountForm::Divider:
      startRange_ = startRange < 0 ? kDefaultDivider : startRange;
      if (!IsPowerOfTwo(startRange_) || startRange_ > (1 << (kDividerCount - 1)))
        throw std::invalid_argument("thermistor divider " + std::to_string(startRange) +
                                    " is not a power of two from 1 to 128");
      break;
    case CountForm::TwoByte:
      startRange_ = startRange < 0 ? 0 : startRange;
      break;
    default:
      startRange_ = startRange < 0 ? 1 : startRange;
      break;
  }
  if (startRange_ > 255)
    throw std::invalid_argument("range byte " + std::to_string(startRange) + " is not 0..255");

  if (info_.form == CountForm::Divider) {
    thermistorTables_.resize(kDividerCount);
    thermistorTops_.assign(kDividerCount, 0);
    for (int j = 0; j < kDividerCount; ++j) {
      bool working = true;
      for (int n = 0; n <= kTopCount; ++n) {
        const double t = working ? ThermistorCelsius(n, 1 << j) : std::nan("");
        // The temperature rises with the count until the network has no solution.
        if (std::isnan(t) || (n > 0 && t <= thermistorTables_[j][n - 1])) working = false;
        thermistorTables_[j][n] = working ? t : std::numeric_limits<double>::infinity();
        if (working) thermistorTops_[j] = n;
      }
    }
  }
}

bool Meter::CanStep(int range) const {
  if (info_.form == CountForm::RangeCode) return range < kTopCode;
  if (info_.form == CountForm::Divider) return range > 1;
  return false;
}

int Meter::NextRange(int range) const {
  if (info_.form == CountForm::RangeCode) return range + 1;
  if (info_.form == CountForm::Divider) return range / 2;
  return range;
}

Meter::Reading Meter::Measure(double value, int range) const {
  Reading r;
  switch (info_.form) {
    case CountForm::RangeCode: {
      const double count = value * info_.countsPerUnit / static_cast<double>(1 << range);
      r.raw = RoundClamp(count, 0, kTopCount);
      r.outgrown = r.raw >= kTopCount;
      return r;
    }
    case CountForm::Divider:
      return MeasureThermistor(value, range);
    case CountForm::PlainLinear:
      r.raw = RoundClamp(value * info_.countsPerUnit * range, 0, kTopCount);
      break;
    case CountForm::Offset:
      r.raw = RoundClamp((value + info_.offset) * info_.countsPerUnit * range, 0, kTopCount);
      break;
    case CountForm::RawCount:
      r.raw = RoundClamp(value, 0, kTopCount);
      break;
    case CountForm::TwoByte:
      r.raw = RoundClamp((value + kTwoByteOffset) * kTwoByteFraction, 0, 0xFFFF);
      return r;
  }
  r.outgrown = r.raw >= kTopCount;
  return r;
}

Meter::Reading Meter::MeasureThermistor(double celsius, int divider) const {
  const int j = Log2(divider);
  const auto& table = thermistorTables_.at(j);
  // Above the last count the divider can reach, the reading has outgrown the range.
  const int top = thermistorTops_.at(j);
  Reading r;
  if (std::isnan(celsius) || celsius <= table[0]) {
    r.raw = 0;
    return r;
  }
  if (celsius >= table[top]) {
    r.raw = static_cast<std::uint16_t>(top);
    r.outgrown = top == kTopCount || celsius > table[top];
    return r;
  }
  // Nearest count: table[n - 1] < celsius <= table[n].
  const int n =
      static_cast<int>(std::lower_bound(table.begin(), table.begin() + top + 1, celsius) - table.begin());
  const bool lower = celsius - table[n - 1] < table[n] - celsius;
  r.raw = static_cast<std::uint16_t>(lower ? n - 1 : n);
  r.outgrown = r.raw >= kTopCount;
  return r;
}

Meter::Reading Meter::MeasureWithSteps(double value, int& range, int& steps) const {
  Reading r = Measure(value, range);
  while (r.outgrown && CanStep(range)) {
    range = NextRange(range);
    ++steps;
    r = Measure(value, range);
  }
  return r;
}

}  // namespace quillet::sim
