// Seeded downloads from the emulated logger in virtual time, each with one fault on the
// wire. Every run must end with a record that is the logger's own, byte for byte of its
// header and block (else "wrong"), once the fault has cleared (else "stuck").
// QUILLET_FAULT_RUNS=1000 runs a longer campaign; QUILLET_FAULT_SEED starts at another seed.
// Twenty unanswered header requests end in the loss message and the port dialog, where the
// user here picks the port again ("asked").
//
// Counted apart ("unseen"), having no checksum or length on the wire to show them: a byte
// lost or doubled inside the awaited length of a header or block while the reply still
// reaches it (a two-byte logger sends bytes beyond its 22; a logger sends the samples it
// took since its header beyond the block). Such a garbled header may fault in its decoding,
// which ends the window program ("ended"). Noise never holds the acknowledge 0x04.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <map>
#include <random>

#include "link/link_supervision.h"
#include "link/scenario.h"
#include "link/timeset.h"

namespace quillet {
namespace {

using testing::TimedReply;

enum FaultKind { Silence, CutBlock, Noise, DropByte, DoubleByte, Vanish, SpeedChange, LiveRace, kCount };
const char* const kKindNames[] = {
    "silence",      "block cut",        "noise before a reply", "byte dropped",
    "byte doubled", "logger unplugged", "logger speed changed", "live reply racing a header request"};

struct Plan {
  FaultKind kind;
  int model, baud;
  double elapsed;     // seconds the logger has been recording
  double startAfter;  // seconds after the download is asked for
  double span;        // silence and unplugging: how long
  int reply;          // byte faults: which reply from the start on (0 = the first)
  double where;       // byte faults: where in the reply, 0..1
  int count;          // noise: how many bytes
  bool Spans() const { return kind == FaultKind::Silence || kind == FaultKind::Vanish; }
};

Plan Draw(std::uint32_t seed) {
  std::mt19937 g(seed);
  auto uniform = [&g](double a, double b) { return std::uniform_real_distribution<double>(a, b)(g); };
  const int models[] = {17, 18, 19, 64, 65, 66};
  Plan p{};
  p.kind = static_cast<FaultKind>(seed % unsigned{kCount});
  p.model = models[std::uniform_int_distribution<int>(0, 5)(g)];
  p.baud = g() % 2 ? 1200 : 4800;
  p.startAfter = uniform(0, 6);
  p.span = p.kind == FaultKind::Vanish ? uniform(12, 180) : uniform(0.3, 25);
  // The logger stays under its first half fill until the download is over: the block is
  // then its stored samples in time order, the same at the header and at the block request.
  const double halfFill = (p.model >= 64 ? 512 : 1024) * 0.87890625;
  p.elapsed = uniform(60, halfFill - 60 - (p.Spans() ? p.span : 0) - p.startAfter);
  p.reply = std::uniform_int_distribution<int>(0, 3)(g);
  p.where = uniform(0, 1);
  p.count = std::uniform_int_distribution<int>(1, 12)(g);
  return p;
}

enum Result { kRight, kWrong, kStuck, kUnseen, kEnded };
const char* const kResultNames[] = {"right", "wrong", "stuck", "unseen", "ended"};

class Campaign {
 public:
  explicit Campaign(const Plan& plan) : plan_(plan), t_(Config(plan), testing::AtSpeed(plan.baud)) {
    auto inner = t_.transport.peer;
    t_.transport.peer = [this, inner](const std::string& bytes, double now, int baud, int stop) {
      // A logger silenced or unplugged hears nothing.
      if (plan_.Spans() && start_ > 0 && Active(now)) return std::vector<TimedReply>{};
      return Wire(inner(bytes, now, baud, stop), bytes, now);
    };
    t_.app->onHeaderReply = [this](const std::string& reply) { decoded_ = reply.substr(0, 22); };
    t_.app->onRecordComplete = [this] { ++records_; };
    // A user who finds the port dialog after the loss message picks COM 1 again.
    t_.ui.onModal = [this](DialogId d) {
      if (d == DialogId::frmPort) {
        asked = true;
        FrmPortChoose(*t_.app, 1);
        ChoosePort(*t_.app);
      } else if (d == DialogId::frmTimeset) {
        SetClock(*t_.app);
      }
    };
  }

