// logger1.ini as the start-up reads it, into the settings, probe memory and scale tables,
// then a whole start-up of a fresh program on it.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "log1/startup.h"

QUILLET_FUZZ_TARGET(settings) {
  using namespace quillet;
  testing::TestApp t;
  t.WriteFile("loglang.txt", fuzz::ShippedFile("loglang.txt"), true);
  t.WriteFile("probes.dat", fuzz::ShippedFile("probes.dat"), true);
  t.WriteFile("logger1.ini", std::string(reinterpret_cast<const char*>(data), size));
  t.Start();
  t.Run(3000);  // the timers' first rounds on what was read
  fuzz::CheckNoInternalError(t.ui);
  return 0;
}
