#include "sim/firmware/logger_pty.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <vector>

namespace quillet::sim {
namespace {

constexpr double kLongestWait = 0.1;  // seconds: how often the stop flag is looked at
constexpr std::size_t kReadChunk = 256;

std::runtime_error SystemError(const std::string& what) {
  return std::runtime_error(what + ": " + std::strerror(errno));
}

double MonotonicSeconds() {
  timespec ts{};
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

speed_t SpeedOfBaud(int baud) { return baud == 4800 ? B4800 : B1200; }

std::string Hex(const std::vector<std::uint8_t>& bytes, std::size_t most) {
  std::string s;
  char buf[4];
  for (std::size_t i = 0; i < bytes.size() && i < most; ++i) {
    std::snprintf(buf, sizeof buf, "%02X", bytes[i]);
    if (!s.empty()) s += ' ';
    s += buf;
  }
  if (bytes.size() > most) s += " ...";
  return s;
}

}  // namespace

int BaudOfSpeed(unsigned speed) {
  struct Pair {
    speed_t speed;
    int baud;
  };
  static const Pair kSpeeds[] = {{B300, 300},     {B600, 600},      {B1200, 1200},   {B2400, 2400},
                                 {B4800, 4800},   {B9600, 9600},    {B19200, 19200}, {B38400, 38400},
                                 {B57600, 57600}, {B115200, 115200}};
  for (const Pair& p : kSpeeds)
    if (p.speed == speed) return p.baud;
  return 0;
}

LoggerPty::LoggerPty(LoggerConfig config) : clockZero_(MonotonicSeconds()), line_(std::move(config), 0.0) {
  master_ = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master_ < 0) throw SystemError("cannot open a pseudo-terminal");
  if (grantpt(master_) != 0 || unlockpt(master_) != 0) {
    auto error = SystemError("cannot unlock the pseudo-terminal");
    close(master_);
    throw error;
  }
  const char* name = ptsname(master_);
  if (name == nullptr) {
    auto error = SystemError("cannot name the pseudo-terminal");
    close(master_);
    throw error;
  }
  slavePath_ = name;
  slave_ = open(slavePath_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (slave_ < 0) {
    auto error = SystemError("cannot open " + slavePath_);
    close(master_);
    throw error;
  }
  // A fresh terminal echoes and translates line ends: make it a plain 8N2 line at once.
  termios tio{};
  tcgetattr(slave_, &tio);
  cfmakeraw(&tio);
  tio.c_cflag |= CLOCAL | CREAD | CSTOPB;
  cfsetispeed(&tio, SpeedOfBaud(line_.config().baud));
  cfsetospeed(&tio, SpeedOfBaud(line_.config().baud));
  if (tcsetattr(slave_, TCSANOW, &tio) != 0) {
    auto error = SystemError("cannot set " + slavePath_ + " raw");
    close(slave_);
    close(master_);
    throw error;
  }
  fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
}

LoggerPty::~LoggerPty() {
  if (slave_ >= 0) close(slave_);
  if (master_ >= 0) close(master_);
}

double LoggerPty::Now() const { return MonotonicSeconds() - clockZero_; }

void LoggerPty::Serve(const std::atomic<bool>& stop) {
  std::deque<TimedByte> pending;
  std::size_t commandsLogged = line_.Commands().size();
  while (!stop.load()) {
    // Put out every byte whose time has come; a byte nobody can take is lost, as on a wire.
    double now = Now();
    std::vector<std::uint8_t> due;
    while (!pending.empty() && pending.front().at <= now) {
      due.push_back(pending.front().byte);
      pending.pop_front();
    }
    if (!due.empty()) {
      const ssize_t written = write(master_, due.data(), due.size());
      if (written < static_cast<ssize_t>(due.size()) && log)
        log(std::to_string(due.size() - std::max<ssize_t>(written, 0)) + " reply bytes lost: nobody reading");
    }

    double wait = kLongestWait;
    if (!pending.empty()) wait = std::clamp(pending.front().at - now, 0.0, kLongestWait);
    timespec timeout{};
    timeout.tv_sec = static_cast<time_t>(wait);
    timeout.tv_nsec = static_cast<long>((wait - std::floor(wait)) * 1e9);
    pollfd pfd{master_, POLLIN, 0};
    const int ready = ppoll(&pfd, 1, &timeout, nullptr);
    if (ready < 0) {
      if (errno == EINTR) continue;
      throw SystemError("waiting on " + slavePath_);
    }
    if (ready == 0) continue;
    if ((pfd.revents & POLLIN) == 0) {
      // Hang-up or error with nothing to read: should not happen while we hold the slave.
      timespec nap{0, 50'000'000};
      nanosleep(&nap, nullptr);
      continue;
    }
    std::uint8_t buf[kReadChunk];
    const ssize_t n = read(master_, buf, sizeof buf);
    if (n < 0) {
      if (errno == EAGAIN || errno == EINTR || errno == EIO) continue;
      throw SystemError("reading " + slavePath_);
    }
    if (n == 0) continue;

    // The application's line settings, as it set them on its end of the terminal.
    termios tio{};
    int baud = 0;
    int stopBits = 2;
    if (tcgetattr(master_, &tio) == 0) {
      baud = BaudOfSpeed(cfgetospeed(&tio));
      stopBits = (tio.c_cflag & CSTOPB) ? 2 : 1;
    }
    const std::vector<std::uint8_t> bytes(buf, buf + n);
    now = Now();
    const std::vector<TimedByte> reply = line_.Receive(bytes, now, baud, stopBits);
    pending.insert(pending.end(), reply.begin(), reply.end());

    if (!log) continue;
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%.3f s: ", now);
    if (line_.SilentAt(now)) {
      log(std::string(stamp) + "heard " + Hex(bytes, 16) + " while silent: ignored");
      continue;
    }
    if (baud != line_.config().baud) {
      log(std::string(stamp) + "heard " + Hex(bytes, 16) + " at " + std::to_string(baud) +
          " bit/s, logger runs at " + std::to_string(line_.config().baud) + ": ignored");
      continue;
    }
    const auto& commands = line_.Commands();
    for (; commandsLogged < commands.size(); ++commandsLogged) {
      const LineCommand& c = commands[commandsLogged];
      std::string text = std::string(stamp) + "command " + c.letter;
      text += c.answered ? ", reply 0x04 + " + std::to_string(c.payloadBytes) + " bytes" : ", not answered";
      log(text);
    }
  }
}

}  // namespace quillet::sim
