#pragma once
// A logger on a Linux pseudo-terminal: the application opens the slave device as its
// serial port; the emulator serves the master end with a LoggerLine on the monotonic
// clock, writing each reply byte at the time it would have fully arrived on the wire.
#include <atomic>
#include <functional>
#include <string>

#include "sim/firmware/logger_config.h"
#include "sim/firmware/logger_line.h"

namespace quillet::sim {

class LoggerPty {
 public:
  // Opens the pseudo-terminal, makes it raw at the logger's speed with two stop bits, and
  // keeps one slave descriptor open so the master never sees hang-up between the
  // application's opens. Throws std::invalid_argument for a bad config and
  // std::runtime_error with the system's reason when the terminal cannot be made.
  explicit LoggerPty(LoggerConfig config);
  ~LoggerPty();
  LoggerPty(const LoggerPty&) = delete;
  LoggerPty& operator=(const LoggerPty&) = delete;

  const std::string& SlavePath() const { return slavePath_; }
  LoggerLine& line() { return line_; }

  // Serves commands until `stop` is set (looked at least every 100 ms, and at once when a
  // signal interrupts the wait). The speed and stop bits the application set are read
  // from the terminal each time bytes arrive. Throws std::runtime_error on a read failure.
  void Serve(const std::atomic<bool>& stop);

  // Receives one line per command heard, speed mismatch or lost byte, when set.
  std::function<void(const std::string&)> log;

 private:
  double Now() const;

  int master_ = -1;
  int slave_ = -1;
  std::string slavePath_;
  double clockZero_ = 0.0;
  LoggerLine line_;
};

// Bit rate of a termios speed constant, 0 when unknown.
int BaudOfSpeed(unsigned speed);

}  // namespace quillet::sim
