// The serial control's behaviour over a byte transport: threshold events, input, output.
// (That an event fires once the bytes reach the threshold, every download shows.)
#include "link/comm_port.h"

#include <gtest/gtest.h>

#include "core/fault.h"
#include "support/fake_platform.h"

namespace quillet {
namespace {

struct Port {
  Port() : transport(sched), poster(sched), port(transport, poster) {
    port.InBufferSize = 32766;
    port.onComm = [this] { onEvent(); };
    port.SetPortOpen(true);
    port.SetRThreshold(1);
  }
  void Arrive(double atMs, const std::string& bytes) {
    transport.Inject(atMs, bytes);
    sched.RunUntil(atMs + 5);
  }
  testing::VirtualScheduler sched;
  testing::FakeTransport transport;
  testing::FakePoster poster;
  CommPort port;
  std::function<void()> onEvent = [] {};
};

TEST(CommPort, TheEventIsPostedNeverReenteredAndAFlushBeforeItRunsCancelsIt) {
  Port p;
  int depth = 0, deepest = 0;
  p.onEvent = [&] {
    deepest = std::max(deepest, ++depth);
    p.transport.Inject(p.sched.now_ms(), "x");  // more input while the event runs
    p.sched.RunReady();
    --depth;
  };
  p.Arrive(1, "a");
  EXPECT_EQ(deepest, 1);

  Port q;
  int events = 0;
  q.onEvent = [&events] { ++events; };
  q.transport.Inject(1, "a");
  q.sched.At(1, [&] { q.port.Input(); });  // the flush comes first at the same moment
  q.sched.RunFor(5);
  EXPECT_EQ(events, 0);
}

TEST(CommPort, AnAcknowledgeReadTogetherWithItsPayloadStillFiresItsOwnEventFirst) {
  Port p;
  std::vector<std::string> reads;
  p.onEvent = [&] {
    reads.push_back(p.port.Input());
    if (reads.size() == 1) p.port.SetRThreshold(2);
  };
  p.Arrive(1, std::string("\x04\x10\x20", 3));  // one read of the operating system
  EXPECT_EQ(reads, (std::vector<std::string>{"\x04", "\x10\x20"}));
}

TEST(CommPort, OutputSettingsAndTheBufferLimit) {
  Port p;
  p.port.Output(std::string{'\0', 'D'});
  ASSERT_EQ(p.transport.written.size(), 1u);
  EXPECT_EQ(p.transport.written[0].bytes, std::string("\0D", 2));  // the zero byte unharmed
  p.port.SetSettings("4800,N,8,2");
  EXPECT_EQ(std::tuple(p.transport.baud, p.transport.stopBits), std::tuple(4800, 2));
  EXPECT_THROW(p.port.SetSettings("fast"), Fault);
  EXPECT_EQ(p.port.Settings(), "4800,N,8,2");
  p.port.SetRThreshold(0);
  p.port.InBufferSize = 4;
  p.Arrive(1, "abcdefg");
  EXPECT_EQ(p.port.InBufferCount(), 4);
  p.port.SetPortOpen(false);
  EXPECT_EQ(testing::FaultOf([&] { p.port.Output("x"); }), 8018);
}

}  // namespace
}  // namespace quillet
