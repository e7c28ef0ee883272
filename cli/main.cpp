// quillet-cli: the logic of the window program without a window.
#include <cstdio>
#include <cstring>
#include <string>

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
    "This build does not carry these commands yet; it only describes them.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 ||
      std::strcmp(argv[1], "help") == 0) {
    std::fputs(kUsage, stdout);
    return argc < 2 ? 2 : 0;
  }
  std::fprintf(stderr, "quillet-cli: the command \"%s\" is not available in this build\n", argv[1]);
  std::fputs(kUsage, stderr);
  return 2;
}
