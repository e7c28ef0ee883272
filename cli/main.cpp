// quillet-cli: the logic of the window program without a window.
#include <cstdio>
#include <cstring>
#include <set>
#include <string>

#include "cli/cli_commands.h"
#include "core/fault.h"

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
    "           [--timeout SECONDS]\n"
    "  render   REC.txt --out FILE.png|FILE.pdf [--size WxH] [--axes] [--settings logger1.ini]\n"
    "  profile  show FILE [--family custom|100mv|10v|420|bipo100mv|bipo10mv]\n"
    "  profile  write --family NAME --unit TEXT --entry KNOT=TEXT [--entry ...] --out FILE [--replace]\n"
    "  print    graph REC.txt (--out FILE.pdf | --printer NAME) [--annotate] [--settings logger1.ini]\n"
    "           [--paper A4|Letter]\n"
    "  print    data REC.txt (--out FILE.pdf | --printer NAME) [--settings logger1.ini] [--paper A4|Letter]\n"
    "\n"
    "decode turns a saved header (the 22 bytes after the acknowledge) and block into a record\n"
    "file, timed as if the header had been read at --now. download finds the logger on the\n"
    "device at either speed, reads its memory and writes the record; with --raw also\n"
    "PREFIX.header.bin and PREFIX.block.bin. live prints one line per reading: the present\n"
    "time, the value as the window shows it (\"OL\" for an overload), a tab, the unit;\n"
    "--timeout ends it after that many seconds (an error when fewer than --count readings came).\n"
    "download's --timeout is the limit of the whole command (without it: 30 s to find the logger).\n"
    "render draws a record file's graph as the window does (PNG raster, PDF vector; default\n"
    "size 1200x600); --axes also prints the scale results and the labels as drawn.\n"
    "profile show prints a scale profile file as its dialog builds it (family, unit, points,\n"
    "invalid, one knot line each, the preview's labels), tab-separated; profile write types\n"
    "the entries into the family's dialog and saves them. decode --profile converts through\n"
    "the profile file as if it had been opened and accepted in the model's dialog.\n"
    "print prints a record file's graph page (with the annotation on --annotate) or its data\n"
    "table as the window prints them, to a PDF file (A4 unless --paper says otherwise) or a\n"
    "system printer (on its own paper unless --paper is given).\n"
    "Without --settings a command starts as on a first start.\n";

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 ||
      std::strcmp(argv[1], "help") == 0) {
    std::fputs(kUsage, argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  using quillet::CommandError;
  using quillet::ParseOptions;
  const std::string command = argv[1];
  try {
    if (command == "live") {
      return quillet::RunLive(
          ParseOptions(command, argc, argv, 2, {"--port", "--baud", "--settings", "--probes", "--count", "--timeout"}));
    }
    if (command == "decode") {
      return quillet::RunDecode(ParseOptions(
          command, argc, argv, 2,
          {"--header", "--block", "--now", "--settings", "--probes", "--fahrenheit", "--out", "--profile"}));
    }
    if (command == "download") {
      return quillet::RunDownload(ParseOptions(
          command, argc, argv, 2,
          {"--port", "--baud", "--settings", "--probes", "--out", "--raw", "--timeout"}));
    }
    if (command == "profile") return quillet::RunProfile(argc, argv);
    if (command == "render") {
      return quillet::RunRender(
          ParseOptions(command, argc, argv, 2, {"", "--out", "--size", "--settings"}, {"--axes"}));
    }
    if (command == "print") {
      return quillet::RunPrint(ParseOptions(command, argc, argv, 2,
                                            {"", "--out", "--printer", "--settings", "--paper"}, {"--annotate"}));
    }
  } catch (const CommandError& e) {
    std::fprintf(stderr, "quillet-cli: %s\n", e.message.c_str());
    return e.exitCode == 0 ? 1 : e.exitCode;
  } catch (const quillet::Fault& f) {
    // Outside the dispatcher: still one line in words and a non-zero exit, never an abort.
    std::fprintf(stderr, "quillet-cli: %s: the command ended on a fault it could not handle: %s\n", command.c_str(),
                 quillet::FaultDescription(f.number()).c_str());
    return 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "quillet-cli: %s: the command ended on an internal error: %s\n", command.c_str(), e.what());
    return 1;
  }
  std::fprintf(stderr, "quillet-cli: unknown command \"%s\"\n", argv[1]);
  std::fputs(kUsage, stderr);
  return 2;
}
