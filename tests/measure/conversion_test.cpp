#include "measure/conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

#include "core/cell.h"
#include "core/fault.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

const std::initializer_list<double> kAllModels = {16, 17, 18, 19, 20, 21, 22, 23, 24, 25,
                                                  26, 27, 28, 29, 30, 31, 32, 64, 65, 66};

// Independent long double evaluation of the thermistor divider and Steinhart-Hart curve.
long double ThermistorReference(long double N, long double D) {
  const long double R1 = 5100, R2 = 335671, R3 = 10500;
  const long double X = D * 3.008L / (N * 5 + 3);
  const long double Rp = 1 / (1 / R1 + 1 / R2);
  const long double Rx = (Rp * X - R1 * R3 / 1000000) / ((R3 + R1) / 1000000 + X);
  const long double L = std::log(1 / (1 / Rx - 1 / R1));
  return 1 / (0.001129241L + 0.0002341077L * L + 8.775468e-8L * L * L * L) - 273.16L;
}

class ConversionTest : public ::testing::Test {
 protected:
  ConversionTest() {
    // Each column gets its own values so a test sees which column was read.
    for (int i = 0; i <= 30; ++i) {
      s.ScaleTable100mv[i] = Cell::OfNumber(100 + i);
      s.ScaleSlope100mv[i] = Cell::OfNumber(1 + i / 10.0);
      s.ScaleTable10v[i] = Cell::OfNumber(200 + i);
      s.ScaleSlope10v[i] = Cell::OfNumber(2 + i / 10.0);
      s.ScaleTable420[i] = Cell::OfNumber(400 + i);
      s.ScaleSlope420[i] = Cell::OfNumber(4 + i / 10.0);
      s.ScaleTable[i] = Cell::OfNumber(300 + i);
      s.ScaleSlope[i] = Cell::OfNumber(3 + i / 10.0);
    }
    in.RangeFactor = 4;
    in.UseFahrenheit = 0;
    in.Scales = &s;
  }
  double Value(double N, double code, double D) {
    const Number v = ConvertRawToValue(N, code, D, in);
    EXPECT_FALSE(v.IsEmpty()) << "model " << code << " N " << N << " D " << D;
    return v.Value();
  }
  bool IsEmpty(double N, double code, double D) { return ConvertRawToValue(N, code, D, in).IsEmpty(); }
  int FaultOf(double N, double code, double D) {
    return testing::FaultOf([&] { ConvertRawToValue(N, code, D, in); });
  }

  ScaleTables s;
  ConversionInputs in;
};

TEST_F(ConversionTest, ZeroRangeInputGivesNoValueFirstAndAZeroThermistorDenominatorFaultsNext) {
  for (double code : kAllModels) EXPECT_EQ(FaultOf(-0.6, code, 1), kFaultDivisionByZero) << code;
  EXPECT_EQ(FaultOf(-0.6, 99, 1), kFaultDivisionByZero);  // even for a code with no branch
  in.RangeFactor = 0;
  for (double code : kAllModels) {
    EXPECT_TRUE(IsEmpty(100, code, 0)) << code;
    EXPECT_TRUE(IsEmpty(-0.6, code, 0)) << code;  // N * 5 + 3 = 0, but D = 0 ends it first
  }
  for (double code : {0.0, 1.0, 15.0, 33.0, 63.0, 67.0, 100.0, 16.5, -16.0})
    EXPECT_TRUE(IsEmpty(100, code, 1)) << code;
  for (double code : {21, 23})  // models without tables
    for (double N : {0.0, 255.0, -2048.0})
      for (double D : {1.0, 0.125, 255.0}) EXPECT_TRUE(IsEmpty(N, code, D)) << code << " " << N << " " << D;
}

TEST_F(ConversionTest, RangeFactorModelsDivideByFactorAndTwiceTheRangeInputOthersByAConstant) {
  for (double code : {16, 24, 25, 26, 27, 31}) {
    EXPECT_DOUBLE_EQ(Value(100, code, 1), 12.5) << code;
    EXPECT_DOUBLE_EQ(Value(100, code, 0.125), 100.0) << code;
  }
  in.RangeFactor = 0.4;
  EXPECT_DOUBLE_EQ(Value(255, 25, 1), 318.75);
  in.RangeFactor = 7;  // ignored by the fixed-constant models
  for (auto [code, D, value] :
       {std::tuple{18.0, 1.0, 25.0}, {18, 0.5, 50}, {19, 1, 50}, {28, 1, 1.25}, {30, 0.25, 50}})
    EXPECT_DOUBLE_EQ(Value(100, code, D), value) << code;
  in.RangeFactor = 0;
  EXPECT_EQ(FaultOf(100, 16, 1), kFaultDivisionByZero);
  EXPECT_EQ(FaultOf(0, 16, 1), kFaultDivisionByZero);  // 0 / 0 as well, never NaN
  in.RangeFactor = Number::Empty();
  EXPECT_EQ(FaultOf(100, 31, 1), kFaultDivisionByZero);
}

