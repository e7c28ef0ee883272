#include "measure/model_table.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>

namespace quillet {
namespace {

struct Row {
  int code;
  std::string label;
  UnitSource source;
  std::string unit;
  std::optional<double> factor;
};

TEST(ModelTable, EveryModelHasItsLabelUnitAndRangeFactor) {
  const Row rows[] = {
      {16, "", UnitSource::Probe, "", std::nullopt},
      {17, "Temperature", UnitSource::Temperature, "", std::nullopt},
      {18, "Q21", UnitSource::Fixed, "V rms", 2},
      {19, "Q24", UnitSource::Fixed, "V rms ", 1},
      {20, "Q30", UnitSource::ByModel, "", std::nullopt},
      {21, "Q33", UnitSource::ByModel, "", std::nullopt},
      {22, "Q36", UnitSource::ByModel, "", std::nullopt},
      {23, "Q39", UnitSource::ByModel, "", std::nullopt},
      {24, "QAR-7  250A", UnitSource::Fixed, "A rms", 4},
      {25, "QAR-7  2500A", UnitSource::Fixed, "A rms", 0.4},
      {26, "QAR-9  500A", UnitSource::Fixed, "A rms", 2},
      {27, "QAR-9  5000A", UnitSource::Fixed, "A rms", 0.2},
      {28, "Q15", UnitSource::Fixed, "V rms", std::nullopt},
      {29, "Q27", UnitSource::ByModel, "", std::nullopt},
      {30, "Q18", UnitSource::Fixed, "V rms", 2},
      {31, "QC50", UnitSource::Fixed, "A rms", 1},
      {32, "Custom", UnitSource::ByModel, "", std::nullopt},
      {64, "J Thermocouple", UnitSource::Temperature, "", std::nullopt},
      {65, "K Thermocouple", UnitSource::Temperature, "", std::nullopt},
      {66, "T Thermocouple", UnitSource::Temperature, "", std::nullopt},
  };
  for (const Row& r : rows) {
    const ModelInfo* m = FindModel(r.code);
    ASSERT_NE(m, nullptr) << r.code;
    EXPECT_EQ(m->code, r.code);
    EXPECT_EQ(ModelLabel(*m, 1), r.label) << r.code;
    EXPECT_EQ(m->unitSource, r.source) << r.code;
    EXPECT_EQ(std::string(m->unit), r.unit) << r.code;
    EXPECT_EQ(m->rangeFactor, r.factor) << r.code;
  }
}

TEST(ModelTable, CodesWithoutARowAreNotFound) {
  for (double code : {0.0, 1.0, 15.0, 33.0, 63.0, 67.0, 100.0, 16.5})
    EXPECT_EQ(FindModel(code), nullptr) << code;
}

TEST(ModelTable, EditionTwoRenamesModelThirtyOneOnly) {
  EXPECT_EQ(ModelLabel(*FindModel(31), 1), "QC50");
  EXPECT_EQ(ModelLabel(*FindModel(31), 2), "QC53");
  EXPECT_EQ(ModelLabel(*FindModel(31), 3), "QC50");
  EXPECT_EQ(ModelLabel(*FindModel(30), 2), "Q18");
}

TEST(RangeForm, LowTwoBitsGiveOneHalfQuarterAndEighth) {
  EXPECT_EQ(RangeForm(0), 1);
  EXPECT_EQ(RangeForm(1), 0.5);
  EXPECT_EQ(RangeForm(2), 0.25);
  EXPECT_EQ(RangeForm(3), 0.125);
  EXPECT_EQ(RangeForm(4), 1);
  EXPECT_EQ(RangeForm(130), 0.25);
  EXPECT_EQ(RangeForm(255), 0.125);
  // The modulo rounds the quotient down, so a negative byte stays in 0..3.
  EXPECT_EQ(RangeForm(-1), 0.125);
}

TEST(RangeForm, LiveListHasModelThirtyTwoAndHeaderListDoesNot) {
  const std::set<int> live{16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31, 32};
  for (int code = 0; code <= 127; ++code) {
    EXPECT_EQ(LiveRangeFormModel(code), live.count(code) == 1) << code;
    EXPECT_EQ(HeaderRangeFormModel(code), live.count(code) == 1 && code != 32) << code;
  }
  EXPECT_FALSE(LiveRangeFormModel(16.5));
}

TEST(UnitRows, InstallOverwritesFixedRowsAndKeepsTheProfileUnitsFromTheSettings) {
  UnitTable units;
  for (int code : {20, 21, 22, 23, 29, 30, 31, 32}) units[code] = "from file " + std::to_string(code);
  InstallUnitRows(units);
  EXPECT_EQ(units[16], "A rms");
  EXPECT_EQ(units[18], "V rms");
  EXPECT_EQ(units[19], "V rms ");
  for (int code : {24, 25, 26, 27, 31}) EXPECT_EQ(units[code], "A rms") << code;
  for (int code : {28, 30}) EXPECT_EQ(units[code], "V rms") << code;
  for (int code : {20, 21, 22, 23, 29, 32})
    EXPECT_EQ(units[code], "from file " + std::to_string(code)) << code;
  EXPECT_EQ(units[17], "");
}

TEST(UnitRows, TemperatureNamesFollowUseFahrenheit) {
  TempUnitTable names;
  InstallTempUnitNames(names);
  EXPECT_EQ(names[0], "degC");
  EXPECT_EQ(names[1], "degF");
  EXPECT_EQ(names[2], "");
}

}  // namespace
}  // namespace quillet
