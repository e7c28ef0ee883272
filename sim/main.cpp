// quillet-sim: a data logger on a pseudo-terminal, for the demo and the end-to-end tests.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "sim/firmware/logger_pty.h"
#include "sim/firmware/sim_options.h"

namespace {

constexpr int kExitBadOptions = 2;
constexpr int kExitFailure = 1;

std::atomic<bool> gStop{false};

void OnStopSignal(int) { gStop.store(true); }

void InstallStopSignals() {
  struct sigaction sa {};
  sa.sa_handler = OnStopSignal;
  sigemptyset(&sa.sa_mask);
  sa.sa_flags = 0;  // no restart: the wait returns at once and sees the flag
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
  sigaction(SIGHUP, &sa, nullptr);
}

// Makes `path` a symbolic link to `target`, replacing a stale link but nothing else.
void MakeLink(const std::string& path, const std::string& target) {
  struct stat st {};
  if (lstat(path.c_str(), &st) == 0) {
    if (!S_ISLNK(st.st_mode))
      throw std::invalid_argument("--link " + path + " exists and is not a symbolic link");
    if (unlink(path.c_str()) != 0)
      throw std::runtime_error("cannot replace " + path + ": " + std::strerror(errno));
  }
  if (symlink(target.c_str(), path.c_str()) != 0)
    throw std::runtime_error("cannot link " + path + ": " + std::strerror(errno));
}

// Removes the link if it still points at our terminal.
void RemoveLink(const std::string& path, const std::string& target) {
  std::vector<char> buf(target.size() + 2);
  const ssize_t n = readlink(path.c_str(), buf.data(), buf.size());
  if (n >= 0 && std::string(buf.data(), static_cast<std::size_t>(n)) == target) unlink(path.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quillet::sim;
  SimOptions options;
  try {
    options = ParseSimOptions(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const std::invalid_argument& e) {
    std::cerr << "quillet-sim: " << e.what() << "\n";
    return kExitBadOptions;
  }
  if (options.help) {
    std::cout << SimUsage();
    return 0;
  }

  InstallStopSignals();
  std::string linked;
  std::string slavePath;
  int status = 0;
  try {
    LoggerPty pty(options.config);
    slavePath = pty.SlavePath();
    if (!options.linkPath.empty()) {
      MakeLink(options.linkPath, slavePath);
      linked = options.linkPath;
    }
    std::cout << slavePath << std::endl;  // first line, flushed: the caller waits for it
    if (options.verbose) {
      const Firmware& fw = pty.line().firmware();
      std::fprintf(stderr,
                   "quillet-sim: model %d at %d bit/s, serial %d, %d slots; %zu samples taken, "
                   "%d stored, half fills %d, interval %llu ticks, range byte %d\n",
                   options.config.modelCode, options.config.baud, options.config.serial, fw.MemorySlots(),
                   fw.Samples().size(), fw.StoredCount(), fw.HalfFills(),
                   static_cast<unsigned long long>(fw.IntervalTicks()), fw.RangeByte());
      pty.log = [](const std::string& line) { std::fprintf(stderr, "quillet-sim: %s\n", line.c_str()); };
    }
    pty.Serve(gStop);
  } catch (const std::invalid_argument& e) {
    std::cerr << "quillet-sim: " << e.what() << "\n";
    status = kExitBadOptions;
  } catch (const std::exception& e) {
    std::cerr << "quillet-sim: " << e.what() << "\n";
    status = kExitFailure;
  }
  if (!linked.empty()) RemoveLink(linked, slavePath);
  return status;
}
