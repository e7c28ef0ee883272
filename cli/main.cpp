// quillet-cli: the logic of the window program without a window.
#include <cstdio>
#include <cstring>
#include <set>
#include <string>

#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "core/fault.h"

namespace {

// The lines of commands and options; the words around them are in the language in force.
const char* const kSynopsis =
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
    "  print    data REC.txt (--out FILE.pdf | --printer NAME) [--settings logger1.ini] [--paper A4|Letter]\n";

std::string Usage() {
  using quillet::CliText;
  using quillet::Say;
  return Say(CliText::UsageLine) + "\n\n" + Say(CliText::UsageCommands) + "\n" + kSynopsis + "\n" +
         Say(CliText::UsageText);
}

}  // namespace

int main(int argc, char** argv) {
  // Every line of the program's own, from the first bad option on, speaks the language of
  // the settings file given; English without one.
  quillet::SetCliLanguage(quillet::SettingsLanguage(argc, argv));
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 ||
      std::strcmp(argv[1], "help") == 0) {
    std::fputs(Usage().c_str(), argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  using quillet::CliText;
  using quillet::CommandError;
  using quillet::ParseOptions;
  using quillet::Say;
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
    std::fprintf(stderr, "quillet-cli: %s\n",
                 Say(CliText::FaultUnhandledIn, {command, quillet::FaultWords(f.number())}).c_str());
    return 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "quillet-cli: %s\n", Say(CliText::InternalErrorIn, {command, e.what()}).c_str());
    return 1;
  }
  std::fprintf(stderr, "quillet-cli: %s\n", Say(CliText::UnknownCommand, {argv[1]}).c_str());
  std::fputs(Usage().c_str(), stderr);
  return 2;
}
