#include "sim/firmware/logger_line.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sim/firmware/signal.h"

namespace quillet::sim {
namespace {

constexpr std::uint8_t kCommandLead = 0x00;
constexpr std::uint8_t kAck = 0x04;
constexpr double kBitsPerByte = 11.0;  // start, 8 data, 2 stop

}  // namespace

LoggerLine::LoggerLine(LoggerConfig config, double startTime)
    : config_(std::move(config)), startTime_(startTime), firmware_(config_) {}

bool LoggerLine::SilentAt(double now) const {
  const Faults& f = config_.faults;
  if (f.silentAfter < 0.0) return false;
  const double from = startTime_ + f.silentAfter;
  if (now < from) return false;
  if (f.silentEvery > 0.0) return std::fmod(now - from, f.silentEvery) < f.silentFor;
  return now < from + f.silentFor;
}

std::vector<TimedByte> LoggerLine::Receive(const std::vector<std::uint8_t>& bytes, double now, int appBaud,
                                           int /*appStopBits*/) {
  std::vector<TimedByte> out;
  firmware_.AdvanceTo(LoggerSeconds(now));
  if (bytes.empty()) return out;
  if (SilentAt(now) || appBaud != config_.baud) {
    armed_ = false;  // nothing heard, or only framing errors
    return out;
  }
  for (std::uint8_t b : bytes) {
    if (!armed_) {
      armed_ = b == kCommandLead;
    } else if (b != kCommandLead) {
      armed_ = false;
      Answer(static_cast<char>(b), now, out);
    }
  }
  return out;
}

void LoggerLine::Answer(char letter, double now, std::vector<TimedByte>& out) {
  LineCommand heard{now, letter, true, 0};
  // While the memory block goes out the logger's one loop does nothing else: a command
  // that comes in meanwhile is not taken up, so no stale answers queue behind a block.
  // Short replies leave time for the next command to wait in the receiver.
  if (now < blockBusyUntil_ && (letter == 'D' || letter == 'R' || letter == 'T' || letter == 'H' || letter == 'L')) {
    heard.answered = false;
    commands_.push_back(heard);
    return;
  }
  std::vector<std::uint8_t> payload;
  switch (letter) {
    case 'D': {
      const auto reading = firmware_.LiveReading();
      payload.assign(reading.begin(), reading.end());
      break;
    }
    case 'R':
      payload = firmware_.Header();
      break;
    case 'T': {
      const Faults& f = config_.faults;
      if (++blockRequests_ <= f.ignoreBlocks) {
        heard.answered = false;
        commands_.push_back(heard);
        return;
      }
      payload = firmware_.Block();
      ++blocksAnswered_;
      if (f.cutBlockTo >= 0 && (f.cutBlocks < 0 || blocksAnswered_ <= f.cutBlocks))
        payload.resize(std::min(payload.size(), static_cast<std::size_t>(f.cutBlockTo)));
      break;
    }
    case 'H':
    case 'L':
      firmware_.Calibrate(letter);
      break;
    default:
      return;  // not a command of this logger
  }
  heard.payloadBytes = payload.size();
  commands_.push_back(heard);
  Send(payload, now, out);
  if (letter == 'T') blockBusyUntil_ = busyUntil_;
}

void LoggerLine::Send(const std::vector<std::uint8_t>& payload, double now, std::vector<TimedByte>& out) {
  const double byteTime = kBitsPerByte / config_.baud;
  double t = std::max(now + config_.turnaround, busyUntil_);
  auto emit = [&](std::uint8_t b) {
    t += byteTime;
    if (!SilentAt(t)) out.push_back({t, b});
  };
  const Faults& f = config_.faults;
  if (f.noisyReplies < 0 || replies_ < f.noisyReplies) {
    for (int i = 0; i < f.noiseBeforeReply; ++i) {
      auto b = static_cast<std::uint8_t>(Mix64(config_.signal.seed ^ (0xA5A5ull << 32) ^ noiseDraws_++));
      emit(b == kAck ? static_cast<std::uint8_t>(~kAck) : b);
    }
  }
  emit(kAck);
  if (!payload.empty()) t += config_.pauseAfterAck;
  for (std::uint8_t b : payload) emit(b);
  busyUntil_ = t;
  ++replies_;
}

}  // namespace quillet::sim
