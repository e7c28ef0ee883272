#pragma once
// A whole application on the fake platform with the emulator's firmware at the far end of
// the line, for scenarios of the live reading and the download in virtual time. The
// firmware's own account of its memory is kept as it stood when it answered each header,
// so a record can be held against the samples the logger really took.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "hub/app.h"
#include "link/download.h"
#include "sim/firmware/logger_line.h"
#include "storage/record_file.h"
#include "support/fake_platform.h"
#include "support/settings_text.h"

namespace quillet::testing {

struct ProbeChoice {
  std::string label, unit, factor;
};

struct AppOptions {
  int appBaud = 1200;  // the speed the program tries first
  int fahrenheit = 0;
  std::optional<ProbeChoice> lastProbe;  // probe memory entry 11: what a new logger gets
  std::string unit32;                    // the unit of the custom profile (model 32)
  std::string settings;                  // the whole logger1.ini instead, when not empty
};

// What the firmware held when it answered a header.
struct FirmwareTruth {
  std::vector<std::uint8_t> header;  // the 22 bytes (and any trailing ones)
  std::vector<sim::TakenSample> samples;
  std::vector<std::size_t> stored;  // indices into samples, time order
  double atMs = 0;                  // the program's clock when the header was asked for
};

// probes.dat: three groups of the given titles, each of three sections of ten rows, all
// "Future","",1 but for the rows given ({group 1..3, row 1..30} -> the row's line).
inline std::string ProbesDatText(const std::vector<std::string>& titles,
                                 const std::map<std::pair<int, int>, std::string>& rows) {
  std::ostringstream f;
  for (int g = 1; g <= 3; ++g) {
    f << '"' << titles[g - 1] << "\"\n";
    for (int n = 1; n <= 30; ++n) {
      if (n % 10 == 1) f << "\"Section " << n / 10 + 1 << "\"\n";
      f << (rows.count({g, n}) ? rows.at({g, n}) : "\"Future\",\"\",1") << "\n";
    }
  }
  return f.str();
}

// Group 1 "AC Probes" with "CT-50" (A rms, 4) in row 1 and "NU-1" (no unit, 2) in row 2.
inline std::string SmallProbesDat() {
  return ProbesDatText({"AC Probes", "Future", "Future"},
                       {{{1, 1}, "\"CT-50\",\"A rms\",4"}, {{1, 2}, "\"NU-1\",\"\",2"}});
}

inline std::string SettingsText(int baud, const AppOptions& o) {
  SettingsOptions s;
  s.baud = baud;
  s.fahrenheit = o.fahrenheit;
  s.unit32 = o.unit32;
  if (o.lastProbe) s.probes[11] = {"99", o.lastProbe->factor, o.lastProbe->unit, o.lastProbe->label};
  return SettingsFileText(s);
}

struct EmulatedLoggerApp : TestApp {
  explicit EmulatedLoggerApp(const sim::LoggerConfig& config, const AppOptions& options = {})
      : line(config, 0.0) {
    WriteTwoLanguageFile();  // strings read "en<n>"
    WriteFile("logger1.ini",
              options.settings.empty() ? SettingsText(options.appBaud, options) : options.settings);
    WriteFile("probes.dat", SmallProbesDat(), true);
    transport.peer = [this](const std::string& bytes, double now, int baud, int stopBits) {
      std::vector<TimedReply> out;
      if (!plugged) return out;
      const std::size_t heard = line.Commands().size();
      for (const sim::TimedByte& b :
           line.Receive(std::vector<std::uint8_t>(bytes.begin(), bytes.end()), now, baud, stopBits)) {
        out.push_back({b.at, b.byte});
      }
      for (std::size_t i = heard; i < line.Commands().size(); ++i) {
        if (line.Commands()[i].letter == 'R' && line.Commands()[i].answered) {
          const sim::Firmware& fw = line.firmware();
          truth = {fw.Header(), fw.Samples(), fw.StoredSamples(), now * 1000.0};
        }
      }
      return out;
    };
    Start();
  }

  // The first live poll finds the logger at 2 s, its header follows, and a second
  // reading at 4 s shows the value with its unit.
  void Connect() { Run(5000); }

  // Opens a record of three samples from a file (logger 42, "Volt": 1.5, 2.5, -3; titles
  // "T1".."T7") as the record on screen, with the logger unplugged meanwhile.
  void OpenThreeSampleRecord() {
    const bool was = plugged;
    plugged = false;
    std::ostringstream f;
    f << "\"loggerfile\"\r\n\"rev02\"\r\n3\r\n";
    for (int i = 1; i <= 7; ++i) f << "\"T" << i << "\"\r\n";
    f << "1\r\n42\r\n\"Volt\"\r\n46300.25\t1.5\r\n46300.5\t2.5\r\n46300.75\t-3\r\n";
    WriteFile("old.txt", f.str());
    ui.fileAnswers = {dir + "/old.txt"};
    Do(MnuOpen);
    plugged = was;
  }

  // mnuDownload, then virtual time until the download has ended (or the limit).
  bool Download(double limitMs = 300000) {
    Do(StartDownload);
    return RunUntilIdle(limitMs);
  }
  bool RunUntilIdle(double limitMs = 300000) {
    for (double waited = 0; waited < limitMs; waited += 250) {
      if (app->s.link.DownloadActive == 0) return true;
      Run(250);
    }
    return app->s.link.DownloadActive == 0;
  }

  const sim::Firmware& fw() const { return line.firmware(); }

  sim::LoggerLine line;
  bool plugged = true;
  FirmwareTruth truth;
};

}  // namespace quillet::testing
