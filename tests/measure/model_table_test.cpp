#include "measure/model_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quillet {
namespace {

TEST(ModelTable, OnlyWholeKnownCodesAreModelsAndEdition2RenamesModel31Only) {
  for (double code : {16.0, 17.0, 32.0, 64.0, 66.0}) EXPECT_NE(FindModel(code), nullptr) << code;
  for (double code : {0.0, 15.0, 33.0, 63.0, 67.0, 16.5}) EXPECT_EQ(FindModel(code), nullptr) << code;
  EXPECT_EQ(ModelLabel(*FindModel(31), 2) + ModelLabel(*FindModel(31), 3) + ModelLabel(*FindModel(30), 2),
            "QC53QC50Q18");
}

TEST(RangeForm, LowTwoBitsGiveOneHalfQuarterAndEighthForTheTwoListsOfModels) {
  // The modulo rounds down: a negative byte stays in 0..3.
  for (auto [byte, form] : {std::pair{0, 1.0}, {1, 0.5}, {2, 0.25}, {3, 0.125}, {130, 0.25}, {-1, 0.125}})
    EXPECT_EQ(RangeForm(byte), form) << byte;
  // Model 32 sends its live byte as a range code but its stored samples with the plain byte.
  const std::set<int> live{16, 18, 19, 20, 22, 24, 25, 26, 27, 28, 29, 30, 31, 32};
  for (int code = 0; code <= 127; ++code) {
    EXPECT_EQ(LiveRangeFormModel(code), live.count(code) == 1) << code;
    EXPECT_EQ(HeaderRangeFormModel(code), live.count(code) == 1 && code != 32) << code;
  }
}

}  // namespace
}  // namespace quillet
