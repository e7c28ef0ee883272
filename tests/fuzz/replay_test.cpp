// Every checked-in seed and every input a fuzzer once failed on, run through the same
// harness again in the normal test suite: an input that crashes or breaks an invariant
// fails here too.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "fuzz_support.h"

namespace quillet {
namespace {

TEST(FuzzReplay, EveryTargetHasSeedsAndRunsThemAndItsRegressionInputsCleanly) {
  for (const char* name :
       {"header_block", "loglang", "probes", "profile", "record_file", "serial", "settings"}) {
    SCOPED_TRACE(name);
    const auto target = fuzz::Targets().find(name);
    ASSERT_NE(target, fuzz::Targets().end());
    int inputs = 0;
    for (const char* kind : {"corpus", "regression"}) {
      const std::filesystem::path dir = std::filesystem::path(QUILLET_FUZZ_DIR) / kind / name;
      if (!std::filesystem::is_directory(dir)) continue;
      for (const auto& e : std::filesystem::directory_iterator(dir)) {
        SCOPED_TRACE(e.path().filename().string());
        const std::string bytes = fuzz::Slurp(e.path().string());
        EXPECT_EQ(target->second(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0);
        ++inputs;
      }
    }
    EXPECT_GT(inputs, 0);
  }
}

}  // namespace
}  // namespace quillet