  Result Run() {
    t_.Connect();
    start_ = t_.sched.now_ms() / 1000.0;
    if (plan_.kind == FaultKind::LiveRace) {  // asked for just as a live request has gone out
      const std::size_t polls = t_.Count('D');
      for (int i = 0; i < 400 && t_.Count('D') == polls; ++i) t_.Run(5);
    }
    t_.Do(StartDownload);
    if (plan_.kind == FaultKind::SpeedChange) {
      t_.sched.At((start_ + plan_.startAfter) * 1000.0,
                  [this] { t_.line.SetBaud(plan_.baud == 1200 ? 4800 : 1200); });
    }
    // From the end of the fault the download has fifteen minutes: a block of this size
    // takes well under one, but a garbled header may have announced a block as long as
    // the receive buffer, which is waited for in full.
    const double clears = start_ + plan_.startAfter + plan_.span;
    while (t_.sched.now_ms() / 1000.0 < clears + 900 && t_.ui.fatal.empty() && records_ == 0) t_.Run(500);
    if (records_ == 0) {
      why = "no record, link mode " + std::to_string(t_.s().link.LinkMode.Value());
      return !t_.ui.fatal.empty() && unseen_ ? kEnded : kStuck;
    }
    if (Right()) return kRight;
    return unseen_ ? kUnseen : kWrong;
  }

  bool asked = false;
  std::string why;

 private:
  static sim::LoggerConfig Config(const Plan& p) {
    sim::LoggerConfig c = testing::SteadyLogger(p.model, p.elapsed, 0, p.baud);
    c.serial = 4000 + p.model;
    c.signal = {sim::SignalKind::Sine, p.model >= 64 ? 150.0 : (p.model == 17 ? 22.0 : 60.0),
                p.model >= 64 ? 40.0 : 10.0, 400};
    return c;
  }

  bool Active(double now) const {
    const double from = start_ + plan_.startAfter;
    return now >= from && now < from + plan_.span;
  }

  std::vector<TimedReply> Wire(std::vector<TimedReply> out, const std::string& bytes, double now) {
    // What the logger held at each header it answered.
    for (; heard_ < t_.line.Commands().size(); ++heard_) {
      const sim::LineCommand& c = t_.line.Commands()[heard_];
      if (c.letter != 'R' || !c.answered) continue;
      const std::vector<std::uint8_t> h = t_.fw().Header(), b = t_.fw().Block();
      answers_.push_back({std::string(h.begin(), h.begin() + 22), std::string(b.begin(), b.end())});
    }
    if (start_ <= 0) return out;
    if (plan_.Spans()) {  // bytes that would arrive during a silence are lost
      std::erase_if(out, [this](const TimedReply& r) { return Active(r.atSeconds); });
      return out;
    }
    const char letter = bytes.size() >= 2 ? bytes.back() : 0;
    if (plan_.kind == FaultKind::LiveRace) {
      // The logger is slow with its live replies for a while (up to 200 ms, within the
      // poll's cadence), so one is on the wire when the download takes the link, and the
      // download's tick comes while it is on its way.
      if (letter == 'D' && now < start_ + 3) {
        for (TimedReply& r : out) r.atSeconds += 0.02 + 0.18 * plan_.where;
        if (!done_) {
          done_ = true;
          t_.sched.At(now * 1000.0 + 5, [this] { t_.Do(OnDownloadTick); });
        }
      }
      return out;
    }
    if (out.empty() || now < start_ + plan_.startAfter) return out;
    if (plan_.kind == FaultKind::CutBlock) {
      if (letter == 'T' && !done_) {
        done_ = true;
        out.resize(1 + static_cast<std::size_t>(plan_.where * static_cast<double>(out.size() - 1)));
      }
      return out;
    }
    if (done_ || replies_++ < plan_.reply) return out;
    done_ = true;
    const std::size_t at = static_cast<std::size_t>(plan_.where * static_cast<double>(out.size() - 1));
    const bool drop = plan_.kind == FaultKind::DropByte, twice = plan_.kind == FaultKind::DoubleByte;
    const auto payload = letter == 'T' ? t_.s().logger.BlockBytes.Value() : letter == 'R' ? 22 : 2;
    const std::size_t awaited = 1 + static_cast<std::size_t>(payload);
    const std::size_t after = out.size() + (twice ? 1 : 0) - (drop ? 1 : 0);
    unseen_ =
        (letter == 'T' || letter == 'R') && at >= 1 && at < awaited && after >= awaited && (drop || twice);
    std::mt19937 g(static_cast<std::uint32_t>(out.size() * 7919 + at));
    if (plan_.kind == FaultKind::Noise) {
      std::vector<TimedReply> noise;
      for (int i = 0; i < plan_.count; ++i) {
        const auto b = static_cast<std::uint8_t>(g());
        noise.push_back(
            {out.front().atSeconds - 1e-4 * (plan_.count - i), b == 0x04 ? std::uint8_t{0x05} : b});
      }
      out.insert(out.begin(), noise.begin(), noise.end());
    } else if (drop) {
      out.erase(out.begin() + static_cast<std::ptrdiff_t>(at));
    } else if (twice) {
      out.insert(out.begin() + static_cast<std::ptrdiff_t>(at) + 1, {out[at].atSeconds + 1e-6, out[at].byte});
    }
    return out;
  }

