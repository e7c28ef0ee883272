// quillet-cli live: the window program's live reading, one line per reading.
#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "cli/cli_commands.h"
#include "cli/cli_texts.h"
#include "cli/link_session.h"
#include "core/formatting.h"

namespace quillet {

int RunLive(const Options& opts) {
  int argc = 1;
  char name[] = "quillet-cli";
  char* argv[] = {name, nullptr};
  QCoreApplication qapp(argc, argv);

  const std::string device = Required(opts, "live", "--port");
  long count = 0;
  if (const std::string* c = Find(opts, "--count")) count = std::strtol(c->c_str(), nullptr, 10);
  const double timeout = TimeoutOption(opts);
  LinkSession session(device, opts);
  App& app = session.app();

  long shown = 0;
  app.onLiveReadingShown = [&] {
    const Log1View& w = app.v.log1;
    const bool overload = w.Label19.caption == "OL";
    if (!w.Label19.visible && !overload) return;  // nothing on screen: no unit known yet
    const std::string when = FormatDateTime(Now(app) - app.s.clock.ClockOffset, "yyyy-mm-dd hh:mm:ss");
    std::printf("%s %s\t%s\n", when.c_str(), w.Label19.caption.c_str(), overload ? "" : w.Label21.caption.c_str());
    std::fflush(stdout);
    ++shown;
    if (count > 0 && shown >= count) QCoreApplication::exit(0);
  };
  // --timeout: the command gives up (or, without --count, simply ends) after that long,
  // and says so in one line.
  CommandError failure{"", 0};
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, [&] {
    const std::string seconds = GeneralNumber(timeout);
    if (shown == 0) {
      failure = {Say(CliText::NoReading, {device, seconds})};
    } else if (count > 0) {
      failure = {Say(CliText::TooFewReadings, {std::to_string(shown), std::to_string(count), device, seconds})};
    } else {
      std::fprintf(stderr, "quillet-cli: %s\n", Say(CliText::LiveStopped, {seconds, std::to_string(shown)}).c_str());
    }
    QCoreApplication::exit(failure.message.empty() ? 0 : 1);
  });
  if (timeout > 0) limit.start(static_cast<int>(std::min(timeout * 1000, 2e9)));
  const int code = QCoreApplication::exec();
  if (!failure.message.empty()) throw failure;
  return code;
}

}  // namespace quillet
