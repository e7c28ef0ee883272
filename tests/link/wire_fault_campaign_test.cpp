// Seeded downloads from the emulated logger in virtual time, each with one fault on the
// wire: silence, a block cut short, noise ahead of a reply, a byte dropped or doubled, the
// logger unplugged and plugged back, the logger switched to the other speed, a live reply
// arriving just after a header request. Every run must end with a record that is the
// logger's own, byte for byte of its header and block, or still be working and finish
// once the fault has cleared. A record with other bytes is wrong; a download that never
// finishes is stuck.
//
// QUILLET_FAULT_RUNS=1000 runs a longer campaign than the default; QUILLET_FAULT_SEED
// starts it at another seed (to look at one run again).
//
// What the link does about them:
// - A header cut short leaves its phase waiting for 22 bytes; the watchdog's end of a
//   header attempt clears it, so the next "R" goes out.
// - A live reading cut short after its 0x04 is cleared the same way when the watchdog
//   gives up the live poll.
// - During a download the header's own silence decides that the logger is at the other
//   speed (the download's tick never lets the live poll run long enough to decide).
// - A header request waits until the last live request's reply has had time to land, so
//   that reply is flushed and not read as the header's.
// - Twenty header requests without an answer end in the loss message and the port
//   dialog, as the link has always done; the user here picks the port again and the
//   download carries on. Those runs are counted as "asked".
//
// Sequences the wire cannot show, having no checksum and no length, are kept as they are
// and counted apart ("unseen"): a byte lost or doubled inside the first 22 bytes of a
// header or inside the announced length of a block, where the reply still reaches the
// awaited length (a two-byte logger sends bytes beyond its 22; a logger sends the samples
// it took since its header beyond the announced block). Noise never holds the
// acknowledge byte 0x04: one that does is an acknowledge as far as any reader can tell.
// Such a garbled header can also fault in its decoding, which ends the window program
// with the run-time error report, as a fault of the header decoding always has; those
// runs are counted as "ended".
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "link/link_supervision.h"
#include "link/timeset.h"
#include "support/emulated_logger.h"

namespace quillet {
namespace {

using testing::AppOptions;
using testing::EmulatedLoggerApp;
using testing::TimedReply;

enum class FaultKind { Silence, CutBlock, Noise, DropByte, DoubleByte, Vanish, SpeedChange, LiveRace, kCount };

const char* Name(FaultKind k) {
  switch (k) {
    case FaultKind::Silence: return "silence";
    case FaultKind::CutBlock: return "block cut";
    case FaultKind::Noise: return "noise before a reply";
    case FaultKind::DropByte: return "byte dropped";
    case FaultKind::DoubleByte: return "byte doubled";
    case FaultKind::Vanish: return "logger unplugged";
    case FaultKind::SpeedChange: return "logger speed changed";
    case FaultKind::LiveRace: return "live reply racing a header request";
    default: return "?";
  }
}

struct Plan {
  FaultKind kind;
  int model, baud;
  double elapsed;       // seconds the logger has been recording
  double startAfter;    // seconds after the download is asked for
  double span;          // silence and unplugging: how long
  int reply;            // byte faults: which reply from the start on (0 = the first)
  double where;         // byte faults: where in the reply, 0..1
  int count;            // noise: how many bytes
  std::string Describe() const {
    std::ostringstream o;
    o << Name(kind) << ", model " << model << " at " << baud << " bit/s, " << elapsed << " s recorded, from "
      << startAfter << " s";
    if (kind == FaultKind::Silence || kind == FaultKind::Vanish) o << " for " << span << " s";
    if (kind == FaultKind::CutBlock || kind == FaultKind::DropByte || kind == FaultKind::DoubleByte ||
        kind == FaultKind::Noise)
      o << ", reply " << reply << " at " << where;
    return o.str();
  }
};

Plan Draw(std::uint32_t seed) {
  std::mt19937 g(seed);
  auto uniform = [&g](double a, double b) { return std::uniform_real_distribution<double>(a, b)(g); };
  const int models[] = {17, 18, 19, 64, 65, 66};
  Plan p{};
  p.kind = static_cast<FaultKind>(seed % static_cast<unsigned>(FaultKind::kCount));
  p.model = models[std::uniform_int_distribution<int>(0, 5)(g)];
  p.baud = g() % 2 ? 1200 : 4800;
  p.startAfter = uniform(0, 6);
  p.span = p.kind == FaultKind::Vanish ? uniform(12, 180) : uniform(0.3, 25);
  // The logger stays under its first half fill (1024 samples of one byte, 512 of two)
  // until the download is over: the block is then its stored samples in time order, the
  // same at the header and at the block request.
  const double halfFill = (p.model >= 64 ? 512 : 1024) * 0.87890625;
  const bool spans = p.kind == FaultKind::Vanish || p.kind == FaultKind::Silence;
  p.elapsed = uniform(60, halfFill - 60 - (spans ? p.span : 0) - p.startAfter);
  p.reply = std::uniform_int_distribution<int>(0, 3)(g);
  p.where = uniform(0, 1);
  p.count = std::uniform_int_distribution<int>(1, 12)(g);
  return p;
}

// What the logger held when it answered one header request.
struct Answer {
  std::string header;  // the 22 bytes
  std::string block;   // the block as it would have sent it then
};

struct Outcome {
  bool complete = false, right = false, askedUser = false;
  bool unseen = false;  // a byte fault the wire cannot show (see Wire)
  bool ended = false;   // the program ended on a fault of the header decoding
  std::string why;
};

class Campaign {
 public:
  explicit Campaign(const Plan& plan) : plan_(plan), t_(Config(plan), Options(plan)) {
    auto inner = t_.transport.peer;
    t_.transport.peer = [this, inner](const std::string& bytes, double now, int baud, int stop) {
      return Wire(inner, bytes, now, baud, stop);
    };
    t_.app->onHeaderReply = [this](const std::string& reply) { decoded_ = reply.substr(0, 22); };
    t_.app->onRecordComplete = [this] { ++records_; };
    // A user who finds the port dialog after the loss message picks COM 1 again.
    t_.ui.onModal = [this](DialogId d) {
      App& app = *t_.app;
      if (d == DialogId::frmPort) {
        askedUser_ = true;
        FrmPortChoose(app, 1);
        ChoosePort(app);
      } else if (d == DialogId::frmTimeset) {
        SetClock(app);
      }
    };
  }

