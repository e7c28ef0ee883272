#include "measure/conversion.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "core/cell.h"
#include "core/fault.h"

namespace quillet {

namespace {

// Thermistor divider of model 17: series resistor, its parallel leg, and the reference leg.
constexpr double kR1 = 5100;
constexpr double kR2 = 335671;
constexpr double kR3 = 10500;
// Steinhart-Hart constants of the thermistor, and the Kelvin offset its calibration used.
constexpr double kSteinA = 0.001129241;
constexpr double kSteinB = 0.0002341077;
constexpr double kSteinC = 8.775468e-8;
constexpr double kKelvinOffset = 273.16;  // not 273.15: the loggers were calibrated with this

// A profile model reads one pair of the user's scale columns. r = N / (divisor * D * 2),
// u = r / uDivisor, and u picks the table point between the index bounds.
struct ProfileSpec {
  double divisor;
  double uDivisor;
  int lower;
  int upper;
  ScaleColumn ScaleTables::*table;
  ScaleColumn ScaleTables::*slope;
};

constexpr ProfileSpec kInput100mv{
    10, 10, 0, 10, &ScaleTables::ScaleTable100mv, &ScaleTables::ScaleSlope100mv};
constexpr ProfileSpec kInput10v{100, 1, 0, 10, &ScaleTables::ScaleTable10v, &ScaleTables::ScaleSlope10v};
constexpr ProfileSpec kInput420{40, 1, 4, 19, &ScaleTables::ScaleTable420, &ScaleTables::ScaleSlope420};
constexpr ProfileSpec kCustom{10, 10, 0, 10, &ScaleTables::ScaleTable, &ScaleTables::ScaleSlope};

// Model codes are whole numbers; anything else names no model.
std::optional<int> WholeCode(double code) {
  if (!(code >= -1e9 && code <= 1e9) || code != std::floor(code)) return std::nullopt;
  return static_cast<int>(code);
}

// A defined table point: a number, or a text that reads as one. Any other text in a
// place where arithmetic needs a number is a type mismatch.
double PointValue(const Cell& c) {
  if (c.IsNumber()) return c.Number();
  std::string_view t = c.Text();
  while (!t.empty() && t.front() == ' ') t.remove_prefix(1);
  while (!t.empty() && t.back() == ' ') t.remove_suffix(1);
  if (!t.empty() && t.front() == '+') t.remove_prefix(1);
  double v = 0;
  const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
  if (t.empty() || ec != std::errc() || end != t.data() + t.size() || !std::isfinite(v)) {
    throw Fault(kFaultTypeMismatch, "scale table point \"" + c.Text() + "\" is not a number");
  }
  return v;
}

Number ProfileValue(double N, double D, const ProfileSpec& p, const ScaleTables* scales) {
  const double r = Divide(N, p.divisor * (D * 2));
  const double u = r / p.uDivisor;
  double i = std::floor(u);
  if (i < p.lower) i = p.lower;
  if (i > p.upper) i = p.upper;
  // Outside the bounds f leaves 0..1, so the end segments extrapolate instead of saturating.
  const double f = u - i;
  if (scales == nullptr) return Number::Empty();
  const Cell& table = (scales->*p.table)[static_cast<long>(i)];
  const Cell& slope = (scales->*p.slope)[static_cast<long>(i)];
  if (table.EqualsEmptyText() || slope.EqualsEmptyText()) return Number::Empty();
  return Checked(PointValue(slope) * f + PointValue(table));
}

// No guard on the divider: a reading beyond the thermistor's range makes Rx or Rt non-
// positive, and the logarithm then faults.
double ThermistorCelsius(double X) {
  const double Rp = 1 / (1 / kR1 + 1 / kR2);
  const double Rx = Divide(Rp * X - kR1 * kR3 / 1000000, (kR3 + kR1) / 1000000 + X);
  const double Rt = Divide(1, Divide(1, Rx) - 1 / kR1);
  const double L = CheckedLog(Rt);
  return Divide(1, kSteinA + kSteinB * L + kSteinC * (L * L * L)) - kKelvinOffset;
}

}  // namespace

Number ConvertRawToValue(double N, double ModelCode, double D, const ConversionInputs& in) {
  if (D == 0) return Number::Empty();
  // Only the thermistor uses X, but it is formed for every model: N * 5 + 3 = 0 faults
  // whatever the model.
  const double X = Divide(D * 3.008, N * 5 + 3);

  const std::optional<int> code = WholeCode(ModelCode);
  if (!code) return Number::Empty();
  const double useFahrenheit = in.UseFahrenheit.Value();  // empty counts as 0, i.e. degC

  switch (*code) {
    case 16:
    case 24:
    case 25:
    case 26:
    case 27:
    case 31:
      return Divide(N, in.RangeFactor.Value() * (D * 2));
    // 18, 19 and 30 carry a RangeFactor too, but convert with their own constants.
    case 18:
      return Divide(N, 2 * (D * 2));
    case 19:
      return Divide(N, 1 * (D * 2));
    case 28:
      return Divide(N, 40 * (D * 2));
    case 30:
      return Divide(N, 4 * (D * 2));
    case 20:
      return ProfileValue(N, D, kInput100mv, in.Scales);
    case 22:
      return ProfileValue(N, D, kInput10v, in.Scales);
    case 29:
      return ProfileValue(N, D, kInput420, in.Scales);
    case 32:
      return ProfileValue(N, D, kCustom, in.Scales);
    case 17: {
      const double T = ThermistorCelsius(X);
      if (useFahrenheit == 1) return Checked(T * (9.0 / 5.0) + 32);
      if (useFahrenheit == 0) return T;
      return Number::Empty();
    }
    // 21 and 23 have no table here: their value is formed (and may fault) but not given.
    case 21:
      Checked(Divide(3.2 * N, D) - 100);
      return Number::Empty();
    case 23:
      Checked(Divide(0.32 * N, D) - 10);
      return Number::Empty();
    // Thermocouples report degrees Celsius already; any unit but degF leaves them so.
    case 64:
    case 65:
    case 66:
      if (useFahrenheit == 1) return Checked(N * 9 / 5 + 32);
      return N;
    default:
      return Number::Empty();
  }
}

}  // namespace quillet
