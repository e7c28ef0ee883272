#pragma once
// ConvertRawToValue: the one road from a logger's raw count to an engineering value,
// for live readings and stored samples alike.
#include "core/number.h"
#include "core/scale_tables.h"

namespace quillet {

// What the conversion reads besides its three arguments.
struct ConversionInputs {
  Number RangeFactor;    // per model, or the probe row's factor for model 16
  Number UseFahrenheit;  // 1 degF, 0 degC, anything else: neither
  const ScaleTables* Scales = nullptr;  // none: every profile point counts as undefined
};

// N is the raw count (a real number in two-byte format), D the range input. Returns the
// value or the empty number. Arithmetic faults (a zero divisor, a logarithm of a value
// not above 0) raise a Fault; the result is never NaN or infinite.
Number ConvertRawToValue(double N, double ModelCode, double D, const ConversionInputs& in);

}  // namespace quillet