  Outcome Run() {
    t_.Connect();
    const int before = records_;
    start_ = t_.sched.now_ms() / 1000.0;
    if (plan_.kind == FaultKind::LiveRace) {
      // The download is asked for just as a live request has gone out.
      const std::size_t polls = t_.Count('D');
      for (int i = 0; i < 400 && t_.Count('D') == polls; ++i) t_.Run(5);
    }
    t_.Do(StartDownload);
    if (plan_.kind == FaultKind::SpeedChange) {
      t_.sched.At((start_ + plan_.startAfter) * 1000.0, [this] { t_.line.SetBaud(plan_.baud == 1200 ? 4800 : 1200); });
    }
    // The fault has cleared by the end of its span; from there the download has fifteen
    // minutes: a block of this size takes well under one, but a garbled header may have
    // announced a block as long as the receive buffer, which is waited for in full.
    const double clears = start_ + plan_.startAfter + plan_.span;
    Outcome o;
    while (t_.sched.now_ms() / 1000.0 < clears + 900 && t_.ui.fatal.empty()) {
      t_.Run(500);
      if (records_ > before) break;
    }
    o.askedUser = askedUser_;
    o.complete = records_ > before;
    o.ended = !t_.ui.fatal.empty();
    o.unseen = unseen_;
    if (!o.complete) {
      const LinkState& L = t_.s().link;
      std::ostringstream why;
      why << "no record: LinkMode " << L.LinkMode.Value() << ", phases " << L.HeaderPhase << "/" << L.BlockPhase << "/"
          << L.LivePhase << ", DownloadActive " << L.DownloadActive << ", HeaderRead " << L.HeaderRead
          << ", LoggerSeen " << L.LoggerSeen << ", PortChosen " << L.PortChosen.Value() << ", baud "
          << t_.s().settings.BaudRate.Value() << ", model " << t_.s().logger.ModelCode.Value() << ", "
          << t_.ui.messages.size() << " messages" << (t_.ui.messages.empty() ? "" : ", last: ")
          << (t_.ui.messages.empty() ? "" : t_.ui.messages.back().text) << ", " << t_.ui.fatal.size() << " fatal";
      o.why = why.str();
      return o;
    }
    o.right = Check(o.why);
    return o;
  }

 private:
  static sim::LoggerConfig Config(const Plan& p) {
    sim::LoggerConfig c;
    c.modelCode = p.model;
    c.serial = 4000 + p.model;
    c.baud = p.baud;
    c.elapsedAtStart = p.elapsed;
    c.signal.kind = sim::SignalKind::Sine;
    c.signal.level = p.model >= 64 ? 150 : (p.model == 17 ? 22 : 60);
    c.signal.amplitude = p.model >= 64 ? 40 : 10;
    c.signal.periodSeconds = 400;
    return c;
  }
  static AppOptions Options(const Plan& p) {
    AppOptions o;
    o.appBaud = p.baud;
    return o;
  }

