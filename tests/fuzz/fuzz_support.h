#pragma once
// What the harnesses share: one application on the fake platform per input, started from
// the shipped language and probe files, and the checks every input must pass.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "core/offline_platform.h"
#include "hub/app.h"
#include "log1/hooks.h"
#include "log1/startup.h"
#include "support/fake_platform.h"

#ifndef QUILLET_DATA_DIR
#error "QUILLET_DATA_DIR names the folder of loglang.txt and probes.dat"
#endif

// A harness is the fuzzer's entry point in the fuzz build and a named target of the replay
// test, which runs the checked-in corpora and crash inputs through it, in the test build.
#ifdef QUILLET_FUZZ_REPLAY
#define QUILLET_FUZZ_TARGET(name)                                      \
  static int name##_input(const std::uint8_t* data, std::size_t size); \
  [[maybe_unused]] static const bool name##_registered =               \
      (::quillet::fuzz::Targets()[#name] = name##_input, true);        \
  static int name##_input(const std::uint8_t* data, std::size_t size)
#else
#define QUILLET_FUZZ_TARGET(name) \
  extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
#endif

namespace quillet::fuzz {

using TargetFunction = int (*)(const std::uint8_t*, std::size_t);
// The replay test's list of targets, by name.
inline std::map<std::string, TargetFunction>& Targets() {
  static std::map<std::string, TargetFunction> targets;
  return targets;
}

inline std::string Slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

inline const std::string& ShippedFile(const char* name) {
  static const std::string lang = Slurp(QUILLET_DATA_DIR "/loglang.txt");
  static const std::string probes = Slurp(QUILLET_DATA_DIR "/probes.dat");
  return std::string(name) == "loglang.txt" ? lang : probes;
}

// Fails the run: libFuzzer keeps the input as a crash.
[[noreturn]] inline void Broken(const char* what, const std::string& detail = {}) {
  std::fprintf(stderr, "invariant broken: %s %s\n", what, detail.c_str());
  std::abort();
}

// An internal error (fault 51) is a C++ exception no handler expected: never allowed.
inline void CheckNoInternalError(const testing::ScriptedUi& ui) {
  for (const auto& f : ui.fatal) {
    if (f.first == 51) Broken("internal error escaped:", f.second);
  }
}

// What the user was asked and shown by the last input: a program kept from input to input
// forgets it, so the logs do not grow over a long run.
inline void ClearUiLog(testing::ScriptedUi& ui) {
  ui.messages.clear();
  ui.modals.clear();
  ui.help.clear();
  ui.fileAnswers.clear();
  ui.fileFilters.clear();
  ui.saveAnswers.clear();
  ui.saveFilters.clear();
  ui.fatal.clear();
  ui.ended = false;
}

// A started application with the shipped files and English chosen.
struct StartedApp : testing::TestApp {
  StartedApp() {
    WriteFile("loglang.txt", ShippedFile("loglang.txt"), true);
    WriteFile("probes.dat", ShippedFile("probes.dat"), true);
    WriteSettings(1, 1, 1200, 0, 0);
    Start();
    if (ui.ended || !ui.fatal.empty()) Broken("the start-up failed");
  }
  // For a program kept from one input to the next; a fault that ended it stays with its input.
  void NextInput() {
    ClearUiLog(ui);
    app->ended = false;
  }
};

// The program of `quillet-cli decode`: started once from the shipped files, with a clock
// that stands still, no timers and a transport fed by hand. Reset() puts back the state
// and the views as they stood after the start, so each input meets the same program.
struct OfflineApp {
  OfflineApp()
      : files(), platform{ui, clock, timers, poster, transport, FilePlaces{files.dir + "/prog", files.dir}} {
    files.WriteFile("loglang.txt", ShippedFile("loglang.txt"), true);
    files.WriteFile("probes.dat", ShippedFile("probes.dat"), true);
    files.WriteSettings(1, 1, 1200, 0, 0);
    app = std::make_unique<App>(platform, Log1Hooks());
    ui.app = app.get();
    Dispatch(*app, [this] { StartProgram(*app); });
    if (ui.ended || !ui.fatal.empty()) Broken("the start-up failed");
    startState = std::make_unique<State>(app->s);
    startViews = std::make_unique<Views>(app->v);
  }
  void Reset() {
    app->s = *startState;
    app->v = *startViews;
    app->ended = false;
    ClearUiLog(ui);
    app->port.SetRThreshold(0);
    app->port.Input();
  }
  void Do(const std::function<void()>& action) { Dispatch(*app, action); }

  testing::TestApp files;  // only its folder and file writers
  testing::ScriptedUi ui;
  FixedClock clock{46347.5};
  IdleTimers timers;
  DroppingPoster poster;
  OfflineTransport transport;
  Platform platform;
  std::unique_ptr<App> app;
  std::unique_ptr<State> startState;
  std::unique_ptr<Views> startViews;
};

}  // namespace quillet::fuzz
