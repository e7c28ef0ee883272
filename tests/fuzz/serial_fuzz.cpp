// The serial receive path through the whole program with the link running: the live
// polls, the header, a download's block and the watchdog, in virtual time. The input is a
// script: each request the program writes is answered by the next piece of it (silence,
// one burst, bytes spread at the line's speed, or an acknowledge with bytes after it, each
// after a delay the script gives), and between the answers the script lets time pass,
// sends bytes nobody asked for, or asks for a download as the menu does.
// After every step: nothing escaped the dispatcher as an internal error, LinkMode is 0 to
// 3, and the receive threshold lies within the receive buffer. At every request: it is the
// one its mode asks for, and no header request goes out while a live reply may still be
// on the wire.
#include <cstddef>
#include <cstdint>

#include "fuzz_support.h"
#include "link/download.h"
#include "link/link_supervision.h"

namespace {

struct Script {
  const std::uint8_t* p;
  std::size_t n;
  bool Empty() const { return n == 0; }
  std::uint8_t Byte() {
    if (n == 0) return 0;
    --n;
    return *p++;
  }
  std::string Bytes(std::size_t len) {
    len = std::min(len, n);
    std::string s(reinterpret_cast<const char*>(p), len);
    p += len;
    n -= len;
    return s;
  }
};

void CheckInvariants(quillet::App& app, const quillet::testing::ScriptedUi& ui) {
  using namespace quillet;
  fuzz::CheckNoInternalError(ui);
  const double mode = app.s.link.LinkMode.Value();
  if (!(mode >= 0 && mode <= 3 && mode == static_cast<int>(mode))) fuzz::Broken("LinkMode out of 0..3");
  const int threshold = app.port.RThreshold();
  if (threshold < 0 || threshold > kReceiveBufferLimit) fuzz::Broken("RThreshold outside the buffer");
}

// A request never overlaps a reply: "D" only in live mode, "R" only for the header and
// never inside a live reply's window, "T" only for the block.
void CheckRequest(const quillet::App& app, const std::string& bytes) {
  using namespace quillet;
  if (bytes.size() != 2 || bytes[0] != '\0') return;  // the clock's setting frame and the like
  const LinkState& L = app.s.link;
  const double mode = L.LinkMode.Value();
  if (bytes[1] == 'D' && mode != kModeLive) fuzz::Broken("a live request outside live mode");
  if (bytes[1] == 'T' && mode != kModeBlock) fuzz::Broken("a block request outside block mode");
  if (bytes[1] != 'R') return;
  if (mode != kModeHeader) fuzz::Broken("a header request outside header mode");
  const double sinceLive = (Now(app) - L.LiveRequestAt) * 86400.0;
  if (L.LiveRequestAt >= 0 && sinceLive >= 0 && sinceLive < kLiveReplyWindowSeconds - 1e-6)
    fuzz::Broken("a header request while a live reply may be on the wire");
}

}  // namespace

QUILLET_FUZZ_TARGET(serial) {
  using namespace quillet;
  Script script{data, size};
  fuzz::StartedApp t;
  App& app = *t.app;  // the peer below checks each request against it
  t.transport.peer = [&script, &app](const std::string& written, double nowSeconds, int baud, int stopBits) {
    CheckRequest(app, written);
    std::vector<testing::TimedReply> reply;
    const std::uint8_t how = script.Byte();
    const double delay = (how >> 2) * 0.02;  // 0 to 1.26 s
    if ((how & 3) == 0) return reply;        // silence
    const std::string bytes =
        (how & 3) == 3 ? "\x04" + script.Bytes(script.Byte() * 2) : script.Bytes(script.Byte());
    const double byteTime = (how & 3) == 2 ? (9.0 + stopBits) / (baud > 0 ? baud : 1200) : 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      reply.push_back({nowSeconds + delay + byteTime * i, static_cast<std::uint8_t>(bytes[i])});
    }
    return reply;
  };
  while (!script.Empty() && !app.ended) {
    const std::uint8_t step = script.Byte();
    switch (step >> 6) {
      case 0: t.Run((step & 63) * 25.0); break;
      case 1: t.transport.Inject(t.sched.now_ms() + (step & 63), script.Bytes(script.Byte() & 31)); break;
      case 2: t.Do([&app] { StartDownload(app); }); break;
      case 3: t.Run((step & 63) * 1000.0); break;
    }
    CheckInvariants(app, t.ui);
  }
  // The script is spent: the line falls silent, and the watchdog has its say.
  script.n = 0;
  if (!app.ended) t.Run(20000);
  CheckInvariants(app, t.ui);
  return 0;
}