  bool Active(double now) const {
    const double from = start_ + plan_.startAfter;
    return now >= from && now < from + plan_.span;
  }

  std::vector<TimedReply> Wire(const std::function<std::vector<TimedReply>(const std::string&, double, int, int)>& inner,
                               const std::string& bytes, double now, int baud, int stop) {
    const bool unheard = (plan_.kind == FaultKind::Silence || plan_.kind == FaultKind::Vanish) && start_ > 0 &&
                         Active(now);
    if (unheard) return {};
    std::vector<TimedReply> out = inner(bytes, now, baud, stop);
    const std::size_t commands = t_.line.Commands().size();
    for (std::size_t i = heard_; i < commands; ++i) {
      const sim::LineCommand& c = t_.line.Commands()[i];
      if (c.letter == 'R' && c.answered) {
        const std::vector<std::uint8_t> h = t_.fw().Header();
        const std::vector<std::uint8_t> b = t_.fw().Block();
        answers_.push_back({std::string(h.begin(), h.begin() + 22), std::string(b.begin(), b.end())});
      }
    }
    heard_ = commands;
    if (start_ <= 0) return out;
    // Bytes that would arrive during a silence are lost.
    if (plan_.kind == FaultKind::Silence || plan_.kind == FaultKind::Vanish) {
      std::vector<TimedReply> kept;
      for (const TimedReply& r : out) {
        if (!Active(r.atSeconds)) kept.push_back(r);
      }
      return kept;
    }
    const char letter = bytes.size() >= 2 ? bytes.back() : 0;
    if (plan_.kind == FaultKind::LiveRace && start_ > 0) {
      // The logger is slow with its live replies for a while (up to 200 ms, within the
      // poll's cadence), so one is on the wire when the download takes the link.
      if (letter == 'D' && now < start_ + 3) {
        for (TimedReply& r : out) r.atSeconds += 0.02 + 0.18 * plan_.where;
        // The download's tick comes while that reply is on its way.
        if (!done_) {
          done_ = true;
          t_.sched.At(now * 1000.0 + 5, [this] { t_.Do(OnDownloadTick); });
        }
      }
      return out;
    }
    if (out.empty() || now < start_ + plan_.startAfter) return out;
    switch (plan_.kind) {
      case FaultKind::CutBlock:
        if (letter == 'T' && !done_) {
          done_ = true;
          out.resize(1 + static_cast<std::size_t>(plan_.where * static_cast<double>(out.size() - 1)));
        }
        return out;
      default: break;
    }
    if (done_ || replies_++ < plan_.reply) return out;
    done_ = true;
    const std::size_t at = static_cast<std::size_t>(plan_.where * static_cast<double>(out.size() - 1));
    // Where the reply still reaches the length the program waits for, a byte lost or
    // doubled ahead of that length cannot be seen on a wire without a checksum.
    const std::size_t awaited =
        1 + (letter == 'T' ? static_cast<std::size_t>(t_.s().logger.BlockBytes.Value()) : letter == 'R' ? 22 : 2);
    const std::size_t after = out.size() + (plan_.kind == FaultKind::DoubleByte ? 1 : 0) -
                              (plan_.kind == FaultKind::DropByte ? 1 : 0);
    unseen_ = (letter == 'T' || letter == 'R') && at >= 1 && at < awaited && after >= awaited &&
              (plan_.kind == FaultKind::DropByte || plan_.kind == FaultKind::DoubleByte);
    std::mt19937 g(static_cast<std::uint32_t>(out.size() * 7919 + at));
    switch (plan_.kind) {
      case FaultKind::Noise: {
        std::vector<TimedReply> noise;
        for (int i = 0; i < plan_.count; ++i) {
          std::uint8_t b = static_cast<std::uint8_t>(g());
          if (b == 0x04) b = 0x05;
          noise.push_back({out.front().atSeconds - 1e-4 * (plan_.count - i), b});
        }
        out.insert(out.begin(), noise.begin(), noise.end());
        break;
      }
      case FaultKind::DropByte: out.erase(out.begin() + static_cast<std::ptrdiff_t>(at)); break;
      case FaultKind::DoubleByte: {
        TimedReply twin = out[at];
        twin.atSeconds += 1e-6;
        out.insert(out.begin() + static_cast<std::ptrdiff_t>(at) + 1, twin);
        break;
      }
      default: break;
    }
    return out;
  }

