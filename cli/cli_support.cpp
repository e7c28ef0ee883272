#include "cli/cli_support.h"

#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>

#include "cli/cli_texts.h"
#include "core/fault.h"
#include "core/file_commit.h"
#include "core/settings_file.h"
#include "hub/app.h"
#include "log1/startup.h"

namespace quillet {

Options ParseOptions(const std::string& command, int argc, char** argv, int first,
                     const std::set<std::string>& known, const std::set<std::string>& flags) {
  Options opts;
  for (int i = first; i < argc; ++i) {
    const std::string name = argv[i];
    if (flags.count(name)) {
      opts[name] = "1";
      continue;
    }
    if (name.rfind("--", 0) != 0) {
      if (!known.count("")) throw CommandError{Say(CliText::UnexpectedArgument, {command, name}), 2};
      std::string& pos = opts[""];
      pos += (pos.empty() ? "" : "\n") + name;
      continue;
    }
    if (!known.count(name)) throw CommandError{Say(CliText::UnknownOption, {command, name}), 2};
    if (i + 1 >= argc) throw CommandError{Say(CliText::NeedsValue, {command, name}), 2};
    opts[name] = argv[++i];
  }
  return opts;
}

const std::string* Find(const Options& opts, const std::string& name) {
  auto it = opts.find(name);
  return it == opts.end() ? nullptr : &it->second;
}

std::string Required(const Options& opts, const std::string& command, const std::string& name) {
  const std::string* v = Find(opts, name);
  if (!v || v->empty()) throw CommandError{Say(CliText::IsRequired, {command, name}), 2};
  return *v;
}

std::string ProgramDir() {
  std::error_code ec;
  const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  return ec ? std::string(".") : exe.parent_path().string();
}

std::string NoSettingsFile() { return "/nonexistent/quillet-cli/logger1.ini"; }

double SettingsLanguage(int argc, char** argv) {
  const char* path = nullptr;
  for (int i = 2; i + 1 < argc; ++i) {
    if (std::strcmp(argv[i], "--settings") == 0) path = argv[++i];
  }
  if (!path) return 0;
  auto settings = std::make_unique<AppSettings>();
  auto probes = std::make_unique<ProbeMemoryTables>();
  auto scales = std::make_unique<ScaleTables>();
  auto units = std::make_unique<UnitTable>();
  try {
    ReadSettingsFile(path, SettingsFields{*settings, *probes, *scales, *units});
  } catch (const Fault&) {
    return 0;
  } catch (const std::exception&) {
    return 0;
  }
  return settings->LanguageIndex.Value();
}

std::string ReadBinaryFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    const std::string why = SystemWords(errno);
    throw CommandError{Say(CliText::CannotReadWhy, {path, why})};
  }
  std::ostringstream data;
  data << in.rdbuf();
  if (in.bad()) throw CommandError{Say(CliText::CannotRead, {path})};
  return data.str();
}

void WriteBinaryFile(const std::string& path, const std::string& bytes) {
  try {
    CommitBytesTo(path, bytes);
  } catch (const Fault& f) {
    throw CommandError{Say(CliText::CannotWriteWhy, {path, FaultWords(f.number())})};
  }
}

void CheckDevice(const std::string& device) {
  if (::access(device.c_str(), R_OK | W_OK) != 0) {
    const std::string why = SystemWords(errno);
    throw CommandError{Say(CliText::CannotOpenWhy, {device, why})};
  }
}

double TimeoutOption(const Options& opts) {
  const std::string* t = Find(opts, "--timeout");
  if (!t) return 0;
  char* end = nullptr;
  const double timeout = std::strtod(t->c_str(), &end);
  if (end == t->c_str() || *end != '\0' || !(timeout > 0) || !std::isfinite(timeout)) {
    throw CommandError{Say(CliText::TimeoutNotSeconds), 2};
  }
  return timeout;
}

std::string BaudOption(const Options& opts) {
  const std::string* baud = Find(opts, "--baud");
  if (!baud) return {};
  if (*baud != "1200" && *baud != "4800") throw CommandError{Say(CliText::BaudNotSpeed), 2};
  return *baud;
}

FilePlaces CommandPlaces(const Options& opts) {
  FilePlaces places{ProgramDir(), "."};
  const std::string* settings = Find(opts, "--settings");
  places.settingsFile = settings ? *settings : NoSettingsFile();
  if (const std::string* probes = Find(opts, "--probes")) places.probesFile = *probes;
  return places;
}

void StartCommandApp(App& app) {
  Dispatch(app, [&app] { StartProgram(app); });
  if (app.ended) throw CommandError{Say(CliText::StartupFailed), app.exitCode == 0 ? 1 : app.exitCode};
}

}  // namespace quillet
