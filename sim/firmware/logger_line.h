#pragma once
// The logger's end of the serial wire: command framing, speed matching, reply pacing and
// the faults of LoggerConfig::faults, around a Firmware whose clock follows the caller's.
//
// Usage (a scenario test's virtual clock, seconds):
//   LoggerLine line(config, /*startTime=*/0.0);
//   auto reply = line.Receive({0x00, 'D'}, now, 1200, 2);   // -> 0x04, b1, b2 with arrival times
//
// Wire rules:
// - A command is 0x00 then one letter; its bytes may come split across calls, and further
//   0x00 bytes before the letter are tolerated. Letters other than D, R, T, H, L are ignored.
// - Replies: "D" 0x04 + 2 bytes; "R" 0x04 + 22 bytes (+ LoggerConfig::extraLayout2Bytes in
//   layout 2); "T" 0x04 + the block; "H" and "L" 0x04 alone (the logger notes the
//   calibration; the desktop drops the acknowledge at its next flush).
// - Pacing: every byte takes 11 bit times at the logger's speed (start, 8 data, 2 stop). A
//   reply starts `turnaround` after the call's `now`, or when the previous reply has gone
//   out if that is later; a command heard while a block is going out is not answered at
//   all. `pauseAfterAck` separates the 0x04 from the payload. With no
//   pause, byte k (0-based) of a reply arrives at now + turnaround + (k + 1) * 11 / baud.
// - Speed: the logger only understands a sender at its own speed. Bytes written at another
//   speed reach it as framing errors: they are dropped, break off any half-received
//   command, and get no reply. Stop bits do not matter (the logger sends two and needs
//   one), so appStopBits is accepted as it comes.
// - Faults: see Faults in logger_config.h. During the silent span the logger hears nothing
//   and reply bytes that would arrive in it are lost; its clock and sampling run on.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/firmware/firmware.h"
#include "sim/firmware/logger_config.h"

namespace quillet::sim {

struct TimedByte {
  double at;  // seconds on the caller's clock when the byte has fully arrived
  std::uint8_t byte;
};

// A command the logger recognised, in the order heard.
struct LineCommand {
  double at = 0.0;  // caller's clock
  char letter = 0;
  bool answered = false;         // false when a fault swallowed it
  std::size_t payloadBytes = 0;  // bytes sent after the 0x04 (after any cut)
};

class LoggerLine {
 public:
  // startTime: the caller's clock at which the logger has been running for
  // config.elapsedAtStart seconds. Throws std::invalid_argument for a bad config.
  explicit LoggerLine(LoggerConfig config, double startTime = 0.0);

  // The application wrote `bytes` at time `now` with its port at `appBaud` and
  // `appStopBits`. Returns the reply bytes with their arrival times, in order.
  std::vector<TimedByte> Receive(const std::vector<std::uint8_t>& bytes, double now, int appBaud,
                                 int appStopBits);

  Firmware& firmware() { return firmware_; }
  const Firmware& firmware() const { return firmware_; }
  const LoggerConfig& config() const { return config_; }
  const std::vector<LineCommand>& Commands() const { return commands_; }

  // The logger is switched to another line speed (1200 or 4800): from now on it only
  // hears, and answers, a sender at that speed.
  void SetBaud(int baud) {
    config_.baud = baud;
    armed_ = false;
  }

  // Logger time (seconds since it started) at the caller's time `now`.
  double LoggerSeconds(double now) const { return config_.elapsedAtStart + (now - startTime_); }
  bool SilentAt(double now) const;

 private:
  void Answer(char letter, double now, std::vector<TimedByte>& out);
  void Send(const std::vector<std::uint8_t>& payload, double now, std::vector<TimedByte>& out);

  LoggerConfig config_;
  double startTime_;
  Firmware firmware_;
  bool armed_ = false;         // 0x00 heard, letter awaited
  double busyUntil_ = -1e300;  // when the last reply byte has gone out
  double blockBusyUntil_ = -1e300;  // when the last block byte has gone out
  int blockRequests_ = 0;
  int blocksAnswered_ = 0;
  int replies_ = 0;
  std::uint64_t noiseDraws_ = 0;
  std::vector<LineCommand> commands_;
};

}  // namespace quillet::sim