  // The record must come from a header the logger really sent, with the block the logger
  // held at that header, byte for byte, and every sample must have a value.
  bool Right() {
    const SampleRecord& r = t_.s().record;
    std::string block = r.BlockData;
    if (block.size() >= 2) block.resize(block.size() - 2);
    const int n = static_cast<int>(r.RecordSampleCount.Value());
    why = "the decoded header is none the logger sent";
    for (const auto& [header, held] : answers_) {
      if (header != decoded_) continue;
      why = "the header is the logger's, but not the block or " + std::to_string(n) + " samples";
      bool valued = static_cast<std::size_t>(n) * (plan_.model >= 64 ? 2 : 1) == block.size();
      for (int i = 1; i <= n; ++i) valued = valued && !r.FullValues[i].IsEmpty();
      return held == block && valued;
    }
    return false;
  }

  Plan plan_;
  testing::EmulatedLoggerApp t_;
  double start_ = 0;
  std::size_t heard_ = 0;
  int replies_ = 0, records_ = 0;
  bool done_ = false, unseen_ = false;
  std::string decoded_;
  std::vector<std::pair<std::string, std::string>> answers_;  // header, block
};

// A header cut short (its last byte lost) leaves the header phase waiting for bytes that
// never come. The next header request must still go out at the same speed: a download
// asked for afterwards completes without the link giving up the logger's speed.
TEST(CutHeader, TheNextHeaderRequestGoesOutAndTheDownloadCompletesAtTheSameSpeed) {
  testing::EmulatedLoggerApp t(testing::SteadyLogger(17, 400));
  auto inner = t.transport.peer;
  bool cut = false;
  t.transport.peer = [&](const std::string& bytes, double now, int baud, int stop) {
    auto out = inner(bytes, now, baud, stop);
    if (!cut && bytes.back() == 'R' && !out.empty()) cut = true, out.pop_back();
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

TEST(WireFaultCampaign, EveryDownloadGivesTheLoggersOwnRecordOnceTheFaultHasCleared) {
  const char* runsEnv = std::getenv("QUILLET_FAULT_RUNS");
  const char* seedEnv = std::getenv("QUILLET_FAULT_SEED");
  const int runs = runsEnv && std::atoi(runsEnv) > 0 ? std::atoi(runsEnv) : 96;
  const int first = seedEnv ? std::atoi(seedEnv) : 1;
  std::map<std::string, std::array<int, 6>> byKind;  // the results, then "asked"; all kinds as "(all)"
  std::array<int, 6>& all = byKind["(all)"];
  for (int seed = first; seed < first + runs; ++seed) {
    const Plan plan = Draw(static_cast<std::uint32_t>(seed));
    Campaign c(plan);
    const Result result = c.Run();
    if (result == kWrong || result == kStuck) {
      ADD_FAILURE() << "seed " << seed << " (" << kKindNames[plan.kind] << ", model " << plan.model
                    << "): " << kResultNames[result] << ": " << c.why;
    }
    for (auto* k : {&all, &byKind[kKindNames[plan.kind]]}) {
      ++(*k)[result];
      (*k)[5] += c.asked;
    }
  }
  std::printf(
      "fault campaign: %d runs; unseen: wrong from a byte lost or doubled inside the awaited length (no "
      "checksum on the wire); ended: by a garbled header's fault; asked: went through the port dialog\n",
      runs);
  for (const auto& [name, k] : byKind) {
    std::printf("  %-36s right %4d  wrong %3d  stuck %3d  unseen %3d  ended %3d  asked %3d\n", name.c_str(),
                k[0], k[1], k[2], k[3], k[4], k[5]);
  }
  EXPECT_EQ(all[kWrong], 0);
  EXPECT_EQ(all[kStuck], 0);
}

}  // namespace
}  // namespace quillet
