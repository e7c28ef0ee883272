#pragma once
// The logger's front end: it turns what the probe sees (engineering units) into the count
// that goes to memory, and knows which range byte that count is read against. When a
// reading outgrows the present range the logger steps to the next range, which halves the
// count of the same reading; it never steps back.
#include <array>
#include <cstdint>
#include <vector>

namespace quillet::sim {

// How a model's count relates to the engineering value, with D the range byte's divisor.
enum class CountForm {
  RangeCode,    // count = value * countsPerUnit * 2^-code; range byte = code 0..3, steps raise it
  Divider,      // thermistor divider; range byte = the divider D, steps halve it
  PlainLinear,  // count = value * countsPerUnit * D, D a fixed plain byte
  Offset,       // count = (value + offset) * countsPerUnit * D, D a fixed plain byte
  RawCount,     // a model whose meaning the logger does not know: the value is the count
  TwoByte,      // two-byte samples: degrees Celsius with four fraction bits, offset 2048
};

struct ModelInfo {
  CountForm form = CountForm::RawCount;
  double countsPerUnit = 1.0;
  double offset = 0.0;
};

// The form of a model code 0..127.
ModelInfo LookUpModel(int modelCode, double probeFactor);

class Meter {
 public:
  // Throws std::invalid_argument for a start range the model cannot have.
  Meter(int modelCode, int startRange, double probeFactor);

  struct Reading {
    std::uint16_t raw = 0;  // the byte (one-byte models) or the 16-bit word (two-byte models)
    bool outgrown = false;  // the reading does not fit this range: raw holds the range's top
  };

  int StartRange() const { return startRange_; }
  bool CanStep(int range) const;
  int NextRange(int range) const;
  Reading Measure(double value, int range) const;
  // The range the logger ends up in for `value` starting from `range`, and the reading there.
  Reading MeasureWithSteps(double value, int& range, int& steps) const;

 private:
  Reading MeasureThermistor(double celsius, int divider) const;

  ModelInfo info_;
  int startRange_ = 0;
  // Temperature of each count 0..255 per divider 2^j, j = 0..7; counts past the divider's
  // working end are +infinity.
  std::vector<std::array<double, 256>> thermistorTables_;
  std::vector<int> thermistorTops_;  // the last count each divider can reach
};

// Temperature in degrees Celsius that a thermistor logger's count means at divider D, or
// NaN where the divider network has no solution.
double ThermistorCelsius(double count, double divider);

}  // namespace quillet::sim
