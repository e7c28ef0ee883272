// The measurement model: the models and the conversion of raw counts.
#include "measure/conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "core/fault.h"
#include "measure/model_table.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

// Independent long double evaluation of the thermistor divider and Steinhart-Hart curve.
long double ThermistorReference(long double N, long double D) {
  const long double R1 = 5100, R2 = 335671, R3 = 10500;
  const long double X = D * 3.008L / (N * 5 + 3);
  const long double Rx = (X / (1 / R1 + 1 / R2) - R1 * R3 / 1000000) / ((R3 + R1) / 1000000 + X);
  const long double L = std::log(1 / (1 / Rx - 1 / R1));
  return 1 / (0.001129241L + 0.0002341077L * L + 8.775468e-8L * L * L * L) - 273.16L;
}

struct Conversion : ::testing::Test {
  Conversion() {
    // Each column gets its own values so a test sees which column was read.
    for (int i = 0; i <= 30; ++i) {
      for (auto [table, slope, base] : {std::tuple{&s.ScaleTable100mv, &s.ScaleSlope100mv, 1},
                                        {&s.ScaleTable10v, &s.ScaleSlope10v, 2},
                                        {&s.ScaleTable, &s.ScaleSlope, 3},
                                        {&s.ScaleTable420, &s.ScaleSlope420, 4}})
        (*table)[i] = Cell::OfNumber(100 * base + i), (*slope)[i] = Cell::OfNumber(base + i / 10.0);
    }
  }
  Number Convert(double N, double code, double D) { return ConvertRawToValue(N, code, D, in); }
  int FaultOf(double N, double code, double D) {
    return testing::FaultOf([&] { ConvertRawToValue(N, code, D, in); });
  }
  ScaleTables s;
  ConversionInputs in{4, 0, &s};  // range factor 4, degrees Celsius
};

TEST_F(Conversion, EachModelConvertsWithItsFactorConstantOrScaleColumns) {
  for (double code : {16, 24, 25, 26, 27, 31}) EXPECT_DOUBLE_EQ(Convert(100, code, 0.125).Value(), 100);
  for (auto [N, code, D, value] : std::vector<std::tuple<double, double, double, double>>{
           {100, 18, 1, 25}, {100, 19, 1, 50}, {100, 28, 1, 1.25}, {100, 30, 0.25, 50},  // own constants
           {0, 32, 1, 300},                    // ScaleTable[0]
           {50, 20, 0.5, 100 + 1 * 0.5},       // u = 5, i = 0, f = 0.5
           {130, 22, 0.125, 205 + 2.5 * 0.2},  // u = 5.2
           {255, 20, 0.125, 110 + 2.0 * 0.2},  // u = 10.2: past the upper bound, extrapolated
           {2000, 29, 1, 419 + 5.9 * 6},       // u = 25, i = 19, f = 6
           {200, 29, 1, 404 - 1.5 * 4.4},      // u = 2.5: i clamps up to 4
           {-20, 20, 1, 100 - 0.1},            // u = -0.1 rounds down, clamps to 0
           {-12.5625, 66, 1, -12.5625}})       // thermocouples count in Celsius
    EXPECT_NEAR(Convert(N, code, D).Value(), value, 1e-12) << code << " " << N;
  s.ScaleTable10v[1] = Cell::OfText(" +7.5 ");  // text counts when it reads as a number
  EXPECT_DOUBLE_EQ(Convert(200, 22, 1).Value(), 7.5);
}

TEST_F(Conversion, NoRangeInputAnUnknownCodeAnUndefinedPointOrNoTablesGiveNoValueAndOnlyKnownCodesAreModels) {
  for (double code : {16.0, 17.0, 20.0, 64.0, 99.0}) EXPECT_TRUE(Convert(-0.6, code, 0).IsEmpty()) << code;
  for (double code : {15.0, 67.0, 16.5, -16.0, 21.0, 23.0}) EXPECT_TRUE(Convert(100, code, 1).IsEmpty());
  s.ScaleTable100mv[3] = Cell::OfEmptyText();
  s.ScaleSlope100mv[5] = Cell();                     // nothing at all is undefined too
  EXPECT_TRUE(Convert(75, 20, 0.125).IsEmpty());     // u = 3
  EXPECT_TRUE(Convert(137.5, 20, 0.125).IsEmpty());  // u = 5.5
  s.ScaleSlope420[4] = Cell::OfEmptyText();          // the clamped end point decides beyond the bounds
  EXPECT_TRUE(Convert(200, 29, 1).IsEmpty());
  in.Scales = nullptr;
  EXPECT_TRUE(Convert(100, 32, 1).IsEmpty());
  // Only whole known codes are models; edition 2 renames model 31 only.
  EXPECT_TRUE(FindModel(66) && !FindModel(67) && !FindModel(16.5));
  EXPECT_EQ(ModelLabel(*FindModel(31), 2) + ModelLabel(*FindModel(31), 3) + ModelLabel(*FindModel(30), 2),
            "QC53QC50Q18");
}

TEST_F(Conversion, AZeroDivisorOrAPointThatIsNoNumberFaults) {
  for (double code : {16.0, 17.0, 20.0, 64.0, 99.0}) EXPECT_EQ(FaultOf(-0.6, code, 1), kFaultDivisionByZero);
  in.RangeFactor = 0;
  EXPECT_EQ(FaultOf(0, 16, 1), kFaultDivisionByZero);  // 0 / 0 as well, never NaN
  in.RangeFactor = Number::Empty();
  EXPECT_EQ(FaultOf(100, 31, 1), kFaultDivisionByZero);
  s.ScaleTable10v[1] = Cell::OfText("mV");
  EXPECT_EQ(FaultOf(200, 22, 1), kFaultTypeMismatch);
}

TEST_F(Conversion, ThermistorFollowsTheCurveInTheUnitChosenAndFaultsBeyondItsRange) {
  for (auto [N, D] : {std::pair{0.0, 1.0}, {8.72, 1.0}, {100.0, 4.0}, {255.0, 255.0}})
    EXPECT_NEAR(Convert(N, 17, D).Value(), static_cast<double>(ThermistorReference(N, D)), 1e-9) << N;
  const double c = Convert(20, 17, 1).Value();
  in.UseFahrenheit = 1;
  EXPECT_NEAR(Convert(20, 17, 1).Value(), c * 9 / 5 + 32, 1e-9);
  EXPECT_DOUBLE_EQ(Convert(32, 65, 1).Value(), 89.6);
  in.UseFahrenheit = Number::Empty();  // an unset unit compares equal to 0: Celsius
  EXPECT_DOUBLE_EQ(Convert(20, 17, 1).Value(), c);
  in.UseFahrenheit = 2;
  EXPECT_TRUE(Convert(20, 17, 1).IsEmpty());
  EXPECT_DOUBLE_EQ(Convert(32, 64, 1).Value(), 32);  // thermocouples stay in Celsius
  // D = 1, N = 100: Rx and then Rt come out negative; the logarithm faults first.
  EXPECT_EQ(FaultOf(100, 17, 1), kFaultIllegalCall);
}

}  // namespace
}  // namespace quillet