TEST_F(ConversionTest, ProfileModelsInterpolateAndExtrapolateFromTheirOwnColumns) {
  EXPECT_DOUBLE_EQ(Value(0, 20, 1), 100);                      // ScaleTable100mv[0]
  EXPECT_DOUBLE_EQ(Value(0, 32, 1), 300);                      // ScaleTable[0]
  EXPECT_DOUBLE_EQ(Value(50, 20, 0.5), 100 + 1 * 0.5);         // u = 5, i = 0, f = 0.5
  EXPECT_NEAR(Value(130, 22, 0.125), 205 + 2.5 * 0.2, 1e-12);  // u = 5.2
  EXPECT_NEAR(Value(255, 20, 0.125), 110 + 2.0 * 0.2, 1e-12);  // u = 10.2: past the upper bound
  EXPECT_NEAR(Value(255, 32, 0.125), 310 + 4.0 * 0.2, 1e-12);
  EXPECT_DOUBLE_EQ(Value(2000, 29, 1), 419 + 5.9 * 6);   // u = 25, i = 19, f = 6
  EXPECT_DOUBLE_EQ(Value(200, 29, 1), 404 - 1.5 * 4.4);  // u = 2.5: i clamps up to 4
  EXPECT_NEAR(Value(-20, 20, 1), 100 - 0.1, 1e-12);      // u = -0.1 rounds down, clamps to 0
  s.ScaleTable10v[1] = Cell::OfText(" 7.5 ");            // text counts when it reads as a number
  EXPECT_DOUBLE_EQ(Value(200, 22, 1), 7.5);
  s.ScaleTable10v[1] = Cell::OfText("mV");
  EXPECT_EQ(FaultOf(200, 22, 1), kFaultTypeMismatch);
}

TEST_F(ConversionTest, AnUndefinedProfilePointOrNoTablesGiveNoValue) {
  s.ScaleTable100mv[3] = Cell::OfEmptyText();
  s.ScaleSlope100mv[5] = Cell();                 // nothing at all is undefined too
  EXPECT_TRUE(IsEmpty(75, 20, 0.125));           // u = 3
  EXPECT_TRUE(IsEmpty(137.5, 20, 0.125));        // u = 5.5
  EXPECT_DOUBLE_EQ(Value(100, 20, 0.125), 104);  // u = 4, its own point defined
  s.ScaleSlope420[4] = Cell::OfEmptyText();      // the clamped end point decides beyond the bounds
  EXPECT_TRUE(IsEmpty(200, 29, 1));
  in.Scales = nullptr;
  for (double code : {20, 22, 29, 32}) EXPECT_TRUE(IsEmpty(100, code, 1)) << code;
}

TEST_F(ConversionTest, ThermistorFollowsTheCurveInTheUnitChosenAndFaultsBeyondItsRange) {
  for (auto [N, D] : {std::pair{0.0, 1.0}, {8.72, 1.0}, {50.0, 1.0}, {100.0, 4.0}, {255.0, 255.0}})
    EXPECT_NEAR(Value(N, 17, D), static_cast<double>(ThermistorReference(N, D)), 1e-9) << N << " " << D;
  EXPECT_NEAR(Value(8.72, 17, 1), 25, 0.5);  // about 10 kOhm
  EXPECT_LT(Value(0, 17, 1), Value(20, 17, 1));
  const double c = Value(20, 17, 1);
  in.UseFahrenheit = 1;
  EXPECT_NEAR(Value(20, 17, 1), c * 9 / 5 + 32, 1e-9);
  in.UseFahrenheit = Number::Empty();  // an unset unit compares equal to 0: Celsius
  EXPECT_DOUBLE_EQ(Value(20, 17, 1), c);
  for (double unit : {2.0, 0.5}) {
    in.UseFahrenheit = unit;
    EXPECT_TRUE(IsEmpty(20, 17, 1)) << unit;
  }
  // D = 1, N = 100: Rx and then Rt come out negative; the logarithm faults first.
  EXPECT_EQ(FaultOf(100, 17, 1), kFaultIllegalCall);
  in.UseFahrenheit = 0;
  EXPECT_EQ(FaultOf(255, 17, 1), kFaultIllegalCall);
}

TEST_F(ConversionTest, ThermocoupleCountIsCelsiusAndConvertsOnlyForFahrenheitOne) {
  for (double code : {64, 65, 66}) {
    for (auto [unit, N, value] : {std::tuple{Number(0), 32.0, 32.0},
                                  {Number(1), 32, 89.6},
                                  {Number(1), -40, -40},
                                  {Number(2), 32, 32},
                                  {Number::Empty(), -12.5625, -12.5625}}) {
      in.UseFahrenheit = unit;
      EXPECT_DOUBLE_EQ(Value(N, code, 1), value) << code << " " << N;
    }
  }
}

}  // namespace
}  // namespace quillet
