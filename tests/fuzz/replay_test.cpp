// Every checked-in seed and every input a fuzzer once failed on, run through the same
// harness again in the normal test suite: an input that crashes or breaks an invariant
// fails here too.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fuzz_support.h"

namespace quillet {
namespace {

std::vector<std::filesystem::path> InputsOf(const std::string& target) {
  std::vector<std::filesystem::path> files;
  for (const char* kind : {"corpus", "regression"}) {
    const std::filesystem::path dir = std::filesystem::path(QUILLET_FUZZ_DIR) / kind / target;
    if (!std::filesystem::is_directory(dir)) continue;
    for (const auto& e : std::filesystem::directory_iterator(dir)) {
      if (e.is_regular_file()) files.push_back(e.path());
    }
  }
  return files;
}

TEST(FuzzReplay, EveryTargetHasSeedsAndRunsThemAndItsRegressionInputsCleanly) {
  const std::vector<std::string> expected = {"header_block", "loglang", "probes", "profile", "record_file", "serial", "settings"};
  for (const std::string& name : expected) {
    SCOPED_TRACE(name);
    auto it = fuzz::Targets().find(name);
    ASSERT_NE(it, fuzz::Targets().end());
    const auto inputs = InputsOf(name);
    EXPECT_FALSE(inputs.empty());
    for (const auto& path : inputs) {
      SCOPED_TRACE(path.filename().string());
      const std::string bytes = fuzz::Slurp(path.string());
      EXPECT_EQ(it->second(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0);
    }
  }
}

}  // namespace
}  // namespace quillet
