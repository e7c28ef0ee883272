// quillet-cli download: the window program's download from a logger on a serial device,
// with the clock dialog answered by the present time.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/link_session.h"
#include "cli/record_output.h"
#include "core/formatting.h"
#include "link/download.h"

namespace quillet {

namespace {

constexpr int kSuperviseMs = 100;
constexpr double kDefaultTimeoutSeconds = 30;

void Progress(const std::string& text) {
  std::fprintf(stderr, "quillet-cli: %s\n", text.c_str());
  std::fflush(stderr);
}

}  // namespace

int RunDownload(const Options& opts) {
  int argc = 1;
  char name[] = "quillet-cli";
  char* argv[] = {name, nullptr};
  QCoreApplication qapp(argc, argv);

  const std::string device = Required(opts, "download", "--port");
  const std::string out = Required(opts, "download", "--out");
  const std::string rawPrefix = Find(opts, "--raw") ? *Find(opts, "--raw") : "";
  const bool timeoutGiven = Find(opts, "--timeout") != nullptr;
  const double timeout = timeoutGiven ? TimeoutOption(opts) : kDefaultTimeoutSeconds;
  LinkSession session(device, opts);
  App& app = session.app();

  std::string header;
  app.onHeaderReply = [&header](const std::string& reply) { header = reply.substr(0, kHeaderBytes); };
  CommandError failure{"", 0};
  auto fail = [&failure](const CommandError& e) {
    failure = e;
    QCoreApplication::exit(e.exitCode);
  };
  QElapsedTimer clock;
  clock.start();
  double blockStart = 0, downloadStart = 0;
  app.onBlockStarted = [&] { blockStart = clock.nsecsElapsed() / 1e9; };
  app.onRecordComplete = [&] {
    const double end = clock.nsecsElapsed() / 1e9;
    const double bytes = app.s.record.BlockData.size() - 2.0;
    const double wire = bytes * 11 / app.s.settings.BaudRate.Value();
    try {
      WriteRecordOutputs(app, out, rawPrefix, header);
      Progress(Say(CliText::BlockTimes, {GeneralNumber(bytes), FormatNumber(end - blockStart, "0.000"),
                                         FormatNumber(wire, "0.000"), FormatNumber(end - downloadStart, "0.000")}));
      Progress(Say(CliText::Wrote, {out, GeneralNumber(app.s.record.RecordSampleCount.Value())}));
      QCoreApplication::exit(0);
    } catch (const CommandError& e) {
      fail(e);
    }
  };

  // Waits for the logger and its header, then starts the download as the menu would and
  // reports the progress until the block is in. A --timeout given is the limit of the
  // whole command; without one, finding the logger has 30 s and the block then has the
  // time its length needs, with the watchdog's restarts.
  enum class Phase { Finding, Downloading } phase = Phase::Finding;
  double deadline = timeout;
  std::string lastPercent;
  QTimer supervisor;
  QObject::connect(&supervisor, &QTimer::timeout, [&] {
    const State& s = app.s;
    const double elapsed = clock.elapsed() / 1000.0;
    if (phase == Phase::Finding) {
      if (s.link.LoggerSeen == 1 && s.link.HeaderRead == 1) {
        if (s.measure.ProbeUnset == 1 && s.logger.ModelCode == 16) {
          fail({Say(CliText::NoProbeChosen, {device})});
          return;
        }
        try {
          CheckAnnouncedSamples(app);
        } catch (const CommandError& e) {
          fail(e);
          return;
        }
        Progress(Say(CliText::LoggerFound,
                     {GeneralNumber(s.logger.LoggerSerial.Value()), app.v.log1.Label34.caption,
                      GeneralNumber(s.settings.BaudRate.Value()), GeneralNumber(s.logger.StoredSamples.Value()),
                      GeneralNumber(s.logger.BlockBytes.Value())}));
        downloadStart = clock.nsecsElapsed() / 1e9;
        Dispatch(app, [&app] { StartDownload(app); });
        if (app.s.link.DownloadActive != 1) {
          fail({Say(CliText::DownloadNotStarted)});
          return;
        }
        phase = Phase::Downloading;
        // Without a limit from the user: three whole block times at the slower speed.
        if (!timeoutGiven) deadline = elapsed + timeout + 3 * (app.s.logger.BlockBytes.Value() * 11 / 1200 + 10);
      } else if (elapsed > timeout) {
        fail({Say(CliText::NoLoggerAnswered, {device, GeneralNumber(timeout)})});
      }
      return;
    }
    const std::string percent = app.v.log1.Label14.caption;
    if (s.link.BlockPhase == 1 && !percent.empty() && percent != lastPercent) {
      lastPercent = percent;
      Progress(Say(CliText::Downloading, {percent}));
    }
    if (elapsed > deadline) {
      fail({Say(CliText::DownloadIncomplete, {device, GeneralNumber(std::floor(elapsed)),
                                               lastPercent.empty() ? std::string("0") : lastPercent})});
    }
  });
  supervisor.start(kSuperviseMs);
  const int code = QCoreApplication::exec();
  if (!failure.message.empty()) throw failure;
  return code;
}

}  // namespace quillet