  // The record must come from a header the logger really sent, with the block the logger
  // held at that header, byte for byte, and every sample must have a value.
  bool Check(std::string& why) const {
    const SampleRecord& r = t_.app->s.record;
    std::string block = r.BlockData;
    if (block.size() >= 2) block.resize(block.size() - 2);
    for (const Answer& a : answers_) {
      if (a.header != decoded_) continue;
      if (a.block != block) {
        why = "the header is the logger's but the block differs (" + std::to_string(block.size()) + " bytes, want " +
              std::to_string(a.block.size()) + ")";
        return false;
      }
      const int n = static_cast<int>(r.RecordSampleCount.Value());
      if (static_cast<std::size_t>(n) * (plan_.model >= 64 ? 2 : 1) != block.size()) {
        why = "sample count " + std::to_string(n) + " for " + std::to_string(block.size()) + " bytes";
        return false;
      }
      for (int i = 1; i <= n; ++i) {
        if (r.FullValues[i].IsEmpty()) {
          why = "sample " + std::to_string(i) + " has no value";
          return false;
        }
      }
      return true;
    }
    why = "the decoded header is none the logger sent";
    return false;
  }

  Plan plan_;
  EmulatedLoggerApp t_;
  double start_ = 0;
  std::size_t heard_ = 0;
  int replies_ = 0;
  bool done_ = false;
  bool askedUser_ = false;
  bool unseen_ = false;
  int records_ = 0;
  std::string decoded_;
  std::vector<Answer> answers_;
};

// A header cut short (its last byte lost) leaves the header phase waiting for bytes that
// never come. The next header request must still go out at the same speed: a download
// asked for afterwards completes without the link giving up the logger's speed.
TEST(CutHeader, TheNextHeaderRequestGoesOutAndTheDownloadCompletesAtTheSameSpeed) {
  sim::LoggerConfig c;
  c.modelCode = 17;
  c.elapsedAtStart = 400;
  EmulatedLoggerApp t(c);
  auto inner = t.transport.peer;
  bool cut = false;
  t.transport.peer = [&](const std::string& bytes, double now, int baud, int stop) {
    auto out = inner(bytes, now, baud, stop);
    if (!cut && bytes.size() >= 2 && bytes.back() == 'R' && !out.empty()) {
      cut = true;
      out.pop_back();
    }
    return out;
  };
  t.Connect();
  ASSERT_TRUE(cut);
  EXPECT_NE(t.s().link.HeaderRead, 1);
  ASSERT_TRUE(t.Download(30000));
  EXPECT_EQ(t.s().settings.BaudRate.Value(), 1200);
  EXPECT_FALSE(t.w().Label35.visible);
  EXPECT_GT(t.s().record.RecordSampleCount.Value(), 300);
}

int Runs() {
  const char* env = std::getenv("QUILLET_FAULT_RUNS");
  const int n = env ? std::atoi(env) : 0;
  return n > 0 ? n : 96;
}

TEST(WireFaultCampaign, EveryDownloadGivesTheLoggersOwnRecordOnceTheFaultHasCleared) {
  const int runs = Runs();
  // right, wrong, stuck, asked the user, wrong from a byte fault the wire cannot show,
  // ended by a fault of the header decoding
  std::map<std::string, std::vector<int>> byKind;
  int right = 0, wrong = 0, stuck = 0, asked = 0, unseen = 0, ended = 0;
  const char* one = std::getenv("QUILLET_FAULT_SEED");  // to look at one run again
  const int first = one ? std::atoi(one) : 1;
  for (int seed = first; seed < first + runs; ++seed) {
    const Plan plan = Draw(static_cast<std::uint32_t>(seed));
    Campaign c(plan);
    const Outcome o = c.Run();
    auto& k = byKind[Name(plan.kind)];
    k.resize(6);
    if (o.askedUser) ++asked, ++k[3];
    if (!o.complete && o.ended && o.unseen) {
      ++ended, ++k[5];
    } else if (!o.complete) {
      ++stuck, ++k[2];
      ADD_FAILURE() << "seed " << seed << " (" << plan.Describe() << "): " << o.why;
    } else if (!o.right && o.unseen) {
      ++unseen, ++k[4];
    } else if (!o.right) {
      ++wrong, ++k[1];
      ADD_FAILURE() << "seed " << seed << " (" << plan.Describe() << "): wrong record: " << o.why;
    } else {
      ++right, ++k[0];
    }
  }
  std::printf(
      "fault campaign: %d runs, %d right, %d wrong, %d stuck; %d wrong from a byte lost or doubled inside the "
      "awaited length (no checksum on the wire); %d ended by a garbled header's fault; %d went through the port "
      "dialog\n",
      runs, right, wrong, stuck, unseen, ended, asked);
  for (const auto& [name, k] : byKind) {
    std::printf("  %-36s right %4d  wrong %3d  stuck %3d  unseen %3d  ended %3d  asked %3d\n", name.c_str(), k[0],
                k[1], k[2], k[4], k[5], k[3]);
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(stuck, 0);
}

}  // namespace
}  // namespace quillet
