#pragma once
// The loggers the scenario tests of the link put at the far end of the line.
#include "support/emulated_logger.h"

namespace quillet::testing {

// A logger of `model` (serial 300 + model) that has been recording for `seconds`, its probe
// seeing a steady `level`.
inline sim::LoggerConfig SteadyLogger(int model, double seconds, double level = 20, int baud = 1200) {
  sim::LoggerConfig c;
  c.modelCode = model;
  c.serial = 300 + model;
  c.baud = baud;
  c.elapsedAtStart = seconds;
  c.signal = {sim::SignalKind::Steady, level};
  return c;
}

// The program's options with the line speed it tries first.
inline AppOptions AtSpeed(int baud) {
  AppOptions o;
  o.appBaud = baud;
  return o;
}

}  // namespace quillet::testing
