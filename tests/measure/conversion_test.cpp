#include "measure/conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

#include "core/cell.h"
#include "core/fault.h"

namespace quillet {
namespace {

const std::initializer_list<double> kAllModels = {16, 17, 18, 19, 20, 21, 22, 23, 24, 25,
                                                  26, 27, 28, 29, 30, 31, 32, 64, 65, 66};

int FaultOf(double N, double code, double D, const ConversionInputs& in) {
  try {
    ConvertRawToValue(N, code, D, in);
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

// Independent long double evaluation of the thermistor divider and Steinhart-Hart curve.
long double ThermistorReference(long double N, long double D) {
  const long double R1 = 5100, R2 = 335671, R3 = 10500;
  const long double X = D * 3.008L / (N * 5 + 3);
  const long double Rp = 1 / (1 / R1 + 1 / R2);
  const long double Rx = (Rp * X - R1 * R3 / 1000000) / ((R3 + R1) / 1000000 + X);
  const long double Rt = 1 / (1 / Rx - 1 / R1);
  const long double L = std::log(Rt);
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

  ScaleTables s;
  ConversionInputs in;
};

TEST_F(ConversionTest, ZeroRangeInputGivesNoValueForEveryModelBeforeAnyArithmetic) {
  in.RangeFactor = 0;
  for (double code : kAllModels) {
    EXPECT_TRUE(IsEmpty(100, code, 0)) << code;
    // N * 5 + 3 = 0 would fault, but D = 0 ends the conversion first.
    EXPECT_TRUE(IsEmpty(-0.6, code, 0)) << code;
  }
}

TEST_F(ConversionTest, ZeroDenominatorOfTheThermistorQuantityFaultsForEveryModel) {
  for (double code : kAllModels) EXPECT_EQ(FaultOf(-0.6, code, 1, in), kFaultDivisionByZero) << code;
  EXPECT_EQ(FaultOf(-0.6, 99, 1, in), kFaultDivisionByZero);  // even for a code with no branch
}

TEST_F(ConversionTest, RangeFactorModelsDivideByFactorAndTwiceTheRangeInput) {
  for (double code : {16, 24, 25, 26, 27, 31}) {
    EXPECT_DOUBLE_EQ(Value(100, code, 1), 12.5) << code;
    EXPECT_DOUBLE_EQ(Value(100, code, 0.125), 100.0) << code;
  }
  in.RangeFactor = 0.4;
  EXPECT_DOUBLE_EQ(Value(255, 25, 1), 318.75);
}

TEST_F(ConversionTest, FixedConstantModelsIgnoreTheRangeFactor) {
  in.RangeFactor = 7;
  EXPECT_DOUBLE_EQ(Value(100, 18, 1), 25);     // range code 0
  EXPECT_DOUBLE_EQ(Value(100, 18, 0.5), 50);   // range code 1
  EXPECT_DOUBLE_EQ(Value(100, 19, 1), 50);     // K = 1
  EXPECT_DOUBLE_EQ(Value(100, 28, 1), 1.25);   // K = 40
  EXPECT_DOUBLE_EQ(Value(100, 30, 0.25), 50);  // K = 4
}

TEST_F(ConversionTest, ZeroOrEmptyRangeFactorIsADivisionFaultNotInfinity) {
  in.RangeFactor = 0;
  EXPECT_EQ(FaultOf(100, 16, 1, in), kFaultDivisionByZero);
  EXPECT_EQ(FaultOf(0, 16, 1, in), kFaultDivisionByZero);  // 0 / 0 as well, never NaN
  in.RangeFactor = Number::Empty();
  EXPECT_EQ(FaultOf(100, 31, 1, in), kFaultDivisionByZero);
}

TEST_F(ConversionTest, ProfileModelAtZeroGivesTheFirstTablePoint) {
  EXPECT_DOUBLE_EQ(Value(0, 20, 1), 100);  // ScaleTable100mv[0]
  EXPECT_DOUBLE_EQ(Value(0, 32, 1), 300);  // ScaleTable[0]
}

TEST_F(ConversionTest, ProfileModelInterpolatesWithinASegment) {
  // Model 20, N = 50, D = 1/2: r = 50 / 10 = 5, u = 0.5, i = 0, f = 0.5.
  EXPECT_DOUBLE_EQ(Value(50, 20, 0.5), 100 + 1 * 0.5);
  // Model 22, N = 130, D = 1/8: u = r = 130 / 25 = 5.2, i = 5, f = 0.2.
  EXPECT_NEAR(Value(130, 22, 0.125), 205 + 2.5 * 0.2, 1e-12);
}

TEST_F(ConversionTest, ProfileModelExtrapolatesPastTheUpperBoundFromTheLastSlope) {
  // Model 20, range code 3, N = 255: r = 102, u = 10.2, i = 10, f = 0.2.
  EXPECT_NEAR(Value(255, 20, 0.125), 110 + 2.0 * 0.2, 1e-12);
  // The custom profile, same numbers, its own columns.
  EXPECT_NEAR(Value(255, 32, 0.125), 310 + 4.0 * 0.2, 1e-12);
  // Model 29 far above: N = 2000, D = 1: u = 25, i = 19, f = 6.
  EXPECT_DOUBLE_EQ(Value(2000, 29, 1), 419 + 5.9 * 6);
}

TEST_F(ConversionTest, ProfileModelExtrapolatesBelowTheLowerBoundFromTheFirstSlope) {
  // Model 29, N = 200, D = 1: u = 2.5, i clamps up to 4, f = -1.5.
  EXPECT_DOUBLE_EQ(Value(200, 29, 1), 404 - 1.5 * 4.4);
  // Model 20 with a negative count: u = -0.1 rounds down to -1, clamps to 0, f = -0.1.
  EXPECT_NEAR(Value(-20, 20, 1), 100 - 0.1, 1e-12);
}

TEST_F(ConversionTest, UndefinedProfilePointGivesNoValueAndOtherPointsStillWork) {
  s.ScaleTable100mv[3] = Cell::OfEmptyText();
  s.ScaleSlope100mv[5] = Cell();  // nothing at all is undefined too
  // Model 20 at range code 3: u = N / 25.
  EXPECT_TRUE(IsEmpty(75, 20, 0.125));           // u = 3
  EXPECT_TRUE(IsEmpty(137.5, 20, 0.125));        // u = 5.5
  EXPECT_DOUBLE_EQ(Value(100, 20, 0.125), 104);  // u = 4, its own point defined
  // The clamped end point decides beyond the bounds.
  s.ScaleSlope420[4] = Cell::OfEmptyText();
  EXPECT_TRUE(IsEmpty(200, 29, 1));
}

TEST_F(ConversionTest, ProfileModelWithoutTablesGivesNoValue) {
  in.Scales = nullptr;
  for (double code : {20, 22, 29, 32}) EXPECT_TRUE(IsEmpty(100, code, 1)) << code;
}

TEST_F(ConversionTest, ProfilePointHeldAsTextCountsOnlyWhenItReadsAsANumber) {
  s.ScaleTable10v[1] = Cell::OfText(" 7.5 ");
  EXPECT_DOUBLE_EQ(Value(200, 22, 1), 7.5);  // u = 1, f = 0
  s.ScaleTable10v[1] = Cell::OfText("mV");
  EXPECT_EQ(FaultOf(200, 22, 1, in), kFaultTypeMismatch);
}

TEST_F(ConversionTest, ThermistorGivesAboutTwentyFiveDegreesAtTenKiloOhm) {
  // Invert the divider for Rt = 10000 at D = 1.
  const long double R1 = 5100, R2 = 335671, R3 = 10500;
  const long double Rp = 1 / (1 / R1 + 1 / R2);
  const long double Rx = 1 / (1 / 10000.0L + 1 / R1);
  const long double X = (R1 * R3 / 1000000 + Rx * (R3 + R1) / 1000000) / (Rp - Rx);
  const double N = static_cast<double>((3.008L / X - 3) / 5);
  EXPECT_NEAR(N, 8.72, 0.01);
  const double t = Value(N, 17, 1);
  EXPECT_NEAR(t, 25, 0.5);
  const long double L = std::log(10000.0L);
  EXPECT_NEAR(
      t, static_cast<double>(1 / (0.001129241L + 0.0002341077L * L + 8.775468e-8L * L * L * L) - 273.16L),
      1e-6);
}

TEST_F(ConversionTest, ThermistorMatchesTheCurveAcrossItsRange) {
  for (auto [N, D] : {std::pair{0.0, 1.0}, {20.0, 1.0}, {50.0, 1.0}, {100.0, 4.0}, {255.0, 255.0}}) {
    EXPECT_NEAR(Value(N, 17, D), static_cast<double>(ThermistorReference(N, D)), 1e-9) << N << " " << D;
  }
  // A higher count means a lower resistance of the thermistor, so a warmer reading.
  EXPECT_LT(Value(0, 17, 1), Value(20, 17, 1));
}

TEST_F(ConversionTest, ThermistorUnitFollowsUseFahrenheitAndEmptyCountsAsCelsius) {
  const double c = Value(20, 17, 1);
  in.UseFahrenheit = 1;
  EXPECT_NEAR(Value(20, 17, 1), c * 9 / 5 + 32, 1e-9);
  // An unset unit compares equal to 0, so it gives degrees Celsius, not NoValue.
  in.UseFahrenheit = Number::Empty();
  EXPECT_DOUBLE_EQ(Value(20, 17, 1), c);
  in.UseFahrenheit = 2;
  EXPECT_TRUE(IsEmpty(20, 17, 1));
  in.UseFahrenheit = 0.5;
  EXPECT_TRUE(IsEmpty(20, 17, 1));
}

TEST_F(ConversionTest, ThermistorBeyondItsRangeFaultsInsteadOfGivingNaN) {
  // D = 1, N = 100: X is too small, Rx and then Rt come out negative.
  EXPECT_EQ(FaultOf(100, 17, 1, in), kFaultIllegalCall);
  EXPECT_EQ(FaultOf(255, 17, 1, in), kFaultIllegalCall);
  // The unit does not matter: the logarithm comes first.
  in.UseFahrenheit = 2;
  EXPECT_EQ(FaultOf(100, 17, 1, in), kFaultIllegalCall);
}

TEST_F(ConversionTest, ModelsWithoutTablesAlwaysGiveNoValue) {
  for (double code : {21, 23}) {
    for (double N : {0.0, 1.0, 128.0, 255.0, -2048.0}) {
      for (double D : {1.0, 0.125, 3.0, 255.0})
        EXPECT_TRUE(IsEmpty(N, code, D)) << code << " " << N << " " << D;
    }
  }
}

TEST_F(ConversionTest, ThermocoupleCountIsCelsiusAndConvertsOnlyForFahrenheitOne) {
  // Two-byte reading b1 = 0, b2 = 130: N = 130 * 16 + 0 / 16 - 2048 = 32.
  const double N = 130 * 16 + 0 / 16.0 - 2048;
  for (double code : {64, 65, 66}) {
    in.UseFahrenheit = 0;
    EXPECT_DOUBLE_EQ(Value(N, code, 1), 32) << code;
    in.UseFahrenheit = 1;
    EXPECT_DOUBLE_EQ(Value(N, code, 1), 89.6) << code;
    EXPECT_DOUBLE_EQ(Value(-40, code, 1), -40) << code;
    in.UseFahrenheit = 2;
    EXPECT_DOUBLE_EQ(Value(N, code, 1), 32) << code;
    in.UseFahrenheit = Number::Empty();
    EXPECT_DOUBLE_EQ(Value(-12.5625, code, 1), -12.5625) << code;  // the fraction stays
  }
}

TEST_F(ConversionTest, CodesOutsideTheTableGiveNoValue) {
  for (double code : {0.0, 1.0, 15.0, 33.0, 63.0, 67.0, 100.0, 16.5, -16.0}) {
    EXPECT_TRUE(IsEmpty(100, code, 1)) << code;
  }
}

}  // namespace
}  // namespace quillet
