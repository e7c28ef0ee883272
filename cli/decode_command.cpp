// quillet-cli decode: a header and a block saved from a logger, turned into a record file
// exactly as a download in the window would.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "log1/hooks.h"
#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/headless_ui.h"
#include "core/offline_platform.h"
#include "cli/record_output.h"
#include "hub/app.h"
#include "core/fault.h"
#include "log1/startup.h"
#include "link/download.h"
#include "measure/temperature_unit.h"

namespace quillet {

namespace {

DateTime ParseNow(const std::string& text) {
  DateParts d;
  char tail = 0;
  if (std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d%c", &d.year, &d.month, &d.day, &d.hour, &d.minute, &d.second,
                  &tail) != 6 ||
      d.month < 1 || d.month > 12 || d.day < 1 || d.day > DaysInMonth(d.year, d.month) || d.hour > 23 ||
      d.minute > 59 || d.second > 59 || d.hour < 0 || d.minute < 0 || d.second < 0 || d.year < 100 || d.year > 9999) {
    throw CommandError{Say(CliText::NowNotDate, {text}), 2};
  }
  return MakeDateTime(d);
}

}  // namespace

int RunDecode(const Options& opts) {
  const std::string headerPath = Required(opts, "decode", "--header");
  const std::string blockPath = Required(opts, "decode", "--block");
  const std::string out = Required(opts, "decode", "--out");
  const DateTime now = ParseNow(Required(opts, "decode", "--now"));
  const std::string* fahrenheit = Find(opts, "--fahrenheit");
  if (fahrenheit && *fahrenheit != "0" && *fahrenheit != "1") throw CommandError{Say(CliText::FahrenheitNotFlag), 2};

  const std::string header = ReadBinaryFile(headerPath);
  const std::string block = ReadBinaryFile(blockPath);
  if (header.size() < static_cast<std::size_t>(kHeaderBytes)) {
    throw CommandError{
        Say(CliText::HeaderTooShort, {headerPath, std::to_string(header.size()), std::to_string(kHeaderBytes)})};
  }

  HeadlessUi ui;
  FixedClock clock(now);
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  const FilePlaces places = CommandPlaces(opts);
  Platform platform{ui, clock, timers, poster, transport, places};
  App app(platform, Log1Hooks());
  ui.app = &app;

  StartCommandApp(app);
  if (fahrenheit) {
    app.s.settings.UseFahrenheit = std::atoi(fahrenheit->c_str());
    ShowTemperatureUnitChecks(app);
  }
  if (const std::string* profile = Find(opts, "--profile")) ApplyDecodeProfile(app, ui, *profile);

  // Every step runs in the dispatcher, as in the window: a fault that ends the program (a
  // missing probes.dat under DecodeHeader) ends this command the same way, with its message
  // and a non-zero exit, and writes no file.
  ui.where = headerPath;
  const std::string probesPath = places.probesFile.empty() ? places.programDir + "/probes.dat" : places.probesFile;
  std::string failure;
  auto why = [](const Fault& f) {
    return FaultWords(f.number()) + (f.detail().empty() ? "" : " (" + f.detail() + ")");
  };
  Dispatch(app, [&] {
    try {
      // A two-byte logger's header leaves the scale byte as its live readings left it.
      app.s.logger.ScaleByte = 1;
      app.s.clock.ClockOffset = 0;
      DecodeHeader(app, header.substr(0, kHeaderBytes));
    } catch (const Fault& f) {
      failure = Say(CliText::HeaderNotDecoded, {headerPath, why(f)});
    }
  });
  if (!failure.empty()) throw CommandError{failure};
  if (app.s.logger.ModelCode == 16 && app.s.measure.ProbeFactorNotNumber == 1) {
    std::fprintf(stderr, "quillet-cli: %s\n", Say(CliText::ProbeFactorNotNumber, {probesPath}).c_str());
  }
  CheckAnnouncedSamples(app);
  ui.where = blockPath;
  Dispatch(app, [&] {
    try {
      // Every byte of the block goes into the receive buffer, as far as the buffer holds.
      app.port.SetRThreshold(0);
      app.port.Input();
      transport.Feed(block);
      FinishBlock(app);
    } catch (const Fault& f) {
      failure = Say(CliText::BlockNotDecoded, {blockPath, std::to_string(block.size()), why(f)});
    }
  });
  if (!failure.empty()) throw CommandError{failure};
  WriteRecordOutputs(app, out, "", header);
  return 0;
}

}  // namespace quillet
