// loglang.txt as the start-up reads it.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "core/fault.h"
#include "core/language_table.h"
#include "fuzz_support.h"

QUILLET_FUZZ_TARGET(loglang) {
  using namespace quillet;
  static testing::TestApp t;
  t.WriteFile("loglang.txt", std::string(reinterpret_cast<const char*>(data), size));
  auto table = std::make_unique<LanguageData>();
  try {
    ReadLanguageFile(t.dir + "/loglang.txt", *table);
  } catch (const Fault&) {
    // The reading stops at its fault, as the start-up expects.
  }
  return 0;
}
