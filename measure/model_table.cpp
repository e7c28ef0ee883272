#include "measure/model_table.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/fault.h"

namespace quillet {

namespace {

using enum UnitSource;

// Label, unit and range factor as the header decoding installs them. Model 16 takes all
// three from the chosen probe row, so its row only names the source.
const std::array<ModelInfo, 20> kModels{{
    {16, "", Probe, "", std::nullopt},
    {17, "Temperature", Temperature, "", std::nullopt},
    {18, "Q21", Fixed, "V rms", 2.0},
    {19, "Q24", Fixed, "V rms ", 1.0},  // the trailing blank tells 19 from 18 in a record file
    {20, "Q30", ByModel, "", std::nullopt},
    {21, "Q33", ByModel, "", std::nullopt},
    {22, "Q36", ByModel, "", std::nullopt},
    {23, "Q39", ByModel, "", std::nullopt},
    {24, "QAR-7  250A", Fixed, "A rms", 4.0},
    {25, "QAR-7  2500A", Fixed, "A rms", 0.4},
    {26, "QAR-9  500A", Fixed, "A rms", 2.0},
    {27, "QAR-9  5000A", Fixed, "A rms", 0.2},
    {28, "Q15", Fixed, "V rms", std::nullopt},
    {29, "Q27", ByModel, "", std::nullopt},
    {30, "Q18", Fixed, "V rms", 2.0},
    {31, "QC50", Fixed, "A rms", 1.0},
    {32, "Custom", ByModel, "", std::nullopt},
    {64, "J Thermocouple", Temperature, "", std::nullopt},
    {65, "K Thermocouple", Temperature, "", std::nullopt},
    {66, "T Thermocouple", Temperature, "", std::nullopt},
}};

// Models whose range byte is turned into the range form. The live reading and the header
// decoding each have their own list, and they differ on purpose: a model 32 logger sends
// its live byte as a range code but its stored samples with the plain byte. Keep both.
constexpr std::array<int, 14> kLiveRangeFormModels{16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31, 32};
constexpr std::array<int, 13> kHeaderRangeFormModels{16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31};

template <std::size_t K>
bool InList(const std::array<int, K>& list, double code) {
  return std::any_of(list.begin(), list.end(), [code](int c) { return c == code; });
}

}  // namespace

const ModelInfo* FindModel(double code) {
  for (const ModelInfo& m : kModels) {
    if (m.code == code) return &m;
  }
  return nullptr;
}

std::string ModelLabel(const ModelInfo& m, int editionFlag) {
  if (m.code == 31 && editionFlag == 2) return "QC53";
  return m.label;
}

double RangeForm(double d) {
  Checked(d);
  const double code = d - 4 * std::floor(d / 4);
  return std::exp2(-code);
}

bool LiveRangeFormModel(double code) { return InList(kLiveRangeFormModels, code); }
bool HeaderRangeFormModel(double code) { return InList(kHeaderRangeFormModels, code); }

void InstallUnitRows(UnitTable& unitByModel) {
  unitByModel[16] = "A rms";
  unitByModel[18] = "V rms";
  unitByModel[19] = "V rms ";
  for (int code = 24; code <= 27; ++code) unitByModel[code] = "A rms";
  unitByModel[28] = "V rms";
  unitByModel[30] = "V rms";
  unitByModel[31] = "A rms";
}

void InstallTempUnitNames(TempUnitTable& names) {
  names[0] = "degC";
  names[1] = "degF";
}

}  // namespace quillet
