#include "sim/firmware/sim_options.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <stdexcept>

#include "sim/firmware/firmware.h"

namespace quillet::sim {
namespace {

[[noreturn]] void Bad(const std::string& message) { throw std::invalid_argument(message); }

long long ParseInteger(const std::string& option, const std::string& text) {
  long long v = 0;
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(text.data(), end, v);
  if (text.empty() || ec != std::errc() || p != end)
    Bad(option + " wants a whole number, not \"" + text + "\"");
  return v;
}

int ParseInt(const std::string& option, const std::string& text, long long lo, long long hi) {
  const long long v = ParseInteger(option, text);
  if (v < lo || v > hi)
    Bad(option + " must be " + std::to_string(lo) + ".." + std::to_string(hi) + ", not " + text);
  return static_cast<int>(v);
}

double ParseReal(const std::string& option, const std::string& text) {
  double v = 0;
  const char* begin = text.data() + (!text.empty() && text[0] == '+' ? 1 : 0);
  const char* end = text.data() + text.size();
  auto [p, ec] = std::from_chars(begin, end, v);
  if (text.empty() || ec != std::errc() || p != end || !std::isfinite(v))
    Bad(option + " wants a number, not \"" + text + "\"");
  return v;
}

SignalKind ParseSignal(const std::string& text) {
  static const std::map<std::string, SignalKind> kKinds = {{"steady", SignalKind::Steady},
                                                           {"ramp", SignalKind::Ramp},
                                                           {"sine", SignalKind::Sine},
                                                           {"steps", SignalKind::Steps},
                                                           {"noise", SignalKind::Noise}};
  auto it = kKinds.find(text);
  if (it == kKinds.end()) Bad("--signal must be steady, ramp, sine, steps or noise, not \"" + text + "\"");
  return it->second;
}

}  // namespace

double ParseDuration(const std::string& text) {
  struct Unit {
    const char* suffix;
    double seconds;
  };
  // Longest suffix first, so "mo" is not read as minutes.
  static const Unit kUnits[] = {{"mo", 30 * 86400.0}, {"s", 1.0},         {"m", 60.0},         {"h", 3600.0},
                                {"d", 86400.0},       {"w", 7 * 86400.0}, {"y", 365 * 86400.0}};
  std::string number = text;
  double scale = 1.0;
  for (const Unit& u : kUnits) {
    const std::string suffix = u.suffix;
    if (text.size() > suffix.size() &&
        text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0) {
      number = text.substr(0, text.size() - suffix.size());
      scale = u.seconds;
      break;
    }
  }
  double v = 0;
  const char* end = number.data() + number.size();
  auto [p, ec] = std::from_chars(number.data(), end, v);
  if (number.empty() || ec != std::errc() || p != end || !std::isfinite(v) || v < 0)
    Bad("\"" + text + "\" is not a duration such as 90s, 15m, 3h, 2d, 1w, 6mo or 1y");
  return v * scale;
}

SimOptions ParseSimOptions(const std::vector<std::string>& args) {
  SimOptions o;
  LoggerConfig& c = o.config;
  bool silentAfterGiven = false;
  bool silentForGiven = false;

  using Setter = std::function<void(const std::string& option, const std::string& value)>;
  const std::map<std::string, Setter> withValue = {
      {"--model", [&](auto& n, auto& v) { c.modelCode = ParseInt(n, v, 0, 127); }},
      {"--baud",
       [&](auto& n, auto& v) {
         c.baud = ParseInt(n, v, 0, 1000000);
         if (c.baud != 1200 && c.baud != 4800) Bad(n + " must be 1200 or 4800, not " + v);
       }},
      {"--serial", [&](auto& n, auto& v) { c.serial = ParseInt(n, v, 0, 65535); }},
      {"--memory", [&](auto& n, auto& v) { c.memorySizeCode = ParseInt(n, v, 0, 5); }},
      {"--signal", [&](auto&, auto& v) { c.signal.kind = ParseSignal(v); }},
      {"--level", [&](auto& n, auto& v) { c.signal.level = ParseReal(n, v); }},
      {"--amplitude", [&](auto& n, auto& v) { c.signal.amplitude = ParseReal(n, v); }},
      {"--period", [&](auto&, auto& v) { c.signal.periodSeconds = ParseDuration(v); }},
      {"--slope", [&](auto& n, auto& v) { c.signal.slopePerHour = ParseReal(n, v); }},
      {"--seed", [&](auto& n, auto& v) { c.signal.seed = static_cast<std::uint64_t>(ParseInteger(n, v)); }},
      {"--elapsed", [&](auto&, auto& v) { c.elapsedAtStart = ParseDuration(v); }},
      {"--range", [&](auto& n, auto& v) { c.startRange = ParseInt(n, v, 0, 255); }},
      {"--probe-factor", [&](auto& n, auto& v) { c.probeFactor = ParseReal(n, v); }},
      {"--link",
       [&](auto& n, auto& v) {
         if (v.empty()) Bad(n + " wants a path");
         o.linkPath = v;
       }},
      {"--pause-after-ack", [&](auto& n, auto& v) { c.pauseAfterAck = ParseInt(n, v, 0, 60000) / 1000.0; }},
      {"--turnaround", [&](auto& n, auto& v) { c.turnaround = ParseInt(n, v, 0, 60000) / 1000.0; }},
      {"--ignore-blocks", [&](auto& n, auto& v) { c.faults.ignoreBlocks = ParseInt(n, v, 0, 1000000); }},
      {"--cut-block", [&](auto& n, auto& v) { c.faults.cutBlockTo = ParseInt(n, v, 0, 1 << 20); }},
      {"--cut-blocks", [&](auto& n, auto& v) { c.faults.cutBlocks = ParseInt(n, v, 0, 1000000); }},
      {"--noise-before-reply",
       [&](auto& n, auto& v) { c.faults.noiseBeforeReply = ParseInt(n, v, 0, 4096); }},
      {"--noisy-replies", [&](auto& n, auto& v) { c.faults.noisyReplies = ParseInt(n, v, 0, 1000000); }},
      {"--silent-after",
       [&](auto&, auto& v) {
         c.faults.silentAfter = ParseDuration(v);
         silentAfterGiven = true;
       }},
      {"--silent-for",
       [&](auto&, auto& v) {
         c.faults.silentFor = ParseDuration(v);
         silentForGiven = true;
       }},
      {"--silent-every", [&](auto&, auto& v) { c.faults.silentEvery = ParseDuration(v); }},
      {"--extra-bytes", [&](auto& n, auto& v) { c.extraLayout2Bytes = ParseInt(n, v, 0, 64); }},
  };

  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string name = args[i];
    std::string value;
    bool valueInline = false;
    if (const auto eq = name.find('='); name.rfind("--", 0) == 0 && eq != std::string::npos) {
      value = name.substr(eq + 1);
      name = name.substr(0, eq);
      valueInline = true;
    }
    if (name == "--help" || name == "-h") {
      o.help = true;
      continue;
    }
    if (name == "--verbose" || name == "-v") {
      o.verbose = true;
      continue;
    }
    const auto it = withValue.find(name);
    if (it == withValue.end()) Bad("unknown option \"" + args[i] + "\" (see --help)");
    if (!valueInline) {
      if (i + 1 >= args.size()) Bad(name + " wants a value");
      value = args[++i];
    }
    it->second(name, value);
  }

