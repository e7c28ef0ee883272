#include "measure/record_decoding.h"

#include <cmath>
#include <vector>

#include "hub/app.h"
#include "core/fault.h"
#include "core/int16.h"
#include "measure/conversion.h"

namespace quillet {

namespace {

// The code of the character at a 1-based position; past the end the text is empty, and
// the code of an empty text is a run-time fault.
// The nearest whole number, ties to even. Adding and taking away 2^52 rounds in the
// default rounding mode, which is to nearest with ties to even, without a library call.
inline double RoundHalfEven(double x) {
  constexpr double kTwo52 = 4503599627370496.0;
  if (x >= 0 && x < kTwo52) return (x + kTwo52) - kTwo52;
  return std::nearbyint(x);
}

// The whole part of a number that is not negative, as Int() gives it.
inline double WholePart(double x) {
  if (x >= 0 && x < 9.0e15) return static_cast<double>(static_cast<long long>(x));
  return Int(x);
}

inline double CodeAt(const std::string& text, double position, double sample) {
  const double p = RoundHalfEven(position);
  if (!(p >= 1) || p > static_cast<double>(text.size())) {
    throw Fault(kFaultIllegalCall, "sample " + std::to_string(static_cast<long>(sample)) + " lies at position " +
                                       std::to_string(static_cast<long>(p)) + ", past the end of the block");
  }
  return static_cast<unsigned char>(text[static_cast<std::size_t>(p) - 1]);
}

// 2 to a power. The exponents here are whole numbers, where ldexp is exact and much
// cheaper than pow; pow stays for anything else.
double PowerOfTwo(double e) {
  if (e == std::floor(e) && e > -1000 && e < 1000) return std::ldexp(1.0, static_cast<int>(e));
  return std::pow(2.0, e);
}

}  // namespace

void DecodeRecord(App& app) {
  State& st = app.s;
  SampleRecord& r = st.record;
  const double M = r.RecordMemorySize;
  const double H = r.RecordHalfFills;
  const ConversionInputs inputs{st.logger.RangeFactor, st.settings.UseFahrenheit, &st.scales};

  r.RecordSampleCount = r.FullSampleCount;
  double t = r.RecordLastTime;
  double f = r.RecordFillPosition;
  double h = H;
  int k = 0;
  double s = r.RecordStoredSamples;
  const double thinning = PowerOfTwo(H - 1);
  // In one-byte records a value depends only on the byte and the range step, so each
  // pair is converted once. The conversion is a pure function of them (and of the
  // inputs fixed for this call), so the result, fault or value, is the same.
  const bool oneByte = st.logger.RecordReplyFormat == 1;
  constexpr int kSteps = 5;
  std::vector<Number> converted(oneByte ? 256 * kSteps : 0);
  std::vector<bool> known(converted.size(), false);
  // D follows k, and the filling's step follows h: both change seldom along the walk.
  int dK = -1;
  double D = 0, stepB = -1, step = 0;
  if (s < 1) {
    st.graph.GraphZoomed = 0;
    return;
  }
  for (;;) {
    const double A = f + (M / 2) * h;
    while (r.RecordRangeMarks[k + 1] > A) ++k;
    if (k != dK) {  // k only grows, a few times at most
      dK = k;
      D = PowerOfTwo(k) * r.RecordScaleByte;
    }
    double p = s;
    if (H > 1 && s > 1) {
      const double q = Divide(thinning * (s - 1) - 1, M - 1);
      p = (q - WholePart(q)) * (M - 1) + 2;
    }
    double raw = 0;
    if (st.logger.RecordReplyFormat == 1) {
      raw = CodeAt(r.BlockData, p, s);
    } else if (st.logger.RecordReplyFormat == 2) {
      const double hi = CodeAt(r.BlockData, 2 * p, s);
      const double lo = CodeAt(r.BlockData, 2 * p - 1, s);
      raw = hi * 16 + lo / 16 - 2048;
    }
    st.logger.RawValue = raw;
    Number value;
    if (oneByte && k < kSteps) {
      const std::size_t key = static_cast<std::size_t>(raw) + 256 * static_cast<std::size_t>(k);
      if (!known[key]) {
        converted[key] = ConvertRawToValue(raw, st.logger.ModelCode, D, inputs);
        known[key] = true;
      }
      value = converted[key];
    } else {
      value = ConvertRawToValue(raw, st.logger.ModelCode, D, inputs);
    }
    r.FullValues.at(s) = value;
    r.ShownValues.at(s) = value;
    r.FullTimes.at(s) = t;
    r.ShownTimes.at(s) = t;
    t -= r.RecordInterval;
    s -= 1;
    if (s == 0) {
      st.graph.GraphZoomed = 0;
      return;
    }
    if (f == 0) {
      h -= 1;
      if (h < 0) h = 0;
    }
    const double a = H == 0 ? 1 : H;
    const double b = h == 0 ? 1 : h;
    if (b != stepB) {
      stepB = b;
      step = PowerOfTwo(a - b);
    }
    f = f > 0 ? f - step : M / 2 - step;
    if (f < 0) f = 0;
  }
}

void ShowModelMenus(App& app) {
  Log1View& w = app.v.log1;
  const double code = app.s.logger.ModelCode;
  auto is = [code](std::initializer_list<int> codes) {
    for (int c : codes) {
      if (code == c) return true;
    }
    return false;
  };
  if (is({16})) {
    w.mnuFunc.visible = true;
    w.mnudegF.visible = w.mnudegC.visible = false;
    w.mnuScale.visible = false;
  } else if (is({17, 64, 65, 66})) {
    w.mnuFunc.visible = true;
    w.func01.visible = w.func02.visible = w.func03.visible = false;
    w.mnudegF.visible = w.mnudegC.visible = true;
    w.mnuScale.visible = false;
  } else if (is({18, 19, 24, 25, 26, 27, 28, 30, 31})) {
    w.mnuFunc.visible = false;
    w.mnuScale.visible = false;
  } else if (is({20, 21, 22, 23, 29, 32})) {
    w.mnuFunc.visible = false;
    w.mnuScale.visible = true;
  }
}

}  // namespace quillet
