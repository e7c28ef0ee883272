// quillet-cli: the logic of the window program without a window.
#include <cstdio>
#include <cstring>
#include <map>
#include <set>
#include <string>

#include "cli/cli_commands.h"

namespace {

const char* const kUsage =
    "usage: quillet-cli COMMAND [options]\n"
    "\n"
    "commands:\n"
    "  decode   --header H.bin --block B.bin --now \"YYYY-MM-DD hh:mm:ss\" [--settings logger1.ini]\n"
    "           [--probes probes.dat] [--fahrenheit 0|1] --out REC.txt\n"
    "  download --port DEVICE [--baud 1200|4800] [--settings F] [--probes F] --out REC.txt\n"
    "           [--raw PREFIX] [--timeout SECONDS]\n"
    "  live     --port DEVICE [--baud 1200|4800] [--settings F] [--probes F] [--count N]\n"
    "  render   REC.txt --out FILE.png|FILE.pdf [--size WxH] [--axes] [--settings logger1.ini]\n"
    "\n"
    "\n"
    "live prints one line per reading: the present time, the value as the window shows it\n"
    "(\"OL\" for an overload), a tab, the unit. decode, download and render are not in this\n"
    "build yet.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 ||
      std::strcmp(argv[1], "help") == 0) {
    std::fputs(kUsage, stdout);
    return argc < 2 ? 2 : 0;
  }
  const std::string command = argv[1];
  if (command == "live") {
    static const std::set<std::string> known = {"--port", "--baud", "--settings", "--probes", "--count"};
    std::map<std::string, std::string> opts;
    for (int i = 2; i < argc; ++i) {
      const std::string name = argv[i];
      if (!known.count(name) || i + 1 >= argc) {
        std::fprintf(stderr, "quillet-cli: live: unknown option or missing value: %s\n", name.c_str());
        return 2;
      }
      opts[name] = argv[++i];
    }
    return quillet::RunLive(opts);
  }
  std::fprintf(stderr, "quillet-cli: the command \"%s\" is not available in this build\n", argv[1]);
  std::fputs(kUsage, stderr);
  return 2;
}
