#include "measure/model_table.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>

namespace quillet {
namespace {

TEST(ModelTable, EveryModelHasItsLabelUnitAndRangeFactor) {
  using S = UnitSource;
  const struct {
    int code;
    std::string label;
    UnitSource source;
    std::string unit;
    std::optional<double> factor;
  } rows[] = {
      {16, "", S::Probe, "", {}},
      {17, "Temperature", S::Temperature, "", {}},
      {18, "Q21", S::Fixed, "V rms", 2},
      {19, "Q24", S::Fixed, "V rms ", 1},
      {20, "Q30", S::ByModel, "", {}},
      {21, "Q33", S::ByModel, "", {}},
      {22, "Q36", S::ByModel, "", {}},
      {23, "Q39", S::ByModel, "", {}},
      {24, "QAR-7  250A", S::Fixed, "A rms", 4},
      {25, "QAR-7  2500A", S::Fixed, "A rms", 0.4},
      {26, "QAR-9  500A", S::Fixed, "A rms", 2},
      {27, "QAR-9  5000A", S::Fixed, "A rms", 0.2},
      {28, "Q15", S::Fixed, "V rms", {}},
      {29, "Q27", S::ByModel, "", {}},
      {30, "Q18", S::Fixed, "V rms", 2},
      {31, "QC50", S::Fixed, "A rms", 1},
      {32, "Custom", S::ByModel, "", {}},
      {64, "J Thermocouple", S::Temperature, "", {}},
      {65, "K Thermocouple", S::Temperature, "", {}},
      {66, "T Thermocouple", S::Temperature, "", {}},
  };
  for (const auto& r : rows) {
    const ModelInfo* m = FindModel(r.code);
    ASSERT_NE(m, nullptr) << r.code;
    EXPECT_EQ(ModelLabel(*m, 1), r.label) << r.code;
    EXPECT_EQ(m->unitSource, r.source) << r.code;
    EXPECT_EQ(std::string(m->unit), r.unit) << r.code;
    EXPECT_EQ(m->rangeFactor, r.factor) << r.code;
  }
  for (double code : {0.0, 1.0, 15.0, 33.0, 63.0, 67.0, 100.0, 16.5})
    EXPECT_EQ(FindModel(code), nullptr) << code;
  // Edition 2 renames model 31 only.
  EXPECT_EQ(ModelLabel(*FindModel(31), 2) + ModelLabel(*FindModel(31), 3) + ModelLabel(*FindModel(30), 2),
            "QC53QC50Q18");
}

TEST(RangeForm, LowTwoBitsGiveOneHalfQuarterAndEighthForTheTwoListsOfModels) {
  for (auto [byte, form] : {std::pair{0, 1.0},
                            {1, 0.5},
                            {2, 0.25},
                            {3, 0.125},
                            {4, 1.0},
                            {130, 0.25},
                            {255, 0.125},
                            {-1, 0.125}})  // the modulo rounds down: a negative byte stays in 0..3
    EXPECT_EQ(RangeForm(byte), form) << byte;
  const std::set<int> live{16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31, 32};
  for (int code = 0; code <= 127; ++code) {
    EXPECT_EQ(LiveRangeFormModel(code), live.count(code) == 1) << code;
    EXPECT_EQ(HeaderRangeFormModel(code), live.count(code) == 1 && code != 32) << code;
  }
  EXPECT_FALSE(LiveRangeFormModel(16.5));
}

TEST(UnitRows, InstallOverwritesFixedRowsKeepsTheProfileUnitsAndNamesTheTemperatureUnits) {
  UnitTable units;
  for (int code : {20, 21, 22, 23, 29, 30, 31, 32}) units[code] = "file " + std::to_string(code);
  InstallUnitRows(units);
  for (int code : {16, 24, 25, 26, 27, 31}) EXPECT_EQ(units[code], "A rms") << code;
  for (int code : {18, 28, 30}) EXPECT_EQ(units[code], "V rms") << code;
  EXPECT_EQ(units[19], "V rms ");
  for (int code : {20, 21, 22, 23, 29, 32}) EXPECT_EQ(units[code], "file " + std::to_string(code)) << code;
  EXPECT_EQ(units[17], "");
  TempUnitTable names;
  InstallTempUnitNames(names);
  EXPECT_EQ(names[0] + "," + names[1] + "," + names[2], "degC,degF,");
}

}  // namespace
}  // namespace quillet
