#include "sim/firmware/logger_pty.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

namespace quillet::sim {
namespace {

// Reads up to `want` bytes, waiting at most `seconds` in all.
std::vector<std::uint8_t> ReadFor(int fd, std::size_t want, double seconds) {
  std::vector<std::uint8_t> got;
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (got.size() < want && std::chrono::steady_clock::now() < end) {
    pollfd pfd{fd, POLLIN, 0};
    if (poll(&pfd, 1, 20) <= 0) continue;
    std::uint8_t buf[64];
    const ssize_t n = read(fd, buf, sizeof buf);
    if (n > 0) got.insert(got.end(), buf, buf + n);
  }
  return got;
}

void SetSpeed(int fd, speed_t speed) {
  termios tio{};
  ASSERT_EQ(tcgetattr(fd, &tio), 0);
  cfmakeraw(&tio);
  tio.c_cflag |= CSTOPB | CLOCAL | CREAD;
  cfsetispeed(&tio, speed);
  cfsetospeed(&tio, speed);
  ASSERT_EQ(tcsetattr(fd, TCSANOW, &tio), 0);
}

TEST(LoggerPty, AnApplicationOnTheSlaveGetsALiveReadingOnlyAtTheLoggersSpeed) {
  LoggerConfig c;
  c.baud = 4800;
  c.pauseAfterAck = 0.0;
  LoggerPty pty(c);
  std::atomic<bool> stop{false};
  std::thread server([&] { pty.Serve(stop); });

  const int fd = open(pty.SlavePath().c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(fd, 0) << pty.SlavePath();
  const std::uint8_t command[] = {0x00, 'D'};

  SetSpeed(fd, B1200);
  ASSERT_EQ(write(fd, command, 2), 2);
  EXPECT_TRUE(ReadFor(fd, 3, 0.3).empty());

  SetSpeed(fd, B4800);
  ASSERT_EQ(write(fd, command, 2), 2);
  const auto reply = ReadFor(fd, 3, 2.0);
  ASSERT_EQ(reply.size(), 3u);
  EXPECT_EQ(reply[0], 0x04);

  close(fd);
  stop = true;
  server.join();
}

}  // namespace
}  // namespace quillet::sim