  if (silentAfterGiven && !silentForGiven) Bad("--silent-after needs --silent-for");
  if (silentForGiven && !silentAfterGiven) c.faults.silentAfter = 0.0;
  ValidateConfig(c);
  return o;
}

std::string SimUsage() {
  return R"(usage: quillet-sim [options]
A data logger on a pseudo-terminal. Prints the terminal's path as its first line, then
answers the logger commands on it until interrupted (Ctrl-C or SIGTERM).

Logger:
  --model N               model code 0..127 (default 17; 64..127 store two bytes a sample)
  --baud 1200|4800        line speed (default 1200)
  --serial N              serial number 0..65535 (default 1234)
  --memory M              memory size code 0..5: 2^M * 2048 bytes (default 0)
  --range R               range byte at start (range code 0..3, thermistor divider, plain byte)
  --probe-factor X        model 16: the probe's range factor (default 1)
  --elapsed DURATION      start as if recording had run this long: 90s, 3h, 2d, 6mo, 1y
Signal, in the model's units (degC, A, V, mV, mA; the raw count for unknown models):
  --signal KIND           steady, ramp, sine, steps or noise (default steady)
  --level X               level (default 20)
  --amplitude X           swing of sine, steps and noise (default 5)
  --period DURATION       period of sine, length of a step (default 1h)
  --slope X               ramp, units per hour (default 1)
  --seed N                noise seed (default 1)
Wire:
  --link PATH             also make PATH a symbolic link to the terminal (removed at exit)
  --pause-after-ack MS    pause between 0x04 and the payload (default 0)
  --turnaround MS         from a command to its reply (default 1)
  --extra-bytes N         bytes after a layout 2 header's 22 (default 4)
Faults:
  --ignore-blocks K       give no reply to the first K block requests
  --cut-block N           send only N bytes of a block
  --cut-blocks K          cut only the first K blocks (default all)
  --noise-before-reply N  send N noise bytes before each reply's 0x04
  --noisy-replies K       only the first K replies get noise (default all)
  --silent-after DURATION go silent this long after start ...
  --silent-for DURATION   ... for this long
  --silent-every DURATION ... and again each time this much later (a logger that comes and goes)
Other:
  --verbose               one line on stderr per command heard
  --help                  this text
)";
}

}  // namespace quillet::sim
