// BuildScaleTable for every family: the typed points, the lines through and beyond them,
// the slopes, the flag and the preview.
#include <gtest/gtest.h>

#include "profiles/profile_test_app.h"

namespace quillet {
namespace {

using testing::ProfileApp;
using F = ProfileFamily;

std::vector<std::string> Series(double first, double step, int n) {
  std::vector<std::string> out;
  for (int i = 0; i < n; ++i) out.push_back(GeneralNumber(first + step * i));
  return out;
}

struct BuildCase {
  const char* what;
  F family;
  std::vector<std::pair<int, std::string>> typed;  // field, text
  std::vector<std::string> table, slope;
  int points, invalid;
};

TEST(BuildScaleTable, FillsTheTableAndSlopesFromTheTypedPointsOfEveryFamily) {
  std::vector<std::string> ramp420 = Series(0, 6.25, 17);
  std::vector<std::string> bipolar = Series(0, 2, 17);  // cells 15..20 carry on the last line
  const BuildCase cases[] = {
      {"custom, 5 at row 20 and 15 at row 40", F::Custom, {{3, "5"}, {5, "15"}}, Series(-5, 5, 11),
       Series(5, 0, 11), 2, 0},
      {"100 mV, the same", F::Mv100, {{3, "5"}, {5, "15"}}, Series(-5, 5, 11), Series(5, 0, 11), 2, 0},
      {"10 V, the same", F::V10, {{3, "5"}, {5, "15"}}, Series(-5, 5, 11), Series(5, 0, 11), 2, 0},
      {"4 to 20 mA, 0 at 4 and 100 at 20", F::Ma420, {{1, "0"}, {17, "100"}}, ramp420, Series(6.25, 0, 17), 2, 0},
      {"a falling profile", F::Custom, {{1, "100"}, {6, "50"}, {11, "0"}}, Series(100, -10, 11),
       Series(-10, 0, 11), 3, 0},
      {"three points, two slopes", F::V10, {{1, "0"}, {2, "1"}, {3, "3"}},
       {"0", "1", "3", "5", "7", "9", "11", "13", "15", "17", "19"}, {"1", "2", "2", "2", "2", "2", "2", "2", "2", "2", "2"},
       3, 0},
      {"bipolar 100 mV, all eleven fields", F::Bipo100mv,
       {{1, "0"}, {2, "2"}, {3, "4"}, {4, "6"}, {5, "8"}, {6, "10"}, {7, "12"}, {8, "14"}, {9, "16"}, {10, "18"}, {11, "20"}},
       bipolar, Series(2, 0, 17), 11, 0},
      {"bipolar 10 mV, the same", F::Bipo10mv,
       {{1, "0"}, {2, "2"}, {3, "4"}, {4, "6"}, {5, "8"}, {6, "10"}, {7, "12"}, {8, "14"}, {9, "16"}, {10, "18"}, {11, "20"}},
       bipolar, Series(2, 0, 17), 11, 0},
  };
  for (const BuildCase& c : cases) {
    ProfileApp t;
    t.Open(c.family);
    t.Do([&] { ProfileClearAll(*t.app, c.family); });
    for (const auto& [field, text] : c.typed) t.Type(c.family, field, text);
    EXPECT_EQ(t.Cells(c.family, 'T'), c.table) << c.what;
    EXPECT_EQ(t.Cells(c.family, 'S'), c.slope) << c.what;
    EXPECT_EQ(t.d(c.family).PointCount, c.points) << c.what;
    EXPECT_EQ(t.P().ScaleTableInvalid, c.invalid) << c.what;
  }
}

TEST(BuildScaleTable, OnePointOrAFlatTableIsNoTableAndKeepsTheSlopesOfTheLastGoodBuild) {
  ProfileApp t;
  t.Open(F::Custom);
  t.Do([&] { ProfileClearAll(*t.app, F::Custom); });
  t.Type(F::Custom, 1, "0");
  t.Type(F::Custom, 11, "50");
  const std::vector<std::string> goodSlopes = Series(5, 0, 11);
  ASSERT_EQ(t.Cells(F::Custom, 'S'), goodSlopes);

  t.Type(F::Custom, 11, "");  // one point left: blank table
  EXPECT_EQ(t.Cells(F::Custom, 'T'), std::vector<std::string>(11, ""));
  EXPECT_EQ(t.Cells(F::Custom, 'S'), goodSlopes);
  EXPECT_EQ(t.P().ScaleTableInvalid, 1);
  EXPECT_FALSE(t.v(F::Custom).Label23.visible);

  t.Type(F::Custom, 4, "0");  // two equal points: a flat table, filled
  EXPECT_EQ(t.Cells(F::Custom, 'T'), std::vector<std::string>(11, "0"));
  EXPECT_EQ(t.Cells(F::Custom, 'S'), goodSlopes);
  EXPECT_EQ(t.P().ScaleTableInvalid, 1);
  for (int k = 1; k <= 10; ++k) EXPECT_EQ(t.v(F::Custom).Line[k].y1 + t.v(F::Custom).Line[k].y2, 6000) << k;
}

TEST(BuildScaleTable, ThePreviewJoinsTheKnotsInsideTheBoxAndLabelsItsEnds) {
  ProfileApp t;
  t.Open(F::Custom);
  t.Do([&] {
    ProfileClearAll(*t.app, F::Custom);
    ProfileUnitChanged(*t.app, F::Custom, "bar");
  });
  t.Type(F::Custom, 3, "5");
  t.Type(F::Custom, 5, "15");
  const ProfileDialogView& v = t.v(F::Custom);
  EXPECT_EQ(v.segmentCount, 10);
  const PreviewLine first = v.Line[1], last = v.Line[10];
  EXPECT_EQ(std::vector<double>({first.x1, first.y1, first.x2, first.y2}), std::vector<double>({4000, 3000, 4192, 2800}));
  EXPECT_EQ(std::vector<double>({last.x1, last.y1, last.x2, last.y2}), std::vector<double>({5728, 1200, 5920, 1000}));
  EXPECT_EQ(v.Label23.caption, "-5.");
  EXPECT_EQ(v.Label24.caption, "45.");
  EXPECT_EQ(v.Label25.caption, "bar");
  EXPECT_TRUE(v.Label23.visible && v.Label24.visible && v.Label25.visible);

  // The 4 to 20 mA preview: sixteen segments of 120, and no integer digit forced.
  t.Open(F::Ma420);
  t.Do([&] { ProfileClearAll(*t.app, F::Ma420); });
  t.Type(F::Ma420, 1, "0");
  t.Type(F::Ma420, 17, "0.5");
  const ProfileDialogView& w = t.v(F::Ma420);
  EXPECT_EQ(w.segmentCount, 16);
  EXPECT_EQ(w.Line[16].x2, 5920);
  EXPECT_EQ(w.Line[16].y2, 1000);
  EXPECT_EQ(w.Label23.caption, ".");
  EXPECT_EQ(w.Label24.caption, ".5");
}

}  // namespace
}  // namespace quillet
